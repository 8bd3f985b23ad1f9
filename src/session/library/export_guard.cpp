// The look at the letters ahead of an export.
#include "session/library/export_guard.h"

#include "base/text.h"
#include "export/frm_export.h"
#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/grid_states.h"
#include "grid/mod4spread.h"
#include "session/message.h"

namespace brenvik {

namespace {

bool LettersAreMissing(const GridControl& grid) {
    for (int row = 1; row <= grid.MaxRows(); ++row)
        if (IsBlank(Mod4Spread::GetCellText(OrieColumn, row))) return true;
    return false;
}

/// Whether the export may go on.
bool PassesGuard(frmMain& form) {
    const GridBusy busy(form);
    if (!LettersAreMissing(form.fpSpread1)) return true;
    const MessageRequest question{
        "You are missing ORIE data on one or more rows. Do you wish to export anyway?", "Exporting Data",
        MessageIcon::None, MessageButtons::YesNo};
    return ThePlatform().dialogs->Show(question) == MessageAnswer::Yes;
}

}  // namespace

void ExportGrid(frmMain& form) {
    if (PassesGuard(form)) ShowExportDialog(form);
}

}  // namespace brenvik
