// A lump is what the modeller calls a solid; the host calls one all that an entity holds.
#include "drafting_host/document/files/lumps.h"

#include "drafting_host/document/files/lost_data.h"
#include "drafting_host/document/host_solids.h"

namespace brenvik {

std::vector<PartOfLumps> PartsOfSeveralLumps(std::span<HostEntity* const> entities) {
    std::vector<PartOfLumps> parts;
    for (const HostEntity* entity : entities) {
        const auto* const solid = dynamic_cast<const HostSolid*>(entity);
        const std::size_t lumps = solid == nullptr ? 0 : solid->Lumps();
        if (lumps > 1) parts.push_back({solid->Handle(), PartText(*solid, "PARTNAME"), lumps});
    }
    return parts;
}

}  // namespace brenvik
