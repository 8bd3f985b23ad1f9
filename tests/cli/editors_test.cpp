// What the editors leave of the files that a shop keeps by hand: nothing is lost that their grids can't show,
// and what they leave out by their rules is told.
#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

class Editors : public PlayedJournal {
  protected:
    static void ExpectTold(const Outcome& outcome, const std::string& text) {
        EXPECT_NE(outcome.errors.find(text), std::string::npos) << text << "\n" << outcome.errors;
    }
    /// Opens the editor of adjustments on "adj.txt".
    static std::string OnAdjustments(const std::string& steps) {
        return "file \"adj.txt\"\ncommand BVAdjustments\npress cmdADJBrowse\n" + steps;
    }
    void WriteLibrary(const std::string& content) const {
        Run({"init"});
        Write("home/materials.txt", content);
    }
    /// Fifteen lines, all filled in.
    static std::string Board(const std::string& key) {
        std::string text = "material=" + key + "\ngrain=0\ndirection=cc\n";
        for (const char* tool : {"1", "2", "3"}) {
            const std::string slot = std::string("tool") + tool;
            text += slot + "=" + tool + "\n" + slot + "dia=12\n" + slot + "ss=18000\n" + slot + "fs=7000\n";
        }
        return text;
    }

    const std::string byHand = "# since May\n[Oak doors]\nMaterial=Oak\nl=1.5\n\n[Backs]\nt=-0.5\n";
};

TEST_F(Editors, LeaveAdjustmentsByHandAsTheyAreWhereNothingIsTyped) {
    Write("adj.txt", byHand);
    const Outcome outcome = Play(OnAdjustments("press btnSave\nexpect no form\n"));
    EXPECT_EQ(Read("adj.txt"), byHand);
    EXPECT_EQ(outcome.status, 1) << "what the grid showed was not the file";
    ExpectTold(outcome, "adj.txt:3: \"Material=Oak\" can't be shown as it stands.");
}

TEST_F(Editors, WriteNoAdjustmentsOverLinesThatTheyCannotShow) {
    Write("adj.txt", byHand);
    const Outcome outcome =
        Play(OnAdjustments("cell fpAdjustments 9 1 \"Tops\"\npress btnSave\nexpect form frmAdjustments\n"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Read("adj.txt"), byHand);
    ExpectTold(outcome, "adj.txt:1: \"# since May\" and 4 more would be lost");
    ExpectTold(outcome, "adj.txt was not written: 5 of the lines of ");
    EXPECT_EQ(
        Play(OnAdjustments("cell fpAdjustments 9 1 \"Tops\"\nanswer no\npress btnSave\nexpect no form\n"))
            .status,
        1);
    EXPECT_TRUE(Read("adj.txt").starts_with("[Oak doors]"));
}

// The grid takes whatever is typed; an export would be the first to say that it can't be meant.
TEST_F(Editors, TellAdjustmentsThatCannotBeMeant) {
    Write("adj.txt", "");
    const Outcome odd =
        Play(OnAdjustments("cell fpAdjustments 1 1 \"Tops\"\ncell fpAdjustments 1 6 \"24.0\"\n"
                           "cell fpAdjustments 1 21 \"1/8\"\npress btnSave\nexpect no form\n"));
    EXPECT_EQ(odd.status, 1);
    EXPECT_TRUE(Read("adj.txt").starts_with("[Tops]"));
    ExpectTold(odd, "adj.txt:6: Length: expected \"24\", found \"24.0\"; no part meets it\n");
    ExpectTold(odd,
               "adj.txt:21: l: expected a decimal number such as 0.125 or -1.5, found \"1/8\"; nothing is "
               "added\n");
    const Outcome twice = Play(OnAdjustments(
        "cell fpAdjustments 1 6 \"24\"\ncell fpAdjustments 1 21 \"1\"\ncell fpAdjustments 2 1 \"Backs\"\n"
        "cell fpAdjustments 2 21 \"1\"\ncell fpAdjustments 3 1 \"Tops\"\ncell fpAdjustments 3 21 \"1\"\n"
        "press btnSave\nexpect no form\n"));
    EXPECT_EQ(twice.status, 1);
    ExpectTold(twice, "has the adjustment [Tops] twice with another one between");
    Write("adj.txt", "");
    EXPECT_EQ(Play(OnAdjustments("cell fpAdjustments 1 1 \"Tops\"\ncell fpAdjustments 1 6 \"24\"\n"
                                 "cell fpAdjustments 1 21 \"0.5\"\npress btnSave\nexpect no form\n"))
                  .status,
              0);
}

TEST_F(Editors, TellOfAMaterialThatIsNotFilledIn) {
    std::string half = Board("18 mdf");
    half.erase(half.find("tool3ss=18000") + 8, 5);
    WriteLibrary(Board("6 hdf") + half);
    const Outcome outcome = Play("command BVMaterial\npress btnSave\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Read("home/materials.txt"), Board("6 hdf"));
    ExpectTold(outcome, "the material \"18 mdf\" in row 2 of the editor was not saved: ");
    ExpectTold(outcome, "found Tool3 Speed blank");
    EXPECT_EQ(Read("home/materials.bak"), Board("6 hdf") + half);
}

TEST_F(Editors, TellOfAMaterialThatWasTypedInPart) {
    WriteLibrary(Board("6 hdf"));
    const Outcome outcome = Play("command BVMaterial\ncell fpMaterials 2 1 \"8 hdf\"\npress btnSave\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Read("home/materials.txt"), Board("6 hdf"));
    ExpectTold(outcome, "the material \"8 hdf\" in row 2 of the editor was not saved: ");
}

TEST_F(Editors, LeaveALibraryByHandAsItIsWhereNothingIsTyped) {
    const std::string content = Board("6 hdf") + "\r\n\nMATERIAL=18 Weiß\r\n" + Board("x").substr(11, 190);
    ASSERT_NE(content.find("tool3fs="), std::string::npos);
    WriteLibrary(content);
    Play("command BVMaterial\npress btnSave\n");
    EXPECT_EQ(Read("home/materials.txt"), content);
}

TEST_F(Editors, TellThatALibraryInAnotherCodePageIsUtf8Now) {
    WriteLibrary(Board("6 Wei\xDF"));
    const Outcome outcome = Play("command BVMaterial\npress btnSave\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(Read("home/materials.txt"), Board("6 Weiß"));
    ExpectTold(outcome,
               "materials.txt was no UTF-8, was taken for the Western Windows code page, and is UTF-8 now");
}

TEST_F(Editors, TellOfASizeThatIsClearedInTheList) {
    const std::string clear = "select 100\ncommand Show\ncell fpSpread1 1 Length \"\"\n";
    const Outcome exported =
        Play(clear + "press tbMain.EXPORT\ntype txtSaveCSVFile \"list.csv\"\npress cmdGo\nclose\n");
    EXPECT_EQ(exported.status, 1);
    ExpectTold(exported, "it has no size in the export: Length (blank); expected a size above 0");
    const Outcome applied = Play(clear + "press tbMain.APPLY_CLOSE\n");
    EXPECT_EQ(applied.status, 1);
    ExpectTold(applied, "its Length was cleared in the list and not in the drawing");
}

TEST_F(Editors, TellOfEditsInRowsThatAFilterHidesFromAnApply) {
    const std::string edit = "select 100 120\ncommand Show\ncell fpSpread1 1 Notes \"a\"\n";
    const std::string filter =
        "press tbMain.FILTER\npick cboCol(0) \"Part Name\"\npick cboCrit(0) \"= Equal\"\n"
        "type cboCritData(0) \"Bottom\"\npress btnOK\n";
    const std::string noFilter = "press tbMain.FILTER\npress btnClear\npress btnOK\n";
    const std::string saved = "save \"f.dxf\"\n";
    const std::string told =
        "the part \"Left Side\" (100): what was typed into its row was not written to the drawing: ";
    const Outcome hidden = Play(edit + filter + "press tbMain.APPLY_CLOSE\n" + saved);
    EXPECT_EQ(hidden.status, 1);
    ExpectTold(hidden, told);
    const Outcome numbered = Play("select 100 120\ncommand Show\npress btnAutoPN\n" + filter +
                                  "press tbMain.APPLY_CLOSE\n" + saved);
    EXPECT_EQ(numbered.status, 1);
    ExpectTold(numbered, told);
    const Outcome later = Play(edit + filter + "press tbMain.APPLY_DRAWING\n" + noFilter +
                               "press tbMain.APPLY_CLOSE\nexpect data 100 NOTES \"a\"\n" + saved);
    EXPECT_EQ(later.status, 0) << later.errors;
    EXPECT_EQ(later.errors, "");
    const Outcome cancelled = Play(edit + filter + "press tbMain.CANCEL_CLOSE\n");
    EXPECT_EQ(cancelled.status, 0) << cancelled.errors;
    const Outcome unchanged = Play("select 100 120\ncommand Show\ngoto fpSpread1 1 Notes\n" + filter +
                                   "press tbMain.APPLY_CLOSE\n" + saved);
    EXPECT_EQ(unchanged.status, 0) << unchanged.errors;
}

TEST_F(Editors, TellThatACncRunTakesWhatTheFilterHides) {
    const std::string toRun = "press tbMain.EXPORT\npick cboExportType \"Export to C2C\"\npress cmdGo\n";
    const std::string open = "select 100 120\ncommand Show\n";
    const Outcome filtered = Play(open +
                                  "press tbMain.FILTER\npick cboCol(0) \"Part Name\"\n"
                                  "type cboCritData(0) \"Left Side\"\npress btnOK\n" +
                                  toRun);
    EXPECT_EQ(filtered.status, 0) << filtered.errors;
    ExpectTold(filtered,
               "1 part that the filter hides goes to the CNC run too, which takes all parts of the list");
    EXPECT_EQ(Play(open + toRun).errors.find("filter"), std::string::npos);
}

TEST_F(Editors, TellOfRowsOfTheFilterThatHaveNoEffect) {
    const auto row = [](const std::string& place, const std::string& column, const std::string& value) {
        return "pick cboCol" + place + " \"" + column + "\"\npick cboCrit" + place +
               " \"= Equal\"\ntype cboCritData" + place + " \"" + value + "\"\n";
    };
    const std::string open = "select all\ncommand Show\npress tbMain.FILTER\n", end = "press btnOK\nclose\n";
    const Outcome two = Play(open + row("(0)", "Material", "Cherry") + row("(1)", "Length", "720") + end);
    EXPECT_EQ(two.status, 0) << two.errors;
    ExpectTold(
        two,
        "the filter \"Material = Cherry\" had no effect: only the last row of the dialog counts, \"Length = "
        "720\"\n");
    EXPECT_EQ(Play(open + row("(1)", "Length", "720") + end).errors, "");
}

TEST_F(Editors, TellOfNumbersThatNoApplyHasTaken) {
    const Outcome outcome = Play("select 100 120\ncommand Show\npress btnAutoPN\nclose\n");
    ExpectTold(
        outcome,
        "line 4: frmMain closes without an Apply: what was typed into it, last in line 3, is not kept");
}

TEST_F(Editors, TellOfAQuantityWithAnExponent) {
    const Outcome outcome = Play(
        "select 100\ncommand Show\ncell fpSpread1 1 Qty \"1e3\"\npress tbMain.APPLY_CLOSE\nsave \"q.dxf\"\n");
    EXPECT_EQ(outcome.status, 1);
    ExpectTold(outcome, "its quantity is \"1e3\", expected a whole number from 1 to 1000000");
}

TEST_F(Editors, TellOfAnExportWithoutColumns) {
    const Outcome outcome = Play(
        "select 100\ncommand Show\npress tbMain.EXPORT\ncheck chkChooseCSV\n"
        "type txtSaveCSVFile \"list.csv\"\npress cmdGo\nclose\n");
    EXPECT_EQ(outcome.status, 1);
    ExpectTold(outcome, "the export has no columns: expected a profile, or columns chosen in the dialog");
}

}  // namespace
}  // namespace brenvik::cli_test
