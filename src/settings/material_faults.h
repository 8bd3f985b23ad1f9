// What the values of a material can be: a diameter is a number, a direction is one of two. They go into layer
// names and work lists as they stand, so what can't be a diameter would reach a machine.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "settings/materials.h"

namespace brenvik {

/// The faults of a record in the order of its lines, of which the first has the number `head`; the key of the
/// material itself isn't looked at. A later slot of the number 0 is
/// empty, and nothing is expected in it.
std::vector<MaterialFault> FaultsOfRecord(std::span<const std::string> lines, const MaterialTexts& texts,
                                          std::size_t head);

}  // namespace brenvik
