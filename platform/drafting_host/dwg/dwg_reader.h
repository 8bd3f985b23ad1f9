// Reads drawings from binary drawing files (DWG).
#pragma once

#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// The drawing in a DWG of release 13 to 2018. `fileName` is for messages only.
///
/// Object by object: a damaged one loses only itself. It is reported in the drawing's notes with its handle
/// and place, as are kinds that a drawing doesn't hold. The result is complete in itself, as one from DXF is.
///
/// Throws Failure 321 "Invalid file format", naming file, place and what was expected, for another release,
/// for a drawing behind a password, and for a file whose own tables are damaged.
DrawingData ReadDwg(std::string_view content, std::string_view fileName);

}  // namespace brenvik
