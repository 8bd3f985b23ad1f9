// A run whose parts are shared out among several calls, and put together, comes to what one call comes to.
#include "base/sha256.h"
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

// A line that has slipped into another section is read by nobody, and of a name that stands twice the first
// counts.
TEST_F(Shares, CompareSettingsAsRunsReadThem) {
    WriteBoards(4, false);
    ASSERT_EQ(Run({"settings", "set", "DontDoTwoSided", "1"}).status, 0);
    EXPECT_EQ(Share("1/2", "s1", {"--target", "C2C"}).status, 0);
    const std::string sound = Read("home/settings.txt"), line = "DontDoTwoSided=1\n";
    std::string slipped = sound;
    ASSERT_NE(slipped.find(line), std::string::npos);
    slipped.erase(slipped.find(line), line.size());
    Write("home/settings.txt", slipped + line);
    EXPECT_EQ(Share("2/2", "s2", {"--target", "C2C"}).status, 1);
    ExpectRefused({"s1", "s2"}, 2, "setting DontDoTwoSided: expected \"1\"");
    Write("home/settings.txt", sound + line);
    Share("2/2", "s3", {"--target", "C2C"});
    EXPECT_NE(Join({"s1", "s3"}).status, 2);
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
    for (const char* out : {"s1", "s1/joined", "./s2/2-sided/../deep/joined"}) {
        const Outcome inside = Join(shares, out);
        EXPECT_EQ(inside.status, 2);
        EXPECT_NE(
            inside.errors.find("--out: expected a folder outside the shares, found " + std::string(out)),
            std::string::npos)
            << inside.errors;
    }
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--shard", "1/2"}).status, 2);
    for (const char* share : {"0/2", "3/2", "2", "a/b", "", "1/", "/2"})
        EXPECT_EQ(Share(share, "s9", {"--target", "C2C"}).status, 2) << share;
}

/// With `before` replaced, as by a program that writes it so.
std::string WithFact(const std::string& share, const std::string& before, const std::string& after) {
    const std::size_t head = share.find('\n'), body = share.find('\n', head + 1) + 1;
    std::string packed = share.substr(body);
    const std::size_t at = packed.find(before);
    EXPECT_NE(at, std::string::npos) << before;
    if (at != std::string::npos) packed.replace(at, before.size(), after);
    return share.substr(0, head + 1) + Sha256(packed) + "\n" + packed;
}

std::string Replaced(std::string text, const std::string& before, const std::string& after) {
    const std::size_t at = text.find(before);
    EXPECT_NE(at, std::string::npos) << before;
    return at == std::string::npos ? text : text.replace(at, before.size(), after);
}

TEST_F(Shares, TellWhichBoardsDiffer) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    const std::string boards = Read("home/materials.txt");
    Write("home/materials.txt", Replaced(boards, "tool1dia=12\r", "tool1dia=10\r"));
    ExpectRefused(shares, 2, "board 18 white melamine: expected \"tool1dia=12\", found \"tool1dia=10\"");
    Write("home/materials.txt", Replaced(boards, "material=19 cherry\r", "material=19 elm\r"));
    ExpectRefused(shares, 2,
                  "board 19 cherry: expected it, found none; board 19 elm: expected none, found it");
    Write("home/materials.txt", boards + "material=19 cherry\r\n");
    ExpectRefused(shares, 2, "board 19 cherry: expected it to stand there once, found it twice\n");
    Write("home/materials.txt", "");
    ExpectRefused(shares, 2, "more");
    Write("home/materials.txt", boards);
    EXPECT_EQ(Join(shares).status, 0);
}

// Another system or an editor writes the same boards with other ends of lines, a byte order mark, or blank
// lines between them.
TEST_F(Shares, CompareBoardsAsRunsReadThem) {
    WriteBoards(4, false);
    const std::string boards = Read("home/materials.txt");
    ASSERT_NE(boards.find('\r'), std::string::npos);
    EXPECT_EQ(Share("1/2", "s1", {"--target", "C2C"}).status, 0);
    std::string other;
    for (const char letter : boards)
        if (letter != '\r') other += letter;
    Write("home/materials.txt",
          "\xEF\xBB\xBF" + Replaced(other, "material=19 cherry", "\nmaterial=19 cherry"));
    EXPECT_EQ(Share("2/2", "s2", {"--target", "C2C"}).status, 0);
    EXPECT_EQ(Join({"s1", "s2"}).status, 0);
    ASSERT_EQ(Run({"materials", "add", "33 new", "--like", "19 cherry"}).status, 0);
    const Outcome refused = Join({"s1", "s2"}, "refused");
    EXPECT_EQ(refused.status, 2);
    EXPECT_NE(refused.errors.find("; board 33 new: expected none, found it\n"), std::string::npos)
        << refused.errors;
}

TEST_F(Shares, DoNotHangOnWindows) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    ASSERT_EQ(Run({"settings", "set", "MyWindowState", "1"}).status, 0);
    EXPECT_EQ(Join(shares).status, 0);
}

TEST_F(Shares, SayWhenTheirTextHasOtherLineEnds) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    Write("s2/share.txt", Replaced(Read("s2/share.txt"), "\n", "\r\n"));
    ExpectRefused(shares, 3,
                  "s2/share.txt: expected the text of a share as it was written, found one with other ends");
}

TEST_F(Shares, AreRefusedFromAnotherBuildOfTheProgram) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    const std::string share = Read("s2/share.txt");
    for (const std::string build : {"build of the program", "build of the modeller"}) {
        SCOPED_TRACE(build);
        const std::size_t at = share.find(build) + build.size();
        const std::size_t value = share.find(':', at) + 1;
        const std::string before = share.substr(at, value - at + 8);
        Write("s2/share.txt", WithFact(share, before, before.substr(0, before.size() - 8) + "abcdef00"));
        ExpectRefused(shares, 2, build + ": expected \"");
    }
    Write("s2/share.txt", WithFact(share, "brenvik 0.", "brenvik 9."));
    ExpectRefused(shares, 2, "program: expected \"brenvik 0.");
}

TEST_F(Shares, AreRefusedInAnOlderForm) {
    WriteBoards(4, false);
    const Words shares = MakeShares(2, {"--target", "C2C"});
    Write("s2/share.txt", Replaced(Read("s2/share.txt"), "; form 2\n", "\n"));
    ExpectRefused(shares, 3,
                  "s2/share.txt: expected a share as this program writes it, found one by another");
}

TEST_F(Shares, MayBeMadeInAHomeThatIsNew) {
    WriteBoards(4, false);
    fs::remove_all(folder / "home");
    EXPECT_EQ(Join(MakeShares(2, {"--target", "C2C"})).status, 0);
}

TEST_F(Shares, DoNotHangOnProfilesAndAdjustments) {
    WriteBoards(6, false);
    const Words words{"--target", "C2C", "--from-grid"};
    const Words shares = MakeShares(2, words);
    Write("home/No Adjustments.txt",
          "[longer]\r\nMaterial=White Melamine\r\nLengthADJ=10\r\nLength=10\r\nWidth=5\r\n");
    Write("home/CNCProfile.txt", "[CNC]\r\nextension=txt\r\ncolumns=ID,QTY,Price\r\n");
    EXPECT_EQ(Join(shares).status, 0);
    EXPECT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--from-grid", "--out", "one"}).status, 0);
    EXPECT_TRUE(FilesBelow("joined") == FilesBelow("one"));
}

}  // namespace
}  // namespace brenvik::cli_test
