// The look of a part by its entity and its layer.
#include "drawing_view/part_looks.h"

#include "drafting_host/document/host_entity.h"
#include "drafting_host/document/host_layers.h"
#include "drafting_host/dxf/data/aci_colors.h"

namespace brenvik::desktop {

namespace {

Quantity_Color ColorOf(int index) {
    const ScreenColor color = ColorOfIndex(index < 1 || index > 255 ? 7 : index);
    return {color.red / 255.0, color.green / 255.0, color.blue / 255.0, Quantity_TOC_sRGB};
}

}  // namespace

Quantity_Color PartColor(const HostEntity& entity) {
    const int own = entity.Look().color;
    const int index = own == 256 || own == 0 ? entity.LayerObject().Values().color : own;
    if (index == 7) return {0.87, 0.78, 0.62, Quantity_TOC_sRGB};
    return ColorOf(index);
}

bool IsShown(const HostEntity& entity) {
    const LayerData& layer = entity.LayerObject().Values();
    return !entity.Erased() && entity.Look().visible && layer.on && !layer.frozen;
}

}  // namespace brenvik::desktop
