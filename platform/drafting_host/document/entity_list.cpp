// Lists of entities that shed what was erased.
#include "drafting_host/document/entity_list.h"

#include <algorithm>
#include <string>

#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

void EntityList::Add(HostEntity& entity) {
    if (mHeld.insert(&entity).second) mMembers.push_back(&entity);
}

void EntityList::Remove(const HostEntity& entity) {
    if (mHeld.erase(&entity) > 0) std::erase(mMembers, &entity);
}

void EntityList::Clear() {
    mMembers.clear();
    mHeld.clear();
}

std::span<HostEntity* const> EntityList::Members() const {
    // Sweeping is needed only where something was erased since the last look.
    if (mSeenErasures != mDocument->Erasures()) {
        mSeenErasures = mDocument->Erasures();
        std::erase_if(mMembers, [&](HostEntity* member) {
            if (!member->Erased()) return false;
            mHeld.erase(member);
            return true;
        });
    }
    return mMembers;
}

HostEntity& EntityList::At(int index) const {
    const std::span<HostEntity* const> members = Members();
    if (index < 0 || static_cast<std::size_t>(index) >= members.size()) {
        throw host_failure::KeyNotFound("member " + std::to_string(index) + " of " +
                                        std::to_string(members.size()));
    }
    return *members[static_cast<std::size_t>(index)];
}

}  // namespace brenvik
