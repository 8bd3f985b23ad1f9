// Connections and record sets over the engine.
#include "part_table/sqlite_database.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "base/invariant.h"
#include "base/letter_case.h"
#include "part_table/connection_string.h"
#include "part_table/database_claims.h"
#include "part_table/engine.h"
#include "part_table/failures.h"

namespace brenvik {
namespace {

using part_table::DatabaseFailure;
using part_table::Engine;
using part_table::ResultTable;

constexpr std::string_view IdentityField = "bv_id";

// Keeps the whole result, so that no lock stays on the file while a person looks at the list.
class TableRecordset : public Recordset {
  public:
    TableRecordset(std::shared_ptr<Engine> engine, ResultTable result)
        : mEngine(std::move(engine)), mResult(std::move(result)) {}

    bool Eof() const override {
        RequireOpen();
        return mCurrent >= mResult.recordCount;
    }

    void MoveNext() override {
        if (Eof())
            throw DatabaseFailure(failure_number::NoCurrentRecord, "There is no record to move on from");
        ++mCurrent;
    }

    int RecordCount() const override {
        RequireOpen();
        return mResult.recordCount;
    }

    int FieldCount() const override {
        RequireOpen();
        return static_cast<int>(mResult.fieldNames.size());
    }

    std::string FieldName(int index) const override {
        RequireField(index);
        return mResult.fieldNames[static_cast<std::size_t>(index)];
    }

    FieldValue Value(std::string_view fieldName) const override { return Value(FieldIndex(fieldName)); }

    FieldValue Value(int index) const override {
        RequireField(index);
        if (mCurrent >= mResult.recordCount)
            throw DatabaseFailure(failure_number::NoCurrentRecord, "There is no current record");
        return mResult.values[Place(mCurrent, index)];
    }

    FieldValue ValueAt(int record, int index) const override {
        RequireField(index);
        RequireRecord(record);
        return mResult.values[Place(record, index)];
    }

    bool Updatable() const override {
        RequireOpen();
        return mResult.recordsAreTableRows;
    }

    void Update(int record, int index, const FieldValue& value) override {
        RequireField(index);
        RequireRecord(record);
        if (!mResult.recordsAreTableRows)
            throw DatabaseFailure(
                failure_number::NotUpdatable,
                "The record set can't be updated: its records are no rows of the part table");
        // Row numbers are used again after the table has been emptied; the identity distinguishes the new row
        // from the old one.
        const auto identity =
            std::find_if(mResult.fieldNames.begin(), mResult.fieldNames.end(),
                         [](const std::string& name) { return EqualsIgnoreCase(name, IdentityField); });
        const bool known = identity != mResult.fieldNames.end();
        const int identityIndex = known ? static_cast<int>(identity - mResult.fieldNames.begin()) : 0;
        const FieldValue identityValue = mResult.values[Place(record, identityIndex)];
        std::optional<FieldValue> stored =
            mEngine->UpdateRow(FieldName(index), value, mResult.rowNumbers[static_cast<std::size_t>(record)],
                               known ? IdentityField : std::string_view(), identityValue);
        if (!stored)
            throw DatabaseFailure(
                failure_number::RecordGone,
                "The record can't be found in the part table any more; it was removed since the "
                "list was read");
        mResult.values[Place(record, index)] = std::move(*stored);
    }

    void Close() override {
        mOpen = false;
        mResult = {};
    }

  private:
    void RequireOpen() const {
        if (!mOpen) throw DatabaseFailure(failure_number::ObjectClosed, "The record set is closed");
    }

    void RequireField(int index) const {
        if (index < 0 || index >= FieldCount())
            throw DatabaseFailure(failure_number::NoSuchField,
                                  "There is no field number " + std::to_string(index));
    }

    void RequireRecord(int record) const {
        if (record < 0 || record >= mResult.recordCount)
            throw DatabaseFailure(failure_number::NoCurrentRecord,
                                  "There is no record number " + std::to_string(record));
    }

    int FieldIndex(std::string_view name) const {
        RequireOpen();
        const auto found =
            std::find_if(mResult.fieldNames.begin(), mResult.fieldNames.end(),
                         [&](const std::string& field) { return EqualsIgnoreCase(field, name); });
        if (found == mResult.fieldNames.end())
            throw DatabaseFailure(failure_number::NoSuchField,
                                  "There is no field named \"" + std::string(name) + "\"");
        return static_cast<int>(found - mResult.fieldNames.begin());
    }

    std::size_t Place(int record, int index) const {
        return static_cast<std::size_t>(record) * mResult.fieldNames.size() + static_cast<std::size_t>(index);
    }

    std::shared_ptr<Engine> mEngine;
    ResultTable mResult;
    int mCurrent = 0;
    bool mOpen = true;
};

class TableConnection : public Connection {
  public:
    TableConnection(PathResolver resolve, std::shared_ptr<part_table::DatabaseClaims> claims)
        : mResolve(std::move(resolve)), mClaims(std::move(claims)) {}

    // A transaction that was not committed is lost with its connection, and record sets can no longer
    // write through it.
    ~TableConnection() override { CloseEngine(); }

    TableConnection(const TableConnection&) = delete;
    TableConnection& operator=(const TableConnection&) = delete;

    void Open(std::string_view connectionString) override {
        if (mEngine) throw DatabaseFailure(failure_number::ObjectOpen, "The connection is open already");
        const part_table::ConnectionString parsed = part_table::ParseConnectionString(connectionString);
        const std::filesystem::path file = mResolve(parsed.dataSource);
        std::shared_ptr<const void> claim = mClaims->Require(file);
        auto engine = std::make_shared<Engine>(file, parsed.readOnly);
        // What was opened is what was claimed, unless the place has changed hands in between.
        mClaims->Require(file);
        mEngine = std::move(engine);
        mClaim = std::move(claim);
    }

    void Close() override {
        Opened();
        CloseEngine();
    }

    ConnectionState State() const override {
        return mEngine ? ConnectionState::Open : ConnectionState::Closed;
    }

    void Execute(std::string_view sql) override { Opened().Run(sql); }

    std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        ResultTable result = Opened().Query(sql);
        return std::make_unique<TableRecordset>(mEngine, std::move(result));
    }

    void BeginTrans() override { Opened().Begin(); }
    void CommitTrans() override { Opened().Commit(); }
    void RollbackTrans() override { Opened().Rollback(); }

  private:
    Engine& Opened() {
        if (!mEngine) throw DatabaseFailure(failure_number::ObjectClosed, "The connection is closed");
        return *mEngine;
    }

    void CloseEngine() {
        if (mEngine) mEngine->Close();
        mEngine.reset();
        mClaim.reset();
    }

    PathResolver mResolve;
    std::shared_ptr<part_table::DatabaseClaims> mClaims;
    std::shared_ptr<Engine> mEngine;
    /// On the file that is open.
    std::shared_ptr<const void> mClaim;
};

}  // namespace

SqliteDatabase::SqliteDatabase(PathResolver resolve, WholeFileWriter write, FileClaimer claim)
    : mResolve(std::move(resolve)),
      mWrite(std::move(write)),
      mClaims(std::make_shared<part_table::DatabaseClaims>(std::move(claim))) {}

SqliteDatabase::~SqliteDatabase() = default;

std::unique_ptr<Connection> SqliteDatabase::CreateConnection() {
    return std::make_unique<TableConnection>(mResolve, mClaims);
}

void SqliteDatabase::CreateBlankPartDatabase(std::string_view path) {
    Invariant(mWrite != nullptr, "what makes blank databases has something to write them with");
    part_table::WriteBlankDatabase(mResolve(path), mWrite);
}

}  // namespace brenvik
