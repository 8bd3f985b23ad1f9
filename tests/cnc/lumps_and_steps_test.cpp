// Solids of several lumps, and pockets within pockets: every piece has its outline, nothing is cut twice.
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

class LumpsAndSteps : public WholePartTest {
  protected:
    void Run(MadePart& part, Target target) {
        PutDown(part);
        dialogs.messages.clear();
        RunAll(target);
        ExpectQuiet();
    }
};

TEST_F(LumpsAndSteps, EachLumpHasItsOutline) {
    for (const Target target : {Target::C2C, Target::Enroute}) {
        MadePart part = Made();
        part.Board(400, 200, 18);
        part.Window(Rectangle(300, -1, 320, 201));
        part.Window(Rectangle(50, 50, 150, 150));
        part.Hole(350, 100, 10, 8);
        Run(part, target);
        EXPECT_EQ(Count(FirstSide(), "OT_"), 2U);
        EXPECT_EQ(CountBoth("RT_"), 1U);
        EXPECT_EQ(CountBoth("VD_"), 1U);
        double area = 0;
        for (const Drawn& outline : OnLayers(FirstSide().value_or(std::vector<Drawn>{}), "OT_")) {
            EXPECT_EQ(outline.points.size(), 4U);
            area += std::abs((outline.points[2].x - outline.points[0].x) *
                             (outline.points[2].y - outline.points[0].y));
        }
        EXPECT_NEAR(area, 300 * 200 + 80 * 200, 1e-3);
        part.Solid().Delete();
    }
}

TEST_F(LumpsAndSteps, APocketWithinAPocketIsCutOnce) {
    for (const Target target : {Target::C2C, Target::RCIM}) {
        MadePart part = Made();
        part.Board(600, 400, 18);
        part.Pocket(Rectangle(100, 100, 300, 300), 12);
        part.Pocket(Rounded(150, 150, 250, 250, 20), 6);
        part.Hole(450, 200, 80, 6);
        part.Hole(450, 200, 50, 12);
        Run(part, target);
        EXPECT_EQ(CountBoth("PKC_") + CountBoth("RT_"), 2U);
        EXPECT_EQ(CountBoth("PKS_"), 2U);
        EXPECT_EQ(Faults(part.Solid(), 0, {0, {"PKC_", "RT_", "PKS_"}}), std::vector<std::string>{});
        part.Solid().Delete();
    }
}

}  // namespace
}  // namespace brenvik
