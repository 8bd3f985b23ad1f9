// Routes, pockets and tongues of whole parts, from the solid to the file.
#include <array>

#include "cnc/checker.h"

namespace brenvik {
namespace {

using app::Workpiece;

class RoutingWholeParts : public CheckedRunTest {
  protected:
    /// Takes away an upright body over a plane shape: X and Y of each corner.
    void CutShape(Workpiece& piece, const std::vector<double>& shape, double from, double to,
                  const std::vector<double>& bulges = {}) {
        AcadBlock& space = document.ModelSpace();
        AcadLWPolyline* polyline = space.AddLightWeightPolyline(shape);
        polyline->SetClosed(true);
        for (std::size_t i = 0; i < bulges.size(); ++i) polyline->SetBulge(static_cast<int>(i), bulges[i]);
        const std::array<AcadEntity*, 1> curves{polyline};
        AcadRegion* region = space.AddRegion(curves).front();
        const double up = region->Normal().z < 0 ? -1 : 1;
        Acad3DSolid* tool = space.AddExtrudedSolid(*region, up * (to - from), 0);
        tool->Move({0, 0, 0}, {0, 0, from});
        region->Delete();
        polyline->Delete();
        piece.Solid().Boolean(BooleanKind::Subtraction, *tool);
    }
    void ExpectSound(Workpiece& piece) {
        Lay(piece.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
        RunAll();
        EXPECT_EQ(Faults(piece.Solid()), std::vector<std::string>{});
        EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
    }
    bool Told(std::string_view words) {
        return std::ranges::any_of(Messages(), [words](const std::string& message) {
            return message.find(words) != std::string::npos;
        });
    }
};

TEST_F(RoutingWholeParts, ASlantedDadoAcrossAStringerLiesInAir) {
    Workpiece board = Board(600, 200, 18);
    CutShape(board, {100, -50, 130, -50, 230, 250, 200, 250}, 9, 30);
    Lay(board.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
    RunAll();
    EXPECT_EQ(Faults(board.Solid()), std::vector<std::string>{});
    // The rounds of the bit in the path's two sharp corners lie in the air.
    EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
    const auto first = FirstSide();
    ASSERT_TRUE(first);
    EXPECT_EQ(OnLayers(*first, "RT_Z9_").size() + OnLayers(*first, "PKC_Z9_").size(), 1U);
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
}

TEST_F(RoutingWholeParts, AHalfMoonAtTheEdgeKeepsItsArc) {
    Workpiece board = Board(600, 400, 18);
    CutShape(board, {150, -20, 250, -20, 250, 0, 150, 0}, 9, 30, {0, 0, 1, 0});
    ExpectSound(board);
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
}

TEST_F(RoutingWholeParts, AnObroundSlotIsOnePath) {
    Workpiece board = Board(600, 400, 18);
    CutShape(board, {200, 100, 300, 100, 300, 112, 200, 112}, 9, 30, {0, 1, 0, 1});
    ExpectSound(board);
    const auto first = FirstSide();
    ASSERT_TRUE(first);
    const std::vector<Drawn> paths = OnLayers(*first, "RT_Z9_");
    ASSERT_EQ(paths.size(), 1U);
    EXPECT_EQ(paths[0].points.size(), 4U);
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
}

TEST_F(RoutingWholeParts, CrossingDadosOfTwoDepths) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, -1, 12}, {119, 401, 19});
    board.Cut({-1, 200, 6}, {601, 219, 19});
    ExpectSound(board);
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
}

TEST_F(RoutingWholeParts, APocketAroundAnIslandIsTwoPathsThatLeaveItStanding) {
    Workpiece board = Board(600, 400, 18);
    CutShape(board, {200, 100, 400, 100, 400, 300, 200, 300}, 9, 30);
    AcadBlock& space = document.ModelSpace();
    Acad3DSolid* island = space.AddBox({300, 200, 13.5}, 60, 60, 9);
    board.Solid().Boolean(BooleanKind::Union, *island);
    ChooseAllSolids();
    RunAll();
    EXPECT_EQ(Faults(board.Solid(), 0, {0, {"PKC_"}}), std::vector<std::string>{});
    ASSERT_TRUE(FirstSide());
    EXPECT_EQ(OnLayers(*FirstSide(), "PKC_").size(), 2U);
    EXPECT_FALSE(SecondSide());
    EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
}

TEST_F(RoutingWholeParts, AFloorWithAnEllipseIsKeptForHandWorkAndTheRunGoesOn) {
    Workpiece odd = Board(600, 400, 18, "Odd");
    odd.Cut({200, 100, 9}, {400, 300, 19});
    Acad3DSolid* slanted = document.ModelSpace().AddCylinder({300, 200, 9}, 10, 100);
    slanted->Rotate3D({300, 200, 9}, {300, 201, 9}, 0.5);
    odd.Solid().Boolean(BooleanKind::Subtraction, *slanted);
    Workpiece plain = Board(300, 200, 18, "Plain");
    Lay(plain.Solid(), 0, 0, 0, {1000, 0, 0});
    RunAll();
    EXPECT_TRUE(
        Told(" This part has a route path that cannot be processed. It is being saved and you will have to "
             "process "
             "it by hand."));
    EXPECT_EQ(FilesIn(OutputFolder, "Part_0_*"), std::vector<std::string>{"Part_0_Odd_7_by_hand.dxf"});
    const std::vector<Drawn> kept = Read("c:\\BV-DXF\\Part_0_Odd_7_by_hand.dxf");
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(kept[0].kind, "AcDb3dSolid");
    EXPECT_EQ(FilesIn(OutputFolder, "Part_1_*"), std::vector<std::string>{"Part_1_Plain_7.dxf"});
}

TEST_F(RoutingWholeParts, TonguesAreLedWhereTheSettingSaysSo) {
    for (const bool on : {false, true}) {
        Set("ToungeProcessing", on ? "1" : "0");
        Workpiece board = Board(600, 400, 18);
        board.Cut({590, -1, -1}, {601, 150, 19});
        board.Cut({590, 250, -1}, {601, 401, 19});
        RunAll();
        const auto first = FirstSide();
        ASSERT_TRUE(first);
        EXPECT_EQ(OnLayers(*first, "OT_").at(0).points.size(), on ? 12U : 8U);
        board.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
