// ERASE, MOVE, COPY, ROTATE, SCALE, ROTATE3D, MIRROR3D and what a selection takes.
#include "command_fixture.h"

namespace brenvik {
namespace {

using Editing = CommandTest;
using Selecting = CommandTest;

struct EditCase {
    const char* text;
    Point3 min, max;

    friend void PrintTo(const EditCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.text);
    }
};

class EditedBox : public CommandTest, public ::testing::WithParamInterface<EditCase> {};

TEST_P(EditedBox, LiesWhereTheAnswersPutIt) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    SetText(solid, "Material", "Oak");
    const std::string handle = solid.Handle();
    Type(GetParam().text);
    ExpectIdle();
    ASSERT_EQ(Entities().size(), 1u);
    ExpectExact(Solid(0).GetBoundingBox().min, GetParam().min);
    ExpectExact(Solid(0).GetBoundingBox().max, GetParam().max);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(TextOf(Solid(0), "Material"), "Oak");
}

INSTANTIATE_TEST_SUITE_P(
    Forms, EditedBox,
    ::testing::Values(EditCase{"move all  0,0,0 5,6,7 ", {5, 6, 7}, {15, 26, 37}},
                      EditCase{"m all  5,6,7  ", {5, 6, 7}, {15, 26, 37}},
                      EditCase{"move all  d 1,2,3 ", {1, 2, 3}, {11, 22, 33}},
                      EditCase{"move all  1,1,1 @0,0,9 ", {0, 0, 9}, {10, 20, 39}},
                      EditCase{"ucs x 90 move all  0,0,0 0,0,10 ", {0, -10, 0}, {10, 10, 30}},
                      EditCase{"ucs o 5,5,5 move all  1,2,3  ", {1, 2, 3}, {11, 22, 33}},
                      EditCase{"rotate all  0,0,0 90 ", {-20, 0, 0}, {0, 10, 30}},
                      EditCase{"ro all  0,0,0 r 45 135 ", {-20, 0, 0}, {0, 10, 30}},
                      EditCase{"rotate all  0,0 0,5 ", {-20, 0, 0}, {0, 10, 30}},
                      EditCase{"ucs x 90 rotate all  0,0,0 90 ", {-30, 0, 0}, {0, 20, 10}},
                      EditCase{"scale\rall\r\r0\r2\r", {0, 0, 0}, {20, 40, 60}},
                      EditCase{"sc all  10,20,30 0.5 ", {5, 10, 15}, {10, 20, 30}},
                      EditCase{"scale all  0,0,0 r 10 30 ", {0, 0, 0}, {30, 60, 90}},
                      EditCase{"rotate3d all  x 0,0,0 90 ", {0, -30, 0}, {10, 0, 20}},
                      EditCase{"rotate3d all  y  90 ", {0, 0, -10}, {30, 20, 0}},
                      EditCase{"rotate3d all  z 10,0,0 180 ", {10, -20, 0}, {20, 0, 30}},
                      EditCase{"rotate3d all  0,0,0 0,0,5 -90 ", {0, -10, 0}, {20, 0, 30}},
                      EditCase{"rotate3d all  2 0,0,0 1,0,0 r 0 90 ", {0, -30, 0}, {10, 0, 20}},
                      EditCase{"-v f rotate3d all  v 0,0,0 90 ", {-30, 0, 0}, {0, 20, 10}},
                      EditCase{"mirror3d all  yz 0,0,0 y ", {-10, 0, 0}, {0, 20, 30}},
                      EditCase{"mirror3d all  0,0,0 1,0,0 0,1,0 y ", {0, 0, -30}, {10, 20, 0}},
                      EditCase{"mirror3d all  zx 0,20 y ", {0, 20, 0}, {10, 40, 30}}));

TEST_F(Editing, CopiesCarryDataAndLayerAlong) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 10, 10});
    NewLayer("Cases");
    solid.SetLayer("Cases");
    SetText(solid, "PartName", "Side");
    Type("copy all  0,0,0 100,0,0 ");
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(TextOf(Solid(1), "PartName"), "Side");
    EXPECT_EQ(Solid(1).Layer(), "Cases");
    EXPECT_NE(Solid(1).Handle(), solid.Handle());
    ExpectExact(Solid(1).GetBoundingBox().min, {100, 0, 0});
    ExpectExact(Solid(0).GetBoundingBox().min, {0, 0, 0});
}

TEST_F(Editing, ManyCopiesAreMadeUntilAnEmptyAnswer) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    Type("co all  m 0,0,0 20,0,0 40,0,0 60,0,0  ");
    EXPECT_EQ(Entities().size(), 4u);
    ExpectIdle();
}

TEST_F(Editing, CopiesOfObjectsOnLockedLayersAreMade) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 10, 10});
    NewLayer("Cases");
    solid.SetLayer("Cases");
    document.SetPreviousSelection(std::vector<HostEntity*>{&solid});
    Type("-layer lo Cases \rcopy p  0,0,0 20,0,0 ");
    EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(Editing, ARotatedCopyLeavesTheOriginal) {
    BoxAt({0, 0, 0}, {10, 20, 30});
    Type("rotate all  0,0,0 c 90 ");
    ASSERT_EQ(Entities().size(), 2u);
    ExpectExact(Solid(0).GetBoundingBox().max, {10, 20, 30});
    ExpectExact(Solid(1).GetBoundingBox().min, {-20, 0, 0});
}

TEST_F(Editing, AMirroredCopyKeepsData) {
    SetText(BoxAt({0, 0, 0}, {10, 20, 30}), "Material", "Oak");
    Type("mirror3d all  yz   ");
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(TextOf(Solid(1), "Material"), "Oak");
    ExpectExact(Solid(1).GetBoundingBox().min, {-10, 0, 0});
    EXPECT_EQ(Solid(1).Volume(), 6000);
}

TEST_F(Editing, AScaleFactorOfZeroIsRefused) {
    BoxAt({0, 0, 0}, {10, 20, 30});
    Type("scale all  0,0,0 0 ");
    ExpectIdle();
    EXPECT_EQ(Solid(0).Volume(), 6000);
}

TEST_F(Selecting, AllPassesOverLockedLayers) {
    NewLayer("Locked").SetLock(true);
    BoxAt({0, 0, 0}, {1, 1, 1});
    EntityLook look = BoxAt({5, 0, 0}, {6, 1, 1}).Look();
    look.layer = document.LayerTable().Find("Locked");
    Solid(1).SetLook(look);
    Type("erase all  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Layer(), "Locked");
    EXPECT_TRUE(Told("2 found, 1 in all; 1 on a locked layer."));
}

TEST_F(Selecting, AllPassesOverFrozenLayersAndHiddenObjects) {
    HostLayer& frozen = NewLayer("Frozen");
    BoxAt({0, 0, 0}, {1, 1, 1}).SetLayer("Frozen");
    frozen.SetFreeze(true);
    BoxAt({0, 0, 0}, {1, 1, 1}).SetVisible(false);
    Type("erase all  ");
    EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(Selecting, ObjectsOnLockedLayersStayOutOfEveryWayOfSelecting) {
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 1, 1});
    document.SetPreviousSelection(std::vector<HostEntity*>{&solid});
    document.LayerTable().Find("0")->SetLock(true);
    const std::vector<std::string> ways{"p", "l", "0,0,0", "(handent \"" + solid.Handle() + "\")"};
    for (const std::string& how : ways) {
        Type("erase " + how + "  ");
        ExpectIdle();
        EXPECT_EQ(Entities().size(), 1u) << how;
    }
}

TEST_F(Selecting, TakesPreviousLastHandlesAndPoints) {
    HostSolid& first = BoxAt({0, 0, 0}, {1, 1, 1});
    HostSolid& second = BoxAt({5, 0, 0}, {6, 1, 1});
    HostSolid& third = BoxAt({10, 0, 0}, {11, 1, 1});
    const std::string one = first.Handle(), two = second.Handle(), three = third.Handle();
    Type("select last  ");
    EXPECT_EQ(PreviousHandles(), std::vector{three});
    Type("select (handent \"" + two + "\") (handent \"" + one + "\")  ");
    EXPECT_EQ(PreviousHandles(), (std::vector{two, one}));
    Type("select previous l  ");
    EXPECT_EQ(PreviousHandles(), (std::vector{two, one, three}));
    Type("select 5.5,0.5  ");
    EXPECT_EQ(PreviousHandles(), std::vector{two});
    Type("select 0.5,0.5,99  ");
    EXPECT_EQ(PreviousHandles(), std::vector{one});
}

TEST_F(Selecting, TakesEachObjectOnce) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("select all all l  ");
    EXPECT_EQ(PreviousHandles().size(), 1u);
}

TEST_F(Selecting, TakesWindowsAndCrossings) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({20, 0, 0}, {30, 10, 10});
    Type("select w -1,-1 25,11  ");
    EXPECT_EQ(PreviousHandles(), std::vector{Solid(0).Handle()});
    Type("select c -1,-1 25,11  ");
    EXPECT_EQ(PreviousHandles().size(), 2u);
}

TEST_F(Selecting, RemovesAddsAndUndoes) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    BoxAt({5, 0, 0}, {6, 1, 1});
    Type("select all r l  ");
    EXPECT_EQ(PreviousHandles(), std::vector{Solid(0).Handle()});
    Type("select all r l a l  ");
    EXPECT_EQ(PreviousHandles().size(), 2u);
    Type("select l all u  ");
    EXPECT_EQ(PreviousHandles(), std::vector{Solid(1).Handle()});
}

TEST_F(Selecting, OfTwoObjectsInLineTheNearerToTheEyeIsPicked) {
    BoxAt({0, 0, 100}, {10, 10, 110});
    BoxAt({0, 0, 0}, {10, 10, 10});
    Type("select 5,5,-50  ");
    EXPECT_EQ(PreviousHandles(), std::vector{Solid(0).Handle()});
    Type("select 5,5,10  ");
    EXPECT_EQ(PreviousHandles(), std::vector{Solid(1).Handle()});
}

TEST_F(Selecting, CurvesArePickedOnTheirLine) {
    Model().AddLine({0, 0, 0}, {10, 0, 0});
    Type("select 5,1  ");
    EXPECT_TRUE(PreviousHandles().empty());
    Type("select 5,0,20  ");
    EXPECT_EQ(PreviousHandles().size(), 1u);
}

TEST_F(Selecting, WrongAnswersAreToldAndLeaveTheSelectionOpen) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("erase nonsense (handent \"FFFF\") 99,99 ");
    EXPECT_TRUE(commandLine.Busy(document));
    EXPECT_TRUE(Told("\"nonsense\" selects nothing"));
    EXPECT_TRUE(Told("No object has the handle"));
    EXPECT_TRUE(Told("No object lies there."));
    Type("all  ");
    EXPECT_TRUE(Entities().empty());
}

TEST_F(Selecting, AnEmptySelectionEndsTheCommandAndKeepsThePreviousOne) {
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 1, 1});
    document.SetPreviousSelection(std::vector<HostEntity*>{&solid});
    for (const char* name : {"erase", "move", "copy", "rotate", "scale", "rotate3d", "mirror3d", "select",
                             "union", "slice", "intersect", "subtract"}) {
        Type(std::string(name) + "  ");
        ExpectIdle();
    }
    EXPECT_EQ(PreviousHandles(), std::vector{solid.Handle()});
}

TEST_F(Selecting, WhatWasErasedBetweenTwoCallsDropsOut) {
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 1, 1});
    BoxAt({5, 0, 0}, {6, 1, 1});
    Type("move all ");
    solid.Delete();
    Type(" 0,0,0 1,0,0 ");
    ExpectIdle();
    ExpectExact(Solid(0).GetBoundingBox().min, {6, 0, 0});
}

TEST_F(Selecting, LayersLockedBetweenTwoAnswersLeaveAllAsItWas) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("move all  0,0,0 ");
    document.LayerTable().Find("0")->SetLock(true);
    Type("5,0,0 ");
    ExpectIdle();
    ExpectExact(Solid(0).GetBoundingBox().min, {0, 0, 0});
}

}  // namespace
}  // namespace brenvik
