// How the list is written: columns of the table, quoting of CSV, texts and numbers of JSON.
#include "reports/list_output.h"

#include <gtest/gtest.h>

#include <sstream>

namespace brenvik::app {
namespace {

std::string Written(const PartList& list, ListFormat format) {
    std::ostringstream out;
    WritePartList(list, format, out);
    return out.str();
}

/// A list of three columns with these rows.
PartList SmallList(std::vector<std::vector<FieldValue>> rows) {
    PartList list;
    list.columns = {
        {"bv_id", "ID", false}, {"bv_partname", "Part Name", false}, {"bv_length", "Length", true}};
    list.rows = std::move(rows);
    return list;
}

/// A whole row of the part table with some values filled.
std::vector<FieldValue> PartRow(const PartList& list,
                                const std::vector<std::pair<std::string, FieldValue>>& values) {
    std::vector<FieldValue> row;
    for (const ListColumn& column : list.columns) {
        row.emplace_back(column.number ? FieldValue(0.0) : FieldValue(std::string()));
        for (const auto& [name, value] : values)
            if (name == column.name) row.back() = value;
    }
    return row;
}

TEST(ListTable, AlignsTextsLeftAndNumbersRight) {
    EXPECT_EQ(Written(SmallList({{"1F", "Side", 720.0}, {"2A", "Top Rail", 18.5}}), ListFormat::Table),
              "ID  Part Name  Length\n"
              "--  ---------  ------\n"
              "1F  Side          720\n"
              "2A  Top Rail     18.5\n");
}

TEST(ListNumbers, OfNoiseAreZeros) {
    const PartList list = SmallList({{"1", "a", -3.6e-15}, {"2", "b", -0.0}});
    EXPECT_EQ(Written(list, ListFormat::Csv), "ID,Part Name,Length\r\n1,a,0\r\n2,b,0\r\n");
    EXPECT_NE(Written(list, ListFormat::Json).find("\"bv_length\": 0}"), std::string::npos);
    EXPECT_EQ(Written(list, ListFormat::Json).find("-"), std::string::npos);
}

TEST(ListTable, CountsCharactersAndWideOnesTwice) {
    EXPECT_EQ(Written(SmallList({{"1", "Türseite", 1.0}, {"2", "側板", 2.0}}), ListFormat::Table),
              "ID  Part Name  Length\n"
              "--  ---------  ------\n"
              "1   Türseite        1\n"
              "2   側板            2\n");
}

TEST(ListTable, KeepsOneLinePerPart) {
    EXPECT_EQ(Written(SmallList({{"1", "a\r\nb\tc\xFF", 1.0}}), ListFormat::Table),
              "ID  Part Name  Length\n"
              "--  ---------  ------\n"
              "1   a  b c\xEF\xBF\xBD         1\n");
}

TEST(ListTable, LeavesOutColumnsThatNoPartFills) {
    PartList list = EmptyPartList();
    list.rows.push_back(PartRow(list, {{"bv_id", "1"}, {"bv_lwt", "LWT"}, {"bv_notes", "n"}}));
    EXPECT_EQ(Written(list, ListFormat::Table),
              "ID  Qty  Part Name  Sub Assembly  Material  Length  Width  Thickness  ORIE  Notes\n"
              "--  ---  ---------  ------------  --------  ------  -----  ---------  ----  -----\n"
              "1                                                0      0          0  LWT   n\n");
}

TEST(ListTable, ShowsTheExtentsWhereAPartHasNoLetters) {
    PartList list = EmptyPartList();
    list.rows.push_back(PartRow(list, {{"bv_id", "1"}, {"bv_lwt", "LWT"}}));
    list.rows.push_back(PartRow(list, {{"bv_id", "2"}, {"bv_x", 18.0}}));
    EXPECT_NE(Written(list, ListFormat::Table).find("ORIE  Value1  Value2  Value3\n"), std::string::npos);
}

TEST(ListTable, OfNoPartsIsTheHeadAlone) {
    EXPECT_EQ(Written(SmallList({}), ListFormat::Table), "ID  Part Name  Length\n--  ---------  ------\n");
}

TEST(ListCsv, HasAllColumnsOfThePartTable) {
    EXPECT_EQ(Written(EmptyPartList(), ListFormat::Csv),
              "ID,Qty,Part Name,Sub "
              "Assembly,Material,Length,Width,Thickness,ORIE,Value1,Value2,Value3,Notes,User Data1,"
              "User Data2,PN,Price,EB1,EB2,EB3,EB4,Face,Layer,OldValue1,OldValue2,OldValue3\r\n");
}

TEST(ListCsv, QuotesWhatNeedsIt) {
    EXPECT_EQ(
        Written(SmallList({{"1", "a,b", 1.0}, {"2", "3/4\"", 2.0}, {"3", "c\nd", 3.0}, {"4", " e ", 4.0}}),
                ListFormat::Csv),
        "ID,Part Name,Length\r\n1,\"a,b\",1\r\n2,\"3/4\"\"\",2\r\n3,\"c\nd\",3\r\n4, e ,4\r\n");
}

TEST(ListCsv, WritesNoValueAsNothing) {
    EXPECT_EQ(Written(SmallList({{"1", FieldValue(), FieldValue()}}), ListFormat::Csv),
              "ID,Part Name,Length\r\n1,,\r\n");
}

TEST(ListJson, KeysByColumnNumbersAsNumbersTextsAsTexts) {
    EXPECT_EQ(Written(SmallList({{"1", "720", 720.0}, {"2", FieldValue(), 0.125}}), ListFormat::Json),
              "[\n {\"bv_id\": \"1\", \"bv_partname\": \"720\", \"bv_length\": 720},\n"
              " {\"bv_id\": \"2\", \"bv_partname\": null, \"bv_length\": 0.125}\n]\n");
}

TEST(ListJson, EscapesAsTheFormatWants) {
    EXPECT_EQ(Written(SmallList({{"1", "\"\\\n\x01ü側\xFF", 1.0}}), ListFormat::Json),
              "[\n {\"bv_id\": \"1\", \"bv_partname\": \"\\\"\\\\\\u000a\\u0001ü側\\ufffd\", \"bv_length\": "
              "1}\n]\n");
}

TEST(ListJson, OfNoPartsIsAnEmptyArray) { EXPECT_EQ(Written(SmallList({}), ListFormat::Json), "[]\n"); }

}  // namespace
}  // namespace brenvik::app
