// A run whose parts are shared out among several calls, and put together, comes to what one call comes to.
#include "shares_fixture.h"

namespace brenvik::cli_test {
namespace {

namespace fs = std::filesystem;

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
