// What becomes of pockets that another path cuts too.
#pragma once

namespace brenvik {

struct RunState;

/// Deletes pockets that a through route cuts anyway: a circle "PKS" with the diameter and place of a circle
/// "RT_", and a polyline "PKC" with the footprint and the corners of a polyline "RT_".
void DropPocketsCutThrough(RunState& run);

/// Of two paths of one shape that both stop inside, deletes the shallower: where a pocket lies within a
/// pocket, its rim bounds the upper floor as well, and the deeper path takes all that stands there.
void DropPocketsCutDeeper(RunState& run);

/// With `PocketConversion` on, a pocket whose footprint strictly encloses a route's is cut as a route: the
/// receiver would clear the inside of the cut-out away. Only the first field of its layer's name changes.
void ConvertPockets(RunState& run);

}  // namespace brenvik
