// The names of groups, which stand in a dictionary and not in the groups themselves.
#pragma once

#include <vector>

#include "drafting_host/dwg/names.h"

namespace brenvik::dwg {

/// Gives each group the name that the dictionary has for it; one without a name of its own becomes anonymous
/// ("*A1"). Gives the handles of these.
std::vector<HandleValue> NameGroups(std::vector<GroupData>& groups, const Dictionary& dictionary);

}  // namespace brenvik::dwg
