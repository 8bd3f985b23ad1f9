// The data control: one connection and the record set that the last refresh opened on it.
#include <utility>

#include "base/failure.h"
#include "base/skip.h"
#include "forms/grid_control.h"

namespace brenvik {

DataControl::DataControl(std::string controlName, std::function<std::unique_ptr<Connection>()> makeConnection)
    : Control(ControlKind::DataControl, std::move(controlName)),
      mCreateConnection(std::move(makeConnection)) {}

void DataControl::Refresh() {
    // Build the new record set completely before releasing the old: a refused statement has no effect.
    std::unique_ptr<Connection> newConnection = mCreateConnection();
    newConnection->Open(connectionString);
    std::unique_ptr<Recordset> newRecords = newConnection->OpenRecordset(recordSource);
    mRecords.reset();
    mConnection = std::move(newConnection);
    mRecords = std::move(newRecords);
    if (onRefreshed) onRefreshed();
}

void DataControl::InOneTransaction(const std::function<void()>& work) {
    if (mConnection == nullptr) throw ObjectNotSet(Name());
    mConnection->BeginTrans();
    try {
        work();
        mConnection->CommitTrans();
    } catch (...) {
        Skip([this] { mConnection->RollbackTrans(); });
        throw;
    }
}

void DataControl::Close() {
    mRecords.reset();
    mConnection.reset();
    if (onRefreshed) onRefreshed();
}

void DataControl::KeepDesign() {
    Control::KeepDesign();
    mDesignConnectionString = connectionString;
    mDesignRecordSource = recordSource;
}

void DataControl::RestoreDesign() {
    Control::RestoreDesign();
    Close();
    connectionString = mDesignConnectionString;
    recordSource = mDesignRecordSource;
}

}  // namespace brenvik
