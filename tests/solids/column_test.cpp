// Columns over and under contours, told from faces and edges, against what the modeller cuts.
#include "drafting_host/solids/column.h"

#include <gtest/gtest.h>
#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <gp_Circ.hxx>

#include <array>
#include <numbers>
#include <vector>

#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/operations.h"
#include "drafting_host/solids/regions.h"

namespace brenvik::solids {
namespace {

TopoDS_Shape BoxOf(const gp_Pnt& low, const gp_Pnt& high) { return BRepPrimAPI_MakeBox(low, high).Shape(); }

TopoDS_Shape Without(const TopoDS_Shape& shape, const TopoDS_Shape& tool) {
    return Boolean(shape, tool, BooleanKind::Subtract);
}

TopoDS_Shape Cylinder(double x, double y, double z, double radius, double height) {
    return BRepPrimAPI_MakeCylinder(gp_Ax2(gp_Pnt(x, y, z), gp_Dir(0, 0, 1)), radius, height).Shape();
}

TopoDS_Face Disc(double x, double y, double z, double radius) {
    const TopoDS_Edge rim =
        BRepBuilderAPI_MakeEdge(gp_Circ(gp_Ax2(gp_Pnt(x, y, z), gp_Dir(0, 0, 1)), radius));
    return RegionsFromCurves(std::array{rim}).front();
}

TopoDS_Face Polygon(const std::vector<gp_Pnt>& corners) {
    std::vector<TopoDS_Edge> edges;
    for (std::size_t i = 0; i < corners.size(); ++i)
        edges.push_back(BRepBuilderAPI_MakeEdge(corners[i], corners[(i + 1) % corners.size()]));
    return RegionsFromCurves(edges).front();
}

/// A panel with a blind hole from above at 50, one from below at 100, a step from above at 150, a dado from
/// x 200 to 220, and a ball-shaped dish at 300.
TopoDS_Shape Panel() {
    TopoDS_Shape panel = BoxOf({0, 0, 0}, {400, 100, 20});
    panel = Without(panel, Cylinder(50, 50, 10, 4, 20));
    panel = Without(panel, Cylinder(100, 50, -5, 4, 15));
    panel = Without(panel, Cylinder(150, 50, -5, 5, 40));
    panel = Without(panel, Cylinder(150, 50, 12, 9, 40));
    panel = Without(panel, BoxOf({200, -1, 12}, {220, 101, 30}));
    return Without(panel, BRepPrimAPI_MakeSphere(gp_Pnt(300, 50, 25), 12).Shape());
}

struct ColumnCase {
    const char* name;
    TopoDS_Face base;
    double height;
    bool told;
};

TEST(Column, HoldsWhatTheModellerCuts) {
    const TopoDS_Shape panel = Panel();
    const double whole = Volume(panel);
    const std::vector<ColumnCase> cases{
        {"open floor", Disc(50, 50, 10, 4), 1000, true},
        {"under the floor", Disc(50, 50, 10, 4), -1000, true},
        {"covered floor", Disc(100, 50, 10, 4), 1000, true},
        {"rim below", Disc(100, 50, 0, 4), 1000, true},
        {"a little wider than the hole", Disc(100, 50, 10, 4.0001), -1000, false},
        {"a little narrower", Disc(100, 50, 10, 3.9999), -1000, true},
        {"narrow bore", Disc(150, 50, 0, 5), 1000, true},
        {"step", Disc(150, 50, 12, 9), 1000, true},
        {"ring around the narrow bore", Disc(150, 50, 0, 9), 1000, false},
        {"touching both walls", Disc(210, 40, 12, 10), 1000, true},
        {"within the dado", Disc(210, 40, 12, 3), 1000, true},
        {"under the dado", Disc(210, 40, 2, 3), 1000, true},
        {"across a wall", Disc(200, 40, 2, 3), 1000, false},
        {"over a whole hole", Disc(50, 50, 2, 30), 1000, false},
        {"material alone", Disc(250, 50, 5, 10), 1000, true},
        {"on the top", Disc(250, 50, 20, 10), 1000, true},
        {"beside the part", Disc(450, 50, 0, 10), 1000, true},
        {"over the edge", Disc(400, 50, 0, 10), 1000, false},
        {"under the dish", Disc(300, 50, 0, 5), 1000, false},
        {"floor of the dado", Polygon({{200, 0, 12}, {220, 0, 12}, {220, 100, 12}, {200, 100, 12}}), 1000,
         true},
        {"around the step", Polygon({{130, 30, 12}, {170, 30, 12}, {170, 70, 12}, {130, 70, 12}}), 1000,
         false},
        {"triangle", Polygon({{230, 10, 4}, {270, 20, 4}, {240, 60, 4}}), 1000, true},
        {"the whole part", Polygon({{0, 0, 0}, {400, 0, 0}, {400, 100, 0}, {0, 100, 0}}), 1000, false},
    };
    for (const ColumnCase& each : cases) {
        const std::optional<double> share = VolumeInColumn(panel, each.base, each.height);
        EXPECT_EQ(share.has_value(), each.told) << each.name;
        if (!share) continue;
        const double sweep = NormalOf(each.base).Z() > 0 ? each.height : -each.height;
        EXPECT_NEAR(*share, whole - Volume(Without(panel, ExtrudeRegion(each.base, sweep))), 1e-6)
            << each.name;
    }
}

TEST(Column, IsCutOffAtItsHeight) {
    const TopoDS_Shape panel = BoxOf({0, 0, 0}, {100, 100, 20});
    EXPECT_FALSE(VolumeInColumn(panel, Disc(50, 50, 5, 4), 10).has_value());
    EXPECT_NEAR(*VolumeInColumn(panel, Disc(50, 50, 5, 4), 15), std::numbers::pi * 16 * 15, 1e-9);
}

TEST(Column, StandsOnLevelFacesAlone) {
    const TopoDS_Shape panel = BoxOf({0, 0, 0}, {100, 100, 20});
    EXPECT_FALSE(VolumeInColumn(panel, Polygon({{10, 10, 5}, {30, 10, 5}, {30, 30, 6}, {10, 30, 6}}), 1000));
    EXPECT_FALSE(VolumeInColumn(panel, TopoDS_Face(), 1000));
    EXPECT_FALSE(VolumeInColumn(TopoDS_Shape(), Disc(50, 50, 5, 4), 1000));
}

}  // namespace
}  // namespace brenvik::solids
