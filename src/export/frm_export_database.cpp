// The frames of the export dialog for databases: tables, fields, the mapping, and the check of a SQL Server.
#include <memory>
#include <optional>
#include <string>

#include "base/skip.h"
#include "export/frm_export.h"
#include "session/message.h"
#include "session/ports/dialog_port.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

void frmExport::populateTableList() {
    const std::string path = txtExportAccess.Text();
    if (!ThePlatform().files->FileExists(path))
        return ShowMessage(
            "Access database File [" + path + "] cannot be found. Please relocate file,  if needed.",
            "NOT FIND FILE");
    const std::unique_ptr<ExportConnection> connection = ConnectToAccess(path, login);
    connectFailed = connection == nullptr;
    if (connectFailed) return;
    cboAccessTable.Clear();
    cboAccessTable.AddItem("(new)");
    ShowAndResume([](const Failure& failure) { ShowMessage(failure.description()); },
                  [&] {
                      for (const std::string& table : connection->TableNames("TABLE"))
                          if (IsOfferedTable(table)) cboAccessTable.AddItem(table);
                  });
    Skip([&] { connection->Close(); });
}

void frmExport::TableChosen() {
    if (cboAccessTable.ListIndex() < 0) return;
    const std::string table = cboAccessTable.Text();
    const bool isNew = table == "(new)";
    Get<Control>("fraNewAccess").visible = isNew;
    Get<Control>("fraExistingAccess").visible = false;
    if (isNew) return;
    const std::unique_ptr<ExportConnection> connection = ConnectToAccess(txtExportAccess.Text(), login);
    connectFailed = connection == nullptr;
    if (connectFailed) return;
    cboAccessTableList.Clear();
    cboAccessFieldTypes.Clear();
    ShowAndResume([](const Failure& failure) { ShowMessage(failure.description()); },
                  [&] {
                      const std::unique_ptr<ExportRecordset> fields =
                          connection->OpenRecordset(FieldsStatement(table));
                      for (int field = 0; field < fields->FieldCount(); ++field) {
                          cboAccessTableList.AddItem(fields->FieldName(field));
                          cboAccessFieldTypes.AddItem(std::to_string(fields->FieldType(field)));
                      }
                  });
    Skip([&] { connection->Close(); });
    Get<Control>("fraExistingAccess").visible = true;
}

void frmExport::AddMapping() {
    const int from = cboAccessFrom.ListIndex(), to = cboAccessTableList.ListIndex();
    if (from < 0 || to < 0) return;
    const std::string& field = cboFromDBVals.Items()[static_cast<std::size_t>(from)];
    const std::string& type = cboAccessFieldTypes.Items()[static_cast<std::size_t>(to)];
    lvAccessMap.rows.push_back(
        {cboAccessFrom.Text(), field, field + "," + type, {cboAccessTableList.Text()}});
}

void frmExport::RemoveMapping() {
    if (lvAccessMap.selectedRow < 0 || lvAccessMap.selectedRow >= static_cast<int>(lvAccessMap.rows.size()))
        return;
    lvAccessMap.rows.erase(lvAccessMap.rows.begin() + lvAccessMap.selectedRow);
    lvAccessMap.selectedRow = -1;
}

void frmExport::BrowseAccess() {
    const std::optional<std::string> path = ThePlatform().dialogs->ChooseFile(
        {"Export Data to Access", "Access Database (*.mdb)|*.mdb", "mdb", txtExportAccess.Text(), false});
    if (!path) return;
    txtExportAccess.SetText(*path);
    populateTableList();
}

void frmExport::CheckSqlServer() {
    CheckSqlServerConnection(Get<Control>("txtSQLServer").Text(), Get<Control>("txtSQLDatabase").Text(),
                             login);
}

}  // namespace brenvik
