// STRETCH: ends, holes and notches that a window holds are shifted, and the sides that reach into it follow.
#include <algorithm>

#include "command_fixture.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/drawing_state.h"
#include "drafting_host/solids/mass.h"

namespace brenvik {
namespace {

class Stretching : public CommandTest {
  protected:
    Stretching() {
        application.SetCommandEndedHandler(
            [this](HostDocument&, std::string_view name) { ended.emplace_back(name); });
    }
    /// A board with a hole through it near its right end.
    HostSolid& DrilledBoard() {
        BoxAt({0, 0, 0}, {600, 300, 18});
        Type("cylinder 550,150,0 17.5 18 subtract (handent \"" + Solid(0).Handle() + "\")  last  ");
        transcript.clear();
        return Solid(0);
    }
    static double HoleVolume() { return std::numbers::pi * 17.5 * 17.5 * 18; }

    std::vector<std::string> ended;
};

TEST_F(Stretching, TheEndInTheWindowIsShiftedToTheTypedSize) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    SetText(board, "Material", "Oak");
    Type("stretch crossing 500,-10 700,310  0,0 33.3,0 ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().min, {0, 0, 0});
    ExpectExact(board.GetBoundingBox().max, {633.3, 300, 18});
    EXPECT_EQ(TextOf(board, "Material"), "Oak");
    EXPECT_EQ(ended, std::vector<std::string>{"STRETCH"});
    EXPECT_EQ(PreviousHandles(), std::vector{board.Handle()});
}

TEST_F(Stretching, AWindowThatMeetsNothingEndsItAndSaysSo) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    Type("stretch c 900,-10 1000,310  0,0 ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().max, {600, 300, 18});
    const auto found = std::ranges::find(transcript, "No objects were found: STRETCH ends.");
    ASSERT_NE(found, transcript.end());
    EXPECT_LT(found, std::ranges::find(transcript, "Unknown command \"0,0\"."));
}

TEST_F(Stretching, TheCornersOfTheWindowAreAskedForAtOnce) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    Type("s ");
    EXPECT_EQ(commandLine.Prompt(document), "First corner:");
    EXPECT_EQ(commandLine.ByPointing(document), PointedAt::Point);
    Type("-10,-10 100,310 ");
    EXPECT_EQ(commandLine.Prompt(document), "Select objects:");
    Type(" 0,0 50,0 ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().min, {50, 0, 0});
    ExpectExact(board.GetBoundingBox().max, {600, 300, 18});
}

TEST_F(Stretching, AHoleInTheWindowGoesAlongAndOneBesideItStays) {
    HostSolid& board = DrilledBoard();
    Type("cylinder 50,150,0 17.5 18 subtract (handent \"" + board.Handle() + "\")  last  ");
    const double centreBefore = board.Centroid().x, volume = board.Volume();
    Type("stretch c 400,-10 700,310  0,0 100,0 ");
    ExpectExact(board.GetBoundingBox().max, {700, 300, 18});
    EXPECT_NEAR(board.Volume(), volume + 100 * 300 * 18, 1e-6);
    const double plain = 700 * 300 * 18;
    EXPECT_NEAR(board.Centroid().x, (350 * plain - (650 + 50) * HoleVolume()) / board.Volume(), 1e-9);
    EXPECT_GT(board.Centroid().x, centreBefore);
}

TEST_F(Stretching, AHoleAloneIsMovedAcross) {
    HostSolid& board = DrilledBoard();
    const double volume = board.Volume();
    Type("stretch c 500,100 590,200  0,0 -200,40 ");
    ExpectIdle();
    EXPECT_NEAR(board.Volume(), volume, 1e-6);
    EXPECT_NEAR(board.Centroid().x, (300.0 * 600 * 300 * 18 - 350 * HoleVolume()) / volume, 1e-9);
    EXPECT_NEAR(board.Centroid().y, (150.0 * 600 * 300 * 18 - 190 * HoleVolume()) / volume, 1e-9);
}

TEST_F(Stretching, ABlindHoleKeepsItsDepth) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    Type("cylinder 550,150,5 17.5 20 subtract (handent \"" + Solid(0).Handle() + "\")  last  ");
    Type("stretch c 400,-10 700,310  0,0 -250,0 ");
    const double hole = std::numbers::pi * 17.5 * 17.5 * 13;
    EXPECT_NEAR(Solid(0).Volume(), 350 * 300 * 18 - hole, 1e-6);
    // Seen from the front, whose plane is that of the user system then: a thicker board has the deeper hole
    // where its floor is outside of the window.
    Type("-view front stretch c -10,10 700,30  0,0 0,2 ");
    EXPECT_NEAR(Solid(0).Volume(), 350 * 300 * 20 - hole / 13 * 15, 1e-6);
}

TEST_F(Stretching, TheWindowBelongsToTheViewInWhichItIsDrawn) {
    const HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    // Turned to the front ahead of the corners, and to the top again behind them.
    Type("stretch 'dview\n\npo\n*0,0,0\n*0,-1,0\n\n-10,0,10 700,0,30 \n");
    Type("'dview\n\npo\n*0,0,0\n*0,0,1\n\n0,0,0 0,0,2 ");
    ExpectExact(board.GetBoundingBox().max, {600, 300, 20});
    ExpectExact(board.GetBoundingBox().min, {0, 0, 0});
}

TEST_F(Stretching, PointsOfAViewAreNoneThatOthersGoOnFrom) {
    const HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    Type("move last  100,50,0 'dview\n\npo\n*0,0,0\n*0,-1,7\n\n@30,0,0 ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().min, {30, 0, 0});
}

TEST_F(Stretching, ANotchIsWidenedByItsWall) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    Type("box 200,200,0 400,300,18 subtract (handent \"" + Solid(0).Handle() + "\")  last  ");
    HostSolid& board = Solid(0);
    Type("stretch c 350,190 450,310  0,0 25,0 ");
    EXPECT_NEAR(board.Volume(), (600 * 300 - 225 * 100) * 18, 1e-6);
    ExpectExact(board.GetBoundingBox().max, {600, 300, 18});
}

TEST_F(Stretching, WhatLiesWithinIsMovedAndWhatHasNoCornerThereStays) {
    HostSolid& across = BoxAt({0, 0, 0}, {600, 300, 18});
    HostSolid& within = BoxAt({500, 0, 18}, {590, 300, 36});
    HostSolid& long_ = BoxAt({-1000, 100, 50}, {2000, 200, 60});
    Type("stretch c 450,-10 700,310  0,0 64,0 ");
    ExpectExact(across.GetBoundingBox().max, {664, 300, 18});
    ExpectExact(within.GetBoundingBox().min, {564, 0, 18});
    ExpectExact(within.GetBoundingBox().max, {654, 300, 36});
    ExpectExact(long_.GetBoundingBox().max, {2000, 200, 60});
    EXPECT_EQ(ended.size(), 1U);
    EXPECT_EQ(PreviousHandles(), std::vector{across.Handle()});
}

TEST_F(Stretching, ATurnedBoardIsStretchedAlongItself) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    Type("rotate all  0,0 30 ");
    const double volume = board.Volume();
    Type("stretch c 300,100 700,700  0,0 100<30 ");
    ExpectIdle();
    EXPECT_NEAR(board.Volume(), volume / 600 * 700, 1e-6);
    Type("rotate all  0,0 -30 ");
    ExpectNear(board.GetBoundingBox().max, {700, 300, 18}, 1e-9);
}

struct RefusedCase {
    const char* answers;
    const char* why;

    friend void PrintTo(const RefusedCase& each, std::ostream* out) { *out << each.answers; }
};

class RefusedStretch : public Stretching, public ::testing::WithParamInterface<RefusedCase> {};

TEST_P(RefusedStretch, NamesTheSolidAndChangesNothing) {
    HostSolid& board = DrilledBoard();
    BoxAt({0, 0, 100}, {600, 300, 118});
    const TopoDS_Shape shape = board.Shape();
    const DrawingState before(document);
    Type(GetParam().answers);
    ExpectIdle();
    EXPECT_TRUE(Told("the solid " + board.Handle() + " can't be stretched, and nothing is changed: ") ||
                Told("the solid " + Solid(1).Handle() + " can't be stretched, and nothing is changed: "));
    EXPECT_TRUE(Told(GetParam().why)) << testing::PrintToString(transcript);
    EXPECT_TRUE(board.Shape().IsEqual(shape));
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_TRUE(ended.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Ways, RefusedStretch,
    ::testing::Values(RefusedCase{"stretch c 590,-10 700,310  0,0 10,5 ", "would be skewed"},
                      RefusedCase{"stretch c 590,200 700,310  0,0 10,0 ", "would be skewed"},
                      RefusedCase{"stretch c 550,-10 700,310  0,0 10,0 ", "lies only partly in the window"},
                      RefusedCase{"stretch c 590,-10 700,310  0,0 -600,0 ", "longer than a side"},
                      RefusedCase{"stretch c 590,-10 700,310  0,0 -700,0 ", "longer than a side"},
                      RefusedCase{"stretch c 590,-10 700,310  0,0 -60,0 ", "would run into what stays"},
                      RefusedCase{"stretch c 500,100 590,200  0,0 60,0 ", "would run into what stays"},
                      RefusedCase{"stretch c 500,100 590,200  0,0 400,0 ", "would run into what stays"}));

TEST_F(Stretching, WhatAnEarlierCommandHasChangedIsNoneOfItsOwn) {
    const HostSolid& board = DrilledBoard();
    Type("stretch c 590,-10 700,310  0,0 10,5 ");
    EXPECT_TRUE(ended.empty()) << "drilling calls no update, and neither does a refusal";
    EXPECT_EQ(PreviousHandles().front(), board.Handle());
}

TEST_F(Stretching, PickedObjectsMoveAsAWhole) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    Type("stretch (handent \"" + board.Handle() + "\")  0,0 10,20 ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().min, {10, 20, 0});
    ExpectExact(board.GetBoundingBox().max, {610, 320, 18});
}

TEST_F(Stretching, LinesPartlyInTheWindowStayAndAreTold) {
    Model().AddLine({500, 100, 0}, {550, 100, 0});
    Model().AddLine({0, 100, 0}, {550, 100, 0});
    Type("stretch c 450,-10 700,310  0,0 64,0 ");
    ExpectIdle();
    ExpectExact(Entities()[0]->GetBoundingBox().min, {564, 100, 0});
    ExpectExact(Entities()[1]->GetBoundingBox().max, {550, 100, 0});
    EXPECT_TRUE(Told("1 found partly in the window"));
}

TEST_F(Stretching, OneUndoTakesAllOfItBack) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    BoxAt({500, 0, 18}, {590, 300, 36});
    KeepHistory(document);
    const DrawingState before(document);
    Type("stretch c 450,-10 700,310  0,0 64,0 ");
    ASSERT_FALSE(DrawingState(document) == before);
    Type("u ");
    EXPECT_TRUE(DrawingState(document) == before);
    EXPECT_TRUE(Told("STRETCH is taken back."));
}

TEST_F(Stretching, EscapeAndAnEmptyAnswerLeaveIt) {
    BoxAt({0, 0, 0}, {600, 300, 18});
    const DrawingState before(document);
    Type("stretch \n");
    ExpectIdle();
    Type("stretch c 500,-10 700,310  0,0 \x1b");
    ExpectIdle();
    EXPECT_TRUE(DrawingState(document) == before);
}

TEST_F(Stretching, PartsOnLockedLayersStay) {
    HostSolid& board = BoxAt({0, 0, 0}, {600, 300, 18});
    document.LayerTable().Find("0")->SetLock(true);
    Type("stretch c 500,-10 700,310  ");
    ExpectIdle();
    ExpectExact(board.GetBoundingBox().max, {600, 300, 18});
    EXPECT_TRUE(Told("1 on a locked layer"));
}

}  // namespace
}  // namespace brenvik
