// Parts built by code and run as a user runs them: the operations of the files are put back onto the part.
#include "cnc/checker.h"

namespace brenvik {
namespace {

using app::Axis;
using app::Workpiece;

class RecognitionTest : public CheckedRunTest {
  protected:
    /// Lays the part askew in the drawing, runs C2C, and expects a file pair without fault.
    void ExpectSound(Workpiece& piece, const CheckOptions& options = {}) {
        Lay(piece.Solid(), 31, -17, 123, {1234.5, -678.25, 91});
        RunAll();
        EXPECT_EQ(Faults(piece.Solid(), 0, options), std::vector<std::string>{});
        ExpectQuiet();
    }
    /// No box but the one at the start and the one at the end.
    void ExpectQuiet() {
        const std::vector<std::string> messages = Messages();
        ASSERT_GE(messages.size(), 2U);
        EXPECT_EQ(messages.size(), 2U) << messages[1];
        EXPECT_EQ(messages.back(), "-- Export Complete! --");
    }
    static std::size_t Count(const std::optional<std::vector<Drawn>>& drawn, std::string_view prefix) {
        return drawn ? OnLayers(*drawn, prefix).size() : 0;
    }
    /// The polylines of a rounded rectangle as a pocket or window.
    void CutRounded(Workpiece& piece, const Point3& min, const Point3& max, double r) {
        AcadBlock& space = document.ModelSpace();
        const std::array<double, 16> corners{min.x + r, min.y,     max.x - r, min.y,    max.x,     min.y + r,
                                             max.x,     max.y - r, max.x - r, max.y,    min.x + r, max.y,
                                             min.x,     max.y - r, min.x,     min.y + r};
        AcadLWPolyline* outline = space.AddLightWeightPolyline(corners);
        outline->SetClosed(true);
        for (const int corner : {1, 3, 5, 7}) outline->SetBulge(corner, std::tan(std::numbers::pi / 8));
        AcadEntity* curve = outline;
        AcadRegion* region = space.AddRegion(std::span(&curve, 1)).at(0);
        Acad3DSolid* tool = space.AddExtrudedSolid(*region, max.z - min.z, 0);
        tool->Move({0, 0, 0}, {0, 0, min.z});
        region->Delete();
        outline->Delete();
        piece.Solid().Boolean(BooleanKind::Subtraction, *tool);
    }
};

TEST_F(RecognitionTest, APlainPanelIsOneOutlineAndOneSheet) {
    Workpiece board = Board(600, 400, 18);
    ExpectSound(board);
    const std::optional<std::vector<Drawn>> first = FirstSide();
    ASSERT_TRUE(first);
    ASSERT_EQ(first->size(), 2U);
    const Drawn outline = OnLayers(*first, "OT_").at(0);
    EXPECT_EQ(outline.layer, "OT_Z18p3_T1_D12_S18000_F300_R_C0");
    EXPECT_EQ(outline.color, 2);
    EXPECT_EQ(outline.thickness, -18.3);
    EXPECT_TRUE(outline.closed);
    ASSERT_EQ(outline.points.size(), 4U);
    const Drawn sheet = OnLayers(*first, "PL_").at(0);
    EXPECT_EQ(sheet.layer, "PL_18");
    EXPECT_EQ(sheet.color, 7);
    EXPECT_EQ(sheet.thickness, 18);
    for (const Point3& corner : sheet.points) EXPECT_NEAR(corner.z, -18, 1e-9);
    for (const Point3& corner : outline.points) EXPECT_NEAR(corner.z, 0, 1e-9);
    EXPECT_FALSE(SecondSide());
    EXPECT_EQ(FilesIn(OutputFolder), (std::vector<std::string>{"Part_0_Panel_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(FilesIn(SecondSideFolder), std::vector<std::string>{});
}

TEST_F(RecognitionTest, AThroughHoleIsDrilledOnceFromTheTop) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 8);
    ExpectSound(board);
    ASSERT_EQ(Count(FirstSide(), "VD_"), 1U);
    const Drawn hole = OnLayers(*FirstSide(), "VD_").at(0);
    EXPECT_EQ(hole.layer, "VD_Z19_T_D8");
    EXPECT_NEAR(hole.thickness, -19, 1e-9);
    EXPECT_EQ(hole.color, 4);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, BlindHolesAreDrilledFromTheirOwnFace) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -12, 8);
    board.Drill({200, 90, 18}, Axis::Z, -5, 5);
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "VD_Z12_T_D8"), 1U);
    EXPECT_EQ(Count(FirstSide(), "VD_Z5_T_D5"), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, HolesFromBothFacesMakeTwoFiles) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -12, 8);
    board.Drill({200, 90, 18}, Axis::Z, -12, 8);
    board.Drill({300, 333, 0}, Axis::Z, 7, 5);
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "VD_") + Count(SecondSide(), "VD_"), 3U);
}

TEST_F(RecognitionTest, ACounterboreFromTheTop) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 5);
    board.Drill({100, 60, 18}, Axis::Z, -6, 12);
    board.Drill({500, 60, 18}, Axis::Z, -9, 12);
    ExpectSound(board);
}

TEST_F(RecognitionTest, ACounterboreFromBelow) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 60, 18}, Axis::Z, -18, 5);
    board.Drill({100, 60, 0}, Axis::Z, 6, 12);
    board.Drill({300, 60, 18}, Axis::Z, -9, 12);
    board.Drill({400, 60, 18}, Axis::Z, -9, 20);
    ExpectSound(board);
}

TEST_F(RecognitionTest, AHoleInTheFloorOfAPocket) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({200, 100, 12}, {300, 180, 19});
    board.Drill({250, 140, 12}, Axis::Z, -6, 5);
    board.Drill({220, 140, 12}, Axis::Z, -12, 8);
    ExpectSound(board);
}

TEST_F(RecognitionTest, ACircleOfTheBoundIsAHoleAndAWiderOneARoute) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 100, 18}, Axis::Z, -18, 35);
    board.Drill({200, 100, 18}, Axis::Z, -18, 36);
    board.Drill({300, 100, 18}, Axis::Z, -9, 35);
    board.Drill({400, 100, 18}, Axis::Z, -9, 36);
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "VD_"), 2U);
    EXPECT_EQ(Count(FirstSide(), "RT_"), 1U);
    EXPECT_EQ(Count(FirstSide(), "PKS_"), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ABlindCircleFromBelowIsCutOnTheSecondSide) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({100, 100, 18}, Axis::Z, -9, 50);
    board.Drill({400, 100, 18}, Axis::Z, -9, 60);
    board.Drill({300, 100, 0}, Axis::Z, 6, 40);
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "PKS_") + Count(SecondSide(), "PKS_"), 3U);
    EXPECT_TRUE(SecondSide());
}

TEST_F(RecognitionTest, ADadoAcrossThePartRunsOffItsEdges) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({200, -1, 9}, {218, 401, 19});
    ExpectSound(board);
    const std::vector<Drawn> routes = OnLayers(*FirstSide(), "RT_");
    ASSERT_EQ(routes.size(), 1U);
    EXPECT_NEAR(routes[0].thickness, -9, 1e-9);
    EXPECT_EQ(routes[0].points.size(), 4U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, AStoppedDado) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({200, 50, 9}, {218, 401, 19});
    ExpectSound(board);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ARebateAlongAnEdge) {
    Set("ClearCores", "1");
    Workpiece board = Board(600, 400, 18);
    board.Cut({-1, 390, 9}, {601, 401, 19});
    ExpectSound(board);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ARectangularPocketAndAnLShapedOne) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({50, 50, 8}, {150, 120, 19});
    board.Cut({250, 50, 12}, {450, 120, 19});
    board.Cut({250, 50, 12}, {300, 320, 19});
    ExpectSound(board);
    EXPECT_FALSE(SecondSide());
    EXPECT_EQ(Count(FirstSide(), "PKC_"), 2U);
}

TEST_F(RecognitionTest, ARoundedPocketIsOneClosedPolylineWithArcs) {
    Workpiece board = Board(600, 400, 18);
    CutRounded(board, {100, 100, 8}, {300, 250, 19}, 20);
    ExpectSound(board);
    ASSERT_TRUE(FirstSide());
    EXPECT_EQ(FirstSide()->size(), 3U);
    const std::vector<Drawn> pockets = OnLayers(*FirstSide(), "PKC_");
    ASSERT_EQ(pockets.size(), 1U);
    EXPECT_EQ(pockets[0].points.size(), 8U);
    EXPECT_EQ(std::count_if(pockets[0].bulges.begin(), pockets[0].bulges.end(),
                            [](double bulge) {
                                return std::abs(std::abs(bulge) - std::tan(std::numbers::pi / 8)) < 1e-9;
                            }),
              4);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, APocketInAPocket) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 12}, {300, 250, 19});
    board.Cut({150, 150, 6}, {250, 200, 19});
    ExpectSound(board, {0, {"PKC_", "RT_"}});
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, PocketsOnBothFaces) {
    Set("ClearCores", "1");
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, 12}, {300, 250, 19});
    board.Cut({400, 50, -1}, {450, 120, 7});
    CutRounded(board, {480, 200, -1}, {560, 300, 5}, 15);
    ExpectSound(board);
    EXPECT_TRUE(SecondSide());
}

TEST_F(RecognitionTest, CutOutsWithSquareAndRoundedCorners) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, -1}, {200, 200, 19});
    CutRounded(board, {300, 100, -1}, {500, 300, 19}, 25);
    ExpectSound(board);
    EXPECT_EQ(Count(FirstSide(), "RT_Z18p3"), 2U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ACutOutThatNarrowsBelow) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({100, 100, -1}, {200, 200, 19});
    board.Cut({80, 80, 10}, {220, 220, 19});
    ExpectSound(board, {0, {"PKC_", "RT_"}});
}

TEST_F(RecognitionTest, NotchesAreOutline) {
    Workpiece board = Board(600, 400, 18);
    board.Cut({-1, -1, -1}, {60, 50, 19});
    board.Cut({550, 350, -1}, {601, 401, 19});
    ExpectSound(board);
    EXPECT_EQ(OnLayers(*FirstSide(), "OT_").at(0).points.size(), 8U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, EdgeBoresOnAllFourEdges) {
    Workpiece board = Board(600, 400, 18);
    board.Drill({0, 100, 9}, Axis::X, 34, 8);
    board.Drill({600, 150, 9}, Axis::X, -30, 8);
    board.Drill({200, 0, 9}, Axis::Y, 25, 5);
    board.Drill({250, 400, 9}, Axis::Y, -20, 5);
    ExpectSound(board);
    for (const char* layer : {"HF_T", "HB_T", "HL_T", "HR_T"}) EXPECT_EQ(Count(FirstSide(), layer), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ABusyPanel) {
    Workpiece board = Board(720, 560, 18);
    for (int i = 0; i < 10; ++i) {
        board.Drill({100.0 + 32 * i, 37, 18}, Axis::Z, -12, 5);
        board.Drill({100.0 + 32 * i, 523, 18}, Axis::Z, -12, 5);
    }
    board.Cut({-1, 540, 9}, {721, 548.5, 19});
    board.Cut({500, 200, -1}, {600, 300, 19});
    board.Drill({0, 100, 9}, Axis::X, 30, 8);
    board.Drill({0, 400, 9}, Axis::X, 30, 8);
    ExpectSound(board);
    EXPECT_FALSE(SecondSide());
}

TEST_F(RecognitionTest, ABevelledPanelKeepsItsWiderOutline) {
    AddLayer(document, "Parts");
    const std::array<double, 8> section{0, 0, 400, 0, 390, 18, 0, 18};
    AcadLWPolyline* outline = document.ModelSpace().AddLightWeightPolyline(section);
    outline->SetClosed(true);
    AcadEntity* curve = outline;
    AcadRegion* region = document.ModelSpace().AddRegion(std::span(&curve, 1)).at(0);
    Acad3DSolid* solid = document.ModelSpace().AddExtrudedSolid(*region, 600, 0);
    region->Delete();
    outline->Delete();
    GivePartData(*solid, "Bevel");
    Lay(*solid, 12, 40, -77, {3, 4, 5});
    RunAll();
    EXPECT_EQ(Faults(*solid, 0, {0.5 * 10 * 18 * 600, {}}), std::vector<std::string>{});
}

}  // namespace
}  // namespace brenvik
