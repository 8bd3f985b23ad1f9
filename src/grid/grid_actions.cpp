// The table of the grid form's actions.
#include "grid/grid_actions.h"

#include <array>
#include <string>

#include "base/skip.h"
#include "grid/frm_main.h"
#include "query/grid_query.h"
#include "session/message.h"

namespace brenvik {

namespace {

void CloseForm(frmMain& form) { form.RequestClose(); }

void ShowAbout(frmMain&) {
    ShowMessage(std::string(ProductTitle) + "\r\nVersion " BRENVIK_VERSION, "About Brenvik",
                MessageIcon::Information);
}

constexpr auto Actions = std::to_array<GridAction>({
    {"HELP", "mnuHelp", "View Help", nullptr},
    {"PRINT", "", "Print", nullptr},
    {"SORT", "", "Sort", &SortGrid},
    {"FILTER", "", "Filter", &FilterGrid},
    {"QCOPY", "mnuQcopy", "Quick Copy", nullptr},
    {"EXPORT", "mnuExport", "Export", nullptr},
    {"APPLY_DRAWING", "mnuApplyDrawing", "Apply to Drawing", nullptr},
    {"APPLY_CLOSE", "mnuApplyClose", "Apply/Close", nullptr},
    {"CANCEL_CLOSE", "mnuExit", "Exit", &CloseForm},
    {"", "mnuAbout", "About Brenvik", &ShowAbout},
});

void RunAction(frmMain& form, const GridAction& action) {
    if (action.run == nullptr) return ShowNotAvailable(action.name);
    ShowAndResume(ShowFailure, [&] { action.run(form); });
}

}  // namespace

std::span<const GridAction> GridActions() { return Actions; }

void RunToolbarKey(frmMain& form, std::string_view key) {
    for (const GridAction& action : Actions)
        if (!action.key.empty() && action.key == key) return RunAction(form, action);
}

void RunMenuEntry(frmMain& form, std::string_view menuEntry) {
    for (const GridAction& action : Actions)
        if (!action.menuEntry.empty() && action.menuEntry == menuEntry) return RunAction(form, action);
}

}  // namespace brenvik
