// The switches and numbers of the settings dialog that decide what a run writes.
#include "cnc/cnc_fixture.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;
using app::Axis;
using app::Workpiece;

class RunSettings : public CncTest {
  protected:
    static constexpr const char* firstFile = "c:\\BV-DXF\\Part_0_Panel_7.dxf";
    static constexpr const char* secondFile = "c:\\BV-DXF\\2-sided\\BPart_0_Panel_7.dxf";

    void Run(Target target = Target::C2C) {
        ChooseAllSolids();
        RunOnSelection(host, target, GridBeforeRuns());
    }
    /// A window, and a pocket from below, so that there is a second side.
    Workpiece PanelOfTwoSides() {
        Workpiece board = Board(600, 400, 18);
        board.Cut({100, 100, -1}, {200, 200, 19});
        board.Cut({300, 100, -1}, {400, 250, 6});
        board.Drill({40, 40, 18}, Axis::Z, -12, 8);
        return board;
    }
    static std::size_t OfColor(const std::vector<Drawn>& drawn, int color) {
        return static_cast<std::size_t>(std::count_if(drawn.begin(), drawn.end(), [color](const Drawn& one) {
            return one.kind == "AcDbPolyline" && one.color == color;
        }));
    }
    std::string List(const char* name = "WORKLIST.TXT") {
        return files.ReadFile(std::string(OutputFolder) + name);
    }
};

TEST_F(RunSettings, TheOutsidePathOfTheFirstSideGoesAndCutOutsOnItsLayerStay) {
    for (const Target target : {Target::C2C, Target::ASP, Target::ROV, Target::BW}) {
        PanelOfTwoSides();
        Set("BiesseWorksNest", "0");
        Run(target);
        EXPECT_EQ(OfColor(Read(firstFile), 2), 1U);
        EXPECT_EQ(OfColor(Read(firstFile), 1), 1U);
        Set("BiesseWorksNest", "1");
        Run(target);
        EXPECT_EQ(OfColor(Read(firstFile), 2), 0U);
        EXPECT_EQ(OfColor(Read(firstFile), 1), 1U) << "the window";
        EXPECT_EQ(OfColor(Read(secondFile), 2), 1U) << "the switch is for the first side";
        document.ModelSpace().ForEach([](AcadEntity& entity) { entity.Delete(); });
    }
}

TEST_F(RunSettings, TheOutsidePathOfTheSecondSideGoesWithTheSwitch) {
    PanelOfTwoSides();
    for (const Target target : {Target::C2C, Target::ASP}) {
        Set("DeleteOT", "0");
        Run(target);
        EXPECT_EQ(OfColor(Read(secondFile), 2), 1U);
        EXPECT_EQ(Read(secondFile).size(), 3U)
            << "outline, sheet and pocket: the window was cut on the first";
        Set("DeleteOT", "1");
        Run(target);
        EXPECT_EQ(OfColor(Read(firstFile), 2), 1U);
        EXPECT_EQ(OfColor(Read(secondFile), 2), 0U);
        EXPECT_EQ(Read(secondFile).size(), 2U);
    }
}

TEST_F(RunSettings, TheOriginOfTheSecondSideMovesToTheBackLeftCorner) {
    PanelOfTwoSides();
    Set("2SideUCS", "1");
    Run();
    for (const auto& [path, origin] : {std::pair{firstFile, Point3{}}, {secondFile, Point3{0, 400, 0}}}) {
        HostDocument& written = host.OpenNamed(path);
        EXPECT_EQ(written.ActiveUCS()[0], origin) << path;
        written.Close(false);
    }
}

TEST_F(RunSettings, EdgeBoresForcedToTheSecondSideMakeOne) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({0, 100, 9}, Axis::X, 34, 8);
    Set("HorzBoreOn2", "1");
    Run();
    EXPECT_EQ(OnLayers(Read(firstFile), "H").size(), 0U);
    EXPECT_EQ(OnLayers(Read(secondFile), "H").size(), 1U);
}

TEST_F(RunSettings, WithoutEdgeBoresTheForcedSecondSideHasNoFile) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({40, 40, 18}, Axis::Z, -12, 8);
    Set("HorzBoreOn2", "1");
    Run();
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Panel_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(FilesIn(SecondSideFolder), Texts{});
    EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
    EXPECT_TRUE(LastRunReport().passedOver.empty());
}

TEST_F(RunSettings, TwoSidedWorkCanBeTurnedOff) {
    PanelOfTwoSides();
    PanelOfTwoSides();
    Set("DontDoTwoSided", "1");
    Run();
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Panel_7.dxf", "Part_1_Panel_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(FilesIn(SecondSideFolder), Texts{});
}

TEST_F(RunSettings, ABlankNumberCountsAsNought) {
    Board(600, 400, 18);
    for (const char* text : {"", "many", "0"}) {
        Set("CNCMultiplier", text);
        Run();
        EXPECT_NE(List().find(",18 OAK,0,0,Panel,"), std::string::npos) << List();
        EXPECT_EQ(Messages().back(), "-- Export Complete! --");
    }
    Set("CNCMultiplier", "1");
    Set("BWPriority", "");
    Run(Target::BW);
    EXPECT_NE(List("WorkList.txt").find("\t1\t50\t180\t0"), std::string::npos) << List("WorkList.txt");
}

TEST_F(RunSettings, SwitchesThatAreMissingAreOff) {
    PanelOfTwoSides();
    for (const char* name :
         {"BiesseWorksNest", "2SideUCS", "DeleteOT", "ToungeProcessing", "SpecialMaterial",
          "PocketConversion", "HorzBoreOn2", "DontDoTwoSided", "ConvertMaterialName", "MyWindowState"})
        DeleteSettingText(SettingName(name));
    Run();
    EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
    EXPECT_EQ(OfColor(Read(firstFile), 2), 1U);
    EXPECT_EQ(OfColor(Read(secondFile), 2), 1U);
}

}  // namespace
}  // namespace brenvik
