// What the grid does with the statements of sorting, grouping and filtering: it shows them, and it keeps the
// orientation letters of a grouped list from being edited.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/session.h"

namespace brenvik {

class frmMain;

/// Makes the grid show a statement: record source, refresh, and as many rows as there are records. A
/// statement that the engine refuses shows its failure and leaves the rows on screen and the record source
/// that they came from; returns whether the statement is shown.
bool ShowStatementInGrid(std::string_view statement);

/// What the list on screen was made from.
struct ListState {
    std::string CurrentSQL, WhereClause, SortClause, GroupFields;
    std::vector<SortField> SortFields;
    std::vector<FilterCriterion> FilterCriteria;
};
/// The session's values, and back into it: a refused statement must not be what the next copy, filter or
/// export works from.
ListState KeepListState();
void PutListStateBack(ListState kept);

/// The tick box "Grouping" was ticked or unticked.
void GroupingSwitched(frmMain& form);

/// Locks the orientation column over all rows while the list is grouped, and unlocks it otherwise.
void LockLettersWhileGrouped(frmMain& form);

}  // namespace brenvik
