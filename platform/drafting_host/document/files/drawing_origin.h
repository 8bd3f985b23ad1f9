// Whose a file is. What this program saved holds nothing that it doesn't know, so a newer saving may take its
// place; a drawing of another program may hold more than is read of it.
#pragma once

#include <filesystem>
#include <string>

namespace brenvik {

/// DXF text with a comment at its head that names this program. Readers pass over comments, and another
/// program that saves the drawing anew doesn't write this one again. STEP and ACIS text name the program in
/// their heads by themselves.
std::string SignedDxf(std::string dxf);

/// What stands at a place that a saved drawing may not take, such as "a STEP file of another program". Blank
/// where nothing stands there, an empty file, or a drawing that this program has saved. Throws Failure as
/// reading STEP does, where the library that knows STEP can't be opened.
std::string ForeignFileAt(const std::filesystem::path& place);

/// What stands at a place that no other output may take, whoever wrote it: "a STEP file", "a DXF drawing".
/// Blank for all that is no drawing.
std::string DrawingAt(const std::filesystem::path& place);

}  // namespace brenvik
