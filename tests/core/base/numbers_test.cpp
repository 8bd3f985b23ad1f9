// Reading numbers out of text: the lenient rule, the strict rule, integers, singles, switches.
#include "base/numbers.h"

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <string>

#include "base/failure.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

TEST(LenientNumber, TakesTheNumberAtTheHeadElseZero) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"", 0},
        {" ", 0},
        {"0", 0},
        {"18", 18},
        {"  18", 18},
        {" \t 18", 18},
        {"18 ", 18},
        {"18mm", 18},
        {"18 mm", 18},
        {"18.5 x 600", 18.5},
        {"18 600", 18},
        {"+18", 18},
        {"-18", -18},
        {"- 18", 0},
        {"--18", 0},
        {".5", 0.5},
        {"-.5", -0.5},
        {"5.", 5},
        {".", 0},
        {"-", 0},
        {"+.", 0},
        {"1.2.3", 1.2},
        {"1,5", 1},
        {"1/8", 1},
        {"1e3", 1000},
        {"1E3", 1000},
        {"1d3", 1000},
        {"1D-2", 0.01},
        {"1e+2x", 100},
        {"5e", 5},
        {"5 each", 5},
        {"5each", 5},
        {"5e-", 5},
        {"5e+x", 5},
        {".e5", 0},
        {"e5", 0},
        {"x18", 0},
        {"Oak 18", 0},
        {"nan", 0},
        {"inf", 0},
        {"&H10", 0},
        {"0x10", 0},
        {"(18)", 0},
        {"$18", 0},
        {"\n18", 0},
        {"1e999", 0},
        {"-1e999", 0},
        {"1e-999", 0},
        {"00018.500", 18.5},
        {"1e-5", 0.00001},
    };
    for (const auto& c : cases) EXPECT_EQ(LenientNumber(c.text), c.value) << '"' << c.text << '"';
}

TEST(LenientNumber, StopsAtAZeroByteAndAtBytesOutsideAscii) {
    EXPECT_EQ(LenientNumber(std::string_view("18\0"
                                             "5",
                                             4)),
              18);
    EXPECT_EQ(LenientNumber("18\xB0"), 18);
    EXPECT_EQ(LenientNumber("\xC2\xA0"
                            "18"),
              0);
}

TEST(LenientNumber, ReadsNumbersOfAnyLength) {
    EXPECT_EQ(LenientNumber(std::string(400, '0') + "7"), 7);
    EXPECT_EQ(LenientNumber("0." + std::string(400, '0') + "7e401"), 7);
    EXPECT_EQ(LenientNumber("0." + std::string(400, '0') + "7"), 0);
    EXPECT_EQ(LenientNumber("1" + std::string(400, '0')), 0);
    EXPECT_EQ(LenientNumber("1" + std::string(400, '0') + "e-400"), 1);
    EXPECT_EQ(LenientNumber("0e99999999999999999999999"), 0);
    EXPECT_EQ(LenientNumber("1e99999999999999999999999"), 0);
    EXPECT_EQ(LenientNumber("1e-99999999999999999999999"), 0);
    EXPECT_EQ(LenientNumber("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(LenientNumber("1.7976931348623157e308"), std::numeric_limits<double>::max());
}

TEST(IsNumeric, HoldsWhenTheWholeTextIsANumber) {
    for (const char* text :
         {"0", "18", " 18", "18 ", "\t18\t", "-18", "+18", ".5", "5.", "1e3", "1D3", "-1.5E-3"})
        EXPECT_TRUE(IsNumeric(text)) << '"' << text << '"';
    for (const char* text :
         {"",      " ",   ".",   "-",    "18mm", "18 mm", "1 8", "1,5", "1,234", "1/8", "5e",
          "1e999", "nan", "inf", "0x10", "&H10", "--1",   "1-",  "(1)", "\n1",   "1\n"})
        EXPECT_FALSE(IsNumeric(text)) << '"' << text << '"';
}

TEST(StrictNumber, TakesBlanksAroundTheNumber) {
    EXPECT_EQ(StrictNumber(" 18.5 "), 18.5);
    EXPECT_EQ(StrictNumber("-1.5"), -1.5);
    EXPECT_EQ(StrictNumber("1E-05"), 0.00001);
}

TEST(StrictNumber, FailsWithTypeMismatchWhenTheTextIsNoNumber) {
    for (const char* text : {"", " ", "18mm", "1/8", "1,5", "x", "5e"})
        EXPECT_EQ(FailureOf([&] { StrictNumber(text); }).number(), 13) << '"' << text << '"';
}

TEST(StrictNumber, FailsWithOverflowBeyondADouble) {
    EXPECT_EQ(FailureOf([] { StrictNumber("1e309"); }).number(), 6);
    EXPECT_EQ(FailureOf([] { StrictNumber("-1e309"); }).number(), 6);
    EXPECT_EQ(StrictNumber("1e-400"), 0);
}

TEST(StrictNumber, NamesTheTextInTheDetail) {
    try {
        StrictNumber("18mm");
        FAIL() << "18mm was taken for a number";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.description(), "Type mismatch");
        EXPECT_EQ(failure.detail(), "\"18mm\" is not a number");
    }
}

TEST(StrictInteger, RoundsHalvesToEven) {
    const struct {
        const char* text;
        std::int32_t value;
    } cases[] = {{"0", 0},      {"1", 1},    {" 2 ", 2},   {"0.5", 0},   {"1.5", 2},
                 {"2.5", 2},    {"-0.5", 0}, {"-1.5", -2}, {"-2.5", -2}, {"2.4999999", 2},
                 {"1e3", 1000}, {"3.7", 4},  {"-3.2", -3}};
    for (const auto& c : cases) EXPECT_EQ(StrictInteger(c.text), c.value) << c.text;
}

TEST(StrictInteger, FailsOutOfRangeAndWhenNotNumeric) {
    EXPECT_EQ(StrictInteger("2147483647"), 2147483647);
    EXPECT_EQ(StrictInteger("2147483647.4"), 2147483647);
    EXPECT_EQ(StrictInteger("-2147483648"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(StrictInteger("-2147483648.5"), std::numeric_limits<std::int32_t>::min());
    for (const char* text : {"2147483648", "2147483647.5", "-2147483649", "1e300", "1e999"})
        EXPECT_EQ(FailureOf([&] { StrictInteger(text); }).number(), 6) << text;
    for (const char* text : {"", "one", "1 2"})
        EXPECT_EQ(FailureOf([&] { StrictInteger(text); }).number(), 13) << text;
}

TEST(ToInteger, FailsForInfinityAndForNoNumber) {
    EXPECT_EQ(FailureOf([] { ToInteger(std::numeric_limits<double>::infinity()); }).number(), 6);
    EXPECT_EQ(FailureOf([] { ToInteger(-std::numeric_limits<double>::infinity()); }).number(), 6);
    EXPECT_EQ(FailureOf([] { ToInteger(std::nan("")); }).number(), 6);
    EXPECT_EQ(ToInteger(-7.5), -8);
}

TEST(ToSingle, RoundsToTheNearestSingle) {
    EXPECT_EQ(ToSingle(0.1), 0.1F);
    EXPECT_EQ(ToSingle(16777217.0), 16777216.0F);
    EXPECT_EQ(ToSingle(1e-60), 0.0F);
    EXPECT_EQ(ToSingle(-18.3), -18.3F);
}

TEST(ToSingle, FailsBeyondTheSingleRange) {
    constexpr double largest = std::numeric_limits<float>::max();
    EXPECT_EQ(ToSingle(largest), std::numeric_limits<float>::max());
    EXPECT_EQ(ToSingle(std::nextafter(0x1.ffffffp127, 0.0)), std::numeric_limits<float>::max());
    for (const double value :
         {0x1.ffffffp127, -0x1.ffffffp127, 1e39, std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(FailureOf([&] { ToSingle(value); }).number(), 6) << value;
}

TEST(Switch, IsOnAtExactlyOneOrAtAnythingButZero) {
    const struct {
        const char* text;
        bool one;
        bool notZero;
    } cases[] = {{"", false, false},  {"0", false, false},  {"1", true, true},      {" 1", true, true},
                 {"1.0", true, true}, {"2", false, true},   {"-1", false, true},    {"yes", false, false},
                 {"1x", true, true},  {"0.5", false, true}, {"True", false, false}, {"01", true, true}};
    for (const auto& c : cases) {
        EXPECT_EQ(SwitchIsOne(c.text), c.one) << '"' << c.text << '"';
        EXPECT_EQ(SwitchIsNotZero(c.text), c.notZero) << '"' << c.text << '"';
    }
}

class CommaMark : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumberReading, DoesNotAskTheLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaMark));
    EXPECT_EQ(LenientNumber("1.5"), 1.5);
    EXPECT_EQ(LenientNumber("1,5"), 1);
    EXPECT_EQ(StrictNumber("1234.5"), 1234.5);
    EXPECT_FALSE(IsNumeric("1,5"));
    std::locale::global(before);
}

TEST(NumberReading, ReadsBackEveryDoubleExactly) {
    std::mt19937_64 random(20240601);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        char text[64];
        const auto end = std::to_chars(text, text + sizeof text, value).ptr;
        const std::string_view view(text, static_cast<std::size_t>(end - text));
        ASSERT_EQ(LenientNumber(view), value) << view;
        ASSERT_EQ(StrictNumber(view), value) << view;
        ASSERT_TRUE(IsNumeric(view)) << view;
    }
}

TEST(NumberReading, LenientEqualsStrictWhereverTheTextIsNumeric) {
    const std::string alphabet = "0123456789.+-eEdD x\t,";
    std::mt19937 random(7);
    int numeric = 0;
    for (int i = 0; i < 200000; ++i) {
        std::string text(random() % 7, ' ');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        const double lenient = LenientNumber(text);
        if (IsNumeric(text)) {
            ++numeric;
            ASSERT_EQ(StrictNumber(text), lenient) << '"' << text << '"';
        } else {
            ASSERT_NE(FailureOf([&] { StrictNumber(text); }).number(), 0) << '"' << text << '"';
        }
    }
    EXPECT_GT(numeric, 1000);
}

}  // namespace
}  // namespace brenvik
