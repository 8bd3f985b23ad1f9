// Solids of several lumps: bodies that don't touch and are one solid all the same.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

class TopoDS_Shape;

namespace brenvik {

class HostEntity;

/// How many lumps a body has; 0 for a sheet.
std::size_t LumpsOf(const TopoDS_Shape& shape);

struct PartOfLumps {
    std::string handle, name;  ///< The name is blank where the part has none.
    std::size_t lumps = 0;
};

/// Those of the entities that are solids of more than one lump. A list has one row for each, with the sizes
/// of all its lumps together.
std::vector<PartOfLumps> PartsOfSeveralLumps(std::span<HostEntity* const> entities);

}  // namespace brenvik
