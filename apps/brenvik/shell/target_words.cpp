// The drivers by the names of their targets.
#include "shell/target_words.h"

#include <vector>

#include "base/letter_case.h"
#include "base/text.h"
#include "cnc/targets/target_table.h"

namespace brenvik::app {

std::string TargetNames() {
    std::vector<std::string> names;
    for (const TargetDriver& driver : TargetDrivers()) names.emplace_back(TraitsOf(driver.target).name);
    return Join(names, ", ");
}

const TargetDriver* FindTarget(std::string_view name) {
    for (const TargetDriver& driver : TargetDrivers())
        if (EqualsIgnoreCase(TraitsOf(driver.target).name, name)) return &driver;
    return nullptr;
}

std::string CheckTarget(std::string& name) {
    if (FindTarget(name) != nullptr) return {};
    return "expected one of " + TargetNames() + "; found " + name;
}

}  // namespace brenvik::app
