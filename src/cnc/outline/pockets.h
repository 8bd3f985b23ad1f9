// What becomes of pockets that a through route meets.
#pragma once

namespace brenvik {

struct RunState;

/// Deletes pockets that a through route cuts anyway: a circle "PKS" with the diameter and place of a circle
/// "RT_", and a polyline "PKC" with the footprint of a polyline "RT_".
void DropPocketsCutThrough(RunState& run);

/// With `PocketConversion` on, a pocket whose footprint strictly encloses a route's is cut as a route: the
/// receiver would clear the inside of the cut-out away. Only the first field of its layer's name changes.
void ConvertPockets(RunState& run);

}  // namespace brenvik
