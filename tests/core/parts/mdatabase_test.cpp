// The working database: its path and file, and the two connections.
#include "parts/mdatabase.h"

#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "parts/part_table.h"
#include "session/text_files.h"

namespace brenvik {
namespace {

class WorkingDatabase : public testing::Test {
  protected:
    WorkingDatabase() { TheSession().InstallFolder = "C:\\Brenvik\\"; }
    fakes::LoadedSystem system;
};

TEST_F(WorkingDatabase, LiesInTheInstallFolderWhenNoPathIsSet) {
    for (const char* blank : {"", "   "}) {
        system.settings.Set("MDBPath", blank);
        mDatabase::TakeWorkingDatabasePath();
        EXPECT_EQ(TheSession().MDBPath, "C:\\Brenvik\\_db\\bv04.mdb");
    }
}

TEST_F(WorkingDatabase, LiesWhereTheSettingSays) {
    system.settings.Set("MDBPath", "D:\\jobs\\work.mdb");
    EXPECT_EQ(mDatabase::WorkingDatabasePath(), "D:\\jobs\\work.mdb");
    EXPECT_EQ(mDatabase::ConnectionString(),
              "Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=D:\\jobs\\work.mdb;"
              "Mode=Share Deny None");
}

TEST_F(WorkingDatabase, IsRefreshedFromItsBlankCopyInTheInstallFolder) {
    system.files.contents[system.WorkPath] = "old";
    TheSession().MDBPath = "D:\\jobs\\work.mdb";
    mDatabase::RefreshWorkingDatabase();
    EXPECT_EQ(system.files.acts, (std::vector<std::string>{
                                     "remove C:\\Brenvik\\_db\\bv04.mdb",
                                     "copy C:\\Brenvik\\_db\\bv-back04.mdb to C:\\Brenvik\\_db\\bv04.mdb"}));
    EXPECT_EQ(system.files.contents[system.WorkPath], "blank");
}

TEST_F(WorkingDatabase, IsOfAFolderOfItsOwnWhileAnotherProgramIsAtWork) {
    system.files.workFolder = "C:\\Brenvik\\_db\\work-1\\";
    system.files.contents[system.WorkPath] = "another's";
    for (const char* set : {"", "c:\\brenvik\\_db\\BV04.mdb"}) {
        system.settings.Set("MDBPath", set);
        mDatabase::TakeWorkingDatabasePath();
        EXPECT_EQ(TheSession().MDBPath, "C:\\Brenvik\\_db\\work-1\\bv04.mdb");
        EXPECT_EQ(mDatabase::DatabasePathToKeep(), "");
    }
    mDatabase::RefreshWorkingDatabase();
    EXPECT_EQ(system.files.contents["C:\\Brenvik\\_db\\work-1\\bv04.mdb"], "blank");
    EXPECT_EQ(system.files.contents[system.WorkPath], "another's");
    EXPECT_EQ(HandOverFolder(), system.files.workFolder);
}

TEST_F(WorkingDatabase, IsKeptAsTheUserSetItAndTheDefaultAsBlank) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"C:\\Brenvik\\_db\\bv04.mdb", ""},
        {"c:\\brenvik\\_DB\\bv04.mdb", ""},
        {"C:\\Other\\_db\\bv04.mdb", "C:\\Other\\_db\\bv04.mdb"},
        {"D:\\jobs\\work.mdb", "D:\\jobs\\work.mdb"}};
    for (const auto& [set, kept] : cases) {
        system.settings.Set("MDBPath", set);
        mDatabase::TakeWorkingDatabasePath();
        EXPECT_EQ(mDatabase::DatabasePathToKeep(), kept) << "a copied home would lead back to this one";
    }
}

TEST_F(WorkingDatabase, StandsInQuotesWhereItsPathWouldBeCut) {
    const std::pair<const char*, const char*> cases[] = {
        {"D:\\work.mdb", "D:\\work.mdb"},   {"D:\\a b'c.mdb", "D:\\a b'c.mdb"},
        {"D:\\a;b.mdb", "\"D:\\a;b.mdb\""}, {"D:\\a;\"b.mdb", "\"D:\\a;\"\"b.mdb\""},
        {"'a.mdb'", "\"'a.mdb'\""},         {"D:\\end ", "\"D:\\end \""}};
    for (const auto& [path, value] : cases)
        EXPECT_EQ(mDatabase::ConnectionString(path),
                  "Provider=Microsoft.Jet.OLEDB.4.0;User ID=admin;Data Source=" + std::string(value) +
                      ";Mode=Share Deny None");
}

TEST_F(WorkingDatabase, IsRefreshedWhereThereWasNone) {
    mDatabase::RefreshWorkingDatabase();
    EXPECT_EQ(system.files.acts.size(), 1u);
    EXPECT_EQ(system.files.contents[system.WorkPath], "blank");
}

TEST_F(WorkingDatabase, RefreshFailsWithoutABlankCopy) {
    system.files.contents.clear();
    try {
        mDatabase::RefreshWorkingDatabase();
        FAIL() << "there is nothing to copy";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), failure_number::FileNotFound);
    }
}

TEST_F(WorkingDatabase, RefreshClosesTheConnectionsToTheOldFile) {
    mDatabase::RefreshWorkingDatabase();
    mDatabase::OpenScanConnection();
    std::unique_ptr<Recordset> recordset;
    mDatabase::OpenRecordset(ScanSelect, recordset);
    recordset.reset();
    mDatabase::RefreshWorkingDatabase();
    EXPECT_EQ(system.database.openConnections, 0);
    EXPECT_EQ(TheSession().ReaderUseCount, 0);
}

TEST_F(WorkingDatabase, ARecordSetFromBeforeARefreshCountsNoMore) {
    mDatabase::RefreshWorkingDatabase();
    std::unique_ptr<Recordset> before, after;
    mDatabase::OpenRecordset(ScanSelect, before);
    mDatabase::RefreshWorkingDatabase();
    mDatabase::CloseRecordset(before);
    EXPECT_EQ(TheSession().ReaderUseCount, 0);
    mDatabase::OpenRecordset(ScanSelect, after);
    EXPECT_EQ(TheSession().ReaderUseCount, 1);
    EXPECT_EQ(system.database.openConnections, 1);
    mDatabase::CloseRecordset(after);
}

TEST_F(WorkingDatabase, ScanConnectionIsOpenedOnce) {
    mDatabase::RefreshWorkingDatabase();
    mDatabase::OpenScanConnection();
    mDatabase::OpenScanConnection();
    EXPECT_EQ(system.database.connectionStrings.size(), 1u);
}

TEST_F(WorkingDatabase, StatementNeedsTheScanConnection) {
    EXPECT_THROW(mDatabase::ExecuteSql("delete from brenvik_data"), Failure);
    mDatabase::RefreshWorkingDatabase();
    mDatabase::OpenScanConnection();
    mDatabase::ExecuteSql("delete from brenvik_data");
    EXPECT_EQ(system.database.statements, std::vector<std::string>{"delete from brenvik_data"});
}

class Reader : public WorkingDatabase {
  protected:
    Reader() { mDatabase::RefreshWorkingDatabase(); }
};

TEST_F(Reader, SaysWhetherThereIsAnyRecord) {
    std::unique_ptr<Recordset> recordset;
    EXPECT_FALSE(mDatabase::OpenRecordset(ScanSelect, recordset));
    mDatabase::CloseRecordset(recordset);
    system.database.databases["c:\\brenvik\\_db\\bv04.mdb"].emplace_back(PartColumns().size());
    EXPECT_TRUE(mDatabase::OpenRecordset(ScanSelect, recordset));
    mDatabase::CloseRecordset(recordset);
}

TEST_F(Reader, ConnectionIsOpenWhileAnyRecordSetIs) {
    std::unique_ptr<Recordset> first, second;
    mDatabase::OpenRecordset(ScanSelect, first);
    mDatabase::OpenRecordset(FullSelect(), second);
    EXPECT_EQ(TheSession().ReaderUseCount, 2);
    EXPECT_EQ(system.database.openConnections, 1);
    mDatabase::CloseRecordset(first);
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(TheSession().ReaderUseCount, 1);
    EXPECT_EQ(system.database.openConnections, 1);
    mDatabase::CloseRecordset(second);
    EXPECT_EQ(TheSession().ReaderUseCount, 0);
    EXPECT_EQ(system.database.openConnections, 0);
    EXPECT_EQ(TheSession().ReaderConnection, nullptr);
}

TEST_F(Reader, ClosingNoRecordSetDoesNothing) {
    std::unique_ptr<Recordset> none;
    mDatabase::CloseRecordset(none);
    EXPECT_EQ(TheSession().ReaderUseCount, 0);
}

TEST_F(Reader, ARefusedStatementLeavesNothingOpen) {
    std::unique_ptr<Recordset> recordset;
    EXPECT_THROW(mDatabase::OpenRecordset("select nonsense", recordset), Failure);
    EXPECT_EQ(system.database.openConnections, 0);
    EXPECT_EQ(TheSession().ReaderUseCount, 0);
    EXPECT_NO_THROW(mDatabase::OpenRecordset(ScanSelect, recordset));
    EXPECT_THROW(
        {
            std::unique_ptr<Recordset> other;
            mDatabase::OpenRecordset("select nonsense", other);
        },
        Failure);
    EXPECT_EQ(TheSession().ReaderUseCount, 1);
    EXPECT_EQ(system.database.openConnections, 1);
    mDatabase::CloseRecordset(recordset);
}

}  // namespace
}  // namespace brenvik
