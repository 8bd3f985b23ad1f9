// The part database in memory: one table for each path, the statements that the core runs, and failures that
// a test puts in their way. What a transaction adds is seen by others after its commit.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "session/ports/database_port.h"

namespace brenvik::fakes {

using Row = std::vector<FieldValue>;
using Rows = std::vector<Row>;

class FakeDatabase : public DatabasePort {
  public:
    /// Databases by path in lower case.
    std::map<std::string, Rows> databases;
    /// All statements that were run or opened, in order, with "BEGIN" and "COMMIT" among them.
    std::vector<std::string> statements;
    /// A statement that holds this text fails with that failure.
    std::vector<std::pair<std::string, Failure>> failures;
    std::vector<std::string> connectionStrings;
    int openConnections = 0;
    std::map<std::string, int> openByPath;
    int openRecordsets = 0;

    std::unique_ptr<Connection> CreateConnection() override;
    void CreateBlankPartDatabase(std::string_view path) override;

    /// Notes the statement, and fails when it was told to.
    void Note(std::string_view statement);
    int CountStatements(std::string_view text) const;
    /// A cell of a database by the table's column name.
    FieldValue Cell(std::string_view path, int row, std::string_view column) const;
    std::string Text(std::string_view path, int row, std::string_view column) const;
    double Number(std::string_view path, int row, std::string_view column) const;
};

}  // namespace brenvik::fakes
