// Curves under moves, mirrors and scales: analytic values stay exact.
#include "host_fixture.h"

namespace brenvik {
namespace {

constexpr double pi = std::numbers::pi;

using Curves = HostTest;

TEST_F(Curves, LineValues) {
    AcadLine* line = Model().AddLine({1, 2, 3}, {4, 6, 3});
    ExpectExact(line->Delta(), {3, 4, 0});
    EXPECT_EQ(line->Length(), 5);
    EXPECT_EQ(line->Angle(), std::atan2(4, 3));
    EXPECT_EQ(Model().AddLine({0, 0, 0}, {0, -1, 0})->Angle(), 1.5 * pi);
    EXPECT_EQ(Model().AddLine({0, 0, 0}, {-1, 0, 0})->Angle(), pi);
}

TEST_F(Curves, ArcEndsAreExactAtQuarters) {
    AcadArc* arc = Model().AddArc({10, 20, 5}, 2, pi / 2, 1.5 * pi);
    ExpectExact(arc->StartPoint(), {10, 22, 5});
    ExpectExact(arc->EndPoint(), {10, 18, 5});
    ExpectBox(arc->GetBoundingBox(), {8, 18, 5}, {10, 22, 5}, 0);
}

TEST_F(Curves, BoxesOfRoundCurvesAreExact) {
    ExpectBox(Model().AddCircle({0.1, 0.2, 0.3}, 0.5)->GetBoundingBox(), {0.1 - 0.5, 0.2 - 0.5, 0.3},
              {0.1 + 0.5, 0.2 + 0.5, 0.3}, 0);
    ExpectBox(Model().AddArc({0, 0, 0}, 1, pi / 4, 3 * pi / 4)->GetBoundingBox(),
              {-std::sqrt(0.5), std::sqrt(0.5), 0}, {std::sqrt(0.5), 1, 0});
    AcadCircle* upright = Model().AddCircle({0, 0, 0}, 1);
    upright->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
    ExpectBox(upright->GetBoundingBox(), {-1, 0, -1}, {1, 0, 1}, 0);
}

TEST_F(Curves, ThicknessCountsInTheBox) {
    AcadCircle* circle = Model().AddCircle({0, 0, 0}, 1);
    circle->SetThickness(-18);
    ExpectBox(circle->GetBoundingBox(), {-1, -1, -18}, {1, 1, 0}, 0);
    EXPECT_EQ(circle->Diameter(), 2);
}

TEST_F(Curves, QuarterTurnsAreExact) {
    AcadLine* line = Model().AddLine({0.1, 0.2, 0}, {600.3, 0.2, 0});
    for (int turn = 0; turn < 4; ++turn) line->Rotate({0, 0, 0}, pi / 2);
    ExpectExact(line->StartPoint(), {0.1, 0.2, 0});
    ExpectExact(line->EndPoint(), {600.3, 0.2, 0});
    line->Rotate3D({0, 0, 0}, {0, 1, 0}, pi / 2);
    ExpectExact(line->EndPoint(), {0, 0.2, -600.3});
    AcadArc* arc = Model().AddArc({0, 0, 0}, 1, 0, pi / 2);
    arc->Rotate({0, 0, 0}, pi);
    EXPECT_EQ(arc->StartAngle(), pi);
    EXPECT_EQ(arc->EndAngle(), 1.5 * pi);
    arc->Rotate({0, 0, 0}, pi / 2);
    EXPECT_EQ(arc->EndAngle(), 0);
}

TEST_F(Curves, TurningAnArcOutOfThePlaneKeepsItsPoints) {
    AcadArc* arc = Model().AddArc({1, 2, 3}, 4, 0.3, 2.1);
    const Point3 start = arc->StartPoint();
    arc->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
    ExpectExact(arc->Normal(), {0, -1, 0});
    ExpectNear(arc->StartPoint(), {start.x, -start.z, start.y});
    arc->Rotate3D({5, 1, 2}, {6, 3, 7}, 0.7);
    arc->Rotate3D({5, 1, 2}, {6, 3, 7}, -0.7);
    ExpectNear(arc->StartPoint(), {start.x, -start.z, start.y});
}

TEST_F(Curves, MirrorGivesACopyWhoseSenseTurns) {
    AcadArc* arc = Model().AddArc({10, 0, 0}, 2, 0, pi / 2);
    auto* mirrored = dynamic_cast<AcadArc*>(arc->Mirror({0, 0, 0}, {0, 1, 0}));
    ASSERT_NE(mirrored, nullptr);
    ExpectExact(mirrored->Center(), {-10, 0, 0});
    ExpectExact(mirrored->Normal(), {0, 0, 1});
    EXPECT_EQ(mirrored->StartAngle(), pi / 2);
    EXPECT_EQ(mirrored->EndAngle(), pi);
    ExpectExact(mirrored->EndPoint(), {-12, 0, 0});
    ExpectExact(arc->Center(), {10, 0, 0});
}

TEST_F(Curves, MirrorAtTheGroundTurnsTheNormalOver) {
    AcadArc* arc = Model().AddArc({0, 0, 5}, 2, 0.2, 1.4);
    auto* mirrored = dynamic_cast<AcadArc*>(arc->Mirror3D({0, 0, 0}, {1, 0, 0}, {0, 1, 0}));
    ASSERT_NE(mirrored, nullptr);
    ExpectExact(mirrored->Normal(), {0, 0, -1});
    const Point3 end = arc->EndPoint();
    ExpectNear(mirrored->StartPoint(), {end.x, end.y, -5});
}

TEST_F(Curves, APolylineKeepsItsBulgesUnderMoves) {
    const std::vector<double> square{0, 0, 10, 0, 10, 10, 0, 10};
    AcadLWPolyline* line = Model().AddLightWeightPolyline(square);
    line->SetClosed(true);
    line->SetBulge(1, 1);
    EXPECT_NEAR(line->Area(), 100 + pi * 25 / 2, 1e-12);
    ExpectBox(line->GetBoundingBox(), {0, 0, 0}, {15, 10, 0}, 0);
    line->Rotate({0, 0, 0}, pi / 2);
    EXPECT_EQ(line->Coordinates(), (std::vector<double>{0, 0, 0, 10, -10, 10, -10, 0}));
    EXPECT_EQ(line->GetBulge(1), 1);
    auto* mirrored = dynamic_cast<AcadLWPolyline*>(line->Mirror({0, 0, 0}, {0, 1, 0}));
    EXPECT_EQ(mirrored->GetBulge(1), -1);
    EXPECT_EQ(mirrored->Coordinates(), (std::vector<double>{0, 0, 0, 10, 10, 10, 10, 0}));
    line->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
    ExpectExact(line->Normal(), {0, -1, 0});
    ExpectBox(line->GetBoundingBox(), {-10, 0, 0}, {0, 0, 15}, 1e-12);
}

TEST_F(Curves, PolylineElevationAndThicknessAreKeptAndChecked) {
    AcadLWPolyline* line = Model().AddLightWeightPolyline(std::vector<double>{0, 0, 1, 0});
    line->SetElevation(7);
    line->SetThickness(2);
    line->Move({0, 0, 0}, {0, 0, 3});
    EXPECT_EQ(line->Elevation(), 10);
    ExpectBox(line->GetBoundingBox(), {0, 0, 10}, {1, 0, 12}, 0);
    line->SetCoordinates(std::vector<double>{0, 0, 1, 0, 1, 1});
    EXPECT_EQ(line->Coordinates().size(), 6U);
    EXPECT_THROW(line->GetBulge(3), Failure);
    EXPECT_THROW(line->GetBulge(-1), Failure);
    EXPECT_THROW(line->SetCoordinates(std::vector<double>{0, 0, 1}), Failure);
    EXPECT_THROW(Model().AddLightWeightPolyline(std::vector<double>{0, 0}), Failure);
}

TEST_F(Curves, ExplodingAPolylineGivesLinesAndArcsAndKeepsIt) {
    NewLayer("Outline");
    AcadLWPolyline* line = Model().AddLightWeightPolyline(std::vector<double>{0, 0, 10, 0, 10, 10});
    line->SetLayer("Outline");
    line->SetBulge(1, -1);
    line->SetElevation(4);
    const std::vector<AcadEntity*> pieces = line->Explode();
    ASSERT_EQ(pieces.size(), 2U);
    EXPECT_EQ(pieces[0]->ObjectName(), "AcDbLine");
    auto* arc = dynamic_cast<AcadArc*>(pieces[1]);
    ASSERT_NE(arc, nullptr);
    EXPECT_EQ(arc->Layer(), "Outline");
    ExpectExact(arc->Center(), {10, 5, 4});
    EXPECT_EQ(arc->Radius(), 5);
    ExpectExact(arc->StartPoint(), {10, 10, 4});
    ExpectExact(arc->EndPoint(), {10, 0, 4});
    EXPECT_EQ(Model().Count(), 3);
}

TEST_F(Curves, ScalingTakesRadiusThicknessAndPlaceAlong) {
    AcadCircle* circle = Model().AddCircle({1, 1, 0}, 2);
    circle->SetThickness(3);
    circle->ScaleEntity({0, 0, 0}, 25.4);
    ExpectExact(circle->Center(), {25.4, 25.4, 0});
    EXPECT_EQ(circle->Radius(), 2 * 25.4);
    EXPECT_EQ(circle->Thickness(), 3 * 25.4);
}

TEST_F(Curves, TransformByTakesRigidMovesAndEvenScalesOnly) {
    AcadLine* line = Model().AddLine({1, 0, 0}, {2, 0, 0});
    line->TransformBy({{{0, -2, 0, 5}, {2, 0, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}}});
    ExpectExact(line->StartPoint(), {5, 2, 0});
    EXPECT_THROW(line->TransformBy({{{2, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}), Failure);
    EXPECT_THROW(line->TransformBy({{{1, 0.5, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}), Failure);
    EXPECT_THROW(line->TransformBy({{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 1, 1}}}), Failure);
    EXPECT_THROW(line->TransformBy(Matrix4{}), Failure);
    ExpectExact(line->StartPoint(), {5, 2, 0});
}

TEST_F(Curves, EllipsesMirrorIntoThemselvesBackAndForth) {
    EllipseData data;
    data.center = {1, 2, 3};
    data.majorAxis = {4, 0, 0};
    data.ratio = 0.5;
    data.startParameter = 0.3;
    data.endParameter = 2;
    HostEntity& ellipse = document.Model().Add(data);
    AcadEntity* once = ellipse.Mirror3D({0, 0, 0}, {1, 2, 0}, {0, 1, 5});
    AcadEntity* twice = once->Mirror3D({0, 0, 0}, {1, 2, 0}, {0, 1, 5});
    const auto back = std::get<EllipseData>(HostEntityOf(twice).Geometry());
    EXPECT_NEAR(back.startParameter, 0.3, 1e-12);
    EXPECT_NEAR(back.endParameter, 2, 1e-12);
    const Box3 box = ellipse.GetBoundingBox(), again = twice->GetBoundingBox();
    ExpectBox(again, box.min, box.max, 1e-9);
    EXPECT_NEAR(box.max.y, 4, 1e-12);
    EXPECT_NEAR(box.max.x, 1 + 4 * std::cos(0.3), 1e-12);
}

TEST_F(Curves, ASplineHasTheBoxOfItsCurveNotOfItsControlPoints) {
    SplineData data;
    data.controlPoints = {{0, 0, 0}, {1, 4, 0}, {2, 4, 0}, {3, 0, 0}};
    data.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    ExpectBox(document.Model().Add(data).GetBoundingBox(), {0, 0, 0}, {3, 3, 0}, 1e-7);
}

TEST_F(Curves, EveryKindHasItsName) {
    HostBlock& model = document.Model();
    PolylineData space, polygonMesh, polyfaceMesh;
    space.flags = 8;
    polygonMesh.flags = 16;
    polyfaceMesh.flags = 64;
    const QuadData trace{QuadData::Kind::Trace, {}, 0, 0, {0, 0, 1}};
    const QuadData face{QuadData::Kind::Face, {}, 0, 0, {0, 0, 1}};
    const std::vector<std::pair<HostGeometry, std::string>> kinds{
        {LineData{}, "AcDbLine"},
        {ArcData{}, "AcDbArc"},
        {CircleData{}, "AcDbCircle"},
        {EllipseData{}, "AcDbEllipse"},
        {SplineData{}, "AcDbSpline"},
        {LWPolylineData{}, "AcDbPolyline"},
        {PolylineData{}, "AcDb2dPolyline"},
        {space, "AcDb3dPolyline"},
        {polygonMesh, "AcDbPolygonMesh"},
        {polyfaceMesh, "AcDbPolyFaceMesh"},
        {PointData{}, "AcDbPoint"},
        {TextData{}, "AcDbText"},
        {MTextData{}, "AcDbMText"},
        {InsertData{}, "AcDbBlockReference"},
        {QuadData{}, "AcDbSolid"},
        {trace, "AcDbTrace"},
        {face, "AcDbFace"},
        {ViewportData{}, "AcDbViewport"},
    };
    for (const auto& [geometry, name] : kinds) EXPECT_EQ(model.Add(geometry).ObjectName(), name);
}

TEST_F(Curves, EveryKindMovesThereAndBack) {
    HostBlock& model = document.Model();
    TextData text;
    text.insertion = {1, 2, 0};
    text.rotation = 0.5;
    text.text = "Part";
    MTextData paragraph;
    paragraph.insertion = {3, 4, 5};
    paragraph.text = "Part";
    QuadData quad;
    quad.corners = {Point3{0, 0, 1}, Point3{1, 0, 1}, Point3{0, 1, 1}, Point3{1, 1, 1}};
    PolylineData polyline;
    polyline.vertices.resize(3);
    polyline.vertices[1].point = {5, 0, 0};
    polyline.vertices[1].bulge = 0.5;
    polyline.vertices[2].point = {5, 5, 0};
    PointData point;
    point.position = {7, 8, 9};
    const Similarity there = Similarity::Turn({1, 2, 3}, {4, 4, 9}, 1.1)
                                 .Then(Similarity::Mirror({1, 0, 0}, {1, 1, 0}))
                                 .Then(Similarity::Scale({3, 3, 3}, 2));
    for (const HostGeometry& geometry : std::vector<HostGeometry>{
             text, paragraph, quad, polyline, point, LineData{{0, 0, 0}, {1, 2, 3}, 2, {0, 0, 1}}}) {
        HostEntity& entity = model.Add(geometry);
        const Box3 before = entity.GetBoundingBox();
        entity.Transform(there);
        entity.Transform(there.Inverse());
        const Box3 after = entity.GetBoundingBox();
        ExpectBox(after, before.min, before.max, 1e-9);
    }
}

struct Crossing {
    const char* rule;
    HostGeometry one, other;
    ExtendOption option;
    std::vector<Point3> points;
};

TEST_F(Curves, Intersections) {
    const LineData flat{{0, 0, 0}, {10, 0, 0}, 0, {0, 0, 1}}, steep{{5, -5, 0}, {5, 5, 0}, 0, {0, 0, 1}};
    const LineData tooShort{{5, 2, 0}, {5, 5, 0}, 0, {0, 0, 1}}, above{{5, -5, 1}, {5, 5, 1}, 0, {0, 0, 1}};
    const CircleData circle{{5, 0, 0}, 3, 0, {0, 0, 1}}, touching{{5, 3, 0}, 3, 0, {0, 0, 1}};
    const CircleData upright{{5, 0, 0}, 3, 0, {0, 1, 0}}, second{{9, 0, 0}, 3, 0, {0, 0, 1}};
    const ArcData right{{5, 0, 0}, 3, 1.5 * pi, pi / 2, 0, {0, 0, 1}};
    const double height = std::sqrt(5.0);
    const std::vector<Crossing> cases{
        {"lines cross", flat, steep, ExtendOption::None, {{5, 0, 0}}},
        {"a line ends short", flat, tooShort, ExtendOption::None, {}},
        {"the other is extended", flat, tooShort, ExtendOption::Other, {{5, 0, 0}}},
        {"this one is extended in vain", flat, tooShort, ExtendOption::This, {}},
        {"lines pass in space", flat, above, ExtendOption::Both, {}},
        {"a line through a circle", flat, circle, ExtendOption::None, {{2, 0, 0}, {8, 0, 0}}},
        {"a line touches", flat, touching, ExtendOption::None, {{5, 0, 0}}},
        {"a line meets an arc", flat, right, ExtendOption::None, {{8, 0, 0}}},
        {"an arc extended to its circle", flat, right, ExtendOption::Other, {{2, 0, 0}, {8, 0, 0}}},
        {"circles of two planes", circle, upright, ExtendOption::None, {{8, 0, 0}, {2, 0, 0}}},
        {"two circles", circle, second, ExtendOption::None, {{7, height, 0}, {7, -height, 0}}},
        {"a circle and itself", circle, circle, ExtendOption::None, {}},
    };
    for (const Crossing& one : cases) {
        SCOPED_TRACE(one.rule);
        HostEntity& a = document.Model().Add(one.one);
        const std::vector<Point3> points = a.IntersectWith(document.Model().Add(one.other), one.option);
        ASSERT_EQ(points.size(), one.points.size());
        for (std::size_t i = 0; i < points.size(); ++i) ExpectNear(points[i], one.points[i], 1e-9);
    }
}

TEST_F(Curves, IntersectionsOfPolylinesGoPieceByPiece) {
    AcadLWPolyline* square = Model().AddLightWeightPolyline(std::vector<double>{0, 0, 4, 0, 4, 4, 0, 4});
    square->SetClosed(true);
    AcadLine* line = Model().AddLine({2, -1, 0}, {2, 9, 0});
    EXPECT_EQ(square->IntersectWith(*line, ExtendOption::None).size(), 2U);
}

TEST_F(Curves, IntersectionsOfOtherKindsNameThem) {
    Acad3DSolid* solid = Model().AddBox({0, 0, 0}, 1, 1, 1);
    AcadLine* line = Model().AddLine({0, 0, 0}, {1, 0, 0});
    const Failure failure = FailureOf([&] { line->IntersectWith(*solid, ExtendOption::None); });
    EXPECT_NE(failure.detail().find("AcDb3dSolid"), std::string::npos);
}

}  // namespace
}  // namespace brenvik
