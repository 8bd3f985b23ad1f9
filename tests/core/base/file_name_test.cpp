// Names on their way into files: what becomes a low line, and what gives way when a name is too long.
#include "base/file_name.h"

#include <gtest/gtest.h>

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

TEST(FileNames, HaveALowLineForWhatAFileCannotHold) {
    const struct {
        const char *text, *name;
    } cases[] = {
        {"Side", "Side"},
        {"", ""},
        {"L/R", "L_R"},
        {"a\\b:c*d?e\"f<g>h|i", "a_b_c_d_e_f_g_h_i"},
        {"a\tb\r\nc\x01", "a_b__c_"},
        {"T\xC3\xBCr 3,5 & 4 (left).", "T\xC3\xBCr 3,5 & 4 (left)."},
    };
    for (const auto& [text, name] : cases) EXPECT_EQ(FileNameText(text), name);
}

TEST(FileNames, LoseOnlyTheCharactersThatAreRefused) {
    EXPECT_EQ(WithoutCharacters(",=", "a,b=c/d\n"), "a_b_c/d_");
    EXPECT_EQ(WithoutCharacters("", "a,b"), "a,b");
}

TEST(FileNames, FitByTheLongestTextGivingWay) {
    const struct {
        Texts texts;
        std::size_t room;
        Texts fitting;
    } cases[] = {
        {{"abc", "de"}, 5, {"abc", "de"}},    {{"abcdef", "gh"}, 5, {"abc", "gh"}},
        {{"abc", "defghi"}, 4, {"ab", "de"}}, {{"abc", "def"}, 5, {"ab", "def"}},
        {{"abc", "de"}, 0, {"", ""}},         {{}, 0, {}},
    };
    for (const auto& [texts, room, fitting] : cases) {
        Texts cut = texts;
        MakeFit(cut, room);
        EXPECT_EQ(cut, fitting);
    }
}

TEST(FileNames, AreCutBetweenCharacters) {
    Texts texts{"\xC3\xBC\xC3\xBC\xC3\xBC"};
    MakeFit(texts, 5);
    EXPECT_EQ(texts, Texts{"\xC3\xBC\xC3\xBC"});
}

}  // namespace
}  // namespace brenvik
