// What an explosion makes of an entity: the next simpler kind of entities, in order.
#pragma once

#include <vector>

#include "drafting_host/document/host_entity.h"

namespace brenvik {

/// Replaces an entity by its pieces, which take its layer and colour and stand last in drawing order: a
/// solid by a region per flat face and a body per other face, in the solid's order; a region or body by
/// its curves; a polyline by lines and arcs; a block reference by what its block holds. Gives the pieces;
/// none, with the entity left as it is, for everything that has no pieces. Extended data stay behind.
/// Throws Failure for an entity that is erased or on a locked layer.
std::vector<HostEntity*> ExplodeEntity(HostEntity& entity);

}  // namespace brenvik
