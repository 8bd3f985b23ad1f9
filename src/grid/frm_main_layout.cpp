// How the main dialog is laid out: column headers, place on the screen, and the size of the grid.
#include <string>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "forms/repaint_off.h"
#include "grid/frm_main.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "session/ports/dialog_port.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr int LastHeaderColumn = 30;

// Below these sizes the grid keeps the size that it had, in twips.
constexpr double LeastWidthToFollow = 9275;
constexpr double LeastHeightToFollow = 6185;
constexpr double MarginBelowGrid = 50;

/// A saved measure of the form; what is blank, "0" or no number doesn't count as saved.
bool IsSaved(const std::string& text) { return !IsBlank(text) && text != "0" && IsNumeric(text); }

}  // namespace

void frmMain::SetColumnHeaders() {
    const RepaintOff repaintOff(fpSpread1);
    fpSpread1.SetActiveCell(fpSpread1.ActiveColumn(), 0);
    for (int column = 0; column <= LastHeaderColumn; ++column) {
        if (column < 1 || column > fpSpread1.MaxCols()) continue;
        GridColumn& gridColumn = fpSpread1.Column(column);
        // At design time the header is the name of the table's column.
        const PartColumn* part = FindPartColumn(FoldLower(gridColumn.header));
        if (part != nullptr) gridColumn.header = part->header;
    }
}

void frmMain::PlaceForm() {
    const Session& session = TheSession();
    if (IsSaved(session.DialogLeft) && IsSaved(session.DialogTop)) {
        left = StrictNumber(session.DialogLeft);
        top = StrictNumber(session.DialogTop);
    } else {
        const ScreenSize screen = ThePlatform().dialogs->Screen();
        left = (screen.width - width) / 2;
        top = (screen.height - height) / 2;
    }
    if (IsSaved(session.DialogWidth) && IsSaved(session.DialogHeight)) {
        width = StrictNumber(session.DialogWidth);
        height = StrictNumber(session.DialogHeight);
    }
    caption = "Brenvik - version " + session.ApplicationVersion;
    Adodc1.connectionString = mDatabase::ConnectionString();
    OnResize();
}

void frmMain::OnResize() {
    if (minimized) return;
    if (width >= LeastWidthToFollow) gridWidth = width;
    if (height >= LeastHeightToFollow) gridHeight = height - gridTop - MarginBelowGrid;
}

}  // namespace brenvik
