// What a run makes of a group of parts, against what the list says and the drawing shows.
#pragma once

#include <span>

#include "parts/cnc_list.h"

namespace brenvik {

/// A run works on the first part of a group and counts its rows. Notes the groups whose solids differ, as a
/// left and a right side do that bear one name, and those whose quantities in the list come to another
/// number.
void LookAtCncGroups(std::span<const CncGroup> groups);

}  // namespace brenvik
