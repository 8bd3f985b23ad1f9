// The editor of the material library: what its grid shows, its rows, and what it leaves in the folder.
#include "settings/frm_materials.h"

#include "base/failure.h"
#include "core/settings/material_fixture.h"
#include "session/library/brenvik_class.h"
#include "session/module_state.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class MaterialEditor : public MaterialTest {
  protected:
    frmMaterials& Editor() { return StateOf<frmMaterials>(); }
    GridControl& Grid() { return Editor().fpMaterials; }
    void Open() { Editor().Load(); }
    void Press(const char* control) { Editor().Get<Control>(control).Press(); }
    Texts Row(int row) {
        Texts cells;
        for (int column = 1; column <= Grid().MaxCols(); ++column)
            cells.push_back(Grid().CellText(column, row));
        return cells;
    }
    Texts Blank() { return Texts(MaterialFieldCount); }
};

TEST_F(MaterialEditor, HasAColumnForEachFieldInTheFilesOrder) {
    UseLibrary(OakPly);
    Open();
    EXPECT_EQ(Row(0), (Texts{"Material Name", "Grain", "Direction", "Tool1", "Tool1 Dia", "Tool1 Speed",
                             "Tool1 Feed", "Tool2", "Tool2 Dia", "Tool2 Speed", "Tool2 Feed", "Tool3",
                             "Tool3 Dia", "Tool3 Speed", "Tool3 Feed"}));
    EXPECT_EQ(Row(1), (Texts{"19.05 Red Oak Ply", "1", "cC", "T1", "12.7", "18000", "7500", "2", "9.53",
                             "17000", "6000", "3", "6.35", "16000", "4000"}));
    EXPECT_EQ(Row(2), Blank());
}

TEST_F(MaterialEditor, SaysWhatIsDeletedAndHowRowsAreCopied) {
    Open();
    EXPECT_EQ(
        Editor().Get<Control>("lblAdvice").Text(),
        "Tool1 is the default tool for cutting the part out. Each Material Name requires that each "
        "setting be filled in or it will be deleted on Save / Close. You can click on a row number to "
        "highlight the entire row, then press Ctrl-C, then click on a new row number and press Ctrl-V to "
        "copy data. ");
    EXPECT_EQ(Editor().Get<Control>("btnSave").Text(), "Save / Close");
}

TEST_F(MaterialEditor, SavingUnchangedLeavesTheSameFile) {
    for (const char* lineEnd : {"\n", "\r\n"}) {
        const std::string content = Material("6 hdf", lineEnd) + Material("18 Weiß", lineEnd);
        UseLibrary(content);
        Open();
        Press("btnSave");
        EXPECT_EQ(Library(), content);
        EXPECT_EQ(Backup(), content);
        EXPECT_FALSE(Editor().Loaded());
        EXPECT_TRUE(system.dialogs.messages.empty());
    }
}

TEST_F(MaterialEditor, APartlyFilledRowIsLostAndTheOldTextStays) {
    const std::string content = Material("6 hdf") + Material("18 mdf");
    for (int column = 1; column <= static_cast<int>(MaterialFieldCount); ++column)
        for (const char* blank : {"", "  "}) {
            UseLibrary(content);
            Open();
            EXPECT_TRUE(Grid().UserEdit(column, 1, blank));
            Press("btnSave");
            EXPECT_EQ(Library(), Material("18 mdf")) << column;
            EXPECT_EQ(Backup(), content);
        }
}

TEST_F(MaterialEditor, NamesTheRowsThatItLeavesOut) {
    UseLibrary(Material("6 hdf") + Replaced(Material("18 mdf"), "tool2ss=17000", "tool2ss="));
    Open();
    Grid().UserEdit(1, 5, "8 hdf");
    Press("btnSave");
    EXPECT_EQ(Library(), Material("6 hdf"));
    const std::vector<LibraryNote> notes = TakeLibraryNotes();
    ASSERT_EQ(notes.size(), 2U);
    EXPECT_TRUE(notes[0].isLoss) << "nobody has touched it";
    EXPECT_TRUE(notes[0].text.starts_with("the material \"18 mdf\" in row 2 of the editor was not saved: "));
    EXPECT_FALSE(notes[1].isLoss);
    EXPECT_NE(notes[1].text.find("found Grain, Direction, Tool1, "), std::string::npos) << notes[1].text;
    EXPECT_TRUE(TakeLibraryNotes().empty());
}

TEST_F(MaterialEditor, KeepsALibraryThatSomebodyElseHasChangedMeanwhile) {
    UseLibrary(Material("6 hdf"));
    Open();
    Grid().UserEdit(1, 1, "8 hdf");
    const std::string others = Material("6 hdf") + Material("18 oak");
    UseLibrary(others);
    system.dialogs.answers = {MessageAnswer::Yes};
    Press("btnSave");
    EXPECT_EQ(Library(), others);
    EXPECT_TRUE(Editor().Loaded());
    const std::vector<LibraryNote> notes = TakeLibraryNotes();
    ASSERT_EQ(notes.size(), 1U);
    EXPECT_TRUE(notes[0].isLoss);
    EXPECT_NE(notes[0].text.find("was not written: it has been changed elsewhere"), std::string::npos);
    system.dialogs.answers = {MessageAnswer::No};
    Press("btnSave");
    EXPECT_EQ(Library(), Material("8 hdf"));
    EXPECT_EQ(Backup(), others);
}

TEST_F(MaterialEditor, AsksForWhatIsChangedUpToTheMomentOfSaving) {
    UseLibrary(Material("6 hdf"));
    Open();
    Grid().UserEdit(1, 1, "8 hdf");
    const std::string others = Material("6 hdf") + Material("18 oak");
    int turnsWhileAsking = 0;
    system.files.onTurn = [&] { UseLibrary(others); };
    system.dialogs.onMessage = [&] { turnsWhileAsking += system.files.turns; };
    system.dialogs.answers = {MessageAnswer::Yes};
    Press("btnSave");
    EXPECT_EQ(Library(), others);
    EXPECT_EQ(TakeLibraryNotes().size(), 1U);
    EXPECT_EQ(turnsWhileAsking, 0) << "other programs don't wait for a person";
    EXPECT_EQ(system.files.turns, 0);
}

TEST_F(MaterialEditor, WritesChangedAndNewRows) {
    UseLibrary(Material("6 hdf"));
    Open();
    Grid().UserEdit(1, 1, "8 hdf");
    for (int column = 1; column <= Grid().MaxCols(); ++column)
        Grid().UserEdit(column, 40, column == 1 ? "18 mdf" : Grid().CellText(column, 1));
    Press("btnSave");
    EXPECT_EQ(Library(), Material("8 hdf") + Material("18 mdf"));
}

TEST_F(MaterialEditor, CopiesARowOntoAnother) {
    UseLibrary(Material("6 hdf") + OakPly);
    Open();
    Grid().SetActiveCell(1, 2);
    Press("mnuCopyRow");
    Grid().SetActiveCell(1, 7);
    Press("mnuPasteRow");
    EXPECT_EQ(Row(7), Row(2));
    EXPECT_EQ(Row(6), Blank());
    Grid().SetActiveCell(1, 1);
    Press("mnuPasteRow");
    EXPECT_EQ(Row(1), Row(2)) << "it can be pasted again, over what was there";
}

TEST_F(MaterialEditor, CopyAndPasteDoNothingWithoutARowOrACopy) {
    UseLibrary(OakPly);
    Open();
    Press("mnuCopyRow");
    Press("mnuPasteRow");
    EXPECT_EQ(Editor().copiedRow, "");
    Grid().SetActiveCell(1, 1);
    Press("mnuPasteRow");
    EXPECT_EQ(Row(1).front(), "19.05 Red Oak Ply");
}

TEST_F(MaterialEditor, PastesRowsOfASpreadsheet) {
    Open();
    Editor().copiedRow = "18 mdf\t0\tcc\r\n19 mdf\t1\tc\t1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\t12\tbeyond\r\n";
    Grid().SetActiveCell(1, Grid().MaxRows());
    const int row = Grid().MaxRows();
    Press("mnuPasteRow");
    EXPECT_EQ(Grid().CellText(1, row), "18 mdf");
    EXPECT_EQ(Grid().CellText(4, row), "");
    EXPECT_EQ(Grid().CellText(15, row + 1), "12");
}

TEST_F(MaterialEditor, TakesNoLineBreakIntoAValue) {
    Open();
    Grid().UserEdit(1, 1, "18\r\n\tmdf");
    EXPECT_EQ(Grid().CellText(1, 1), "18mdf");
}

TEST_F(MaterialEditor, HasRoomForAnyNumberOfMaterials) {
    std::string content;
    for (int number = 0; number < 500; ++number) content += Material(std::to_string(number) + " mdf");
    UseLibrary(content);
    Open();
    EXPECT_GT(Grid().MaxRows(), 500);
    Press("btnSave");
    EXPECT_EQ(Library(), content);
}

TEST_F(MaterialEditor, AMissingFileIsToldAndCanBeMade) {
    Open();
    EXPECT_EQ(system.Messages(), Texts{"53\r\nBrenvik\r\nFile not found: C:\\Brenvik\\materials.txt"});
    for (int column = 1; column <= Grid().MaxCols(); ++column) Grid().UserEdit(column, 1, "1");
    Press("btnSave");
    EXPECT_EQ(Library().substr(0, 19), "material=1\ngrain=1\n");
    EXPECT_EQ(Backup(), "");
}

TEST_F(MaterialEditor, AFileThatCantBeReadIsNotWrittenOver) {
    const std::string content("\xFF\xFEm\0a\0", 6);
    UseLibrary(content);
    Open();
    ASSERT_EQ(system.Messages().size(), 1u);
    EXPECT_NE(system.Messages()[0].find("C:\\Brenvik\\materials.txt: expected plain text"),
              std::string::npos);
    Press("btnSave");
    EXPECT_EQ(Library(), content);
    EXPECT_TRUE(Editor().Loaded());
    Editor().Unload();
    UseLibrary(OakPly);
    Open();
    EXPECT_TRUE(Editor().Get<Control>("btnSave").enabled) << "the next library can be saved again";
}

TEST_F(MaterialEditor, StaysOpenWhenItCantSave) {
    UseLibrary(OakPly);
    Open();
    Grid().UserEdit(1, 1, "6 hdf");
    system.files.failOnCopy = PermissionDenied("C:\\Brenvik\\materials.bak");
    Press("btnSave");
    EXPECT_EQ(Library(), OakPly) << "without a backup nothing is written";
    system.files.failOnCopy.reset();
    system.files.failOnWrite = DiskFull("C:\\Brenvik\\materials.txt");
    Press("btnSave");
    EXPECT_EQ(Library(), OakPly);
    EXPECT_EQ(system.Messages(), (Texts{"70\r\nBrenvik\r\nPermission denied: C:\\Brenvik\\materials.bak",
                                        "61\r\nBrenvik\r\nDisk full: C:\\Brenvik\\materials.txt"}));
    EXPECT_TRUE(Editor().Loaded());
    system.files.failOnWrite.reset();
    Press("btnSave");
    EXPECT_EQ(Library(), Material("6 hdf"));
}

TEST_F(MaterialEditor, ADamagedLibraryIsToldAndAskedAboutBeforeSaving) {
    const std::string damaged =
        "# ours\n" + Material("6 hdf") + Replaced(OakPly, "tool3fs=4000\n", "") + Material("18 mdf");
    UseLibrary(damaged);
    Open();
    EXPECT_EQ(system.Messages(),
              Texts{"C:\\Brenvik\\materials.txt is damaged:\r\n"
                    "line 1: expected \"material=\", found \"# ours\"\r\n"
                    "line 17: the material \"19.05 Red Oak Ply\" has 14 lines, expected 15\r\n"
                    "Please check these materials before you save."});
    EXPECT_EQ(Grid().CellText(1, 2), "19.05 Red Oak Ply");
    EXPECT_EQ(Grid().CellText(14, 2), "16000");
    EXPECT_EQ(Grid().CellText(15, 2), "");
    EXPECT_EQ(Grid().CellText(1, 3), "18 mdf") << "the material behind a short one is there";
    system.dialogs.answers = {MessageAnswer::No};
    Press("btnSave");
    EXPECT_EQ(system.Messages().back(),
              "C:\\Brenvik\\materials.txt was damaged when it was opened. Materials that are not filled in "
              "completely, and lines that belong to no material, are not saved; the old text stays in "
              "materials.bak. Save all the same?");
    EXPECT_EQ(Library(), damaged);
    EXPECT_TRUE(Editor().Loaded());
    Grid().UserEdit(15, 2, "4000");
    system.dialogs.answers = {MessageAnswer::Yes};
    Press("btnSave");
    EXPECT_EQ(Library(), Material("6 hdf") + OakPly + Material("18 mdf"));
    EXPECT_EQ(Backup(), damaged);
}

TEST_F(MaterialEditor, ManyDamagesFitOneMessage) {
    std::string content;
    for (int number = 0; number < 30; ++number) content += "material=" + std::to_string(number) + "\n";
    UseLibrary(content);
    Open();
    ASSERT_EQ(system.Messages().size(), 1u);
    EXPECT_NE(system.Messages()[0].find("\r\nand 20 more\r\n"), std::string::npos);
}

TEST_F(MaterialEditor, AnotherCodePageIsSavedAsUtf8) {
    UseLibrary(Material("19 T\xFCr"));
    Open();
    EXPECT_EQ(Grid().CellText(1, 1), "19 Tür");
    Press("btnSave");
    EXPECT_EQ(Library(), Material("19 Tür"));
    EXPECT_EQ(Backup(), Material("19 T\xFCr"));
}

TEST_F(MaterialEditor, ClosingWithoutSavingChangesNothing) {
    UseLibrary(OakPly);
    Open();
    Grid().UserEdit(1, 1, "");
    EXPECT_TRUE(Editor().RequestClose());
    EXPECT_EQ(Library(), OakPly);
    EXPECT_EQ(Backup(), "");
    Open();
    EXPECT_EQ(Grid().CellText(1, 1), "19.05 Red Oak Ply");
}

TEST_F(MaterialEditor, IsOpenedByItsCommand) {
    UseLibrary(OakPly);
    TheSession().InstallFolder.clear();
    std::string shown;
    system.dialogs.onModal = [&](Form&) { shown = Grid().CellText(1, 1); };
    cBrenvik().BVMaterial(system.app);
    EXPECT_EQ(system.dialogs.shownForms, Texts{"frmMaterials"});
    EXPECT_EQ(shown, "19.05 Red Oak Ply");
}

}  // namespace
}  // namespace brenvik
