// One open SQLite database with what the system's statements expect of their engine: texts that compare
// without case, Like with % and _, and failures that say what was wrong.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "part_table/file_identity.h"
#include "session/ports/database_port.h"
#include "session/ports/whole_file_writer.h"

struct sqlite3;
struct sqlite3_stmt;

namespace brenvik::part_table {

/// A whole result, row by row.
struct ResultTable {
    std::vector<std::string> fieldNames;
    std::vector<FieldValue> values;  ///< recordCount times fieldNames.size() of them
    /// Each record is one row of the part table, whose number stands in rowNumbers.
    bool recordsAreTableRows = false;
    std::vector<std::int64_t> rowNumbers;
    int recordCount = 0;
};

/// A database file that is open. Every failure has the source "Brenvik part table" and names the file
/// or the statement. A file that was removed or replaced since it was opened fails every later statement: it
/// holds the rows of another list.
class Engine {
  public:
    /// Opens an existing file; never makes one. Fails when it is missing or no database.
    Engine(std::filesystem::path file, bool readOnly);

    /// Runs a statement to its end.
    void Run(std::string_view sql);
    /// Runs a statement and keeps its result.
    ResultTable Query(std::string_view sql);
    /// Sets one column of one row. `identityColumn`, unless empty, must still hold `identity` in that row.
    /// The value as it is stored, or nothing when there is no such row.
    std::optional<FieldValue> UpdateRow(std::string_view column, const FieldValue& value,
                                        std::int64_t rowNumber, std::string_view identityColumn,
                                        const FieldValue& identity);

    /// Transactions nest; the file changes when the outermost one is committed.
    void Begin();
    void Commit();
    void Rollback();

    void Close();  ///< Uncommitted changes are lost; later calls fail.

  private:
    struct HandleCloser {
        void operator()(sqlite3* handle) const;
    };
    struct StatementCloser {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

    void Open();
    /// Lets the file go, with the statements that were prepared on it.
    void LetGo();
    void Configure();
    void RequireSameFile() const;
    void RunOwn(const char* sql);
    Statement Prepare(const std::string& text, std::string_view shown);
    sqlite3_stmt* PreparedUpdate(const std::string& text);
    bool Step(sqlite3_stmt* statement, std::string_view shown);
    [[noreturn]] void Fail(int code, std::string_view shown);

    std::filesystem::path mFile;
    bool mReadOnly;
    /// Of the file that was opened.
    std::optional<FileIdentity> mIdentity;
    std::unique_ptr<sqlite3, HandleCloser> mHandle;
    /// The statements of UpdateRow by their text. A copy down a list sets the same few columns in each row.
    std::map<std::string, Statement, std::less<>> mUpdates;
    int mTransactionDepth = 0;
    bool mClosed = false;
};

/// Puts a file with the empty part table in place of what stands there, as a whole. Fails when the folder is
/// missing or can't be written.
void WriteBlankDatabase(const std::filesystem::path& file, const WholeFileWriter& write);

}  // namespace brenvik::part_table
