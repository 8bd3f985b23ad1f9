// A blank ends an answer unless a group's name goes on with it; a return always does.
#include "drafting_host/command/session/group_names.h"

#include <algorithm>
#include <string>

#include "base/letter_case.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

bool GroupNameGoesOn(HostDocument& document, std::string_view typed) {
    const std::string beginning = std::string(typed) + " ";
    return std::ranges::any_of(document.GroupTable().All(), [&](const HostGroup* group) {
        return StartsWithIgnoreCase(group->Name(), beginning);
    });
}

}  // namespace brenvik
