// Hiding what is in the way, and showing it again.
#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "session/message.h"
#include "session/session.h"
#include "tools/drawing_tools.h"

namespace brenvik::commands {

namespace {

constexpr auto VisibleKinds = std::to_array<std::string_view>({"AcDbRegion",
                                                               "AcDbLine",
                                                               "AcDbArc",
                                                               "AcDbCircle",
                                                               "AcDbPolyline",
                                                               "AcDb3dSolid",
                                                               "AcDbLWPolyline",
                                                               "AcDb2dPolyline",
                                                               "AcDb3dPolyline",
                                                               "AcDbFace",
                                                               "AcDbXline",
                                                               "AcDbText",
                                                               "AcDbPolygonMesh",
                                                               "AcDbAlignedDimension",
                                                               "AcDb2LineAngularDimension",
                                                               "AcDbRotatedDimension",
                                                               "AcDbDiametricDimension",
                                                               "AcDbRadialDimension",
                                                               "AcDbEllipse",
                                                               "AcDbSpline",
                                                               "AcDbMline",
                                                               "AcDbMText",
                                                               "AcDbLeader",
                                                               "AcDbBody",
                                                               "AcDbSolid"});

bool IsOfVisibleKind(const AcadEntity& entity) {
    return std::find(VisibleKinds.begin(), VisibleKinds.end(), entity.ObjectName()) != VisibleKinds.end();
}

/// An entity on a locked layer can't be changed: the layer is opened, and locked again whatever happens.
void SetVisibility(AcadDocument& drawing, AcadEntity& entity, bool visible) {
    AcadLayer& layer = *drawing.Layers().Item(entity.Layer());
    if (!layer.Lock()) {
        entity.SetVisible(visible);
        entity.Update();
        return;
    }
    layer.SetLock(false);
    const std::optional<Failure> failure = Attempt([&] { entity.SetVisible(visible); });
    layer.SetLock(true);
    if (failure) throw *failure;
}

/// Shows or hides all entities of model space that aren't so yet.
void SetAll(AcadDocument& drawing, bool visible) {
    drawing.ModelSpace().ForEach([&](AcadEntity& entity) {
        if (IsOfVisibleKind(entity) && entity.Visible() != visible) SetVisibility(drawing, entity, visible);
    });
}

void SetMembers(AcadDocument& drawing, AcadSelectionSet& set, bool visible) {
    for (int i = 0; i < set.Count(); ++i)
        if (AcadEntity& entity = *set.Item(i); IsOfVisibleKind(entity))
            SetVisibility(drawing, entity, visible);
}

}  // namespace

void ShowAllEntities(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& all = FreshSet(drawing, "SHOWALL");
    all.Select(SelectMode::All);
    ShowAndResume([](const Failure& failure) { ShowMessage(failure.description()); },
                  [&] { SetAll(drawing, true); });
    all.Delete();
}

void ShowSelectedOnly(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    FreshSet(drawing, "SHOWALL").Select(SelectMode::All);
    SetAll(drawing, false);
    SetMembers(drawing, selected, true);
}

void HideSelectedEntities(AcadApplication&) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    AcadSelectionSet& selected = FreshSet(drawing, "prev");
    selected.Select(SelectMode::Previous);
    if (selected.Count() == 0) return;
    SetMembers(drawing, selected, false);
    selected.Delete();
}

}  // namespace brenvik::commands
