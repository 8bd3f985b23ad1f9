// The grid form loaded on a part table that answers every statement but the ones it is told to refuse, and
// notes them all.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "parts/part_table.h"
#include "query/frm_filter.h"
#include "query/frm_new_sort.h"
#include "session/library/loading.h"
#include "session/module_state.h"
#include "session/session.h"

namespace brenvik {

inline const std::string BaseStatement =
    "SELECT bv_id, bv_qty, bv_partname, bv_subassembly, bv_material, bv_length, bv_width, bv_thickness, "
    "bv_lwt, bv_x, bv_y, bv_z, bv_notes, bv_userdata1, bv_userdata2, bv_pn, bv_price, bv_eb1, bv_eb2, "
    "bv_eb3, "
    "bv_eb4, bv_face, bv_layer, bv_oldValue1, bv_oldValue2, bv_oldValue3 FROM brenvik_data";

using Texts = std::vector<std::string>;

class StatementDatabase : public DatabasePort {
  public:
    /// Statements that opened a record set, in order.
    Texts opened;
    Texts connectionStrings;
    /// A statement that holds one of these texts is refused.
    Texts refused;
    /// What a record set holds in its one field, by the statement; others hold `values`.
    std::map<std::string, std::vector<FieldValue>> valuesOf;
    std::vector<FieldValue> values{"Side", "Back", "Top"};
    bool failOnOpen = false;
    int openConnections = 0;

    std::unique_ptr<Connection> CreateConnection() override { return std::make_unique<Opened>(*this); }
    void CreateBlankPartDatabase(std::string_view) override {}

    static Failure Refusal() { return Failure(-2147217900, "Table", "Syntax error"); }
    static constexpr const char* RefusalBox = "-2147217900\r\nTable\r\nSyntax error";

  private:
    class Records : public Recordset {
      public:
        explicit Records(std::vector<FieldValue> fieldValues) : values(std::move(fieldValues)) {}
        bool Eof() const override { return place >= values.size(); }
        void MoveNext() override { ++place; }
        int RecordCount() const override { return static_cast<int>(values.size()); }
        int FieldCount() const override { return 1; }
        std::string FieldName(int) const override { return "bv_partname"; }
        FieldValue Value(std::string_view) const override { return values.at(place); }
        FieldValue Value(int) const override { return values.at(place); }
        FieldValue ValueAt(int record, int) const override {
            return values.at(static_cast<std::size_t>(record));
        }
        bool Updatable() const override { return false; }
        void Update(int, int, const FieldValue&) override {}
        void Close() override {}

      private:
        std::vector<FieldValue> values;
        std::size_t place = 0;
    };

    class Opened : public Connection {
      public:
        explicit Opened(StatementDatabase& owner) : database(owner) {}
        ~Opened() override { Close(); }
        void Open(std::string_view connectionString) override {
            database.connectionStrings.emplace_back(connectionString);
            if (database.failOnOpen) throw Failure(-2147467259, "Table", "Could not open");
            ++database.openConnections;
            state = ConnectionState::Open;
        }
        void Close() override {
            if (state == ConnectionState::Open) --database.openConnections;
            state = ConnectionState::Closed;
        }
        ConnectionState State() const override { return state; }
        void Execute(std::string_view) override {}
        std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
            const std::string statement(sql);
            database.opened.push_back(statement);
            for (const std::string& text : database.refused)
                if (statement.find(text) != std::string::npos) throw Refusal();
            const auto found = database.valuesOf.find(statement);
            return std::make_unique<Records>(found == database.valuesOf.end() ? database.values
                                                                              : found->second);
        }
        void BeginTrans() override {}
        void CommitTrans() override {}
        void RollbackTrans() override {}

      private:
        StatementDatabase& database;
        ConnectionState state = ConnectionState::Closed;
    };
};

class QueryTest : public testing::Test {
  protected:
    QueryTest() : files(fileDatabase) {
        LoadSystem({&dialogs, &settings, &database, &files, &measuring, nullptr, nullptr});
        files.contents[fakes::LoadedSystem::BlankPath] = "blank";
        for (const char* name : {"MeasureNonSolids", "NoMeasure", "WCSMeasure"}) settings.Set(name, "0");
        fakes::FakeEntity& solid = app.active->AddEntity("1A");
        measuring.results[solid.ObjectID()] = {600, 400, 18, 1};
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadApp = &app;
        TheSession().AcadDoc = app.active;
        GridFormInstance().Form_Load();
        database.opened.clear();
        database.connectionStrings.clear();
    }
    ~QueryTest() override { UnloadSystem(); }

    frmMain& Main() { return GridFormInstance(); }
    frmNewSort& Sort() { return StateOf<frmNewSort>(); }
    frmFilter& Filter() { return StateOf<frmFilter>(); }
    Session& State() { return TheSession(); }

    /// The sort dialog as the user opens it, without the grid's part in it.
    frmNewSort& OpenSort() {
        Sort().Load();
        return Sort();
    }
    frmFilter& OpenFilter() {
        Filter().Load();
        return Filter();
    }
    static void Press(Form& form, const char* control) { form.Get<Control>(control).Press(); }
    static const Texts& Items(const ListControl& list) { return list.Items(); }

    /// Chooses an item by its text, as a click does.
    static void Choose(ListControl& list, const std::string& item) {
        for (int index = 0; index < list.ListCount(); ++index)
            if (list.Items()[static_cast<std::size_t>(index)] == item) return list.SetListIndex(index);
        ADD_FAILURE() << list.Name() << " has no item " << item;
    }
    static void Tick(frmNewSort& form, const std::string& column, int value = 1) {
        for (std::size_t box = 1; box < frmNewSort::BoxCount; ++box)
            if (form.Check1[box]->Text() == column) return form.Check1[box]->SetValue(value);
        ADD_FAILURE() << "no box " << column;
    }
    /// Captions of the ticked boxes, the unseen one marked.
    static Texts Ticked(const frmNewSort& form) {
        Texts captions;
        for (std::size_t box = 0; box < frmNewSort::BoxCount; ++box)
            if (form.Check1[box]->Value() == 1)
                captions.push_back((box == 0 ? "unseen " : "") + form.Check1[box]->Text());
        return captions;
    }
    /// Adds sort columns; one with a "-" ahead is descending.
    static void AddSortColumns(frmNewSort& form, const Texts& columns) {
        for (const std::string& column : columns) {
            const bool descending = column.starts_with('-');
            Choose(form.List1, descending ? column.substr(1) : column);
            Press(form, "btnAddOne");
            if (!descending) continue;
            form.List2.SetListIndex(form.List2.ListCount() - 1);
            form.List2.onDoubleClick();
        }
    }
    static void FillRow(frmFilter& form, std::size_t row, const std::string& column,
                        const std::string& shownOperator, const std::string& value) {
        Choose(*form.cboCol[row], column);
        Choose(*form.cboCrit[row], shownOperator);
        form.cboCritData[row]->SetText(value);
    }

    /// Headers of the grid's visible columns.
    Texts VisibleHeaders() {
        Texts headers;
        for (int column = 1; column <= Main().fpSpread1.MaxCols(); ++column)
            if (!Main().fpSpread1.Column(column).hidden)
                headers.push_back(Main().fpSpread1.Column(column).header);
        return headers;
    }
    Texts Messages() const {
        Texts texts;
        for (const MessageRequest& message : dialogs.messages) texts.push_back(message.text);
        return texts;
    }

    fakes::FakeDialogs dialogs;
    fakes::FakeSettings settings;
    fakes::FakeDatabase fileDatabase;
    fakes::FakeFiles files;
    fakes::FakeMeasuring measuring;
    fakes::FakeApplication app;
    StatementDatabase database;
};

}  // namespace brenvik
