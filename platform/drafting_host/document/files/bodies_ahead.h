// Bodies of a drawing, read ahead of their turn on several processors.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <cstddef>
#include <map>
#include <span>

#include "drafting_host/acis/acis_text.h"
#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik {

/// What the texts of a drawing's bodies give, whoever has read them.
class BodiesAhead {
  public:
    explicit BodiesAhead(std::span<const EntityData> entities) : mEntities(entities) {}

    /// What the body of an entity gives, empty texts included; to be called in the order of the entities.
    acis::ReadResult Take(std::size_t entity);

  private:
    void ReadFrom(std::size_t entity);

    const std::span<const EntityData> mEntities;
    std::map<std::size_t, acis::ReadResult> mRead;
    /// Entities ahead of this one have been looked at.
    std::size_t mNext = 0;
};

}  // namespace brenvik
