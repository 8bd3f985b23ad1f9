// Reads drawings from DXF text.
#pragma once

#include <string_view>

#include "drafting_host/dxf/drawing_data.h"

namespace brenvik {

/// The drawing in an ASCII DXF file of release 12 to 2018, any line end, texts in UTF-8 or a Windows code
/// page. `fileName` is for messages only.
///
/// What can't be taken over is told in the drawing's notes, with its line: entities of kinds that a drawing
/// doesn't hold, damaged or cut-off ones, binary bodies of release 2013 and later, handles used twice. The
/// result is complete in itself: every name an entity uses stands in its table, every handle exists once.
///
/// Throws Failure 321 "Invalid file format", naming file, line, what was expected and what was found, for
/// content that is no ASCII DXF: an empty file, binary DXF, a binary drawing, a group code that is no number.
DrawingData ReadDxf(std::string_view content, std::string_view fileName);

}  // namespace brenvik
