// Session values by name, as texts, for journals.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The session value of this name, compared without regard to case: numbers as general number text,
/// booleans as "True" and "False", tables as their entries parted by "; ". Null for an unknown name.
std::optional<std::string> SessionValueText(std::string_view name);

/// The names that SessionValueText knows.
std::vector<std::string> SessionValueNames();

}  // namespace brenvik
