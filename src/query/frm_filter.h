// The filter dialog: four rows of column, operator and value, kept for the session and turned into the WHERE
// clause of the list. Sort and grouping survive a filter, since its OK presses that of the sort dialog.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "forms/form.h"

namespace brenvik {

/// The operators as the dialog shows them.
inline constexpr auto FilterOperators =
    std::to_array<std::string_view>({"= Equal", "> Greater Than", "< Less Than", "<> Not equal", "* Like!"});

/// The operator of the statement: the text before the first blank, and "Like" for "*".
std::string OperatorWord(std::string_view shownOperator);
/// The delimiter of a value in the statement: none for the columns that hold sizes, else a single quote.
std::string_view ValueDelimiter(std::string_view field);
/// Whether the values asked for in a column have to be numbers; by its caption, case ignored.
bool FilteredByNumber(std::string_view caption);
/// The clause of the session's `FilterCriteria`, with a blank at each end, or blank. Only the last row takes
/// effect. Values go in as they are, so a single quote in one makes an invalid statement. Ends silently on a
/// failure.
std::string BuildWhereClause();

class frmFilter : public Form {
  public:
    frmFilter();

    /// Fills the column lists from the visible columns of the grid and puts the session's `FilterCriteria`
    /// back. Ends silently on a failure, such as a stored column that isn't visible any more.
    void LoadColumnLists();
    /// Fills the value list of a row (0 to 3) with what stands in a column of the part table. Fails as the
    /// database does.
    void RetrieveColData(std::string_view field, std::size_t row);

    /// Whether the engine refused the statement of the last OK, or the one that the sort dialog made of it.
    bool StatementRefused() const { return mStatementRefused; }

    static constexpr std::size_t RowCount = 4;
    std::array<ListControl*, RowCount> cboCol{}, cboCrit{}, cboCritData{};
    CheckControl* chkSort = nullptr;

  protected:
    void OnLoad() override;

  private:
    void ColumnChosen(std::size_t row);
    void OfferColumns();
    void PutCriteriaBack();
    void ResetOperators();
    bool TakeRow(std::size_t row);
    void Confirm();
    void Clear();

    /// Stored rows are being put back: a failure ends that, without a box.
    bool mRestoring = false;
    bool mStatementRefused = false;
};

}  // namespace brenvik
