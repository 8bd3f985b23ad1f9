// Apply in its three forms: each row of the grid goes back to its solid.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "base/skip.h"
#include "base/text.h"
#include "grid/frm_main.h"
#include "grid/grid_columns.h"
#include "grid/grid_states.h"
#include "grid/grouping_interlock.h"
#include "grid/mod4spread.h"
#include "grid/typed_values.h"
#include "parts/mautocad.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/ports/host_interface.h"
#include "session/progress.h"

namespace brenvik {

namespace {

struct WrittenKey {
    std::string key;
    int column = 0;  ///< 0 for a key without a column, which repeats the value of the key before.
};

std::vector<WrittenKey> WrittenKeys() {
    std::vector<WrittenKey> keys;
    for (const std::string& key : Split(PartDataKeyList, ',')) {
        const PartColumn* column = FindPartColumnByKey(key);
        keys.push_back({key, column == nullptr ? 0 : column->gridColumn});
    }
    return keys;
}

/// Runs the statements of one row, the next one even after a failure. Each failure is shown once, though a
/// solid that refuses its values fails for all of them.
class RowStatements {
  public:
    RowStatements(FailureTelling failureTelling, int gridRow) : mTelling(failureTelling), mRow(gridRow) {}

    template <typename Statement>
    bool Run(Statement&& statement) {
        const std::optional<Failure> failure = Attempt(std::forward<Statement>(statement));
        if (!failure) return true;
        const std::string text =
            std::to_string(failure->number()) + failure->source() + failure->description();
        if (text != std::exchange(mLastTold, text)) Tell(*failure);
        return false;
    }

  private:
    /// The box doesn't say which part it is.
    void Tell(const Failure& failure) {
        const bool shown = mTelling == FailureTelling::Shown;
        if (shown) ShowFailure(failure);
        NotePartTrouble({Mod4Spread::GetCellText(IdColumn, mRow),
                         Mod4Spread::GetCellText(PartNameColumn, mRow),
                         std::string("its row of the list could not be written to the drawing as a whole: ") +
                             failure.what(),
                         shown});
    }

    FailureTelling mTelling;
    int mRow;
    std::string mLastTold;
};

AcadObject& SolidOfRow(AcadDocument& document, int row) {
    const std::string handle = Mod4Spread::GetCellText(IdColumn, row);
    AcadObject* object = document.HandleToObject(handle);
    if (object == nullptr) throw ObjectNotSet("solid " + handle);
    return *object;
}

void HighlightModelSpace(AcadDocument& document) {
    document.ModelSpace().ForEach([](AcadEntity& entity) {
        if (!entity.ObjectName().empty()) entity.Highlight(true);
    });
}

}  // namespace

void frmMain::WriteRows(QuantityKey quantity, FailureTelling telling) {
    const GridBusy busy(*this);
    if (fpSpread1.MaxRows() == 0) return NoteAppliedRows();
    AcadDocument* document = TheSession().AcadDoc;
    if (document == nullptr) throw ObjectNotSet("document");
    const std::vector<WrittenKey> keys = WrittenKeys();
    // Rows written so far couldn't be taken back from the drawing, so this isn't cancelled.
    Progress progress({"Writing the list to the drawing", fpSpread1.MaxRows()});
    for (int row = 1; row <= fpSpread1.MaxRows(); ++row) {
        progress.Next(Mod4Spread::GetCellText(PartNameColumn, row));
        RowStatements statements(telling, row);
        AcadObject* solid = nullptr;
        if (!statements.Run([&] { solid = &SolidOfRow(*document, row); })) continue;
        std::string value;
        for (const WrittenKey& written : keys) {
            if (written.column != 0) value = Mod4Spread::GetCellText(written.column, row);
            statements.Run([&] {
                if (quantity == QuantityKey::Highlights && written.key == "QUANTITY")
                    HighlightModelSpace(*document);
                else
                    mAutoCAD::SetPartData(solid, written.key, value);
            });
        }
        NoteAppliedValues(row);
    }
    NoteAppliedRows();
}

void frmMain::Apply() {
    if (RefusedByGrouping(ApplyWhileGrouped)) return;
    WriteRows(QuantityKey::Written, FailureTelling::Shown);
}

void frmMain::applyClose(FailureTelling telling) {
    if (RefusedByGrouping(ApplyWhileGrouped)) return;
    WriteRows(QuantityKey::Written, telling);
    Mod4Spread::FlushGrid();
    Unload();
}

void frmMain::Highlight() {
    if (RefusedByGrouping(ApplyWhileGrouped)) return;
    WriteRows(QuantityKey::Highlights, FailureTelling::Shown);
}

}  // namespace brenvik
