// SOLIDEDIT: faces moved, offset and extruded, bodies checked and parted. The solid keeps handle, layer and
// data; a step that fails is reported and leaves it as it was.
#include "drafting_host/document/geometry/modeller_handle.h"

#include <TopExp_Explorer.hxx>
#include <functional>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/face_edits.h"
#include "drafting_host/command/commands/face_question.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/mass.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

/// What was there before a step, for the Undo of the menus.
struct Step {
    HostSolid* solid = nullptr;
    TopoDS_Shape before;
    std::vector<HostEntity*> made;
};
using Steps = std::vector<Step>;

void Undo(CommandSession& session, Steps& steps) {
    if (steps.empty()) {
        session.Refuse("There is nothing to undo.");
        return;
    }
    const Step step = std::move(steps.back());
    steps.pop_back();
    step.solid->RequireChangeable();
    step.solid->SetShape(step.before);
    for (HostEntity* entity : step.made) entity->EraseAnyway();
}

using Edit = std::function<TopoDS_Shape(const TopoDS_Shape&, std::span<const TopoDS_Face>)>;

void Change(CommandSession& session, Steps& steps, const ChosenFaces& chosen, const Edit& edit) {
    HostSolid& solid = *chosen.solid;
    try {
        solid.RequireChangeable();
        TopoDS_Shape result = edit(solid.Shape(), chosen.faces);
        if (result.IsEqual(solid.Shape())) return;
        steps.push_back({&solid, solid.Shape(), {}});
        solid.SetShape(std::move(result));
        session.NoteChanged(solid);
    } catch (const Failure& failure) {
        session.Refuse("The faces stay as they were: " +
                       (failure.detail().empty() ? failure.description() : failure.detail()) + ".");
    }
}

Asking<void> MoveFaces(CommandSession& session, Steps& steps, ChosenFaces chosen) {
    const Answered<Point3> base = co_await session.AskPoint("Base point or displacement:");
    const Answered<Point3> second =
        co_await session.AskPoint("Second point of displacement:", {}, IfEmpty::Allowed);
    const Point3 shift =
        second.value ? *second.value - *base.value : *base.value - session.UcsToWorld().Point({});
    Change(session, steps, chosen, [&](const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces) {
        return MovedFaces(solid, faces, shift);
    });
}

Asking<void> OffsetTheFaces(CommandSession& session, Steps& steps, ChosenFaces chosen) {
    const Answered<double> distance = co_await session.AskDistance("Offset distance:");
    Change(session, steps, chosen, [&](const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces) {
        return OffsetFaces(solid, faces, *distance.value);
    });
}

Asking<void> ExtrudeFaces(CommandSession& session, Steps& steps, ChosenFaces chosen) {
    const Answered<double> height = co_await session.AskDistance("Height of extrusion:");
    const Answered<double> taper =
        co_await session.AskAngle("Angle of taper for extrusion <0>:", {}, IfEmpty::Allowed);
    if (taper.Or(0) != 0) {
        session.Refuse("The faces stay as they were: only a taper angle of 0 is possible.");
        co_return;
    }
    Change(session, steps, chosen, [&](const TopoDS_Shape& solid, std::span<const TopoDS_Face> faces) {
        return ExtrudedFaces(solid, faces, *height.value);
    });
}

/// The face menu, until it is left.
Asking<void> EditFaces(CommandSession& session, Steps& steps) {
    HostSolid* solid = nullptr;
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Face editing option [Extrude/Move/Offset/Undo/eXit] <eXit>:", "Extrude Move Offset Undo eXit",
            IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) co_return;
        if (option.Is("Undo")) {
            Undo(session, steps);
            continue;
        }
        FaceQuestion question(session, solid != nullptr && !solid->Erased() ? solid : nullptr);
        const ChosenFaces chosen = co_await question;
        if (chosen.faces.empty()) {
            session.Refuse("No face was selected.");
            continue;
        }
        solid = chosen.solid;
        if (option.Is("Move")) co_await MoveFaces(session, steps, chosen);
        if (option.Is("Offset")) co_await OffsetTheFaces(session, steps, chosen);
        if (option.Is("Extrude")) co_await ExtrudeFaces(session, steps, chosen);
    }
}

/// Pieces that don't touch become solids of their own, with copies of the data.
void Part(CommandSession& session, Steps& steps, HostSolid& solid) {
    std::vector<TopoDS_Shape> pieces;
    for (TopExp_Explorer each(solid.Shape(), TopAbs_SOLID); each.More(); each.Next())
        pieces.push_back(each.Current());
    if (pieces.size() < 2) {
        session.Refuse("The solid is a single piece.");
        return;
    }
    Step step{&solid, solid.Shape(), {}};
    for (std::size_t i = 1; i < pieces.size(); ++i) {
        auto& copy = dynamic_cast<HostSolid&>(solid.CopyInto(solid.Owner()));
        copy.SetShape(pieces[i]);
        step.made.push_back(&copy);
    }
    solid.SetShape(pieces.front());
    session.NoteChanged(solid);
    for (HostEntity* copy : step.made) session.NoteChanged(*copy);
    steps.push_back(std::move(step));
}

/// The first solid of a selection, or null.
HostSolid* SolidOf(CommandSession& session, const std::vector<HostEntity*>& chosen) {
    for (HostEntity* entity : chosen)
        if (auto* solid = dynamic_cast<HostSolid*>(entity)) return solid;
    session.Refuse("No solid was selected.");
    return nullptr;
}

Asking<void> EditBodies(CommandSession& session, Steps& steps) {
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Body editing option [seParate solids/Check/Undo/eXit] <eXit>:", "seParate Check Undo eXit",
            IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) co_return;
        if (option.Is("Undo")) {
            Undo(session, steps);
            continue;
        }
        const std::vector<HostEntity*> chosen =
            co_await session.AskSelection(SelectFor::Changing, "Select a 3D solid:");
        HostSolid* solid = SolidOf(session, chosen);
        if (solid == nullptr) continue;
        if (option.Is("Check")) {
            session.Tell(solids::Valid(solid->Shape()) ? "The object is a valid solid."
                                                       : "The object is not a valid solid.");
        } else {
            Part(session, steps, *solid);
        }
    }
}

}  // namespace

Asking<void> Solidedit(CommandSession& session) {
    Steps steps;
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Solids editing option [Face/Body/Undo/eXit] <eXit>:", "Face Body Undo eXit", IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) co_return;
        if (option.Is("Face")) co_await EditFaces(session, steps);
        if (option.Is("Body")) co_await EditBodies(session, steps);
        if (option.Is("Undo")) Undo(session, steps);
    }
}

}  // namespace brenvik::host_commands
