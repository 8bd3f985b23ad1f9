// Groups by the handles that the dictionary lists.
#include "drafting_host/dwg/group_names.h"

#include <map>
#include <set>
#include <string>

#include "base/letter_case.h"

namespace brenvik::dwg {

void NameGroups(std::vector<GroupData>& groups, const Dictionary& dictionary) {
    std::map<HandleValue, std::string> names;
    for (const auto& [name, handle] : dictionary.entries) names.emplace(handle, name);
    std::set<std::string, LessIgnoreCase> taken;
    int number = 0;
    for (GroupData& group : groups) {
        const auto name = names.find(group.handle);
        if (name != names.end() && !name->second.empty() && taken.insert(name->second).second) {
            group.name = name->second;
        } else {
            do group.name = "*A" + std::to_string(++number);
            while (!taken.insert(group.name).second);
        }
    }
}

}  // namespace brenvik::dwg
