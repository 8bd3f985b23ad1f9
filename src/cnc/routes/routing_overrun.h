// Paths that meet the edge of a part run off it, or the round bit would leave a radius at the edge.
#pragma once

#include "session/ports/host_interface.h"

namespace brenvik {

/// How far a bit runs over the edge: its diameter divided by 1.75, rounded to 5 decimals.
double OverrunOf(double toolDiameter);

/// Moves the corners of a closed path that lie on the sides of the part's box (5 decimals) outwards by
/// `overrun`, and by 0.00001 more from one move to the next, so that no two of them coincide. A straight
/// wall that meets the edge at a slant is prolonged in its own line, and an arc that ends at the edge keeps
/// its shape and gets a straight piece behind it. Where such a wall makes a corner sharper than a right angle
/// the whole end goes further, by what the bit leaves round there. A corner that only touches the edge from
/// inside stays.
void RunOffEdges(AcadLWPolyline& path, const Box3& part, double overrun);

}  // namespace brenvik
