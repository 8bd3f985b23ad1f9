// What the layers of a written part say, read back: the counterpart of the tables that name paths, holes,
// bores and sheets.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "cnc/part/target.h"
#include "cnc/targets/bore_rules.h"

namespace brenvik {

enum class OperationKind {
    Outline,
    Route,   ///< Followed along its line.
    Pocket,  ///< Cleared.
    Path,    ///< One of the three above, by the entity: this target has one name for all.
    Hole,    ///< Vertical.
    Bore,    ///< In an edge.
    Sheet,
};

/// The contents of a name; values that it doesn't hold are empty. Lengths are in the units of the run.
struct OperationName {
    OperationKind kind = OperationKind::Path;
    std::optional<double> depth = {};     ///< Of a sheet the thickness.
    std::optional<double> diameter = {};  ///< Of a path's bit; of a hole or a bore itself.
    std::optional<double> height = {};    ///< Of a bore's axis over the underside, as the part lies.
    std::optional<PartSide> side = {};    ///< Of a bore.
    bool through = false;                 ///< A hole that the name itself says to go right through.
    std::string tool, speed, feed, compensation;
    std::optional<int> counter = {};
    /// How far a number of the name may be from the part's: half a step of its last digit.
    double rounding = 0;
};

/// What has to be known to read a name.
struct NameContext {
    Target target = Target::C2C;
    bool metric = true;
    /// The tools of the part's material: if a number follows the tool without a mark between them, they show
    /// where it begins.
    std::span<const std::string> tools = {};
    /// The depth that the entity has, which decides where two tools fit such a name.
    std::optional<double> depthOfEntity = {};
};

/// Null for a layer that is no operation's of this target.
std::optional<OperationName> ReadOperationName(const NameContext& context, std::string_view layer);

}  // namespace brenvik
