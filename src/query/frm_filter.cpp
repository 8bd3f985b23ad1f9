// The filter dialog and its clause.
#include "query/frm_filter.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/skip.h"
#include "base/text.h"
#include "forms/field_text.h"
#include "grid/column_relation.h"
#include "grid/frm_main.h"
#include "grid/grid_query.h"
#include "grid/mod4spread.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"
#include "parts/statement_quotes.h"
#include "query/frm_new_sort.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

namespace {

constexpr std::string_view AnyText = "%";

/// Chooses an item of a list that takes no other text, as the list itself would: with a click.
void ChooseItem(ListControl& list, std::string_view item) {
    const auto found = std::ranges::find(list.Items(), item);
    if (found == list.Items().end())
        throw Failure(383, list.Name(), "'Text' property is read-only", std::string(item));
    list.SetListIndex(static_cast<int>(found - list.Items().begin()));
}

/// Column 0 holds the row numbers; it is never hidden.
bool IsHidden(const GridControl& grid, int column) { return column > 0 && grid.Column(column).hidden; }

std::string ClauseOfRow(const FilterCriterion& row) {
    const std::string word = OperatorWord(row.criterion);
    if (row.column.empty() || word.empty()) return {};
    const std::string field = ColumnForCaption(row.column);
    const std::string delimiter(ValueDelimiter(field));
    return field + " " + word + " " + delimiter + row.value + delimiter + " and ";
}

/// A quote in the value must not make another clause of it.
void RequireWholeClause() {
    const Session& session = TheSession();
    if (session.WhereClause.empty()) return;
    const std::string field = ColumnForCaption(session.FilterCriteria.back().column);
    RefusePairedQuotes(session.WhereClause, ValueDelimiter(field).size());
}

std::string ShownCriterion(const FilterCriterion& row) {
    return InQuotes(row.column + " " + std::string(OperatorWord(row.criterion)) + " " + row.value);
}

/// The dialog shows these rows again as if they counted.
void NoteRowsWithoutEffect() {
    const std::vector<FilterCriterion>& criteria = TheSession().FilterCriteria;
    for (std::size_t row = 0; row + 1 < criteria.size(); ++row)
        NotePartTrouble({"", "",
                         "the filter " + ShownCriterion(criteria[row]) +
                             " had no effect: only the last row of the dialog counts, " +
                             ShownCriterion(criteria.back()),
                         false, true});
}

}  // namespace

std::string OperatorWord(std::string_view shownOperator) {
    const std::string word = SplitAtFirst(shownOperator, ' ').head;
    return word == "*" ? "Like" : word;
}

std::string_view ValueDelimiter(std::string_view field) {
    const PartColumn* column = FindPartColumn(field);
    // The sizes of the last Apply are numbers too, but no list offers them.
    const bool isSize = column != nullptr && column->kind == PartColumnKind::Number &&
                        !column->column.starts_with("bv_oldValue");
    return isSize ? "" : "'";
}

bool FilteredByNumber(std::string_view caption) {
    const std::string name = FoldLower(caption);
    return name == "qty" || name == "length" || name == "width" || name == "thickness";
}

std::string BuildWhereClause() {
    std::string clause;
    Skip([&] {
        // Each row begins the clause anew, so the last one is the filter.
        for (const FilterCriterion& row : TheSession().FilterCriteria) clause = ClauseOfRow(row);
        if (clause.empty()) return;
        clause = " Where " + Trim(clause);
        if (clause.ends_with("and")) clause = DropRight(clause, 3);
    });
    return clause;
}

frmFilter::frmFilter() : Form("frmFilter", "Filter") {
    width = 7800;
    height = 3900;
    Add<Control>(ControlKind::Label, "lblColumn", "Column");
    Add<Control>(ControlKind::Label, "lblOperator", "Operator");
    Add<Control>(ControlKind::Label, "lblCriteria", "Criteria");
    for (std::size_t row = 0; row < RowCount; ++row) {
        const std::string place = "(" + std::to_string(row) + ")";
        cboCol[row] = &Add<ListControl>(ControlKind::ComboBox, "cboCol" + place);
        cboCol[row]->onClick = [this, row] { ColumnChosen(row); };
        cboCrit[row] = &Add<ListControl>(ControlKind::ComboBox, "cboCrit" + place);
        for (const std::string_view shown : FilterOperators) cboCrit[row]->AddItem(shown);
        cboCritData[row] = &Add<ListControl>(ControlKind::ComboBox, "cboCritData" + place);
    }
    chkSort = &Add<CheckControl>(ControlKind::CheckBox, "chkSort", "Retain Sort Condition");
    Add<Control>(ControlKind::Button, "btnOK", "&OK").onClick = [this] { Confirm(); };
    Add<Control>(ControlKind::Button, "btnCancel", "&Cancel").onClick = [this] { Unload(); };
    Add<Control>(ControlKind::Button, "btnClear", "C&lear").onClick = [this] { Clear(); };
}

void frmFilter::OnLoad() {
    mStatementRefused = false;
    LoadColumnLists();
    ResetOperators();
}

/// Every opening begins with "equal", whatever was stored.
void frmFilter::ResetOperators() {
    for (ListControl* list : cboCrit) list->SetListIndex(0);
}

void frmFilter::LoadColumnLists() {
    mRestoring = true;
    Skip([this] {
        OfferColumns();
        PutCriteriaBack();
    });
    mRestoring = false;
}

void frmFilter::OfferColumns() {
    for (ListControl* list : cboCol) {
        list->Clear();
        list->AddItem("");
    }
    const GridControl& grid = GridFormInstance().fpSpread1;
    // The last column is not looked at.
    for (int column = 0; column <= grid.MaxCols() - 1; ++column) {
        if (IsHidden(grid, column)) continue;
        const std::string header = Mod4Spread::GetCellText(column, 0);
        if (header.empty() || FoldUpper(header).find("VALUE") != std::string::npos) continue;
        for (ListControl* list : cboCol) list->AddItem(header);
    }
    for (std::size_t row = 1; row < RowCount; ++row) cboCol[row]->SetListIndex(0);
}

void frmFilter::PutCriteriaBack() {
    const std::vector<FilterCriterion>& criteria = TheSession().FilterCriteria;
    for (std::size_t row = 0; row < criteria.size() && row < RowCount; ++row) {
        ChooseItem(*cboCol[row], criteria[row].column);
        ChooseItem(*cboCrit[row], criteria[row].criterion);
        cboCritData[row]->SetText(criteria[row].value);
    }
}

void frmFilter::ColumnChosen(std::size_t row) {
    const std::string column = cboCol[row]->Text();
    if (column.empty()) return;
    const auto fill = [&] { RetrieveColData(ColumnForCaption(column), row); };
    if (mRestoring)
        fill();
    else
        ShowAndResume(ShowFailure, fill);
}

void frmFilter::RetrieveColData(std::string_view field, std::size_t row) {
    const std::unique_ptr<Connection> connection = ThePlatform().database->CreateConnection();
    connection->Open(mDatabase::ConnectionString() + ";Persist Security Info=False");
    if (!field.empty()) {
        const std::unique_ptr<Recordset> values =
            connection->OpenRecordset("select distinct " + std::string(field) + " from brenvik_data");
        ListControl& list = *cboCritData[row];
        list.Clear();
        for (; !values->Eof(); values->MoveNext()) {
            const std::string item = FieldText(values->Value(0));
            if (!item.empty()) list.AddItem(item);
        }
        values->Close();
    }
    connection->Close();
}

/// Takes a row of the dialog into the session. False when it asks for a text in a column of numbers.
bool frmFilter::TakeRow(std::size_t row) {
    const std::string column = cboCol[row]->Text(), shownOperator = cboCrit[row]->Text();
    if (column.empty() || shownOperator.empty()) return true;
    std::string value = cboCritData[row]->Text();
    if (shownOperator.starts_with('*') && value.find(AnyText) == std::string::npos) {
        value += AnyText;
        cboCritData[row]->SetText(value);
    }
    TheSession().FilterCriteria.push_back({column, shownOperator, value});
    if (!FilteredByNumber(column) || IsNumeric(value)) return true;
    ShowMessage("Filtering for text on a numeric column is not permitted", "Invalid Search Condition",
                MessageIcon::Information);
    return false;
}

void frmFilter::Confirm() {
    Session& session = TheSession();
    ListState before = KeepListState();
    session.FilterCriteria.clear();
    session.WhereClause.clear();
    for (std::size_t row = 0; row < RowCount; ++row)
        if (!TakeRow(row)) return;
    NoteRowsWithoutEffect();
    session.WhereClause = BuildWhereClause();
    session.CurrentSQL = FullSelect() + session.WhereClause;
    if (chkSort->Value() == 1 && !session.SortClause.empty())
        session.CurrentSQL += " order by " + session.SortClause;
    mStatementRefused =
        !ShowAndResume(ShowFailure, RequireWholeClause) || !ShowStatementInGrid(session.CurrentSQL);
    Unload();
    // Sorting by a refused filter would report the same failure again.
    if (mStatementRefused) return PutListStateBack(std::move(before));
    auto& sort = StateOf<frmNewSort>();
    sort.PressByCode("btnOK");
    mStatementRefused = sort.StatementRefused();
}

void frmFilter::Clear() {
    TheSession().FilterCriteria.clear();
    LoadColumnLists();
    ResetOperators();
}

}  // namespace brenvik
