// A list of drivers that only the tests know: the driver manager reads it from a folder of their own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "odbc/odbc_database.h"
#include "support/temporary_folder.h"

namespace brenvik {

/// Registers an SQLite driver under the name that the connection strings have, the same without its file
/// attribute as "Bare SQLite", and the driver of the tests as "Test Driver (*.mdb)".
class OdbcTest : public testing::Test {
  protected:
    static void SetUpTestSuite();

    /// Runs statements on a database file with the engine's own program; what it prints.
    static std::string Sqlite(const std::filesystem::path& file, std::string_view sql);

    /// A database of the system's own path c:\jobs\NAME.
    std::filesystem::path Place(std::string_view name) const;

    /// The connection string of the export with this path.
    static std::string AccessString(std::string_view path, std::string_view password = "");

    /// An open connection to c:\jobs\NAME.
    std::unique_ptr<ExportConnection> Connected(std::string_view name);

    /// An open connection to the driver of the tests.
    static std::unique_ptr<ExportConnection> ConnectedToTestDriver();

    TemporaryFolder folder;
    OdbcDatabase databases{
        [this](std::string_view path) { return Place(path.substr(path.rfind('\\') + 1)); }};
};

}  // namespace brenvik
