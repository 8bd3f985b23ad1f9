// Which of a part's three extents a walk over its sizes has taken already.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::mAutoCAD {

/// Of one walk; counting and matching each begin with none.
struct ExtentsTaken {
    bool Small = false, Big = false, Mid = false;
};

/// Takes the first of the three extents that equals the value, read as a number, and is not taken yet. False
/// when none qualifies.
bool ConsumeExtent(ExtentsTaken& taken, std::string_view value, double a, double b, double c);

/// The same walk; the extent as text, or "0" when none qualifies.
std::string MatchOldValue(ExtentsTaken& taken, std::string_view text, double a, double b, double c);

}  // namespace brenvik::mAutoCAD
