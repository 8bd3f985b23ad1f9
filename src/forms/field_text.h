// A value of the part table as people read it.
#pragma once

#include <string>

#include "session/ports/database_port.h"

namespace brenvik {

/// A text as it is, a number in its general form, blank for null.
std::string FieldText(const FieldValue& value);

}  // namespace brenvik
