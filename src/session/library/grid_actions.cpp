// The table of the grid form's actions.
#include "session/library/grid_actions.h"

#include <array>
#include <string>

#include "base/skip.h"
#include "grid/frm_main.h"
#include "grid/grid_print.h"
#include "grid/grid_query.h"
#include "grid/grouping_interlock.h"
#include "grid/help.h"
#include "grid/quick_copy.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "session/library/export_guard.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

namespace {

void CloseForm(frmMain& form) { form.RequestClose(); }

void ApplyToDrawing(frmMain& form) { form.Apply(); }

/// Closing by way of Apply asks first whether a list that can't be applied may go.
void ApplyAndClose(frmMain& form) {
    if (!GroupingIsActive()) return form.applyClose();
    const std::string question =
        std::string(ApplyWhileGrouped) + "\r\n\r\nDo you wish to close the form without applying changes?";
    const MessageRequest request{question, "Error", MessageIcon::None, MessageButtons::YesNo};
    if (ThePlatform().dialogs->Show(request) == MessageAnswer::Yes) form.Unload();
}

/// The letters are locked on a grouped list and free on any other.
void SortGrid(frmMain& form) {
    ThePlatform().dialogs->ShowModal(StateOf<frmNewSort>());
    LockLettersWhileGrouped(form);
}

void FilterGrid(frmMain&) { ThePlatform().dialogs->ShowModal(StateOf<frmFilter>()); }

void ShowAbout(frmMain&) {
    ShowMessage(std::string(ProductTitle) + "\r\nVersion " BRENVIK_VERSION, AboutTitle,
                MessageIcon::Information);
}

constexpr auto Actions = std::to_array<GridAction>({
    {"HELP", "mnuHelp", "View Help", &ViewHelp},
    {"PRINT", "", "Print", &PrintTheGrid},
    {"SORT", "", "Sort", &SortGrid},
    {"FILTER", "", "Filter", &FilterGrid},
    {"QCOPY", "mnuQcopy", "Quick Copy", &QuickCopy},
    {"EXPORT", "mnuExport", "Export", &ExportGrid},
    {"APPLY_DRAWING", "mnuApplyDrawing", "Apply to Drawing", &ApplyToDrawing},
    {"APPLY_CLOSE", "mnuApplyClose", "Apply/Close", &ApplyAndClose},
    {"CANCEL_CLOSE", "mnuExit", "Exit", &CloseForm},
    {"", "mnuAbout", AboutTitle, &ShowAbout},
});

void RunAction(frmMain& form, const GridAction& action) {
    ShowAndResume(ShowFailure, [&] { action.run(form); });
}

}  // namespace

std::span<const GridAction> GridActions() { return Actions; }

void RunToolbarKey(frmMain& form, std::string_view key) {
    for (const GridAction& action : GridActions())
        if (!action.key.empty() && action.key == key) return RunAction(form, action);
}

void RunMenuEntry(frmMain& form, std::string_view menuEntry) {
    for (const GridAction& action : GridActions())
        if (!action.menuEntry.empty() && action.menuEntry == menuEntry) return RunAction(form, action);
}

}  // namespace brenvik
