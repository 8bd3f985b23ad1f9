// Loading the library on a platform, and unloading it.
#pragma once

#include "session/ports/platform.h"

namespace brenvik {

/// Loads the library: takes the platform, starts with fresh session values, and joins the modules. A library
/// that is loaded already is unloaded first. A required port that is missing is a defect.
void LoadSystem(const Platform& platform);
/// Unloads it: closes connections, drops the forms, and resets the state of every module.
void UnloadSystem();

}  // namespace brenvik
