// The search for edges and for the side that is up, on lines drawn for the purpose, and the drawing that a
// part's way goes on in.
#include "cnc/alignment_fixture.h"
#include "cnc/laying/alignment_edges.h"
#include "cnc/laying/alignment_top.h"

namespace brenvik {
namespace {

class Edges : public AlignmentTest {
  protected:
    Edges() {
        AddLayer(document, layers::Region);
        AddLayer(document, layers::BrenvikExplode);
    }
    void Line(std::string_view layer, const Point3& from, const Point3& to) {
        document.ModelSpace().AddLine(from, to)->SetLayer(layer);
    }
    SquaringPoints Found(const Point3& faceNormal = {0, 0, -1}) {
        return std::get<SquaringPoints>(FindSquaringPoints(document, faceNormal));
    }
    MissingEdge Missing() { return std::get<MissingEdge>(FindSquaringPoints(document, {0, 0, -1})); }
};

TEST_F(Edges, NoLineAtAllIsSaid) { EXPECT_EQ(Missing(), MissingEdge::Line); }

TEST_F(Edges, TheLongestEdgeOfTheLargestFaceIsTakenWithTheShortestThatMeetsItsStart) {
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 0, 18});
    Line(layers::BrenvikExplode, {0, 300, 0}, {0, 0, 0});
    Line(layers::Region, {0, 300, 0}, {0, 0, 0});
    Line(layers::Region, {0, 0, 0}, {600, 0, 0});
    Line(layers::BrenvikExplode, {600, 0, 0}, {600, 0, 10});
    const SquaringPoints points = Found();
    ExpectPoint(points.origin, {0, 0, 0});
    ExpectPoint(points.onX, {600, 0, 0});
    ExpectPoint(points.towardsY, {0, 0, 18});
}

TEST_F(Edges, TheFirstLineOfTheDrawingStaysUnlessTheFaceHasALongerOne) {
    Line(layers::BrenvikExplode, {0, 0, 18}, {600, 0, 18});
    Line(layers::Region, {0, 0, 0}, {600, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 0, 18});
    const SquaringPoints points = Found();
    ExpectPoint(points.origin, {0, 0, 18});
    ExpectPoint(points.towardsY, {0, 0, 0});
}

TEST_F(Edges, AFirstLineThatLeansAgainstTheFaceGivesWayToAnyEdgeOfTheFace) {
    Line(layers::BrenvikExplode, {0, 0, 0}, {10, 10, 700});
    Line(layers::Region, {0, 0, 0}, {60, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 0, 18});
    ExpectPoint(Found().onX, {60, 0, 0});
}

TEST_F(Edges, OfEqualConnectedEdgesTheFirstCounts) {
    Line(layers::Region, {0, 0, 0}, {100, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 100}, {0, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 100, 0});
    ExpectPoint(Found().towardsY, {0, 0, 100});
}

TEST_F(Edges, TwinsLongerEdgesOtherLayersAndEdgesInLineDoNotConnect) {
    Line(layers::Region, {0, 0, 0}, {600, 0, 0});
    Line(layers::BrenvikExplode, {600, 0, 0}, {0, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 0, 601});
    Line(layers::Region, {0, 0, 0}, {0, 300, 0});
    Line(layers::BrenvikExplode, {-50, 0, 0}, {0, 0, 0});
    Line(layers::BrenvikExplode, {600, 0, 0}, {600, 0, 18});
    EXPECT_EQ(Missing(), MissingEdge::ConnectedLine);
}

TEST_F(Edges, EndsMeetWithinATenThousandth) {
    Line(layers::Region, {0, 0, 0}, {600, 0, 0});
    Line(layers::BrenvikExplode, {0.0002, 0, 0}, {0, 0, 5});
    EXPECT_EQ(Missing(), MissingEdge::ConnectedLine);
    Line(layers::BrenvikExplode, {0.00005, 0, 0}, {0, 0, 5});
    ExpectPoint(Found().towardsY, {0, 0, 5});
}

TEST_F(Edges, ABevelledConnectionPointsSquareAwayFromTheFace) {
    Line(layers::Region, {0, 0, 0}, {600, 0, 0});
    Line(layers::BrenvikExplode, {0, 0, 0}, {0, 18, 18});
    ExpectPoint(Found().towardsY, {0, 0, 18});
    // An edge that leans along the longest one makes the same plane as a square one, and stays.
    Line(layers::BrenvikExplode, {0, 0, 0}, {3, 0, 18});
    ExpectPoint(Found().towardsY, {3, 0, 18});
}

class SideUp : public Edges {
  protected:
    /// A rectangle with its edges along X first.
    void Rectangle(double fromY, double toY, double z) {
        Line("0", {0, fromY, z}, {600, fromY, z});
        Line("0", {0, toY, z}, {600, toY, z});
        Line("0", {0, fromY, z}, {0, toY, z});
        Line("0", {600, fromY, z}, {600, toY, z});
    }
};

TEST_F(SideUp, CountsWhatLiesFlatOnTheHighestAndTheLowestLevelOfLines) {
    Rectangle(0, 100, 0);
    Rectangle(0, 100, 18);
    Line("0", {0, 0, 0}, {0, 0, 18});
    document.ModelSpace().AddCircle({50, 50, 18}, 5);
    document.ModelSpace().AddCircle({50, 50, 10}, 5);
    document.ModelSpace().AddCircle({70, 50, 0.00005}, 5);
    document.ModelSpace().AddArc({80, 50, 18}, 5, 0, 1);
    const LevelCounts counts = CountOnLevels(document);
    EXPECT_EQ(counts.TopEdges, 5);
    EXPECT_EQ(counts.BottomEdges, 4);
    EXPECT_EQ(counts.TopCircles, 1);
    EXPECT_EQ(counts.BottomCircles, 1);
}

TEST_F(SideUp, ATieLeavesTheNarrowerSideUp) {
    Rectangle(0, 100, 0);
    Rectangle(20, 80, 18);
    EXPECT_FALSE(LowerSideIsNarrower(document));
}

TEST_F(SideUp, ANarrowerLowerSideIsFoundInAnyOrderOfLines) {
    Rectangle(0, 100, 18);
    Rectangle(20, 80, 0);
    EXPECT_TRUE(LowerSideIsNarrower(document));
}

TEST_F(SideUp, OneEdgeThatIsDrawnInIsEnough) {
    Rectangle(0, 80, 0);
    Rectangle(0, 100, 18);
    EXPECT_TRUE(LowerSideIsNarrower(document));
}

TEST_F(SideUp, EqualSidesStay) {
    Rectangle(0, 100, 0);
    Rectangle(0, 100, 18);
    EXPECT_FALSE(LowerSideIsNarrower(document));
}

TEST_F(SideUp, ALargestFaceThatLiesAboveTurnsThePartOver) {
    app::Workpiece board = Board(600, 300, 18);
    AddLayer(document, layers::RegionCopy);
    const auto outline = std::to_array<double>({0, 0, 600, 0, 600, 300, 0, 300});
    AcadLWPolyline* polyline = document.ModelSpace().AddLightWeightPolyline(outline);
    polyline->SetClosed(true);
    AcadEntity* curve = polyline;
    AcadRegion* region = document.ModelSpace().AddRegion(std::span(&curve, 1)).front();
    polyline->Delete();
    region->SetLayer(layers::RegionCopy);
    EXPECT_FALSE(LargestFaceLiesAbove(document, board.Solid(), 180000));
    region->Move({0, 0, 0}, {0, 0, 18});
    EXPECT_TRUE(LargestFaceLiesAbove(document, board.Solid(), 180000));
    EXPECT_FALSE(LargestFaceLiesAbove(document, board.Solid(), 170000));
    BringTopUp(document, board.Solid(), 180000);
    EXPECT_NEAR(region->GetBoundingBox().min.z, board.Solid().GetBoundingBox().min.z, 1e-9);
}

using WrittenDrawing = AlignmentTest;

TEST_F(WrittenDrawing, IsThePartDrawingFromNowOnWithAllSelected) {
    app::Workpiece board = Board(600, 300, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -18, 8);
    ASSERT_EQ(Align(board.Solid()), PassOutcome::GoOn);
    EXPECT_EQ(run.part.drawing->FullName(), "c:\\BV-DXF\\wblock2.dwg");
    EXPECT_EQ(host.ActiveDocument(), run.part.drawing);
    EXPECT_EQ(TheSession().AcadDoc, run.part.drawing);
    EXPECT_EQ(run.part.drawing->SelectionSets().Item("exploded")->Count(),
              run.part.drawing->ModelSpace().Count());
    EXPECT_TRUE(files.FileExists("c:\\BV-DXF\\wblock2.dwg"));
    EXPECT_EQ(host.OpenDocuments().size(), 2U);
    const std::string handle = LastSolid(*run.part.drawing).Handle();
    EXPECT_EQ(mAutoCAD::GetPartData(handle, "PartName"), "Panel");
    EXPECT_EQ(mAutoCAD::GetPartData(handle, "ORIE"), "LWT");
}

TEST_F(WrittenDrawing, HoldsCirclesOnTheirLayerAndTheLargestFaceOnItsOwn) {
    app::Workpiece board = Board(600, 300, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -18, 8);
    board.Drill({0, 150, 9}, app::Axis::X, 30, 6);
    ASSERT_EQ(Align(board.Solid()), PassOutcome::GoOn);
    const std::vector<AcadCircle*> circles = All<AcadCircle>(*run.part.drawing);
    EXPECT_GE(circles.size(), 3U);
    for (const AcadCircle* circle : circles) EXPECT_EQ(circle->Layer(), layers::CircleHold);
    EXPECT_EQ(run.part.drawing->Layers().Item(layers::CircleHold)->Color(), 5);
    EXPECT_EQ(run.part.drawing->Layers().Item(layers::RegionCopy)->Color(), 1);
    EXPECT_EQ(AllOn<AcadRegion>(*run.part.drawing, layers::RegionCopy).size(), 1U);
    EXPECT_EQ(AllOn<AcadRegion>(*run.part.drawing, layers::NextBiggestRegion).size(), 1U);
    EXPECT_EQ(All<AcadRegion>(*run.part.drawing).size(), 2U);
    EXPECT_EQ(All<Acad3DSolid>(*run.part.drawing).size(), 1U);
    EXPECT_FALSE(AllOn<AcadLine>(*run.part.drawing, layers::Region).empty());
    EXPECT_FALSE(AllOn<AcadLine>(*run.part.drawing, layers::BrenvikExplode).empty());
}

}  // namespace
}  // namespace brenvik
