// UNION, SUBTRACT and INTERSECT. The first object selected stays: its handle, its layer and its data. The
// others are used up. Nothing in the drawing changes before the modeller has succeeded.
#include <algorithm>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/solids/operations.h"

namespace brenvik::host_commands {
namespace {

using solids::BooleanKind;
using Shapes = std::vector<HostShapeEntity*>;

/// Solids or regions among the chosen objects, whichever came first: the two don't mix.
Shapes Operands(const CommandSession& session, const std::vector<HostEntity*>& chosen) {
    Shapes operands;
    for (HostEntity* entity : chosen) {
        auto* shape = dynamic_cast<HostShapeEntity*>(entity);
        if (shape == nullptr || dynamic_cast<HostBody*>(entity) != nullptr) continue;
        if (operands.empty() || operands.front()->ObjectName() == shape->ObjectName())
            operands.push_back(shape);
    }
    if (operands.size() < chosen.size()) {
        session.Refuse(std::to_string(chosen.size() - operands.size()) +
                       " of the objects can't take part and were passed over.");
    }
    return operands;
}

/// All operands worked into the first one's shape, one after another; null where nothing is left.
TopoDS_Shape Worked(TopoDS_Shape shape, const Shapes& tools, BooleanKind kind) {
    for (const HostShapeEntity* tool : tools) {
        if (shape.IsNull()) break;
        shape = solids::Boolean(shape, tool->Shape(), kind);
    }
    return shape;
}

Shapes Others(const Shapes& operands) { return {operands.begin() + 1, operands.end()}; }

/// Puts the outcome into the object that stays. A shape that is still the same keeps all that is known of it.
void Finish(CommandSession& session, HostShapeEntity& kept, TopoDS_Shape shape, const Shapes& used) {
    if (shape.IsNull()) {
        kept.EraseAnyway();
        session.Tell("Nothing is left: the object was erased.");
    } else {
        if (!shape.IsEqual(kept.Shape())) kept.SetShape(std::move(shape));
        session.NoteChanged(kept);
    }
    for (HostShapeEntity* entity : used) entity->EraseAnyway();
}

Asking<void> Combine(CommandSession& session, BooleanKind kind) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    const Shapes operands = Operands(session, chosen);
    if (operands.size() < 2) {
        session.Refuse("At least 2 solids, or 2 regions of one plane, must be selected.");
        co_return;
    }
    const Shapes others = Others(operands);
    Finish(session, *operands.front(), Worked(operands.front()->Shape(), others, kind), others);
}

}  // namespace

Asking<void> Union(CommandSession& session) { return Combine(session, BooleanKind::Union); }

Asking<void> Intersect(CommandSession& session) { return Combine(session, BooleanKind::Intersect); }

Asking<void> Subtract(CommandSession& session) {
    session.Tell("Solids or regions to subtract from:");
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    const Shapes sources = Operands(session, chosen);
    if (sources.empty()) {
        session.Refuse("No solid or region was selected.");
        co_return;
    }
    session.Tell("Solids or regions to subtract:");
    const std::vector<HostEntity*> taken = co_await session.AskSelection(SelectFor::Changing);
    Shapes tools = Operands(session, taken);
    std::erase_if(tools, [&](const HostShapeEntity* tool) {
        return tool->ObjectName() != sources.front()->ObjectName() ||
               std::ranges::find(sources, tool) != sources.end();
    });
    // The selection was taken in an earlier call perhaps; what it held may be gone by now.
    for (const HostShapeEntity* source : sources) source->RequireChangeable();
    if (tools.empty()) {
        session.Refuse("No solid or region to subtract was selected.");
        co_return;
    }
    // Several sources become one object, as in a union, before anything is taken off.
    Shapes used = Others(sources);
    const TopoDS_Shape whole = Worked(sources.front()->Shape(), used, BooleanKind::Union);
    TopoDS_Shape rest = Worked(whole, tools, BooleanKind::Subtract);
    used.insert(used.end(), tools.begin(), tools.end());
    Finish(session, *sources.front(), std::move(rest), used);
}

}  // namespace brenvik::host_commands
