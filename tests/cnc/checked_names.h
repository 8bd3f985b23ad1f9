// What the name of a layer says of an operation, against the operation itself.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "cnc/part/target.h"

namespace brenvik {

/// Where the depth or the diameter in the name isn't the entity's own, and layers that are no operation's;
/// for C2C, whose names tell both. Nothing for the other targets.
std::vector<std::string> NameFaults(Target target, const Drawn& drawn);

}  // namespace brenvik
