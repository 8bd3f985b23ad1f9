// CSV files, whole, as the dialog's button writes them, and what becomes of a run that can't go on.
#include "export/csv_export.h"

#include <gtest/gtest.h>

#include "core/export/export_fixture.h"
#include "core/fakes/fake_progress.h"
#include "export/export_troubles.h"
#include "parts/part_trouble.h"
#include "session/progress.h"

namespace brenvik {
namespace {

const std::string out = "C:\\out.csv";
const std::string standardHeader =
    "PN,QTY,Part Name,Sub Assembly,Width,Length,Thickness,Material,Notes,User Data1,User "
    "Data2,Price,EB1,EB2,EB3,EB4,Face,Layer,Thickness-Material (Imperial),Thickness-Material (Metric)\n";

class CsvFile : public ExportTest {
  protected:
    CsvFile() {
        Open();
        Form().txtSaveCSVFile.SetText(out);
    }
    /// Presses the button and gives the file, "(none)" when there is none.
    std::string Export() {
        Press("cmdGo");
        const auto found = files.contents.find(out);
        return found == files.contents.end() ? "(none)" : found->second;
    }
    std::string ExportColumns(const std::string& columns) {
        UseColumns(columns);
        return Export();
    }
    void ExpectDone() {
        ExpectMessage("Export Complete!!", "Done.", MessageIcon::None);
        EXPECT_FALSE(Form().Loaded());
        EXPECT_TRUE(Form().exportEnded);
        EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
        ExpectReaderClosed();
    }
    /// The dialog is open, nothing was written, and nothing said that it was.
    void ExpectAborted() {
        EXPECT_TRUE(Form().Loaded());
        EXPECT_FALSE(Form().exportEnded);
        EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
        for (const std::string& text : Messages()) EXPECT_NE(text, "Export Complete!!");
    }
    void GroupBy(const std::string& fields, const ListResult& result) {
        TheSession().GroupFields = fields;
        TheSession().CurrentSQL = "Select count(bv_partname) as bv_qty, " + fields;
        database.results[TheSession().CurrentSQL] = result;
    }
};

TEST_F(CsvFile, OfTheStandardColumnsHasEveryPart) {
    Part door = Board("Door", 600.5, 400, 19.05);
    door["bv_pn"] = "7";
    door["bv_subassembly"] = "Base";
    door["bv_notes"] = "n";
    door["bv_userdata1"] = "u1";
    door["bv_userdata2"] = "u2";
    door["bv_price"] = "3.50";
    door["bv_eb1"] = "e1";
    door["bv_eb2"] = "e2";
    door["bv_eb3"] = "e3";
    door["bv_eb4"] = "e4";
    door["bv_face"] = "f";
    database.parts = {door, Board("Türseite", 18, 0.125, 1e-5)};
    EXPECT_EQ(Export(),
              standardHeader +
                  "7,1,Door,Base,400,600.5,19.05,Oak,n,u1,u2,3.50,e1,e2,e3,e4,f,0,19 1/16 Oak,19.05 Oak\n"
                  ",1,Türseite,,0.125,18,1E-05,Oak,,,,,,,,,,0, Oak,0 Oak\n");
    ExpectDone();
}

TEST_F(CsvFile, IsNotWrittenWhenTheUserCancels) {
    database.parts = {Board("Door", 600, 400, 19), Board("Side", 700, 400, 19)};
    fakes::FakeProgress progress;
    progress.cancelAt = {"Export", 2};
    ShowProgressBy(&progress);
    EXPECT_EQ(Export(), "(none)");
    ExpectAborted();
    EXPECT_EQ(progress.told.back(), "End");
}

TEST_F(CsvFile, IsWrittenUnderTheHourglass) {
    MousePointer shown = MousePointer::Normal;
    files.onWrite = [&] { shown = Form().mousePointer; };
    Export();
    EXPECT_EQ(shown, MousePointer::Hourglass);
    ExpectDone();
}

TEST_F(CsvFile, IsReplacedWithoutBeingRemovedFirst) {
    files.contents[out] = "old";
    dialogs.answers = {MessageAnswer::Yes};
    files.onWrite = [&] { EXPECT_EQ(files.contents[out], "old") << "whole until the new one is there"; };
    EXPECT_EQ(Export(), standardHeader);
    EXPECT_TRUE(files.removed.empty());
}

TEST_F(CsvFile, OfAnEmptyListIsTheHeader) { EXPECT_EQ(Export(), standardHeader); }

TEST_F(CsvFile, EndsItsLinesAsThePlatformDoes) {
    files.lineEnd = "\r\n";
    database.parts = {Board("Door", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("QTY,Part Name"), "QTY,Part Name\r\n1,Door\r\n");
}

TEST_F(CsvFile, HasSizesAsPaddedFractions) {
    database.parts = {Board("A", 18, 18.5, 0), Board("B", 0.5, 2.99, 23.97),
                      Board("C", 0.01, -1.5, 1 / 64.0)};
    Form().chkReduce.SetValue(1);
    EXPECT_EQ(ExportColumns("Length,Width,Thickness,Part Name"),
              "Length,Width,Thickness,Part Name\n"
              "18,018 1/2,,A\n"
              "0 1/2,3,023 31/32,B\n"
              ",0-1 5/10,0 1/32,C\n");
}

TEST_F(CsvFile, JoinsSizesInEachOrder) {
    database.parts = {Board("A", 3.75, 2.5, 0.75)};
    EXPECT_EQ(ExportColumns("L x W x T,L x T x W,W x L x T,W x T x L,T x L x W,T x W x L"),
              "L x W x T,L x T x W,W x L x T,W x T x L,T x L x W,T x W x L\n"
              "3.75 x 2.5 x 0.75,3.75 x 0.75 x 2.5,2.5 x 3.75 x 0.75,2.5 x 0.75 x 3.75,0.75 x 3.75 x 2.5,"
              "0.75 x 2.5 x 3.75\n");
}

TEST_F(CsvFile, JoinsSizesAsUnpaddedFractions) {
    database.parts = {Board("A", 3.75, 0.5, 0.74)};
    Form().chkReduce.SetValue(1);
    EXPECT_EQ(ExportColumns("L x W x T"), "L x W x T\n3 3/4 x 1/2 x 3/4\n");
}

TEST_F(CsvFile, JoinsThicknessAndMaterialWhetherFractionsAreWantedOrNot) {
    database.parts = {Board("A", 1, 1, 0.75), Board("B", 1, 1, 19.125), Board("C", 1, 1, 2.675)};
    const std::string lines = "3/4 Oak,0.75 Oak\n19 1/8 Oak,19.12 Oak\n2 11/16 Oak,2.68 Oak\n";
    const std::string columns = "Thickness-Material (Imperial),Thickness-Material (Metric)";
    EXPECT_EQ(ExportColumns(columns), columns + "\n" + lines);
    files.contents.erase(out);
    Open().txtSaveCSVFile.SetText(out);
    Form().chkReduce.SetValue(1);
    EXPECT_EQ(ExportColumns(columns), columns + "\n" + lines);
}

TEST_F(CsvFile, HasFixedTextsAndBlankColumns) {
    database.parts = {Board("A", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("|  Job 12 |,(blank),Part Name,(blank),||"),
              "Job 12,(blank),Part Name,(blank),\nJob 12,,A,,\n");
}

TEST_F(CsvFile, LeavesOutTheCellOfANameWithoutAColumn) {
    database.parts = {Board("A", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("QTY,Colour,(Blank),Part Name,(BLANK), Material"),
              "QTY,Colour,(Blank),Part Name,(BLANK),Material\n1,A\n");
}

TEST_F(CsvFile, OfNamesWithoutAnyColumnHasBlankLines) {
    database.parts = {Board("A", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("Colour"), "Colour\n\n");
}

TEST_F(CsvFile, OfAnEmptyProfileHasABlankHeader) {
    database.parts = {Board("A", 1, 2, 3)};
    EXPECT_EQ(ExportColumns(""), "\n\n");
}

TEST_F(CsvFile, QuotesNothing) {
    database.parts = {Board("Door, left \"x\"", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("Part Name,QTY"), "Part Name,QTY\nDoor, left \"x\",1\n");
}

TEST_F(CsvFile, HasBlankCellsForNull) {
    Part part = Board("A", 1, 2, 3);
    for (const char* field : {"bv_notes", "bv_length", "bv_material"}) part[field] = FieldValue();
    database.parts = {part};
    EXPECT_EQ(ExportColumns("Notes,Length,Width,L x W x T,Thickness-Material (Metric)"),
              "Notes,Length,Width,L x W x T,Thickness-Material (Metric)\n,,2,,3 \n");
}

TEST_F(CsvFile, LeavesTheCellOfASizeBeyondFractionsBlank) {
    database.parts = {Board("A", 3e9, 2, 3)};
    Form().chkReduce.SetValue(1);
    EXPECT_EQ(ExportColumns("Length,Width"), "Length,Width\n,2\n");
}

TEST_F(CsvFile, AdjustsEverySizeOfAProfilesColumns) {
    database.parts = {Board("Door", 24, 12, 0.75), Board("Side", 30, 12, 0.75)};
    UseAdjustments("[Doors]\nPart Name=door\nl=0.5\nw=-0.25\nt=0.25\n[All]\nt=-0.125\n");
    EXPECT_EQ(ExportColumns("QTY,Length,Width,Thickness,L x W x T,Thickness-Material (Imperial),"
                            "Thickness-Material (Metric),Part Name"),
              "QTY,Length,Width,Thickness,L x W x T,Thickness-Material (Imperial),"
              "Thickness-Material (Metric),Part Name\n"
              "1,24.5,11.75,0.875,24.5 x 11.75 x 0.875,7/8 Oak,0.88 Oak,Door\n"
              "1,30,12,0.625,30 x 12 x 0.625,5/8 Oak,0.62 Oak,Side\n");
}

TEST_F(CsvFile, ShowsAZeroWhereAnAdjustmentLeavesNothing) {
    database.parts = {Board("A", 0.1 + 0.2, 0.1 + 0.2, 0.1 + 0.2)};
    UseAdjustments("[A]\nl=-0.3\nw=-0.3\nt=-0.3\n");
    EXPECT_EQ(ExportColumns("Length,W x L x T,Thickness-Material (Metric)"),
              "Length,W x L x T,Thickness-Material (Metric)\n0,0 x 0 x 0,0 Oak\n");
}

TEST_F(CsvFile, ShowsNegativeFractionsWhereAdjustmentsAreLargerThanThePart) {
    database.parts = {Board("A", 1, 2, 0.25)};
    UseAdjustments("[A]\nl=-1.5\nt=-1.75\n");
    Form().chkReduce.SetValue(1);
    EXPECT_EQ(ExportColumns("Length,Thickness,L x W x T"),
              "Length,Thickness,L x W x T\n0- 5/10,0-1 5/10,-5/10 x 2 x -1 5/10\n");
}

TEST_F(CsvFile, OfTheStandardColumnsIsNeverAdjusted) {
    database.parts = {Board("A", 1, 2, 3)};
    UseAdjustments("[A]\nl=100\nw=100\nt=100\n");
    EXPECT_EQ(Export(), standardHeader + ",1,A,,2,1,3,Oak,,,,,,,,,,0,3 Oak,3 Oak\n");
}

TEST_F(CsvFile, OfTheStandardColumnsIsWrittenEvenIfTheAdjustmentsWouldGoRound) {
    UseAdjustments("[A]\n[B]\n[A]\n");
    EXPECT_EQ(Export(), standardHeader);
}

TEST_F(CsvFile, OfAGroupedListHasItsQuantityAndItsColumns) {
    GroupBy("bv_partName, bv_material, bv_length",
            {{"bv_qty", "bv_partname", "bv_material", "bv_length"},
             {{{"bv_qty", 3.0}, {"bv_partname", "Door"}, {"bv_material", "Oak"}, {"bv_length", 600.25}}}});
    EXPECT_EQ(Export(), "QTY,Part Name,Material,Length\n3,Door,Oak,600.25\n");
}

TEST_F(CsvFile, OfAGroupedListWithAProfileHasBlankCellsForWhatIsNotGrouped) {
    GroupBy("bv_partname", {{"bv_qty", "bv_partname"}, {{{"bv_qty", 3.0}, {"bv_partname", "Door"}}}});
    EXPECT_EQ(ExportColumns("QTY,Length,Notes,L x W x T,Part Name,Thickness-Material (Metric)"),
              "QTY,Length,Notes,L x W x T,Part Name,Thickness-Material (Metric)\n3,,,,Door,\n");
}

TEST_F(CsvFile, FollowsFilterAndSort) {
    TheSession().WhereClause = " Where bv_material = 'Oak' ";
    TheSession().SortClause = "bv_length Desc";
    Export();
    EXPECT_EQ(database.opened, Texts{FullSelect() + "  Where bv_material = 'Oak'  order by bv_length Desc"});
    TheSession().GroupFields = "bv_partname";
    TheSession().CurrentSQL = "Select 1";
    EXPECT_EQ(ExportStatement(), "Select 1");
}

TEST_F(CsvFile, OfARefusedStatementIsTheHeaderAndSaysDone) {
    database.refused = true;
    EXPECT_EQ(Export(), standardHeader);
    ExpectDone();
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_TRUE(troubles[0].starts_with("the export has none of the list's rows: ")) << troubles[0];
}

TEST_F(CsvFile, TellsPartsWhoseSizesAreTheirAdjustmentsAlone) {
    UseAdjustments("[A]\nl=1\n");
    Part shelf = Board("Shelf", 0, 0, 0);
    shelf["bv_lwt"] = "";
    database.parts = {shelf};
    EXPECT_EQ(ExportColumns("Part Name,Length"), "Part Name,Length\nShelf,1\n");
    const std::vector<PartTrouble> troubles = TakePartTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_EQ(troubles[0].text,
              "it has no size in the export: Length 1 (the adjustments of no size); expected letters (ORIE) "
              "that name its sizes");
    EXPECT_FALSE(troubles[0].isRemark);
}

TEST_F(CsvFile, TellsASizeThatNoBoardHas) {
    database.parts = {Board("Shelf", 1e308, 400, 18)};
    ExportColumns("Part Name,Length");
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_NE(troubles[0].find("its Length is 1E+308, expected the size of a board"), std::string::npos)
        << troubles[0];
}

/// A list whose database is gone behind its first row.
class TornRecords : public ListRecords {
  public:
    using ListRecords::ListRecords;
    void MoveNext() override {
        ListRecords::MoveNext();
        throw ObjectNotSet("the connection is gone");
    }
};

TEST_F(CsvFile, ThatARowCutsShortIsToldByTheFirstRowThatIsMissing) {
    TornRecords records({AllFields(), {Board("Side", 600, 400, 18), Board("Door", 600, 400, 18)}});
    int rows = 0;
    ForEachRow(records, [&] { ++rows; });
    EXPECT_EQ(rows, 1);
    const Texts troubles = TakeExportTroubles();
    ASSERT_EQ(troubles.size(), 1U);
    EXPECT_NE(troubles[0].find("\"Door\" and has none of the rows from it on: "), std::string::npos)
        << troubles[0];
}

TEST_F(CsvFile, AsksBeforeAnExistingFileIsWrittenOver) {
    files.contents[out] = "old";
    dialogs.answers = {MessageAnswer::No};
    EXPECT_EQ(Export(), "old");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].title, "Overwrite File");
    EXPECT_EQ(dialogs.messages[0].text, "This file already exists. Do you want to overwrite it?");
    EXPECT_EQ(dialogs.messages[0].icon, MessageIcon::Question);
    EXPECT_EQ(dialogs.messages[0].buttons, MessageButtons::YesNo);
    ExpectAborted();
    dialogs.answers = {MessageAnswer::Yes};
    EXPECT_EQ(Export(), standardHeader);
    ExpectDone();
}

TEST_F(CsvFile, NeedsAnAdjustmentFileEvenWhereItIsNotApplied) {
    files.contents.clear();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    dialogs.messages.clear();
    EXPECT_EQ(Export(), "(none)");
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_TRUE(dialogs.messages[0].text.ends_with("reinstall Brenvik. This export is now aborting."));
    ExpectAborted();
}

TEST_F(CsvFile, StoresTheAdjustmentFileThatItTook) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    Export();
    EXPECT_EQ(Setting("CSV_SAVE\\CVS_ADJ_PATH"), "C:\\Brenvik\\No Adjustments.txt");
}

TEST_F(CsvFile, OfAMissingAdjustmentFileIsNotAdjusted) {
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "C:\\gone.txt");
    database.parts = {Board("A", 1, 2, 3)};
    EXPECT_EQ(ExportColumns("Length"), "Length\n1\n");
    ExpectDone();
}

TEST_F(CsvFile, IsNotWrittenWhenTheAdjustmentsWouldNeverEnd) {
    files.contents[out] = "old";
    dialogs.answers = {MessageAnswer::Yes};
    UseAdjustments("[Doors]\nt=1\n[Sides]\nt=1\n[Doors]\nt=2\n");
    EXPECT_EQ(ExportColumns("Length"), "old");
    ExpectMessage(
        "The BrenvikAdjustments file C:\\adj.txt has the section [Doors] twice with another section between, "
        "so "
        "that matching the parts would never end. Give each adjustment a name of its own. This export is now "
        "aborting.",
        "", MessageIcon::None);
    ExpectAborted();
}

TEST_F(CsvFile, ThatCantBeWrittenIsToldWithItsPathAndLeavesTheOldOne) {
    for (const Failure& failure :
         {PathNotFound("/gone/out.csv"), PermissionDenied("/ro/out.csv"), DiskFull("/full/out.csv")}) {
        files.contents[out] = "old";
        files.failOnWrite = failure;
        dialogs.answers = {MessageAnswer::Yes};
        EXPECT_EQ(Export(), "old");
        ExpectMessage(std::to_string(failure.number()) + "\r\nBrenvik\r\n" + failure.what(), "",
                      MessageIcon::None);
        ExpectAborted();
    }
}

TEST_F(CsvFile, IsWrittenWhereTheSettingsCantBe) {
    Form().Unload();
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    settings.readOnly = true;
    Open().txtSaveCSVFile.SetText(out);
    EXPECT_EQ(Form().Text1.Text(), "C:\\Brenvik\\No Adjustments.txt");
    EXPECT_TRUE(dialogs.messages.empty());
    Form().chkSave.SetValue(1);
    EXPECT_EQ(Export(), standardHeader);
    ASSERT_EQ(dialogs.messages.size(), 2U);
    EXPECT_TRUE(dialogs.messages[0].text.starts_with("70\r\n")) << "the choices that should be kept";
    ExpectDone();
}

TEST_F(CsvFile, ThatEndedIsForgottenByTheNextDialog) {
    Export();
    EXPECT_TRUE(Form().exportEnded);
    Open();
    EXPECT_FALSE(Form().exportEnded);
}

TEST_F(CsvFile, NeedsAName) {
    Form().txtSaveCSVFile.SetText("");
    Press("cmdGo");
    ExpectMessage("You must specify a file to export to!", "No File Name...", MessageIcon::Information);
    ExpectAborted();
}

}  // namespace
}  // namespace brenvik
