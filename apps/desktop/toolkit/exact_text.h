// Numbers that a journal or the command line reads back as they were.
#pragma once

#include <string>

#include "session/ports/host_interface.h"

namespace brenvik::desktop {

/// The shortest text that is read as the same number; without an exponent, as people write it.
std::string ExactText(double number);
/// "x,y,z".
std::string ExactText(const Point3& point);

}  // namespace brenvik::desktop
