// Statements of the part table: any bytes are translated or refused, and the engine takes the result or
// refuses it; nothing a user types into a filter ends the program.
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>

#include "base/failure.h"
#include "check.h"
#include "part_table/sqlite_database.h"

namespace {

// One blank database for the whole run; every statement is rolled back.
struct Database {
    Database()
        : port([this](std::string_view) { return file; },
               [](const std::filesystem::path& target, std::string_view content) {
                   std::ofstream(target, std::ios::binary) << content;
               }) {
        port.CreateBlankPartDatabase("blank");
        connection = port.CreateConnection();
        connection->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=blank");
    }
    ~Database() {
        connection.reset();
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    const std::filesystem::path file = std::filesystem::temp_directory_path() / "brenvik-fuzz-statement.mdb";
    brenvik::SqliteDatabase port;
    std::unique_ptr<brenvik::Connection> connection;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Database database;
    const std::string_view statement(reinterpret_cast<const char*>(data), size);
    database.connection->BeginTrans();
    try {
        const auto records = database.connection->OpenRecordset(statement);
        for (; !records->Eof(); records->MoveNext())
            for (int field = 0; field < records->FieldCount(); ++field) records->Value(field);
    } catch (const brenvik::Failure& failure) {
        brenvik::fuzz::Require(!failure.description().empty(), "a refusal gives its reason");
    }
    database.connection->RollbackTrans();
    return 0;
}
