// Tongues of an outline: what stands out from an edge between two shoulders, and the moves that bring the
// cutter off each flank and onto the tip.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "cnc/drawing/polyline_shape.h"
#include "cnc/part/part_side.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// The tip of a tongue: a straight side of the outline that lies in an edge of the part's box (5 decimals),
/// with straight flanks that go in from both its ends to a shoulder.
struct TongueTip {
    PartSide side = PartSide::Left;
    std::size_t from = 0, to = 0;  ///< Vertices of the outline, in its order.
    Point3 start, end;             ///< In plan.
    double length = 0;
};

/// The tips of a closed outline, edge by edge from Left to Back, in the outline's order on each.
std::vector<TongueTip> TongueTips(std::span<const PathVertex> outline, const Box3& part);

/// How far the cutter runs off a flank and comes in before a tip: a quarter more than its diameter, since a
/// path at half a diameter's distance inside the loop has to have room to turn.
double LeadOf(double toolDiameter);

/// The outline with three vertices in place of each corner of a tip: straight on in the line of the side
/// that ends there, by `lead`; across; and back in the line of the side that begins there. All three lie
/// on the box or outside of it.
std::vector<PathVertex> WithLeads(std::span<const PathVertex> outline, std::span<const TongueTip> tips,
                                  double lead);

}  // namespace brenvik
