// What to type when the material library hasn't a part's material.
#pragma once

#include <span>
#include <string>
#include <vector>

namespace brenvik::app {

/// For parts without a material: the option that gives them one. For every other key: the command that copies
/// the record of the nearest board. `programWords` are the words by which the program is called for this
/// home.
std::vector<std::string> MaterialAdvice(std::span<const std::string> unknownKeys,
                                        const std::string& programWords);

}  // namespace brenvik::app
