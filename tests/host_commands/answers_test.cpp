// What typed answers mean.
#include "drafting_host/command/session/answers.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace brenvik {
namespace {

struct LengthCase {
    const char* text;
    double value;

    friend void PrintTo(const LengthCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.text);
    }
};

class LengthText_ : public ::testing::TestWithParam<LengthCase> {};

TEST_P(LengthText_, IsReadAsShopsWriteIt) {
    const auto length = ParseLength(GetParam().text);
    ASSERT_TRUE(length) << GetParam().text;
    EXPECT_EQ(*length, GetParam().value) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Lengths, LengthText_,
                         ::testing::Values(LengthCase{"12.5", 12.5}, LengthCase{"-3e2", -300},
                                           LengthCase{"+4", 4}, LengthCase{".75", 0.75},
                                           LengthCase{"3/4", 0.75}, LengthCase{"1-1/2", 1.5},
                                           LengthCase{"-1-1/2", -1.5}, LengthCase{"3/4\"", 0.75},
                                           LengthCase{"2'", 24}, LengthCase{"2'6", 30},
                                           LengthCase{"2'-6-1/2\"", 30.5}, LengthCase{"1.5'", 18},
                                           LengthCase{"0", 0}, LengthCase{"-0", 0}));

class WrongLength : public ::testing::TestWithParam<const char*> {};

TEST_P(WrongLength, IsNone) { EXPECT_FALSE(ParseLength(GetParam())) << GetParam(); }

INSTANTIATE_TEST_SUITE_P(Lengths, WrongLength,
                         ::testing::Values("", "abc", "1/0", "1,5", "1-", "--1", "1e400", "1e11", "nan",
                                           "inf", "-", "+", "'", "1-2", "1/2/3", "2'x", "5\"'", "1\"\"",
                                           "2'--6"));

TEST(ParseAngle, GivesExactQuarterTurnsInRadians) {
    EXPECT_EQ(ParseAngle("90"), std::numbers::pi / 2);
    EXPECT_EQ(ParseAngle("-180"), -std::numbers::pi);
    EXPECT_EQ(ParseAngle("3690"), std::numbers::pi / 2);
    EXPECT_EQ(ParseAngle("x"), std::nullopt);
}

TEST(ParseWhole, TakesWholeNumbersOf32BitsAlone) {
    EXPECT_EQ(ParseWhole("12"), 12);
    EXPECT_EQ(ParseWhole("-3"), -3);
    EXPECT_EQ(ParseWhole("1.5"), std::nullopt);
    EXPECT_EQ(ParseWhole("99999999999"), std::nullopt);
    EXPECT_EQ(ParseWhole(""), std::nullopt);
}

TEST(ParsePoint, TakesTwoOrThreeCoordinates) {
    const auto flat = ParsePoint("1,2");
    ASSERT_TRUE(flat);
    EXPECT_TRUE(flat->flat);
    EXPECT_EQ(flat->value, (Point3{1, 2, 0}));
    const auto full = ParsePoint("1/2,-2,3.25");
    ASSERT_TRUE(full);
    EXPECT_FALSE(full->flat);
    EXPECT_EQ(full->value, (Point3{0.5, -2, 3.25}));
}

TEST(ParsePoint, KnowsRelativeAndWorldCoordinates) {
    EXPECT_TRUE(ParsePoint("@1,2,3")->relative);
    EXPECT_TRUE(ParsePoint("*1,2,3")->world);
    EXPECT_TRUE(ParsePoint("@*1,2,3")->world);
    EXPECT_EQ(ParsePoint("@")->value, Point3{});
}

TEST(ParsePoint, KnowsPolarCoordinates) {
    EXPECT_EQ(ParsePoint("10<90")->value, (Point3{0, 10, 0}));
    EXPECT_EQ(ParsePoint("@10<180,5")->value, (Point3{-10, 0, 5}));
}

TEST(ParsePoint, TakesASingleZeroAsTheOrigin) {
    EXPECT_EQ(ParsePoint("0")->value, Point3{});
    EXPECT_FALSE(ParsePoint("5"));
    EXPECT_FALSE(ParsePoint("@5"));
}

TEST(ParsePoint, RefusesWhatIsNoPoint) {
    for (const char* text :
         {"", "1,2,3,4", ",", "1,", ",1", "a,b", "1<", "<5", "1<2<3", "*", "1,2,", "1e999,0"}) {
        EXPECT_FALSE(ParsePoint(text)) << text;
    }
}

TEST(MatchKeyword, TakesCapitalsOrABeginningThatReachesThem) {
    EXPECT_EQ(MatchKeyword("Face Body eXit", "x"), "eXit");
    EXPECT_EQ(MatchKeyword("Face Body eXit", "EXIT"), "eXit");
    EXPECT_EQ(MatchKeyword("Face Body eXit", "e"), "");
    EXPECT_EQ(MatchKeyword("Face Body eXit", "_face"), "Face");
    EXPECT_EQ(MatchKeyword("Bottom BAck", "b"), "Bottom");
    EXPECT_EQ(MatchKeyword("Bottom BAck", "ba"), "BAck");
    EXPECT_EQ(MatchKeyword("3points XY", "3"), "3points");
    EXPECT_EQ(MatchKeyword("ON OFF", "o"), "");
    EXPECT_EQ(MatchKeyword("? Make", "?"), "?");
    EXPECT_EQ(MatchKeyword("Make", "makes"), "");
    EXPECT_EQ(MatchKeyword("Make", ""), "");
}

}  // namespace
}  // namespace brenvik
