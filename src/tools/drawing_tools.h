// The small drawing tools: showing and hiding, moving and copying in the plane of the view, groups by sub
// assembly, the exploded view, and sections. Each works on the host's previous selection.
#pragma once

namespace brenvik {

class AcadApplication;

namespace commands {

// selection_display.cpp. They act on the 25 kinds of entities that a drawing of parts is made of; any other
// kind, such as an ordinate dimension, stays as it is. A locked layer is opened for the moment of the change.

/// Every entity of model space is visible again. A failure is shown as a box with its description.
void ShowAllEntities(AcadApplication& app);
/// Only the selected entities are visible.
void ShowSelectedOnly(AcadApplication& app);
/// The selected entities are hidden; nothing happens with an empty selection.
void HideSelectedEntities(AcadApplication& app);

// move_copy.cpp. Two points are asked for; what happens is flat in the plane of the view, however far apart
// in depth the points lie. A cancelled prompt leaves everything in its place.

void BVMove(AcadApplication& app);
/// The originals stay, the copies carry all part data.
void BVCopy(AcadApplication& app);

// part_groups.cpp

/// Rebuilds the drawing's groups from the selection: one for each sub assembly, its name in upper case.
void BVGroup(AcadApplication& app);

// exploded_view.cpp

/// Spreads solids and block references about the world origin by a factor that is asked for.
void BVExplode(AcadApplication& app);

// sections.cpp

/// A section view in the current viewport: the view, and the clipping at the picked point.
void BVSection1(AcadApplication& app);
/// The same, with the selected solids on a layer that only this viewport shows.
void BVSection2(AcadApplication& app);
/// Hidden-line plotting on for all viewports, clipping off in the new view.
void BVMakeView(AcadApplication& app);
void BVFreezeSections(AcadApplication& app);
void BVUNFreezeSections(AcadApplication& app);

}  // namespace commands

}  // namespace brenvik
