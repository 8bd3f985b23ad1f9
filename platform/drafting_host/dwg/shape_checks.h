// What an entity's shape can't be, though its bits make numbers: signs of damage that no checksum shows.
#pragma once

#include <string>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

/// Why the values can't be true, the first that is found; blank where they can. What is wrong with them
/// mostly stays, since nobody knows what was meant.
std::string ImpossibleIn(const EntityGeometry& geometry);

}  // namespace brenvik::dwg
