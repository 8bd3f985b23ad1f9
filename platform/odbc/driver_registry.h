// What the machine's list of ODBC drivers says about a driver.
#pragma once

#include <string>
#include <string_view>

#include "odbc/api.h"
#include "odbc/connection_text.h"

namespace brenvik::odbc {

/// A driver's registration (in odbcinst.ini where that is the list).
struct Registration {
    /// Its values `FileAttribute` and `MoreAttributes`.
    DriverEntry entry;
    /// The file with the driver's functions: a path, or a name that the manager looks for in its own folder.
    std::string library;
};

/// The registration of the driver with this name, its case ignored. A driver that is not registered has its
/// name for its library, as some managers take it.
Registration RegistrationOf(const Handle& environment, std::string_view driverName);

}  // namespace brenvik::odbc
