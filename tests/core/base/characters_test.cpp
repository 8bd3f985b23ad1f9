// Characters told apart and texts cut and spelled by them, the same on every machine.
#include <gtest/gtest.h>

#include "base/ascii.h"
#include "base/byte_order_mark.h"
#include "base/hex.h"
#include "base/trimmed.h"

namespace brenvik {
namespace {

using namespace std::string_view_literals;

TEST(DigitsAlone, AreThoseOfAsciiAndOneAtLeast) {
    EXPECT_TRUE(IsDigitsAlone("0123456789"));
    for (const std::string_view text : {""sv, "-1"sv, "1 "sv, "1.5"sv, "\xEF\xBC\x91"sv, "\xB2"sv})
        EXPECT_FALSE(IsDigitsAlone(text)) << text;
}

TEST(AsciiLetters, EndWhereTheAlphabetDoes) {
    for (const char letter : "azAZ"sv) EXPECT_TRUE(IsAsciiLetter(letter)) << letter;
    for (const char other : "@[`{0_\xE4"sv) EXPECT_FALSE(IsAsciiLetter(other)) << other;
    EXPECT_EQ(LowerAscii('Z'), 'z');
    EXPECT_EQ(LowerAscii('['), '[');
}

TEST(Trimming, TakesBlanksAndLineEndsAtBothEnds) {
    EXPECT_EQ(Trimmed("\r\n\t 18 mm \t\n"), "18 mm");
    EXPECT_EQ(Trimmed(" \t\r\n"), "");
    EXPECT_EQ(Trimmed(""), "");
}

TEST(Trimming, TakesWhatCountsAsBlankAndNothingElse) {
    EXPECT_EQ(Trimmed(" \t18 ", " "), "\t18");
    EXPECT_EQ(Trimmed("18\n", " \t"), "18\n");
}

TEST(ByteOrderMarks, AreLeftOffOnce) {
    EXPECT_EQ(WithoutByteOrderMark("\xEF\xBB\xBF\xEF\xBB\xBF"
                                   "0"),
              "\xEF\xBB\xBF"
              "0");
    EXPECT_EQ(WithoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
}

TEST(HexDigitsOf, BytesAreTwoEach) {
    EXPECT_EQ(HexOf("\x00\x7F\xFE"sv), "007FFE");
    EXPECT_EQ(HexOf("\xFE", SmallHexDigits), "fe");
    EXPECT_EQ(HexOf(""), "");
}

TEST(HexDigitsOf, AValueAreItsLowest) {
    std::string text = "\\U+";
    AppendHex(text, 0x12034, 4);
    EXPECT_EQ(text, "\\U+2034");
    AppendHex(text, 0xFFFFFFFF, 8, SmallHexDigits);
    EXPECT_EQ(text, "\\U+2034ffffffff");
}

}  // namespace
}  // namespace brenvik
