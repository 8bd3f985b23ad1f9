// Groups by the handles that the dictionary lists.
#include "drafting_host/dwg/group_names.h"

#include <map>
#include <set>
#include <string>

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

}  // namespace brenvik::dwg
