// Quick Copy: its guard, its statements to the letter, and what the list shows afterwards.
#include "grid/quick_copy.h"
#include "core/forms/unsaved.h"
#include "core/grid/grid_fixture.h"

namespace brenvik {
namespace {

class QuickCopyGuard : public GridTest {
  protected:
    /// The only box that was shown.
    MessageRequest Refusal() {
        EXPECT_EQ(system.dialogs.messages.size(), 1u);
        return system.dialogs.messages.empty() ? MessageRequest{} : system.dialogs.messages.back();
    }
    void PressKey() { Main().tbMain.PressKey("QCOPY"); }
};

TEST_F(QuickCopyGuard, RefusesAGroupedList) {
    LoadThree();
    Grid().SetActiveCell(5, 1);
    TheSession().GroupFields = "bv_partname";
    PressKey();
    EXPECT_EQ(Refusal().text, "You cannot Quick Copy items to the grid while GROUPING is active.");
    EXPECT_EQ(Refusal().title, "Error");
    EXPECT_TRUE(Statements().empty());
}

TEST_F(QuickCopyGuard, WantsACell) {
    LoadThree();
    PressKey();
    EXPECT_EQ(Refusal().text, "Please select a cell to Quick Copy");
    EXPECT_EQ(Refusal().title, "Invalid Quick Copy Selection");
    EXPECT_EQ(Refusal().icon, MessageIcon::None);
    EXPECT_TRUE(Statements().empty());
}

TEST_F(QuickCopyGuard, WantsARow) {
    Main().Load();
    Main().Get<Control>("mnuQcopy").Press();
    EXPECT_EQ(Refusal().title, "Invalid Quick Copy Selection");
}

TEST_F(QuickCopyGuard, WantsACellWithAText) {
    LoadThree();
    Grid().SetActiveCell(13, 1);
    PressKey();
    EXPECT_EQ(Refusal().text, "Please select a cell to Quick Copy");
}

TEST_F(QuickCopyGuard, RefusesColumnsThatSayWhatTheSolidIsLike) {
    LoadThree();
    for (const auto& [column, header] :
         {std::pair{7, "Width"}, {8, "Thickness"}, {3, "X"}, {3, "y"}, {3, "Z"}, {3, "Height"}}) {
        Grid().Column(column).header = header;
        Grid().SetCellText(column, 1, "5");
        Grid().SetActiveCell(column, 1);
        system.dialogs.messages.clear();
        PressKey();
        EXPECT_EQ(Refusal().text, "You cannot copy the X,Y,Z data") << header;
        EXPECT_EQ(Refusal().title, "Unable to Copy Cell");
        EXPECT_EQ(Refusal().icon, MessageIcon::Stop);
    }
    EXPECT_TRUE(Statements().empty());
}

TEST_F(QuickCopyGuard, LetsTheLengthPassWhichNoBoxCopies) {
    LoadThree();
    Grid().SetActiveCell(6, 1);
    PressKey();
    EXPECT_TRUE(system.Messages().empty());
    EXPECT_EQ(Statements(), (Texts{"select 1=1", "SELECT * FROM brenvik_data"}));
}

TEST_F(QuickCopyGuard, NamesWhatABlankCellOfATickedColumnWouldClear) {
    LoadThree();
    Grid().UserEdit(13, 2, "keep me");
    Grid().UserEdit(14, 3, "and me");
    Grid().SetActiveCell(5, 1);
    for (const char* box : {"chkNotes", "chkUserData1", "chkUserData2"}) Box(box).SetValue(1);
    Statements();
    system.dialogs.answers = {MessageAnswer::No};
    PressKey();
    EXPECT_EQ(
        Refusal().text,
        "The row that you copy has nothing in a ticked column. The copy clears what other rows have there: "
        "Notes (1 row), User Data1 (1 row). Do you wish to copy anyway?");
    EXPECT_EQ(Refusal().buttons, MessageButtons::YesNo);
    EXPECT_TRUE(Statements().empty());
    EXPECT_EQ(Cell(13, 2), "keep me");

    system.dialogs.answers = {MessageAnswer::Yes};
    PressKey();
    EXPECT_EQ(Cell(13, 2), "");
    EXPECT_EQ(Cell(5, 2), "Oak");
}

TEST_F(QuickCopyGuard, AsksNothingWhereNothingGoes) {
    LoadThree();
    Grid().SetActiveCell(5, 1);
    Box("chkNotes").SetValue(1);
    PressKey();
    EXPECT_TRUE(system.Messages().empty());
    // Blank cells alone are written to.
    Grid().UserEdit(13, 2, "keep me");
    Grid().SetActiveCell(5, 1);
    Box("chkNotes").SetValue(1);
    Box("chkBlank").SetValue(1);
    PressKey();
    EXPECT_TRUE(system.Messages().empty());
    EXPECT_EQ(Cell(13, 2), "keep me");
}

class QuickCopyWork : public GridTest {
  protected:
    /// The update statements that a copy from a row runs.
    Texts UpdatesFrom(int row) {
        Grid().PutActiveCell(5, row);
        Statements();
        Main().QCopy();
        Texts updates;
        for (const std::string& statement : Statements())
            if (statement.starts_with("update ")) updates.push_back(statement);
        return updates;
    }
};

TEST_F(QuickCopyWork, RunsAStatementForEachTickedColumnInThisOrder) {
    LoadThree();
    const std::pair<int, const char*> values[] = {{3, "P"},   {4, "S"},   {9, "LWT"}, {13, "N"},  {14, "U1"},
                                                  {15, "U2"}, {16, "7"},  {17, "9"},  {18, "E1"}, {19, "E2"},
                                                  {20, "E3"}, {21, "E4"}, {22, "F"}};
    for (const auto& [column, text] : values) Grid().UserEdit(column, 1, text);
    for (const ColumnTickBox& box : ColumnTickBoxes()) Box(box.name).SetValue(1);
    const Texts expected = {
        "update brenvik_data set bv_partname = 'P' ",   "update brenvik_data set bv_subassembly = 'S' ",
        "update brenvik_data set bv_material = 'Oak' ", "update brenvik_data set bv_lwt = 'LWT' ",
        "update brenvik_data set bv_notes = 'N' ",      "update brenvik_data set bv_userdata1 = 'U1' ",
        "update brenvik_data set bv_userdata2 = 'U2' ", "update brenvik_data set bv_pn = '7' ",
        "update brenvik_data set bv_price = '9' ",      "update brenvik_data set bv_eb1 = 'E1' ",
        "update brenvik_data set bv_eb2 = 'E2' ",       "update brenvik_data set bv_eb3 = 'E3' ",
        "update brenvik_data set bv_eb4 = 'E4' ",       "update brenvik_data set bv_face = 'F' "};
    EXPECT_EQ(UpdatesFrom(1), expected);
    EXPECT_EQ(StoredColumn("bv_material"), (Texts{"Oak", "Oak", "Oak"}));
    EXPECT_EQ(Cell(22, 3), "F");
}

TEST_F(QuickCopyWork, FlushesAndShowsTheListAnew) {
    LoadThree();
    Box("chkMaterial").SetValue(1);
    Grid().PutActiveCell(5, 2);
    Main().QCopy();
    EXPECT_EQ(Statements(), (Texts{"update brenvik_data set bv_material = 'Ash' ", "select 1=1",
                                   "SELECT * FROM brenvik_data"}));
    EXPECT_EQ(Cell(5, 1), "Ash");
    EXPECT_EQ(Grid().ActiveColumn(), 5);
    EXPECT_EQ(Grid().ActiveRow(), 2);
    EXPECT_EQ(Box("chkMaterial").Value(), 1);
    EXPECT_TRUE(Grid().reDraw);
    EXPECT_EQ(Main().mousePointer, MousePointer::Normal);
}

TEST_F(QuickCopyWork, TouchesFilteredRowsAlone) {
    LoadThree();
    TheSession().WhereClause = " Where bv_material = 'Oak'";
    ShowStatement("SELECT * FROM brenvik_data Where bv_material = 'Oak'");
    Grid().UserEdit(13, 2, "check");
    Box("chkNotes").SetValue(1);
    EXPECT_EQ(UpdatesFrom(2), Texts{"update brenvik_data set bv_notes = 'check'  Where bv_material = 'Oak'"});
    EXPECT_EQ(Stored(1, "bv_notes"), "check");
    EXPECT_EQ(Stored(2, "bv_notes"), "");
    EXPECT_EQ(Stored(3, "bv_notes"), "check");
}

TEST_F(QuickCopyWork, FillsBlankAndNullCellsAloneWhenAsked) {
    LoadThree();
    Grid().UserEdit(13, 1, "mine");
    Grid().UserEdit(13, 2, "stays");
    system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb")[2][12] = std::monostate();
    Box("chkNotes").SetValue(1);
    Box("chkBlank").SetValue(1);
    EXPECT_EQ(UpdatesFrom(1), Texts{"update brenvik_data set bv_notes = 'mine'  where (isnull(bv_notes)  or  "
                                    "bv_notes = '')"});
    EXPECT_EQ(StoredColumn("bv_notes"), (Texts{"mine", "stays", "mine"}));
}

TEST_F(QuickCopyWork, FillsBlankCellsOfFilteredRows) {
    LoadThree();
    TheSession().WhereClause = " Where bv_material = 'Oak'";
    Grid().UserEdit(13, 1, "mine");
    Box("chkNotes").SetValue(1);
    Box("chkBlank").SetValue(1);
    EXPECT_EQ(UpdatesFrom(1),
              Texts{"update brenvik_data set bv_notes = 'mine'  Where bv_material = 'Oak' AND "
                    "(isnull(bv_notes) or bv_notes = '')"});
    EXPECT_EQ(StoredColumn("bv_notes"), (Texts{"mine", "", "mine"}));
}

TEST_F(QuickCopyWork, OfLettersGivesEachRowItsSizes) {
    LoadThree();
    Grid().UserEdit(9, 1, "wlt");
    Box("chkLWT").SetValue(1);
    EXPECT_EQ(UpdatesFrom(1), Texts{"update brenvik_data set bv_lwt = 'wlt' "});
    EXPECT_EQ(Sizes(1), "400 600 18");
    EXPECT_EQ(Sizes(2), "300 500 16");
    EXPECT_EQ(Sizes(3), "200 900 12");
    EXPECT_EQ(system.database.Number(system.WorkPath, 2, "bv_width"), 900);
    EXPECT_FALSE(IsUnsaved(Grid(), 6, 3));
}

TEST_F(QuickCopyWork, ShowsTheHourglassAndPaintsNothingMeanwhile) {
    LoadThree();
    Grid().UserEdit(9, 1, "LWT");
    Box("chkLWT").SetValue(1);
    system.database.failures.emplace_back("UPDATE bv_width", Failure(-5, "FakeDatabase", "Disk full"));
    bool looked = false;
    system.dialogs.onMessage = [&] {
        looked = true;
        EXPECT_EQ(Main().mousePointer, MousePointer::Hourglass);
        EXPECT_FALSE(Grid().reDraw);
    };
    Main().QCopy();
    EXPECT_TRUE(looked);
    EXPECT_EQ(system.Messages(), Texts{"-5\r\nFakeDatabase\r\nDisk full"});
    EXPECT_EQ(Main().mousePointer, MousePointer::Normal);
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(QuickCopyWork, LeavesLettersOutThatNameNoSizesAndCopiesTheRest) {
    system.AddSolid("A", 18, 600, 400).data["MATERIAL"] = "Oak";
    AddApplied("B", "LWT", 16, 500, 300);
    Main().Load();
    Grid().SetCellText(9, 1, "LLL");
    Box("chkLWT").SetValue(1);
    Box("chkMaterial").SetValue(1);
    EXPECT_EQ(UpdatesFrom(1), Texts{"update brenvik_data set bv_material = 'Oak' "});
    EXPECT_EQ(system.Messages(),
              Texts{"Orientation cell must be empty or have one instance of the letters L, W and T"});
    EXPECT_EQ(Stored(2, "bv_lwt"), "LWT");
    EXPECT_EQ(Sizes(2), "500 300 16");
}

TEST_F(QuickCopyWork, OfAQuoteFailsAndRunsNoLaterStatement) {
    LoadThree();
    Grid().UserEdit(3, 1, "Side");
    Grid().UserEdit(4, 1, "O'Brien");
    Grid().SetActiveCell(4, 1);
    for (const char* box : {"chkPart", "chkSub", "chkMaterial"}) Box(box).SetValue(1);
    Statements();
    Main().tbMain.PressKey("QCOPY");
    EXPECT_EQ(Statements(),
              (Texts{"update brenvik_data set bv_partname = 'Side' ",
                     "update brenvik_data set bv_subassembly = 'O'Brien' ", "SELECT * FROM brenvik_data"}));
    EXPECT_EQ(system.Messages(), Texts{"-2147217900\r\nFakeDatabase\r\nSyntax error in the statement"});
    // The grid shows what was copied ahead of the failure.
    EXPECT_EQ(Cell(3, 2), "Side");
    EXPECT_EQ(Cell(4, 2), "");
    EXPECT_EQ(Cell(5, 2), "Ash");
    EXPECT_TRUE(Grid().reDraw);
    EXPECT_EQ(Main().mousePointer, MousePointer::Normal);
    EXPECT_EQ(Grid().ActiveColumn(), 4);
}

TEST_F(QuickCopyWork, KeepsTheCellAsFarAsTheListStillHasIt) {
    LoadThree();
    TheSession().WhereClause = " Where bv_material = 'Oak'";
    ShowStatement("SELECT * FROM brenvik_data Where bv_material = 'Oak'");
    Grid().SetCellText(5, 2, "Elm");
    Box("chkMaterial").SetValue(1);
    EXPECT_EQ(UpdatesFrom(2).size(), 1u);
    // None of the rows is of oak any more.
    EXPECT_EQ(Grid().MaxRows(), 0);
    EXPECT_EQ(Grid().ActiveRow(), 0);
}

class AutoPN : public GridTest {
  protected:
    void Press() { Main().Get<Control>("btnAutoPN").Press(); }
};

TEST_F(AutoPN, NumbersTheRowsInTheOrderShown) {
    LoadThree();
    ShowStatement("SELECT * FROM brenvik_data order by bv_material Asc");
    Press();
    EXPECT_EQ(Cell(16, 1), "1");
    EXPECT_EQ(Cell(1, 1), "B");
    EXPECT_EQ(StoredColumn("bv_pn"), (Texts{"2", "1", "3"}));
    for (int row = 1; row <= 3; ++row) EXPECT_FALSE(IsUnsaved(Grid(), 16, row));
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(AutoPN, KeepsTheActiveCellAndItsBox) {
    LoadThree();
    Grid().SetActiveCell(5, 2);
    Press();
    EXPECT_EQ(Grid().ActiveColumn(), 5);
    EXPECT_EQ(Grid().ActiveRow(), 2);
    EXPECT_EQ(Box("chkMaterial").Value(), 1);
    EXPECT_EQ(Box("chkPN").Value(), 0);
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(AutoPN, TakesAColumnCalledPartNumber) {
    LoadThree();
    Grid().Column(16).header = "part number";
    Press();
    EXPECT_EQ(Stored(3, "bv_pn"), "3");
    Grid().Column(16).header = "Number";
    Grid().UserEdit(16, 1, "mine");
    Press();
    EXPECT_EQ(Stored(1, "bv_pn"), "mine");
}

TEST_F(AutoPN, LeavesAHiddenOrLockedColumnAlone) {
    LoadThree();
    Grid().Column(16).hidden = true;
    Press();
    Grid().Column(16).hidden = false;
    Grid().Column(16).locked = true;
    Press();
    EXPECT_EQ(StoredColumn("bv_pn"), (Texts{"", "", ""}));
    EXPECT_TRUE(system.Messages().empty());
    EXPECT_EQ(Grid().ActiveColumn(), 1);
}

TEST_F(AutoPN, RefusesAGroupedList) {
    LoadThree();
    TheSession().GroupFields = "bv_pn";
    Press();
    EXPECT_EQ(system.Messages(), Texts{"You cannot number parts while GROUPING is active."});
    EXPECT_EQ(StoredColumn("bv_pn"), (Texts{"", "", ""}));
}

TEST_F(AutoPN, ShowsTheTableAgainWhereItCannotBeSaved) {
    LoadThree();
    system.database.failures.emplace_back("UPDATE bv_pn", Failure(-5, "FakeDatabase", "Disk full"));
    system.dialogs.onMessage = [&] { EXPECT_FALSE(Grid().reDraw); };
    Press();
    EXPECT_EQ(system.Messages(), Texts{"-5\r\nFakeDatabase\r\nDisk full"});
    EXPECT_EQ(Cell(16, 1), "");
    EXPECT_FALSE(IsUnsaved(Grid(), 16, 1));
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(AutoPN, OfAnEmptyListDoesNothing) {
    Main().Load();
    Press();
    EXPECT_TRUE(system.Messages().empty());
}

}  // namespace
}  // namespace brenvik
