// STRETCH: what a crossing window holds is shifted, and what reaches out of it gets longer or shorter.
#include "drafting_host/document/geometry/modeller_handle.h"

#include <algorithm>
#include <optional>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/shift_question.h"
#include "drafting_host/command/commands/stretched_solid.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/picking.h"
#include "drafting_host/document/geometry/host_failure.h"

namespace brenvik::host_commands {

namespace {

using Windows = std::vector<SelectionWindow>;

bool Holds(const Windows& windows, const Point3& point) {
    return std::ranges::any_of(windows,
                               [&](const SelectionWindow& window) { return ShownWithin(window, point); });
}

/// All of an object, by its box.
bool HoldsWhole(const Windows& windows, const HostEntity& entity) {
    const Box3 box = entity.GetBoundingBox();
    for (const double x : {box.min.x, box.max.x})
        for (const double y : {box.min.y, box.max.y})
            for (const double z : {box.min.z, box.max.z})
                if (!Holds(windows, {x, y, z})) return false;
    return true;
}

/// A solid with the shape that it is to have.
struct Stretched {
    HostSolid* solid = nullptr;
    TopoDS_Shape shape;
};

/// What the command does, found out ahead of any change.
struct Changes {
    std::vector<Stretched> solids;
    std::vector<HostEntity*> moved;
    int partly = 0;
};

TopoDS_Shape ShapeOf(const Windows& windows, const HostSolid& solid, const Point3& offset) {
    const IsMoved isMoved = [&](const gp_Pnt& point) {
        return Holds(windows, {point.X(), point.Y(), point.Z()});
    };
    try {
        return StretchedSolid(solid.Shape(), isMoved, offset);
    } catch (const Failure& failure) {
        throw host_failure::NotPossible(
            "the solid " + solid.Handle() + " can't be stretched, and nothing is changed: " +
            (failure.detail().empty() ? failure.description() : failure.detail()));
    }
}

Changes PlannedFor(const std::vector<HostEntity*>& chosen, const Windows& windows, const Point3& offset) {
    Changes changes;
    for (HostEntity* entity : chosen) {
        entity->RequireChangeable();
        if (windows.empty() || HoldsWhole(windows, *entity)) {
            changes.moved.push_back(entity);
            continue;
        }
        auto* const solid = dynamic_cast<HostSolid*>(entity);
        if (solid == nullptr) {
            ++changes.partly;
            continue;
        }
        TopoDS_Shape shape = ShapeOf(windows, *solid, offset);
        if (!shape.IsSame(solid->Shape())) changes.solids.push_back({solid, std::move(shape)});
    }
    return changes;
}

}  // namespace

Asking<void> Stretch(CommandSession& session) {
    SelectionQuestion question =
        session.AskSelection(SelectFor::Changing, "Select objects:", SelectFirst::Crossing);
    const std::vector<HostEntity*> chosen = co_await question;
    if (chosen.empty()) {
        // The points that follow in a macro come to the command line: its complaints alone would be a riddle.
        session.Refuse("No objects were found: STRETCH ends.");
        co_return;
    }
    const Shift shift = co_await AskShift(session);
    // Without a window there is nothing that could be left behind: all of it moves.
    Changes changes = PlannedFor(chosen, question.CrossingWindows(), shift.offset);
    for (Stretched& one : changes.solids) {
        one.solid->SetShape(std::move(one.shape));
        session.NoteChanged(*one.solid);
    }
    for (HostEntity* entity : changes.moved) entity->Transform(Similarity::Shift(shift.offset));
    if (changes.partly > 0)
        session.Refuse(std::to_string(changes.partly) +
                       " found partly in the window, which are no solids and stay as they are.");
}

}  // namespace brenvik::host_commands
