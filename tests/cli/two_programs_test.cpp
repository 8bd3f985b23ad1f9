// Two programs at once, on one home, in one output folder, on drawings whose parts have the same handles:
// each comes out as it does alone, or is told that it can't. BRENVIK_PAIR_ROUNDS asks for more rounds of the
// pairs.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <future>
#include <random>
#include <thread>

#include "boards.h"
#include "file_roots/claim.h"
#include "file_roots/folder_turn.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

int Rounds() {
    const char* asked = std::getenv("BRENVIK_PAIR_ROUNDS");
    return asked == nullptr ? 2 : std::max(1, std::atoi(asked));
}

/// What a program leaves behind.
struct Result {
    Outcome outcome;
    Files files;
    bool operator==(const Result& other) const {
        return outcome.status == other.outcome.status && outcome.output == other.outcome.output &&
               files == other.files;
    }
};

class TwoPrograms : public ProgramTest {
  protected:
    TwoPrograms() {
        WriteBoardsTo(folder / "a.dxf", {{"Side", "Shelf", "Side"}, "White Melamine", true, 600});
        WriteBoardsTo(folder / "b.dxf", {{"Door", "Drawer", "Back"}, "Birch Ply", false, 700});
        Write("a.journal", Journal("first job"));
        Write("b.journal", Journal("second job"));
        EXPECT_EQ(Run({"init"}).status, 0);
    }

    static std::string Journal(const std::string& note) {
        return "command Show\ncell fpSpread1 1 Notes \"" + note +
               "\"\ncell fpSpread1 3 PN \"99\"\npress mnuApplyDrawing\npress mnuExit\ncommand Show\n"
               "expect cell fpSpread1 1 Notes \"" +
               note + "\"\nclose\nexpect no message\n";
    }

    /// Runs the words, in which "OUT" is a place of the program's own, and takes what lies there.
    Result RunAs(const std::string& name, Words words, const std::string& before = "") const {
        const std::string out = "out-" + name;
        fs::remove_all(folder / out);
        fs::create_directory(folder / out);
        for (std::string& word : words)
            if (const std::size_t at = word.find("OUT"); at != std::string::npos) word.replace(at, 3, out);
        Result result{RunNamed(name, words, before), {}};
        result.files = FilesBelow(out);
        return result;
    }

    /// Both at once, each behind a random wait.
    std::pair<Result, Result> RunBoth(const Words& first, const Words& second) {
        const auto wait = [this] {
            return "sleep 0." + std::to_string(std::uniform_int_distribution<>(100, 250)(random)) + ";";
        };
        auto other =
            std::async(std::launch::async, [&, before = wait()] { return RunAs("b", second, before); });
        Result own = RunAs("a", first, wait());
        return {std::move(own), other.get()};
    }

    void ExpectAsAlone(const Words& first, const Words& second) {
        const Result alone = RunAs("a", first), otherAlone = RunAs("b", second);
        EXPECT_EQ(alone.outcome.status, 0) << alone.outcome.errors;
        EXPECT_EQ(otherAlone.outcome.status, 0) << otherAlone.outcome.errors;
        EXPECT_FALSE(alone == otherAlone) << "the jobs have to differ";
        for (int round = 0; round < Rounds(); ++round) {
            const auto [own, other] = RunBoth(first, second);
            EXPECT_TRUE(own == alone)
                << "round " << round << ": " << own.outcome.errors << own.outcome.output;
            EXPECT_TRUE(other == otherAlone)
                << "round " << round << ": " << other.outcome.errors << other.outcome.output;
        }
        for (const auto& [name, content] : FilesBelow("home/_db"))
            EXPECT_TRUE(name == "bv04.mdb" || name == "bv-back04.mdb") << name << " is left behind";
    }

    /// Into one folder: what lies there in the end is the whole of one job, and who was refused was told.
    void ExpectOneOrTheOther(const Words& first, const Words& second, const std::string& where) {
        std::vector<Files> whole;
        for (const Words& words : {first, second}) {
            EXPECT_EQ(Run(words).status, 0);
            whole.push_back(FilesBelow(where));
        }
        EXPECT_NE(whole[0], whole[1]);
        for (int round = 0; round < Rounds(); ++round) {
            const auto [own, other] = RunBoth(first, second);
            const Files left = FilesBelow(where);
            EXPECT_TRUE(left == whole[0] || left == whole[1]) << "round " << round;
            for (const Result* result : {&own, &other}) {
                if (result->outcome.status == 0) continue;
                EXPECT_EQ(result->outcome.status, 1);
                const std::string& errors = result->outcome.errors;
                EXPECT_TRUE(errors.find("a run is going on in ") != std::string::npos ||
                            errors.find("another program has written ") != std::string::npos)
                    << errors;
            }
            EXPECT_TRUE(own.outcome.status == 0 || other.outcome.status == 0) << "round " << round;
            EXPECT_TRUE(other.outcome.status == 0 || left == whole[0]) << "round " << round;
            EXPECT_TRUE(own.outcome.status == 0 || left == whole[1]) << "round " << round;
        }
    }

    std::mt19937 random{std::random_device{}()};

    static Words List(const std::string& job) { return {"list", job + ".dxf", "--format", "csv"}; }
    static Words Export(const std::string& job) { return {"export", job + ".dxf", "OUT/list.csv"}; }
    static Words Cnc(const std::string& job, const Words& more = {}) {
        Words words{"cnc", job + ".dxf", "--target", "C2C"};
        words.insert(words.end(), more.begin(), more.end());
        return words;
    }
    static Words Apply(const std::string& job) {
        return {"run", job + ".dxf", "--journal", job + ".journal", "--save", "OUT/saved.dxf"};
    }
};

TEST_F(TwoPrograms, ThatListListEachTheirOwn) { ExpectAsAlone(List("a"), List("b")); }

TEST_F(TwoPrograms, ThatExportExportEachTheirOwn) { ExpectAsAlone(Export("a"), Export("b")); }

TEST_F(TwoPrograms, ThatRunFromTheGridCutEachTheirOwn) {
    ExpectAsAlone(Cnc("a", {"--from-grid", "--out", "OUT"}), Cnc("b", {"--from-grid", "--out", "OUT"}));
}

TEST_F(TwoPrograms, ThatRunOnTheSelectionCutEachTheirOwn) {
    ExpectAsAlone(Cnc("a", {"--out", "OUT"}), Cnc("b", {"--out", "OUT"}));
}

TEST_F(TwoPrograms, ThatApplyAndSaveSaveEachTheirOwn) { ExpectAsAlone(Apply("a"), Apply("b")); }

TEST_F(TwoPrograms, OfWhichOneAppliesAndOneListsKeepApart) { ExpectAsAlone(Apply("a"), List("b")); }

TEST_F(TwoPrograms, OfWhichOneAppliesAndOneCutsKeepApart) {
    ExpectAsAlone(Apply("a"), Cnc("b", {"--from-grid", "--out", "OUT"}));
}

TEST_F(TwoPrograms, IntoOneDefaultFolderNeverMix) {
    ExpectOneOrTheOther(Cnc("a", {"--from-grid"}), Cnc("b"), "home/drive_c/BV-DXF");
}

TEST_F(TwoPrograms, IntoOneFolderOfTheirUsersNeverMix) {
    ExpectOneOrTheOther(Cnc("a", {"--out", "cut"}), Cnc("b", {"--from-grid", "--out", "cut"}), "cut");
}

TEST_F(TwoPrograms, ThatExportPartsIntoOneFolderNeverMix) {
    ExpectOneOrTheOther({"parts", "a.dxf"}, {"parts", "b.dxf"}, "home/drive_c/BV-DWG");
}

TEST_F(TwoPrograms, ThatComeToANewHomeFindItWhole) {
    for (int round = 0; round < Rounds(); ++round) {
        fs::remove_all(folder / "home");
        const auto [own, other] = RunBoth({"init", "--units", "imperial"}, {"settings", "list"});
        EXPECT_NE(other.outcome.output.find("\nSpecialMaterial=0\n"), std::string::npos)
            << other.outcome.output;
        const bool imperial = Run({"settings", "get", "ExportScaleSetting"}).output == "1\n";
        EXPECT_EQ(own.outcome.status, imperial ? 0 : 2) << own.outcome.errors;
        EXPECT_EQ(Read("home/materials.txt").starts_with("material=.75 "), imperial);
    }
}

/// A home in which another program is at work all the time.
class BesideAnother : public TwoPrograms {
  protected:
    const Claim another{folder / "home/_db"};
};

TEST_F(BesideAnother, AProgramHasAWorkingDatabaseAndHandOverListsOfItsOwn) {
    ASSERT_EQ(another.Outcome(), Claim::State::Held);
    const Files before = FilesBelow("home/_db");
    for (const char* name : {"home/CNCExportList.txt", "home/CNCExportList2.txt"}) Write(name, "another's\n");
    Write("own.journal", "command Show\nexpect rows fpSpread1 3\nclose\nexpect setting MDBPath \"\"\n");
    EXPECT_EQ(Run({"run", "a.dxf", "--journal", "own.journal"}).status, 0);
    EXPECT_EQ(Run(Cnc("a", {"--from-grid"})).status, 0);
    EXPECT_NE(Read("home/drive_c/BV-DXF/WORKLIST.TXT").find("Part_0_Side_7.dxf,18 WHITE MELAMINE,0,2,"),
              std::string::npos);
    for (const char* name : {"home/CNCExportList.txt", "home/CNCExportList2.txt"})
        EXPECT_EQ(Read(name), "another's\n");
    EXPECT_EQ(FilesBelow("home/_db"), before) << "its folder goes with it";
}

TEST_F(TwoPrograms, AProgramAloneWorksWithThePlacesOfTheHome) {
    Write("alone.journal", "command Show\nexpect session MDBPath \"" + Path("home") +
                               "\\\\_db\\\\bv04.mdb\"\nclose\nexpect setting MDBPath \"\"\n");
    const Outcome outcome = Run({"run", "a.dxf", "--journal", "alone.journal"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(Run(Cnc("a", {"--from-grid"})).status, 0);
    EXPECT_TRUE(Read("home/CNCExportList2.txt").ends_with(",2\n") ||
                Read("home/CNCExportList2.txt").find(",2\n") != std::string::npos);
}

TEST_F(TwoPrograms, ACopiedHomeNeverTouchesTheDatabaseOfTheOldOne) {
    EXPECT_EQ(Run(List("a")).status, 0);
    fs::copy(folder / "home", folder / "copy", fs::copy_options::recursive);
    const std::string before = Read("home/_db/bv04.mdb");
    EXPECT_EQ(RunBare("BRENVIK_HOME=copy", List("b")).status, 0);
    EXPECT_EQ(Read("home/_db/bv04.mdb"), before);
    fs::rename(folder / "home", folder / "moved");
    EXPECT_EQ(RunBare("BRENVIK_HOME=moved", List("a")).status, 0);
    EXPECT_FALSE(Exists("home"));
}

TEST_F(TwoPrograms, TheHomesOwnDatabaseIsNeverKeptByItsPath) {
    Write("own.journal", "command Show\nexpect rows fpSpread1 3\nclose\n");
    const Words run{"run", "a.dxf", "--journal", "own.journal"};
    fs::create_symlink(folder / "home", folder / "link");
    for (const std::string& stored :
         {Path("home/_db/bv04.mdb"), Path("home\\_db\\BV04.mdb"), Path("home/../home/_db/bv04.mdb")}) {
        EXPECT_EQ(Run({"settings", "set", "MDBPath", stored}).status, 0);
        {
            const Claim another(folder / "home/_db");
            const std::string before = Read("home/_db/bv04.mdb");
            EXPECT_EQ(Run(List("a")).status, 0) << stored;
            EXPECT_EQ(Read("home/_db/bv04.mdb"), before) << stored << " is another program's";
        }
        EXPECT_EQ(Run({"settings", "set", "MDBPath", stored}).status, 0);
        const Outcome outcome = Run(run);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(Run({"settings", "get", "MDBPath"}).output, "\n") << stored;
    }
}

TEST_F(TwoPrograms, ADatabaseThatTheUserHasSetIsForOneProgramAtATime) {
    fs::copy_file(folder / "home/_db/bv-back04.mdb", folder / "mine.mdb");
    EXPECT_EQ(Run({"settings", "set", "MDBPath", Path("mine.mdb")}).status, 0);
    const Outcome alone = Run(List("a"));
    EXPECT_EQ(alone.status, 0) << alone.errors;
    EXPECT_EQ(Run({"settings", "get", "MDBPath"}).output, Path("mine.mdb") + "\n");
    const Claim another(folder / "mine.mdb");
    const Outcome refused = Run(List("a"));
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.errors.find(Path("mine.mdb") + " is in use by another program"), std::string::npos);
    EXPECT_EQ(refused.output.find("Side"), std::string::npos) << "nothing of the other list is shown";
}

TEST_F(TwoPrograms, AFolderWhereARunIsGoingOnIsLeftAsItIs) {
    for (const Words& words : {Cnc("a", {"--out", "cut"}), Cnc("a", {"--from-grid", "--out", "cut"}),
                               Words{"parts", "a.dxf", "--out", "cut"}}) {
        fs::create_directory(folder / "cut");
        const Claim another(folder / "cut");
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1) << words[0];
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find("a run is going on in " + Path("cut") + "."), std::string::npos)
            << outcome.errors;
        EXPECT_TRUE(fs::is_empty(folder / "cut")) << words[0];
        fs::remove_all(folder / "cut");
    }
}

TEST_F(TwoPrograms, ARunIntoTheSecondSidesOfAnotherIsRefused) {
    fs::create_directories(folder / "cut/2-sided");
    const Claim another(folder / "cut/2-sided");
    EXPECT_EQ(Run(Cnc("a", {"--out", "cut"})).status, 1);
    EXPECT_TRUE(fs::is_empty(folder / "cut/2-sided"));
}

TEST_F(TwoPrograms, SecondSidesInTheOutputFolderItselfAreRefusedWithTheReason) {
    fs::create_directory(folder / "cut");
    fs::create_directory_symlink(".", folder / "cut/2-sided");
    const Outcome outcome = Run(Cnc("a", {"--out", "cut"}));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.find("a run is going on"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(" are one folder, in which the files of both would mix"), std::string::npos)
        << outcome.errors;
}

TEST_F(TwoPrograms, AMaterialIsAddedToWhatTheOneAheadHasWritten) {
    auto turn = std::make_unique<const FolderTurn>(folder / "home");
    auto adding = std::async(std::launch::async, [this] {
        return RunNamed("add", {"materials", "add", "18 oak", "--like", "18 birch ply"});
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    std::string library = Read("home/materials.txt");
    EXPECT_EQ(library.find("18 oak"), std::string::npos) << "another program is at work";
    std::string others = library.substr(0, library.find("material=", 1));
    others.replace(0, others.find("\r\n"), "material=18 elm");
    Write("home/materials.txt", library + others);
    turn.reset();
    EXPECT_EQ(adding.get().status, 0);
    for (const char* key : {"18 elm", "18 oak"})
        EXPECT_NE(Read("home/materials.txt").find(key), std::string::npos) << key;
}

TEST_F(TwoPrograms, ADrawingIsSavedIntoNoFolderOfAnotherProgramsPartExport) {
    const fs::path parts = folder / "home/drive_c/BV-DWG";
    fs::create_directories(parts);
    Write("save.journal", "command BVDWG2\n");
    const Claim another(parts);
    const Outcome outcome = Run({"run", "a.dxf", "--journal", "save.journal"});
    EXPECT_EQ(outcome.status, 1) << outcome.output;
    EXPECT_NE(outcome.errors.find("a run is going on in " + parts.string()), std::string::npos)
        << outcome.errors;
    EXPECT_TRUE(fs::is_empty(parts));
}

}  // namespace
}  // namespace brenvik::cli_test
