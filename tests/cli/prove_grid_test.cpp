// brenvik prove for runs by way of the grid, where equal parts share a file and a line of the list.
#include <array>

#include "base/text.h"
#include "prove_fixture.h"

namespace brenvik::cli_test {
namespace {

constexpr std::array<const char*, 12> AllPackages{"C2C",  "ATP",   "ROV", "CNI",     "ASP", "WOP4",
                                                  "WOP5", "THERM", "BW",  "Enroute", "ABC", "RCIM"};

class ProveByGrid : public Prove {
  protected:
    /// The job's run by way of the grid, and its proof, for each package.
    void ExpectSoundForAllPackages() const {
        for (const char* target : AllPackages) {
            ASSERT_EQ(
                Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--from-grid", "--quiet"}).status,
                0);
            const Outcome outcome = ProveJob({"--from-grid"});
            EXPECT_EQ(outcome.errors, "") << target;
            EXPECT_EQ(outcome.status, 0) << target;
        }
    }
};

TEST_F(Prove, ByWayOfTheGridEqualPartsShareAFile) {
    WriteBoardsTo(folder / "job.dxf", {{"Side", "Side", "Shelf"}, "White Melamine", true});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--from-grid", "--quiet"}).status, 0);
    const Outcome outcome = ProveJob({"--from-grid"});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "3 of 3 parts come out of cut as they are drawn\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(ProveByGrid, GroupsOfOneNameHaveTheirOwnLines) {
    // Some lists say no lengths, so that the lines of two groups are the same but for the file.
    Boards boards{{"Side", "Side", "Side", "Side", "Side"}, "White Melamine", false};
    boards.lengths = {600, 600, 500, 400, 500};
    WriteBoardsTo(folder / "job.dxf", boards);
    ExpectSoundForAllPackages();
}

TEST_F(ProveByGrid, EqualPartsOfTwoCabinetsHaveAFileEach) {
    Boards boards{{"Side", "Side", "Side"}, "White Melamine", true};
    boards.subAssemblies = {"Left", "Right", "Right"};
    WriteBoardsTo(folder / "job.dxf", boards);
    ExpectSoundForAllPackages();
}

TEST_F(Prove, ByWayOfTheGridQuantitiesAndTextsOfTheListAreLookedAt) {
    WriteBoardsTo(folder / "job.dxf", {{"Side", "Side", "Shelf"}, "White Melamine", true});
    for (const char* target : AllPackages) {
        ASSERT_EQ(
            Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--from-grid", "--quiet"}).status, 0);
        for (const std::string side : {"", "2-sided/"}) {
            std::string list;
            for (const auto& entry : std::filesystem::directory_iterator(folder / "cut" / side))
                if (entry.is_regular_file() && entry.path().extension() != ".dxf")
                    list = "cut/" + side + entry.path().filename().string();
            const std::string text = Read(list);
            const std::string tab = text.find('\t') == std::string::npos ? "," : "\t";
            const bool first = text.starts_with("2,");
            const std::string fewer =
                first ? "1," + text.substr(2) : ReplaceAll(text, tab + "2" + tab, tab + "1" + tab);
            ASSERT_NE(fewer, text) << target;
            Write(list, fewer);
            EXPECT_EQ(ProveJob({"--from-grid"}).status, 1) << target;
            const std::string other =
                ReplaceAll(ReplaceAll(text, ".dxf" + tab, ".dxf" + tab + "9"), ",LWT,", ",WLT,");
            ASSERT_NE(other, text) << target;
            Write(list, other);
            EXPECT_EQ(ProveJob({"--from-grid"}).status, 1) << target;
            Write(list, text);
        }
    }
}

TEST_F(Prove, ByWayOfTheGridACopyOfAFileIsTold) {
    WriteBoardsTo(folder / "job.dxf", {{"Side", "Side"}, "White Melamine", true});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--from-grid", "--quiet"}).status, 0);
    std::filesystem::copy(folder / "cut/Part_0_Side_7.dxf", folder / "cut/Part_5_Side_7.dxf");
    ExpectTold(ProveJob({"--from-grid"}), "The file Part_5_Side_7.dxf is of no part that was looked at",
               onlyStray);
}

}  // namespace
}  // namespace brenvik::cli_test
