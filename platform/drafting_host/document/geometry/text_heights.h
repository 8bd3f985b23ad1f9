// Heights of letters within the text of a paragraph.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The text with its absolute heights (`\H2.5;`) times `factor`. Heights as multiples of the paragraph's own
/// (`\H1.5x;`), indents and tabs, which are multiples too, and all other codes stay.
std::string WithScaledHeights(std::string_view text, double factor);

}  // namespace brenvik
