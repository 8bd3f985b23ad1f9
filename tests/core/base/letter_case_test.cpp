// Case of Latin letters in UTF-8, with everything else left alone.
#include "base/letter_case.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "base/utf8.h"

namespace brenvik {
namespace {

TEST(LetterCase, FoldsLatinLetters) {
    const struct {
        const char* lower;
        const char* upper;
    } pairs[] = {
        {"", ""},
        {"abcxyz", "ABCXYZ"},
        {"red oak 19.05", "RED OAK 19.05"},
        {"[`{|}~@^_", nullptr},
        {"t\u00FCrseite", "T\u00DCRSEITE"},
        {"\u00E0\u00E5\u00E6\u00E7\u00F0\u00F1\u00F6\u00F8\u00FE",
         "\u00C0\u00C5\u00C6\u00C7\u00D0\u00D1\u00D6\u00D8\u00DE"},
        {"\u00FF", "\u0178"},
        {"\u0101\u010D\u0119\u0142\u0148\u014B\u0151\u0153\u0161\u0171\u0177\u017C\u017E",
         "\u0100\u010C\u0118\u0141\u0147\u014A\u0150\u0152\u0160\u0170\u0176\u017B\u017D"},
        {"\u0133\u0137\u013A", "\u0132\u0136\u0139"},
        {"\u0219\u021B\u01CE\u01A1\u01B0", "\u0218\u021A\u01CD\u01A0\u01AF"},
        {"\u0253\u0254\u0256\u01C6\u0180", "\u0181\u0186\u0189\u01C4\u0243"},
        {"\u2C65\u2C66", "\u023A\u023E"},  // here the forms differ in length
        {"\u1E01\u1E93\u1EA1\u1EC7\u1EF9", "\u1E00\u1E92\u1EA0\u1EC6\u1EF8"},
    };
    for (const auto& pair : pairs) {
        if (!pair.upper) {
            EXPECT_EQ(FoldLower(pair.lower), pair.lower);
            EXPECT_EQ(FoldUpper(pair.lower), pair.lower);
            continue;
        }
        EXPECT_EQ(FoldLower(pair.upper), pair.lower);
        EXPECT_EQ(FoldUpper(pair.lower), pair.upper);
        EXPECT_EQ(FoldLower(pair.lower), pair.lower);
        EXPECT_EQ(FoldUpper(pair.upper), pair.upper);
        EXPECT_TRUE(EqualsIgnoreCase(pair.lower, pair.upper)) << pair.lower;
    }
}

TEST(LetterCase, LeavesEverythingElse) {
    for (const char* text :
         {"\u00DF", "\u00D7\u00F7", "\u00B5\u00AA\u00BA", "\u0130\u0131", "\u0138\u0149\u017F", "\u01C5",
          "\u0391\u03B1", "\u0416\u0436", "\u4E2D\u6587", "\U0001F6AA", "\U00010400", "\u2160\u24B6"}) {
        EXPECT_EQ(FoldLower(text), text);
        EXPECT_EQ(FoldUpper(text), text);
    }
}

TEST(LetterCase, KeepsBytesThatAreNoUtf8) {
    const struct {
        const char* text;
        const char* upper;
    } cases[] = {
        {"t\xFCr", "T\xFCR"},  // Latin-1
        {"a\xC3", "A\xC3"},    // cut at the end
        {"\xC3"
         "a",
         "\xC3"
         "A"},  // cut in the middle
        {"\xC1\xA1"
         "a",
         "\xC1\xA1"
         "A"},  // overlong
        {"\xED\xA0\x80"
         "a",
         "\xED\xA0\x80"
         "A"},
        {"\xF5\x80\x80\x80"
         "a",
         "\xF5\x80\x80\x80"
         "A"},
        {"\x80\xBF", "\x80\xBF"},
    };
    for (const auto& c : cases) EXPECT_EQ(FoldUpper(c.text), c.upper);
}

TEST(LetterCase, HandlesAZeroByte) {
    const std::string text("a\0b", 3);
    EXPECT_EQ(FoldUpper(text), std::string("A\0B", 3));
    EXPECT_FALSE(EqualsIgnoreCase(text, "a"));
}

TEST(LetterCase, EveryLetterOfTheLatinBlocksGoesThereAndBack) {
    int letters = 0;
    for (char32_t codePoint = 0; codePoint <= 0x2FFF; ++codePoint) {
        std::string text;
        AppendUtf8(text, codePoint);
        const std::string lower = FoldLower(text);
        const std::string upper = FoldUpper(text);
        EXPECT_TRUE(lower == text || upper == text) << std::hex << static_cast<unsigned>(codePoint);
        if (lower != text) {
            ++letters;
            EXPECT_EQ(FoldUpper(lower), text) << std::hex << static_cast<unsigned>(codePoint);
        }
        if (upper != text) {
            EXPECT_EQ(FoldLower(upper), text) << std::hex << static_cast<unsigned>(codePoint);
        }
    }
    EXPECT_EQ(letters, 344);
}

TEST(LetterCase, FoldingTwiceIsFoldingOnceWhateverTheBytes) {
    std::mt19937 random(9);
    for (int i = 0; i < 20000; ++i) {
        std::string text(random() % 8, ' ');
        for (char& c : text) c = static_cast<char>(random() % 3 ? 0xC3 + random() % 4 : random() % 256);
        const std::string lower = FoldLower(text);
        ASSERT_EQ(FoldLower(lower), lower);
        ASSERT_EQ(FoldUpper(FoldUpper(text)), FoldUpper(text));
        ASSERT_TRUE(EqualsIgnoreCase(text, lower));
    }
}

TEST(EqualsIgnoreCase, TellsTextsApart) {
    EXPECT_TRUE(EqualsIgnoreCase("", ""));
    EXPECT_TRUE(EqualsIgnoreCase("Part Name", "PART name"));
    EXPECT_FALSE(EqualsIgnoreCase("Part Name", "PartName"));
    EXPECT_FALSE(EqualsIgnoreCase("a", ""));
    EXPECT_FALSE(EqualsIgnoreCase("a", "ab"));
    EXPECT_FALSE(EqualsIgnoreCase("@", "`"));
    EXPECT_TRUE(EqualsIgnoreCase("T\u00DCR", "t\u00FCr"));
    EXPECT_FALSE(EqualsIgnoreCase("T\u00DCR", "tur"));
    EXPECT_FALSE(EqualsIgnoreCase("\u00DF", "ss"));
}

TEST(EqualsIgnoreCase, GoesOnBehindLettersAboveAscii) {
    EXPECT_TRUE(EqualsIgnoreCase("T\u00DCR Links", "t\u00FCr LINKS"));
    EXPECT_FALSE(EqualsIgnoreCase("T\u00DCR Links", "t\u00FCr LINK"));
    EXPECT_FALSE(EqualsIgnoreCase("T\u00DCR 1", "t\u00FCr 2"));
}

TEST(EqualsIgnoreCase, IsEqualityOfTheFoldedTextsWhateverTheBytes) {
    std::mt19937 random(7);
    constexpr std::string_view bytes = "aAbB@`\xC3\x9C\xBC\xC7\xE1\xBA\x80";
    const auto text = [&] {
        std::string made(random() % 4, ' ');
        for (char& c : made) c = bytes[random() % bytes.size()];
        return made;
    };
    for (int i = 0; i < 50000; ++i) {
        const std::string a = text();
        const std::string b = text();
        ASSERT_EQ(EqualsIgnoreCase(a, b), FoldLower(a) == FoldLower(b)) << a << " " << b;
    }
}

TEST(StartsWithIgnoreCase, LooksAtTheHead) {
    EXPECT_TRUE(StartsWithIgnoreCase("Material=Oak", "material"));
    EXPECT_TRUE(StartsWithIgnoreCase("\u00DCber", "\u00FC"));
    EXPECT_TRUE(StartsWithIgnoreCase("x", ""));
    EXPECT_FALSE(StartsWithIgnoreCase("Mat", "material"));
    EXPECT_FALSE(StartsWithIgnoreCase(" Material", "material"));
}

TEST(LessIgnoreCase, OrdersAsASetNeedsIt) {
    const std::set<std::string, LessIgnoreCase> layers = {"Border", "BORDER", "arcPV", "T\u00DCR",
                                                          "t\u00FCr"};
    EXPECT_EQ(layers.size(), 3U);
    EXPECT_TRUE(layers.contains(std::string_view("ARCpv")));
    EXPECT_FALSE(LessIgnoreCase{}("a", "A"));
    EXPECT_TRUE(LessIgnoreCase{}("A", "b"));
    EXPECT_FALSE(LessIgnoreCase{}("b", "A"));
}

}  // namespace
}  // namespace brenvik
