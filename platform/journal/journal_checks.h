// The checks and prints of a journal.
#pragma once

#include <ostream>

#include "forms/form.h"
#include "journal/journal_player.h"
#include "journal/journal_step.h"

namespace brenvik {

/// Holds a check of a control against the form. Throws JournalFailure.
void CheckForm(const JournalStep& step, const Form& form);

/// Writes a control, a grid cell or a whole grid: visible columns parted by tabs, the headers first.
void PrintFromForm(const JournalStep& step, const Form& form, std::ostream& output);

/// Holds a check of a setting, a session value, the drawing or a file. Throws JournalFailure.
void CheckWorld(const JournalStep& step, const JournalWorld& world);

/// Writes a solid's part data, one "KEY=value" per line, or a session value.
void PrintFromWorld(const JournalStep& step, const JournalWorld& world);

}  // namespace brenvik
