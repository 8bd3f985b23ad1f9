// A folder of its own with a blank part database, and short words for what the tests do with it.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "base/failure.h"
#include "file_roots/claim.h"
#include "file_roots/whole_file.h"
#include "part_table/sqlite_database.h"
#include "support/failure_of.h"
#include "support/temporary_folder.h"

namespace brenvik {

class PartTable : public testing::Test {
  protected:
    // Paths of the system's own form begin at the folder: "c:\x.mdb" is x.mdb in it.
    PartTable() : database(Database()) {
        database.CreateBlankPartDatabase("c:\\bv04.mdb");
        connection = Opened();
    }

    /// The database as a program of its own has it.
    SqliteDatabase Database() const {
        return SqliteDatabase([this](std::string_view path) { return folder.Path() / path.substr(3); },
                              WriteWholeFile,
                              [](const std::filesystem::path& file) {
                                  auto claim = std::make_shared<const Claim>(file);
                                  return claim->Outcome() == Claim::State::Taken ? nullptr : claim;
                              });
    }

    std::filesystem::path File() const { return folder.Path() / "bv04.mdb"; }

    static std::string ConnectionText(const std::string& path) {
        return "Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=" + path + ";Mode=Share Deny None";
    }

    std::unique_ptr<Connection> Opened(const std::string& path = "c:\\bv04.mdb") {
        std::unique_ptr<Connection> made = database.CreateConnection();
        made->Open(ConnectionText(path));
        return made;
    }

    void Insert(const std::string& id, const std::string& name, const std::string& material,
                const std::string& length) {
        connection->Execute(
            "INSERT INTO brenvik_data  (bv_id, bv_qty, bv_partname, bv_material, bv_length) values ('" + id +
            "', '1', '" + name + "', '" + material + "', " + length + " )");
    }

    /// The first field of every record, parted by bars; null is "null".
    std::string Column(const std::string& sql) {
        std::string text;
        const std::unique_ptr<Recordset> records = connection->OpenRecordset(sql);
        for (; !records->Eof(); records->MoveNext())
            text += (text.empty() ? "" : "|") + Text(records->Value(0));
        return text;
    }

    static std::string Text(const FieldValue& value) {
        if (const auto* text = std::get_if<std::string>(&value)) return *text;
        if (const auto* number = std::get_if<double>(&value)) return std::to_string(*number);
        return "null";
    }

    TemporaryFolder folder;
    SqliteDatabase database;
    std::unique_ptr<Connection> connection;
};

}  // namespace brenvik
