// The boxes that leave the work as good as it was.
#include "reports/message_meaning.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cnc/run/run_set_up.h"
#include "export/csv_export.h"
#include "session/library/grid_actions.h"
#include "tools/part_export.h"

namespace brenvik::app {

namespace {

/// How the texts begin. A part without letters is worked on as one that has been given the usual ones; the
/// file that an export writes over was named by the one who asks for it.
constexpr auto Harmless = std::to_array<std::string_view>({
    RunWarning,
    RunComplete,
    PartExportWarning,
    PartExportComplete,
    ListExportComplete,
    "connection success",
    "ORIE data not detected on this part",
    "You are missing ORIE data on one or more rows.",
    "This file already exists. Do you want to overwrite it?",
});

}  // namespace

bool TellsOfTrouble(const MessageRequest& request) {
    if (request.title == AboutTitle) return false;
    return std::ranges::none_of(
        Harmless, [&](std::string_view beginning) { return request.text.starts_with(beginning); });
}

}  // namespace brenvik::app
