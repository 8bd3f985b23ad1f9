// Finding what a step names: controls, items, grid cells. What isn't there ends the journal with what was
// looked for and what there is.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/form.h"
#include "forms/grid_control.h"
#include "journal/journal_failure.h"
#include "journal/journal_step.h"

namespace brenvik {

[[noreturn]] inline void FailStep(const JournalStep& step, const std::string& expected,
                                  const std::string& found) {
    throw JournalFailure(step.line, step.source, expected, found);
}

/// A text in quotes, line breaks written as "\r" and "\n".
std::string Quoted(std::string_view text);

/// Holds a text against the one that a check names.
inline void RequireText(const JournalStep& step, const std::string& expected, const std::string& found) {
    if (found != expected) FailStep(step, Quoted(expected), Quoted(found));
}

/// A kind of control in words: "a text box".
std::string_view KindInWords(ControlKind kind);

/// The control of this name. A toolbar key or a status bar panel may follow its name behind a point.
Control& FindControl(const JournalStep& step, const Form& form, std::string_view name);

/// The control, which must be of class T. `expected` is what the step is for: "a list".
template <class T>
T& FindControlOf(const JournalStep& step, const Form& form, std::string_view name,
                 const std::string& expected) {
    Control& control = FindControl(step, form, name);
    if (auto* wanted = dynamic_cast<T*>(&control)) return *wanted;
    FailStep(step, expected, std::string(KindInWords(control.Kind())) + " " + Quoted(control.Name()));
}

/// The part of a name behind the first point: "SORT" of "tbMain.SORT"; blank without one.
std::string BehindPoint(std::string_view name);

/// Items of a list, a combo box, a list view or a tab strip; keys of a toolbar.
std::vector<std::string> ItemsOf(const JournalStep& step, const Control& control);

/// The place from 0 of the item with this text, or of the index "#2".
int FindItem(const JournalStep& step, const Control& control, const std::string& item);

/// A grid column from 1, given by number or by header; headers compare without regard to case.
int FindColumn(const JournalStep& step, const GridControl& grid, const std::string& column);

/// A row from `lowest` to the grid's last.
int FindRow(const JournalStep& step, const GridControl& grid, const std::string& row, int lowest);

}  // namespace brenvik
