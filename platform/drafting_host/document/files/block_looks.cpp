// A colour by layer stays one where the layer is the entity's own, so that a later change of the layer shows.
#include "drafting_host/document/files/block_looks.h"

#include "drafting_host/document/host_entity.h"
#include "drafting_host/document/host_layers.h"
#include "drafting_host/document/kept_groups.h"
#include "drafting_host/dxf/data/kept_text.h"

namespace brenvik {
namespace {

constexpr int ByBlock = 0, ByLayer = 256, UsualOfLayers = 7;
constexpr std::uint8_t Opaque = 255;

/// Entities on layer 0 stand on that of the reference.
const HostLayer& LayerShown(const HostEntity& entity, const ReferenceLook* outer) {
    const HostLayer& own = entity.LayerObject();
    return outer != nullptr && outer->layer != nullptr && own.Values().name == "0" ? *outer->layer : own;
}

/// The usual colour of layers is none.
ShownColor ColorOf(const HostLayer& layer) {
    const LayerData& values = layer.Values();
    ShownColor color;
    if (values.kept) color.trueColor = TrueColorIn(values.kept->own);
    if (values.color != UsualOfLayers || color.trueColor) color.index = values.color;
    return color;
}

std::optional<std::uint8_t> OpacityOf(const HostLayer& layer) {
    const LayerData& values = layer.Values();
    return values.kept ? OpacityOfLayerIn(values.kept->further) : std::nullopt;
}

ShownColor ColorOf(const HostEntity& entity, const HostLayer& layer, const ReferenceLook* outer) {
    const Kept<KeptGroups>& kept = entity.KeptGroupsOfFile();
    ShownColor color;
    if (kept) color.trueColor = TrueColorIn(kept->common);
    const int index = entity.Look().color;
    if (color.trueColor || (index != ByBlock && index != ByLayer))
        color.index = index;
    else if (index == ByLayer)
        color = ColorOf(layer);
    else if (outer != nullptr)
        color = outer->color;
    if (kept && IsOpacityByBlock(kept->common))
        color.opacity = outer != nullptr ? outer->color.opacity : std::nullopt;
    else
        color.opacity = kept ? OpacityIn(kept->common) : std::nullopt;
    if (!color.opacity && !(kept && IsOpacityByBlock(kept->common))) color.opacity = OpacityOf(layer);
    return color;
}

bool IsShown(const HostLayer& layer) { return layer.Values().on && !layer.Values().frozen; }

}  // namespace

ReferenceLook LookHandedOn(const HostEntity& reference, const ReferenceLook* outer) {
    const HostLayer& layer = LayerShown(reference, outer);
    const bool visible =
        reference.Look().visible && !layer.Values().frozen && (outer == nullptr || outer->visible);
    return {&layer, ColorOf(reference, layer, outer), visible};
}

void SetShownLook(HostEntity& made, const HostEntity& source, const ReferenceLook& reference) {
    const HostLayer& layer = LayerShown(source, &reference);
    EntityLook look = source.Look();
    const bool isOwnLayer = &layer == &source.LayerObject();
    look.visible = look.visible && reference.visible && (isOwnLayer || IsShown(layer));
    const Kept<KeptGroups> kept = OfOtherDrawing(source.KeptGroupsOfFile());
    const bool colorStands = look.color != ByBlock && (look.color != ByLayer || isOwnLayer);
    const bool opacityStands = isOwnLayer && !(kept && IsOpacityByBlock(kept->common));
    if (colorStands && opacityStands) {
        made.SetKeptGroups(kept);
    } else {
        ShownColor shown = ColorOf(source, layer, &reference);
        const bool hasOwn = kept && TrueColorIn(kept->common);
        if (!colorStands && !hasOwn) look.color = shown.index;
        if (colorStands && !hasOwn) shown.trueColor.reset();
        // Without a word of its own it would let through what its layer lets through.
        if (!shown.opacity && OpacityOf(source.LayerObject())) shown.opacity = Opaque;
        made.SetKeptGroups(WithColors(kept, shown.trueColor, shown.opacity));
    }
    made.SetLook(std::move(look));
}

}  // namespace brenvik
