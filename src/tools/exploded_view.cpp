// The exploded view: parts move away from the world origin, or towards it, and stay whole.
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "session/session.h"
#include "tools/change_or_tell.h"
#include "tools/drawing_tools.h"

namespace brenvik::commands {

namespace {

double Middle(double min, double max) { return max - (max - min) / 2; }

void Spread(AcadEntity& entity, double factor) {
    const Box3 box = entity.GetBoundingBox();
    const Point3 middle{Middle(box.min.x, box.max.x), Middle(box.min.y, box.max.y),
                        Middle(box.min.z, box.max.z)};
    entity.Move(middle, {middle.x * factor, middle.y * factor, middle.z * factor});
}

}  // namespace

void BVExplode(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    double factor = 1;
    const bool answered = Skip([&] {
        // Parts spread about the world origin whatever point is picked; the host's users know the prompt.
        drawing.Utility().GetPoint("Pick a point for the center reference: ");
        factor = drawing.Utility().GetReal("Enter a numeric scale amount (a space terminates input): ");
    });
    if (!answered) return;
    for (int i = 0; i < selected.Count(); ++i) {
        AcadEntity& entity = *selected.Item(i);
        if (entity.ObjectName() == "AcDb3dSolid" || entity.ObjectName() == "AcDbBlockReference")
            ChangeOrTell(entity, [factor](AcadEntity& each) { Spread(each, factor); });
    }
}

}  // namespace brenvik::commands
