// Drawings made in memory, for what the writer does with them.
#pragma once

#include <string>
#include <utility>

#include "drafting_host/dxf/data/drawing_data.h"
#include "drafting_host/dxf/data/standard_entries.h"

namespace brenvik::test {

inline EntityData Entity(EntityGeometry geometry, HandleValue handle = 0, std::string layer = "0") {
    EntityData entity;
    entity.handle = handle;
    entity.layer = std::move(layer);
    entity.geometry = std::move(geometry);
    return entity;
}

inline DrawingData EmptyDrawing() {
    DrawingData data;
    data.blocks.resize(2);
    data.blocks[0].name = ModelSpaceName;
    data.blocks[0].layoutName = "Model";
    data.blocks[1].name = PaperSpaceName;
    data.blocks[1].layoutName = "Layout1";
    return data;
}

inline DrawingData With(EntityGeometry geometry) {
    DrawingData data = EmptyDrawing();
    data.blocks[0].entities.push_back(Entity(std::move(geometry), 0x10));
    return data;
}

// A board with part data, its outline, a drilled hole and a group of the two: what a job is made of.
inline std::string WithPlainLineEnds(std::string text) {
    std::erase(text, '\r');
    return text;
}

}  // namespace brenvik::test
