// The forms of number text, each with its table of cases.
#include "base/number_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <string>

#include "base/failure.h"
#include "base/numbers.h"

namespace brenvik {
namespace {

TEST(NumberText, TheThreeFormsOfOneValue) {
    const struct {
        double value;
        const char* general;
        const char* blank;
        const char* noZero;
    } cases[] = {
        {0, "0", " 0", "0"},
        {-0.0, "0", " 0", "0"},
        {1, "1", " 1", "1"},
        {-1, "-1", "-1", "-1"},
        {10, "10", " 10", "10"},
        {600, "600", " 600", "600"},
        {0.5, "0.5", " .5", ".5"},
        {-0.5, "-0.5", "-.5", "-.5"},
        {0.1, "0.1", " .1", ".1"},
        {0.375, "0.375", " .375", ".375"},
        {1.5, "1.5", " 1.5", "1.5"},
        {19.05, "19.05", " 19.05", "19.05"},
        {-23.96875, "-23.96875", "-23.96875", "-23.96875"},
        {0.1 + 0.2, "0.3", " .3", ".3"},
        {1.0 / 3, "0.333333333333333", " .333333333333333", ".333333333333333"},
        {2.0 / 3, "0.666666666666667", " .666666666666667", ".666666666666667"},
        {100.0 / 3, "33.3333333333333", " 33.3333333333333", "33.3333333333333"},
        {0.0001, "0.0001", " .0001", ".0001"},
        {0.00012345, "0.00012345", " .00012345", ".00012345"},
        {0.00001, "1E-05", " 1E-05", ".00001"},
        {-0.000015, "-1.5E-05", "-1.5E-05", "-.000015"},
        {1e-100, "1E-100", " 1E-100", nullptr},
        {123456789012345.0, "123456789012345", " 123456789012345", "123456789012345"},
        {999999999999999.0, "999999999999999", " 999999999999999", "999999999999999"},
        {999999999999999.5, "1E+15", " 1E+15", "1000000000000000"},
        {1e15, "1E+15", " 1E+15", "1000000000000000"},
        {1.5e20, "1.5E+20", " 1.5E+20", "150000000000000000000"},
        {-1.5e20, "-1.5E+20", "-1.5E+20", "-150000000000000000000"},
        {1234567890123456.0, "1.23456789012346E+15", " 1.23456789012346E+15", "1234567890123460"},
        {0.99999999999999994, "1", " 1", "1"},
        {1e100, "1E+100", " 1E+100", nullptr},
        {std::numeric_limits<double>::max(), "1.79769313486232E+308", " 1.79769313486232E+308", nullptr},
        {std::numeric_limits<double>::denorm_min(), "4.94065645841247E-324", " 4.94065645841247E-324",
         nullptr},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(NumberToText(c.value), c.general);
        EXPECT_EQ(NumberToTextBlank(c.value), c.blank);
        if (c.noZero) {
            EXPECT_EQ(NumberToTextNoZero(c.value), c.noZero);
        }
    }
}

TEST(NumberToTextNoZero, NeverUsesAnExponent) {
    EXPECT_EQ(NumberToTextNoZero(1e22), "1" + std::string(22, '0'));
    EXPECT_EQ(NumberToTextNoZero(1e-9), "." + std::string(8, '0') + "1");
    EXPECT_EQ(NumberToTextNoZero(std::numeric_limits<double>::max()),
              "179769313486232" + std::string(294, '0'));
    EXPECT_EQ(NumberToTextNoZero(std::numeric_limits<double>::denorm_min()),
              "." + std::string(323, '0') + "494065645841247");
}

TEST(LayerNumberText, RoundsReplacesThePointAndTrims) {
    const struct {
        double value;
        std::optional<int> decimals;
        const char* mark;
        const char* text;
    } cases[] = {
        {0.375, 6, "p", "p375"},
        {1.5, 6, "p", "1p5"},
        {12, 6, "p", "12"},
        {0, 6, "p", "0"},
        {0.0000004, 6, "p", "0"},
        {-0.0000004, 6, "p", "0"},
        {-0.375, 6, "p", "-p375"},
        {0.75, 5, "_", "_75"},
        {18.0000049, 5, "p", "18"},
        {0.125, 2, "p", "p12"},
        {2.675, 2, "p", "2p68"},
        {0.5, 0, "p", "0"},
        {0.00001, 5, "p", "p00001"},
        {6.35, std::nullopt, "p", "6p35"},
        {0.1 + 0.2, std::nullopt, "p", "p3"},
        {0.25, 4, ".", ".25"},
        {0.25, 4, "", "25"},
        {0.25, 4, " ", "25"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(LayerNumberText(c.value, c.decimals, c.mark), c.text) << c.value << " with " << c.mark;
}

TEST(ShortestRoundTrip, IsTheShortestTextOfTheValue) {
    const struct {
        double value;
        const char* text;
        const char* real;
    } cases[] = {
        {0, "0", "0.0"},
        {-0.0, "-0", "-0.0"},
        {600, "600", "600.0"},
        {0.1, "0.1", "0.1"},
        {-18.5, "-18.5", "-18.5"},
        {0.1 + 0.2, "0.30000000000000004", "0.30000000000000004"},
        {1e20, "1e+20", "1e+20"},
        {1e-7, "1e-07", "1e-07"},
        {123456, "123456", "123456.0"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ShortestRoundTrip(c.value), c.text);
        EXPECT_EQ(ShortestRoundTrip(c.value, true), c.real);
    }
}

TEST(NumberText, FailsWithOverflowForWhatIsNotFinite) {
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_THROW(NumberToText(value), Failure);
        EXPECT_THROW(NumberToTextBlank(value), Failure);
        EXPECT_THROW(NumberToTextNoZero(value, 3), Failure);
        EXPECT_THROW(LayerNumberText(value, 3, "p"), Failure);
        EXPECT_THROW(ShortestRoundTrip(value), Failure);
    }
}

class CommaMark : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
};

TEST(NumberText, DoesNotAskTheLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale(), new CommaMark));
    EXPECT_EQ(NumberToText(1.5), "1.5");
    EXPECT_EQ(NumberToTextBlank(1.5), " 1.5");
    EXPECT_EQ(LayerNumberText(1.5, 2, "p"), "1p5");
    EXPECT_EQ(ShortestRoundTrip(1.5), "1.5");
    std::locale::global(before);
}

TEST(NumberText, EveryFormReadsBackToFifteenDigits) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value)) continue;
        const std::string general = NumberToText(value);
        const double read = StrictNumber(general);
        ASSERT_NEAR(read / value, 1, 1e-14) << general;
        ASSERT_EQ(StrictNumber(NumberToTextBlank(value)), read) << general;
        ASSERT_EQ(StrictNumber(NumberToTextNoZero(value)), read) << general;
        ASSERT_EQ(NumberToText(read), general) << "a text that was read is written the same again";
        ASSERT_EQ(StrictNumber(ShortestRoundTrip(value)), value);
        ASSERT_EQ(StrictNumber(ShortestRoundTrip(value, true)), value);
    }
}

TEST(NumberText, RoundedSizesSurviveTextUnchanged) {
    std::mt19937_64 random(12);
    std::uniform_real_distribution<double> size(0, 100000);
    for (int i = 0; i < 20000; ++i) {
        const double value = RoundHalfEven(size(random), 5);
        ASSERT_EQ(LenientNumber(NumberToText(value)), value);
        ASSERT_EQ(LenientNumber(NumberToTextBlank(value)), value);
    }
}

}  // namespace
}  // namespace brenvik
