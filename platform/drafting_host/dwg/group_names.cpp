// Groups by the handles that the dictionary lists.
#include "drafting_host/dwg/group_names.h"

#include <map>
#include <set>
#include <string>

#include "base/letter_case.h"

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

}  // namespace brenvik::dwg
