// Texts that are read back before they count: tomorrow's drawing holds today's body, or saving reports the
// difference.
#pragma once

#include "drafting_host/acis/acis_text.h"

#include <optional>

namespace brenvik::acis {

/// True where nothing but planes, cylinders and cones with lines, circles and ellipses bounds the body, each
/// edge on both of its faces and each vertex on its edges. A text of such a body holds its very numbers, and
/// reading lays it out by formula, so it needs no trial.
bool FitsPlainly(const TopoDS_Shape& shape);

/// What is lost or changed when the text of a shape is read again: the solids, the faces, the size of each,
/// the corners, or the volume. Empty where nothing is.
std::optional<std::string> ReadBackFault(const TopoDS_Shape& shape, const std::vector<std::string>& lines);

}  // namespace brenvik::acis
