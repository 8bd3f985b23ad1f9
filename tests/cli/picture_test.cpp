// brenvik picture: part files drawn, read back from the drawing.
#include <filesystem>
#include <regex>

#include "base/text.h"
#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class Picture : public ProgramTest {
  protected:
    /// Two boards, 600 by 400 by 18, with a hole 8 wide and 10 deep from above and a pocket from below.
    void MakeFiles(const std::string& target) const {
        WriteBoardsTo(folder / "job.dxf", {{"Side", "Shelf"}, "White Melamine", true});
        const Outcome outcome = Run({"cnc", "job.dxf", "--target", target, "--out", "cut", "--quiet"});
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
    }
    std::string Draw(const std::string& file) const {
        const Outcome outcome = Run({"picture", file, "out.svg"});
        EXPECT_EQ(outcome.errors, "");
        EXPECT_EQ(outcome.status, 0);
        return Exists("out.svg") ? Read("out.svg") : "";
    }
};

int ShapesOf(const std::string& svg, const std::string& kind) {
    const std::string mark = "<path class=\"" + kind + "\"";
    int count = 0;
    for (std::size_t at = svg.find(mark); at != std::string::npos; at = svg.find(mark, at + 1)) ++count;
    return count;
}

/// The path of the only shape of this kind.
std::string PathOf(const std::string& svg, const std::string& kind) {
    std::smatch found;
    const std::regex path("<path class=\"" + kind + "\"[^>]* d=\"([^\"]*)\"");
    return std::regex_search(svg, found, path) ? found[1].str() : "";
}

TEST_F(Picture, APathHasTheCoordinatesOfTheFile) {
    MakeFiles("C2C");
    // The side with the pocket lies up first.
    const std::string svg = Draw("cut/Part_0_Side_7.dxf");
    EXPECT_EQ(ShapesOf(svg, "outline"), 1);
    EXPECT_EQ(ShapesOf(svg, "sheet"), 1);
    EXPECT_EQ(ShapesOf(svg, "unread"), 0);
    EXPECT_EQ(ShapesOf(svg, "hole"), 0);
    EXPECT_EQ(PathOf(svg, "pocket"), "M200 300L200 150L300 150L300 300L200 300Z");
    EXPECT_NE(svg.find("<title>pocket, 6 mm deep, tool 1, bit 12 mm</title>"), std::string::npos) << svg;
    EXPECT_NE(svg.find(">1 x pocket, 6 mm deep, tool 1, bit 12 mm</text>"), std::string::npos) << svg;
    EXPECT_NE(svg.find("Part_0_Side_7   600 x 400 mm, 18 mm thick</text>"), std::string::npos) << svg;
}

TEST_F(Picture, ASecondSideIsDrawnAsItsFileLies) {
    MakeFiles("C2C");
    const std::string svg = Draw("cut/2-sided/BPart_0_Side_7.dxf");
    EXPECT_EQ(ShapesOf(svg, "pocket"), 0);
    EXPECT_EQ(PathOf(svg, "hole"), "M96 100A4 4 0 0 1 104 100A4 4 0 0 1 96 100Z");
    EXPECT_NE(svg.find("<title>hole 8 mm, 10 mm deep</title>"), std::string::npos) << svg;
}

TEST_F(Picture, FilesOfEveryTargetAreUnderstood) {
    for (const char* target :
         {"C2C", "ATP", "ROV", "CNI", "ASP", "WOP4", "WOP5", "THERM", "BW", "Enroute", "ABC", "RCIM"}) {
        MakeFiles(target);
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder / "cut")) {
            if (entry.path().extension() != ".dxf") continue;
            const std::string svg = Draw(entry.path().string());
            const bool second = entry.path().filename().string().starts_with("B");
            EXPECT_EQ(ShapesOf(svg, "unread"), 0) << target;
            EXPECT_EQ(ShapesOf(svg, "hole"), second ? 1 : 0) << target;
            EXPECT_EQ(ShapesOf(svg, "outline"), 1) << target << ' ' << entry.path();
            EXPECT_EQ(ShapesOf(svg, "route") + ShapesOf(svg, "pocket"), second ? 0 : 1) << target;
        }
    }
}

TEST_F(Picture, EdgeBoresAreDrawnAsDeepAsTheyAre) {
    WriteSample("job.dxf");
    Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--quiet"});
    const std::string svg = Draw("cut/Part_2_Bottom_B600-03.dxf");
    EXPECT_GT(ShapesOf(svg, "bore"), 0);
    EXPECT_NE(svg.find("edge bore 8 mm, "), std::string::npos) << svg;
}

TEST_F(Picture, AnOperationThatNobodyUnderstandsIsDrawnAndTold) {
    MakeFiles("C2C");
    std::string text = Read("cut/2-sided/BPart_0_Side_7.dxf");
    for (std::size_t at = text.find("VD_Z10_T_D8"); at != std::string::npos;
         at = text.find("VD_Z10_T_D8", at))
        text.replace(at, 11, "VD_Zten_T_8");
    Write("BPart_odd.dxf", text);
    const Outcome outcome = Run({"picture", "BPart_odd.dxf", "out.svg"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "BPart_odd.dxf: an operation whose name tells nothing on layer VD_Zten_T_8 of the second side\n");
    EXPECT_EQ(ShapesOf(Read("out.svg"), "unread"), 1);
}

TEST_F(Picture, TheBoardIsAsLargeAsItsSheetHoweverFarPathsRunOff) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
    ASSERT_EQ(Run({"cnc", "job.dxf", "--target", "C2C", "--out", "cut", "--quiet"}).status, 0);
    const std::string file = "cut/Part_0_Side_7.dxf";
    std::string text = ReplaceAll(Read(file), "\r\n", "\n");
    // The outline's first corner goes out by 7, as a path's does that runs off the edge.
    const std::size_t outline = text.find("OT_Z", text.find("\nENTITIES\n"));
    const std::size_t corner = text.find("\n 10\n0.0\n", outline);
    ASSERT_NE(corner, std::string::npos);
    Write(file, text.replace(corner, 9, "\n 10\n-7.0\n"));
    EXPECT_NE(Draw(file).find("Part_0_Side_7   600 x 400 mm, 18 mm thick</text>"), std::string::npos);
}

TEST_F(Picture, TheUnitIsThatOfTheFile) {
    MakeFiles("C2C");
    const std::string file = "cut/Part_0_Side_7.dxf";
    std::string text = ReplaceAll(Read(file), "\r\n", "\n");
    const std::size_t unit = text.find("\n 70\n", text.find("$INSUNITS"));
    ASSERT_NE(unit, std::string::npos);
    text.replace(unit + 5, text.find('\n', unit + 5) - unit - 5, "1");
    Write(file, text);
    EXPECT_NE(Draw(file).find("600 x 400 in, 18 in thick</text>"), std::string::npos);
}

TEST_F(Picture, ADrawingThatIsNoPartFileIsRefused) {
    WriteBoardsTo(folder / "job.dxf", {{"Side"}, "White Melamine", false});
    const Outcome outcome = Run({"picture", "job.dxf", "out.svg"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.errors,
              "brenvik: job.dxf: expected a part file of a run, found no layer that names an operation\n");
    EXPECT_FALSE(Exists("out.svg"));
    EXPECT_EQ(Run({"picture", "none.dxf", "out.svg"}).status, 3);
    EXPECT_EQ(Run({"picture", "job.dxf", "out.gif"}).status, 2);
}

}  // namespace
}  // namespace brenvik::cli_test
