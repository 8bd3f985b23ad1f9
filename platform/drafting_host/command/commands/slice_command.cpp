// SLICE: cuts solids at a plane and keeps one side, or both as two solids with the same data.
#include "drafting_host/document/geometry/modeller_handle.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <algorithm>
#include <gp_Ax3.hxx>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/commands/plane_question.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/operations.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

/// The two parts of a solid; one is null where the plane misses it.
struct Halves {
    TopoDS_Shape above, below;
};

/// A block that stands on the plane and holds all of the solid on the normal's side; null where there is
/// nothing on that side.
TopoDS_Shape BlockAbove(const TopoDS_Shape& solid, const WorldPlane& plane) {
    const Axes axes = ObjectAxes(plane.normal);
    const gp_Ax3 frame(gp_Pnt(plane.point.x, plane.point.y, plane.point.z),
                       gp_Dir(axes.z.x, axes.z.y, axes.z.z), gp_Dir(axes.x.x, axes.x.y, axes.x.z));
    const solids::Box box = solids::ExactBoxIn(solid, frame);
    if (box.max.Z() <= PointTolerance) return {};
    // Well clear of the solid all around, so that no face of the block but its base touches it.
    const double margin = 1 + std::max({box.SizeX(), box.SizeY(), box.SizeZ()});
    ShapeData block{AcisData::Kind::Solid, solids::Guarded("slice", [&]() -> TopoDS_Shape {
                        return BRepPrimAPI_MakeBox(
                                   gp_Pnt(box.min.X() - margin, box.min.Y() - margin, 0),
                                   gp_Pnt(box.max.X() + margin, box.max.Y() + margin, box.max.Z() + margin))
                            .Solid();
                    })};
    Transform(block, Similarity::FromFrame(plane.point, axes.x, axes.y));
    return block.shape;
}

Halves Sliced(const TopoDS_Shape& solid, const WorldPlane& plane) {
    const TopoDS_Shape block = BlockAbove(solid, plane);
    if (block.IsNull()) return {{}, solid};
    const TopoDS_Shape below = solids::Boolean(solid, block, solids::BooleanKind::Subtract);
    if (below.IsNull()) return {solid, {}};
    return {solids::Boolean(solid, block, solids::BooleanKind::Intersect), below};
}

/// Which parts stay: the solid itself takes the first of them, a copy the second.
enum class Keep { Above, Below, Both };

void Apply(CommandSession& session, HostSolid& solid, const Halves& halves, Keep keep) {
    session.NoteChanged(solid);
    switch (keep) {
        case Keep::Above:
            solid.SetShape(halves.above);
            return;
        case Keep::Below:
            solid.SetShape(halves.below);
            return;
        case Keep::Both: {
            auto& copy = dynamic_cast<HostSolid&>(solid.CopyInto(solid.Owner()));
            solid.SetShape(halves.above);
            copy.SetShape(halves.below);
            session.NoteChanged(copy);
            return;
        }
    }
}

std::vector<HostSolid*> SolidsOf(const std::vector<HostEntity*>& chosen) {
    std::vector<HostSolid*> result;
    for (HostEntity* entity : chosen)
        if (auto* solid = dynamic_cast<HostSolid*>(entity)) result.push_back(solid);
    return result;
}

/// Asks for the side until a point off the plane, or both sides, is answered.
Asking<Keep> AskSide(CommandSession& session, WorldPlane plane) {
    for (;;) {
        const Answered<Point3> side =
            co_await session.AskPoint("Point on the side to keep or [keep Both sides]:", "Both");
        if (side.Is("Both")) co_return Keep::Both;
        const double height = Dot(*side.value - plane.point, plane.normal);
        if (std::abs(height) > PointTolerance) co_return height > 0 ? Keep::Above : Keep::Below;
        session.Refuse("The point lies on the plane: a point on one side of it is expected.");
    }
}

}  // namespace

Asking<void> Slice(CommandSession& session) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    const std::vector<HostSolid*> slicing = SolidsOf(chosen);
    if (slicing.empty()) {
        session.Refuse("No solid was selected.");
        co_return;
    }
    const WorldPlane plane = co_await AskPlane(session, "slicing plane");
    const Keep keep = co_await AskSide(session, plane);
    // All are cut before any is changed: a solid that the modeller can't cut leaves the others whole.
    std::vector<Halves> cut;
    for (const HostSolid* solid : slicing) {
        solid->RequireChangeable();
        cut.push_back(Sliced(solid->Shape(), plane));
    }
    int missed = 0;
    for (std::size_t i = 0; i < cut.size(); ++i) {
        if (cut[i].above.IsNull() || cut[i].below.IsNull())
            ++missed;
        else
            Apply(session, *slicing[i], cut[i], keep);
    }
    if (missed > 0) session.Refuse("The plane misses " + std::to_string(missed) + " of the solids.");
}

}  // namespace brenvik::host_commands
