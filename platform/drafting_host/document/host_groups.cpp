// Groups.
#include "drafting_host/document/host_groups.h"

#include <algorithm>

#include "base/letter_case.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

void HostGroup::RequireAlive() const {
    mDocument.RequireOpen();
    if (mDeleted) throw host_failure::WasErased("group \"" + mData.name + "\"");
}

std::string HostGroup::Name() const {
    RequireAlive();
    return mData.name;
}

int HostGroup::Count() const {
    RequireAlive();
    return mList.Count();
}

AcadEntity* HostGroup::Item(int index) {
    RequireAlive();
    return &mList.At(index);
}

void HostGroup::AppendItems(std::span<AcadEntity* const> items) {
    RequireAlive();
    for (AcadEntity* item : items) {
        const HostEntity& entity = HostEntityOf(item);
        entity.RequireAlive();
        if (&entity.Document() != &mDocument)
            throw host_failure::InvalidArgument("an entity of another drawing");
    }
    for (AcadEntity* item : items) mList.Add(HostEntityOf(item));
}

void HostGroup::Delete() {
    RequireAlive();
    mDeleted = true;
    mList.Clear();
    mGroups.Remove(*this);
}

GroupData HostGroup::Values() const {
    GroupData data = mData;
    data.members.clear();
    for (const HostEntity* member : mList.Members()) data.members.push_back(member->HandleNumber());
    return data;
}

int HostGroups::Count() const {
    mDocument.RequireOpen();
    return static_cast<int>(mGroups.size());
}

AcadGroup* HostGroups::Item(int index) {
    mDocument.RequireOpen();
    if (index < 0 || static_cast<std::size_t>(index) >= mGroups.size()) {
        throw host_failure::KeyNotFound("group " + std::to_string(index) + " of " +
                                        std::to_string(mGroups.size()));
    }
    return mGroups[static_cast<std::size_t>(index)];
}

AcadGroup* HostGroups::Item(std::string_view name) {
    mDocument.RequireOpen();
    HostGroup* group = Find(name);
    if (group == nullptr) throw host_failure::KeyNotFound("group \"" + std::string(name) + "\"");
    return group;
}

AcadGroup* HostGroups::Add(std::string_view name) {
    mDocument.RequireOpen();
    if (HostGroup* group = Find(name)) return group;
    RequireTableName(name, "group");
    GroupData data;
    data.name = name;
    return &Put(std::move(data));
}

HostGroup* HostGroups::Find(std::string_view name) const {
    const auto found = std::find_if(mGroups.begin(), mGroups.end(), [&](const HostGroup* group) {
        return EqualsIgnoreCase(group->Name(), name);
    });
    return found == mGroups.end() ? nullptr : *found;
}

HostGroup& HostGroups::Put(GroupData data) {
    const std::vector<HandleValue> members = std::move(data.members);
    data.members.clear();
    mStore.push_back(std::make_unique<HostGroup>(*this, mDocument, std::move(data)));
    HostGroup& group = *mStore.back();
    mGroups.push_back(&group);
    for (const HandleValue member : members) {
        AcadEntity* entity = mDocument.FindEntity(member);
        if (entity != nullptr) group.AppendItems(std::span(&entity, 1));
    }
    return group;
}

void HostGroups::Remove(const HostGroup& group) { std::erase(mGroups, &group); }

}  // namespace brenvik
