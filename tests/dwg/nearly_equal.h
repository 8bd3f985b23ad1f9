// Whether two shapes are the same to a billionth, however their numbers were written: texts of drawings round
// to 16 digits, binary ones don't.
#pragma once

#include <string>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::test {

/// Blank where they are; else what differs first. Bodies are compared by their kind alone.
std::string DifferenceOf(const EntityGeometry& left, const EntityGeometry& right);

}  // namespace brenvik::test
