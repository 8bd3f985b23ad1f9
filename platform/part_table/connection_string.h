// Connection strings of the part database: attributes "name=value" parted by semicolons, of which the
// provider decides whether the string is meant for this engine and the data source names the file.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::part_table {

/// What a connection string says about the file.
struct ConnectionString {
    /// The file, in the system's own form of a path.
    std::string dataSource;
    /// Mode=Read: nothing can be written.
    bool readOnly = false;
};

/// Reads a connection string. Attribute names compare without regard to case, blanks around names and
/// values don't count, a value may stand in double or single quotes (such a quote within it is written
/// twice), unknown attributes are passed over. Fails when a piece is no attribute, when the provider is
/// another one, or when there is no data source.
ConnectionString ParseConnectionString(std::string_view text);

}  // namespace brenvik::part_table
