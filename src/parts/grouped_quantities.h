// Grouped lists count rows. Quantities that somebody has typed don't reach them.
#pragma once

namespace brenvik {

/// Notes each group of the present list whose quantity isn't the sum of its rows' quantities. For a list
/// that isn't grouped there is none.
void NoteGroupedQuantities();

}  // namespace brenvik
