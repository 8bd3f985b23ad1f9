// The relation of captions and columns, and what other modules ask of the grid.
#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "grid/column_relation.h"
#include "grid/frm_main.h"
#include "grid/mod4spread.h"

namespace brenvik {
namespace {

class ColumnRelationTable : public testing::Test {
  protected:
    ColumnRelationTable() { ColHeadRelationShip(); }
    fakes::LoadedSystem system;
};

TEST_F(ColumnRelationTable, HasTwentyThreePairsInThisOrder) {
    const std::pair<const char*, const char*> pairs[] = {{"ID", "bv_id"},
                                                         {"Qty", "bv_qty"},
                                                         {"Part Name", "bv_partname"},
                                                         {"Sub Assembly", "bv_subassembly"},
                                                         {"Material", "bv_material"},
                                                         {"Length", "bv_length"},
                                                         {"Width", "bv_width"},
                                                         {"Thickness", "bv_thickness"},
                                                         {"ORIE", "bv_lwt"},
                                                         {"Notes", "bv_notes"},
                                                         {"User Data1", "bv_userdata1"},
                                                         {"User Data2", "bv_userdata2"},
                                                         {"PN", "bv_pn"},
                                                         {"Price", "bv_price"},
                                                         {"EB1", "bv_eb1"},
                                                         {"EB2", "bv_eb2"},
                                                         {"EB3", "bv_eb3"},
                                                         {"EB4", "bv_eb4"},
                                                         {"Face", "bv_face"},
                                                         {"Layer", "bv_layer"},
                                                         {"Value1", "bv_x"},
                                                         {"Value2", "bv_y"},
                                                         {"Value3", "bv_z"}};
    const auto& relation = TheSession().ColumnRelation;
    ASSERT_GE(relation.size(), 50u);
    std::size_t place = 0;
    for (const auto& [caption, column] : pairs) {
        EXPECT_EQ(relation[place].caption, caption);
        EXPECT_EQ(relation[place].column, column);
        EXPECT_EQ(relation[place].spare, "");
        ++place;
    }
    for (; place < relation.size(); ++place) EXPECT_EQ(relation[place].caption + relation[place].column, "");
}

TEST_F(ColumnRelationTable, IsMadeAnewEachTime) {
    TheSession().ColumnRelation[3] = {"Something", "bv_something", "else"};
    TheSession().ColumnRelation[50] = {"Something", "bv_something", "else"};
    ColHeadRelationShip();
    EXPECT_EQ(ColumnForCaption("Something"), "");
    EXPECT_EQ(ColumnForCaption("Sub Assembly"), "bv_subassembly");
    EXPECT_EQ(TheSession().ColumnRelation[3].spare + TheSession().ColumnRelation[50].spare, "");
}

TEST_F(ColumnRelationTable, LooksUpBothWaysWithoutRegardToCase) {
    EXPECT_EQ(ColumnForCaption("PART NAME"), "bv_partname");
    EXPECT_EQ(ColumnForCaption("value1"), "bv_x");
    EXPECT_EQ(CaptionForColumn("bv_partName"), "Part Name");
    EXPECT_EQ(CaptionForColumn("BV_Z"), "Value3");
}

TEST_F(ColumnRelationTable, GivesBlankForWhatItLacks) {
    EXPECT_EQ(ColumnForCaption("Value 1"), "");
    EXPECT_EQ(ColumnForCaption("Height"), "");
    EXPECT_EQ(CaptionForColumn("bv_oldValue1"), "");
    EXPECT_EQ(ColumnForCaption(""), "");
}

class GridHelpers : public testing::Test {
  protected:
    GridHelpers() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadDoc = &system.Document();
        system.AddSolid("A", 18, 600, 400).data["PARTNAME"] = "Side";
        GridFormInstance().Load();
    }
    fakes::LoadedSystem system;
};

TEST_F(GridHelpers, CellTextIsBlankWhereTheGridRefuses) {
    EXPECT_EQ(Mod4Spread::GetCellText(3, 1), "Side");
    EXPECT_EQ(Mod4Spread::GetCellText(3, 2), "");
    EXPECT_EQ(Mod4Spread::GetCellText(99, 1), "");
    EXPECT_EQ(Mod4Spread::GetCellText(0, 0), "");
}

TEST_F(GridHelpers, FindColumnComparesHeadersInLowerCase) {
    EXPECT_EQ(Mod4Spread::FindColumn("part name"), 3);
    EXPECT_EQ(Mod4Spread::FindColumn("ORIE"), 9);
    EXPECT_EQ(Mod4Spread::FindColumn("BV_id"), 1);
    EXPECT_LT(Mod4Spread::FindColumn("Part Number"), 0);
}

TEST_F(GridHelpers, FlushingWritesThePendingCell) {
    GridFormInstance().fpSpread1.SetCellText(3, 1, "Door");
    Mod4Spread::FlushGrid();
    EXPECT_EQ(system.database.Text(system.WorkPath, 0, "bv_partname"), "Door");
}

}  // namespace
}  // namespace brenvik
