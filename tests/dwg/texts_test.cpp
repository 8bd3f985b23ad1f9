// Texts of binary drawings, by the page that the file names.
#include <gtest/gtest.h>

#include "drafting_host/dwg/streams.h"

namespace brenvik::dwg {
namespace {

TEST(DwgTexts, CharactersOfTwoBytesMayEndInACaret) {
    const Texts japanese(Release::R2000, 38);
    EXPECT_EQ(japanese.FromPage("a^I\x8F\x5Ez"), "a^I\u620Ez") << "a caret stands for itself";
    EXPECT_EQ(japanese.Escaped(), 0U);
}

TEST(DwgTexts, JohabHasItsNumber) {
    EXPECT_EQ(Texts(Release::R14, 42).FromPage("\xCC\x65"), "\uD310");
    EXPECT_TRUE(Texts(Release::R14, 26).IsKnown());
}

TEST(DwgTexts, WhatCannotBeDecodedKeepsItsEscapeAndIsCounted) {
    const Texts chinese(Release::R2000, 39);
    EXPECT_EQ(chinese.FromPage("\xFF\xE5z"), "\\M+5FFE5z");
    chinese.FromPage("\\M+1FFFF");
    EXPECT_EQ(chinese.Escaped(), 2U);
    EXPECT_EQ(chinese.FirstEscaped(), "\\M+5FFE5z");
}

}  // namespace
}  // namespace brenvik::dwg
