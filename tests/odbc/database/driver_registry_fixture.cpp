// Writing the list of drivers, and running the engine's program.
#include "driver_registry_fixture.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace brenvik {
namespace {

// The driver manager keeps what it has read, so there is one list for the whole program.
void RegisterDrivers() {
    static const TemporaryFolder home;
    std::ofstream list(home.Path() / "odbcinst.ini");
    list << "[Microsoft Access Driver (*.mdb)]\nDescription = SQLite under the name of the connection "
            "strings\n"
            "Driver = " SQLITE_DRIVER
            "\nFileAttribute = Database\nMoreAttributes = NoCreat=1;Timeout=100\n\n"
            "[Bare SQLite]\nDriver = " SQLITE_DRIVER "\n\n[Test Driver (*.mdb)]\nDriver = " TEST_DRIVER
            "\n\n[Broken Driver]\nDriver = /no/such/library.so\n";
    list.close();
    setenv("ODBCSYSINI", home.Path().c_str(), 1);
    setenv("ODBCINSTINI", "odbcinst.ini", 1);
    setenv("ODBCINI", (home.Path() / "odbc.ini").c_str(), 1);
}

}  // namespace

void OdbcTest::SetUpTestSuite() {
    static const bool registered = [] {
        RegisterDrivers();
        return true;
    }();
    ASSERT_TRUE(registered);
}

std::string OdbcTest::Sqlite(const std::filesystem::path& file, std::string_view sql) {
    const std::string command =
        SQLITE_PROGRAM " -batch '" + file.string() + "' \"" + std::string(sql) + "\" 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> output(popen(command.c_str(), "r"), pclose);
    if (!output) return "the program can't be run";
    std::string text;
    for (int character = 0; (character = std::fgetc(output.get())) != EOF;)
        text += static_cast<char>(character);
    return text;
}

std::filesystem::path OdbcTest::Place(std::string_view name) const {
    return folder.Path() / std::u8string(name.begin(), name.end());
}

std::string OdbcTest::AccessString(std::string_view path, std::string_view password) {
    return "Driver={Microsoft Access Driver (*.mdb)};Dbq=" + std::string(path) +
           ";Uid=Admin;Pwd=" + std::string(password) + ";";
}

std::unique_ptr<ExportConnection> OdbcTest::Connected(std::string_view name) {
    std::unique_ptr<ExportConnection> connection = databases.CreateConnection();
    connection->SetCursorLocation(CursorLocation::Client);
    connection->Open(AccessString("c:\\jobs\\" + std::string(name)));
    return connection;
}

std::unique_ptr<ExportConnection> OdbcTest::ConnectedToTestDriver() {
    std::unique_ptr<ExportConnection> connection = OdbcDatabase().CreateConnection();
    connection->Open("Driver={Test Driver (*.mdb)};Dbq=c:\\any.mdb;Uid=Admin;Pwd=;");
    return connection;
}

}  // namespace brenvik
