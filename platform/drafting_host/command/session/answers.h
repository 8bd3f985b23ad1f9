// What typed answers mean: lengths, angles, points and keywords.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Coordinates and sizes beyond it can't be computed with to the fineness that drawings need.
inline constexpr double GreatestCoordinate = 1e10;

/// A length as shops write it: a decimal ("12.5", "-3e2"), a fraction ("3/4", "1-1/2"), inches (`3/4"`),
/// feet and inches (`2'`, `2'-6`, `2'6-1/2"`). Null if it is none, or beyond `GreatestCoordinate`.
std::optional<double> ParseLength(std::string_view text);

/// Radians from a typed angle in degrees. Quarter turns come out exact.
std::optional<double> ParseAngle(std::string_view text);

/// A whole number within 32 bits.
std::optional<int> ParseWhole(std::string_view text);

/// Coordinates as typed, with how they are meant.
struct TypedPoint {
    Point3 value;
    bool relative = false;  ///< "@": from the last point.
    bool world = false;     ///< "*": in world coordinates whatever the user system.
    bool flat = false;      ///< No Z was typed.
};

/// "x,y", "x,y,z", polar "d<a", cylindrical "d<a,z", each with "@", "*" or "@*" before; "@" alone is the
/// last point, "0" alone the origin. Null for anything else.
std::optional<TypedPoint> ParsePoint(std::string_view text);

/// The keyword that an answer means, or an empty text. `keywords` is a list parted by blanks; the capitals
/// of a keyword are its shortest form ("eXit": "x", or a beginning of "exit" that reaches its last capital).
/// Case and a leading underscore don't matter; of two keywords that fit, the first counts.
std::string MatchKeyword(std::string_view keywords, std::string_view answer);

/// The answer without the double quotes around it, which let a name hold blanks.
std::string Unquoted(const std::string& answer);

/// Coordinates for a prompt, four decimals at most.
std::string PointText(const Point3& point);
std::string LengthText(double length);

}  // namespace brenvik
