// Taking out of a drawing what nothing refers to: block definitions, layers, linetypes, text styles and
// groups without members. Application names stay, as the host keeps them.
#include <algorithm>
#include <set>
#include <string>
#include <unordered_set>

#include "base/letter_case.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {
namespace {

using Names = std::set<std::string, LessIgnoreCase>;

}  // namespace

void HostDocument::PurgeAll() {
    RequireOpen();
    PurgeBlocks();
    const std::vector<HostGroup*> groups = mGroups.All();
    for (HostGroup* group : groups)
        if (group->Count() == 0) group->Delete();
    PurgeLayers();
    PurgeStyles();
}

void HostDocument::PurgeBlocks() {
    // A block that only a purged block refers to goes in the next round.
    for (bool again = true; again;) {
        Names used;
        for (const auto& block : mBlocks) {
            for (const HostEntity* entity : block->Entities()) {
                const auto* reference = dynamic_cast<const HostBlockReference*>(entity);
                if (reference != nullptr) used.insert(reference->Values().block);
            }
        }
        const auto keep = [&](const std::unique_ptr<HostBlock>& block) {
            return block->IsSpace() || used.contains(block->Record().name);
        };
        const auto gone = std::stable_partition(mBlocks.begin(), mBlocks.end(), keep);
        again = gone != mBlocks.end();
        for (auto block = gone; block != mBlocks.end(); ++block) {
            const std::span<HostEntity* const> entities = (*block)->Entities();
            const std::vector<HostEntity*> standing(entities.begin(), entities.end());
            for (HostEntity* entity : standing) entity->EraseAnyway();
            mPurgedBlocks.push_back(std::move(*block));
        }
        mBlocks.erase(gone, mBlocks.end());
    }
}

void HostDocument::PurgeLayers() {
    std::unordered_set<const HostLayer*> used{mCurrentLayer, mLayers.Find("0")};
    for (const auto& block : mBlocks)
        for (const HostEntity* entity : block->Entities()) used.insert(&entity->LayerObject());
    const std::vector<HostLayer*> layers = mLayers.All();
    for (HostLayer* layer : layers)
        if (!used.contains(layer)) mLayers.Purge(*layer);
}

void HostDocument::PurgeStyles() {
    Names linetypes{"ByLayer", "ByBlock", "Continuous"}, styles{"Standard"};
    for (const HostLayer* layer : mLayers.All()) linetypes.insert(layer->Values().linetype);
    for (const auto& block : mBlocks) {
        for (const HostEntity* entity : block->Entities()) {
            linetypes.insert(entity->Look().linetype);
            if (const auto* text = dynamic_cast<const HostText*>(entity)) styles.insert(text->Values().style);
            if (const auto* text = dynamic_cast<const HostMText*>(entity))
                styles.insert(text->Values().style);
        }
    }
    std::erase_if(mTables.linetypes, [&](const LinetypeData& one) { return !linetypes.contains(one.name); });
    std::erase_if(mTables.styles, [&](const TextStyleData& one) { return !styles.contains(one.name); });
}

}  // namespace brenvik
