// SOLIDEDIT: faces and bodies.
#include "command_fixture.h"
#include "drafting_host/solids/mass.h"

namespace brenvik {
namespace {

class FaceEditing : public CommandTest {
  protected:
    FaceEditing() {
        application.SetCommandEndedHandler(
            [this](HostDocument&, std::string_view name) { ended.emplace_back(name); });
    }

    std::vector<std::string> ended;
};

struct FaceCase {
    const char* answers;
    Point3 min, max;

    friend void PrintTo(const FaceCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.answers);
    }
};

class EditedFace : public CommandTest, public ::testing::WithParamInterface<FaceCase> {};

TEST_P(EditedFace, GivesTheTypedSizes) {
    HostSolid& solid = BoxAt({0, 0, 0}, {100, 50, 20});
    SetText(solid, "Material", "Oak");
    const std::string handle = solid.Handle();
    Type(GetParam().answers);
    ExpectIdle();
    ASSERT_EQ(Entities().size(), 1u);
    ExpectExact(Solid(0).GetBoundingBox().min, GetParam().min);
    ExpectExact(Solid(0).GetBoundingBox().max, GetParam().max);
    const Point3 size{GetParam().max.x - GetParam().min.x, GetParam().max.y - GetParam().min.y,
                      GetParam().max.z - GetParam().min.z};
    EXPECT_NEAR(Solid(0).Volume(), size.x * size.y * size.z, 1e-6);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(TextOf(Solid(0), "Material"), "Oak");
}

INSTANTIATE_TEST_SUITE_P(
    Ways, EditedFace,
    ::testing::Values(FaceCase{"solidedit face move 100,25,10  0,0,0 30,0,0 x x ", {0, 0, 0}, {130, 50, 20}},
                      FaceCase{"solidedit f m 100,25,10  0,0,0 -30,0,0   ", {0, 0, 0}, {70, 50, 20}},
                      FaceCase{"solidedit f m 100,25,10  30,0,0  x x ", {0, 0, 0}, {130, 50, 20}},
                      FaceCase{"solidedit f m 100,25,10  0,0,0 5,7,9 x x ", {0, 0, 0}, {105, 50, 20}},
                      FaceCase{"solidedit f o 50,25,20  5 x x ", {0, 0, 0}, {100, 50, 25}},
                      FaceCase{"solidedit f o 50,25,20  -5 x x ", {0, 0, 0}, {100, 50, 15}},
                      FaceCase{"solidedit f o 50,25,99  5 x x ", {0, 0, 0}, {100, 50, 25}},
                      FaceCase{"solidedit f o 50,25,20 50,25,0  5 x x ", {0, 0, -5}, {100, 50, 25}},
                      FaceCase{"solidedit f o 50,25,20 all  5 x x ", {-5, -5, -5}, {105, 55, 25}},
                      FaceCase{"solidedit f o 100,25,20 r 50,25,20  5 x x ", {0, 0, 0}, {105, 50, 20}},
                      FaceCase{"solidedit f e 50,25,20  10  x x ", {0, 0, 0}, {100, 50, 30}},
                      FaceCase{"solidedit f e 50,25,20  10 0 x x ", {0, 0, 0}, {100, 50, 30}},
                      FaceCase{"solidedit f o 50,25,20  5 u x x ", {0, 0, 0}, {100, 50, 20}},
                      FaceCase{"solidedit f o 50,25,20  5 o 50,25,25  5 x x ", {0, 0, 0}, {100, 50, 30}},
                      FaceCase{"solidedit f o 50,25,20  5 x u x ", {0, 0, 0}, {100, 50, 20}},
                      FaceCase{
                          "ucs x 90 solidedit f m 50,20,-25  0,0,0 0,10,0 x x ", {0, 0, 0}, {100, 50, 30}}));

TEST_F(FaceEditing, TellsItsEndOnceWhenSomethingChanged) {
    HostSolid& solid = BoxAt({0, 0, 0}, {100, 50, 20});
    Type("solidedit f o 50,25,20  5 ");
    EXPECT_TRUE(ended.empty());
    Type("x x ");
    EXPECT_EQ(ended, std::vector<std::string>{"SOLIDEDIT"});
    EXPECT_EQ(PreviousHandles(), std::vector{solid.Handle()});
    Type("solidedit x ");
    EXPECT_EQ(ended.size(), 1u);
}

TEST_F(FaceEditing, AFaceWithSlantedNeighboursTakesThemAlong) {
    Type("wedge 0,0,0 10,10,10 ");
    Type("solidedit f o 0,5,2  10 x x ");
    ExpectIdle();
    // The slope goes on: the wedge grows to 20 by 20.
    EXPECT_NEAR(Solid(0).Volume(), 2000, 1e-6);
}

TEST_F(FaceEditing, AHoleIsOffsetAndMoved) {
    BoxAt({0, 0, 0}, {100, 50, 20});
    Type("cylinder 30,25,0 5 20 ");
    Type("su 0,0,0  l  ");
    const double plain = 100 * 50 * 20;
    Type("solidedit f o 35,25,10  2 x x ");
    EXPECT_NEAR(Solid(0).Volume(), plain - std::numbers::pi * 9 * 20, 1e-3);
    Type("solidedit f m 33,25,10  0,0,0 40,0,0 x x ");
    ExpectIdle();
    EXPECT_NEAR(Solid(0).Volume(), plain - std::numbers::pi * 9 * 20, 1e-3);
    EXPECT_NEAR(Solid(0).Centroid().x, (50 * plain - 70 * std::numbers::pi * 180) / Solid(0).Volume(), 1e-3);
}

TEST_F(FaceEditing, WhatCanNotBeDoneIsToldAndLeavesTheSolid) {
    HostSolid& solid = BoxAt({0, 0, 0}, {100, 50, 20});
    const TopoDS_Shape shape = solid.Shape();
    Type("solidedit f o 50,25,20  -20 o 500,500,500   e 50,25,20  5 10 ");
    ExpectIdle();
    EXPECT_TRUE(solid.Shape().IsEqual(shape));
    EXPECT_TRUE(Told("The faces stay as they were"));
    EXPECT_TRUE(Told("No face lies there."));
    EXPECT_TRUE(ended.empty());
}

TEST_F(FaceEditing, SolidsOnLockedLayersAreOutOfReach) {
    HostSolid& solid = BoxAt({0, 0, 0}, {100, 50, 20});
    document.LayerTable().Find("0")->SetLock(true);
    Type("solidedit f o 50,25,20   x ");
    ExpectIdle();
    EXPECT_TRUE(Told("The solid is on a locked layer."));
    EXPECT_EQ(solid.Volume(), 100000);
}

TEST_F(FaceEditing, BodiesAreCheckedAndParted) {
    SetText(BoxAt({0, 0, 0}, {10, 10, 10}), "Material", "Oak");
    BoxAt({20, 0, 0}, {30, 10, 10});
    Type("union all  solidedit b c l  p l  x x ");
    ExpectIdle();
    EXPECT_TRUE(Told("The object is a valid solid."));
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Solid(0).Volume(), 1000);
    EXPECT_EQ(Solid(1).Volume(), 1000);
    EXPECT_EQ(TextOf(Solid(1), "Material"), "Oak");
}

}  // namespace
}  // namespace brenvik
