// Lists in messages, which may be of thousands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The first `most` texts, and how many others there are: "a, b and 3 more". `rest` stands ahead of the
/// number.
std::string FirstOf(std::vector<std::string> texts, std::size_t most, std::string_view separator = ", ",
                    std::string_view rest = " and ");

}  // namespace brenvik
