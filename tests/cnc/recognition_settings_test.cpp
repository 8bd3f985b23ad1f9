// The settings that say which side cuts what: the operations of both files are put back onto the part all the
// same.
#include <sstream>
#include <utility>

#include "base/numbers.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/recognition_fixture.h"
#include "cnc/targets/target_table.h"

namespace brenvik {
namespace {

class RecognitionSettings : public WholePartTest {
  protected:
    /// Something of everything, on both faces and the edges.
    MadePart PanelOfTwoSides() {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Hole(50, 60, 8);
        part.Hole(80, 60, 5, 12);
        part.HoleBelow(110, 60, 5, 7);
        part.Hole(300, 60, 60);
        part.Window(Rounded(100, 150, 200, 250, 20));
        part.Pocket(Rectangle(250, 150, 400, 350), 8);
        part.PocketBelow(Rounded(430, 100, 560, 300, 25), 6);
        part.Drill({0, 200, 9}, {1, 0, 0}, 34, 8);
        return part;
    }
};

TEST_F(RecognitionSettings, WhatTheFirstSideCutsThroughIsAbsentOnTheSecond) {
    MadePart part = PanelOfTwoSides();
    ExpectSound(part, {0, {"H"}});
    EXPECT_EQ(CountBoth("RT_"), 2U) << "the window and the wide hole";
    EXPECT_EQ(Count(SecondSide(), "RT_"), 0U);
    EXPECT_EQ(CountBoth("VD_"), 3U);
    EXPECT_EQ(CountBoth("PKC_"), 2U);
    EXPECT_EQ(Count(SecondSide(), "PKC_"), 1U);
    EXPECT_EQ(Count(SecondSide(), "OT_"), 1U);
}

TEST_F(RecognitionSettings, EdgeBoresStandInTheFilesOfBothSidesWithoutTheSwitch) {
    MadePart part = PanelOfTwoSides();
    ExpectSound(part, {0, {"H"}});
}

TEST_F(RecognitionSettings, EdgeBoresCanBeKeptForTheSecondSide) {
    Set("HorzBoreOn2", "1");
    MadePart part = PanelOfTwoSides();
    ExpectSound(part);
    EXPECT_EQ(Count(FirstSide(), "H"), 0U);
    EXPECT_EQ(Count(SecondSide(), "H"), 1U);
}

TEST_F(RecognitionSettings, BoresThatWaitForTheSecondSideLeaveNoCirclesOnTheFirst) {
    Set("HorzBoreOn2", "1");
    for (const Target target : {Target::C2C, Target::ROV, Target::BW}) {
        app::Workpiece board = Board(600, 400, 18);
        board.Drill({0, 200, 9}, app::Axis::X, 34, 8);
        RunAll(target);
        const auto first = FirstSide();
        ASSERT_TRUE(first);
        EXPECT_TRUE(OnLayers(*first, layers::HorzCircleHold).empty());
        EXPECT_TRUE(OnLayers(*first, layers::MyHorzCircleHold).empty()) << TraitsOf(target).name;
        for (Acad3DSolid* solid : All<Acad3DSolid>(document)) solid->Delete();
    }
}

TEST_F(RecognitionSettings, AloneOnTheSecondSideEdgeBoresBringTheOutlineAlong) {
    Set("HorzBoreOn2", "1");
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Hole(50, 60, 8);
    part.Window(Rectangle(100, 150, 200, 250));
    part.Drill({0, 200, 9}, {1, 0, 0}, 34, 8);
    ExpectSound(part);
    EXPECT_EQ(Kinds(FirstSide()), "OT 1 PL 1 RT 1 VD 1");
    EXPECT_EQ(Kinds(SecondSide()), "HL 1 OT 1 PL 1");
}

TEST_F(RecognitionSettings, WithoutTwoSidedWorkTheUndersideIsLeft) {
    Set("DontDoTwoSided", "1");
    MadePart part = PanelOfTwoSides();
    PutDown(part);
    RunAll();
    ExpectQuiet();
    EXPECT_FALSE(SecondSide());
    EXPECT_EQ(Faults(part.Solid(), 0, {1e9, {}}), std::vector<std::string>{});
}

TEST_F(RecognitionSettings, TheOutlineOfTheSecondSideCanBeDropped) {
    Set("DeleteOT", "1");
    MadePart part = PanelOfTwoSides();
    ExpectSound(part, {0, {"H"}});
    EXPECT_EQ(Count(FirstSide(), "OT_"), 1U);
    EXPECT_EQ(Count(SecondSide(), "OT_"), 0U);
}

TEST_F(RecognitionSettings, TheOriginOfTheSecondSideMovesAndNoOperationDoes) {
    Set("2SideUCS", "1");
    MadePart part = PanelOfTwoSides();
    ExpectSound(part, {0, {"H"}});
    const std::string text = files.ReadFile("c:\\BV-DXF\\2-sided\\BPart_0_Panel_7.dxf");
    const std::size_t at = text.find("$UCSORG");
    ASSERT_NE(at, std::string::npos);
    std::istringstream lines(text.substr(at));
    std::array<std::string, 7> line;
    for (std::string& each : line) std::getline(lines, each);
    EXPECT_EQ(LenientNumber(line[2]), 0);
    EXPECT_EQ(LenientNumber(line[4]), 400);
    EXPECT_EQ(LenientNumber(line[6]), 0);
}

TEST_F(RecognitionSettings, APartOfTheThirdFaceComesOutTheOtherWayUp) {
    for (const bool special : {false, true}) {
        Set("SpecialMaterial", special ? "1" : "0");
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Pocket(Rectangle(100, 100, 300, 200), 8);
        part.Hole(400, 300, 8, 12);
        PutDown(part);
        mAutoCAD::SetPartData(&part.Solid(), "Face", "3");
        RunAll();
        const std::size_t first = Count(FirstSide(), "PKC_") + Count(FirstSide(), "VD_");
        const std::size_t second = Count(SecondSide(), "PKC_") + Count(SecondSide(), "VD_");
        EXPECT_EQ(first, special ? 0U : 2U);
        EXPECT_EQ(second, special ? 2U : 0U);
        part.Solid().Delete();
    }
}

TEST_F(RecognitionSettings, PocketsAroundAThroughRouteAreRoutesWithTheConversion) {
    for (const bool on : {false, true}) {
        Set("PocketConversion", on ? "1" : "0");
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Pocket(Rectangle(80, 80, 220, 220), 10);
        part.Window(Rectangle(100, 100, 200, 200));
        part.Pocket(Rectangle(300, 80, 400, 220), 10);
        PutDown(part);
        RunAll();
        EXPECT_EQ(Kinds(FirstSide()), on ? "OT 1 PKC 1 PL 1 RT 2" : "OT 1 PKC 2 PL 1 RT 1");
        const std::vector<Drawn> routes = OnLayers(*FirstSide(), "RT_Z8_");
        ASSERT_EQ(routes.size(), on ? 1U : 0U);
        // All but the first field is the pocket's.
        if (on) {
            EXPECT_EQ(routes[0].layer.substr(0, 30), "RT_Z8_T1_D12_S18000_F300_R_C0_");
        }
        part.Solid().Delete();
    }
}

TEST_F(RecognitionSettings, NestingLeavesTheOutlineOfTheFirstSideAway) {
    Set("BiesseWorksNest", "1");
    MadePart part = PanelOfTwoSides();
    PutDown(part);
    RunAll(Target::BW);
    ExpectQuiet();
    const auto outlines = [](const std::optional<std::vector<Drawn>>& side) {
        return std::ranges::count_if(*side, [](const Drawn& each) { return each.color == 2; });
    };
    ASSERT_TRUE(FirstSide() && SecondSide());
    EXPECT_EQ(outlines(FirstSide()), 0);
    EXPECT_EQ(outlines(SecondSide()), 1);
}

TEST_F(RecognitionSettings, TonguesOfEveryEdgeGetTheirLeads) {
    // Notches on both sides of a tongue, each clear of the corners of the board.
    const std::vector<std::pair<Shape, Shape>> edges{
        {Rectangle(570, 80, 601, 150), Rectangle(570, 250, 601, 320)},
        {Rectangle(-1, 80, 30, 150), Rectangle(-1, 250, 30, 320)},
        {Rectangle(150, -1, 250, 30), Rectangle(350, -1, 450, 30)},
        {Rectangle(150, 370, 250, 401), Rectangle(350, 370, 450, 401)},
    };
    for (std::size_t count = 1; count <= edges.size(); ++count) {
        SCOPED_TRACE(count);
        MadePart part = Made();
        part.Board(600, 400, 18);
        for (std::size_t i = 0; i < count; ++i) {
            part.Window(edges[i].first);
            part.Window(edges[i].second);
        }
        PutDown(part);
        Set("ToungeProcessing", "0");
        RunAll();
        EXPECT_EQ(Faults(part.Solid()), std::vector<std::string>{});
        EXPECT_EQ(Only(FirstSide(), "OT_").points.size(), 4 + 8 * count);
        Set("ToungeProcessing", "1");
        RunAll();
        // Three corners in place of each of the two of a tip.
        EXPECT_EQ(Only(FirstSide(), "OT_").points.size(), 4 + 8 * count + 4 * count);
        part.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
