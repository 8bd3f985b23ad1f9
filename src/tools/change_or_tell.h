// Changes of what the user has selected, entity by entity.
#pragma once

#include <functional>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Does `change` to one entity. One that refuses it, as on a locked layer, stays as it is: the command
/// continues with the others, and the part is reported with the reason.
void ChangeOrTell(AcadEntity& entity, const std::function<void(AcadEntity&)>& change);

}  // namespace brenvik
