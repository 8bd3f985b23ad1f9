// Reads drawings from DXF files.
#pragma once

#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// The drawing in a DXF file of release 12 to 2018: ASCII with any line end, or binary; texts in UTF-8 or a
/// Windows code page. `fileName` is for messages only.
///
/// What can't be taken over is reported in the drawing's notes: with its line, or its place in bytes in a
/// binary file: entities of kinds that a drawing doesn't hold, damaged or cut-off ones, handles used twice.
/// The result is complete in itself: every name an entity uses stands in its table, every handle exists once.
///
/// Throws Failure 321 "Invalid file format", naming file, place, what was expected and what was found, for
/// content that is no DXF: one without a section, a group code that is no number or has no kind. What a file
/// of another kind is, the caller knows (`KindOfContent`).
DrawingData ReadDxf(std::string_view content, std::string_view fileName);

}  // namespace brenvik
