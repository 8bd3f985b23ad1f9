// Where outputs may go: never over the drawing, and never over
// the files of the home, none of which can be made anew.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace brenvik {

enum class OutputKind { List, Adjustments, Drawing, Transcript };

/// What stands at a place that no output of this kind may take, such as "the drawing"; blank for any other
/// place. Files are known by what they are, whatever name leads to them.
using OutputRule = std::function<std::string(std::string_view path, OutputKind kind)>;

/// Sets the rule, until the library is unloaded. Without one every place may be taken.
void SetOutputRule(OutputRule rule);

/// Throws Failure 75, with the place and what stands there as its description, where the rule keeps the
/// place.
void RequireOutputPlace(std::string_view path, OutputKind kind);

}  // namespace brenvik
