// The databases that lists are exported to, reached through ODBC: the connection strings as they stand, the
// drivers that are registered on the machine under the names in them, the drivers' own words for failures.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "session/ports/export_database_port.h"

namespace brenvik {

/// Connections through the driver manager.
///
/// Texts are UTF-8 on our side. A driver that knows the wide-character functions gets UTF-16, any other one
/// gets UTF-8 as it is; what is stored doesn't depend on the locale.
///
/// A driver's failures have the source "Brenvik export database", the text of the driver's first diagnostic
/// as their description and its SQLSTATE, with the statement, as their detail. Their numbers are those that
/// ADO gives: -2147217843 for a login that is refused, -2147217865 for a table that is not there,
/// -2147217873 for a broken constraint, -2147217913 for a value of the wrong type, -2147217900 for any other
/// refused statement, -2147467259 for all else. A connection string never shows in a failure: it may hold a
/// password.
class OdbcDatabase : public ExportDatabasePort {
  public:
    /// Finds the real place of a path of the system's own form.
    using PathResolver = std::function<std::filesystem::path(std::string_view systemPath)>;

    /// With a resolver, the value of `Dbq` becomes the real path, and a missing file is reported before the
    /// driver is called, since some drivers would create an empty one. Without a resolver the path is the
    /// platform's own and stays as it is. What the resolver throws comes out of Open.
    explicit OdbcDatabase(PathResolver resolve = {});

    /// The connection and its record sets belong to one thread.
    std::unique_ptr<ExportConnection> CreateConnection() override;

  private:
    PathResolver mResolve;
};

}  // namespace brenvik
