// Fractions of an inch: the table of results, and every 64th between -100 and 100 against whole numbers.
#include "base/fractions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <string>
#include <utility>

#include "base/numbers.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

TEST(FractionText, IsTheOneOfTheTable) {
    struct Case {
        double value;
        const char *plain, *padded;
    };
    for (const Case& each : {Case{0, "", ""}, Case{3, "3", "3"}, Case{0.5, "1/2", "0 1/2"},
                             Case{0.03125, "1/32", "0 1/32"}, Case{3.75, "3 3/4", "03 3/4"},
                             Case{23.96875, "23 31/32", "023 31/32"}, Case{-0.5, "-5/10", "0- 5/10"},
                             Case{-1.5, "-1 5/10", "0-1 5/10"}, Case{0.96875, "31/32", "0 31/32"},
                             Case{18, "18", "18"}, Case{18.5, "18 1/2", "018 1/2"}, Case{-7, "-7", "-7"}}) {
        EXPECT_EQ(DecimalToFraction(each.value, false), each.plain) << each.value;
        EXPECT_EQ(DecimalToFraction(each.value, true), each.padded) << each.value;
    }
}

TEST(FractionText, OfAnyDecimalFollowsItsSinglePrecisionDigits) {
    EXPECT_EQ(DecimalToFraction(0.1, false), "1/10");
    EXPECT_EQ(DecimalToFraction(2.25, false), "2 1/4");
    EXPECT_EQ(DecimalToFraction(600.4, false), DecimalToFraction(600 + 0.4, false));
    EXPECT_EQ(DecimalToFraction(-0.0, false), "");
}

TEST(FractionText, TruncatesTheWholeNumberTowardsZero) {
    EXPECT_EQ(DecimalToFraction(2.96875, false), "2 31/32");
    EXPECT_EQ(DecimalToFraction(-2.96875, false), "-2 96875/100000");
}

TEST(FractionText, OverflowsBeyondThirtyTwoBits) {
    const double tooMany = 1e-9;
    for (const double value : {3e9, -3e9, tooMany, 1 / 3e8, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(FailureOf([=] { DecimalToFraction(value, false); }).number(), failure_number::Overflow)
            << value;
    EXPECT_EQ(DecimalToFraction(2147483647, false), "2147483647");
}

TEST(ClosestThirtySecond, TakesEvery64thAwayFromZeroAsItWasMeasured) {
    for (int part = -64 * 100 + 1; part < 64 * 100; part += 2) {
        const double exact = part / 64.0;
        const double away = (part + (part > 0 ? 1 : -1)) / 64.0;
        EXPECT_EQ(ClosestThirtySecond(exact), away) << part;
        // Sizes are kept with five decimals.
        EXPECT_EQ(ClosestThirtySecond(RoundHalfEven(exact, 5)), away) << part;
    }
}

TEST(ClosestThirtySecond, OfAnythingElseIsTheNearest) {
    for (const auto& [size, closest] : {std::pair(52.0156, 52.0), std::pair(52.01564, 52.03125),
                                        std::pair(18.0, 18.0), std::pair(0.0, 0.0), std::pair(-0.3, -0.3125)})
        EXPECT_EQ(ClosestThirtySecond(size), closest) << size;
}

TEST(FractionMeStep, ChangesNothing) {
    for (const char* text : {"", "1/2", " 3 "}) EXPECT_EQ(FractionMe(text), text);
}

TEST(RoundingToAUnit, TakesHalvesAwayFromZero) {
    constexpr double unit = ExportFractionUnit;
    EXPECT_EQ(RoundDecimalValue(1.0 / 64, unit), unit);
    EXPECT_EQ(RoundDecimalValue(-1.0 / 64, unit), -unit);
    EXPECT_EQ(RoundDecimalValue(0, unit), 0);
    EXPECT_EQ(RoundDecimalValue(2.99, unit), 3);
    EXPECT_EQ(RoundDecimalValue(-2.99, unit), -3);
    EXPECT_EQ(RoundDecimalValue(7, 2), 8);
    EXPECT_EQ(FailureOf([] { RoundDecimalValue(1, 0); }).number(), failure_number::DivisionByZero);
}

TEST(RoundingToAUnit, OfWhatRoundsToAWholeNumberShowsNoFraction) {
    EXPECT_EQ(DecimalToFraction(RoundDecimalValue(2.99, ExportFractionUnit), false), "3");
    EXPECT_EQ(DecimalToFraction(RoundDecimalValue(0.01, ExportFractionUnit), true), "");
}

/// The same in whole numbers: `sixtyFourths` rounded to 32nds, halves away from zero.
std::string ExactText(int sixtyFourths, bool padded) {
    const int magnitude = (std::abs(sixtyFourths) + 1) / 2;
    const int whole = magnitude / 32, rest = magnitude % 32;
    const std::string sign = sixtyFourths < 0 && magnitude > 0 ? "-" : "";
    const std::string head = sign + (whole > 0 ? std::to_string(whole) : "");
    if (rest == 0) return whole == 0 ? "" : head;
    int numerator = rest, denominator = 32;
    if (sixtyFourths > 0) {
        const int divisor = std::gcd(numerator, denominator);
        numerator /= divisor;
        denominator /= divisor;
    } else {
        // A 32nd is 3125 hundred thousandths; without the zeros at the end it has as many digits as it needs.
        numerator = rest * 3125;
        denominator = 100000;
        for (; numerator % 10 == 0; numerator /= 10) denominator /= 10;
    }
    const std::string fraction = std::to_string(numerator) + "/" + std::to_string(denominator);
    if (padded) return "0" + head + " " + fraction;
    return whole > 0 ? head + " " + fraction : head + fraction;
}

TEST(FractionText, IsExactForEverySixtyFourthUpToAHundred) {
    int checked = 0;
    for (int sixtyFourths = -6400; sixtyFourths <= 6400; ++sixtyFourths) {
        const double rounded = RoundDecimalValue(sixtyFourths / 64.0, ExportFractionUnit);
        for (const bool padded : {false, true}) {
            ASSERT_EQ(DecimalToFraction(rounded, padded), ExactText(sixtyFourths, padded))
                << sixtyFourths << "/64";
            ++checked;
        }
    }
    EXPECT_EQ(checked, 25602);
}

}  // namespace
}  // namespace brenvik
