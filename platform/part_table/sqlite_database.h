// The part database on SQLite: the system's connection strings and statements as they stand, a file of
// the engine's own form under whatever name the system gives it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>

#include "session/ports/database_port.h"
#include "session/ports/file_claimer.h"
#include "session/ports/whole_file_writer.h"

namespace brenvik {

namespace part_table {
class DatabaseClaims;
}

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
    /// Blank databases are made with `write`. With `claim`, a file that another program has in use is
    /// refused, and one that was opened is kept from others.
    explicit SqliteDatabase(PathResolver resolve, WholeFileWriter write = {}, FileClaimer claim = {});
    ~SqliteDatabase() override;

    /// The connection never goes over to another file: when one is put in the place of its own, or that is
    /// gone, every later statement fails.
    std::unique_ptr<Connection> CreateConnection() override;

    /// The file is put in place as a whole. The folder must exist.
    void CreateBlankPartDatabase(std::string_view path) override;

  private:
    PathResolver mResolve;
    WholeFileWriter mWrite;
    std::shared_ptr<part_table::DatabaseClaims> mClaims;
};

}  // namespace brenvik
