// Walking results and writing single fields back to the table.
#include <gtest/gtest.h>

#include "part_table/failures.h"
#include "table_fixture.h"

namespace brenvik {
namespace {

class PartRecords : public PartTable {
  protected:
    PartRecords() {
        Insert("1A", "Side", "Oak", "600");
        Insert("2B", "Top", "Ash", "400");
        Insert("3C", "Back", "Oak", "500");
    }
};

TEST_F(PartRecords, AreWalkedForward) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    std::string walked;
    for (; !records->Eof(); records->MoveNext()) walked += Text(records->Value("bv_id")) + " ";
    EXPECT_EQ(walked, "1A 2B 3C ");
}

TEST_F(PartRecords, AnyRecordIsReadWithTheCurrentOneLeftAlone) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    EXPECT_EQ(records->ValueAt(2, 0), FieldValue("3C"));
    EXPECT_EQ(records->Value(0), FieldValue("1A"));
}

TEST_F(PartRecords, NullIsToldFromBlank) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select bv_notes from brenvik_data");
    EXPECT_EQ(records->Value(0), FieldValue(std::monostate{}));
}

TEST_F(PartRecords, EmptyResultIsAtItsEnd) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select * from brenvik_data where bv_id = 'none'");
    EXPECT_TRUE(records->Eof());
    EXPECT_EQ(records->RecordCount(), 0);
    EXPECT_EQ(records->FieldCount(), 26);
    EXPECT_TRUE(records->Updatable());
    EXPECT_EQ(FailureOf([&] { records->Value(0); }).number(), failure_number::NoCurrentRecord);
    EXPECT_EQ(FailureOf([&] { records->MoveNext(); }).number(), failure_number::NoCurrentRecord);
}

TEST_F(PartRecords, PlacesThatAreNoneFail) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select bv_id from brenvik_data");
    EXPECT_EQ(FailureOf([&] { records->Value("bv_qty"); }).description(),
              "There is no field named \"bv_qty\"");
    EXPECT_EQ(FailureOf([&] { records->Value(1); }).number(), failure_number::NoSuchField);
    EXPECT_EQ(FailureOf([&] { records->Value(-1); }).number(), failure_number::NoSuchField);
    EXPECT_EQ(FailureOf([&] { records->FieldName(1); }).number(), failure_number::NoSuchField);
    EXPECT_EQ(FailureOf([&] { records->ValueAt(3, 0); }).number(), failure_number::NoCurrentRecord);
    EXPECT_EQ(FailureOf([&] { records->ValueAt(-1, 0); }).number(), failure_number::NoCurrentRecord);
}

TEST_F(PartRecords, AreUnknownOnceClosed) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select bv_id from brenvik_data");
    records->Close();
    EXPECT_EQ(FailureOf([&] { records->Eof(); }).number(), failure_number::ObjectClosed);
    EXPECT_EQ(FailureOf([&] { records->Value("bv_id"); }).number(), failure_number::ObjectClosed);
    EXPECT_EQ(FailureOf([&] { records->RecordCount(); }).number(), failure_number::ObjectClosed);
}

TEST_F(PartRecords, UpdateReachesTheRowUnderAnySort) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select bv_id, bv_notes, bv_x from brenvik_data order by bv_length");
    ASSERT_TRUE(records->Updatable());
    records->Update(0, 1, FieldValue("it's \"short\""));
    records->Update(1, 2, FieldValue(12.5));
    EXPECT_EQ(records->ValueAt(0, 1), FieldValue("it's \"short\""));
    EXPECT_EQ(Column("select bv_notes from brenvik_data order by bv_id"), "null|it's \"short\"|null");
    EXPECT_EQ(Column("select bv_x from brenvik_data where bv_id = '3C'"), "12.500000");
}

TEST_F(PartRecords, UpdateKeepsTheKindOfTheColumn) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select bv_qty, bv_x from brenvik_data");
    records->Update(0, 0, FieldValue(4.0));
    records->Update(0, 1, FieldValue("7.25"));
    EXPECT_TRUE(std::holds_alternative<std::string>(records->ValueAt(0, 0)));
    EXPECT_EQ(records->ValueAt(0, 1), FieldValue(7.25));
    const Failure failure = FailureOf([&] { records->Update(0, 1, FieldValue("")); });
    EXPECT_EQ(failure.number(), failure_number::StatementRefused);
    EXPECT_EQ(records->ValueAt(0, 1), FieldValue(7.25)) << "a refused value must not show";
}

TEST_F(PartRecords, ARefusedUpdateIsInNobodysWay) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select bv_partname, bv_id from brenvik_data");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 0, FieldValue(std::string(256, 'x'))); }).number(),
              failure_number::StatementRefused);
    records->Update(1, 0, FieldValue("Lid"));
    records->Update(0, 0, FieldValue(std::monostate{}));
    EXPECT_EQ(Column("select bv_partname from brenvik_data"), "null|Lid|Back");
    Opened()->Execute("delete from brenvik_data where bv_id = '3C'");
    connection->Execute("drop table brenvik_data");
}

TEST_F(PartRecords, UpdatesNeverReachAFileThatReplacedTheirOwn) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    records->Update(0, 2, FieldValue("first"));
    database.CreateBlankPartDatabase("c:\\bv04.mdb");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, FieldValue("second")); }).number(),
              failure_number::DatabaseUnavailable);
    database = Database();
    std::unique_ptr<Connection> fresh = Opened();
    connection.swap(fresh);
    Insert("1A", "Door", "Oak", "1");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, FieldValue("third")); }).number(),
              failure_number::DatabaseUnavailable);
    EXPECT_EQ(Column("select bv_partname from brenvik_data"), "Door");
}

TEST_F(PartRecords, UpdatesMeetATableThatWasMadeAnewWithOtherColumns) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    records->Update(0, 2, FieldValue("first"));
    connection->Execute("drop table brenvik_data");
    connection->Execute("create table brenvik_data (bv_id text)");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, FieldValue("second")); }).number(),
              failure_number::StatementRefused);
}

TEST_F(PartRecords, UpdateToNull) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select bv_partname from brenvik_data");
    records->Update(1, 0, FieldValue(std::monostate{}));
    EXPECT_EQ(Column("select bv_partname from brenvik_data"), "Side|null|Back");
}

TEST_F(PartRecords, UpdateOfATextThatIsTooLongFails) {
    const std::unique_ptr<Recordset> records =
        connection->OpenRecordset("select bv_partname from brenvik_data");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 0, FieldValue(std::string(256, 'x'))); }).description(),
              "The column bv_partname holds 255 characters at most");
}

TEST_F(PartRecords, GroupedRecordsCannotBeUpdated) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset(
        "Select count(bv_partname) as bv_qty, bv_material from brenvik_data Group by bv_material");
    EXPECT_FALSE(records->Updatable());
    EXPECT_EQ(FailureOf([&] { records->Update(0, 1, FieldValue("x")); }).number(),
              failure_number::NotUpdatable);
}

TEST_F(PartRecords, UpdateOfARowThatIsGoneFails) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    connection->Execute("delete from brenvik_data where bv_id = '2B'");
    EXPECT_EQ(FailureOf([&] { records->Update(1, 2, FieldValue("x")); }).number(),
              failure_number::RecordGone);
}

TEST_F(PartRecords, UpdateNeverMeetsARowThatTookThePlaceOfTheOldOne) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    connection->Execute("delete from brenvik_data");
    Insert("9F", "Door", "Oak", "1");
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, FieldValue("x")); }).number(),
              failure_number::RecordGone);
    EXPECT_EQ(Column("select bv_partname from brenvik_data"), "Door");
}

TEST_F(PartRecords, OutliveTheirConnectionForReadingOnly) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    connection->Close();
    EXPECT_EQ(records->Value("bv_id"), FieldValue("1A"));
    EXPECT_EQ(FailureOf([&] { records->Update(0, 2, FieldValue("x")); }).number(),
              failure_number::ObjectClosed);
}

TEST_F(PartRecords, LeaveNoLockOnTheFile) {
    const std::unique_ptr<Recordset> records = connection->OpenRecordset("select * from brenvik_data");
    const std::unique_ptr<Connection> other = Opened();
    other->Execute("delete from brenvik_data");
    EXPECT_EQ(records->RecordCount(), 3);
}

}  // namespace
}  // namespace brenvik
