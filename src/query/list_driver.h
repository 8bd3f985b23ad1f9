// The choices of a list, carried out on the grid form as a person would.
#pragma once

#include "query/list_options.h"

namespace brenvik {

/// Carries the choices out on the grid form, which has to be loaded. The filter goes first, since a filter
/// behind a sort would put the sort columns into the order of the table. Sort and grouping are set together:
/// if one of them is asked for, the other is what is asked for too, or none. Fails with 5 when the dialog
/// doesn't offer a column at present, and when the engine refuses the statement; its failure has been shown
/// by then.
void ApplyListChoices(const ListChoices& choices);

}  // namespace brenvik
