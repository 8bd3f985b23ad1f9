// Number texts, angles and planes that survive the way into a file and back.
#include "drafting_host/dxf/texts/exact_numbers.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <numbers>

#include "base/ascii.h"
#include "base/number_text.h"
#include "base/trimmed.h"

namespace brenvik {
namespace {

constexpr LongReal RadiansPerDegree = std::numbers::pi_v<LongReal> / 180;
constexpr std::size_t DigitsOfDouble = 17;

std::string_view Stripped(std::string_view text) {
    text = Trimmed(text, " \t");
    if (text.size() > 1 && text.front() == '+' && text[1] != '-') text.remove_prefix(1);
    return text;
}

template <typename Real>
std::optional<Real> Parse(std::string_view text) {
    text = Stripped(text);
    Real value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ptr != text.data() + text.size() || text.empty()) return std::nullopt;
    if (read.ec == std::errc{}) return value;
    if (read.ec != std::errc::result_out_of_range) return std::nullopt;
    // The exponent's sign alone shows whether a number is too small or too large.
    const bool tiny = text.find("e-") != std::string_view::npos ||
                      text.find("E-") != std::string_view::npos ||
                      text.find_first_of("eE") == std::string_view::npos;
    return tiny ? Real{0} : std::numeric_limits<Real>::infinity();
}

bool HasMoreDigitsThanDouble(std::string_view text) {
    if (text.size() <= DigitsOfDouble) return false;
    const std::string_view mantissa = text.substr(0, text.find_first_of("eE"));
    const auto first =
        std::find_if(mantissa.begin(), mantissa.end(), [](char c) { return c >= '1' && c <= '9'; });
    return std::count_if(first, mantissa.end(), IsDigit) > static_cast<std::ptrdiff_t>(DigitsOfDouble);
}

// General form with a number of significant digits, so that 90 degrees stay "90.0".
template <typename Real>
std::string TextWithDigits(Real value, int digits) {
    std::array<char, 64> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                       std::chars_format::general, digits);
    std::string text(buffer.data(), written.ptr);
    if (text.find_first_of(".eE") == std::string::npos) text += ".0";
    return text;
}

// A text at the full length of a long number. Zeros at its end are put back when it would be too short to
// be taken for one.
std::string LongText(LongReal value) {
    std::string text = TextWithDigits(value, std::numeric_limits<LongReal>::max_digits10);
    if (HasMoreDigitsThanDouble(text)) return text;
    std::size_t end = std::min(text.find('e'), text.size());
    if (text.find('.') == std::string::npos) text.insert(end++, 1, '.');
    text.insert(end, DigitsOfDouble, '0');
    return text;
}

PlanePoint Cross(const PlanePoint& a, const PlanePoint& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

PlanePoint Unit(const PlanePoint& a) {
    const LongReal length = std::hypot(a.x, a.y, a.z);
    return {a.x / length, a.y / length, a.z / length};
}

LongReal Dot(const PlanePoint& a, const PlanePoint& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

// The digits of a coordinate that lie far below the last digit of the largest one are noise of the turn.
// They are cut off, which makes a zero a zero and gives the same point each time a file is read.
LongReal WithoutNoise(LongReal value, LongReal largest) {
    if (largest == 0) return 0;
    constexpr int digitsKept = 56;  // three more than a double of the largest coordinate has
    const LongReal grid = std::ldexp(LongReal{1}, std::ilogb(largest) - digitsKept);
    return std::nearbyint(value / grid) * grid;
}

bool IsAlongOneAxis(const PlanePoint& a) { return (a.x != 0) + (a.y != 0) + (a.z != 0) == 1; }

LongReal Largest(LongReal x, LongReal y, LongReal z) {
    return std::max({std::abs(x), std::abs(y), std::abs(z)});
}

std::string LongRealText(LongReal value) {
    const auto asDouble = static_cast<double>(value);
    return value == asDouble ? RealText(asDouble) : LongText(value);
}

PlanePoint NoiseAsZero(const PlanePoint& point) {
    const auto clean = [](LongReal value) { return std::abs(value) < SmallestLength ? LongReal{0} : value; };
    return {clean(point.x), clean(point.y), clean(point.z)};
}

// The short texts when they give the point, else the long ones.
PlanePointTexts TextsOf(const EntityPlane& plane, const Point3& worldPoint) {
    const PlanePoint exact = NoiseAsZero(plane.FromWorld(worldPoint));
    const Point3 rounded{static_cast<double>(exact.x), static_cast<double>(exact.y),
                         static_cast<double>(exact.z)};
    if (plane.ToWorld({rounded.x, rounded.y, rounded.z}) == worldPoint)
        return {RealText(rounded.x), RealText(rounded.y), RealText(rounded.z)};
    return {LongRealText(exact.x), LongRealText(exact.y), LongRealText(exact.z)};
}

Point3 PointOf(const EntityPlane& plane, const PlanePointTexts& texts) {
    const auto number = [](const std::string& text) { return ParseLongReal(text).value_or(0); };
    return plane.ToWorld({number(texts.x), number(texts.y), number(texts.z)});
}

}  // namespace

std::optional<double> ParseReal(std::string_view text) { return Parse<double>(text); }

std::optional<LongReal> ParseLongReal(std::string_view text) {
    if (HasMoreDigitsThanDouble(text)) return Parse<LongReal>(text);
    const auto value = Parse<double>(text);
    return value ? std::optional<LongReal>(*value) : std::nullopt;
}

std::string RealText(double value) { return ShortestRoundTrip(value, true); }

double RadiansOfDegrees(LongReal degrees) { return static_cast<double>(degrees * RadiansPerDegree); }

std::string DegreesText(double radians) {
    const LongReal degrees = radians / RadiansPerDegree;
    const auto isRight = [radians](const std::string& text) {
        const auto read = ParseLongReal(text);
        return read && RadiansOfDegrees(*read) == radians;
    };
    for (const int digits : {15, 16, 17}) {
        std::string text = TextWithDigits(static_cast<double>(degrees), digits);
        if (isRight(text)) return text;
    }
    return LongText(degrees);
}

EntityPlane::EntityPlane(const Point3& normal) {
    const PlanePoint given{normal.x, normal.y, normal.z};
    mIsWorld = (normal.x == 0 && normal.y == 0 && normal.z > 0) || Dot(given, given) == 0;
    if (mIsWorld) return;
    mZ = Unit(given);
    constexpr LongReal nearVertical = 1.0L / 64;
    const bool vertical = std::abs(mZ.x) < nearVertical && std::abs(mZ.y) < nearVertical;
    mX = Unit(Cross(vertical ? PlanePoint{0, 1, 0} : PlanePoint{0, 0, 1}, mZ));
    mY = Unit(Cross(mZ, mX));
    mIsSquare = IsAlongOneAxis(mX) && IsAlongOneAxis(mY) && IsAlongOneAxis(mZ);
}

Point3 EntityPlane::ToWorld(const PlanePoint& point) const {
    if (mIsWorld)
        return {static_cast<double>(point.x), static_cast<double>(point.y), static_cast<double>(point.z)};
    const LongReal largest = Largest(point.x, point.y, point.z);
    const auto sum = [&](LongReal x, LongReal y, LongReal z) {
        const LongReal turned = point.x * x + point.y * y + point.z * z;
        // In a square plane nothing is but swapped and negated.
        return static_cast<double>(mIsSquare ? turned : WithoutNoise(turned, largest));
    };
    return {sum(mX.x, mY.x, mZ.x), sum(mX.y, mY.y, mZ.y), sum(mX.z, mY.z, mZ.z)};
}

PlanePoint EntityPlane::FromWorld(const Point3& point) const {
    const PlanePoint world{point.x, point.y, point.z};
    if (mIsWorld) return world;
    return {Dot(world, mX), Dot(world, mY), Dot(world, mZ)};
}

PlanePointTexts PlanePointText(const EntityPlane& plane, const Point3& worldPoint) {
    // A coordinate far smaller than the others can miss its last bit; then the text of the point that is
    // read back is taken, until text and point belong to each other.
    constexpr int mostSteps = 8;
    Point3 point = worldPoint;
    PlanePointTexts texts;
    for (int step = 0; step < mostSteps; ++step) {
        texts = TextsOf(plane, point);
        const Point3 back = PointOf(plane, texts);
        if (back == point) break;
        point = back;
    }
    return texts;
}

}  // namespace brenvik
