// ALIGN by one, two and three pairs of points, and the exactness of turns.
#include "command_fixture.h"

namespace brenvik {
namespace {

using Aligning = CommandTest;

TEST_F(Aligning, ThreePairsMoveAPartRigidlyWithoutAskingForAScale) {
    HostSolid& solid = BoxAt({100, 200, 300}, {110, 220, 330});
    for (const char* answer : {"align ", "all  ", "100,200,300 ", "0,0,0 ", "100,200,330 ", "1000,0,0 ",
                               "100,220,300 ", "0,10000000,0 "}) {
        Type(answer);
    }
    ExpectIdle();
    ExpectExact(solid.GetBoundingBox().min, {0, 0, -10});
    ExpectExact(solid.GetBoundingBox().max, {30, 20, 0});
    EXPECT_EQ(solid.Volume(), 6000);
}

TEST_F(Aligning, AsksInTheHostsOrder) {
    BoxAt({0, 0, 0}, {1, 2, 3});
    const std::vector<std::pair<std::string, std::string>> steps{
        {"align ", "Select objects:"},
        {"all  ", "First source point:"},
        {"0,0,0 ", "First destination point:"},
        {"1,0,0 ", "Second source point:"},
        {"0,0,1 ", "Second destination point:"},
        {"2,0,0 ", "Third source point or <continue>:"},
        {" ", "Scale objects based on alignment points? [Yes/No] <N>:"},
        {" ", "Command:"}};
    for (const auto& [typed, prompt] : steps) {
        Type(typed);
        EXPECT_EQ(commandLine.Prompt(document), prompt);
    }
}

TEST_F(Aligning, OnePairMoves) {
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 2, 3});
    Type("al all  0,0,0 10,20,30  ");
    ExpectExact(solid.GetBoundingBox().min, {10, 20, 30});
    ExpectIdle();
}

TEST_F(Aligning, TwoPairsTurnAndScaleOnRequest) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    Type("align all  0,0,0 5,5,5 10,0,0 5,25,5  n ");
    ExpectBox(solid.GetBoundingBox(), {-15, 5, 5}, {5, 15, 35});
    Type("align all  5,5,5 0,0,0 5,15,5 0,20,0  y ");
    ExpectBox(solid.GetBoundingBox(), {-40, 0, 0}, {0, 20, 60});
}

TEST_F(Aligning, PointsThatMakeNoFrameAreRefused) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    Type("align all  0,0,0 0,0,0 10,0,0 0,10,0 20,0,0 0,0,10 ");
    ExpectIdle();
    ExpectExact(solid.GetBoundingBox().max, {10, 20, 30});
    EXPECT_TRUE(Told("lie on one line"));
    Type("align all  0,0,0 0,0,0 0,0,0 0,10,0 20,0,0 0,0,10 ");
    EXPECT_TRUE(Told("coincide"));
}

TEST_F(Aligning, ObjectsOnLockedLayersStay) {
    HostSolid& kept = BoxAt({0, 0, 0}, {1, 2, 3});
    NewLayer("Keep");
    kept.SetLayer("Keep");
    document.LayerTable().Find("Keep")->SetLock(true);
    HostSolid& moved = BoxAt({0, 0, 0}, {1, 2, 3});
    Type("align all  0,0,0 9,0,0  ");
    ExpectExact(kept.GetBoundingBox().min, {0, 0, 0});
    ExpectExact(moved.GetBoundingBox().min, {9, 0, 0});
}

std::string PointText12(const Point3& p) {
    char text[128];
    std::snprintf(text, sizeof text, "%.12f,%.12f,%.12f ", p.x, p.y, p.z);
    return text;
}

TEST_F(Aligning, APartAtAnOddAngleComesBackWithTheSizesItWasDrawnWith) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    HostCircle& circle = dynamic_cast<HostCircle&>(*Model().AddCircle({100, 80, 18}, 10));
    HostArc& arc = dynamic_cast<HostArc&>(*Model().AddArc({100, 80, 18}, 10, 0, 1.5));
    Type("rotate3d all  1,2,3 4,6,9 37.3 move all  0,0,0 12.34,-56.78,91.1 ");
    // Where the corner and its edges have come to.
    std::vector<Point3> corner;
    const Similarity there = Similarity::Turn({1, 2, 3}, {4, 6, 9}, 37.3 * std::numbers::pi / 180)
                                 .Then(Similarity::Shift({12.34, -56.78, 91.1}));
    for (const Point3& p : {Point3{0, 0, 0}, Point3{600, 0, 0}, Point3{0, 0, 18}})
        corner.push_back(there.Point(p));
    Type("align all  " + PointText12(corner[0]) + "0,0,0 " + PointText12(corner[1]) + "1000,0,0 " +
         PointText12(corner[2]) + "0,10000000,0 ");
    ExpectIdle();
    ExpectBox(Solid(0).GetBoundingBox(), {0, 0, -300}, {600, 18, 0}, 1e-9);
    ExpectNear(circle.Center(), {100, 18, -80}, 1e-9);
    ExpectExact(circle.Normal(), {0, 1, 0});
    ExpectExact(arc.Normal(), {0, 1, 0});
    Type("explode all  ");
    for (HostEntity* entity : Entities()) {
        const auto* region = dynamic_cast<HostRegion*>(entity);
        if (region == nullptr) continue;
        const Point3 n = region->Normal();
        EXPECT_EQ(std::abs(n.x) + std::abs(n.y) + std::abs(n.z), 1);
    }
}

TEST_F(Aligning, QuarterTurnsOfAWholePartAreExact) {
    const Box3 box = BoxAt({0.1, 0.2, 0.3}, {10.7, 20.9, 30.11}).GetBoundingBox();
    HostCircle& circle = dynamic_cast<HostCircle&>(*Model().AddCircle({1.1, 2.2, 3.3}, 0.7));
    HostArc& arc = dynamic_cast<HostArc&>(*Model().AddArc({1.1, 2.2, 3.3}, 0.7, 0, std::numbers::pi / 2));
    HostLine& line = dynamic_cast<HostLine&>(*Model().AddLine({1.1, 2.2, 3.3}, {4.4, 5.5, 6.6}));
    for (const char* axis : {"z ", "y ", "x "}) {
        for (const char* answer : {"rotate3d ", "all ", " ", axis, "0,0,0 ", "90 "}) Type(answer);
        ExpectIdle();
    }
    // (x, y, z) goes to (-y, x, z), (z, x, y), (z, -y, x).
    ExpectExact(Solid(0).GetBoundingBox().min, {box.min.z, -box.max.y, box.min.x});
    ExpectExact(Solid(0).GetBoundingBox().max, {box.max.z, -box.min.y, box.max.x});
    ExpectExact(circle.Center(), {3.3, -2.2, 1.1});
    ExpectExact(circle.Normal(), {1, 0, 0});
    ExpectExact(arc.Center(), {3.3, -2.2, 1.1});
    ExpectNear(arc.StartPoint(), {3.3, -2.2, 1.8}, 1e-15);
    ExpectExact(line.StartPoint(), {3.3, -2.2, 1.1});
    ExpectExact(line.EndPoint(), {6.6, -5.5, 4.4});
    ExpectExact(line.Normal(), {1, 0, 0});
    Type("explode all  ");
    for (HostEntity* entity : Entities()) {
        if (const auto* region = dynamic_cast<HostRegion*>(entity)) {
            const Point3 n = region->Normal();
            EXPECT_EQ(std::abs(n.x) + std::abs(n.y) + std::abs(n.z), 1);
        }
    }
}

TEST_F(Aligning, EditingAllLeavesLockedLayersAlone) {
    HostSolid& kept = BoxAt({1, 1, 1}, {2, 3, 4});
    NewLayer("Keep");
    kept.SetLayer("Keep");
    document.LayerTable().Find("Keep")->SetLock(true);
    HostSolid& moved = BoxAt({1, 1, 1}, {2, 3, 4});
    Type("scale\rall\r\r0\r25.4\r");
    ExpectExact(moved.GetBoundingBox().max, {50.8, 76.19999999999999, 101.6});
    for (const char* answer : {"m ", "all  ", "0,0,0 ", "0,0,-5 "}) Type(answer);
    for (const char* answer : {"rotate3d ", "all ", " ", "z ", "0,0,0 ", "90 "}) Type(answer);
    ExpectExact(kept.GetBoundingBox().min, {1, 1, 1});
    ExpectExact(moved.GetBoundingBox().min, {-76.19999999999999, 25.4, 20.4});
    Type("e\rall\r\r");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Entities()[0], &kept);
    document.LayerTable().Find("Keep")->SetLock(false);
    Type("erase\rall\r\r");
    EXPECT_TRUE(Entities().empty());
    ExpectIdle();
}

}  // namespace
}  // namespace brenvik
