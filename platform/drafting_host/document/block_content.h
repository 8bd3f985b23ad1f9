// What a block reference stands for: its block's entities, placed, turned and scaled.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "drafting_host/document/geometry/host_geometry.h"

namespace brenvik {

class HostBlock;
class HostDocument;
class HostEntity;

/// Blocks can hold references to blocks; a file's tables could even hold a circle of them, or a tower in
/// which each doubles the one below.
constexpr int DeepestNesting = 32;

/// One entity of a block as a reference shows it.
struct PlacedEntity {
    HostGeometry geometry;
    const HostEntity* source = nullptr;
};

/// The one scale of a reference, above 0, mirrored or not; null if it stretches. Scales that differ by
/// a millionth are one, that of the middle: the other two are as they should have been written.
std::optional<double> EvenScale(const InsertData& reference);

/// The block's entities as the reference shows them, one level deep, for each column and row. Throws
/// Failure for an unknown block, or for uneven scales where the block holds what they can't stretch
/// exactly (bodies, splines, texts, bulged polylines).
std::vector<PlacedEntity> PlacedContent(const HostDocument& document, const InsertData& reference);

/// The same of a block that is known, and only those of its entities that are wanted.
std::vector<PlacedEntity> PlacedContent(const HostBlock& block, const InsertData& reference,
                                        const std::function<bool(const HostGeometry&)>& wanted);

/// The box of what the reference shows, all levels; null for an empty or unknown block.
std::optional<Box3> BoxOfReference(const HostDocument& document, const InsertData& reference);

}  // namespace brenvik
