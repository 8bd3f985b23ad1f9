// The export dialog on a list in memory: a part table with the parts that a test gives it, files that can
// fail, a user who answers, and a database to export to that notes every statement.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/fakes/fake_platform.h"
#include "export/frm_export.h"
#include "grid/column_relation.h"
#include "grid/frm_main.h"
#include "parts/part_table.h"
#include "session/library/loading.h"
#include "session/module_state.h"
#include "session/ports/export_database_port.h"
#include "session/session.h"

namespace brenvik {

using Texts = std::vector<std::string>;
using Part = std::map<std::string, FieldValue>;

/// What a statement gives: fields in order, and a value for each of them that a part has.
struct ListResult {
    Texts fields;
    std::vector<Part> parts;
};

inline Texts AllFields() {
    Texts fields;
    for (const PartColumn& column : PartColumns()) fields.emplace_back(column.column);
    return fields;
}

class ListRecords : public Recordset {
  public:
    explicit ListRecords(ListResult listResult) : result(std::move(listResult)) {}
    bool Eof() const override { return place >= result.parts.size(); }
    void MoveNext() override { ++place; }
    int RecordCount() const override { return static_cast<int>(result.parts.size()); }
    int FieldCount() const override { return static_cast<int>(result.fields.size()); }
    std::string FieldName(int index) const override { return result.fields[static_cast<std::size_t>(index)]; }
    FieldValue Value(std::string_view fieldName) const override {
        for (int field = 0; field < FieldCount(); ++field)
            if (EqualsIgnoreCase(FieldName(field), fieldName)) return Value(field);
        throw Failure(3265, "ListRecords", "No such field", std::string(fieldName));
    }
    FieldValue Value(int index) const override { return ValueAt(static_cast<int>(place), index); }
    FieldValue ValueAt(int record, int index) const override {
        const Part& part = result.parts.at(static_cast<std::size_t>(record));
        const auto found = part.find(FieldName(index));
        return found == part.end() ? FieldValue() : found->second;
    }
    bool Updatable() const override { return false; }
    void Update(int, int, const FieldValue&) override {}
    void Close() override {}

  private:
    ListResult result;
    std::size_t place = 0;
};

class ListDatabase : public DatabasePort {
  public:
    /// The rows of the part table, for every select of all columns.
    std::vector<Part> parts;
    /// Other statements and what they give; any other is refused.
    std::map<std::string, ListResult> results;
    Texts opened;
    bool refused = false;

    std::unique_ptr<Connection> CreateConnection() override { return std::make_unique<Opened>(*this); }
    void CreateBlankPartDatabase(std::string_view) override {}

  private:
    class Opened : public Connection {
      public:
        explicit Opened(ListDatabase& owner) : database(owner) {}
        void Open(std::string_view) override { state = ConnectionState::Open; }
        void Close() override { state = ConnectionState::Closed; }
        ConnectionState State() const override { return state; }
        void Execute(std::string_view) override {}
        std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
            database.opened.emplace_back(sql);
            const auto found = database.results.find(std::string(sql));
            if (!database.refused && found != database.results.end())
                return std::make_unique<ListRecords>(found->second);
            if (database.refused || !sql.starts_with(FullSelect()))
                throw Failure(-2147217900, "ListDatabase", "Syntax error");
            return std::make_unique<ListRecords>(ListResult{AllFields(), database.parts});
        }
        void BeginTrans() override {}
        void CommitTrans() override {}
        void RollbackTrans() override {}

      private:
        ListDatabase& database;
        ConnectionState state = ConnectionState::Closed;
    };
};

class ExportFiles : public FilesPort {
  public:
    std::map<std::string, std::string, LessIgnoreCase> contents;
    std::optional<Failure> failOnWrite, failOnRead, failOnRemove;
    /// Looks at the system while a file is written; and what another program does ahead of a turn.
    std::function<void()> onWrite, onTurn;
    Texts removed;
    std::string lineEnd = "\n";

    std::string InstallFolder() override { return "C:\\Brenvik"; }
    bool FileExists(std::string_view path) override { return contents.contains(std::string(path)); }
    bool FolderExists(std::string_view) override { return true; }
    std::unique_ptr<FolderClaim> AwaitTurn(std::string_view path) override {
        if (onTurn) std::exchange(onTurn, nullptr)();
        return FilesPort::AwaitTurn(path);
    }
    void RemoveFile(std::string_view path) override {
        if (failOnRemove) throw *failOnRemove;
        removed.emplace_back(path);
        contents.erase(std::string(path));
    }
    void CopyFileOver(std::string_view, std::string_view) override {}
    void MakeFolder(std::string_view) override {}
    std::vector<std::string> ListFiles(std::string_view, std::string_view) override { return {}; }
    std::string ReadFile(std::string_view path) override {
        if (failOnRead) throw *failOnRead;
        const auto found = contents.find(path);
        if (found == contents.end()) throw FileNotFound(std::string(path));
        return found->second;
    }
    void WriteFile(std::string_view path, std::string_view content) override {
        if (onWrite) onWrite();
        if (failOnWrite) throw *failOnWrite;
        if (path.empty()) throw BadFileName();
        contents[std::string(path)] = content;
    }
    std::string_view LineEnd() const override { return lineEnd; }
};

class ExportSettings : public fakes::FakeSettings {
  public:
    /// The store can be read and not written.
    bool readOnly = false;

    void SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                     std::string_view text) override {
        if (readOnly) throw PermissionDenied("settings.txt");
        FakeSettings::SaveSetting(root, path, name, text);
    }
};

class UserAtDialogs : public DialogPort {
  public:
    std::vector<MessageRequest> messages;
    std::deque<MessageAnswer> answers;
    std::vector<FileRequest> fileRequests;
    std::optional<std::string> chosenFile;
    /// What the user does in a modal form; one that is open afterwards is closed.
    std::function<void(Form&)> onModal;
    Texts shownForms;

    void ShowModal(Form& form) override {
        form.Load();
        shownForms.push_back(form.Name());
        if (onModal) onModal(form);
        if (form.Loaded()) form.Unload();
    }
    MessageAnswer Show(const MessageRequest& request) override {
        messages.push_back(request);
        if (request.buttons == MessageButtons::Ok) return MessageAnswer::Ok;
        if (answers.empty()) {
            ADD_FAILURE() << "a question nobody expected: " << request.text;
            return MessageAnswer::No;
        }
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> ChooseFile(const FileRequest& request) override {
        fileRequests.push_back(request);
        return chosenFile;
    }
    void DoEvents() override {}
};

/// A database to export to.
class TargetDatabase : public ExportDatabasePort {
  public:
    struct Field {
        std::string name;
        int type;
    };
    Texts tables;
    std::vector<Field> fields;
    /// The one record of each record set, or none.
    std::optional<Part> record;
    std::function<void(const std::string& connectionString)> onOpen;
    std::function<void(const std::string&statement)> onExecute, onSelect;
    std::optional<Failure> failOnTables;
    Texts connectionStrings, executed, selected, tableTypes;
    std::vector<CursorLocation> cursorLocations;
    int openConnections = 0;

    std::unique_ptr<ExportConnection> CreateConnection() override { return std::make_unique<Opened>(*this); }

  private:
    class Records : public ExportRecordset {
      public:
        explicit Records(TargetDatabase& owner) : database(owner) {}
        bool Eof() const override { return !database.record; }
        void MoveNext() override {}
        int FieldCount() const override { return static_cast<int>(database.fields.size()); }
        std::string FieldName(int index) const override { return database.fields.at(Place(index)).name; }
        int FieldType(int index) const override { return database.fields.at(Place(index)).type; }
        FieldValue Value(std::string_view fieldName) const override {
            if (!database.record) throw Failure(3021, "TargetDatabase", "No current record");
            const auto found = database.record->find(std::string(fieldName));
            if (found == database.record->end()) throw Failure(3265, "TargetDatabase", "No such field");
            return found->second;
        }

      private:
        static std::size_t Place(int index) { return static_cast<std::size_t>(index); }
        TargetDatabase& database;
    };

    class Opened : public ExportConnection {
      public:
        explicit Opened(TargetDatabase& owner) : database(owner) {}
        ~Opened() override {
            if (state == ConnectionState::Open) --database.openConnections;
        }
        void SetCursorLocation(CursorLocation location) override {
            EXPECT_EQ(state, ConnectionState::Closed)
                << "an open connection keeps its cursors where they are";
            database.cursorLocations.push_back(location);
        }
        void Open(std::string_view connectionString) override {
            database.connectionStrings.emplace_back(connectionString);
            if (database.onOpen) database.onOpen(std::string(connectionString));
            state = ConnectionState::Open;
            ++database.openConnections;
        }
        void Close() override {
            state = ConnectionState::Closed;
            --database.openConnections;
        }
        ConnectionState State() const override { return state; }
        void Execute(std::string_view sql) override {
            database.executed.emplace_back(sql);
            if (database.onExecute) database.onExecute(std::string(sql));
        }
        std::unique_ptr<ExportRecordset> OpenRecordset(std::string_view sql) override {
            database.selected.emplace_back(sql);
            if (database.onSelect) database.onSelect(std::string(sql));
            return std::make_unique<Records>(database);
        }
        std::vector<std::string> TableNames(std::string_view type) override {
            database.tableTypes.emplace_back(type);
            if (database.failOnTables) throw *database.failOnTables;
            return database.tables;
        }

      private:
        TargetDatabase& database;
        ConnectionState state = ConnectionState::Closed;
    };
};

class ExportTest : public testing::Test {
  protected:
    ExportTest() {
        Platform platform;
        platform.dialogs = &dialogs;
        platform.settings = &settings;
        platform.database = &database;
        platform.files = &files;
        platform.measuring = &measuring;
        platform.exportDatabases = &target;
        LoadSystem(platform);
        files.contents["C:\\Brenvik\\No Adjustments.txt"] = "";
        TheSession().InstallFolder = "C:\\Brenvik\\";
        ColHeadRelationShip();
        // What the load of the grid form does to its headers.
        GridControl& grid = GridFormInstance().fpSpread1;
        for (const PartColumn& column : PartColumns())
            grid.Column(column.gridColumn).header = std::string(column.header);
    }
    ~ExportTest() override { UnloadSystem(); }

    frmExport& Form() { return StateOf<frmExport>(); }
    frmExport& Open() {
        Form().Load();
        return Form();
    }
    void Press(const char* control) { Form().Get<Control>(control).Press(); }
    Control& Any(const char* control) { return Form().Get<Control>(control); }
    static void Choose(ListControl& list, const std::string& item) {
        for (int index = 0; index < list.ListCount(); ++index)
            if (list.Items()[static_cast<std::size_t>(index)] == item) {
                if (list.MultiSelect()) return list.SetSelected(index, true);
                return list.SetListIndex(index);
            }
        ADD_FAILURE() << list.Name() << " has no item " << item;
    }
    /// A profile of these columns, chosen in the open dialog.
    void UseColumns(const std::string& columns) {
        files.contents["C:\\Brenvik\\BrenvikProfiles.txt"] = "[Mine]\ncolumns=" + columns + "\n";
        Form().LoadProfiles();
        Form().chkChooseCSV.SetValue(1);
        Choose(Form().cboProfileName, "Mine");
    }
    void UseAdjustments(const std::string& content) {
        files.contents["C:\\adj.txt"] = content;
        settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "C:\\adj.txt");
    }
    /// A part as the scan would have it.
    static Part Board(const std::string& name, double length, double width, double thickness) {
        return {{"bv_id", "1A"},
                {"bv_qty", "1"},
                {"bv_partname", name},
                {"bv_material", "Oak"},
                {"bv_length", length},
                {"bv_width", width},
                {"bv_thickness", thickness},
                {"bv_subassembly", ""},
                {"bv_lwt", "LWT"},
                {"bv_notes", ""},
                {"bv_userdata1", ""},
                {"bv_userdata2", ""},
                {"bv_pn", ""},
                {"bv_price", ""},
                {"bv_eb1", ""},
                {"bv_eb2", ""},
                {"bv_eb3", ""},
                {"bv_eb4", ""},
                {"bv_face", ""},
                {"bv_layer", "0"}};
    }
    Texts Messages() const {
        Texts texts;
        for (const MessageRequest& message : dialogs.messages) texts.push_back(message.text);
        return texts;
    }
    void ExpectMessage(const std::string& text, const std::string& title, MessageIcon icon) {
        ASSERT_FALSE(dialogs.messages.empty()) << text;
        EXPECT_EQ(dialogs.messages.back().text, text);
        EXPECT_EQ(dialogs.messages.back().title, title);
        EXPECT_EQ(dialogs.messages.back().icon, icon);
    }
    /// The list was read through a record set that is closed now, and its connection with it.
    static void ExpectReaderClosed() {
        EXPECT_EQ(TheSession().ReaderUseCount, 0);
        EXPECT_EQ(TheSession().ReaderConnection, nullptr);
    }
    std::string Setting(const std::string& name) const { return settings.Get(name); }

    UserAtDialogs dialogs;
    ExportSettings settings;
    ListDatabase database;
    ExportFiles files;
    fakes::FakeMeasuring measuring;
    TargetDatabase target;
};

}  // namespace brenvik
