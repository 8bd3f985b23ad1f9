// Message boxes that leave a run as good as it was.
#include "run_dialogs.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "cnc/run_set_up.h"
#include "tools/part_export.h"

namespace brenvik::app {

namespace {

/// How the texts begin. A part without letters is worked on as one that has been given the usual ones.
constexpr auto Harmless = std::to_array<std::string_view>({
    RunWarning,
    RunComplete,
    PartExportWarning,
    "ORIE data not detected on this part",
    "You are missing ORIE data on one or more rows.",
});

}  // namespace

MessageAnswer RunDialogs::Show(const MessageRequest& request) {
    const bool harmless = std::ranges::any_of(
        Harmless, [&](std::string_view beginning) { return request.text.starts_with(beginning); });
    if (!harmless) wentWrong = true;
    return ConsoleDialogs::Show(request);
}

}  // namespace brenvik::app
