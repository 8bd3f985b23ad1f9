// A text as messages show what stands in a file.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The text between double quotes, as it stands.
inline std::string InQuotes(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace brenvik
