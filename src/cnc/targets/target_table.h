// What each target calls paths and sheets.
#pragma once

#include <string>
#include <string_view>

#include "cnc/part/target_traits.h"
#include "settings/bit_choice.h"

namespace brenvik {

struct RunState;

/// What a path is on the part.
enum class RouteRole {
    Inside,         ///< A route or pocket that stops inside the part.
    CirclePocket,   ///< A circle that stops inside.
    Through,        ///< A cut-out.
    ThroughCircle,  ///< A circular cut-out.
    Outline,        ///< The outside profile, with the material's first tool.
    ChosenOutline,  ///< The outside profile where another tool was chosen for it.
};

/// How names of the first family (but THERM's) begin: of an outline, and of a route. Those of pockets begin
/// with their `PathKindText`.
inline constexpr std::string_view OutlinePrefix = "OT_", RoutePrefix = "RT_";

/// The layer of a path: depth in the units of the run, tool and counter from the run's state (an outline
/// for which none was chosen takes the material's first tool).
std::string RouteLayerName(const RunState& run, RouteRole role, PathKind kind, double depth);

/// The layer of the part's sheet; blank for a target that wants none.
std::string SheetLayerName(const RunState& run, double thickness);

/// The cutter compensation of layer names, from the material's direction: "0" for "cc", "1" for "c".
std::string CompensationText(const RunState& run);

/// The number with as many decimals as the scale asks for; blank for an unknown scale.
std::string ScaledNumberText(const RunState& run, double value, int metric, int imperial,
                             std::string_view mark = "p");

/// BW's whole numbers: hundredths of a millimetre or ten-thousandths of an inch; blank for an unknown scale.
std::string WholeNumberText(const RunState& run, double value);

/// The value in units of the last of `digits` decimals, as BW's names have it: 0.75 with 4 is "7500".
std::string WholeNumberText(double value, int digits);

}  // namespace brenvik
