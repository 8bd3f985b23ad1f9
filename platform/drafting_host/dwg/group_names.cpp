#include "drafting_host/dwg/group_names.h"

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "base/letter_case.h"
#include "drafting_host/dwg/record_checks.h"

namespace brenvik::dwg {

std::vector<HandleValue> NameGroups(std::vector<GroupData>& groups, const Dictionary& dictionary) {
    std::map<HandleValue, std::string> names;
    for (const auto& [name, handle] : dictionary.entries) names.emplace(handle, name);
    std::set<std::string, LessIgnoreCase> taken;
    std::vector<HandleValue> unnamed;
    int number = 0;
    for (GroupData& group : groups) {
        const auto name = names.find(group.handle);
        if (name != names.end() && !name->second.empty() && taken.insert(name->second).second) {
            group.name = name->second;
        } else {
            unnamed.push_back(group.handle);
            do group.name = "*A" + std::to_string(++number);
            while (!taken.insert(group.name).second);
        }
    }
    return unnamed;
}

void CheckMembers(GroupData& group, const std::function<bool(HandleValue)>& isKnown, Links& links,
                  Reading& reading) {
    const Holder holder{"GROUP", group.handle};
    CheckName(reading, holder, group.name, false);
    std::set<HandleValue> members;
    std::erase_if(group.members, [&](HandleValue member) {
        if (member != 0 && !members.insert(member).second) {
            reading.Note(0, ShownHolder(holder) + " has the " + ShownHolder({"entity", member}) +
                                " twice, of which one is taken: another may be missing");
            return true;
        }
        if (!isKnown(member)) links.Drop("an entity", member, holder);
        return false;
    });
}

bool GroupsOfEntities::Names(HandleValue entity, HandleValue group) const {
    const auto hearers = mHearers.find(entity);
    return hearers != mHearers.end() && std::ranges::find(hearers->second, group) != hearers->second.end();
}

void GroupsOfEntities::CheckGroup(const GroupData& group, Reading& reading) const {
    std::vector<HandleValue> silent;
    bool isNamed = false;
    for (const HandleValue member : group.members) {
        if (Names(member, group.handle))
            isNamed = true;
        else if (mHearers.contains(member))
            silent.push_back(member);
    }
    if (silent.empty() || !isNamed) return;
    reading.Note(0, ShownHolder({"GROUP", group.handle}) + " has the " + ShownHolders("entity", silent) +
                        (silent.size() == 1 ? ", which doesn't name" : ", which don't name") +
                        " the group: another may be missing");
}

void GroupsOfEntities::Check(const std::vector<GroupData>& groups, Reading& reading) const {
    std::map<HandleValue, std::set<HandleValue>> membersOfGroup;
    for (const GroupData& group : groups) {
        CheckGroup(group, reading);
        membersOfGroup[group.handle].insert(group.members.begin(), group.members.end());
    }
    std::map<HandleValue, std::vector<HandleValue>> missing;
    for (const auto& [entity, hearers] : mHearers)
        for (const HandleValue hearer : hearers) {
            const auto members = membersOfGroup.find(hearer);
            if (members != membersOfGroup.end() && !members->second.contains(entity))
                missing[hearer].push_back(entity);
        }
    for (auto& [group, entities] : missing) {
        std::ranges::sort(entities);
        reading.Note(0, ShownHolders("entity", entities) + (entities.size() == 1 ? " names " : " name ") +
                            ShownHolder({"GROUP", group}) + ", which doesn't have " +
                            (entities.size() == 1 ? "it" : "them") + ": the group may be damaged");
    }
}

void TakeGroups(dwg::Names& names, const Dictionary& dictionary, const GroupsOfEntities& ofEntities,
                const std::function<bool(HandleValue)>& isKnown, Links& links, Reading& reading) {
    for (const HandleValue group : NameGroups(names.groups, dictionary))
        reading.Note(0, ShownHolder({"GROUP", group}) +
                            " has no name of its own in the dictionary of groups: it gets one");
    ofEntities.Check(names.groups, reading);
    for (GroupData& group : names.groups) CheckMembers(group, isKnown, links, reading);
    reading.data.groups = std::move(names.groups);
}

}  // namespace brenvik::dwg
