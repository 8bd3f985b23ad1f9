// Troubles of an export that have no message box: unreadable values, unknown columns. The list alone doesn't
// show them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/skip.h"
#include "export/record_values.h"

namespace brenvik {

/// Keeps a line until somebody takes it; the same line once.
void NoteExportTrouble(std::string text);
/// A line of a file that people edit by hand, as "path:line: text".
void NoteExportTrouble(std::string_view path, std::size_t line, std::string_view text);

/// Runs one statement of an export; a failure ends it alone, and is kept as a line that begins with `what`.
template <typename Statement>
void ResumeNoted(std::string_view what, Statement&& statement) {
    ShowAndResume(
        [&](const Failure& failure) { NoteExportTrouble(std::string(what) + ": " + failure.description()); },
        std::forward<Statement>(statement));
}

/// What an export says that could not read the list.
inline constexpr std::string_view ListNotRead = "the export has none of the list's rows";

/// Does `act` at each row. A row that fails ends the walk, and the missing rows are reported by the first of
/// them.
template <typename Act>
void ForEachRow(Recordset& records, Act&& act) {
    const std::optional<Failure> failure = Attempt([&] {
        for (; !records.Eof(); records.MoveNext()) act();
    });
    if (failure)
        NoteExportTrouble("the export ends ahead of " + PartOf(records) +
                          " and has none of the rows from it on: " + failure->description());
}

/// An export asks the part table again: rows that were edited so that they don't meet the list's filter any
/// more are still shown, and go out no longer. Counts them in a line.
void NoteRowsLeftOut(const Recordset& records);

/// The lines since the last call, in their order.
std::vector<std::string> TakeExportTroubles();

}  // namespace brenvik
