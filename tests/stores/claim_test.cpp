// Several programs in one place: claims, and the working folders that are built on them.
#include "file_roots/claim.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <future>
#include <string>
#include <vector>

#include "file_roots/file_roots.h"
#include "file_roots/work_folder.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class Claims : public testing::Test {
  protected:
    std::vector<std::string> Names(const fs::path& where) const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(where))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    TemporaryFolder folder;
    const fs::path shared = folder.Path() / "_db";
};

TEST_F(Claims, OneAtATimeHasAFileOrAFolderAndNothingIsLeftBehind) {
    const fs::path file = folder.Path() / "bv04.mdb";
    std::ofstream(file) << "rows";
    for (const fs::path& place : {folder.Path(), file}) {
        {
            const Claim first(place), second(place);
            EXPECT_EQ(first.Outcome(), Claim::State::Held) << place;
            EXPECT_EQ(second.Outcome(), Claim::State::Taken) << place;
        }
        EXPECT_EQ(Claim(place).Outcome(), Claim::State::Held) << place;
    }
    EXPECT_EQ(Claim(folder.Path() / "none").Outcome(), Claim::State::Unknown);
    EXPECT_EQ(Names(folder.Path()), std::vector<std::string>{"bv04.mdb"});
}

TEST_F(Claims, ByAFileInAFolderThatCannotBeLockedAreAsGood) {
    fs::create_directory(shared);
    {
        const Claim first = Claim::ByFileIn(shared);
        EXPECT_EQ(first.Outcome(), Claim::State::Held);
        EXPECT_EQ(Claim::ByFileIn(shared).Outcome(), Claim::State::Taken);
        EXPECT_TRUE(first.IsStillAt(shared));
        fs::remove_all(shared);
        fs::create_directory(shared);
        EXPECT_FALSE(first.IsStillAt(shared));
    }
    EXPECT_EQ(Claim::ByFileIn(shared).Outcome(), Claim::State::Held);
    EXPECT_EQ(Names(shared), std::vector<std::string>{}) << "nothing is left behind";
    EXPECT_EQ(Claim::ByFileIn(folder.Path() / "none").Outcome(), Claim::State::Unknown);
}

TEST_F(Claims, AWorkFolderThatIsRemovedAndMadeAgainIsNobodysUnderTheSameName) {
    WorkFolder first(shared);
    EXPECT_EQ(first.Own(), std::nullopt);
    fs::remove_all(shared);
    EXPECT_EQ(FailureOf([&] { first.Own(); }).number(), failure_number::PathNotFound);
    WorkFolder second(shared);
    EXPECT_EQ(second.Own(), std::nullopt);
    EXPECT_EQ(FailureOf([&] { first.Own(); }).number(), failure_number::PathNotFound)
        << "it is the second one's now";
}

TEST_F(Claims, ProgramsThatComeAndGoTogetherNeverLoseTheirFolders) {
    WorkFolder first(shared);
    first.Own();
    const auto comeAndGo = [&] {
        int lost = 0;
        for (int turn = 0; turn < 150; ++turn) {
            WorkFolder next(shared);
            if (!next.Own() || !fs::is_directory(*next.Own())) ++lost;
        }
        return lost;
    };
    std::vector<std::future<int>> others;
    for (int program = 0; program < 4; ++program) others.push_back(std::async(std::launch::async, comeAndGo));
    for (std::future<int>& other : others) EXPECT_EQ(other.get(), 0);
}

TEST_F(Claims, KnowAPlaceThatWasClearedAway) {
    fs::create_directory(shared);
    const Claim claim(shared);
    EXPECT_TRUE(claim.IsStillAt(shared));
    fs::remove(shared);
    EXPECT_FALSE(claim.IsStillAt(shared));
    fs::create_directory(shared);
    EXPECT_FALSE(claim.IsStillAt(shared));
}

TEST_F(Claims, TheFirstProgramWorksInTheSharedFolderAndOthersInOnesOfTheirOwn) {
    WorkFolder first(shared);
    EXPECT_FALSE(fs::exists(shared)) << "who never asks leaves everything as it is";
    EXPECT_EQ(first.Own(), std::nullopt);
    {
        WorkFolder second(shared), third(shared);
        ASSERT_TRUE(second.Own() && third.Own());
        EXPECT_NE(*second.Own(), *third.Own());
        EXPECT_EQ(second.Own()->parent_path(), shared);
        EXPECT_EQ(second.Own(), second.Own());
        std::ofstream(*second.Own() / "bv04.mdb") << "rows";
        EXPECT_EQ(Names(shared).size(), 2U);
    }
    EXPECT_EQ(Names(shared), std::vector<std::string>{}) << "they go with their programs";
}

TEST_F(Claims, FoldersOfDeadProgramsAreClearedAndThoseOfLivingOnesStay) {
    for (const char* name : {"work-dead", "work-alive", "other"}) {
        fs::create_directories(shared / name);
        std::ofstream(shared / name / "bv04.mdb") << "rows";
    }
    std::ofstream(shared / "work-file") << "no folder";
    const Claim alive(shared / "work-alive");
    WorkFolder next(shared);
    EXPECT_EQ(next.Own(), std::nullopt);
    EXPECT_EQ(Names(shared), (std::vector<std::string>{"other", "work-alive", "work-file"}));
}

TEST_F(Claims, AWorkFolderThatCannotBeMadeIsToldWithItsName) {
    std::ofstream(shared) << "a file";
    WorkFolder work(shared);
    EXPECT_NE(std::string(FailureOf([&] { work.Own(); }).what()).find(shared.string()), std::string::npos);
}

TEST_F(Claims, APathBelowAFileRootsFolderIsClaimedForARun) {
    FileRoots files(folder.Path());
    files.MakeFolder("c:\\BV-DXF\\");
    std::unique_ptr<FolderClaim> first = files.ClaimFolder("c:\\BV-DXF\\");
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(files.ClaimFolder("C:\\bv-dxf"), nullptr);
    first.reset();
    EXPECT_NE(files.ClaimFolder("c:\\BV-DXF\\"), nullptr);
    EXPECT_EQ(files.PlaceOf("c:\\BV-DXF\\"), (folder.Path() / "drive_c/BV-DXF").string());
}

TEST_F(Claims, AFolderHoldsAFileThatLiesInItselfByWhateverNameItIsCalled) {
    FileRoots files(folder.Path());
    files.MakeFolder("c:\\BV-DXF\\2-sided");
    files.WriteFile("c:\\BV-DXF\\job.dxf", "drawing");
    files.WriteFile("c:\\BV-DXF\\2-sided\\job.dxf", "drawing");
    const fs::path out = folder.Path() / "drive_c/BV-DXF";
    fs::create_symlink(out / "job.dxf", folder.Path() / "link.dxf");
    EXPECT_TRUE(files.FolderHolds("c:\\BV-DXF\\", "C:\\bv-dxf\\JOB.dxf"));
    EXPECT_TRUE(files.FolderHolds("c:\\BV-DXF\\", (out / "job.dxf").string()));
    EXPECT_TRUE(files.FolderHolds("c:\\BV-DXF\\", (folder.Path() / "link.dxf").string()));
    EXPECT_FALSE(files.FolderHolds("c:\\BV-DXF\\", "c:\\BV-DXF\\2-sided\\job.dxf"));
    EXPECT_FALSE(files.FolderHolds("c:\\BV-DXF\\", ""));
}

TEST_F(Claims, AMoveReplacesTheFileThatHasTheNameAndTellsOneThatIsMissing) {
    FileRoots files(folder.Path());
    files.MakeFolder("c:\\BV-DXF");
    files.WriteFile("c:\\BV-DXF\\LIST.TXT.unfinished", "new");
    files.WriteFile("c:\\BV-DXF\\LIST.TXT", "old");
    files.MoveFileOver("c:\\BV-DXF\\LIST.TXT.unfinished", "c:\\BV-DXF\\list.txt");
    EXPECT_EQ(files.ReadFile("c:\\BV-DXF\\LIST.TXT"), "new");
    EXPECT_EQ(files.ListFiles("c:\\BV-DXF", "*"), std::vector<std::string>{"LIST.TXT"});
    EXPECT_EQ(FailureOf([&] { files.MoveFileOver("c:\\BV-DXF\\none", "c:\\BV-DXF\\x"); }).number(),
              failure_number::FileNotFound);
}

}  // namespace
}  // namespace brenvik
