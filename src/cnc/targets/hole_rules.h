// How each target wants a vertical hole: the layer that names it, and what depth travels in the circle.
#pragma once

#include <string>

#include "cnc/part/target.h"

namespace brenvik {

struct RunState;

/// Where the bit enters: on the top face, or on the floor of a recess.
enum class HoleStart { TopFace, Recess };

/// One hole, in the units of the run. `depth` and `drilled` count from the top plane down.
struct HoleCut {
    HoleStart start = HoleStart::TopFace;
    bool through = false;
    double depth = 0;    ///< To the hole's floor.
    double drilled = 0;  ///< The same plus the bit's travel into the spoil board.
    double diameter = 0;
    double circleZ = 0;  ///< Where the operation's circle lies when it is named.
};

/// The heights that a hole's depth is worked out from.
struct HoleHeights {
    double top = 0;         ///< The plane that the depth counts from.
    double floor = 0;       ///< The hole's floor.
    double fullHeight = 0;  ///< The highest Z of the part.
};

/// Depth, through or blind, and the drilled depth by the rules of the run's target. `spoil` is how far the
/// bit goes on behind a through hole, for the targets that want it.
HoleCut CutOf(const RunState& run, HoleStart start, const HoleHeights& heights, double spoil);

/// The layer of the hole's circle.
std::string HoleLayerName(const RunState& run, const HoleCut& cut);

/// The thickness left on the circle: the drilled depth downwards, or 0 for the targets whose depth travels
/// in the name alone.
double HoleThickness(const RunState& run, const HoleCut& cut);
/// Whether the target's circles have a thickness at all.
bool HolesKeepThickness(Target target);

}  // namespace brenvik
