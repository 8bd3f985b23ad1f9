// The two lists that a hand-over leaves behind, how equal parts become one line, and what stands in its way.
#include "export/cnc_hand_off.h"
#include "export/cnc_group_check.h"
#include "export/export_troubles.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "core/export/export_fixture.h"
#include "export/export_troubles.h"
#include "parts/cnc_list.h"

namespace brenvik {
namespace {

const std::string firstList = "C:\\Brenvik\\CNCExportList.txt";
const std::string secondList = "C:\\Brenvik\\CNCExportList2.txt";

TEST(GroupedCncListOfLines, CountsLinesThatAreEqualBehindTheirSecondComma) {
    struct Case {
        Texts lines;
        std::string list;
    };
    const Case cases[] = {
        {{}, ""},
        {{"1A,1,Door,Oak"}, "1A,1\n"},
        {{"1A,1,Door,Oak", "1B,1,Door,Oak"}, "1A,2\n"},
        {{"1A,1,Door,Oak", "1B,7,Door,Oak"}, "1A,2\n"},
        {{"1A,1,Door,Oak", "1B,1,door,Oak"}, "1A,1\n1B,1\n"},
        {{"1A,1,Door,Oak", "1B,1,Door,Oak "}, "1A,1\n1B,1\n"},
        {{"1A,1,Door,Oak", "1B,1,Side,Oak", "1C,1,Door,Oak"}, "1A,2\n1B,1\n"},
        {{" 1A ,1,Door"}, "1A,1\n"},
        {{",1,Door", "1B,1,Side"}, "1B,1\n"},
        {{"1A,1,", "1B,1,Side"}, "1B,1\n"},
        {{"1A,1", "1B,1"}, ""},
        {{"1A"}, ""},
    };
    for (const Case& c : cases) EXPECT_EQ(GroupedCncList(c.lines, "\n"), c.list) << Join(c.lines, "|");
}

TEST(GroupedCncListOfLines, StaysQuickForManyDifferentParts) {
    Texts lines;
    for (int part = 0; part < 20000; ++part)
        lines.push_back(std::to_string(part) + ",1,Part " + std::to_string(part));
    EXPECT_EQ(Split(GroupedCncList(lines, "\n"), '\n').size(), 20001U);
}

class CncHandOff : public ExportTest {
  protected:
    void HandOff(const std::string& type = "Export to C2C") {
        if (!Form().Loaded()) Open();
        Choose(Form().cboExportType, type);
        Press("cmdGo");
    }
    void AddPart(const std::string& id, const std::string& name, double length = 600.5) {
        Part part = Board(name, length, 400, 19.05);
        part["bv_id"] = id;
        database.parts.push_back(part);
    }
    void ExpectHandedOver(int number) {
        EXPECT_EQ(TheSession().ExportTarget, number);
        EXPECT_FALSE(Form().Loaded());
        EXPECT_TRUE(dialogs.messages.empty());
        EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
        ExpectReaderClosed();
    }
    void ExpectKeptBack() {
        EXPECT_EQ(TheSession().ExportTarget, 0);
        EXPECT_TRUE(Form().Loaded());
        EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
    }
};

TEST_F(CncHandOff, StoresTheNumberOfEachTarget) {
    const Texts types = {"C2C",  "ATP",   "ROV", "CNI", "ASP", "WOP4",
                         "WOP5", "THERM", "BW",  "ENR", "ABC", "RCIM"};
    for (std::size_t number = 1; number <= types.size(); ++number) {
        TheSession().ExportTarget = 0;
        HandOff("Export to " + types[number - 1]);
        ExpectHandedOver(static_cast<int>(number));
    }
}

TEST_F(CncHandOff, WritesALineForEachRowAndOneForEachGroup) {
    AddPart("1A", "Door");
    AddPart("1B", "Side");
    AddPart("1C", "Door");
    HandOff();
    ExpectHandedOver(1);
    EXPECT_EQ(files.contents[firstList],
              "1A,1,Door,,Oak,600.5,400,19.05,LWT,,,,,,,,,,,0\n"
              "1B,1,Side,,Oak,600.5,400,19.05,LWT,,,,,,,,,,,0\n"
              "1C,1,Door,,Oak,600.5,400,19.05,LWT,,,,,,,,,,,0\n");
    EXPECT_EQ(files.contents[secondList], "1A,2\n1B,1\n");
}

TEST_F(CncHandOff, MakesTenIdenticalPartsOneLine) {
    for (int part = 0; part < 10; ++part) AddPart(std::to_string(100 + part), "Shelf");
    HandOff();
    EXPECT_EQ(files.contents[secondList], "100,10\n");
}

TEST_F(CncHandOff, OfAnEmptyTableGivesTwoEmptyFiles) {
    HandOff();
    ExpectHandedOver(1);
    EXPECT_EQ(files.contents.at(firstList), "");
    EXPECT_EQ(files.contents.at(secondList), "");
}

TEST_F(CncHandOff, ReplacesTheListsOfTheLastTime) {
    files.contents[firstList] = "old";
    files.contents[secondList] = "FF,3\n";
    AddPart("1A", "Door");
    HandOff();
    EXPECT_EQ(files.contents[secondList], "1A,1\n");
    EXPECT_EQ(files.contents[firstList].find("old"), std::string::npos);
}

TEST_F(CncHandOff, EndsItsLinesAsThePlatformDoes) {
    files.lineEnd = "\r\n";
    AddPart("1A", "Door");
    HandOff();
    EXPECT_EQ(files.contents[secondList], "1A,1\r\n");
}

TEST_F(CncHandOff, TakesAllRowsWhateverTheGridShows) {
    TheSession().WhereClause = "where bv_partname = 'Side'";
    TheSession().SortClause = "bv_partname";
    AddPart("1A", "Door");
    database.opened.clear();
    HandOff();
    EXPECT_EQ(database.opened.back(), FullSelect());
    EXPECT_EQ(files.contents[secondList], "1A,1\n");
}

TEST_F(CncHandOff, TurnsGroupingOff) {
    TheSession().GroupFields = "bv_partname";
    TheSession().CurrentSQL = "Select count(bv_partname) as bv_qty, bv_partname";
    AddPart("1A", "Door");
    AddPart("1B", "Door");
    HandOff();
    ExpectHandedOver(1);
    EXPECT_EQ(TheSession().GroupFields, "");
    EXPECT_EQ(files.contents[secondList], "1A,2\n");
}

TEST_F(CncHandOff, TakesTheColumnsOfTheProfileWithTheirAdjustments) {
    UseAdjustments("[Doors]\nPart Name=Door\nl=1.5\n");
    AddPart("1A", "Door", 600);
    AddPart("1B", "Door", 600);
    AddPart("1C", "Side", 601.5);
    Open();
    files.contents["C:\\Brenvik\\CNCProfile.txt"] =
        "[CNC]\ncolumns=ID,QTY,Length,Thickness-Material (Metric)\n";
    Choose(Form().cboExportType, "Export to C2C");
    Form().chkChooseCSV.SetValue(1);
    Choose(Form().cboProfileName, "CNC");
    Press("cmdGo");
    ExpectHandedOver(1);
    EXPECT_EQ(files.contents[firstList],
              "1A,1,601.5,19.05 Oak\n1B,1,601.5,19.05 Oak\n1C,1,601.5,19.05 Oak\n");
    EXPECT_EQ(files.contents[secondList], "1A,3\n") << "equal in every exported column";
}

TEST_F(CncHandOff, RefusesAProfileWithNothingBehindTheQuantity) {
    files.contents[firstList] = "old";
    AddPart("1A", "Door");
    AddPart("1B", "Side");
    for (const char* columns : {"ID,QTY", "ID"}) {
        files.contents["C:\\Brenvik\\CNCProfile.txt"] = std::string("[CNC]\ncolumns=") + columns + "\n";
        Open();
        Form().chkChooseCSV.SetValue(1);
        Choose(Form().cboExportType, "Export to C2C");
        Form().ChooseProfile("CNC");
        dialogs.messages.clear();
        HandOff();
        ExpectKeptBack();
        ASSERT_EQ(Messages().size(), 1u) << columns;
        EXPECT_TRUE(Messages()[0].starts_with("The columns of this export have nothing behind the quantity"));
        EXPECT_EQ(files.contents.at(firstList), "old");
        EXPECT_FALSE(files.contents.contains(secondList));
        Form().Unload();
    }
}

TEST_F(CncHandOff, TellsThePartsThatHaveNothingBehindTheirQuantity) {
    AddPart("1A", "Door");
    AddPart("1B", "");
    files.contents["C:\\Brenvik\\CNCProfile.txt"] = "[CNC]\ncolumns=ID,QTY,Part Name\n";
    Open();
    Form().chkChooseCSV.SetValue(1);
    Choose(Form().cboExportType, "Export to C2C");
    Form().ChooseProfile("CNC");
    HandOff();
    EXPECT_EQ(Messages(), Texts{"Nothing stands behind the quantity in the lines of these parts, so this run "
                                "leaves them out: 1B"});
    EXPECT_EQ(files.contents.at(secondList), "1A,1\n");
    EXPECT_EQ(TheSession().ExportTarget, 1);
}

TEST_F(CncHandOff, HandsOverNothingWhereNoPartHasWhatTheProfileGroupsBy) {
    AddPart("1A", "");
    files.contents["C:\\Brenvik\\CNCProfile.txt"] = "[CNC]\ncolumns=ID,QTY,Part Name\n";
    Open();
    Form().chkChooseCSV.SetValue(1);
    Choose(Form().cboExportType, "Export to C2C");
    Form().ChooseProfile("CNC");
    HandOff();
    ExpectKeptBack();
    EXPECT_EQ(Messages(), Texts{"Nothing stands behind the quantity in the lines of these parts, so this run "
                                "leaves them out: 1A"});
    EXPECT_FALSE(files.contents.contains(secondList));
}

TEST_F(CncHandOff, LeavesTheSizesOfTheStandardColumnsUnadjusted) {
    UseAdjustments("[Doors]\nPart Name=Door\nl=1.5\n");
    AddPart("1A", "Door", 600);
    HandOff();
    EXPECT_NE(files.contents[firstList].find(",600,400,19.05,"), std::string::npos);
}

TEST_F(CncHandOff, WritesFractionsWhereTheyAreAskedFor) {
    AddPart("1A", "Door", 18.5);
    Open();
    Form().chkReduce.SetValue(1);
    HandOff();
    EXPECT_NE(files.contents[firstList].find(",018 1/2,400,"), std::string::npos)
        << files.contents[firstList];
}

TEST_F(CncHandOff, TellsThatTheAdjustmentFileIsMissingAndStays) {
    Open();
    files.contents.erase("C:\\Brenvik\\No Adjustments.txt");
    settings.Set("CSV_SAVE\\CVS_ADJ_PATH", "");
    AddPart("1A", "Door");
    HandOff();
    ASSERT_EQ(Messages().size(), 1U);
    EXPECT_TRUE(Messages()[0].ends_with("reinstall Brenvik. This export is now aborting.")) << Messages()[0];
    ExpectKeptBack();
    EXPECT_FALSE(files.contents.contains(secondList));
}

TEST_F(CncHandOff, NotesThatTheListOfAllPartsCannotBeWritten) {
    AddPart("1A", "Door");
    Open();
    files.failOnWrite = PermissionDenied(secondList);
    HandOff();
    ExpectHandedOver(1);
    EXPECT_EQ(TakeExportTroubles(),
              Texts{"the list of this export was not written to " + firstList + ": Permission denied"});
    EXPECT_FALSE(files.contents.contains(secondList)) << "the run tells that it is missing";
}

TEST_F(CncHandOff, NotesTheComparisonsThatItCannotMake) {
    for (const char* id : {"1A", "1B"}) AddPart(id, "Door");
    Open();
    measuring.failOnCreate = Failure(429, "Component", "Can't create object");
    HandOff();
    ExpectHandedOver(1);
    EXPECT_EQ(
        TakeExportTroubles(),
        Texts{"the solids of parts that this run makes from one were not compared: Can't create object"});
    LookAtCncGroups(std::vector<CncGroup>{{"1A"}});
    EXPECT_TRUE(TakeExportTroubles().empty()) << "one part has nothing to be compared with";
    database.refused = true;
    LookAtCncGroups(std::vector<CncGroup>{{"1A"}});
    EXPECT_EQ(TakeExportTroubles(),
              Texts{"the quantities of the list were not compared with the parts that this run makes: Syntax "
                    "error"});
}

TEST_F(CncHandOff, DoesNotStartARunOnAnOldListThatCannotBeReplaced) {
    AddPart("1A", "Door");
    files.contents[secondList] = "FF,3\n";
    Open();
    files.failOnRemove = PermissionDenied(secondList);
    files.failOnWrite = PermissionDenied(secondList);
    HandOff();
    EXPECT_EQ(Messages(), Texts{"70\r\nBrenvik\r\nPermission denied: " + secondList});
    ExpectKeptBack();
}

TEST_F(CncHandOff, WorksUnderTheHourglass) {
    MousePointer shown = MousePointer::Normal;
    Open();
    files.onWrite = [&] { shown = Form().mousePointer; };
    HandOff();
    EXPECT_EQ(shown, MousePointer::Hourglass);
}

}  // namespace
}  // namespace brenvik
