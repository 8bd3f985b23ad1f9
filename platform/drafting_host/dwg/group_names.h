// The names of groups, which stand in a dictionary and not in the groups themselves.
#pragma once

#include <functional>
#include <vector>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"

namespace brenvik::dwg {

/// Gives each group the name that the dictionary has for it; one without a name of its own becomes anonymous
/// ("*A1"). Gives the handles of these.
std::vector<HandleValue> NameGroups(std::vector<GroupData>& groups, const Dictionary& dictionary);

/// Reports members that are none, and those that stand there twice, of which one stays. Others that aren't
/// known have been left out.
void CheckMembers(GroupData& group, const std::function<bool(HandleValue)>& isKnown, Links& links,
                  Reading& reading);

}  // namespace brenvik::dwg
