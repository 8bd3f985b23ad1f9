// The trial cut above and below a contour.
#include "cnc/part/open_top.h"

#include "cnc/round_bores.h"

namespace brenvik {
namespace {

class OpenTopTest : public RoundBoreTest {
  protected:
    RunState RunFor(const Bore& bore) {
        const Acad3DSolid& solid = BoardWith(bore);
        RunState run = RunOn(document);
        run.part.PartVolume = solid.Volume();
        return run;
    }
};

TEST_F(OpenTopTest, AFloorInTheOpenIsOpen) {
    RunState run = RunFor({0, 60});
    EXPECT_EQ(OpenToTop(run, Circle({100, 100, 10}, 60), 6), OpenTop::Open);
    EXPECT_EQ(OpenToUnderside(run, Circle({100, 100, 10}, 60), 6), OpenTop::Covered);
}

TEST_F(OpenTopTest, AFloorUnderMaterialIsCovered) {
    RunState run = RunFor({60, 0});
    EXPECT_EQ(OpenToTop(run, Circle({100, 100, 10}, 60), 6), OpenTop::Covered);
    EXPECT_EQ(OpenToUnderside(run, Circle({100, 100, 10}, 60), 6), OpenTop::Open);
}

TEST_F(OpenTopTest, AContourWiderThanTheOpeningIsCovered) {
    RunState run = RunFor({0, 60});
    EXPECT_EQ(OpenToTop(run, Circle({100, 100, 10}, 60.01), 6), OpenTop::Covered);
}

TEST_F(OpenTopTest, AContourThatLooksDownIsCutFromAboveAllTheSame) {
    RunState run = RunFor({0, 60});
    EXPECT_EQ(OpenToTop(run, Circle({100, 100, 10}, 60, layers::CircleHold, {0, 0, -1}), 6), OpenTop::Open);
}

TEST_F(OpenTopTest, AVolumeBelowThePartsIsAGrowth) {
    RunState run = RunFor({0, 60});
    run.part.PartVolume -= 1;
    EXPECT_EQ(OpenToTop(run, Circle({100, 100, 10}, 60), 6), OpenTop::Grown);
}

TEST_F(OpenTopTest, TheDrawingIsAsItWas) {
    RunState run = RunFor({60, 0});
    AcadCircle& circle = Circle({100, 100, 10}, 60);
    const std::size_t before = All<AcadEntity>(document).size();
    const double volume = LastSolid(document).Volume();
    OpenToTop(run, circle, 6);
    EXPECT_EQ(All<AcadEntity>(document).size(), before);
    EXPECT_EQ(LastSolid(document).Volume(), volume);
    EXPECT_EQ(circle.Layer(), layers::CircleHold);
}

TEST_F(OpenTopTest, AnOpenCurveIsAFailureAndLeavesNothingBehind) {
    RunState run = RunFor({0, 60});
    AcadLine& line = *document.ModelSpace().AddLine({0, 0, 10}, {50, 0, 10});
    const std::size_t before = All<AcadEntity>(document).size();
    EXPECT_THROW(OpenToTop(run, line, 6), Failure);
    EXPECT_EQ(All<AcadEntity>(document).size(), before);
}

}  // namespace
}  // namespace brenvik
