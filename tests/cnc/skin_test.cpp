// Cuts right through that a negative share of the spoil board leaves a skin under: on the first side alone.
#include "cnc/part/target_traits.h"
#include "cnc/recognition_fixture.h"

namespace brenvik {
namespace {

class Skin : public WholePartTest, public ::testing::WithParamInterface<Target> {};

TEST_P(Skin, CutsThatLeaveASkinAreNotRepeatedOnTheSecondSide) {
    Set("BiesseWorksSpoil", "-0.5");
    MadePart part = Made();
    part.Board(400, 250, 18);
    part.Window({{60, 100, 1}, {120, 100, 1}});
    part.Window(Rectangle(200, 40, 260, 90));
    part.Pocket(Rectangle(150, -1, 170, 251), 10);
    part.PocketBelow(Rectangle(300, -1, 320, 251), 8);
    PutDown(part);
    RunAll(GetParam());
    EXPECT_EQ(LastRunReport().unexplained, std::vector<std::string>{});
    const std::optional<std::vector<Drawn>> second = SecondSide();
    ASSERT_TRUE(second);
    int paths = 0;
    for (const Drawn& drawn : *second)
        if (drawn.kind == "AcDbCircle" || drawn.kind == "AcDbPolyline") ++paths;
    // The outline and the dado.
    EXPECT_EQ(paths, 2);
}

INSTANTIATE_TEST_SUITE_P(Targets, Skin, ::testing::Values(Target::C2C, Target::ABC, Target::WOP5),
                         [](const auto& one) { return std::string(TraitsOf(one.param).name); });

}  // namespace
}  // namespace brenvik
