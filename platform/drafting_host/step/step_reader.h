// Reading STEP files (AP203, AP214, AP242) with their assemblies.
#pragma once

#include <filesystem>

#include "base/length_unit.h"
#include "drafting_host/step/texts/step_document.h"

namespace brenvik::step {

/// Reads the solids of a STEP file: one per instance, nested assemblies resolved into world places.
/// Bodies of several solids give one entry each, with the same name.
///
/// Lengths come out in `unit`, whatever unit the file is written in; the document keeps the file's. The
/// name is the product's; where it has none the instance's, and where that is missing too the file's own
/// name, numbered when there are several. Names in an 8-bit code page are distinguished from UTF-8 and read
/// as Cyrillic or western text. Surfaces and wires without a solid are passed over with a note.
///
/// Throws Failure naming the file, the line where one is known, and what was expected there: 53 for a
/// missing file, 321 "Invalid file format" for anything that is no whole STEP file or holds no solid.
StepDocument ReadStep(const std::filesystem::path& path, LengthUnit unit = LengthUnit::Millimetre);

}  // namespace brenvik::step
