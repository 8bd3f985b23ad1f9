// Connection strings of ODBC: attributes "name=value" parted by semicolons, a value in braces where it holds
// a semicolon itself. They are handed on as they stand; only the place of the file is put in.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace brenvik::odbc {

/// What a driver's registration says about connection strings that were written for another driver.
struct DriverEntry {
    /// The driver's own name for the attribute `Dbq`; empty where it is `Dbq`.
    std::string fileAttribute;
    /// Attributes to pass to the driver besides those of the string; may be empty.
    std::string moreAttributes;
};

/// The value of the first attribute of this name, names compared without regard to case, braces taken off;
/// empty where there is none.
std::string AttributeValue(std::string_view connectionString, std::string_view name);

/// The string with the value of every `Dbq` put through `realPlace`, under the name that the driver wants,
/// and with the driver's further attributes at its end. A blank value isn't put through. Nothing else
/// changes.
std::string ForDriver(std::string_view connectionString, const DriverEntry& driver,
                      const std::function<std::string(std::string_view)>& realPlace);

}  // namespace brenvik::odbc
