// Which CAM package files were written for, by what their layers are called.
#pragma once

#include <span>
#include <string>

#include "cnc/part/target.h"

namespace brenvik {

/// The target that reads most of these names; of targets that read the same ones the one whose names say
/// most. `tools` are those of the part's material.
Target TargetOfNames(std::span<const std::string> layers, bool metric, std::span<const std::string> tools);

}  // namespace brenvik
