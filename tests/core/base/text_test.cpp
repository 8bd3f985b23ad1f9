// Blanks, splitting, replacing and character positions.
#include "base/text.h"

#include <gtest/gtest.h>

#include <random>

namespace brenvik {
namespace {

using Pieces = std::vector<std::string>;

TEST(Trim, TakesBlanksOnly) {
    const struct {
        const char* text;
        const char* both;
        const char* right;
    } cases[] = {{"", "", ""},
                 {" ", "", ""},
                 {"   ", "", ""},
                 {"a", "a", "a"},
                 {"  a b  ", "a b", "  a b"},
                 {"\ta\t", "\ta\t", "\ta\t"},
                 {" \ta\n ", "\ta\n", " \ta\n"},
                 {"\xC2\xA0"
                  "a ",
                  "\xC2\xA0"
                  "a",
                  "\xC2\xA0"
                  "a"}};
    for (const auto& c : cases) {
        EXPECT_EQ(Trim(c.text), c.both);
        EXPECT_EQ(TrimRight(c.text), c.right);
    }
}

TEST(IsBlank, HoldsForBlanksAndNothing) {
    EXPECT_TRUE(IsBlank(""));
    EXPECT_TRUE(IsBlank("  "));
    EXPECT_FALSE(IsBlank(" x"));
    EXPECT_FALSE(IsBlank("\t"));
}

TEST(Split, GivesThePiecesBetweenTheSeparators) {
    EXPECT_EQ(Split("", ','), Pieces{});
    EXPECT_EQ(Split("a", ','), (Pieces{"a"}));
    EXPECT_EQ(Split(",", ','), (Pieces{"", ""}));
    EXPECT_EQ(Split("a,b,c", ','), (Pieces{"a", "b", "c"}));
    EXPECT_EQ(Split("a,,b", ','), (Pieces{"a", "", "b"}));
    EXPECT_EQ(Split("a,", ','), (Pieces{"a", ""}));
    EXPECT_EQ(Split("bv_partName, bv_material", ','), (Pieces{"bv_partName", " bv_material"}));
}

TEST(Split, IsUndoneByJoin) {
    std::mt19937 random(3);
    for (int i = 0; i < 5000; ++i) {
        std::string text(random() % 12, ' ');
        for (char& c : text) c = "a,b "[random() % 4];
        ASSERT_EQ(Join(Split(text, ','), ","), text);
    }
}

TEST(Join, PutsTheSeparatorBetween) {
    EXPECT_EQ(Join({}, ", "), "");
    EXPECT_EQ(Join({"a"}, ", "), "a");
    EXPECT_EQ(Join({"a", "", "b"}, ", "), "a, , b");
}

TEST(SplitAtFirst, CutsAtTheFirstOnly) {
    const auto cut = SplitAtFirst("Notes=a=b", '=');
    EXPECT_EQ(cut.head, "Notes");
    EXPECT_EQ(cut.tail, "a=b");
    EXPECT_TRUE(cut.found);
    const auto none = SplitAtFirst("[Doors]", '=');
    EXPECT_EQ(none.head, "[Doors]");
    EXPECT_EQ(none.tail, "");
    EXPECT_FALSE(none.found);
    const auto atEnd = SplitAtFirst("Qty=", '=');
    EXPECT_EQ(atEnd.head, "Qty");
    EXPECT_EQ(atEnd.tail, "");
    EXPECT_TRUE(atEnd.found);
    EXPECT_FALSE(SplitAtFirst("", '=').found);
}

TEST(ReplaceAll, ReplacesFromLeftToRightAndDoesNotLookBack) {
    EXPECT_EQ(ReplaceAll("1.5.2", ".", "p"), "1p5p2");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "a"), "aa");
    EXPECT_EQ(ReplaceAll("a", "a", "aa"), "aa");
    EXPECT_EQ(ReplaceAll("PKC_Z", "PKC", "RT"), "RT_Z");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("", "a", "x"), "");
    EXPECT_EQ(ReplaceAll("a|b|", "|", ""), "ab");
}

TEST(Positions, CountCharactersNotBytes) {
    const std::string door = "T\xC3\xBCrseite";  // Türseite
    EXPECT_EQ(CharacterCount(door), 8U);
    EXPECT_EQ(Left(door, 2), "T\xC3\xBC");
    EXPECT_EQ(Left(door, 0), "");
    EXPECT_EQ(Left(door, 99), door);
    EXPECT_EQ(Right(door, 6), "rseite");
    EXPECT_EQ(Right(door, 7), "\xC3\xBCrseite");
    EXPECT_EQ(Right(door, 0), "");
    EXPECT_EQ(Right(door, 99), door);
    EXPECT_EQ(Mid(door, 1), door);
    EXPECT_EQ(Mid(door, 2, 1), "\xC3\xBC");
    EXPECT_EQ(Mid(door, 3, 3), "rse");
    EXPECT_EQ(Mid(door, 3, 99), "rseite");
    EXPECT_EQ(Mid(door, 9), "");
    EXPECT_EQ(Mid(door, 99, 2), "");
    EXPECT_EQ(DropRight(door, 6), "T\xC3\xBC");
    EXPECT_EQ(DropRight(door, 99), "");
    EXPECT_EQ(DropRight("Length  [Asc]", 7), "Length");
}

TEST(Positions, AByteOutsideUtf8IsACharacter) {
    const std::string damaged = "T\xFCr\xC3";  // Latin-1, and a cut sequence at the end
    EXPECT_EQ(CharacterCount(damaged), 4U);
    EXPECT_EQ(Mid(damaged, 2, 1), "\xFC");
    EXPECT_EQ(Right(damaged, 1), "\xC3");
}

TEST(Positions, LeftAndMidMakeUpTheWhole) {
    std::mt19937 random(5);
    for (int i = 0; i < 5000; ++i) {
        std::string text(random() % 10, ' ');
        for (char& c : text) c = static_cast<char>(random() % 256);
        const std::size_t count = random() % 6;
        ASSERT_EQ(Left(text, count) + Mid(text, count + 1), text);
        ASSERT_EQ(DropRight(text, count) + Right(text, count), text);
    }
}

TEST(PositionsDeathTest, CountFromOne) { EXPECT_DEATH(Mid("abc", 0), "count from 1"); }

}  // namespace
}  // namespace brenvik
