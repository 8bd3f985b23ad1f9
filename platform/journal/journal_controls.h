// The steps that act on the controls of a form. A control has to be there, to be shown and to be usable,
// as it would for a person; otherwise the step fails.
#pragma once

#include "forms/form.h"
#include "journal/journal_step.h"

namespace brenvik {

class JournalHands;

/// Does a step that acts on a control or on the form itself. Throws JournalFailure, and what the control's
/// handlers let through.
void ActOnForm(const JournalStep& step, Form& form, JournalHands& hands);

}  // namespace brenvik
