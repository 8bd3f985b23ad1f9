// A point of the drawing that a place on the screen means, and why.
#pragma once

#include <string_view>

#include "session/ports/host_interface.h"

namespace brenvik::desktop {

/// Of two that lie at one place, the earlier counts.
enum class SnapKind { End, Middle, Centre, Intersection, Perpendicular, Face, Free };

struct Snap {
    SnapKind kind = SnapKind::Free;
    Point3 point;  ///< World coordinates.
};

/// As a person says it: "End point".
std::string_view WordsOf(SnapKind kind);

}  // namespace brenvik::desktop
