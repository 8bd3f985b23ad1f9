// Values that no record of a drawing can have, though their bits make numbers and texts: of views, sheets,
// axes and names. They are kept as they are, and reported.
#pragma once

#include <string>
#include <string_view>

#include "drafting_host/dwg/links.h"
#include "drafting_host/dwg/names.h"
#include "drafting_host/dwg/objects.h"

namespace brenvik::dwg {

/// Faults of a record that was read to its end: its name, and the bits left over.
void CheckRecord(Reading& reading, std::string_view kind, const Object& object);

/// A character that a name can't have. A star stands in front of what programs name by themselves alone, a
/// bar only in the name of what comes out of another drawing.
void CheckName(Reading& reading, const Holder& holder, std::string_view name, bool isDependent);

/// Why the groups of a view, a sheet or a text can't be; blank where they may.
std::string ImpossibleIn(std::string_view kind, std::string_view groups);

/// The axes of a coordinate system are of length 1 and at right angles.
bool AreAxes(const Point3& x, const Point3& y);

/// A block without a name of its own is marked so, and no other is. It has its record's name still.
void CheckAnonymous(Reading& reading, const Block& block);

}  // namespace brenvik::dwg
