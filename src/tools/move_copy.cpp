// Moving and copying in the plane of the view. While the points are picked, the user coordinate system lies
// in that plane; the depth that the points have in it is dropped.
#include <optional>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "session/session.h"
#include "tools/change_or_tell.h"
#include "tools/drawing_tools.h"

namespace brenvik::commands {

namespace {

struct Shift {
    Point3 from, to;
};

/// The point in the plane of the user coordinate system, in world coordinates.
Point3 Flattened(AcadUtility& utility, const Point3& point) {
    Point3 own =
        utility.TranslateCoordinates(point, CoordinateSystem::World, CoordinateSystem::UserCoordinates);
    own.z = 0;
    return utility.TranslateCoordinates(own, CoordinateSystem::UserCoordinates, CoordinateSystem::World);
}

/// Null if a prompt is cancelled.
std::optional<Shift> AskShift(AcadUtility& utility) {
    Shift shift;
    const bool answered = Skip([&] {
        shift.from = utility.GetPoint("Pick a from point: ");
        shift.to = utility.GetPoint("Pick a to point: ");
    });
    if (!answered) return std::nullopt;
    return Shift{Flattened(utility, shift.from), Flattened(utility, shift.to)};
}

/// `act` is done to each selected entity; one that the host refuses stays as it is, and is reported.
template <class Act>
void InPlaneOfView(Act&& act) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    drawing.SendCommand("_ucs ");
    drawing.SendCommand("_v ");
    if (const std::optional<Shift> shift = AskShift(drawing.Utility())) {
        for (int i = 0; i < selected.Count(); ++i)
            ChangeOrTell(*selected.Item(i), [&](AcadEntity& entity) { act(entity, *shift); });
    }
    drawing.SendCommand("_ucs ");
    drawing.SendCommand("p ");
    drawing.SendCommand("snap\roff\r");
}

}  // namespace

void BVMove(AcadApplication&) {
    InPlaneOfView([](AcadEntity& entity, const Shift& shift) {
        entity.Move(shift.from, shift.to);
        entity.Update();
    });
}

void BVCopy(AcadApplication&) {
    InPlaneOfView([](AcadEntity& entity, const Shift& shift) {
        // A copy on a locked layer couldn't be moved and would lie within the original, a part too many.
        const std::string layer = entity.Layer();
        if (TheSession().AcadDoc->Layers().Item(layer)->Lock())
            throw PermissionDenied("its layer " + layer + " is locked");
        AcadEntity& copy = *entity.Copy();
        copy.Move(shift.from, shift.to);
        copy.Update();
    });
}

}  // namespace brenvik::commands
