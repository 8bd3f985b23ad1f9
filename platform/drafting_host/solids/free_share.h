// What a free face adds to a volume, by its surface's spans.
#pragma once

#include <TopoDS_Face.hxx>
#include <gp_XYZ.hxx>
#include <optional>

namespace brenvik::solids {

/// A third of the flux of (p - origin) through the face, with its side. The modeller's own rule takes too few
/// points where a profile has many spans, and is off by up to 8 percent there. Null for a face with an
/// edge that has no trace on it, and for one of so many spans that this would take long.
std::optional<double> FreeShare(const TopoDS_Face& face, const gp_XYZ& origin);

}  // namespace brenvik::solids
