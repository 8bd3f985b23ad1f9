// The editor of size adjustments: which file it opens, what its grid shows, and the files that it writes.
#include "export/frm_adjustments.h"

#include <gtest/gtest.h>

#include "core/export/export_fixture.h"
#include "export/adjustment_file.h"
#include "export/export_troubles.h"
#include "session/library/brenvik_class.h"
#include "session/library/command_table.h"

namespace brenvik {
namespace {

/// The lines of an adjustment without criteria.
std::string Section(const std::string& name, const std::string& thickness) {
    AdjustmentRow row(AdjustmentColumnCount);
    row.front() = name;
    row.back() = thickness;
    return AdjustmentText(row, "\n");
}

class AdjustmentsEditor : public ExportTest {
  protected:
    frmAdjustments& Editor() { return StateOf<frmAdjustments>(); }
    GridControl& Grid() { return Editor().fpAdjustments; }
    void OpenEditor() { Editor().Load(); }
    void PressIn(const char* control) { Editor().Get<Control>(control).Press(); }
};

TEST_F(AdjustmentsEditor, HasAColumnForEachKey) {
    OpenEditor();
    EXPECT_EQ(Editor().caption, "BrenvikAdjustments");
    Texts headers;
    for (int column = 1; column <= Grid().MaxCols(); ++column) headers.push_back(Grid().CellText(column, 0));
    EXPECT_EQ(headers, (Texts{"Adjust Name", "Qty",   "Part Name", "Sub Assem.", "Material",   "Length",
                              "Width",       "Thick", "ORIE",      "Notes",      "User Data1", "User Data2",
                              "PN",          "Price", "EB1",       "EB2",        "EB3",        "EB4",
                              "Face",        "Layer", "L",         "W",          "T"}));
    EXPECT_EQ(Editor().Get<Control>("lblFile").Text(), "BrenvikAdjustments file to use:");
    EXPECT_EQ(
        Editor().Get<Control>("lblWarning").Text(),
        "Be very careful using BrenvikAdjustments, as your exported sizes will be changed. Any part that "
        "meets "
        "the criteria you specify will be adjusted accordingly based in the values in the l, w and t "
        "columns. "
        "If a part matches more then one Adjust Name in you file, then the part will be adjusted multiple "
        "times. This only effects *.csv and *mdb exports.");
}

TEST_F(AdjustmentsEditor, OpensTheDeliveredFileByDefault) {
    OpenEditor();
    EXPECT_EQ(Editor().Text1.Text(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AdjustmentsEditor, SaysThatTheDeliveredFileIsMissing) {
    files.contents.clear();
    OpenEditor();
    EXPECT_EQ(Messages(), Texts{std::string(MissingAdjustments)});
    EXPECT_EQ(Editor().Text1.Text(), "");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "(absent)");
}

TEST_F(AdjustmentsEditor, ShowsTheFileOfTheSettings) {
    UseAdjustments(Section("Doors", "0.25") + "# comment\n" + Section("Backs", "-1"));
    OpenEditor();
    EXPECT_EQ(Editor().Text1.Text(), "C:\\adj.txt");
    EXPECT_EQ(Grid().CellText(1, 1), "Doors");
    EXPECT_EQ(Grid().CellText(23, 1), "0.25");
    EXPECT_EQ(Grid().CellText(1, 2), "Backs");
    EXPECT_EQ(Grid().CellText(23, 2), "-1");
    EXPECT_EQ(Grid().CellText(1, 3), "");
}

TEST_F(AdjustmentsEditor, NamesAFileThatCantBeRead) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "D:\\gone.txt");
    OpenEditor();
    EXPECT_EQ(Messages(), Texts{"53\r\nBrenvik\r\nFile not found: D:\\gone.txt"});
    EXPECT_TRUE(Editor().Loaded());
    EXPECT_EQ(Grid().CellText(1, 1), "");
}

TEST_F(AdjustmentsEditor, HasRoomForAnyNumberOfAdjustments) {
    std::string content;
    for (int section = 0; section < 1000; ++section) content += Section("A" + std::to_string(section), "1");
    UseAdjustments(content);
    OpenEditor();
    EXPECT_EQ(Grid().CellText(1, 1000), "A999");
    EXPECT_GT(Grid().MaxRows(), 1000);
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], content);
}

TEST_F(AdjustmentsEditor, TakesRubbishForNoAdjustments) {
    UseAdjustments(
        std::string("\x7F"
                    "ELF\0\xFF\n[cut off",
                    16));
    OpenEditor();
    EXPECT_EQ(Grid().CellText(1, 2), "");
    EXPECT_EQ(dialogs.messages.size(), 1U);
}

TEST_F(AdjustmentsEditor, WritesItsRowsAndPassesOverBlankOnes) {
    UseAdjustments(Section("Doors", "0.25") + Section("Backs", "-1"));
    OpenEditor();
    for (const int column : {1, 23}) Grid().UserEdit(column, 1, "");
    EXPECT_TRUE(Grid().UserEdit(1, 40, "Tops"));
    Grid().UserEdit(3, 40, "Top");
    PressIn("btnSave");
    AdjustmentRow tops(AdjustmentColumnCount);
    tops[0] = "Tops";
    tops[2] = "Top";
    EXPECT_EQ(files.contents["C:\\adj.txt"], Section("Backs", "-1") + AdjustmentText(tops, "\n"));
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\adj.txt");
    EXPECT_FALSE(Editor().Loaded());
}

TEST_F(AdjustmentsEditor, WritesARowWithoutAName) {
    OpenEditor();
    Grid().UserEdit(2, 1, "5");
    PressIn("btnSave");
    EXPECT_TRUE(files.contents["C:\\Brenvik\\No Adjustments.txt"].starts_with("[]\nQty=5\n"));
}

TEST_F(AdjustmentsEditor, SavesACopyUnderAnotherName) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    PressIn("cmdADJBrowse2");
    dialogs.chosenFile = "D:\\copy.txt";
    PressIn("cmdADJBrowse2");
    EXPECT_EQ(files.contents["D:\\copy.txt"], Section("Doors", "0.25"));
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\adj.txt");
    EXPECT_TRUE(Editor().Loaded());
    ASSERT_EQ(dialogs.fileRequests.size(), 2U);
    EXPECT_EQ(dialogs.fileRequests[0].title, "Choose Adjustment File");
    EXPECT_EQ(dialogs.fileRequests[0].filter, "BrenvikAdjustments Text File (*.txt)|*.txt");
    EXPECT_EQ(dialogs.fileRequests[0].defaultExtension, "txt");
    EXPECT_TRUE(dialogs.fileRequests[0].saving);
}

TEST_F(AdjustmentsEditor, AsksBeforeACopyGoesOverAnotherFile) {
    UseAdjustments(Section("Doors", "0.25"));
    files.contents["D:\\other.txt"] = Section("Tops", "3");
    OpenEditor();
    dialogs.chosenFile = "D:\\other.txt";
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("cmdADJBrowse2");
    EXPECT_EQ(files.contents["D:\\other.txt"], Section("Tops", "3")) << "the default is to leave it";
    ASSERT_FALSE(dialogs.messages.empty());
    EXPECT_EQ(dialogs.messages.back().text, "D:\\other.txt is there already. Leave it as it is?");
    EXPECT_EQ(TakeExportTroubles(),
              std::vector<std::string>{"the BrenvikAdjustments file D:\\other.txt was not "
                                       "written: it was there already"});
    dialogs.answers = {MessageAnswer::No};
    PressIn("cmdADJBrowse2");
    EXPECT_EQ(files.contents["D:\\other.txt"], Section("Doors", "0.25"));
}

TEST_F(AdjustmentsEditor, OpensAnotherFile) {
    UseAdjustments(Section("Doors", "0.25") + Section("Backs", "-1"));
    files.contents["D:\\other.txt"] = Section("Tops", "3");
    OpenEditor();
    PressIn("cmdADJBrowse");
    EXPECT_EQ(Grid().CellText(1, 1), "Doors");
    dialogs.chosenFile = "D:\\other.txt";
    PressIn("cmdADJBrowse");
    EXPECT_EQ(Editor().Text1.Text(), "D:\\other.txt");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "D:\\other.txt");
    EXPECT_EQ(Grid().CellText(1, 1), "Tops");
    EXPECT_EQ(Grid().CellText(1, 2), "") << "nothing of the first file is left";
    EXPECT_FALSE(dialogs.fileRequests[0].saving);
}

TEST_F(AdjustmentsEditor, SwallowsThatItsFileCantBeWritten) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    files.failOnWrite = DiskFull("C:\\adj.txt");
    Grid().UserEdit(1, 1, "Tops");
    PressIn("btnSave");
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_FALSE(Editor().Loaded());
    EXPECT_EQ(files.contents["C:\\adj.txt"], Section("Doors", "0.25")) << "the old file is whole";
}

TEST_F(AdjustmentsEditor, ComesUpEmptyAgain) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    Editor().Unload();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    OpenEditor();
    EXPECT_EQ(Grid().CellText(1, 1), "");
}

TEST_F(AdjustmentsEditor, MakesTheFileItSavedTheOneOfTheSettings) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "D:\\other.txt");
    PressIn("btnSave");
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\adj.txt");
    EXPECT_FALSE(files.contents.contains("D:\\other.txt"));
}

TEST_F(AdjustmentsEditor, WithoutAFileForgetsTheOneOfLastTime) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    Editor().Unload();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    files.contents.erase("C:\\Brenvik\\No Adjustments.txt");
    OpenEditor();
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], Section("Doors", "0.25"));
}

TEST_F(AdjustmentsEditor, OpensWhereTheSettingsCantBeWritten) {
    UseAdjustments(Section("Doors", "0.25"));
    settings.readOnly = true;
    OpenEditor();
    EXPECT_EQ(Editor().Text1.Text(), "C:\\adj.txt");
    EXPECT_EQ(Grid().CellText(1, 1), "Doors");
    EXPECT_TRUE(dialogs.messages.empty());
    PressIn("btnSave");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_TRUE(dialogs.messages[0].text.starts_with("70\r\n"));
    EXPECT_FALSE(Editor().Loaded());
}

TEST_F(AdjustmentsEditor, ShowsTheDeliveredFileWhereTheSettingsCantKeepItsPath) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    settings.readOnly = true;
    files.contents["C:\\Brenvik\\No Adjustments.txt"] = Section("Doors", "0.25");
    OpenEditor();
    EXPECT_EQ(Grid().CellText(1, 1), "Doors");
}

TEST_F(AdjustmentsEditor, LeavesAFileThatNobodyHasChangedAsItsWriterHasLaidItOut) {
    const std::string content = "# since May\r\n[Doors]\r\n\r\nMaterial=Oak\r\nl=1.5";
    UseAdjustments(content);
    OpenEditor();
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], content);
    EXPECT_FALSE(Editor().Loaded());
}

TEST_F(AdjustmentsEditor, SaysThatItCantShowKeysInAnotherOrder) {
    UseAdjustments("# since May\n[Doors]\nMaterial=Oak\nl=1.5\n");
    OpenEditor();
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_TRUE(
        dialogs.messages[0].text.starts_with("C:\\adj.txt:3: \"Material=Oak\" can't be shown as it stands."))
        << dialogs.messages[0].text;
}

TEST_F(AdjustmentsEditor, KeepsAFileWithLinesThatItCantShow) {
    const std::string content = "[Doors]\nMaterial=Oak\nl=1.5\n";
    UseAdjustments(content);
    OpenEditor();
    Grid().UserEdit(1, 2, "Backs");
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("btnSave");
    ExpectMessage(
        "C:\\adj.txt:2: \"Material=Oak\" and 1 more would be lost: this editor writes what its grid "
        "shows, and nothing else. Leave C:\\adj.txt as it is?",
        "Save Adjustments", MessageIcon::Question);
    EXPECT_EQ(files.contents["C:\\adj.txt"], content);
    EXPECT_TRUE(Editor().Loaded()) << "what has been typed is still there";
    const Texts told = TakeExportTroubles();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(
        told[0],
        "the BrenvikAdjustments file C:\\adj.txt was not written: 2 of the lines of C:\\adj.txt would be "
        "lost, the first in line 2");
    dialogs.answers = {MessageAnswer::No};
    PressIn("btnSave");
    EXPECT_TRUE(files.contents["C:\\adj.txt"].starts_with("[Doors]\nQty=\n"));
    EXPECT_FALSE(Editor().Loaded());
}

TEST_F(AdjustmentsEditor, KeepsAFileThatItCantRead) {
    const std::string content("\xFF\xFE[\0A\0]\0", 8);
    UseAdjustments(content);
    OpenEditor();
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], content);
    EXPECT_TRUE(Editor().Loaded());
    const Texts told = TakeExportTroubles();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("was not written: it could not be read"), std::string::npos) << told[0];
}

TEST_F(AdjustmentsEditor, JoinsNoTwoAdjustmentsInTheFile) {
    std::string content = Section("Doors", "0.25") + Section("Backs", "-1");
    content.erase(content.find("Price=\n"), 7);
    UseAdjustments(content);
    OpenEditor();
    Grid().UserEdit(21, 1, "2");
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], content);
}

TEST_F(AdjustmentsEditor, AsksForRemarksAndHeadersThatItWritesInAnotherWay) {
    const std::string whole = Section("Doors", "0.25");
    for (const std::string& content : {"# since May\n" + whole, whole + "l=5\n", "l=5\n" + whole,
                                       "[Doors\n" + whole.substr(8), "[Doors] \n" + whole.substr(8)}) {
        UseAdjustments(content);
        OpenEditor();
        Grid().UserEdit(23, 1, "2");
        dialogs.answers = {MessageAnswer::Yes};
        PressIn("btnSave");
        EXPECT_EQ(files.contents["C:\\adj.txt"], content);
        EXPECT_TRUE(dialogs.answers.empty()) << content;
        Editor().Unload();
    }
}

TEST_F(AdjustmentsEditor, AsksForNothingWhereOnlyBlanksAreLeftOutOrAdded) {
    std::string content = "\n" + Section("Doors", "0.25") + "\n[Backs]\nQTY=\nmaterial=";
    UseAdjustments(content);
    OpenEditor();
    EXPECT_TRUE(dialogs.messages.empty());
    Grid().UserEdit(23, 1, "2");
    PressIn("btnSave");
    EXPECT_TRUE(files.contents["C:\\adj.txt"].starts_with(Section("Doors", "2") + "[Backs]\nQty=\n"));
}

TEST_F(AdjustmentsEditor, KeepsWhatSomebodyElseHasChangedMeanwhile) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    const std::string others = Section("Doors", "0.25") + Section("Backs", "-1");
    files.contents["C:\\adj.txt"] = others;
    Grid().UserEdit(23, 1, "2");
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], others);
    EXPECT_TRUE(Editor().Loaded());
    EXPECT_EQ(
        TakeExportTroubles(),
        Texts{"the BrenvikAdjustments file C:\\adj.txt was not written: it has been changed elsewhere since "
              "it was opened; open it anew"});
    dialogs.answers = {MessageAnswer::No};
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], Section("Doors", "2"));
}

TEST_F(AdjustmentsEditor, AsksForWhatIsChangedUpToTheMomentOfSaving) {
    UseAdjustments(Section("Doors", "0.25"));
    OpenEditor();
    const std::string others = Section("Doors", "0.25") + Section("Backs", "-1");
    Grid().UserEdit(23, 1, "2");
    files.onTurn = [&] { files.contents["C:\\adj.txt"] = others; };
    dialogs.answers = {MessageAnswer::Yes};
    PressIn("btnSave");
    EXPECT_EQ(files.contents["C:\\adj.txt"], others);
    EXPECT_EQ(TakeExportTroubles().size(), 1U);
}

TEST_F(AdjustmentsEditor, IsOpenedByItsCommand) {
    fakes::FakeApplication app;
    cBrenvik().BVAdjustments(app);
    EXPECT_EQ(dialogs.shownForms, Texts{"frmAdjustments"});
    EXPECT_EQ(Editor().Text1.Text(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_EQ(FindCommand("BVAdjustments")->hostCommands, "BVADJUSTMENTS");
}

}  // namespace
}  // namespace brenvik
