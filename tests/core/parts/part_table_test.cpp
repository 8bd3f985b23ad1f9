// The table of the part record, and what is made from it.
#include "parts/part_table.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "settings/settings_keys.h"

namespace brenvik {
namespace {

TEST(PartTable, HasTwentySixColumnsInGridOrder) {
    ASSERT_EQ(PartColumns().size(), 26u);
    int place = 0;
    for (const PartColumn& column : PartColumns()) EXPECT_EQ(column.gridColumn, ++place);
}

TEST(PartTable, SelectsEveryColumnInTableOrder) {
    EXPECT_EQ(
        FullSelect(),
        "SELECT bv_id, bv_qty, bv_partname, bv_subassembly, bv_material, bv_length, bv_width, bv_thickness, "
        "bv_lwt, bv_x, bv_y, bv_z, bv_notes, bv_userdata1, bv_userdata2, bv_pn, bv_price, bv_eb1, bv_eb2, "
        "bv_eb3, bv_eb4, bv_face, bv_layer, bv_oldValue1, bv_oldValue2, bv_oldValue3 FROM brenvik_data");
}

TEST(PartTable, HasNumbersForSizesAndExtents) {
    std::string numbers;
    for (const PartColumn& column : PartColumns())
        if (column.kind == PartColumnKind::Number) numbers += std::string(column.column) + " ";
    EXPECT_EQ(numbers,
              "bv_length bv_width bv_thickness bv_x bv_y bv_z bv_oldValue1 bv_oldValue2 bv_oldValue3 ");
}

TEST(PartTable, FindsColumnsWithoutRegardToCase) {
    ASSERT_NE(FindPartColumn("BV_PARTNAME"), nullptr);
    EXPECT_EQ(FindPartColumn("bv_partName")->gridColumn, 3);
    EXPECT_EQ(FindPartColumnByHeader("value 1")->column, "bv_x");
    EXPECT_EQ(FindPartColumn("bv_nothing"), nullptr);
    EXPECT_EQ(FindPartColumn(""), nullptr);
    EXPECT_EQ(FindPartColumnByKey(""), nullptr);
}

TEST(PartTable, AppliesTheRawExtentsAsOldValues) {
    const std::pair<const char*, int> columns[] = {
        {"QUANTITY", 2},   {"PARTNAME", 3},   {"SUBASSEMBLY", 4}, {"MATERIAL", 5}, {"ORIE", 9},
        {"OLDVALUE1", 10}, {"OLDVALUE2", 11}, {"OLDVALUE3", 12},  {"NOTES", 13},   {"USERDATA1", 14},
        {"USERDATA2", 15}, {"PN", 16},        {"PRICE", 17},      {"EB1", 18},     {"EB2", 19},
        {"EB3", 20},       {"EB4", 21},       {"FACE", 22}};
    for (const auto& [key, place] : columns) {
        ASSERT_NE(FindPartColumnByKey(key), nullptr) << key;
        EXPECT_EQ(FindPartColumnByKey(key)->gridColumn, place) << key;
    }
    for (const char* key : {"X", "Y", "Z", "LAYERNAME", "VALUE1", "VALUE2", "VALUE3"})
        EXPECT_EQ(FindPartColumnByKey(key), nullptr) << key;
}

TEST(PartTable, HasItsListsOfNames) {
    EXPECT_EQ(PartDataKeyList,
              "QUANTITY,PARTNAME,SUBASSEMBLY,MATERIAL,ORIE,X,Y,Z,NOTES,USERDATA1,USERDATA2,PN,PRICE,EB1,EB2,"
              "EB3,EB4,FACE,LAYERNAME,VALUE1,VALUE2,VALUE3,OLDVALUE1,OLDVALUE2,OLDVALUE3");
    EXPECT_EQ(ColumnWidthKeyList,
              "QUANTITY,PARTNAME,SUBASSEMBLY,MATERIAL,LWT,X,Y,Z,NOTES,USERDATA1,USERDATA2,PN,PRICE,EB1,EB2,"
              "EB3,EB4,FACE,LAYERNAME");
    EXPECT_EQ(GridCaptionList,
              "Qty,Part Name,Sub Assembly,Material,ORIE,X,Y,Z,Notes,User Data1,User Data2,PN,Price,EB1,EB2,"
              "EB3,EB4,Face,Layer Name,ID");
}

TEST(PartTable, HasAColumnForEachWidthKey) {
    for (const std::string& key : Split(ColumnWidthKeyList, ',')) {
        int found = 0;
        for (const PartColumn& column : PartColumns())
            if (column.widthKey == key) ++found;
        EXPECT_EQ(found, 1) << key;
    }
}

}  // namespace
}  // namespace brenvik
