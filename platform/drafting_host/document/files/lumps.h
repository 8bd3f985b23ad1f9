// Solids of several lumps: bodies that don't touch and are one solid all the same.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace brenvik {

class HostEntity;

struct PartOfLumps {
    std::string handle, name;  ///< The name is blank where the part has none.
    std::size_t lumps = 0;
};

/// Those of the entities that are solids of more than one lump. A list has one row for each, with the sizes
/// of all its lumps together.
std::vector<PartOfLumps> PartsOfSeveralLumps(std::span<HostEntity* const> entities);

}  // namespace brenvik
