// Faults of part data. Lists read such data leniently; these are the messages.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace brenvik {

/// The fault of a quantity; empty if it is a count of parts. A blank quantity counts as 1.
std::optional<std::string> QuantityFault(std::string_view quantity);

/// How many parts a quantity stands for: 1 for a blank one, else the number at its head.
double PartsOf(std::string_view quantity);

/// The fault of orientation letters; empty for blank ones and for those that name each size once.
std::optional<std::string> LettersFault(std::string_view letters);

/// What is wrong with the extents saved beside letters: each has to be a number above 0.
std::optional<std::string> SavedExtentsFault(const std::array<std::string_view, 3>& oldValues);

}  // namespace brenvik
