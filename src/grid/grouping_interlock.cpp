// The test of the group fields, and the box that reports it.
#include "grid/grouping_interlock.h"

#include "base/text.h"
#include "session/message.h"
#include "session/session.h"

namespace brenvik {

bool GroupingIsActive() { return !IsBlank(TheSession().GroupFields); }

bool RefusedByGrouping(std::string_view text) {
    if (!GroupingIsActive()) return false;
    ShowMessage(text, "Error");
    return true;
}

}  // namespace brenvik
