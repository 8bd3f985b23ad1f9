// Where an outside profile runs into the part so closely that a bit of some width can't follow it.
#pragma once

#include <optional>
#include <span>

#include "cnc/drawing/polyline_shape.h"

namespace brenvik {

/// The width of the narrowest place between sides of the outline that look at each other across air: a slot
/// open to the edge, a half-round notch. Looked for among places narrower than `wanted`, a bit's diameter;
/// null if such a bit reaches everywhere.
///
/// Inner corners don't count, be they sharp, chamfered or rounded: a round bit leaves them rounded, however
/// small it is. Nor do short sides that stand out. Good to a thousandth of the width. The outline runs
/// counter-clockwise.
std::optional<double> NarrowestPlace(std::span<const PathVertex> outline, double wanted);

}  // namespace brenvik
