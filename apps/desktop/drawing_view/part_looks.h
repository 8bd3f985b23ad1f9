// How a part is shown, and whether it is; and the light and the ground that it is seen by.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <AIS_Shape.hxx>
#include <Bnd_Box.hxx>
#include <Quantity_Color.hxx>
#include <V3d_View.hxx>
#include <V3d_Viewer.hxx>

namespace brenvik {
class HostDocument;
class HostEntity;
}  // namespace brenvik

namespace brenvik::desktop {

/// That of the entity or its layer. Boards are seldom coloured: where that would be white, they are wood.
Quantity_Color PartColor(const HostEntity& entity);
/// Changes with what PartColor goes by.
int ColorKey(const HostEntity& entity);
bool IsShown(const HostEntity& entity);
/// The longest side of its box.
double SizeOf(const HostEntity& entity);
/// Around the solids of model space that are shown; void where there are none.
Bnd_Box BoxOfShown(HostDocument& document);

/// What the picture of a part depends on beside its shape.
struct PartLook {
    Quantity_Color color;
    /// Selected: blue, with bright edges, whatever the part's own colour.
    bool marked = false;
    bool onDarkGround = false;
    friend bool operator==(const PartLook& one, const PartLook& other) {
        return one.color.IsEqual(other.color) && one.marked == other.marked &&
               one.onDarkGround == other.onDarkGround;
    }
};

/// Faces in the part's colour, its edges so that they are seen on them, and in a wireframe on the ground.
void Dress(AIS_Shape& part, const PartLook& look);
/// What the mouse points at.
Quantity_Color PointedColor();
/// The edges of what is selected.
Quantity_Color MarkedEdgeColor();

void LightUp(V3d_Viewer& viewer);
/// The ground behind the parts, and the axes in its corner.
void LayGround(V3d_View& view, bool dark);

}  // namespace brenvik::desktop
