// Writing STEP files (AP214) with assemblies, names, layers and colours.
#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "base/length_unit.h"
#include "drafting_host/step/texts/step_document.h"

namespace brenvik::step {

/// The text of a STEP file of the solids, whose lengths are in `unit`, in that unit. Solids with the same
/// assembly name become one assembly; those without stand alone. Text outside of ASCII is written in the
/// format's own escapes, which every reader knows. `path` is where the text will go: its name stands in the
/// header, and failures name it. Throws Failure 5 when there is no solid to write or the modeller can't write
/// one.
std::string StepText(const std::filesystem::path& path, std::span<const StepSolid> parts,
                     LengthUnit unit = LengthUnit::Millimetre);

}  // namespace brenvik::step
