// --sort, --group and --filter, as the commands that hand out the list have them.
#pragma once

#include <cstddef>
#include <string>

#include "query/list_options.h"
#include "reports/teller.h"
#include "shell/command_words.h"

namespace brenvik::app {

struct ListChoiceOptions {
    std::string sort, group, filter;

    Argument Sort();
    Argument Group();
    Argument Filter();
    /// What the texts ask for. Throws CommandError with WrongWords, the option named.
    ListChoices Parse() const;
};

/// Remarks on columns that hold numbers as texts where the choices put them in order: "10" comes before "9".
void RemarkOnTextOrder(const ListChoices& choices, Teller& teller);

/// A remark where blanks around the filter's value were left off: a part may have them in its text.
void RemarkOnGaps(const ListChoices& choices, Teller& teller);

/// Remarks on a filter that leaves no row of the parts, as a misspelt value does.
void RemarkOnNoParts(const ListChoices& choices, std::size_t parts, std::size_t rows, Teller& teller);

/// Brings the loaded grid form to show what is wanted. Throws CommandError with WrongWords where the dialogs
/// or the part table refuse.
void ApplyOnGrid(const ListChoices& choices);

}  // namespace brenvik::app
