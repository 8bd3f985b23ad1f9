// What is a plain value for each target: one table for all.
#pragma once

#include <span>
#include <string_view>

#include "cnc/part/target.h"
#include "settings/bit_choice.h"

namespace brenvik {

struct TargetTraits {
    Target target;
    std::string_view name;  ///< As users type it, in their case: "C2C", "Enroute".
    /// The first family keeps an edge bore as a circle with its normal; the second draws it as a flat
    /// rectangle on a side layer, since its receivers have no edge face.
    bool firstFamily;
    std::string_view horizontalWorkLayer;
    /// The dialog that asks for a bit when none fits a route that stops inside the part.
    ChoiceDialog choiceDialog;
    /// Names of layers hold the speeds of tools.
    bool speedsInNames;
    /// The work list that it writes, and the files that it clears at the start of a run.
    std::string_view list;
    std::span<const std::string_view> clearedLists;
};

/// The row of a target.
const TargetTraits& TraitsOf(Target target);

}  // namespace brenvik
