// The statement that adds a part to the table, letter by letter.
#include "parts/part_row.h"

#include <gtest/gtest.h>

namespace brenvik::mAutoCAD {
namespace {

TEST(InsertStatement, HasThisText) {
    PartRow row;
    row.QUANTITY = "2";
    row.PARTNAME = "Türseite";
    row.SUBASSEMBLY = "Base";
    row.MATERIAL = "Oak 18";
    row.ORIE = "LWT";
    row.NOTES = "note, with comma";
    row.USERDATA1 = "u1";
    row.USERDATA2 = "u2";
    row.PN = "A-1";
    row.PRICE = "12.50";
    row.EB1 = "e1";
    row.EB2 = "e2";
    row.EB3 = "e3";
    row.EB4 = "e4";
    row.FACE = "left";
    row.OLDVALUE1 = "18";
    row.OLDVALUE2 = "600.50 mm";
    row.OLDVALUE3 = "";
    row.extents.E = {18, 600.5, 0.00001};
    row.length = "600.5";
    row.width = "400";
    row.thickness = "18";
    EXPECT_EQ(
        InsertStatement(row, "1AF", "PARTS"),
        "INSERT INTO brenvik_data  (bv_id, bv_qty, bv_partname, bv_subassembly , bv_material, bv_length, "
        "bv_width, bv_thickness, bv_lwt, bv_x, bv_y, bv_z, bv_notes , bv_userdata1, bv_userdata2, bv_pn, "
        "bv_price, bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_oldValue1, bv_oldValue2, "
        "bv_oldValue3,bv_layer) values ('1AF', '2', 'Türseite', 'Base', 'Oak 18', 600.5, 400, 18, 'LWT', "
        "18, 600.5, 1E-05, 'note, with comma', 'u1', 'u2', 'A-1', '12.50', 'e1', 'e2', 'e3', 'e4', "
        "'left', 18, 600.5, 0, 'PARTS'  )");
}

TEST(InsertStatement, OfAPartWithoutDataHoldsBlanksAndZeros) {
    EXPECT_EQ(
        InsertStatement(PartRow(), "1", "0"),
        "INSERT INTO brenvik_data  (bv_id, bv_qty, bv_partname, bv_subassembly , bv_material, bv_length, "
        "bv_width, bv_thickness, bv_lwt, bv_x, bv_y, bv_z, bv_notes , bv_userdata1, bv_userdata2, bv_pn, "
        "bv_price, bv_eb1, bv_eb2, bv_eb3, bv_eb4, bv_face, bv_oldValue1, bv_oldValue2, "
        "bv_oldValue3,bv_layer) values ('1', '', '', '', '', 0, 0, 0, '', 0, 0, 0, '', '', '', '', '', "
        "'', '', '', '', '', 0, 0, 0, '0'  )");
}

TEST(InsertStatement, EscapesNothing) {
    PartRow row;
    row.PARTNAME = "Jack's shelf";
    EXPECT_NE(InsertStatement(row, "1", "0").find("'Jack's shelf', "), std::string::npos);
}

TEST(PartRow, KnowsTheScannedKeysAndPassesOverTheOthers) {
    PartRow row;
    for (const char* key :
         {"QUANTITY", "PARTNAME", "SUBASSEMBLY", "MATERIAL",  "ORIE",      "USERDATA1", "USERDATA2",
          "PN",       "PRICE",    "EB1",         "EB2",       "EB3",       "EB4",       "NOTES",
          "VALUE1",   "VALUE2",   "VALUE3",      "OLDVALUE1", "OLDVALUE2", "OLDVALUE3", "FACE"})
        EXPECT_NE(row.ValueOf(key), nullptr) << key;
    for (const char* key : {"X", "Y", "Z", "LAYERNAME", "LENGTH", "WIDTH", "THICKNESS"})
        EXPECT_EQ(row.ValueOf(key), nullptr) << key;
    EXPECT_EQ(row.ValueOf("PN"), &row.PN);
}

}  // namespace
}  // namespace brenvik::mAutoCAD
