// Opening part databases: connection strings, files that are none, transactions, other programs.
#include <gtest/gtest.h>

#include <fstream>

#include "part_table/connection_string.h"
#include "part_table/failures.h"
#include "table_fixture.h"

namespace brenvik {
namespace {

using part_table::ParseConnectionString;

TEST(ConnectionStringText, NamesTheDataSource) {
    EXPECT_EQ(
        ParseConnectionString("Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=c:\\_db\\bv04.mdb;"
                              "Mode=Share Deny None")
            .dataSource,
        "c:\\_db\\bv04.mdb");
    EXPECT_EQ(
        ParseConnectionString("Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=/home/a b/x.mdb;"
                              "Mode=Share Deny None;Persist Security Info=False")
            .dataSource,
        "/home/a b/x.mdb");
    EXPECT_EQ(
        ParseConnectionString("provider = microsoft.jet.oledb.4.0 ; data source = \"a;b.mdb\" ;").dataSource,
        "a;b.mdb");
}

TEST(ConnectionStringText, KnowsReadingOnly) {
    EXPECT_TRUE(ParseConnectionString("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=x;Mode=Read").readOnly);
    EXPECT_FALSE(ParseConnectionString("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=x").readOnly);
}

struct BadString {
    const char* text;
    const char* description;

    friend void PrintTo(const BadString& each, std::ostream* out) {
        *out << testing::PrintToString(each.text);
    }
};

class ConnectionStringRefusal : public testing::TestWithParam<BadString> {};

TEST_P(ConnectionStringRefusal, TellsWhatWasExpected) {
    const Failure failure = FailureOf([] { ParseConnectionString(GetParam().text); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Table, ConnectionStringRefusal,
    testing::Values(
        BadString{"", "Provider cannot be found: \"\" where Microsoft.Jet.OLEDB.4.0 was expected"},
        BadString{"Provider=MSDASQL;Data Source=x",
                  "Provider cannot be found: \"MSDASQL\" where Microsoft.Jet.OLEDB.4.0 was expected"},
        BadString{"Provider=Microsoft.Jet.OLEDB.4.0", "The connection string names no data source"},
        BadString{"Provider=Microsoft.Jet.OLEDB.4.0;Data Source= ",
                  "The connection string names no data source"},
        BadString{"garbage",
                  "The connection string has \"garbage\" where an attribute name=value was expected"},
        BadString{"a=b;garbage;c=d",
                  "The connection string has \"garbage\" where an attribute name=value was expected"},
        BadString{"Data Source=\"x",
                  "The connection string has a quoted value with no end: Data Source=\"x"}));

TEST(ConnectionStringText, QuotedValuesMayHoldSemicolonsAndQuotes) {
    const auto sourceOf = [](const std::string& value) {
        return part_table::ParseConnectionString("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + value +
                                                 ";Mode=Share Deny None")
            .dataSource;
    };
    EXPECT_EQ(sourceOf("\"/tmp/a;b/bv04.mdb\""), "/tmp/a;b/bv04.mdb");
    EXPECT_EQ(sourceOf("\"/tmp/a\"\"b;c/x.mdb\""), "/tmp/a\"b;c/x.mdb");
    EXPECT_EQ(sourceOf("'it''s.mdb'"), "it's.mdb");
    EXPECT_EQ(sourceOf("\"\"\"\""), "\"");
}

TEST_F(PartTable, ConnectionKnowsItsState) {
    const std::unique_ptr<Connection> other = database.CreateConnection();
    EXPECT_EQ(other->State(), ConnectionState::Closed);
    other->Open(ConnectionText("c:\\bv04.mdb"));
    EXPECT_EQ(other->State(), ConnectionState::Open);
    EXPECT_EQ(FailureOf([&] { other->Open(ConnectionText("c:\\bv04.mdb")); }).number(),
              failure_number::ObjectOpen);
    other->Close();
    EXPECT_EQ(other->State(), ConnectionState::Closed);
    EXPECT_EQ(FailureOf([&] { other->Execute("select 1=1"); }).number(), failure_number::ObjectClosed);
    EXPECT_EQ(FailureOf([&] { other->Close(); }).number(), failure_number::ObjectClosed);
    EXPECT_EQ(FailureOf([&] { other->BeginTrans(); }).number(), failure_number::ObjectClosed);
}

TEST_F(PartTable, MissingFileFailsAndIsNotMade) {
    const Failure failure = FailureOf([&] { Opened("c:\\nothing.mdb"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(),
              "The part database " + (folder.Path() / "nothing.mdb").string() + " can't be found");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "nothing.mdb"));
}

TEST_F(PartTable, FolderInPlaceOfTheFileFails) {
    std::filesystem::create_directory(folder.Path() / "folder.mdb");
    EXPECT_EQ(FailureOf([&] { Opened("c:\\folder.mdb"); }).description(),
              "The part database " + (folder.Path() / "folder.mdb").string() + " is no file");
}

TEST_F(PartTable, FileOfAnotherKindFailsAndStaysAsItIs) {
    const std::filesystem::path other = folder.Path() / "other.mdb";
    const std::string content = "This is a text that someone saved under a name that ends in mdb.\r\n";
    std::ofstream(other, std::ios::binary) << content << content << content << content << content;
    const auto size = std::filesystem::file_size(other);
    const Failure failure = FailureOf([&] { Opened("c:\\other.mdb"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(), "The part database " + other.string() +
                                         " is no part database: a database file was expected (file is not a "
                                         "database)");
    EXPECT_EQ(std::filesystem::file_size(other), size);
}

TEST_F(PartTable, CutOffFileFails) {
    connection->Close();
    std::filesystem::resize_file(File(), 1000);
    EXPECT_EQ(FailureOf([&] { Opened()->OpenRecordset("select * from brenvik_data"); }).number(),
              failure_number::DatabaseUnavailable);
}

TEST_F(PartTable, BlankDatabaseReplacesTheFile) {
    Insert("1A", "Side", "Oak", "1");
    connection->Close();
    database.CreateBlankPartDatabase("c:\\bv04.mdb");
    connection = Opened();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1)
        << "a work file is left";
}

TEST_F(PartTable, BlankDatabaseNeedsItsFolder) {
    const Failure failure = FailureOf([&] { database.CreateBlankPartDatabase("c:\\none/x.mdb"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_NE(failure.description().find("can't be found"), std::string::npos);
}

TEST_F(PartTable, BlankDatabaseOverAFolderFailsAndLeavesNothing) {
    std::filesystem::create_directories(folder.Path() / "x.mdb" / "inside");
    EXPECT_EQ(FailureOf([&] { database.CreateBlankPartDatabase("c:\\x.mdb"); }).number(),
              failure_number::DatabaseUnavailable);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 2)
        << "a work file is left";
}

TEST_F(PartTable, RemovedFileFailsTheNextStatement) {
    std::filesystem::remove(File());
    const Failure failure = FailureOf([&] { connection->Execute("delete from brenvik_data"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(), "The part database " + File().string() + " can't be found");
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(PartTable, AFileThatReplacesTheOpenOneFailsEveryStatement) {
    Insert("1A", "Side", "Oak", "1");
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    database.CreateBlankPartDatabase("c:\\bv04.mdb");
    const std::string replaced =
        "The part database " + File().string() + " was replaced by another file since it was opened";
    EXPECT_EQ(FailureOf([&] { connection->OpenRecordset("select * from brenvik_data"); }).description(),
              replaced);
    EXPECT_EQ(FailureOf([&] { connection->Execute("delete from brenvik_data"); }).description(), replaced);
    EXPECT_EQ(FailureOf([&] { connection->BeginTrans(); }).description(), replaced);
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, "Top"); }).number(), failure_number::DatabaseUnavailable);
    connection.reset();
    connection = Opened();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "") << "a new connection has the new file";
}

TEST_F(PartTable, AFileThatReplacesTheOpenOneIsOpenedByNoOtherConnection) {
    Insert("1A", "Side", "Oak", "1");
    database.CreateBlankPartDatabase("c:\\bv04.mdb");
    const std::string replaced =
        "The part database " + File().string() + " was replaced by another file since it was opened";
    EXPECT_EQ(FailureOf([&] { Opened(); }).description(), replaced) << "its rows are of another list";
    EXPECT_EQ(FailureOf([&] { Opened(); }).description(), replaced) << "and stay so";
    connection->Close();
    EXPECT_EQ(Opened()->State(), ConnectionState::Open);
}

TEST_F(PartTable, AFileThatComesBackAsAnotherOneFailsToo) {
    const std::filesystem::path aside = folder.Path() / "aside.mdb";
    std::filesystem::rename(File(), aside);
    EXPECT_EQ(FailureOf([&] { connection->Execute("delete from brenvik_data"); }).description(),
              "The part database " + File().string() + " can't be found");
    std::filesystem::copy_file(aside, File());
    EXPECT_EQ(FailureOf([&] { connection->Execute("delete from brenvik_data"); }).number(),
              failure_number::DatabaseUnavailable);
    std::filesystem::rename(aside, File());
    connection->Execute("delete from brenvik_data");
}

TEST_F(PartTable, AFileInUseByAnotherProgramIsRefusedForGood) {
    auto other = std::make_unique<SqliteDatabase>(Database());
    const auto open = [](SqliteDatabase& program) {
        std::unique_ptr<Connection> made = program.CreateConnection();
        made->Open(ConnectionText("c:\\bv04.mdb"));
        return made;
    };
    const Failure failure = FailureOf([&] { open(*other); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_NE(failure.description().find(File().string() + " is in use by another program"),
              std::string::npos)
        << failure.description();
    connection.reset();
    database = Database();
    EXPECT_EQ(FailureOf([&] { open(*other); }).number(), failure_number::DatabaseUnavailable)
        << "what stands there now is the list of the other one";
    other = std::make_unique<SqliteDatabase>(Database());
    const std::unique_ptr<Connection> first = open(*other), second = open(*other);
    EXPECT_EQ(second->State(), ConnectionState::Open) << "one program has as many connections as it likes";
}

TEST_F(PartTable, ReplacedFileFailsATransactionThatIsUnderWay) {
    connection->BeginTrans();
    Insert("1A", "Side", "Oak", "1");
    database.CreateBlankPartDatabase("c:\\bv04.mdb");
    EXPECT_EQ(FailureOf([&] { connection->CommitTrans(); }).description(),
              "The part database " + File().string() + " was replaced by another file since it was opened");
}

TEST_F(PartTable, FileLockedByAnotherProgramFails) {
    const std::unique_ptr<Connection> other = Opened();
    other->BeginTrans();
    other->Execute("insert into brenvik_data (bv_id) values ('1')");
    const Failure failure = FailureOf([&] { connection->Execute("delete from brenvik_data"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(),
              "The part database " + File().string() + " is locked by another program (database is locked)");
    other->RollbackTrans();
    connection->Execute("delete from brenvik_data");
}

TEST_F(PartTable, TransactionOnALockedFileFailsBeforeItsFirstRow) {
    const std::unique_ptr<Connection> other = Opened();
    other->BeginTrans();
    const Failure failure = FailureOf([&] { connection->BeginTrans(); });
    EXPECT_EQ(failure.description(),
              "The part database " + File().string() + " is locked by another program (database is locked)");
    EXPECT_EQ(connection->OpenRecordset("select * from brenvik_data")->RecordCount(), 0);
    other->RollbackTrans();
    connection->BeginTrans();
    connection->CommitTrans();
    const std::unique_ptr<Connection> reader = database.CreateConnection();
    reader->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=c:\\bv04.mdb;Mode=Read");
    reader->BeginTrans();
    reader->CommitTrans();
}

TEST_F(PartTable, ConnectionForReadingRefusesToWrite) {
    const std::unique_ptr<Connection> reader = database.CreateConnection();
    reader->Open("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=c:\\bv04.mdb;Mode=Read");
    EXPECT_EQ(reader->OpenRecordset("select * from brenvik_data")->RecordCount(), 0);
    const Failure failure = FailureOf([&] { reader->Execute("delete from brenvik_data"); });
    EXPECT_EQ(failure.number(), failure_number::DatabaseUnavailable);
    EXPECT_EQ(failure.description(), "The part database " + File().string() +
                                         " can only be read (attempt to write a readonly database)");
}

TEST_F(PartTable, TransactionReachesOthersWhenItIsCommitted) {
    const std::unique_ptr<Connection> other = Opened();
    const auto seen = [&] { return other->OpenRecordset("select * from brenvik_data")->RecordCount(); };
    connection->BeginTrans();
    Insert("1A", "Side", "Oak", "1");
    EXPECT_EQ(seen(), 0);
    connection->CommitTrans();
    EXPECT_EQ(seen(), 1);
}

TEST_F(PartTable, RollbackAndClosingDropATransaction) {
    connection->BeginTrans();
    Insert("1A", "Side", "Oak", "1");
    connection->RollbackTrans();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "");
    connection->BeginTrans();
    Insert("1A", "Side", "Oak", "1");
    connection->Close();
    connection = Opened();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "");
}

TEST_F(PartTable, TransactionsNest) {
    connection->BeginTrans();
    Insert("1", "a", "", "1");
    connection->BeginTrans();
    Insert("2", "b", "", "1");
    connection->RollbackTrans();
    connection->BeginTrans();
    Insert("3", "c", "", "1");
    connection->CommitTrans();
    connection->CommitTrans();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "1|3");
}

TEST_F(PartTable, CommitAndRollbackNeedATransaction) {
    EXPECT_EQ(FailureOf([&] { connection->CommitTrans(); }).number(), failure_number::NoTransaction);
    EXPECT_EQ(FailureOf([&] { connection->RollbackTrans(); }).number(), failure_number::NoTransaction);
}

TEST_F(PartTable, FailedRowLeavesTheTransactionToTheOthers) {
    connection->BeginTrans();
    Insert("1", "a", "", "1");
    EXPECT_EQ(FailureOf([&] { Insert("2", "O'Brien", "", "1"); }).number(), failure_number::StatementRefused);
    Insert("3", "c", "", "1");
    connection->CommitTrans();
    EXPECT_EQ(Column("select bv_id from brenvik_data"), "1|3");
}

}  // namespace
}  // namespace brenvik
