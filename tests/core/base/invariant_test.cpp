// A broken invariant ends the program and tells the place, in every build type.
#include "base/invariant.h"

#include <gtest/gtest.h>

#include <string>

namespace brenvik {
namespace {

TEST(Invariant, PassesWhenTheConditionHolds) {
    Invariant(1 + 1 == 2, "sums");
    SUCCEED();
}

TEST(InvariantDeathTest, StopsTheProgramWithFileLineAndText) {
    const std::string place =
        "invariant_test\\.cpp:" + std::to_string(__LINE__ + 1) + ": broken invariant in ";
    EXPECT_DEATH(Invariant(false, "the label is 1 to 3"), place + ".*: the label is 1 to 3");
}

TEST(InvariantDeathTest, ABranchThatIsNeverTakenTellsItsPlaceToo) {
    EXPECT_DEATH(InvariantBroken("a label outside 1 to 3"),
                 "invariant_test\\.cpp:[0-9]+: .*: a label outside");
}

}  // namespace
}  // namespace brenvik
