// The part database on SQLite: the system's connection strings and statements as they stand, a file of
// the engine's own form under whatever name the system gives it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "session/database_port.h"

namespace brenvik {

/// Finds the real place of a path of the system's own form.
using PathResolver = std::function<std::filesystem::path(std::string_view systemPath)>;

/// Connections to part databases.
///
/// Failures have the source "Brenvik part table". Numbers: -2147217900 for a statement that is refused,
/// with the engine's reason in the description and the statement in the detail; -2147467259 for a file
/// that is missing, locked, read-only, full or no part database; 3704 on something closed, 3705 on a
/// connection that is open already; 3021, 3251, 3265 and -2147217864 for record sets (no current record,
/// not updatable, no such field, the row is gone); -2147168242 for a commit without a transaction.
class SqliteDatabase : public DatabasePort {
  public:
    explicit SqliteDatabase(PathResolver resolve);

    /// The connection follows its file: when another one is put in its place between two statements,
    /// the next statement meets the new file; when it is gone, the statement fails.
    std::unique_ptr<Connection> CreateConnection() override;

    /// The blank table is made beside the target and moved over it. The folder must exist.
    void CreateBlankPartDatabase(std::string_view path) override;

  private:
    PathResolver mResolve;
};

}  // namespace brenvik
