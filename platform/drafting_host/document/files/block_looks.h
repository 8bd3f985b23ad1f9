// How an entity of a block looks where a reference shows it: what it leaves to the block is the reference's.
#pragma once

#include <cstdint>
#include <optional>

namespace brenvik {

class HostEntity;
class HostLayer;

/// A colour as it is shown.
struct ShownColor {
    int index = 0;  ///< 0 where none is given.
    std::optional<std::uint32_t> trueColor;
    std::optional<std::uint8_t> opacity;  ///< Null for an entity that hides all behind it.
};

/// What a reference hands on to its block's entities.
struct ReferenceLook {
    const HostLayer* layer = nullptr;  ///< Of entities on layer 0.
    ShownColor color;
    bool visible = true;
};

/// What a reference hands on, `outer` where it stands in a block that is shown itself. The layer's freezing
/// hides all of the block; its being off hides what takes that layer from the reference.
ReferenceLook LookHandedOn(const HostEntity& reference, const ReferenceLook* outer);

/// Gives `made`, a solid of model space, the colour and the visibility with which a reference shows `source`.
/// Its layer is the source's.
void SetShownLook(HostEntity& made, const HostEntity& source, const ReferenceLook& reference);

}  // namespace brenvik
