// The two straight edges that a part is squared by: the longest one of its largest flat face, and one that
// meets it in a corner. Found among the lines that the part's faces have been exploded to.
#pragma once

#include <string_view>
#include <variant>

#include "session/ports/host_interface.h"

namespace brenvik {

/// The source points for the host's align command: the first is moved to the origin, the second onto X, the
/// third to the side of +Y.
struct SquaringPoints {
    Point3 origin, onX, towardsY;
};

/// What is shown for a part without `MissingEdge::Line`.
inline constexpr std::string_view NoLineMessage =
    "This part does not have a line to work with, so this part will be skipped.";

enum class MissingEdge {
    Line,           ///< The part has no straight edge at all.
    ConnectedLine,  ///< None meets the longest one in its start.
};

/// `faceNormal` is the unit normal of the largest face. Lines that the host won't measure are passed over.
std::variant<SquaringPoints, MissingEdge> FindSquaringPoints(AcadDocument& drawing, const Point3& faceNormal);

/// Squares all that stands on unlocked layers to the axes of the drawing. `sideOfY` is a point on the
/// positive Y axis, as text with a closing blank.
void SquareToAxes(AcadDocument& drawing, const SquaringPoints& points, std::string_view sideOfY);

}  // namespace brenvik
