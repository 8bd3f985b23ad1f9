// What an entity keeps of the file that it was read from, under the changes that a drawing sees.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "drafting_host/document/geometry/similarity.h"
#include "drafting_host/dxf/data/kept_records.h"

namespace brenvik {

/// A colour by number takes the place of a true colour.
Kept<KeptGroups> WithoutTrueColor(const Kept<KeptGroups>& kept);

/// The same of a layer, where it stands among the layer's own groups.
Kept<KeptGroups> WithoutTrueColorOfLayer(const Kept<KeptGroups>& kept);

/// With this true colour and opacity in place of those that it has; neither where there is none.
Kept<KeptGroups> WithColors(const Kept<KeptGroups>& kept, std::optional<std::uint32_t> trueColor,
                            std::optional<std::uint8_t> opacity);

/// What a copy in the same drawing has: all but what belongs to one entity alone (its extension dictionary,
/// those that react to it, the history of a solid).
Kept<KeptGroups> OfCopy(const Kept<KeptGroups>& kept);

/// The look alone, without anything that leads to other objects: of a copy in another drawing.
Kept<KeptGroups> OfOtherDrawing(const Kept<KeptGroups>& kept);

/// After a move of the entity, `kind` being its object name: directions, lengths and attributes go along, the
/// preview and the history of a solid, which show it where and as it was, are dropped.
Kept<KeptGroups> AfterMove(const Kept<KeptGroups>& kept, std::string_view kind, const Similarity& move);

/// After a change of a body's shape.
Kept<KeptGroups> AfterReshaping(const Kept<KeptGroups>& kept);

}  // namespace brenvik
