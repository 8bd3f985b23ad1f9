// The data control: one connection and the record set that the last refresh opened on it.
#include <utility>

#include "base/failure.h"
#include "base/skip.h"
#include "forms/grid_control.h"

namespace brenvik {

DataControl::DataControl(std::string controlName, std::function<std::unique_ptr<Connection>()> makeConnection)
    : Control(ControlKind::DataControl, std::move(controlName)),
      createConnection(std::move(makeConnection)) {}

void DataControl::Refresh() {
    // All of the new is there before any of the old goes, so that a refused statement changes nothing.
    std::unique_ptr<Connection> newConnection = createConnection();
    newConnection->Open(connectionString);
    std::unique_ptr<Recordset> newRecords = newConnection->OpenRecordset(recordSource);
    records.reset();
    connection = std::move(newConnection);
    records = std::move(newRecords);
    if (onRefreshed) onRefreshed();
}

void DataControl::InOneTransaction(const std::function<void()>& work) {
    if (connection == nullptr) throw ObjectNotSet(Name());
    connection->BeginTrans();
    try {
        work();
        connection->CommitTrans();
    } catch (...) {
        Skip([this] { connection->RollbackTrans(); });
        throw;
    }
}

void DataControl::Close() {
    records.reset();
    connection.reset();
    if (onRefreshed) onRefreshed();
}

void DataControl::KeepDesign() {
    Control::KeepDesign();
    designConnectionString = connectionString;
    designRecordSource = recordSource;
}

void DataControl::RestoreDesign() {
    Control::RestoreDesign();
    Close();
    connectionString = designConnectionString;
    recordSource = designRecordSource;
}

}  // namespace brenvik
