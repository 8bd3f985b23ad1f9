// A broken invariant ends the program and tells the place, in every build type.
#include "base/invariant.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

TEST(Invariant, PassesWhenTheConditionHolds) {
    Invariant(1 + 1 == 2, "sums");
    SUCCEED();
}

TEST(InvariantDeathTest, StopsTheProgramWithFileLineAndText) {
    EXPECT_DEATH(Invariant(false, "the label is 1 to 3"),
                 "invariant_test\\.cpp:[0-9]+: broken invariant in .*: the label is 1 to 3");
}

}  // namespace
}  // namespace brenvik
