// Sizes and letters without a drawing: which size each letter names, and rounding that turns don't upset.
#include <gtest/gtest.h>

#include "cnc/laying/orientation.h"

namespace brenvik {
namespace {

struct LetterCase {
    const char *letters, *length, *width, *thickness;
};

TEST(SizesByLetters, TheFirstLetterNamesTheLargestTheLastTheSmallest) {
    const LetterCase cases[] = {
        {"LWT", "600", "300", "18"}, {"LTW", "600", "18", "300"}, {"WLT", "300", "600", "18"},
        {"TLW", "300", "18", "600"}, {"WTL", "18", "600", "300"}, {"TWL", "18", "300", "600"},
        {"lwt", "600", "300", "18"}, {"XWT", "0", "300", "18"},   {"", "0", "0", "0"},
        {"L", "18", "0", "0"},       {"LWTX", "600", "300", "0"},
    };
    for (const LetterCase& c : cases) {
        const mAutoCAD::LabelledSizes sizes = SizesByLetters(c.letters, {18, 600, 300});
        EXPECT_EQ(sizes.length, c.length) << c.letters;
        EXPECT_EQ(sizes.width, c.width) << c.letters;
        EXPECT_EQ(sizes.thickness, c.thickness) << c.letters;
    }
}

TEST(SizesByLetters, TheMiddleSizeIsWhatTheOthersLeaveOfTheSum) {
    const mAutoCAD::LabelledSizes sizes = SizesByLetters("LWT", {0.1, 0.70866, 0.3});
    EXPECT_EQ(sizes.length, "0.70866");
    EXPECT_EQ(sizes.width, "0.3");
    EXPECT_EQ(sizes.thickness, "0.1");
}

TEST(SizesByLetters, EqualSizesAreAllNamed) {
    const mAutoCAD::LabelledSizes sizes = SizesByLetters("LWT", {100, 100, 100});
    EXPECT_EQ(sizes.length, "100");
    EXPECT_EQ(sizes.width, "100");
    EXPECT_EQ(sizes.thickness, "100");
}

TEST(ExtentsOf, AreRoundedToFiveDecimals) {
    const PartExtents extents = ExtentsOf({{1, 2, 3}, {1.123456789, 602, 21.70866}});
    EXPECT_EQ(extents.x, 0.12346);
    EXPECT_EQ(extents.y, 600);
    EXPECT_EQ(extents.z, 18.70866);
}

TEST(ExtentsOf, ASizeHalfWayBetweenTwoRoundsAlikeHoweverThePartLies) {
    const double size = 47.0 / 64 * 25.4;  // 18.653125
    const double wanted = ExtentsOf({{0, 0, 0}, {size, 0, 0}}).x;
    for (const double noise : {-4e-12, -1e-13, 1e-13, 4e-12})
        EXPECT_EQ(ExtentsOf({{0, 0, 0}, {size + noise, 0, 0}}).x, wanted) << noise;
}

TEST(Settled, RoundsWhatHoldsNoNoiseAsUsual) {
    EXPECT_EQ(Settled(2.5, 0), 2);
    EXPECT_EQ(Settled(0.1234564, 6), 0.123456);
    EXPECT_EQ(Settled(-1e-13, 6), 0);
}

}  // namespace
}  // namespace brenvik
