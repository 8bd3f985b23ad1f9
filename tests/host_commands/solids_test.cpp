// Making solids: BOX, CYLINDER, WEDGE.
#include "command_fixture.h"

namespace brenvik {
namespace {

using Making = CommandTest;

struct BoxCase {
    const char* text;
    Point3 min, max;

    friend void PrintTo(const BoxCase& each, std::ostream* out) { *out << testing::PrintToString(each.text); }
};

class BoxAnswers : public CommandTest, public ::testing::WithParamInterface<BoxCase> {};

TEST_P(BoxAnswers, GiveTheTypedNumbers) {
    Type(GetParam().text);
    ASSERT_EQ(Entities().size(), 1u);
    const Box3 box = Solid(0).GetBoundingBox();
    ExpectExact(box.min, GetParam().min);
    ExpectExact(box.max, GetParam().max);
    ExpectIdle();
}

INSTANTIATE_TEST_SUITE_P(Forms, BoxAnswers,
                         ::testing::Values(BoxCase{"box 1,2,3 11,22,33 ", {1, 2, 3}, {11, 22, 33}},
                                           BoxCase{"box 1,2 11,22 19 ", {1, 2, 0}, {11, 22, 19}},
                                           BoxCase{"box 11,22,0 1,2 -19 ", {1, 2, -19}, {11, 22, 0}},
                                           BoxCase{"box  600,300 18 ", {0, 0, 0}, {600, 300, 18}},
                                           BoxCase{"box 5,5,5 @10,20,30 ", {5, 5, 5}, {15, 25, 35}},
                                           BoxCase{"box 0,0,0 l 600 300 18 ", {0, 0, 0}, {600, 300, 18}},
                                           BoxCase{"box 0,0,0 c 10 ", {0, 0, 0}, {10, 10, 10}},
                                           BoxCase{"box 0,0,0 cube 10 ", {0, 0, 0}, {10, 10, 10}},
                                           BoxCase{"box c 0,0,0 5,6,7 ", {-5, -6, -7}, {5, 6, 7}},
                                           BoxCase{"box c 0,0,0 5,6 20 ", {-5, -6, -10}, {5, 6, 10}},
                                           BoxCase{"box ce 10,10,10 l 4 6 8 ", {8, 7, 6}, {12, 13, 14}},
                                           BoxCase{"box c  c 4 ", {-2, -2, -2}, {2, 2, 2}},
                                           BoxCase{"wedge 0,0,0 10,20,30 ", {0, 0, 0}, {10, 20, 30}},
                                           BoxCase{"we 0,0 10,-20 -5 ", {0, -20, -5}, {10, 0, 0}},
                                           BoxCase{"cylinder 1,2,3 5 10 ", {-4, -3, 3}, {6, 7, 13}},
                                           BoxCase{"cylinder  d 10 20 ", {-5, -5, 0}, {5, 5, 20}},
                                           BoxCase{"cylinder 0,0,0 5 -10 ", {-5, -5, -10}, {5, 5, 0}},
                                           BoxCase{"cylinder 0,0,0 5 c 20,0,0 ", {0, -5, -5}, {20, 5, 5}}));

TEST_F(Making, BoxesStandInTheUserSystem) {
    Type("ucs o 100,0,0 ucs x 90 box 0,0,0 10,20,30 ");
    const Box3 box = Solid(0).GetBoundingBox();
    ExpectExact(box.min, {100, -30, 0});
    ExpectExact(box.max, {110, 0, 20});
    EXPECT_EQ(Solid(0).Volume(), 6000);
}

TEST_F(Making, WorldCoordinatesAreTakenWithAStar) {
    Type("ucs o 100,0,0 box *0,0,0 *10,10,10 ");
    ExpectExact(Solid(0).GetBoundingBox().min, {0, 0, 0});
}

TEST_F(Making, TheElevationIsTheHeightOfFlatPoints) {
    Type("elevation 5 box 0,0 10,10 3 ");
    ExpectExact(Solid(0).GetBoundingBox().min, {0, 0, 5});
    ExpectExact(Solid(0).GetBoundingBox().max, {10, 10, 8});
}

TEST_F(Making, SolidsWithoutASizeAreRefused) {
    for (const char* text : {"box 0,0,0 0,5,5 ", "box 0,0,0 5,5 0 ", "cylinder 0,0,0 0 5 ",
                             "cylinder 0,0,0 5 0 ", "wedge 0,0,0 5,0 3 "}) {
        Type(text);
        ExpectIdle();
    }
    EXPECT_TRUE(Entities().empty());
}

TEST_F(Making, AWedgeIsHalfABox) {
    Type("wedge 0,0,0 10,20,30 wedge 10,20,30 0,0,0 ");
    EXPECT_NEAR(Solid(0).Volume(), 3000, 1e-9);
    EXPECT_NEAR(Solid(1).Volume(), 3000, 1e-9);
}

TEST_F(Making, NewSolidsLieOnTheCurrentLayerEvenALockedOne) {
    Type("-layer m Cases lo Cases \r box 0,0,0 1,1,1 ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Layer(), "Cases");
}

}  // namespace
}  // namespace brenvik
