// What a block reference stands for: its block's entities, placed, turned and scaled.
#pragma once

#include <optional>
#include <vector>

#include "drafting_host/document/host_geometry.h"

namespace brenvik {

class HostDocument;
class HostEntity;

/// One entity of a block as a reference shows it.
struct PlacedEntity {
    HostGeometry geometry;
    const HostEntity* source = nullptr;
};

/// The block's entities as the reference shows them, one level deep, for each column and row. Throws
/// Failure for an unknown block, or for uneven scales where the block holds what they can't stretch
/// exactly (bodies, splines, texts, bulged polylines).
std::vector<PlacedEntity> PlacedContent(const HostDocument& document, const InsertData& reference);

/// The box of what the reference shows, all levels; nothing for an empty or unknown block.
std::optional<Box3> BoxOfReference(const HostDocument& document, const InsertData& reference);

}  // namespace brenvik
