// Counts that a file states of an entity's lists. The lists themselves are believed; a count that contradicts
// them says that something may be missing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/dxf/reading/reading.h"

namespace brenvik {

struct FalseCount {
    std::size_t line = 0;
    std::string text;  ///< The count stated, the one found, and the one that is used.
};

/// The counts among the groups of a light polyline or a spline that contradict it. One that isn't stated
/// contradicts nothing.
std::vector<FalseCount> FalseCountsOf(Groups groups, const EntityGeometry& geometry);

/// The same of the vertices of a polygon mesh, whose numbers are its rows and columns, and of the vertices
/// and faces of a polyface mesh, of which some programs write none. `stating` says who states them, as
/// "groups 71 and 72 state".
std::optional<std::string> FalseCountOfMesh(const PolylineData& polyline, std::string_view stating);

}  // namespace brenvik
