// The unit that the head of an ACIS text names.
#pragma once

#include <string>
#include <vector>

namespace brenvik::acis {

/// Puts what a unit measures into the head of a text that was just written; it begins the third line.
void NameUnit(std::vector<std::string>& lines, double millimetresPerUnit);

}  // namespace brenvik::acis
