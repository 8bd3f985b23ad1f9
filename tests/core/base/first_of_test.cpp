// Lists in messages that are cut short.
#include "base/first_of.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

TEST(FirstOf, CountsWhatItDoesNotShow) {
    EXPECT_EQ(FirstOf({}, 2), "");
    EXPECT_EQ(FirstOf({"a", "b"}, 2), "a, b");
    EXPECT_EQ(FirstOf({"a", "b", "c"}, 2), "a, b and 1 more");
    EXPECT_EQ(FirstOf({"a", "b", "c", "d"}, 1, "; ", "; and "), "a; and 3 more");
}

}  // namespace
}  // namespace brenvik
