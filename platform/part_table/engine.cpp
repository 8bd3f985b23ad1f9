// SQLite behind the part table: opening, settings, statements, and its errors put into our words.
#include "part_table/engine.h"

#include <sqlite3.h>

#include <system_error>
#include <utility>

#include "base/path_text.h"
#include "base/text.h"
#include "part_table/failures.h"
#include "part_table/statement_text.h"
#include "part_table/table_layout.h"
#include "part_table/text_rules.h"

namespace brenvik::part_table {
namespace {

// How long another program may hold the file before a statement gives up.
constexpr int BusyMilliseconds = 200;

// Why the file can't be used; null if the statement is at fault.
const char* FileTrouble(int primaryCode) {
    switch (primaryCode) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return "is locked by another program";
        case SQLITE_READONLY:
            return "can only be read";
        case SQLITE_FULL:
            return "can't grow: the disk is full";
        case SQLITE_IOERR:
            return "can't be read or written";
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return "can't be opened";
        case SQLITE_NOTADB:
            return "is no part database: a database file was expected";
        case SQLITE_CORRUPT:
            return "is damaged: a whole database file was expected";
        default:
            return nullptr;
    }
}

// The engine's own message. Of a broken constraint only its name is shown, which is written for users.
std::string StatementTrouble(int extendedCode, const std::string& message) {
    constexpr std::string_view checkPrefix = "CHECK constraint failed: ";
    if (extendedCode == SQLITE_CONSTRAINT_CHECK && message.starts_with(checkPrefix))
        return message.substr(checkPrefix.size());
    return message;
}

FieldValue ColumnValue(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return std::monostate{};
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return sqlite3_column_double(statement, column);
        default: {
            const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
            const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
            return size == 0 ? std::string() : std::string(bytes, size);
        }
    }
}

int BindValue(sqlite3_stmt* statement, int place, const FieldValue& value) {
    if (const auto* text = std::get_if<std::string>(&value))
        return sqlite3_bind_text64(statement, place, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    if (const auto* number = std::get_if<double>(&value))
        return sqlite3_bind_double(statement, place, *number);
    return sqlite3_bind_null(statement, place);
}

// One use of a statement that is kept. Afterwards it holds no lock on the file and no value of the caller.
class UseOf {
  public:
    explicit UseOf(sqlite3_stmt* used) : mStatement(used) {}
    ~UseOf() {
        sqlite3_reset(mStatement);
        sqlite3_clear_bindings(mStatement);
    }
    UseOf(const UseOf&) = delete;
    UseOf& operator=(const UseOf&) = delete;

  private:
    sqlite3_stmt* mStatement;
};

}  // namespace

void Engine::HandleCloser::operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }

void Engine::StatementCloser::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Engine::Engine(std::filesystem::path file, bool readOnly) : mFile(std::move(file)), mReadOnly(readOnly) {
    Open();
}

void Engine::Open() {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(mFile, error);
    if (!std::filesystem::exists(status)) throw Unavailable(mFile, "can't be found");
    if (!std::filesystem::is_regular_file(status)) throw Unavailable(mFile, "is no file");
    mIdentity = IdentityOf(mFile);
    const int access = mReadOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE;
    sqlite3* handle = nullptr;
    const int code =
        sqlite3_open_v2(PathText(mFile).c_str(), &handle, access | SQLITE_OPEN_EXRESCODE, nullptr);
    mHandle.reset(handle);
    try {
        if (code != SQLITE_OK) Fail(code, {});
        Configure();
    } catch (...) {
        LetGo();
        throw;
    }
}

// A statement that is still there would keep the file open behind our back.
void Engine::LetGo() {
    mUpdates.clear();
    mHandle.reset();
}

void Engine::Configure() {
    sqlite3_busy_timeout(mHandle.get(), BusyMilliseconds);
    // A text in double quotes that is no column must not pass for a value.
    sqlite3_db_config(mHandle.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(mHandle.get(), SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    if (const int code = InstallTextRules(mHandle.get()); code != SQLITE_OK) Fail(code, {});
    // The table is a work copy of the drawing that is made anew for every list, so waiting for the disk
    // buys nothing. Keeping the pages back until the commit leaves the file alone if the program ends
    // before it, and a journal on disk could outlive the file that it belongs to.
    RunOwn("PRAGMA synchronous = OFF");
    RunOwn("PRAGMA journal_mode = MEMORY");
    RunOwn("PRAGMA cache_spill = OFF");
    RunOwn("PRAGMA temp_store = MEMORY");
    // Only reading the content shows whether it is a database at all.
    RunOwn("SELECT count(*) FROM sqlite_master");
    // It may have been replaced between the look at its name and the opening.
    int moved = 0;
    sqlite3_file_control(mHandle.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    if (moved != 0) throw Replaced(mFile);
    RequireSameFile();
}

void Engine::RunOwn(const char* sql) {
    if (const int code = sqlite3_exec(mHandle.get(), sql, nullptr, nullptr, nullptr); code != SQLITE_OK)
        Fail(code, {});
}

void Engine::Fail(int code, std::string_view shown) {
    const int primary = code & 0xff;
    const std::string message = mHandle ? sqlite3_errmsg(mHandle.get()) : sqlite3_errstr(code);
    if (const char* trouble = FileTrouble(primary))
        throw DatabaseFailure(failure_number::DatabaseUnavailable,
                              "The part database " + PathText(mFile) + " " + trouble + " (" + message + ")",
                              std::string(shown));
    throw DatabaseFailure(failure_number::StatementRefused, StatementTrouble(code, message),
                          std::string(shown));
}

// The grid's start, or another program, may put another file in the place of the one that is open. Statements
// on either of them would be about a list that nobody asked for.
void Engine::RequireSameFile() const {
    if (mClosed) throw DatabaseFailure(failure_number::ObjectClosed, "The connection is closed");
    const std::optional<FileIdentity> present = IdentityOf(mFile);
    if (!present) throw Unavailable(mFile, "can't be found");
    if (present != mIdentity) throw Replaced(mFile);
}

Engine::Statement Engine::Prepare(const std::string& text, std::string_view shown) {
    sqlite3_stmt* prepared = nullptr;
    const char* tail = nullptr;
    const int code =
        sqlite3_prepare_v2(mHandle.get(), text.c_str(), static_cast<int>(text.size()), &prepared, &tail);
    Statement statement(prepared);
    if (code != SQLITE_OK) Fail(code, shown);
    const std::string_view rest = tail;
    if (rest.find_first_not_of(" \t\r\n;") != std::string_view::npos)
        throw DatabaseFailure(failure_number::StatementRefused,
                              "Characters stand behind the end of the statement: " + Left(rest, 40),
                              std::string(shown));
    return statement;
}

bool Engine::Step(sqlite3_stmt* statement, std::string_view shown) {
    const int code = sqlite3_step(statement);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) Fail(code, shown);
    return false;
}

void Engine::Run(std::string_view sql) {
    RequireSameFile();
    const Statement statement = Prepare(TranslateStatement(sql, false).text, sql);
    if (sqlite3_bind_parameter_count(statement.get()) > 0)
        throw DatabaseFailure(failure_number::StatementRefused, "The statement has a parameter with no value",
                              std::string(sql));
    while (Step(statement.get(), sql)) {
    }
}

ResultTable Engine::Query(std::string_view sql) {
    RequireSameFile();
    const StatementText translated = TranslateStatement(sql, true);
    const Statement statement = Prepare(translated.text, sql);
    if (sqlite3_bind_parameter_count(statement.get()) > 0)
        throw DatabaseFailure(failure_number::StatementRefused, "The statement has a parameter with no value",
                              std::string(sql));
    const int columns = sqlite3_column_count(statement.get());
    const int fields = translated.selectsTableRows ? columns - 1 : columns;
    ResultTable result;
    result.recordsAreTableRows = translated.selectsTableRows;
    for (int field = 0; field < fields; ++field)
        result.fieldNames.emplace_back(sqlite3_column_name(statement.get(), field));
    while (Step(statement.get(), sql)) {
        for (int field = 0; field < fields; ++field)
            result.values.push_back(ColumnValue(statement.get(), field));
        if (translated.selectsTableRows)
            result.rowNumbers.push_back(sqlite3_column_int64(statement.get(), columns - 1));
        ++result.recordCount;
    }
    return result;
}

sqlite3_stmt* Engine::PreparedUpdate(const std::string& text) {
    const auto known = mUpdates.find(text);
    if (known != mUpdates.end()) return known->second.get();
    return mUpdates.emplace(text, Prepare(text, text)).first->second.get();
}

std::optional<FieldValue> Engine::UpdateRow(std::string_view column, const FieldValue& value,
                                            std::int64_t rowNumber, std::string_view identityColumn,
                                            const FieldValue& identity) {
    RequireSameFile();
    const std::string name(column);
    std::string text = "UPDATE " + std::string(TableName) + " SET [" + name + "] = ?1 WHERE rowid = ?2";
    if (!identityColumn.empty()) text += " AND [" + std::string(identityColumn) + "] IS ?3";
    text += " RETURNING [" + name + "]";
    sqlite3_stmt* statement = PreparedUpdate(text);
    const UseOf use(statement);
    int code = BindValue(statement, 1, value);
    if (code == SQLITE_OK) code = sqlite3_bind_int64(statement, 2, rowNumber);
    if (code == SQLITE_OK && !identityColumn.empty()) code = BindValue(statement, 3, identity);
    if (code != SQLITE_OK) Fail(code, text);
    std::optional<FieldValue> stored;
    while (Step(statement, text)) stored = ColumnValue(statement, 0);
    return stored;
}

void Engine::Begin() {
    RequireSameFile();
    // The lock is taken now or refused now: waiting for it at each of many rows would freeze the list.
    const char* begin = mReadOnly ? "BEGIN" : "BEGIN IMMEDIATE";
    RunOwn(mTransactionDepth == 0 ? begin : "SAVEPOINT nested");
    ++mTransactionDepth;
}

void Engine::Commit() {
    RequireSameFile();
    if (mTransactionDepth == 0)
        throw DatabaseFailure(failure_number::NoTransaction, "There is no transaction to commit");
    // A full disk ends a transaction by itself.
    const bool ended = sqlite3_get_autocommit(mHandle.get()) != 0;
    if (ended) {
        mTransactionDepth = 0;
        throw Unavailable(mFile, "ended the transaction by itself; nothing of it was kept");
    }
    RunOwn(mTransactionDepth == 1 ? "COMMIT" : "RELEASE nested");
    --mTransactionDepth;
}

void Engine::Rollback() {
    if (mClosed) throw DatabaseFailure(failure_number::ObjectClosed, "The connection is closed");
    if (mTransactionDepth == 0)
        throw DatabaseFailure(failure_number::NoTransaction, "There is no transaction to roll back");
    if (sqlite3_get_autocommit(mHandle.get()) != 0) {
        mTransactionDepth = 0;
        return;
    }
    if (mTransactionDepth == 1) {
        RunOwn("ROLLBACK");
    } else {
        RunOwn("ROLLBACK TO nested");
        RunOwn("RELEASE nested");
    }
    --mTransactionDepth;
}

void Engine::Close() {
    LetGo();
    mTransactionDepth = 0;
    mClosed = true;
}

}  // namespace brenvik::part_table
