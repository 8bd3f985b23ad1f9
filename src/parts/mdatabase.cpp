// The working database: where it lies, how it is made new, and the use count of the reader connection.
#include "parts/mdatabase.h"

#include <optional>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik::mDatabase {

namespace {

bool IsOpen(const std::unique_ptr<Connection>& connection) {
    return connection != nullptr && connection->State() == ConnectionState::Open;
}

std::string DatabaseFolder() { return TheSession().InstallFolder + "_db\\"; }

/// The database that is this program's own: the one beside the library, unless another program works there.
std::string OwnDatabasePath() {
    const std::string own = ThePlatform().files->WorkFolder();
    return (own.empty() ? DatabaseFolder() : own) + std::string(WorkingFile);
}

/// Whether a path leads to the database beside the library, however it is written.
bool IsHomeDatabase(const std::string& path) {
    FilesPort& files = *ThePlatform().files;
    return !IsBlank(path) &&
           files.PlaceOf(path) == files.PlaceOf(DatabaseFolder() + std::string(WorkingFile));
}

/// A value as it stands in a connection string; in double quotes only where it would be cut or changed.
std::string AttributeValue(std::string_view value) {
    const bool plain = value.find(';') == std::string_view::npos && Trim(value) == value &&
                       !value.starts_with('"') && !value.starts_with('\'');
    if (plain) return std::string(value);
    std::string quoted = "\"";
    for (const char character : value) quoted += character == '"' ? "\"\"" : std::string(1, character);
    return quoted + "\"";
}

void Release(std::unique_ptr<Connection>& connection) {
    const std::unique_ptr<Connection> released = std::move(connection);
    if (IsOpen(released)) released->Close();
}

}  // namespace

void TakeWorkingDatabasePath() {
    Session& session = TheSession();
    session.MDBPath = GetSettingText(setting::MDBPath);
    if (IsBlank(session.MDBPath) || IsHomeDatabase(session.MDBPath)) session.MDBPath = OwnDatabasePath();
}

std::string DatabasePathToKeep() {
    const std::string& path = TheSession().MDBPath;
    const std::string kept =
        EqualsIgnoreCase(path, OwnDatabasePath()) ? GetSettingText(setting::MDBPath) : path;
    return IsHomeDatabase(kept) ? std::string() : kept;
}

std::string WorkingDatabasePath() {
    if (IsBlank(TheSession().MDBPath)) TakeWorkingDatabasePath();
    return TheSession().MDBPath;
}

std::string ConnectionString(std::string_view databasePath) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=" + AttributeValue(databasePath) +
           ";Mode=Share Deny None";
}

std::string ConnectionString() { return ConnectionString(WorkingDatabasePath()); }

void RefreshWorkingDatabase() {
    Session& session = TheSession();
    Release(session.ScanConnection);
    Release(session.ReaderConnection);
    session.ReaderUseCount = 0;
    FilesPort& files = *ThePlatform().files;
    const std::string path = OwnDatabasePath();
    if (files.FileExists(path)) files.RemoveFile(path);
    const std::string blank = DatabaseFolder() + std::string(BlankFile);
    const std::optional<Failure> failure = Attempt([&] { files.CopyFileOver(blank, path); });
    if (!failure) return;
    if (files.FileExists(blank)) throw *failure;
    throw FileNotFound(files.PlaceOf(blank) + ", the blank database; \"brenvik init\" brings it back");
}

void OpenScanConnection() {
    Session& session = TheSession();
    if (IsOpen(session.ScanConnection)) return;
    session.ScanConnection = ThePlatform().database->CreateConnection();
    session.ScanConnection->Open(ConnectionString());
}

void ExecuteSql(std::string_view text) {
    Session& session = TheSession();
    if (session.ScanConnection == nullptr) throw ObjectNotSet("scan connection");
    session.ScanConnection->Execute(text);
}

bool OpenRecordset(std::string_view sql, std::unique_ptr<Recordset>& recordset) {
    Session& session = TheSession();
    if (session.ReaderUseCount == 0) {
        std::unique_ptr<Connection> connection = ThePlatform().database->CreateConnection();
        connection->Open(ConnectionString());
        session.ReaderConnection = std::move(connection);
    }
    try {
        recordset = session.ReaderConnection->OpenRecordset(sql);
    } catch (...) {
        if (session.ReaderUseCount == 0) Release(session.ReaderConnection);
        throw;
    }
    ++session.ReaderUseCount;
    return !recordset->Eof();
}

void CloseRecordset(std::unique_ptr<Recordset>& recordset) {
    if (recordset == nullptr) return;
    const std::unique_ptr<Recordset> released = std::move(recordset);
    released->Close();
    Session& session = TheSession();
    // A refresh of the database in between has closed the connection already.
    if (session.ReaderUseCount == 0) return;
    if (--session.ReaderUseCount == 0) Release(session.ReaderConnection);
}

}  // namespace brenvik::mDatabase
