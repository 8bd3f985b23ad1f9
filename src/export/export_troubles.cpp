// The lines, in the order in which they come.
#include "export/export_troubles.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "grid/frm_main.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

namespace {

struct TroublesOfExports {
    std::vector<std::string> lines;
};

}  // namespace

void NoteExportTrouble(std::string text) {
    std::vector<std::string>& lines = StateOf<TroublesOfExports>().lines;
    if (std::ranges::find(lines, text) == lines.end()) lines.push_back(std::move(text));
}

void NoteExportTrouble(std::string_view path, std::size_t line, std::string_view text) {
    NoteExportTrouble(std::string(path) + ":" + std::to_string(line) + ": " + std::string(text));
}

void NoteRowsLeftOut(const Recordset& records) {
    const int shown = GridFormInstance().fpSpread1.MaxRows(), taken = records.RecordCount();
    if (IsBlank(TheSession().WhereClause) || taken >= shown) return;
    const int left = shown - taken;
    NoteExportTrouble(std::to_string(left) +
                      (left == 1 ? " row of the list no longer meets its filter and is"
                                 : " rows of the list no longer meet its filter and are") +
                      " not in the export; filter again to see the rows that go out");
}

std::vector<std::string> TakeExportTroubles() {
    return std::exchange(StateOf<TroublesOfExports>().lines, {});
}

}  // namespace brenvik
