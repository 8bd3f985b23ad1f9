// The system's own statements run on the part table as the engine that they were written for ran them.
#include <gtest/gtest.h>

#include <chrono>

#include "part_table/failures.h"
#include "part_table/table_layout.h"
#include "table_fixture.h"

namespace brenvik {
namespace {

const char* const baseStatement =
    "SELECT bv_id, bv_qty, bv_partname, bv_subassembly, bv_material, bv_length, bv_width, bv_thickness, "
    "bv_lwt, "
    "bv_x, bv_y, bv_z, bv_notes, bv_userdata1, bv_userdata2, bv_pn, bv_price, bv_eb1, bv_eb2, bv_eb3, "
    "bv_eb4, "
    "bv_face, bv_layer, bv_oldValue1, bv_oldValue2, bv_oldValue3 FROM brenvik_data";

// The scan's statement for one entity.
std::string ScanInsert(const std::string& id, const std::string& name) {
    return "INSERT INTO brenvik_data  (bv_id, bv_qty, bv_partname, bv_subassembly , bv_material, bv_length, "
           "bv_width, bv_thickness, bv_lwt, bv_x, bv_y, bv_z, bv_notes , bv_userdata1, bv_userdata2, bv_pn, "
           "bv_price, bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_oldValue1, bv_oldValue2, "
           "bv_oldValue3,bv_layer) "
           "values ('" +
           id + "', '1', '" + name +
           "', 'Base 1', 'Oak', 600, 300.5, .75, 'LWT', 600, 300.5, 0.75, '', '', '', '', '', '', '', '', "
           "'', '', "
           "0, 0, -1.25, '0' )";
}

TEST_F(PartTable, HasTheColumnsInOrder) {
    const std::unique_ptr<Recordset> all = connection->OpenRecordset("SELECT * FROM brenvik_data");
    const std::unique_ptr<Recordset> named = connection->OpenRecordset(baseStatement);
    ASSERT_EQ(all->FieldCount(), 26);
    ASSERT_EQ(named->FieldCount(), 26);
    for (int i = 0; i < 26; ++i) {
        EXPECT_EQ(all->FieldName(i), part_table::TableColumns[static_cast<std::size_t>(i)].name);
        EXPECT_EQ(all->FieldName(i), named->FieldName(i));
    }
}

TEST_F(PartTable, TakesAScannedPartAndGivesItBack) {
    connection->Execute(ScanInsert("1AF", "T\xC3\xBCrseite"));
    const std::unique_ptr<Recordset> records = connection->OpenRecordset(baseStatement);
    ASSERT_EQ(records->RecordCount(), 1);
    EXPECT_EQ(records->Value("bv_id"), FieldValue("1AF"));
    EXPECT_EQ(records->Value("BV_PARTNAME"), FieldValue("T\xC3\xBCrseite"));
    EXPECT_EQ(records->Value("bv_qty"), FieldValue("1"));
    EXPECT_EQ(records->Value("bv_length"), FieldValue(600.0));
    EXPECT_EQ(records->Value("bv_thickness"), FieldValue(0.75));
    EXPECT_EQ(records->Value("bv_oldvalue3"), FieldValue(-1.25));
    EXPECT_EQ(records->Value("bv_notes"), FieldValue(""));
    EXPECT_EQ(records->Value("bv_layer"), FieldValue("0"));
}

TEST_F(PartTable, QuoteInAValueFailsTheStatementWithTheReason) {
    const Failure failure = FailureOf([&] { connection->Execute(ScanInsert("1", "O'Brien")); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(failure.source(), "Brenvik part table");
    EXPECT_EQ(failure.description(), "near \"Brien\": syntax error");
    EXPECT_EQ(failure.detail(), ScanInsert("1", "O'Brien"));
    EXPECT_EQ(connection->OpenRecordset(baseStatement)->RecordCount(), 0);
}

TEST_F(PartTable, TextWithNoEndFails) {
    EXPECT_EQ(
        FailureOf([&] { connection->Execute("delete from brenvik_data where bv_id = 'x"); }).description(),
        "unrecognized token: \"'x\"");
    EXPECT_EQ(FailureOf([&] { connection->Execute("delete from [brenvik_data"); }).description(),
              "unrecognized token: \"[brenvik_data\"");
}

TEST_F(PartTable, OneStatementAtATime) {
    const Failure failure =
        FailureOf([&] { connection->Execute("delete from brenvik_data; drop table brenvik_data"); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(failure.description(),
              "Characters stand behind the end of the statement:  drop table brenvik_data");
    connection->Execute("select 1=1;  ");
}

TEST_F(PartTable, ParameterWithNoValueIsRefused) {
    EXPECT_EQ(
        FailureOf([&] { connection->Execute("delete from brenvik_data where bv_id = ?"); }).description(),
        "The statement has a parameter with no value");
    EXPECT_EQ(FailureOf([&] { connection->OpenRecordset("select :x"); }).description(),
              "The statement has a parameter with no value");
}

TEST_F(PartTable, UnknownNamesAreRefused) {
    EXPECT_EQ(FailureOf([&] { connection->Execute("delete from other"); }).description(),
              "no such table: other");
    EXPECT_EQ(
        FailureOf([&] { connection->OpenRecordset("select bv_nothing from brenvik_data"); }).description(),
        "no such column: bv_nothing");
    EXPECT_EQ(FailureOf([&] { Insert("1", "a", "b", "Oak"); }).description(), "no such column: Oak");
}

TEST_F(PartTable, TextTakesUpTo255Characters) {
    std::string longest;
    for (int i = 0; i < 255; ++i) longest += "\xC3\xBC";
    Insert("1", longest, "", "1");
    EXPECT_EQ(Column("select bv_partname from brenvik_data"), longest);
    const Failure failure = FailureOf([&] { Insert("2", longest + "x", "", "1"); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(failure.description(), "The column bv_partname holds 255 characters at most");
}

TEST_F(PartTable, NumberColumnsTakeNumbersOnly) {
    const Failure failure = FailureOf([&] { Insert("1", "a", "", "'wide'"); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(failure.description(), "cannot store TEXT value in REAL column brenvik_data.bv_length");
    Insert("2", "a", "", "'12.5'");
    EXPECT_EQ(connection->OpenRecordset("select bv_length from brenvik_data")->Value(0), FieldValue(12.5));
}

TEST_F(PartTable, FilterComparesTextWithoutCase) {
    Insert("1", "a", "Oak", "1");
    Insert("2", "b", "OAK", "1");
    Insert("3", "c", "Oak 2", "1");
    Insert("4", "d",
           "B\xC3\xBC"
           "che",
           "1");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_material = 'oak' "), "1|2");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_material <> 'oak' "), "3|4");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_material Like 'oak%' "), "1|2|3");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_material = 'B\xC3\x9C"
                     "CHE' "),
              "4");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_material Like 'b\xC3\x9C%' "), "4");
}

TEST_F(PartTable, FilterComparesSizesAsNumbersAndQuantitiesAsText) {
    Insert("1", "a", "", "9");
    Insert("2", "b", "", "12");
    Insert("3", "c", "", "100");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_length > 12 "), "3");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_length < 12 "), "1");
    connection->Execute("update brenvik_data set bv_qty = '10' where bv_id = '3'");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_qty = '1' "), "1|2");
    EXPECT_EQ(Column("select bv_id from brenvik_data Where bv_qty > '2' "), "");
}

TEST_F(PartTable, SortPassesOverCase) {
    Insert("1", "b", "", "2");
    Insert("2", "A", "", "2");
    Insert("3", "C", "", "1");
    EXPECT_EQ(Column(std::string(baseStatement) + " order by bv_partname Asc"), "2|1|3");
    EXPECT_EQ(Column(std::string(baseStatement) + " order by bv_length Desc, bv_partname Desc"), "1|2|3");
}

TEST_F(PartTable, GroupCountsPartsWithoutCase) {
    Insert("1", "Side", "Oak", "600");
    Insert("2", "SIDE", "oak", "600");
    Insert("3", "Top", "Oak", "600");
    const std::unique_ptr<Recordset> records = connection->OpenRecordset(
        "Select count(bv_partname) as bv_qty, bv_partname, bv_length from brenvik_data  Where bv_material = "
        "'Oak'  "
        "Group by bv_partname, bv_length order by bv_length Asc");
    ASSERT_EQ(records->RecordCount(), 2);
    EXPECT_EQ(records->FieldName(0), "bv_qty");
    EXPECT_EQ(records->ValueAt(0, 0), FieldValue(2.0));
    EXPECT_EQ(records->ValueAt(1, 0), FieldValue(1.0));
    EXPECT_EQ(records->ValueAt(1, 1), FieldValue("Top"));
    EXPECT_FALSE(records->Updatable());
}

TEST_F(PartTable, DistinctPassesOverCase) {
    Insert("1", "a", "Oak", "1");
    Insert("2", "b", "OAK", "1");
    Insert("3", "c", "Ash", "1");
    EXPECT_EQ(connection->OpenRecordset("select distinct bv_material from brenvik_data")->RecordCount(), 2);
}

TEST_F(PartTable, QuickCopyReachesBlankAndNullCells) {
    Insert("1", "", "Oak", "1");
    connection->Execute("insert into brenvik_data (bv_id, bv_material) values ('2', 'Oak')");
    Insert("3", "Top", "Oak", "1");
    Insert("4", "", "Ash", "1");
    connection->Execute(
        "update brenvik_data set bv_partname = 'Side'  Where bv_material = 'Oak'  AND (isnull(bv_partname) "
        "or "
        "bv_partname = '')");
    EXPECT_EQ(Column("select bv_partname from brenvik_data order by bv_id"), "Side|Side|Top|");
    connection->Execute(
        "update brenvik_data set bv_partname = 'All'  where (isnull(bv_partname)  or  bv_partname = '')");
    EXPECT_EQ(Column("select bv_partname from brenvik_data order by bv_id"), "Side|Side|Top|All");
    connection->Execute("select 1=1");
}

TEST_F(PartTable, TenThousandPartsTakeWellUnderASecond) {
    const auto start = std::chrono::steady_clock::now();
    connection->BeginTrans();
    for (int i = 0; i < 10000; ++i)
        connection->Execute(ScanInsert(std::to_string(i), "Side " + std::to_string(i)));
    connection->CommitTrans();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(connection->OpenRecordset(baseStatement)->RecordCount(), 10000);
    RecordProperty("seconds", std::to_string(seconds.count()));
    // Far above the usual third of a second, for a loaded machine and for sanitizers.
    EXPECT_LT(seconds.count(), 20.0);
}

}  // namespace
}  // namespace brenvik
