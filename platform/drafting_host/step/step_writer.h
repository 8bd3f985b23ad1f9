// Writing STEP files (AP214) with assemblies, names, layers and colours.
#pragma once

#include <filesystem>
#include <span>

#include "drafting_host/step/step_document.h"

namespace brenvik::step {

/// Writes the solids in millimetres. Solids with the same assembly name become one assembly; those
/// without stand alone. Text outside of ASCII is written in the format's own escapes, which every reader
/// knows.
///
/// The file appears whole or not at all: it is written beside its place under another name and then
/// renamed. Throws Failure: 5 when there is no solid to write or the modeller can't write one, 75 when
/// the file can't be written.
void WriteStep(const std::filesystem::path& path, std::span<const StepSolid> parts);

}  // namespace brenvik::step
