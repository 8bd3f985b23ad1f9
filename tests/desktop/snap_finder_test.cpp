// Which point of solids is meant by a place on the screen, from every side.
#include "snaps/snap_finder.h"

#include <gtest/gtest.h>

#include <BRepAlgoAPI_Cut.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <gp_Ax2.hxx>
#include <string>

namespace brenvik::desktop {
namespace {

using namespace vectors;

constexpr double Exact = 1e-9;

TopoDS_Shape Board(const Point3& corner, const Point3& size) {
    return BRepPrimAPI_MakeBox(gp_Pnt(corner.x, corner.y, corner.z), size.x, size.y, size.z).Shape();
}

/// A hole down from the top of a board.
TopoDS_Shape Drilled(const TopoDS_Shape& board, const Point3& mouth, double radius, double depth) {
    const gp_Ax2 axis({mouth.x, mouth.y, mouth.z}, {0, 0, -1});
    return BRepAlgoAPI_Cut(board, BRepPrimAPI_MakeCylinder(axis, radius, depth).Shape()).Shape();
}

Sight Looking(const Point3& towardsEye, const Point3& up) {
    Sight sight;
    sight.axes.z = Unit(towardsEye);
    sight.axes.x = Unit(Cross(up, sight.axes.z));
    sight.axes.y = Cross(sight.axes.z, sight.axes.x);
    // Uneven, so that no pixel happens to show a round number.
    sight.middle = {123.4, 56.7, 8.9};
    sight.unit = 0.73;
    sight.width = 801;
    sight.height = 600;
    return sight;
}

const Sight fromTop = Looking({0, 0, 1}, {0, 1, 0}), fromBottom = Looking({0, 0, -1}, {0, 1, 0}),
            fromFront = Looking({0, -1, 0}, {0, 0, 1}), fromBack = Looking({0, 1, 0}, {0, 0, 1}),
            fromLeft = Looking({-1, 0, 0}, {0, 0, 1}), fromRight = Looking({1, 0, 0}, {0, 0, 1}),
            isometric = Looking({-1, -1, 1}, {0, 0, 1});

ScreenPlace Beside(const Sight& sight, const Point3& point, double right = 3, double down = 2) {
    const ScreenPlace place = sight.PlaceOf(point);
    return {place.x + right, place.y + down};
}

void ExpectSnap(const Snap& snap, SnapKind kind, const Point3& point) {
    EXPECT_EQ(WordsOf(snap.kind), WordsOf(kind));
    EXPECT_NEAR(snap.point.x, point.x, Exact);
    EXPECT_NEAR(snap.point.y, point.y, Exact);
    EXPECT_NEAR(snap.point.z, point.z, Exact);
}

SnapFinder FinderOf(const std::vector<TopoDS_Shape>& shapes) {
    SnapFinder finder;
    finder.SetBodies(shapes);
    return finder;
}

TEST(SnapFinder, FromEverySideTheCornerNearestToTheEye) {
    const Point3 corner{10.125, 20.25, 30.5}, far{610.125, 320.25, 48.5};
    const SnapFinder finder = FinderOf({Board(corner, far - corner)});
    const struct {
        const Sight& sight;
        Point3 point;
    } cases[] = {
        {fromTop, {corner.x, corner.y, far.z}},      {fromBottom, {far.x, corner.y, corner.z}},
        {fromFront, {far.x, corner.y, far.z}},       {fromBack, {corner.x, far.y, corner.z}},
        {fromLeft, {corner.x, far.y, corner.z}},     {fromRight, {far.x, corner.y, far.z}},
        {isometric, {corner.x, corner.y, corner.z}}, {isometric, {far.x, far.y, far.z}},
    };
    for (const auto& [sight, point] : cases)
        ExpectSnap(finder.Find(sight, Beside(sight, point), {}), SnapKind::End, point);
}

TEST(SnapFinder, MiddleOfAnEdge) {
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {601, 300, 18})});
    ExpectSnap(finder.Find(fromTop, Beside(fromTop, {300.5, 0, 18}), {}), SnapKind::Middle, {300.5, 0, 18});
    ExpectSnap(finder.Find(isometric, Beside(isometric, {0, 0, 9}, 2, 0), {}), SnapKind::Middle, {0, 0, 9});
}

TEST(SnapFinder, CentreOfAHoleWithinItAndOnItsRim) {
    const Point3 mouth{200, 150, 18};
    const SnapFinder finder = FinderOf({Drilled(Board({0, 0, 0}, {600, 300, 18}), mouth, 17.5, 12)});
    for (const Sight& sight : {fromTop, isometric}) {
        ExpectSnap(finder.Find(sight, Beside(sight, mouth), {}), SnapKind::Centre, mouth);
        ExpectSnap(finder.Find(sight, Beside(sight, mouth + Point3{17.5, 0, 0}, 2, 0), {}), SnapKind::Centre,
                   mouth);
    }
}

TEST(SnapFinder, AFullCircleHasNoEndsAndNoMiddle) {
    const Point3 mouth{200, 150, 18};
    const SnapFinder finder = FinderOf({Drilled(Board({0, 0, 0}, {600, 300, 18}), mouth, 40, 12)});
    for (const Point3& direction : {Point3{1, 0, 0}, {0, 1, 0}, {-1, 0, 0}, {0, -1, 0}})
        ExpectSnap(finder.Find(fromTop, Beside(fromTop, mouth + direction * 40, 0, 0), {}), SnapKind::Centre,
                   mouth);
}

TEST(SnapFinder, WhereEdgesOfTwoBoardsCross) {
    // The shelf stands out of the side, and both tops lie in one plane.
    const SnapFinder finder =
        FinderOf({Board({0, 0, 0}, {600, 300, 18}), Board({199.5, -100, 0}, {18, 333.25, 18})});
    ExpectSnap(finder.Find(fromTop, Beside(fromTop, {199.5, 0, 18}), {}), SnapKind::Intersection,
               {199.5, 0, 18});
}

TEST(SnapFinder, EdgesThatOnlySeemToCrossDont) {
    const SnapFinder finder =
        FinderOf({Board({0, 0, 0}, {600, 300, 18}), Board({199.5, -100, 50}, {18, 533.25, 18})});
    const Snap snap = finder.Find(fromTop, Beside(fromTop, {199.5, 0, 68}, 1, 1), {});
    ExpectSnap(snap, SnapKind::Face, {snap.point.x, snap.point.y, 68});
}

TEST(SnapFinder, WhereAnEdgeCrossesARoundOne) {
    const TopoDS_Shape drum = BRepPrimAPI_MakeCylinder(gp_Ax2({300, 0, 0}, {0, 0, 1}), 50, 18).Shape();
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {600, 300, 18}), drum});
    ExpectSnap(finder.Find(fromTop, Beside(fromTop, {250, 0, 18}), {}), SnapKind::Intersection, {250, 0, 18});
}

TEST(SnapFinder, TheFootOfThePerpendicularFromThePointBefore) {
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {600, 300, 18})});
    SnapWishes wishes;
    wishes.base = Point3{137.75, -400, 100};
    const Point3 foot{137.75, 0, 18};
    ExpectSnap(finder.Find(fromTop, Beside(fromTop, foot), wishes), SnapKind::Perpendicular, foot);
    const Snap without = finder.Find(fromTop, Beside(fromTop, foot, 0, -4), {});
    ExpectSnap(without, SnapKind::Face, {without.point.x, without.point.y, 18});
}

TEST(SnapFinder, OnTheFaceThatIsSeen) {
    const SnapFinder finder =
        FinderOf({Board({0, 0, 0}, {600, 300, 18}), Board({0, 0, 100}, {600, 300, 18})});
    const Point3 wanted{222.2, 111.1, 118};
    ExpectSnap(finder.Find(fromTop, fromTop.PlaceOf(wanted), {}), SnapKind::Face, wanted);
    ExpectSnap(finder.Find(isometric, isometric.PlaceOf(wanted), {}), SnapKind::Face, wanted);
}

TEST(SnapFinder, WhatIsHiddenCountsOnlyWhereEdgesAloneAreDrawn) {
    const Point3 hidden{250, 150, 18};
    const SnapFinder finder =
        FinderOf({Board({0, 0, 0}, {250, 150, 18}), Board({-50, -50, 100}, {600, 400, 18})});
    ExpectSnap(finder.Find(fromTop, fromTop.PlaceOf(hidden), {}), SnapKind::Face, {250, 150, 118});
    SnapWishes wishes;
    wishes.seeThrough = true;
    ExpectSnap(finder.Find(fromTop, fromTop.PlaceOf(hidden), wishes), SnapKind::End, hidden);
}

TEST(SnapFinder, WithoutSnapsThePointIsThePlaceItself) {
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {600, 300, 18})});
    SnapWishes wishes;
    wishes.snapping = false;
    const Point3 wanted{2.5, 1.25, 18};
    ExpectSnap(finder.Find(fromTop, fromTop.PlaceOf(wanted), wishes), SnapKind::Face, wanted);
}

TEST(SnapFinder, BesideEverythingThePointLiesInThePlaneOfTheBase) {
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {60, 30, 18})});
    SnapWishes wishes;
    wishes.base = Point3{1, 2, 3};
    ExpectSnap(finder.Find(fromTop, fromTop.PlaceOf({150, 170, 99}), wishes), SnapKind::Free, {150, 170, 3});
    ExpectSnap(finder.Find(fromFront, fromFront.PlaceOf({150, -99, 170}), wishes), SnapKind::Free,
               {150, 2, 170});
    ExpectSnap(finder.Find(fromRight, fromRight.PlaceOf({99, 150, 170}), wishes), SnapKind::Free,
               {1, 150, 170});
    ExpectSnap(finder.Find(isometric, isometric.PlaceOf({150, 170, 0}), {}), SnapKind::Free, {150, 170, 0});
}

TEST(SnapFinder, OutOfReachNothingDrawsThePoint) {
    const SnapFinder finder = FinderOf({Board({0, 0, 0}, {600, 300, 18})});
    const Snap snap = finder.Find(fromTop, Beside(fromTop, {0, 0, 18}, 15, -15), {});
    ExpectSnap(snap, SnapKind::Face, {15 * fromTop.unit, 15 * fromTop.unit, 18});
}

TEST(SnapFinder, BodiesThatAreGoneOfferNothing) {
    SnapFinder finder = FinderOf({Board({0, 0, 0}, {600, 300, 18})});
    finder.SetBodies({Board({0, 0, 0}, {50, 50, 18})});
    ExpectSnap(finder.Find(fromTop, Beside(fromTop, {50, 50, 18}), {}), SnapKind::End, {50, 50, 18});
    const Snap snap = finder.Find(fromTop, Beside(fromTop, {600, 300, 18}), {});
    EXPECT_EQ(snap.kind, SnapKind::Free);
}

}  // namespace
}  // namespace brenvik::desktop
