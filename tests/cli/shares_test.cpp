// A run whose parts are shared out among several calls, and put together, comes to what one call comes to.
#include <string>
#include <vector>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

class Shares : public ProgramTest {
  protected:
    Shares() { EXPECT_EQ(Run({"init"}).status, 0); }

    Outcome Share(const std::string& share, const std::string& out, const Words& words) const {
        Words all{"cnc", "job.dxf", "--out", out, "--shard", share};
        all.insert(all.end(), words.begin(), words.end());
        return Run(all);
    }

    /// Makes the shares, each in a folder "s1", "s2" and so on, and gives their names.
    Words MakeShares(int count, const Words& words) const {
        Words folders;
        for (int share = 1; share <= count; ++share) {
            folders.push_back("s" + std::to_string(share));
            fs::remove_all(folder / folders.back());
            const Outcome made =
                Share(std::to_string(share) + "/" + std::to_string(count), folders.back(), words);
            EXPECT_LE(made.status, 1) << made.errors;
            EXPECT_TRUE(Exists(folders.back() + "/share.txt")) << made.errors;
            EXPECT_FALSE(Exists(folders.back() + "/WORKLIST.TXT"));
        }
        return folders;
    }

    Outcome Join(const Words& folders, const std::string& out = "joined") const {
        Words all{"join", "--out", out};
        all.insert(all.end(), folders.begin(), folders.end());
        return Run(all);
    }

    /// What one call comes to.
    Outcome ExpectOneOutcome(int count, const Words& words) const {
        for (const char* name : {"one", "joined"}) fs::remove_all(folder / name);
        Words all{"cnc", "job.dxf", "--out", "one"};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome one = Run(all);
        const Outcome joined = Join(MakeShares(count, words));
        EXPECT_EQ(joined.status, one.status);
        EXPECT_EQ(joined.errors, one.errors);
        EXPECT_EQ(joined.output, one.output);
        EXPECT_TRUE(FilesBelow("joined") == FilesBelow("one"));
        EXPECT_GE(FilesBelow("one").size(), 2U);
        return one;
    }

    void ExpectRefused(const Words& folders, int status, const std::string& why) const {
        const Outcome refused = Join(folders, "refused");
        EXPECT_EQ(refused.status, status) << refused.errors;
        EXPECT_NE(refused.errors.find(why), std::string::npos) << refused.errors;
        EXPECT_FALSE(Exists("refused"));
    }

    void WriteBoards(int count, bool twoSides) const {
        Boards boards;
        for (int board = 0; board < count; ++board)
            boards.names.push_back("Board " + std::to_string(board % 4));
        boards.pocketBelow = twoSides;
        WriteBoardsTo(folder / "job.dxf", boards);
    }
};

TEST_F(Shares, ComeToWhatOneCallComesTo) {
    WriteSample("job.dxf");
    for (const int count : {1, 2, 3}) {
        SCOPED_TRACE(count);
        EXPECT_EQ(ExpectOneOutcome(count, {"--target", "C2C"}).status, 1);
    }
}

TEST_F(Shares, MayBeMoreThanThereAreParts) {
    WriteBoards(3, false);
    EXPECT_EQ(ExpectOneOutcome(5, {"--target", "THERM"}).status, 0);
}

TEST_F(Shares, HaveBothSidesAndAreProved) {
    WriteBoards(9, true);
    EXPECT_EQ(ExpectOneOutcome(2, {"--target", "BW"}).status, 0);
    EXPECT_TRUE(Exists("joined/2-sided/WorkList.txt"));
    EXPECT_EQ(Run({"prove", "job.dxf", "joined"}).status, 0);
}

TEST_F(Shares, TakeGroupsFromTheGrid) {
    WriteBoards(12, true);
    EXPECT_EQ(ExpectOneOutcome(2, {"--target", "RCIM", "--from-grid"}).status, 0);
}

TEST_F(Shares, KeepOptionsOfTheirCalls) {
    WriteSample("job.dxf");
    ExpectOneOutcome(2, {"--target", "ROV", "--no-proof", "--material", "Birch Ply"});
}

TEST_F(Shares, AreRefusedUnlessTheyAreAllSharesOfOneJob) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    ExpectRefused({"s1"}, 2, "share 2/2 is missing");
    ExpectRefused({"s1", "s2", "s1"}, 2, "found share 1/2 in both");
    ExpectRefused({"s1", "s3"}, 3, "s3: expected a folder with a share");
    EXPECT_EQ(Share("2/2", "other", {"--target", "ATP"}).status, 0);
    ExpectRefused({"s1", "other"}, 2, "target: expected \"C2C\", found \"ATP\"");
    EXPECT_EQ(Run({"settings", "set", "CircleSize", "20"}).status, 0);
    EXPECT_EQ(Share("2/2", "set", {"--target", "C2C"}).status, 0);
    ExpectRefused({"s1", "set"}, 2, "CircleSize");
    ExpectRefused(shares, 2, "CircleSize");
    WriteBoards(5, false);
    EXPECT_EQ(Share("2/2", "drawn", {"--target", "C2C"}).status, 0);
    ExpectRefused({"set", "drawn"}, 2, "content of the drawing");
}

TEST_F(Shares, AreRefusedWhenTheyAreNotAsTheyWereWritten) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    const std::string text = Read("s2/share.txt");
    Write("s2/share.txt", text.substr(0, text.size() / 2));
    ExpectRefused(shares, 3, "s2/share.txt");
    fs::remove(folder / "s2/share.txt");
    ExpectRefused(shares, 3, "s2: expected a share");
    Write("s2/share.txt", text);
    std::string file;
    for (const auto& [name, content] : FilesBelow("s2"))
        if (name.ends_with(".dxf")) file = "s2/" + name;
    ASSERT_FALSE(file.empty());
    const std::string content = Read(file);
    Write(file, content + " ");
    ExpectRefused(shares, 3, file);
    fs::remove(folder / file);
    ExpectRefused(shares, 3, file);
    Write(file, content);
    EXPECT_EQ(Join(shares).status, 0);
}

TEST_F(Shares, AreRefusedWithoutTheirDrawing) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    fs::rename(folder / "job.dxf", folder / "moved.dxf");
    ExpectRefused(shares, 3, "expected the drawing");
    EXPECT_EQ(Run({"join", "s1", "s2", "--out", "joined", "--drawing", "moved.dxf"}).status, 0);
}

TEST_F(Shares, NeedFoldersOfTheirOwn) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    EXPECT_EQ(Share("1/2", "s2", {"--target", "C2C"}).status, 2);
    EXPECT_EQ(Share("2/2", "s2", {"--target", "C2C"}).status, 0);
    EXPECT_EQ(Join(shares, "s1").status, 2);
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--shard", "1/2"}).status, 2);
    for (const char* share : {"0/2", "3/2", "2", "a/b", "", "1/", "/2"})
        EXPECT_EQ(Share(share, "s9", {"--target", "C2C"}).status, 2) << share;
}

}  // namespace
}  // namespace brenvik::cli_test
