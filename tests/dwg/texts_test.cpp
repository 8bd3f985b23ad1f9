// Texts of binary drawings, by the page that the file names.
#include <gtest/gtest.h>

#include <utility>

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

TEST(DwgTexts, ATextThatEndsAtAZeroWithinIsCounted) {
    const Texts texts(Release::R2000, 30);
    // The length in a byte behind the bits 01, then the characters.
    const std::string cut("\x40\xD8\x40\x18\x80", 5), whole("\x40\xD8\x58\x80\x00", 5);
    BitReader whole3(whole), cut3(cut);
    EXPECT_EQ(texts.Read(whole3), "ab");
    EXPECT_EQ(texts.Cut(), 0U) << "a closing zero is no part of a text";
    EXPECT_EQ(texts.Read(cut3), "a");
    EXPECT_EQ(texts.Cut(), 1U);
    EXPECT_EQ(texts.FirstCut(), "a");
}

TEST(DwgTexts, ATextWithAControlCharacterIsCounted) {
    const Texts texts(Release::R2000, 30);
    texts.FromPage("a\tb\r\nc");
    EXPECT_EQ(texts.Controlled(), 0U);
    texts.FromPage("a\x07");
    texts.FromPage("a\x7F");
    EXPECT_EQ(texts.Controlled(), 2U);
    EXPECT_EQ(texts.FirstControlled(), "a\x07");
}

TEST(DwgTexts, ATextThatEndsOtherwiseThanNearlyAllIsCounted) {
    const std::string ended("\x40\xD8\x58\x80\x00", 5), unended("\x40\x98\x58\x80", 4);
    for (const auto& [usual, other] : {std::pair(ended, unended), std::pair(unended, ended)}) {
        const Texts texts(Release::R2000, 30);
        const auto read = [&texts](const std::string& bytes) {
            BitReader reader(bytes);
            return texts.Read(reader);
        };
        for (int i = 0; i < 100; ++i) read(usual);
        EXPECT_EQ(texts.OddlyEnded(), 0U);
        EXPECT_EQ(read(other), "ab");
        EXPECT_EQ(texts.OddlyEnded(), 1U);
        EXPECT_EQ(texts.FirstOddlyEnded(), "ab");
        for (int i = 0; i < 40; ++i) read(other);
        EXPECT_EQ(texts.OddlyEnded(), 0U) << "both are usual there";
    }
}

}  // namespace
}  // namespace brenvik::dwg
