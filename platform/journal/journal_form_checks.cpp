// Checks and prints of what a form shows.
#include <array>
#include <string>
#include <vector>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "journal/journal_checks.h"
#include "journal/journal_lookup.h"

namespace brenvik {

namespace {

/// What a control shows as a text. A status bar's panels are named as "sbMain.1", the first being the
/// default; a list view and a grid have no one text.
std::string ShownText(const JournalStep& step, const Form& form, const std::string& name) {
    if (EqualsIgnoreCase(name, form.Name())) return form.caption;
    const Control& control = FindControl(step, form, name);
    const auto* bar = dynamic_cast<const StatusBarControl*>(&control);
    if (!bar) return control.Text();
    const std::string panelText = BehindPoint(name);
    const double panel = panelText.empty() ? 1 : LenientNumber(panelText);
    if (panel < 1 || panel > static_cast<double>(bar->panels.size()))
        FailStep(step, "a panel of " + control.Name(), std::to_string(bar->panels.size()) + " panels");
    return bar->panels[static_cast<std::size_t>(panel) - 1];
}

void RequireState(const JournalStep& step, bool holds, const std::string& expected,
                  const std::string& found) {
    if (!holds) FailStep(step, expected, found);
}

bool IsTicked(const JournalStep& step, const Form& form) {
    return FindControlOf<CheckControl>(step, form, step.arguments[0], "a tick box or an option button")
               .Value() == 1;
}

std::string QuotedItems(const std::vector<std::string>& items) {
    std::vector<std::string> quoted;
    quoted.reserve(items.size());
    for (const std::string& item : items) quoted.push_back(Quoted(item));
    return items.empty() ? "no items" : Join(quoted, " ");
}

void CheckItems(const JournalStep& step, const Form& form) {
    const std::vector<std::string> expected(step.arguments.begin() + 1, step.arguments.end());
    const std::vector<std::string> found = ItemsOf(step, FindControl(step, form, step.arguments[0]));
    RequireState(step, found == expected, QuotedItems(expected), QuotedItems(found));
}

void CheckRows(const JournalStep& step, const Form& form) {
    const Control& control = FindControl(step, form, step.arguments[0]);
    const auto* grid = dynamic_cast<const GridControl*>(&control);
    const int found = grid ? grid->MaxRows() : static_cast<int>(ItemsOf(step, control).size());
    const int expected = static_cast<int>(LenientNumber(step.arguments[1]));
    RequireState(step, found == expected, std::to_string(expected) + " rows", std::to_string(found));
}

std::string CellOf(const JournalStep& step, const Form& form) {
    const auto& grid = FindControlOf<GridControl>(step, form, step.arguments[0], "a grid");
    const int row = FindRow(step, grid, step.arguments[1], 0);
    return grid.CellText(FindColumn(step, grid, step.arguments[2]), row);
}

void CheckHiddenColumn(const JournalStep& step, const Form& form) {
    const auto& grid = FindControlOf<GridControl>(step, form, step.arguments[0], "a grid");
    const int column = FindColumn(step, grid, step.arguments[1]);
    RequireState(step, grid.Column(column).hidden, "the column hidden", "it shown");
}

void CheckTextShown(const JournalStep& step, const Form& form) {
    RequireText(step, step.arguments[1], ShownText(step, form, step.arguments[0]));
}

void CheckCell(const JournalStep& step, const Form& form) {
    RequireText(step, step.arguments[3], CellOf(step, form));
}

template <bool ticked>
void CheckTick(const JournalStep& step, const Form& form) {
    RequireState(step, IsTicked(step, form) == ticked, ticked ? "it checked" : "it unchecked",
                 ticked ? "it unchecked" : "it checked");
}

template <bool enabled>
void CheckEnabled(const JournalStep& step, const Form& form) {
    RequireState(step, FindControl(step, form, step.arguments[0]).enabled == enabled,
                 enabled ? "it enabled" : "it disabled", enabled ? "it disabled" : "it enabled");
}

template <bool visible>
void CheckShown(const JournalStep& step, const Form& form) {
    RequireState(step, FindControl(step, form, step.arguments[0]).visible == visible,
                 visible ? "it visible" : "it hidden", visible ? "it hidden" : "it visible");
}

struct FormCheck {
    StepKind kind;
    void (*check)(const JournalStep&, const Form&);
};

constexpr std::array FormChecks{
    FormCheck{StepKind::ExpectText, CheckTextShown},
    FormCheck{StepKind::ExpectChecked, CheckTick<true>},
    FormCheck{StepKind::ExpectUnchecked, CheckTick<false>},
    FormCheck{StepKind::ExpectEnabled, CheckEnabled<true>},
    FormCheck{StepKind::ExpectDisabled, CheckEnabled<false>},
    FormCheck{StepKind::ExpectVisible, CheckShown<true>},
    FormCheck{StepKind::ExpectHidden, CheckShown<false>},
    FormCheck{StepKind::ExpectItems, CheckItems},
    FormCheck{StepKind::ExpectRows, CheckRows},
    FormCheck{StepKind::ExpectCell, CheckCell},
    FormCheck{StepKind::ExpectHiddenColumn, CheckHiddenColumn},
};

void PrintGridRows(const GridControl& grid, std::ostream& output) {
    for (int row = 0; row <= grid.MaxRows(); ++row) {
        std::vector<std::string> cells;
        for (int column = 1; column <= grid.MaxCols(); ++column)
            if (!grid.Column(column).hidden) cells.push_back(grid.CellText(column, row));
        output << Join(cells, "\t") << '\n';
    }
}

}  // namespace

void CheckForm(const JournalStep& step, const Form& form) {
    for (const auto& [kind, check] : FormChecks)
        if (kind == step.kind) return check(step, form);
    InvariantBroken("every check of a form stands in the table");
}

void PrintFromForm(const JournalStep& step, const Form& form, std::ostream& output) {
    if (step.kind == StepKind::PrintCell) {
        output << CellOf(step, form) << '\n';
        return;
    }
    const std::string& name = step.arguments[0];
    if (step.kind == StepKind::PrintGrid)
        return PrintGridRows(FindControlOf<GridControl>(step, form, name, "a grid"), output);
    Invariant(step.kind == StepKind::PrintControl, "a print from a form");
    const Control* control = form.Find(name);
    if (const auto* grid = dynamic_cast<const GridControl*>(control)) return PrintGridRows(*grid, output);
    if (const auto* box = dynamic_cast<const CheckControl*>(control)) {
        output << box->Value() << '\n';
        return;
    }
    output << ShownText(step, form, name) << '\n';
}

}  // namespace brenvik
