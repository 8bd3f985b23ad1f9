// The host's join command, and what it works on: loose curves before, contours after.
#pragma once

#include <string_view>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Joins one chain of what stands on unlocked layers: lines and arcs become one polyline.
inline constexpr std::string_view JoinCommand = "pedit\rall\ry\rj\rall \r\r";

/// Takes apart what stands on unlocked layers: solids to regions and bodies, those to curves.
inline constexpr std::string_view ExplodeCommand = "explode\rall\r\r";

/// How many lines and arcs stand on a layer; stops counting at `most`.
int CurvesOn(AcadDocument& drawing, std::string_view layer, int most);

/// A closed polyline with an area: three vertices, or two with an arc between them.
bool IsContour(const AcadLWPolyline& polyline);

}  // namespace brenvik
