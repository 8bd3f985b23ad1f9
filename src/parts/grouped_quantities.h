// Grouped lists count rows. Quantities that somebody has typed don't reach them.
#pragma once

namespace brenvik {

/// Notes each group of the present list whose rows' quantities come to another number than the group shows.
/// Does nothing while grouping is off.
void NoteGroupedQuantities();

}  // namespace brenvik
