// One value of the current record, taken from the driver.
#pragma once

#include "odbc/api.h"
#include "odbc/field_types.h"
#include "session/ports/database_port.h"

namespace brenvik::odbc {

/// The value of a column from 1: a switch is -1 or 0, bytes are hexadecimal text. A value of a number's
/// column that is no number comes as its text, as engines allow that keep types loosely. Fails as the driver
/// does.
FieldValue ReadColumn(const Handle& statement, SQLUSMALLINT column, ValueForm form);

}  // namespace brenvik::odbc
