// Loops on free surfaces laid out in the parameters: with the curves that the text gives along with the
// coedges, and by projection where it gives none.
#pragma once

#include "drafting_host/acis/loop_chart.h"

namespace brenvik::acis {

/// Lays out one loop on a free surface, which has no turns: a seam is an edge that the loop passes twice.
/// Throws BadRecord (with the edge's record) when an edge leaves the surface or the loop is torn.
LoopChart ChartFreeLoop(const Handle(Geom_Surface) & surface, const LoopUse& loop, const Nodes& nodes);

}  // namespace brenvik::acis
