// Typed answers, read without regard to the machine's locale.
#include "drafting_host/command/session/answers.h"

#include <array>
#include <cctype>
#include <cmath>
#include <vector>

#include "base/ascii.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {
namespace {

bool StartsNumber(char c) { return IsDigit(c) || c == '.' || c == '+' || c == '-'; }

std::optional<double> Decimal(std::string_view text) {
    // Blanks around a number, allowed elsewhere, never reach an answer.
    if (text.empty() || !StartsNumber(text.front()) || !IsNumeric(text)) return std::nullopt;
    return StrictNumber(text);
}

/// "3/4" or "1-1/2", without a sign.
std::optional<double> Fraction(std::string_view text) {
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos) return std::nullopt;
    const std::string_view bottom = text.substr(slash + 1);
    std::string_view top = text.substr(0, slash);
    double whole = 0;
    if (const std::size_t dash = top.find('-'); dash != std::string_view::npos) {
        if (!IsDigitsAlone(top.substr(0, dash))) return std::nullopt;
        whole = StrictNumber(top.substr(0, dash));
        top = top.substr(dash + 1);
    }
    if (!IsDigitsAlone(top) || !IsDigitsAlone(bottom)) return std::nullopt;
    const double divisor = StrictNumber(bottom);
    if (divisor == 0) return std::nullopt;
    return whole + StrictNumber(top) / divisor;
}

std::optional<double> Inches(std::string_view text) {
    if (text.ends_with('"')) text.remove_suffix(1);
    if (const auto fraction = Fraction(text)) return fraction;
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) return std::nullopt;
    return Decimal(text);
}

std::optional<double> UnsignedLength(std::string_view text) {
    constexpr double inchesInAFoot = 12;
    const std::size_t mark = text.find('\'');
    if (mark == std::string_view::npos) return Inches(text);
    const auto feet = Inches(text.substr(0, mark));
    std::string_view rest = text.substr(mark + 1);
    if (rest.starts_with('-')) rest.remove_prefix(1);
    const auto inches = rest.empty() ? std::optional(0.0) : Inches(rest);
    if (!feet || !inches || text.substr(0, mark).ends_with('"')) return std::nullopt;
    return *feet * inchesInAFoot + *inches;
}

std::optional<Point3> Cartesian(const std::vector<std::string>& pieces) {
    std::array<double, 3> values{};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto value = ParseLength(pieces[i]);
        if (!value) return std::nullopt;
        values[i] = *value;
    }
    return Point3{values[0], values[1], values[2]};
}

std::optional<Point3> Polar(std::string_view text, bool& flat) {
    const HeadAndTail distanceAndRest = SplitAtFirst(text, '<');
    const HeadAndTail angleAndHeight = SplitAtFirst(distanceAndRest.tail, ',');
    const auto distance = ParseLength(distanceAndRest.head);
    const auto angle = ParseAngle(angleAndHeight.head);
    const auto height = angleAndHeight.found ? ParseLength(angleAndHeight.tail) : std::optional(0.0);
    if (!distance || !angle || !height) return std::nullopt;
    flat = !angleAndHeight.found;
    const auto [sine, cosine] = vectors::OfAngle(*angle);
    return Point3{*distance * cosine, *distance * sine, *height};
}

}  // namespace

std::optional<double> ParseLength(std::string_view text) {
    bool negative = false;
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
        negative = text.front() == '-';
        text.remove_prefix(1);
    }
    const auto length = UnsignedLength(text);
    if (!length || !(std::abs(*length) <= GreatestCoordinate)) return std::nullopt;
    return (negative ? -*length : *length) + 0.0;
}

std::optional<double> ParseAngle(std::string_view text) {
    const auto degrees = Decimal(text);
    if (!degrees || !(std::abs(*degrees) <= GreatestCoordinate)) return std::nullopt;
    // Whole turns drop out first, so that 3690 degrees turn as exactly as 90 do.
    return std::fmod(*degrees, 360.0) * (std::numbers::pi / 180) + 0.0;
}

std::optional<int> ParseWhole(std::string_view text) {
    std::string_view digits = text;
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) digits.remove_prefix(1);
    if (!IsDigitsAlone(digits)) return std::nullopt;
    const double value = LenientNumber(text);
    if (!(std::abs(value) <= 2147483647.0)) return std::nullopt;
    return static_cast<int>(value);
}

std::optional<TypedPoint> ParsePoint(std::string_view text) {
    TypedPoint point;
    if (text.starts_with('@')) {
        point.relative = true;
        text.remove_prefix(1);
        if (text.empty()) return point;
    }
    if (text.starts_with('*')) {
        point.world = true;
        text.remove_prefix(1);
    }
    if (text.find('<') != std::string_view::npos) {
        const auto polar = Polar(text, point.flat);
        if (!polar) return std::nullopt;
        point.value = *polar;
        return point;
    }
    const std::vector<std::string> pieces = Split(text, ',');
    const auto value = pieces.size() > 3 ? std::nullopt : Cartesian(pieces);
    if (!value) return std::nullopt;
    // One number alone is a distance along the crosshairs, which a typed line doesn't have; but none at all
    // is the same whichever way they lie.
    const bool originAlone = pieces.size() == 1 && value->x == 0 && !point.relative;
    if (pieces.size() < 2 && !originAlone) return std::nullopt;
    point.value = *value;
    point.flat = pieces.size() == 2;
    return point;
}

std::string MatchKeyword(std::string_view keywords, std::string_view answer) {
    if (answer.starts_with('_')) answer.remove_prefix(1);
    if (answer.empty()) return {};
    for (const std::string& keyword : Split(keywords, ' ')) {
        std::string shortest;
        std::size_t needed = 0;
        for (std::size_t i = 0; i < keyword.size(); ++i) {
            const char c = keyword[i];
            if (!(c >= 'A' && c <= 'Z') && !IsDigit(c)) continue;
            shortest += c;
            needed = i + 1;
        }
        const bool beginning = answer.size() >= needed && StartsWithIgnoreCase(keyword, answer);
        if (beginning || EqualsIgnoreCase(answer, shortest)) return keyword;
    }
    return {};
}

std::string Unquoted(const std::string& answer) {
    const bool quoted = answer.size() >= 2 && answer.front() == '"' && answer.back() == '"';
    return quoted ? answer.substr(1, answer.size() - 2) : answer;
}

std::string LengthText(double length) { return NumberToText(RoundHalfEven(length, 4)); }

std::string PointText(const Point3& point) {
    return LengthText(point.x) + "," + LengthText(point.y) + "," + LengthText(point.z);
}

}  // namespace brenvik
