// Values of a record as exports need them: as text, or as a number.
#pragma once

#include <string>
#include <string_view>

#include "session/ports/database_port.h"

namespace brenvik {

/// The value as text: a number in its general form, 0 for one that is the noise of reckoning, blank for null.
std::string ValueText(const FieldValue& value);

/// The value of a field as text; blank for a list without that field, as grouped ones are.
std::string TextIfThere(const Recordset& records, std::string_view field);

/// How troubles name the part of a record: handle and name.
std::string PartOf(const Recordset& records);

/// The value as a number. Fails with 94 for null, with 13 for a text that is no number.
double ValueNumber(const FieldValue& value);

}  // namespace brenvik
