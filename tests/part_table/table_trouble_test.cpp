// A list whose table goes away, is held by another program, or takes only some of its rows.
#include <filesystem>

#include "list_fixture.h"

namespace brenvik {
namespace {

class TableTrouble : public ListOnTable {
  protected:
    frmMain& Main() { return GridFormInstance(); }
    GridControl& Grid() { return Main().fpSpread1; }
    /// The one box there is for a table in this state.
    std::vector<std::string> OneBox(const std::string& state) {
        return {"-2147467259\r\nBrenvik part table\r\nThe part database " + File().string() + " " + state};
    }
    std::unique_ptr<Connection> HeldByAnotherProgram() {
        std::unique_ptr<Connection> other = Opened();
        other->BeginTrans();
        return other;
    }
    static constexpr const char* Locked = "is locked by another program (database is locked)";
};

TEST_F(TableTrouble, AnEditOfATableThatWasRemovedIsToldAndTheListStays) {
    std::filesystem::remove(File());
    EXPECT_TRUE(Grid().UserEdit(3, 1, "Door"));
    EXPECT_EQ(boxes.texts, OneBox("can't be found"));
    EXPECT_EQ(Shown("Part Name"), "Side|side|Back|Side Strip|Left Side|");
}

TEST_F(TableTrouble, AFilterOfATableThatWasRemovedLeavesTheList) {
    const std::string source = Main().Adodc1.recordSource;
    std::filesystem::remove(File());
    EXPECT_THROW(Apply("", "", "Material = Oak"), Failure);
    EXPECT_EQ(boxes.texts.back(), OneBox("can't be found").front());
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
    EXPECT_EQ(Main().Adodc1.recordSource, source);
    EXPECT_EQ(TheSession().WhereClause, "");
}

TEST_F(TableTrouble, NumberingALockedTableIsToldOnceForAllRows) {
    const std::unique_ptr<Connection> other = HeldByAnotherProgram();
    Main().Get<Control>("btnAutoPN").Press();
    EXPECT_EQ(boxes.texts, OneBox(Locked));
    EXPECT_EQ(Shown("PN"), "|||||");
    EXPECT_EQ(Shown("bv_ID"), "1|2|3|4|5|6");
    other->RollbackTrans();
    Main().Get<Control>("btnAutoPN").Press();
    EXPECT_EQ(Shown("PN"), "1|2|3|4|5|6");
    EXPECT_EQ(boxes.texts.size(), 1U);
}

TEST_F(TableTrouble, LettersOfALockedTableAreToldOnceAndTheRowStays) {
    const std::unique_ptr<Connection> other = HeldByAnotherProgram();
    Grid().UserEdit(9, 2, "WLT");
    EXPECT_EQ(boxes.texts, OneBox(Locked));
    EXPECT_EQ(Grid().CellText(9, 2), "");
    EXPECT_EQ(Grid().CellText(6, 2), "700");
}

TEST_F(TableTrouble, ARowThatTheTableRefusesDoesNotCostTheOthersTheirs) {
    Grid().SetCellText(13, 1, "first");
    Grid().SetCellText(13, 2, std::string(300, 'n'));
    Grid().SetCellText(3, 2, "lost with its row");
    Grid().SetCellText(13, 3, "側板 третий");
    Grid().SaveOrTell();
    ASSERT_EQ(boxes.texts.size(), 1U);
    EXPECT_NE(boxes.texts[0].find("255"), std::string::npos) << boxes.texts[0];
    EXPECT_EQ(Shown("Notes"), "first||側板 третий|||");
    EXPECT_EQ(Column("select bv_partname from brenvik_data where bv_id = '2'"), "side");
    EXPECT_EQ(Column("select bv_notes from brenvik_data where bv_id = '3'"), "側板 третий");
}

}  // namespace
}  // namespace brenvik
