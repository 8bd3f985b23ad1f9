// Where shares are put together: nobody's files go, whoever works in the folder meanwhile, and a join that
// was ended leaves nothing that has to be cleared by hand.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <future>
#include <random>

#include <sys/wait.h>
#include <unistd.h>

#include "checkout_paths.h"
#include "shares_fixture.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

int Rounds() {
    const char* asked = std::getenv("BRENVIK_PAIR_ROUNDS");
    return asked == nullptr ? 4 : std::max(1, std::atoi(asked));
}

class JoinFolder : public Shares {
  protected:
    /// Shares of a job of other boards beside those of "job.dxf".
    void WriteOtherJob(int boards) {
        Boards other;
        other.length = 700;
        for (int board = 0; board < boards; ++board) other.names.push_back("Other");
        WriteBoardsTo(folder / "other.dxf", other);
        EXPECT_EQ(Run({"cnc", "other.dxf", "--target", "C2C", "--out", "o1", "--shard", "1/1"}).status, 0);
    }

    std::string Wait(int most) {
        const int wait = std::uniform_int_distribution<>(0, most)(mRandom);
        return "sleep 0." + std::to_string(1000 + wait).substr(1) + ";";
    }

    /// Starts a join of s1 and s2 and kills it as soon as a file of this name is there; false if it ended
    /// before.
    bool KillJoinAt(const std::string& name) const {
        const pid_t child = fork();
        if (child == 0) {
            freopen("/dev/null", "w", stderr);
            freopen("/dev/null", "w", stdout);
            const std::string program = BRENVIK_BINARY_DIR "/bin/brenvik", home = Path("home"),
                              one = Path("s1"), two = Path("s2"), out = Path("joined");
            if (chdir(folder.c_str()) == 0)
                execl(program.c_str(), program.c_str(), "--home", home.c_str(), "join", one.c_str(),
                      two.c_str(), "--out", out.c_str(), nullptr);
            _exit(127);
        }
        int status = 0;
        while (waitpid(child, &status, WNOHANG) == 0)
            if (fs::exists(folder / "joined" / name)) kill(child, SIGKILL);
        return WIFSIGNALED(status);
    }

    std::minstd_rand mRandom{20};
};

TEST_F(JoinFolder, TakesOneOfTwoJoinsThatBeginAtOnce) {
    WriteBoards(200, false);
    MakeShares(2, {"--target", "C2C"});
    WriteOtherJob(3);
    ASSERT_EQ(Join({"s1", "s2"}, "whole").status, 0);
    ASSERT_EQ(Join({"o1"}, "otherWhole").status, 0);
    const Files whole = FilesBelow("whole"), otherWhole = FilesBelow("otherWhole");
    for (int round = 0; round < Rounds(); ++round) {
        SCOPED_TRACE(round);
        fs::remove_all(folder / "both");
        auto other = std::async(std::launch::async, [this, before = Wait(150)] {
            return RunNamed("other", {"join", "o1", "--out", "both"}, before);
        });
        const Outcome own = RunNamed("own", {"join", "s1", "s2", "--out", "both"});
        const Outcome others = other.get();
        EXPECT_NE(own.status == 0, others.status == 0) << own.errors << others.errors;
        EXPECT_TRUE(FilesBelow("both") == (own.status == 0 ? whole : otherWhole));
        const Outcome& refused = own.status == 0 ? others : own;
        const bool isTold = refused.errors.find("a run is going on in") != std::string::npos ||
                            refused.errors.find("expected an empty folder") != std::string::npos;
        EXPECT_TRUE(isTold) << refused.errors;
    }
}

TEST_F(JoinFolder, IsEmptiedByARunOfWhatItHasSeenThereAlone) {
    WriteBoards(200, false);
    Boards few;
    few.names = {"One", "Two"};
    WriteBoardsTo(folder / "few.dxf", few);
    ASSERT_EQ(Run({"cnc", "few.dxf", "--target", "C2C", "--out", "whole"}).status, 0);
    const Files whole = FilesBelow("whole");
    const std::string places[] = {"both", "home/drive_c/BV-DXF"};
    for (int round = 0; round < Rounds(); ++round) {
        SCOPED_TRACE(round);
        const std::string& place = places[round % 2];
        const Words out = round % 2 == 0 ? Words{"--out", place} : Words{};
        fs::remove_all(folder / place);
        const auto run = [&](const std::string& name, const std::string& drawing, const std::string& before) {
            Words words{"cnc", drawing, "--target", "C2C"};
            words.insert(words.end(), out.begin(), out.end());
            return RunNamed(name, words, before);
        };
        auto late = std::async(std::launch::async, [&run] { return run("late", "job.dxf", ""); });
        const Outcome quick = run("quick", "few.dxf", "sleep 0.05;"), later = late.get();
        EXPECT_NE(quick.status == 0, later.status == 0) << quick.errors << later.errors;
        if (quick.status == 0) {
            EXPECT_TRUE(FilesBelow(place) == whole);
        }
        const Outcome& refused = quick.status == 0 ? later : quick;
        const bool isTold = refused.errors.find("a run is going on in") != std::string::npos ||
                            refused.errors.find("another program has written") != std::string::npos;
        EXPECT_TRUE(isTold) << refused.errors;
    }
}

TEST_F(JoinFolder, IsTakenOverFromAJoinOfTheSameSharesThatWasKilled) {
    WriteBoards(12, true);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    ASSERT_EQ(Join(shares, "whole").status, 0);
    int killed = 0;
    for (const char* moment : {"join.unfinished", "Part_0.dwg", "2-sided/BPart_11.dwg",
                               "WORKLIST.TXT.unfinished", "WORKLIST.TXT"}) {
        SCOPED_TRACE(moment);
        fs::remove_all(folder / "joined");
        if (!KillJoinAt(moment)) continue;
        const bool hasLeft = !FilesBelow("joined").empty(), isMarked = Exists("joined/join.unfinished");
        if (hasLeft && !isMarked) {
            // It had come to its end before it was killed.
            EXPECT_TRUE(FilesBelow("joined") == FilesBelow("whole"));
            EXPECT_EQ(Join(shares).status, 2);
            continue;
        }
        if (hasLeft) ++killed;
        const Outcome again = Join(shares);
        EXPECT_EQ(again.status, 0) << again.errors;
        EXPECT_EQ(again.errors.find("left unfinished was replaced") != std::string::npos, hasLeft)
            << again.errors;
        EXPECT_TRUE(FilesBelow("joined") == FilesBelow("whole"));
    }
    EXPECT_GE(killed, 1) << "how many moments are met depends on how the machine shares its time";
}

TEST_F(JoinFolder, IsNotTakenOverFromAnybodyElse) {
    WriteBoards(6, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    WriteOtherJob(2);
    ASSERT_TRUE(KillJoinAt("join.unfinished"));
    const Files left = FilesBelow("joined");
    const Outcome other = Join({"o1"});
    EXPECT_EQ(other.status, 2);
    EXPECT_NE(other.errors.find("a join of other shares, of job.dxf, has left unfinished"), std::string::npos)
        << other.errors;
    for (const char* foreign : {"joined/offcuts.txt", "joined/Part_99_x_.dxf", "joined/WORKLIST.CSV"}) {
        Write(foreign, "mine");
        const Outcome refused = Join(shares);
        EXPECT_EQ(refused.status, 2);
        EXPECT_NE(refused.errors.find(std::string(foreign).substr(7)), std::string::npos) << refused.errors;
        fs::remove(folder / foreign);
    }
    EXPECT_TRUE(FilesBelow("joined") == left);
    EXPECT_EQ(Join(shares).status, 0);
    EXPECT_FALSE(Exists("joined/join.unfinished"));
    EXPECT_EQ(Join(shares).status, 2) << "whole files are never replaced";
}

TEST_F(JoinFolder, TellsFilesThatLieBesideThoseOfAShare) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    Write("s2/Part_99_x_.dxf", "0\nEOF\n");
    Write("s2/notes.txt", "by hand");
    const Outcome joined = Join(shares);
    EXPECT_EQ(joined.status, 1);
    EXPECT_EQ(joined.errors.find("notes.txt"), std::string::npos);
    EXPECT_NE(joined.errors.find("s2/Part_99_x_.dxf is none of its share's files, and was not taken"),
              std::string::npos)
        << joined.errors;
    EXPECT_FALSE(Exists("joined/Part_99_x_.dxf"));
    fs::remove(folder / "s2/Part_99_x_.dxf");
    Write("s2/Part_1_Board 1_.nc", "G0");
    Write("s1/all.mpr", "[H");
    fs::create_directory(folder / "s1/late");
    fs::remove_all(folder / "joined");
    const Outcome more = Join(shares);
    EXPECT_EQ(more.status, 1);
    for (const char* told : {"s2/Part_1_Board 1_.nc is none of its share's files", "s1/all.mpr is none",
                             "s1/late/ is no folder of its share, and was not taken"})
        EXPECT_NE(more.errors.find(told), std::string::npos) << more.errors;
    EXPECT_EQ(more.errors.find("2-sided"), std::string::npos) << more.errors;
}

// Nobody can tell a file of one's own from that of the join by its name.
TEST_F(JoinFolder, KeepsAFileOfAnotherContentUnderANameOfTheJoins) {
    WriteBoards(6, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    ASSERT_EQ(Join(shares, "whole").status, 0);
    ASSERT_TRUE(KillJoinAt("join.unfinished"));
    std::string part;
    for (const auto& [name, content] : FilesBelow("whole"))
        if (name.ends_with(".dxf")) part = name;
    ASSERT_FALSE(part.empty());
    Write("joined/" + part, "mine");
    const Outcome refused = Join(shares);
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.errors.find("joined/" + part + ": expected the file that an earlier join"),
              std::string::npos)
        << refused.errors;
    EXPECT_EQ(Read("joined/" + part), "mine");
    fs::remove(folder / "joined" / part);
    EXPECT_EQ(Join(shares).status, 0);
}

TEST_F(JoinFolder, SavesTheDrawingAsOneCallDoesButAtItsEnd) {
    WriteSample("job.dxf");
    ASSERT_EQ(Run({"settings", "set", "CNCSave", "0"}).status, 0);
    const std::string drawn = Read("job.dxf");
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "one"}).status, 1);
    const std::string saved = Read("job.dxf");
    ASSERT_NE(saved, drawn);
    Write("job.dxf", drawn);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    EXPECT_EQ(Read("job.dxf"), drawn) << "others are reading it";
    if (KillJoinAt("Part_0.dwg")) {
        EXPECT_EQ(Read("job.dxf"), drawn) << "its shares would be lost";
    }
    EXPECT_EQ(Join(shares).status, 1);
    EXPECT_EQ(Read("job.dxf"), saved);
    const Outcome again = Join(shares, "again");
    EXPECT_EQ(again.status, 3);
    EXPECT_NE(again.errors.find("with CNCSave 0 a join saves it at its end"), std::string::npos)
        << again.errors;
}

}  // namespace
}  // namespace brenvik::cli_test
