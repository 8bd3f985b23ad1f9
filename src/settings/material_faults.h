// What the values of a material can be: a diameter is a number, a direction is one of two. They go into layer
// names and work lists as they stand, so what can't be a diameter would reach a machine.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "session/text_files.h"
#include "settings/materials.h"

namespace brenvik {

/// No host makes a layer with one of these in its name.
inline constexpr std::string_view NotInLayerNames = "<>/\\\":;?*|,=`";

/// The faults of a record in the order of its lines, of which the first has the number `head`; the key of the
/// material itself isn't looked at. A later slot of the number 0 is empty, and may stay so.
std::vector<MaterialFault> FaultsOfRecord(std::span<const std::string> lines, const MaterialTexts& texts,
                                          std::size_t head);

/// The speeds and feeds of a record that have a point or an exponent. For a target that has them in the names
/// of its layers that is a fault: there is no decimal point in these.
std::vector<MaterialFault> PointsInSpeeds(const MaterialTexts& texts, std::size_t head);

/// The lines behind the first `before` of a library and up to the line `last` that were no UTF-8.
std::vector<MaterialFault> GuessedLines(const FileLines& file, std::size_t before, std::size_t last);

}  // namespace brenvik
