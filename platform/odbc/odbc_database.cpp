// Connections: the string made ready for the driver, then statements and results.
#include "odbc/odbc_database.h"

#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/letter_case.h"
#include "base/path_text.h"
#include "odbc/connection_text.h"
#include "odbc/driver_library.h"
#include "odbc/driver_registry.h"
#include "odbc/failures.h"
#include "odbc/odbc_recordset.h"
#include "odbc/session.h"

namespace brenvik {
namespace {

using odbc::ExportFailure;
using odbc::OdbcRecordset;
using odbc::Session;

// The places of the columns in the manager's list of tables, which every driver keeps.
constexpr int TableNameColumn = 2;
constexpr int TableTypeColumn = 3;

std::string RealPlace(const OdbcDatabase::PathResolver& resolve, std::string_view systemPath) {
    if (!resolve) return std::string(systemPath);
    const std::filesystem::path place = resolve(systemPath);
    std::string shown = PathText(place);
    std::error_code ignored;
    if (!std::filesystem::exists(place, ignored))
        throw ExportFailure(failure_number::DatabaseUnavailable,
                            "The database " + shown + " can't be found: a file was expected");
    return shown;
}

class OdbcConnection : public ExportConnection {
  public:
    explicit OdbcConnection(OdbcDatabase::PathResolver resolve) : mResolve(std::move(resolve)) {}

    // Record sets may still be held by others; their statements end here.
    ~OdbcConnection() override {
        if (mSession) mSession->Close();
    }

    OdbcConnection(const OdbcConnection&) = delete;
    OdbcConnection& operator=(const OdbcConnection&) = delete;

    // Record sets are only read forwards, so it doesn't matter where the cursor is kept.
    void SetCursorLocation(CursorLocation) override {}

    void Open(std::string_view connectionString) override {
        if (mSession) throw ExportFailure(failure_number::ObjectOpen, "The connection is open already");
        odbc::Handle environment = odbc::NewEnvironment();
        const odbc::Registration driver =
            odbc::RegistrationOf(environment, odbc::AttributeValue(connectionString, "Driver"));
        const std::string text =
            odbc::ForDriver(connectionString, driver.entry,
                            [this](std::string_view path) { return RealPlace(mResolve, path); });
        mSession = std::make_unique<Session>(std::move(environment), text, odbc::CallsOf(driver.library));
    }

    void Close() override {
        Opened().Close();
        mSession.reset();
    }

    ConnectionState State() const override {
        return mSession ? ConnectionState::Open : ConnectionState::Closed;
    }

    // A trigger, or a rule of the table, may drop a row in silence. Drivers that don't count say -1.
    void Execute(std::string_view sql) override {
        const std::shared_ptr<odbc::Handle> statement = Opened().Run(sql);
        SQLLEN rows = -1;
        const bool counted = SQL_SUCCEEDED(SQLRowCount(statement->Get(), &rows));
        if (counted && rows == 0 && StartsWithIgnoreCase(sql, "INSERT"))
            throw ExportFailure(
                failure_number::StatementRefused,
                "The database took no row for a statement of the export, expected one: " + std::string(sql));
    }

    std::unique_ptr<ExportRecordset> OpenRecordset(std::string_view sql) override {
        return std::make_unique<OdbcRecordset>(Opened().Run(sql));
    }

    // Some drivers list every table whatever type is asked for, so the type is looked at here once more.
    std::vector<std::string> TableNames(std::string_view type) override {
        OdbcRecordset tables(Opened().Tables(type));
        std::vector<std::string> names;
        for (; !tables.Eof(); tables.MoveNext()) {
            const FieldValue name = tables.ValueAt(TableNameColumn);
            const FieldValue listedType = tables.ValueAt(TableTypeColumn);
            const auto* typeText = std::get_if<std::string>(&listedType);
            if (typeText != nullptr && !EqualsIgnoreCase(*typeText, type)) continue;
            if (const auto* text = std::get_if<std::string>(&name)) names.push_back(*text);
        }
        return names;
    }

  private:
    Session& Opened() {
        if (!mSession) throw ExportFailure(failure_number::ObjectClosed, "The connection is closed");
        return *mSession;
    }

    OdbcDatabase::PathResolver mResolve;
    std::unique_ptr<Session> mSession;
};

}  // namespace

OdbcDatabase::OdbcDatabase(PathResolver resolve) : mResolve(std::move(resolve)) {}

std::unique_ptr<ExportConnection> OdbcDatabase::CreateConnection() {
    return std::make_unique<OdbcConnection>(mResolve);
}

}  // namespace brenvik
