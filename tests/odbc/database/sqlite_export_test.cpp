// Exports into SQLite files through its own driver, registered under the name of the connection strings, and
// read back with the engine's own program.
#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <string>
#include <vector>

#include "driver_registry_fixture.h"
#include "support/failure_of.h"

namespace brenvik {
namespace {

class SqliteExport : public OdbcTest {
  protected:
    SqliteExport() {
        Sqlite(Place("job.mdb"),
               "create table Parts(Name varchar(40), Len double, Qty integer, Flag bit);"
               "create table Zeta(a); create view Seen as select 1; create table Alpha(a);");
    }
};

TEST_F(SqliteExport, InsertedRowsStandInTheFile) {
    const auto connection = Connected("job.mdb");
    connection->Execute("INSERT INTO Parts (Name,Len,Qty) VALUES('Side','720.5','2')");
    connection->Execute("INSERT INTO Parts (Name,Len,Qty) VALUES('Top','600','1')");
    connection->Close();
    EXPECT_EQ(Sqlite(Place("job.mdb"), "select Name, typeof(Len), Len, Qty from Parts"),
              "Side|real|720.5|2\nTop|real|600.0|1\n");
}

TEST_F(SqliteExport, LettersOutsideAsciiArriveInEveryLocale) {
    for (const char* locale : {"C", "C.UTF-8"}) {
        const std::string before = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, locale);
        const auto connection = Connected("job.mdb");
        connection->Execute("INSERT INTO Parts (Name) VALUES('Türseite 木 😀')");
        const auto records = connection->OpenRecordset("select Name from Parts");
        EXPECT_EQ(std::get<std::string>(records->Value("name")), "Türseite 木 😀") << locale;
        connection->Close();
        EXPECT_EQ(Sqlite(Place("job.mdb"), "select Name from Parts; delete from Parts"), "Türseite 木 😀\n");
        std::setlocale(LC_ALL, before.c_str());
    }
}

TEST_F(SqliteExport, AFileMayHaveLettersOutsideAsciiInItsName) {
    Sqlite(Place("Küche 木 (1).mdb"), "create table t(a)");
    const auto connection = Connected("Küche 木 (1).mdb");
    connection->Execute("INSERT INTO t (a) VALUES('x')");
    connection->Close();
    EXPECT_EQ(Sqlite(Place("Küche 木 (1).mdb"), "select a from t"), "x\n");
}

TEST_F(SqliteExport, TablesOfATypeComeInTheDriversOrder) {
    const auto connection = Connected("job.mdb");
    EXPECT_EQ(connection->TableNames("TABLE"), (std::vector<std::string>{"Parts", "Zeta", "Alpha"}));
    EXPECT_EQ(connection->TableNames("VIEW"), (std::vector<std::string>{"Seen"}));
}

TEST_F(SqliteExport, ATableWithoutRecordsGivesItsFields) {
    const auto connection = Connected("job.mdb");
    const auto records = connection->OpenRecordset("SELECT * FROM Parts");
    EXPECT_TRUE(records->Eof());
    ASSERT_EQ(records->FieldCount(), 4);
    const std::vector<std::pair<std::string, int>> expected = {
        {"Name", 200}, {"Len", 5}, {"Qty", 3}, {"Flag", 11}};
    for (int field = 0; field < 4; ++field) {
        EXPECT_EQ(records->FieldName(field), expected[static_cast<std::size_t>(field)].first);
        EXPECT_EQ(records->FieldType(field), expected[static_cast<std::size_t>(field)].second);
    }
    EXPECT_EQ(FailureOf([&] { records->FieldName(4); }).number(), 3265);
    EXPECT_EQ(FailureOf([&] { records->FieldType(-1); }).number(), 3265);
    EXPECT_EQ(FailureOf([&] { records->MoveNext(); }).number(), 3021);
    EXPECT_EQ(FailureOf([&] { records->Value("Name"); }).number(), 3021);
}

TEST_F(SqliteExport, RecordsAreWalkedToTheirEnd) {
    Sqlite(Place("job.mdb"), "insert into Parts values('a', 1.5, 2, 1), (null, null, null, 0)");
    const auto connection = Connected("job.mdb");
    const auto records = connection->OpenRecordset("SELECT * FROM Parts");
    EXPECT_EQ(std::get<double>(records->Value("flag")), -1);
    EXPECT_EQ(std::get<double>(records->Value("LEN")), 1.5);
    EXPECT_EQ(std::get<std::string>(records->Value("Name")), "a");
    EXPECT_EQ(FailureOf([&] { records->Value("Width"); }).number(), 3265);
    records->MoveNext();
    EXPECT_TRUE(std::holds_alternative<std::monostate>(records->Value("Name")));
    EXPECT_TRUE(std::holds_alternative<std::monostate>(records->Value("Len")));
    EXPECT_EQ(std::get<double>(records->Value("Flag")), 0);
    records->MoveNext();
    EXPECT_TRUE(records->Eof());
}

TEST_F(SqliteExport, ARefusedStatementGivesTheDriversWordsAndTheNextOneRuns) {
    const auto connection = Connected("job.mdb");
    const Failure missing = FailureOf([&] { connection->Execute("INSERT INTO Nowhere (a) VALUES('x')"); });
    EXPECT_EQ(missing.description(), "[SQLite]no such table: Nowhere (1)");
    EXPECT_EQ(missing.source(), "Brenvik export database");
    EXPECT_EQ(missing.detail(), "SQLSTATE HY000: INSERT INTO Nowhere (a) VALUES('x')");
    const Failure quote =
        FailureOf([&] { connection->Execute("INSERT INTO Parts (Name) VALUES('5' panel')"); });
    EXPECT_TRUE(quote.description().starts_with("[SQLite]")) << quote.description();
    EXPECT_EQ(FailureOf([&] { connection->OpenRecordset("SELECT absent FROM Parts"); }).description(),
              "[SQLite]no such column: absent (1)");
    EXPECT_EQ(FailureOf([&] { connection->Execute(""); }).number(), -2147217900);
    connection->Execute("INSERT INTO Parts (Name) VALUES('after')");
    EXPECT_EQ(Sqlite(Place("job.mdb"), "select Name from Parts"), "after\n");
}

TEST_F(SqliteExport, AStatementThatMeetsNoRowIsNoFailure) {
    const auto connection = Connected("job.mdb");
    connection->Execute("DELETE FROM Parts WHERE Name = 'nobody'");
    const auto records = connection->OpenRecordset("DELETE FROM Parts");
    EXPECT_EQ(records->FieldCount(), 0);
    EXPECT_TRUE(records->Eof());
}

TEST_F(SqliteExport, AMissingFileIsToldAndNotMade) {
    const auto connection = databases.CreateConnection();
    const Failure failure = FailureOf([&] { connection->Open(AccessString("c:\\jobs\\gone.mdb")); });
    EXPECT_EQ(failure.description(),
              "The database " + Place("gone.mdb").string() + " can't be found: a file was expected");
    EXPECT_EQ(connection->State(), ConnectionState::Closed);
    EXPECT_FALSE(std::filesystem::exists(Place("gone.mdb")));
}

TEST_F(SqliteExport, ALockedFileFailsAfterTheTimeOfTheRegistration) {
    const auto holder = Connected("job.mdb");
    holder->Execute("BEGIN EXCLUSIVE");
    const auto connection = Connected("job.mdb");
    const Failure failure = FailureOf([&] { connection->Execute("INSERT INTO Parts (Name) VALUES('x')"); });
    EXPECT_TRUE(failure.description().starts_with("[SQLite]database is locked")) << failure.description();
    holder->Execute("ROLLBACK");
    connection->Execute("INSERT INTO Parts (Name) VALUES('x')");
}

TEST_F(SqliteExport, ADatabaseThatIsDamagedInTheMiddleGivesFailures) {
    const auto connection = Connected("job.mdb");
    connection->Execute("INSERT INTO Parts (Name) VALUES('before')");
    std::ofstream(Place("job.mdb"), std::ios::binary) << std::string(8192, 'x');
    for (int row = 0; row < 3; ++row) {
        const Failure failure =
            FailureOf([&] { connection->Execute("INSERT INTO Parts (Name) VALUES('x')"); });
        EXPECT_TRUE(failure.description().starts_with("[SQLite]")) << failure.description();
    }
    connection->Close();
}

TEST_F(SqliteExport, ATableThatGoesAwayInTheMiddleGivesAFailureForEachRow) {
    const auto connection = Connected("job.mdb");
    connection->Execute("INSERT INTO Parts (Name) VALUES('before')");
    Sqlite(Place("job.mdb"), "drop table Parts");
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(
            FailureOf([&] { connection->Execute("INSERT INTO Parts (Name) VALUES('x')"); }).description(),
            "[SQLite]no such table: Parts (1)");
}

TEST_F(SqliteExport, ThePathStandsAsItIsWithoutAResolver) {
    const auto connection = OdbcDatabase().CreateConnection();
    connection->Open("Driver={Bare SQLite};Database=" + Place("job.mdb").string());
    EXPECT_EQ(connection->TableNames("TABLE").size(), 3U);
}

}  // namespace
}  // namespace brenvik
