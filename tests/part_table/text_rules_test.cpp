// Comparing texts and Like patterns by themselves.
#include "part_table/text_rules.h"

#include <gtest/gtest.h>

#include <string>

#include "base/wildcard.h"

namespace brenvik::part_table {
namespace {

struct LikeCase {
    std::string text;
    std::string pattern;
    bool fits;

    friend void PrintTo(const LikeCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.text) << " " << testing::PrintToString(each.pattern);
    }
};

class LikePattern : public testing::TestWithParam<LikeCase> {};

TEST_P(LikePattern, KnowsPercentAndUnderscore) {
    EXPECT_EQ(MatchesWildcards(GetParam().text, GetParam().pattern, LikeWildcards), GetParam().fits)
        << GetParam().text << " like " << GetParam().pattern;
}

INSTANTIATE_TEST_SUITE_P(
    Table, LikePattern,
    testing::Values(LikeCase{"Side Left", "Side%", true}, LikeCase{"side left", "SIDE%", true},
                    LikeCase{"Left Side", "Side%", false}, LikeCase{"Left Side", "%Side", true},
                    LikeCase{"Left Side 2", "%side%", true}, LikeCase{"", "%", true}, LikeCase{"", "", true},
                    LikeCase{"a", "", false}, LikeCase{"", "_", false}, LikeCase{"Side", "Sid_", true},
                    LikeCase{"Side", "S_d_%", true}, LikeCase{"Side", "Side_", false},
                    LikeCase{"T\xC3\xBCrseite", "t\xC3\x9CR%", true}, LikeCase{"\xC3\xBC", "_", true},
                    LikeCase{"\xC3\xBC", "__", false}, LikeCase{"a*b", "a*%", true},
                    LikeCase{"axb", "a*%", false}, LikeCase{"abab", "%ab", true},
                    LikeCase{"aab", "%ab", true}, LikeCase{"100%", "100%", true},
                    LikeCase{"mississippi", "%iss%ip%", true}, LikeCase{"mississippi", "%iss%ix%", false}));

TEST(LikePatternTime, GrowsWithTheProductOfTheLengthsAtWorst) {
    const std::string text(2000, 'a');
    std::string pattern;
    for (int i = 0; i < 500; ++i) pattern += "%a";
    EXPECT_FALSE(MatchesWildcards(text, pattern + "b", LikeWildcards));
    EXPECT_TRUE(MatchesWildcards(text, pattern, LikeWildcards));
}

struct Order {
    const char* a;
    const char* b;
    int sign;

    friend void PrintTo(const Order& each, std::ostream* out) {
        *out << testing::PrintToString(each.a) << " " << testing::PrintToString(each.b);
    }
};

class TextOrder : public testing::TestWithParam<Order> {};

TEST_P(TextOrder, PassesOverTheCaseOfLatinLetters) {
    const int order = CompareWithoutCase(GetParam().a, GetParam().b);
    EXPECT_EQ((order > 0) - (order < 0), GetParam().sign);
    const int back = CompareWithoutCase(GetParam().b, GetParam().a);
    EXPECT_EQ((back > 0) - (back < 0), -GetParam().sign);
}

INSTANTIATE_TEST_SUITE_P(Table, TextOrder,
                         testing::Values(Order{"", "", 0}, Order{"Oak", "OAK", 0}, Order{"", "a", -1},
                                         Order{"oak", "Oak 2", -1}, Order{"Birch", "ash", 1},
                                         Order{"T\xC3\xBCr", "T\xC3\x9CR", 0}, Order{"Tur", "T\xC3\xBCr", -1},
                                         Order{"a ", "a", 1}, Order{"\xFF", "\xFE", 1}));

}  // namespace
}  // namespace brenvik::part_table
