// Which CAM package files were written for, by what their layers are called.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "cnc/part/target.h"

namespace brenvik {

/// The target that reads most of these names; of targets that read the same ones one whose work list is there
/// (`hasList`), and of those the one whose names say most. `tools` are those of the part's material.
Target TargetOfNames(
    std::span<const std::string> layers, bool metric, std::span<const std::string> tools,
    const std::function<bool(Target)>& hasList = [](Target) { return false; });

/// The numbers of all tools of the material library, each once. Throws Failure where that can't be read.
std::vector<std::string> AllToolNumbers();

}  // namespace brenvik
