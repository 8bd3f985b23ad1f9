// Recesses at the corners of parts and of cut-outs.
#include <numbers>

#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

const double Quarter = std::tan(std::numbers::pi / 8);

class RecessCorners : public WholePartTest {
  protected:
    void ExpectMade(MadePart& part, const CheckOptions& options = {}) {
        PutDown(part);
        Set("ClearCores", "1");
        for (const Target target : {Target::C2C, Target::RCIM}) {
            dialogs.messages.clear();
            RunAll(target);
            ExpectQuiet();
            EXPECT_EQ(Faults(part.Solid(), 0, options), std::vector<std::string>{});
        }
    }
};

TEST_F(RecessCorners, AQuarterRoundRecessAtThePartsCornerIsCutWhole) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Pocket({{0, 0}, {60, 0, Quarter}, {0, 60}}, 10);
    part.PocketBelow({{600, 400}, {540, 400, Quarter}, {600, 340}}, 8);
    ExpectMade(part);
}

TEST_F(RecessCorners, ARabbetRoundAPartsRoundedCornerIsCutWhole) {
    MadePart part = Made();
    part.Upright(Rounded(0, 0, 600, 400, 40), 18);
    part.Pocket({{-1, -1}, {60, -1}, {60, 60}, {-1, 60}}, 10);
    ExpectMade(part);
}

TEST_F(RecessCorners, ACutOutThatARecessBelowOverlapsCornerToCorner) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Window(Rectangle(200, 150, 300, 250));
    // Together with the window it leaves an L in the underside, whose inner corner two corners of the window
    // lie over.
    part.PocketBelow(Rectangle(200, 150, 400, 250), 8);
    ExpectMade(part);
}

TEST_F(RecessCorners, ACutOutWithRecessesBelowOnTwoOfItsSides) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    part.Window({{200, 150}, {300, 150}, {300, 250}});
    part.PocketBelow(Rectangle(200, 150, 300, 250), 8);
    ExpectMade(part);
}

TEST_F(RecessCorners, ASecondSideWithNothingToCutIsNotWritten) {
    MadePart part = Made();
    part.Board(600, 400, 18);
    // Wider below than above, so the first pass asks for the other side; the step opens upwards.
    part.Hole(300, 200, 60);
    part.Hole(300, 200, 80, 8);
    ExpectMade(part);
    EXPECT_FALSE(SecondSide());
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
}

}  // namespace
}  // namespace brenvik
