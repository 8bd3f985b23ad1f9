// The operations of a written part file, as its receiver gets them, brought into the frame of the first side:
// the part's low corner at the origin, its top face at its thickness.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "cnc/proof/operation_names.h"
#include "session/ports/host_interface.h"
#include "session/ports/section_port.h"
#include "settings/materials.h"

namespace brenvik {

struct WrittenOperation {
    OperationKind kind = OperationKind::Path;  ///< Never Path or Sheet.
    std::string layer;
    bool secondSide = false;
    /// What it takes away: the prism over its sides between two heights, or a cylinder that lies level.
    std::vector<PlanSide> sides;
    double low = 0, high = 0;
    /// The diameter of the bit of a path; 0 for drilled holes, and if no bit is known.
    double bit = 0;
    /// A route that stops inside: it clears no more than its bit's width along its line.
    bool followed = false;
    std::optional<LevelRound> bore = {};
    /// How far the bore goes; its `on` is the mouth and its `along` looks into the part.
    double boreDepth = 0;
    /// The bore's height is nowhere in the file, so any bore of the part that it lies over will do.
    bool heightUnknown = false;
    /// By how much the name that gives its height may have rounded it.
    double heightRounding = 0;
};

struct WrittenSide {
    std::vector<WrittenOperation> operations;
    /// Faults of the file itself, in words.
    std::vector<std::string> faults;
};

struct SideContext {
    Target target = Target::C2C;
    bool metric = true;
    bool secondSide = false;
    /// The part's size in width and thickness as it lies; a thickness of 0 where nobody knows it.
    double width = 0, thickness = 0;
    std::span<const std::string> tools = {};
    /// Those of the part's material, for paths whose names have no diameter.
    std::span<const MaterialTool> bits = {};
    /// How far above the spoil board cuts right through stop, by a setting: the board is held by the skin
    /// that is left, and what such a cut goes around falls out all the same.
    double skin = 0;
};

/// Of the document as it has been saved.
WrittenSide ReadWrittenSide(AcadDocument& drawing, const SideContext& context);

/// The same for one entity, added to `side`.
void ReadWrittenEntity(const AcadEntity& entity, const SideContext& context, WrittenSide& side);

}  // namespace brenvik
