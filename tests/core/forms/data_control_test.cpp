// The data control by itself: what it opens, keeps, closes and takes back.
#include <gtest/gtest.h>

#include <algorithm>

#include "core/fakes/fake_database.h"
#include "forms/grid_control.h"
#include "parts/part_table.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

constexpr const char* Path = "c:\\work.mdb";

class DataControlTest : public testing::Test {
  protected:
    DataControlTest() : data("Adodc1", [this] { return database.CreateConnection(); }) {
        database.CreateBlankPartDatabase(Path);
        database.databases[Path].emplace_back(PartColumns().size());
        data.connectionString = "Data Source=c:\\work.mdb;";
        data.recordSource = ScanSelect;
        data.onRefreshed = [this] { ++refreshed; };
    }

    fakes::FakeDatabase database;
    DataControl data;
    int refreshed = 0;
};

TEST_F(DataControlTest, HasNoRecordsBeforeItsFirstRefreshAndAfterClosing) {
    EXPECT_EQ(data.Records(), nullptr);
    data.Refresh();
    ASSERT_NE(data.Records(), nullptr);
    EXPECT_EQ(data.Records()->RecordCount(), 1);
    EXPECT_EQ(refreshed, 1);
    data.Close();
    EXPECT_EQ(data.Records(), nullptr);
    EXPECT_EQ(refreshed, 2);
    EXPECT_EQ(database.openConnections, 0);
    EXPECT_EQ(database.openRecordsets, 0);
}

TEST_F(DataControlTest, ARefusedRefreshChangesNothing) {
    data.Refresh();
    const Recordset* before = data.Records();
    data.connectionString = "Data Source=c:\\none.mdb;";
    EXPECT_THROW(data.Refresh(), Failure);
    data.connectionString = "Data Source=c:\\work.mdb;";
    data.recordSource = "select nonsense";
    EXPECT_THROW(data.Refresh(), Failure);
    EXPECT_EQ(data.Records(), before);
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(database.openConnections, 1);
}

TEST_F(DataControlTest, KeepsTheWorkOfATransactionAndTakesBackWhatCannotBeKept) {
    EXPECT_EQ(FailureOf([&] { data.InOneTransaction([] {}); }).number(), failure_number::ObjectNotSet);
    data.Refresh();
    data.InOneTransaction([&] { data.Records()->Update(0, 2, FieldValue("Door")); });
    EXPECT_EQ(database.Text(Path, 0, "bv_partname"), "Door");
    database.failures.emplace_back("COMMIT", Failure(-5, "FakeDatabase", "Disk full"));
    EXPECT_EQ(FailureOf([&] {
                  data.InOneTransaction([&] { data.Records()->Update(0, 2, FieldValue("Lid")); });
              }).description(),
              "Disk full");
    database.failures.clear();
    EXPECT_EQ(database.Text(Path, 0, "bv_partname"), "Door");
    // Nothing is left under way that the next one would meet.
    data.InOneTransaction([&] { data.Records()->Update(0, 2, FieldValue("Top")); });
    EXPECT_EQ(database.Text(Path, 0, "bv_partname"), "Top");
}

TEST_F(DataControlTest, GoesBackToTheSourcesOfItsDesignAndCloses) {
    data.KeepDesign();
    data.Refresh();
    data.connectionString = "other";
    data.recordSource = "another";
    data.RestoreDesign();
    EXPECT_EQ(data.connectionString, "Data Source=c:\\work.mdb;");
    EXPECT_EQ(data.recordSource, ScanSelect);
    EXPECT_EQ(data.Records(), nullptr);
    EXPECT_EQ(database.openConnections, 0);
}

/// A table of one row with the columns that its statement names, parted by blanks.
class NamedColumns : public Recordset {
  public:
    explicit NamedColumns(std::string_view sql) : names(sql) {}
    bool Eof() const override { return false; }
    void MoveNext() override {}
    int RecordCount() const override { return 1; }
    int FieldCount() const override {
        return static_cast<int>(std::count(names.begin(), names.end(), ' ')) + 1;
    }
    std::string FieldName(int index) const override {
        std::size_t at = 0;
        for (; index > 0; --index) at = names.find(' ', at) + 1;
        return names.substr(at, names.find(' ', at) - at);
    }
    FieldValue Value(std::string_view) const override { return {}; }
    FieldValue Value(int index) const override { return FieldName(index); }
    FieldValue ValueAt(int, int index) const override { return FieldName(index); }
    bool Updatable() const override { return false; }
    void Update(int, int, const FieldValue&) override {}
    void Close() override {}

  private:
    std::string names;
};

class NamedColumnsConnection : public Connection {
  public:
    void Open(std::string_view) override {}
    void Close() override {}
    ConnectionState State() const override { return ConnectionState::Open; }
    void Execute(std::string_view) override {}
    std::unique_ptr<Recordset> OpenRecordset(std::string_view sql) override {
        return std::make_unique<NamedColumns>(sql);
    }
    void BeginTrans() override {}
    void CommitTrans() override {}
    void RollbackTrans() override {}
};

TEST(GridColumns, FollowTheFieldsOfEachStatement) {
    DataControl data("Adodc1", [] { return std::make_unique<NamedColumnsConnection>(); });
    GridControl grid("fpSpread1", {{"a", "A"}, {"b", "B"}, {"c", "C"}});
    grid.SetDataSource(&data);
    const auto shown = [&](const char* sql) {
        data.recordSource = sql;
        data.Refresh();
        return grid.CellText(1, 1) + "|" + grid.CellText(2, 1) + "|" + grid.CellText(3, 1);
    };
    EXPECT_EQ(shown("a b c"), "a|b|c");
    EXPECT_EQ(shown("C A"), "A||C");
    EXPECT_EQ(shown("b"), "|b|");
    EXPECT_EQ(shown("other"), "||");
}

}  // namespace
}  // namespace brenvik
