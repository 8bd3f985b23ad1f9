// Editing in the grid: the letters and the sizes that they name, the box that follows the current cell, what
// may be typed, and edits that the table does not take.
#include "core/forms/unsaved.h"
#include "core/grid/grid_fixture.h"
#include "grid/grid_columns.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"

namespace brenvik {
namespace {

constexpr const char* Refused =
    "Orientation cell must be empty or have one instance of the letters L, W and T";

class CellEditing : public GridTest {};

struct LettersCase {
    const char *rule, *letters, *sizes;

    friend void PrintTo(const LettersCase& each, std::ostream* out) { *out << each.rule; }
};

class LettersBecomeSizes : public CellEditing, public testing::WithParamInterface<LettersCase> {};

TEST_P(LettersBecomeSizes, FromTheRawExtents) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, GetParam().letters));
    EXPECT_EQ(Sizes(1), GetParam().sizes);
    EXPECT_EQ(Stored(1, "bv_lwt"), GetParam().letters);
    const std::string stored = NumberToText(system.database.Number(system.WorkPath, 0, "bv_length")) + " " +
                               NumberToText(system.database.Number(system.WorkPath, 0, "bv_width")) + " " +
                               NumberToText(system.database.Number(system.WorkPath, 0, "bv_thickness"));
    EXPECT_EQ(stored, GetParam().sizes);
    for (int column = 1; column <= Grid().MaxCols(); ++column) EXPECT_FALSE(IsUnsaved(Grid(), column, 1));
    EXPECT_TRUE(Grid().reDraw);
    EXPECT_TRUE(system.Messages().empty());
}

const LettersCase Letters[] = {
    {"LWT", "LWT", "600 400 18"},
    {"LTW", "LTW", "600 18 400"},
    {"TLW", "TLW", "400 18 600"},
    {"TWL", "TWL", "18 400 600"},
    {"WTL", "WTL", "18 600 400"},
    {"WLT", "WLT", "400 600 18"},
    {"LowerCasePassesAndStaysAsTyped", "lwt", "600 400 18"},
    {"MixedCase", "wLt", "400 600 18"},
};

INSTANTIATE_TEST_SUITE_P(Orie, LettersBecomeSizes, testing::ValuesIn(Letters),
                         [](const auto& letters) { return std::string(letters.param.rule); });

TEST_F(CellEditing, BlankLettersMakeTheSizesZero) {
    AddApplied("A", "LWT", 18, 600, 400);
    Main().Load();
    ASSERT_EQ(Sizes(1), "600 400 18");
    EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, ""));
    EXPECT_EQ(Sizes(1), "0 0 0");
    EXPECT_EQ(Stored(1, "bv_lwt"), "");
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(CellEditing, LettersThatNameNoSizesAreRefusedAndTheSizesGoBlank) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    for (const char* letters : {"LLW", "LW", "L", "LWTL", "TTT"}) {
        Grid().UserEdit(OrieColumn, 1, "LWT");
        ASSERT_EQ(Sizes(1), "600 400 18");
        system.dialogs.messages.clear();
        EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, letters));
        EXPECT_EQ(system.Messages(), Texts{Refused}) << letters;
        EXPECT_EQ(system.dialogs.messages[0].title, "");
        for (const int column : {6, 7, 8, 9}) EXPECT_EQ(Cell(column, 1), "") << letters;
        EXPECT_EQ(Stored(1, "bv_lwt"), "");
        EXPECT_EQ(system.database.Cell(system.WorkPath, 0, "bv_length"), FieldValue(std::monostate()));
    }
}

TEST_F(CellEditing, SizesThatCannotBeSavedAreToldOnceAndTheRowShowsTheTableAgain) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    system.database.failures.emplace_back("UPDATE bv_thickness", Failure(-5, "FakeDatabase", "Disk full"));
    system.dialogs.onMessage = [&] { EXPECT_FALSE(Grid().reDraw) << "the sizes are written unseen"; };
    Grid().UserEdit(OrieColumn, 1, "LWT");
    EXPECT_EQ(system.Messages(), Texts{"-5\r\nFakeDatabase\r\nDisk full"});
    EXPECT_EQ(Cell(OrieColumn, 1), "");
    EXPECT_EQ(Sizes(1), "0 0 0");
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(CellEditing, LettersCanBeGivenAfterARefusal) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    Grid().UserEdit(OrieColumn, 1, "LLL");
    Grid().UserEdit(OrieColumn, 1, "WLT");
    EXPECT_EQ(Sizes(1), "400 600 18");
    EXPECT_EQ(system.database.Number(system.WorkPath, 0, "bv_length"), 400);
}

TEST_F(CellEditing, LettersAreTypedThroughTheFilter) {
    system.AddSolid("A", 18, 600, 400);
    Main().Load();
    Grid().UserEdit(OrieColumn, 1, "xL-wü9T ");
    EXPECT_EQ(Cell(OrieColumn, 1), "LwT");
    EXPECT_EQ(Sizes(1), "600 400 18");
}

TEST_F(CellEditing, ExtentsAreReadInSinglePrecision) {
    // 600.4 lies between two singles; the fifth decimal is that of the nearer one.
    system.AddSolid("A", 18.5, 600.4, 400.25);
    Main().Load();
    Grid().UserEdit(OrieColumn, 1, "LWT");
    EXPECT_EQ(Cell(LengthColumn, 1), "600.40002");
    EXPECT_EQ(Cell(ThicknessColumn, 1), "18.5");
}

TEST_F(CellEditing, OtherCellsTakeAnyText) {
    LoadThree();
    const std::string texts[] = {"O'Brien's side", "Türseite, links", "側板 № 5", "18\" \\ 3/4", "  "};
    for (const std::string& text : texts) {
        EXPECT_TRUE(Grid().UserEdit(13, 2, text));
        EXPECT_EQ(Stored(2, "bv_notes"), text);
        EXPECT_EQ(Cell(13, 2), text);
    }
    EXPECT_EQ(Sizes(2), "0 0 0");
    EXPECT_TRUE(system.Messages().empty());
}

TEST_F(CellEditing, KeysOfWhichNonePassesLeaveTheCellAndAreNamedWithThePart) {
    LoadThree();
    Grid().UserEdit(OrieColumn, 1, "LWT");
    TakePartTroubles();
    EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, "XYZ"));
    EXPECT_EQ(Cell(OrieColumn, 1), "LWT");
    EXPECT_EQ(Sizes(1), "600 400 18");
    EXPECT_TRUE(system.Messages().empty());
    const std::vector<PartTrouble> none = TakePartTroubles();
    ASSERT_EQ(none.size(), 1U);
    EXPECT_EQ(none[0].handle, "A");
    EXPECT_FALSE(none[0].isRemark || none[0].toldInABox);
    // What is left of other keys is an edit like any other.
    EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, "w-l t"));
    EXPECT_EQ(Cell(OrieColumn, 1), "wlt");
    const std::vector<PartTrouble> some = TakePartTroubles();
    ASSERT_EQ(some.size(), 1U);
    EXPECT_TRUE(some[0].isRemark);
}

TEST_F(CellEditing, ATextTooLongForTheTableIsToldAndTheCellShowsTheTableAgain) {
    LoadThree();
    Grid().UserEdit(13, 1, "first");
    EXPECT_TRUE(Grid().UserEdit(13, 1, std::string(300, 'n')));
    EXPECT_EQ(system.Messages(), Texts{"-2147217887\r\nFakeDatabase\r\nThe field is too small for the text"});
    EXPECT_EQ(Cell(13, 1), "first");
    EXPECT_EQ(Stored(1, "bv_notes"), "first");
}

TEST_F(CellEditing, AGroupedListTakesNoEditAndLosesNothing) {
    LoadThree();
    Grid().UserEdit(3, 1, "Side");
    ShowStatement("Select count(bv_partname) as bv_qty, bv_partname from brenvik_data Group by bv_partname");
    EXPECT_TRUE(Grid().UserEdit(3, 1, "Door"));
    EXPECT_TRUE(Grid().UserEdit(OrieColumn, 1, "LWT"));
    const char* message =
        "3027\r\nfpSpread1\r\nCan't update: the rows on show are no rows of the table. A grouped list shows "
        "sums.";
    EXPECT_EQ(system.Messages(), (Texts{message, message}));
    EXPECT_EQ(Cell(3, 1), "Side");
    EXPECT_EQ(Stored(1, "bv_partname"), "Side");
    EXPECT_TRUE(Statements().empty());
    EXPECT_TRUE(Grid().reDraw);
}

TEST_F(CellEditing, WhatTheScanAloneSaysIsLocked) {
    LoadThree();
    for (const int column : {1, 10, 11, 12, 23, 24, 25, 26})
        EXPECT_FALSE(Grid().UserEdit(column, 1, "7")) << column;
    EXPECT_TRUE(Grid().UserEdit(LengthColumn, 1, "610.5"));
    EXPECT_EQ(system.database.Number(system.WorkPath, 0, "bv_length"), 610.5);
}

TEST_F(CellEditing, ASizeHasToBeANumber) {
    LoadThree();
    Grid().UserEdit(OrieColumn, 1, "LLL");
    // The size is null now, and its column takes numbers alone nevertheless.
    Grid().UserEdit(LengthColumn, 1, "long");
    EXPECT_EQ(system.Messages(), (Texts{Refused, "13\r\nBrenvik\r\nType mismatch"}));
    EXPECT_EQ(system.database.Cell(system.WorkPath, 0, "bv_length"), FieldValue(std::monostate()));
}

struct FilterCase {
    const char *key, *allowed;
    bool passes;
};

TEST(TypingFilter, ComparesTheKeyInUpperCaseWithEachCharacterOfAShortText) {
    const FilterCase cases[] = {
        {"L", "LWT", true},   {"t", "LWT", true},    {"w", "LWT", true},  {"X", "LWT", false},
        {"9", "LWT", false},  {" ", "LWT", false},   {"l", "lwt", false}, {"ü", "ÜÄ", true},
        {"ß", "LWT", false},  {"L", "", false},      {"L", "L", true},    {"L", "LWTX", false},
        {"X", "LWTX", false}, {"\b", "LWTX", true},  {"\b", "LWT", true}, {"\r", "LWT", true},
        {"\t", "", true},     {"\x7f", "LWT", true}, {"側", "LWT", false}};
    for (const FilterCase& typed : cases)
        EXPECT_EQ(frmMain::checkEntry(typed.key, typed.allowed), typed.passes)
            << typed.key << " in " << typed.allowed;
}

class CurrentCell : public GridTest {
  protected:
    /// Names of the ticked boxes, parted by blanks.
    std::string Ticked() {
        std::string names;
        for (const auto& control : Main().Controls())
            if (const auto* box = dynamic_cast<const CheckControl*>(control.get()); box && box->Value() == 1)
                names += (names.empty() ? "" : " ") + box->Name();
        return names;
    }
};

TEST_F(CurrentCell, TicksTheBoxOfItsColumnAndNoOther) {
    LoadThree();
    const std::pair<int, const char*> boxes[] = {{3, "chkPart"},
                                                 {4, "chkSub"},
                                                 {5, "chkMaterial"},
                                                 {9, "chkLWT"},
                                                 {13, "chkNotes"},
                                                 {14, "chkUserData1"},
                                                 {15, "chkUserData2"},
                                                 {16, "chkPN"},
                                                 {17, "chkPrice"},
                                                 {18, "chkEB1"},
                                                 {19, "chkEB2"},
                                                 {20, "chkEB3"},
                                                 {21, "chkEB4"},
                                                 {22, "chkFace"},
                                                 {2, ""},
                                                 {10, ""},
                                                 {23, ""}};
    for (const auto& [column, box] : boxes) {
        Grid().SetActiveCell(column, 2);
        EXPECT_EQ(Ticked(), box) << column;
    }
}

TEST_F(CurrentCell, InNotesClearsBlankCellsOnlyToo) {
    LoadThree();
    for (const ColumnTickBox& box : ColumnTickBoxes()) Box(box.name).SetValue(1);
    Box("chkBlank").SetValue(1);
    Grid().SetActiveCell(13, 1);
    EXPECT_EQ(Ticked(), "chkNotes");
}

TEST_F(CurrentCell, InAColumnWithoutABoxClearsAll) {
    LoadThree();
    Box("chkPart").SetValue(1);
    Box("chkBlank").SetValue(1);
    Grid().SetActiveCell(6, 1);
    EXPECT_EQ(Ticked(), "");
}

TEST_F(CurrentCell, LeavesTheGroupingSwitchAlone) {
    LoadThree();
    Box("CheckGroup").SetValue(1);
    Grid().SetActiveCell(13, 1);
    EXPECT_EQ(Ticked(), "chkNotes CheckGroup");
}

TEST_F(CurrentCell, StaysWhileItIsEditedAndSoDoTheBoxes) {
    LoadThree();
    Grid().SetActiveCell(13, 1);
    Box("chkMaterial").SetValue(1);
    Grid().UserEdit(13, 1, "check");
    EXPECT_EQ(Ticked(), "chkMaterial chkNotes");
}

TEST_F(CurrentCell, InTheHeaderChangesNothing) {
    LoadThree();
    Grid().SetActiveCell(13, 1);
    Grid().SetActiveCell(3, 0);
    EXPECT_EQ(Ticked(), "chkNotes");
}

TEST_F(CurrentCell, SaysThatAColumnHasNoName) {
    LoadThree();
    Box("chkPart").SetValue(1);
    Main().CurrentCellMoved(99, 1);
    EXPECT_EQ(system.Messages(), Texts{"Unable to determine column name"});
    // Without a column it is no real move, as when the grid loses the focus.
    Main().CurrentCellMoved(-1, 1);
    Main().CurrentCellMoved(-1, -1);
    EXPECT_EQ(system.Messages().size(), 1u);
    EXPECT_EQ(Ticked(), "chkPart");
}

TEST_F(CurrentCell, IsNotFollowedWhileTheFormIsLoading) {
    LoadThree();
    Main().Loading = true;
    Grid().SetActiveCell(13, 1);
    EXPECT_EQ(Ticked(), "");
    Grid().UserEdit(OrieColumn, 1, "LLL");
    EXPECT_TRUE(system.Messages().empty());
    Main().Loading = false;
}

}  // namespace
}  // namespace brenvik
