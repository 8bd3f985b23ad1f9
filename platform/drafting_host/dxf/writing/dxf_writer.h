// Writes drawings as DXF text.
#pragma once

#include <string>
#include <vector>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// The drawing as an ASCII DXF file, lines ended by "\r\n", whole: with every
/// table, block, owner and dictionary that strict readers look for. Reading it again gives the same drawing,
/// and writing that the same bytes.
///
/// Handles are kept; entities and tables without one get one from `handleSeed` on. What the drawing names
/// and doesn't hold (layers, linetypes, text styles, applications) is added to its tables. Text beyond ASCII
/// is written as "\U+XXXX"; the 255 that an item of extended data may hold counts the characters of the
/// text itself (UTF-16 units), not the bytes of its escapes, which a reader undoes before it counts.
/// An arc all the way round is written as a circle.
///
/// The release is 2000 (AC1015) for a drawing made here or read from an older file, else that of the file
/// that was read, 2010 at most where there are bodies, which are written as text. What was read and has no
/// value in the drawing is written as it was; references to what is gone since are taken out or become 0.
/// What the release has no form for is left out and reported in `unkept`, one line for each kind.
///
/// Throws Failure 5 "Invalid procedure call or argument", naming the thing, for a layer name with one of
/// < > / \ " : ; ? * = | or the backquote in it, names that stand twice in a table, a polyline without
/// vertices, a reference to a missing block, a body of binary ACIS data, extended data that is too long or of
/// another type than its code, and numbers that are not finite.
std::string WriteDxf(const DrawingData& data, std::vector<std::string>& unkept);
/// The same for drawings that were made here.
std::string WriteDxf(const DrawingData& data);

}  // namespace brenvik
