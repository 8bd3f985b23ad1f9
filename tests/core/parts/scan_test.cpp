// The scan of the previous selection into the part table, its rows, its order and its failures.
#include <gtest/gtest.h>

#include "core/fakes/fake_platform.h"
#include "grid/frm_main.h"
#include "parts/dropped_parts.h"
#include "parts/mautocad.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"

namespace brenvik {
namespace {

using fakes::FakeEntity;

class Scan : public testing::Test {
  protected:
    Scan() {
        TheSession().InstallFolder = "C:\\Brenvik\\";
        TheSession().AcadApp = &system.app;
        TheSession().AcadDoc = &system.Document();
        mDatabase::RefreshWorkingDatabase();
        Form().Adodc1.connectionString = mDatabase::ConnectionString();
    }
    frmMain& Form() { return GridFormInstance(); }
    int Rows() const {
        return static_cast<int>(system.database.databases.at("c:\\brenvik\\_db\\bv04.mdb").size());
    }
    std::string Text(int row, const char* column) const {
        return system.database.Text(system.WorkPath, row, column);
    }
    double Number(int row, const char* column) const {
        return system.database.Number(system.WorkPath, row, column);
    }

    fakes::LoadedSystem system;
};

TEST_F(Scan, MakesOneRowForEachEntityInTheSetsOrder) {
    FakeEntity& side = system.AddSolid("2B", 18, 600, 400);
    side.layer = "PARTS";
    side.data = {{"QUANTITY", "2"},   {"PARTNAME", "Side"}, {"SUBASSEMBLY", "Base"},
                 {"MATERIAL", "Oak"}, {"ORIE", "LWT"},      {"NOTES", "n"},
                 {"USERDATA1", "a"},  {"USERDATA2", "b"},   {"PN", "7"},
                 {"PRICE", "9.50"},   {"EB1", "1"},         {"EB2", "2"},
                 {"EB3", "3"},        {"EB4", "4"},         {"FACE", "left"},
                 {"OLDVALUE1", "18"}, {"OLDVALUE2", "600"}, {"OLDVALUE3", "400"}};
    system.AddSolid("1F", 19, 700, 500);
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 2);
    EXPECT_TRUE(system.dialogs.messages.empty());
    const std::pair<const char*, const char*> texts[] = {
        {"bv_id", "2B"},        {"bv_qty", "2"},   {"bv_partname", "Side"}, {"bv_subassembly", "Base"},
        {"bv_material", "Oak"}, {"bv_lwt", "LWT"}, {"bv_notes", "n"},       {"bv_userdata1", "a"},
        {"bv_userdata2", "b"},  {"bv_pn", "7"},    {"bv_price", "9.50"},    {"bv_eb1", "1"},
        {"bv_eb2", "2"},        {"bv_eb3", "3"},   {"bv_eb4", "4"},         {"bv_face", "left"},
        {"bv_layer", "PARTS"}};
    for (const auto& [column, text] : texts) EXPECT_EQ(Text(0, column), text) << column;
    const std::pair<const char*, double> numbers[] = {
        {"bv_length", 600}, {"bv_width", 400},    {"bv_thickness", 18},  {"bv_x", 18},         {"bv_y", 600},
        {"bv_z", 400},      {"bv_oldValue1", 18}, {"bv_oldValue2", 600}, {"bv_oldValue3", 400}};
    for (const auto& [column, number] : numbers) EXPECT_EQ(Number(0, column), number) << column;
    EXPECT_EQ(Text(1, "bv_id"), "1F");
}

TEST_F(Scan, GivesAnEntityWithoutPartDataQuantityOneAndSizesZero) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Text(0, "bv_qty"), "1");
    EXPECT_EQ(Text(0, "bv_partname"), "");
    EXPECT_EQ(Text(0, "bv_lwt"), "");
    EXPECT_EQ(Number(0, "bv_length"), 0);
    EXPECT_EQ(Number(0, "bv_width"), 0);
    EXPECT_EQ(Number(0, "bv_thickness"), 0);
    EXPECT_EQ(Number(0, "bv_x"), 18);
    EXPECT_EQ(Number(0, "bv_y"), 600);
    EXPECT_EQ(Number(0, "bv_z"), 400);
}

TEST_F(Scan, RunsItsStatementsInOneTransaction) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    const auto& statements = system.database.statements;
    ASSERT_EQ(statements.size(), 5u);
    EXPECT_EQ(statements[0], "delete from brenvik_data");
    EXPECT_EQ(statements[1], "BEGIN");
    EXPECT_EQ(statements[2].substr(0, 24), "INSERT INTO brenvik_data");
    EXPECT_EQ(statements[3], "COMMIT");
    EXPECT_EQ(statements[4], "SELECT * FROM brenvik_data");
}

TEST_F(Scan, TakesThePreviousSelectionIntoTheSetPrev) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    EXPECT_EQ(system.Document().lastMode, SelectMode::Previous);
    ASSERT_EQ(system.Document().selectionSets.Count(), 1);
    EXPECT_EQ(system.Document().selectionSets.Item("prev")->Count(), 1);
}

TEST_F(Scan, IsNotStoppedByASetPrevOfAnEarlierCall) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    system.Document().previousSelection.clear();
    system.AddSolid("B", 18, 600, 400);
    GridFormInstance().ScanSelection();
    EXPECT_TRUE(system.dialogs.messages.empty());
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(Text(0, "bv_id"), "B");
}

TEST_F(Scan, BindsTheGridAndSetsItsRowCount) {
    system.AddSolid("A", 18, 600, 400).data["PARTNAME"] = "Side";
    system.AddSolid("B", 18, 600, 400);
    const std::string before = Form().Adodc1.recordSource;
    GridFormInstance().ScanSelection();
    EXPECT_EQ(TheSession().GridRecordSource, before);
    EXPECT_EQ(Form().Adodc1.recordSource, "SELECT * FROM brenvik_data");
    EXPECT_EQ(Form().fpSpread1.MaxRows(), 2);
    EXPECT_EQ(Form().fpSpread1.CellText(3, 1), "Side");
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
}

TEST_F(Scan, OfAnEmptySelectionLeavesTableGridAndHourglass) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    system.Document().previousSelection.clear();
    const auto statements = system.database.statements.size();
    GridFormInstance().ScanSelection();
    EXPECT_EQ(system.database.statements.size(), statements);
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Form().fpSpread1.MaxRows(), 1);
    EXPECT_EQ(Form().mousePointer, MousePointer::Hourglass);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(Scan, KeepsItsConnectionOpen) {
    system.AddSolid("A", 18, 600, 400);
    GridFormInstance().ScanSelection();
    GridFormInstance().ScanSelection();
    EXPECT_EQ(TheSession().ScanConnection->State(), ConnectionState::Open);
    // One for the scans, and one for each refresh of the grid.
    EXPECT_EQ(system.database.connectionStrings.size(), 3u);
}

TEST_F(Scan, StopsBeforeAllElseWhenASwitchHoldsNoNumber) {
    system.AddSolid("A", 18, 600, 400);
    for (const char* name : {"MeasureNonSolids", "NoMeasure"}) {
        for (const char* text : {"", "off"}) {
            system.settings.Set(name, text);
            try {
                GridFormInstance().ScanSelection();
                FAIL() << name << " holds \"" << text << "\"";
            } catch (const Failure& failure) {
                EXPECT_EQ(failure.number(), failure_number::TypeMismatch);
                EXPECT_NE(failure.detail().find(name), std::string::npos);
            }
            system.settings.Set(name, "0");
        }
    }
    EXPECT_TRUE(system.database.statements.empty());
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
}

TEST_F(Scan, ShowsAFailedRowAndGoesOn) {
    system.AddSolid("A", 18, 600, 400).data["PARTNAME"] = "Jack's shelf";
    system.AddSolid("B", 18, 600, 400).data["PARTNAME"] = "Side";
    GridFormInstance().ScanSelection();
    ASSERT_EQ(system.dialogs.messages.size(), 1u);
    const MessageRequest& box = system.dialogs.messages[0];
    EXPECT_EQ(box.text, "-2147217900\r\nFakeDatabase\r\nSyntax error in the statement");
    EXPECT_EQ(box.title, "");
    EXPECT_EQ(box.icon, MessageIcon::None);
    EXPECT_EQ(box.buttons, MessageButtons::Ok);
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(Text(0, "bv_id"), "B");
    EXPECT_EQ(system.database.CountStatements("COMMIT"), 1);
}

TEST_F(Scan, KeepsWhichPartsItCouldNotTake) {
    system.AddSolid("A", 18, 600, 400).data["PARTNAME"] = "Jack's shelf";
    system.AddSolid("B", 18, 600, 400).data["PARTNAME"] = "Side";
    GridFormInstance().ScanSelection();
    GridFormInstance().ScanSelection();
    const std::vector<DroppedPart> dropped = TakeDroppedParts();
    ASSERT_EQ(dropped.size(), 1u) << "a part that two scans have left out is one part";
    EXPECT_EQ(dropped[0].handle, "A");
    EXPECT_EQ(dropped[0].name, "Jack's shelf");
    EXPECT_EQ(
        dropped[0].reason,
        "a single quote stands in its Part Name \"Jack's shelf\", and the list can't take one; take the "
        "quote out");
    EXPECT_TRUE(TakeDroppedParts().empty()) << "they are told once";
}

TEST_F(Scan, LosesAllPartsWithTheirTransaction) {
    system.AddSolid("A", 18, 600, 400);
    system.database.failures.push_back({"COMMIT", Failure(70, "Engine", "disk")});
    GridFormInstance().ScanSelection();
    const std::vector<DroppedPart> dropped = TakeDroppedParts();
    ASSERT_EQ(dropped.size(), 1u);
    EXPECT_EQ(dropped[0].reason, "") << "it is no fault of the part";
}

TEST_F(Scan, TellsATableThatCannotBeUsedOnce) {
    for (const char* handle : {"A", "B", "C"}) system.AddSolid(handle, 18, 600, 400);
    system.database.databases.clear();
    GridFormInstance().ScanSelection();
    EXPECT_EQ(system.Messages(),
              std::vector<std::string>{"-2147467259\r\nFakeDatabase\r\nCould not find file"});
    const std::vector<DroppedPart> dropped = TakeDroppedParts();
    ASSERT_EQ(dropped.size(), 3u);
    for (const DroppedPart& part : dropped) EXPECT_EQ(part.reason, "") << part.handle;
}

TEST_F(Scan, TellsATableThatBreaksOnTheWayOnce) {
    for (const char* handle : {"A", "B", "C"}) system.AddSolid(handle, 18, 600, 400);
    for (const char* handle : {"'B'", "'C'"})
        system.database.failures.push_back({handle, Failure(-2147467259, "Engine", "the disk is full")});
    GridFormInstance().ScanSelection();
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"-2147467259\r\nEngine\r\nthe disk is full"});
    EXPECT_EQ(TakeDroppedParts().size(), 2u);
}

TEST_F(Scan, SetsThePointerBackAtAFailure) {
    system.AddSolid("A", 18, 600, 400);
    system.database.failures.push_back({"delete from", Failure(70, "Engine", "locked")});
    system.measuring.failOnCreate = Failure(429, "Component", "Can't create object");
    std::vector<MousePointer> pointers;
    system.dialogs.onMessage = [&] { pointers.push_back(Form().mousePointer); };
    GridFormInstance().ScanSelection();
    EXPECT_EQ(pointers, (std::vector{MousePointer::Hourglass, MousePointer::Normal}));
    EXPECT_EQ(system.Messages(), (std::vector<std::string>{"70\r\nEngine\r\nlocked",
                                                           "429\r\nComponent\r\nCan't create object"}));
    EXPECT_EQ(Rows(), 1);
}

TEST_F(Scan, GoesOnWithoutASelectionSet) {
    system.AddSolid("A", 18, 600, 400);
    system.Document().selectionSets.failOnAdd = Failure(-1, "Host", "no set");
    GridFormInstance().ScanSelection();
    ASSERT_FALSE(system.dialogs.messages.empty());
    EXPECT_EQ(system.dialogs.messages[0].text, "-1\r\nHost\r\nno set");
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
}

TEST_F(Scan, LeavesRowsUncommittedWhenTheCommitFails) {
    system.AddSolid("A", 18, 600, 400);
    system.database.failures.push_back({"COMMIT", Failure(70, "Engine", "disk")});
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Rows(), 0);
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"70\r\nEngine\r\ndisk"});
    EXPECT_EQ(Form().fpSpread1.MaxRows(), 0);
}

TEST_F(Scan, KeepsWhatTheGridShowsWhenTheRefreshFails) {
    system.AddSolid("A", 18, 600, 400);
    system.database.failures.push_back({"SELECT *", Failure(70, "Engine", "busy")});
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Rows(), 1);
    EXPECT_EQ(Form().fpSpread1.MaxRows(), 0);
    EXPECT_EQ(Form().mousePointer, MousePointer::Normal);
}

TEST_F(Scan, CarriesThePartDataOfThePartBeforeWhereReadingFails) {
    FakeEntity& first = system.AddSolid("A", 18, 600, 400);
    first.data = {{"PARTNAME", "Side"}, {"ORIE", "LWT"},      {"QUANTITY", "4"},
                  {"OLDVALUE1", "18"},  {"OLDVALUE2", "600"}, {"OLDVALUE3", "400"}};
    FakeEntity& second = system.AddSolid("B", 18, 600, 400);
    second.failOnData = Failure(-5, "Host", "no data");
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 2);
    EXPECT_EQ(Text(1, "bv_partname"), "Side");
    EXPECT_EQ(Text(1, "bv_qty"), "4");
    // Letters and old values are reset for each entity.
    EXPECT_EQ(Text(1, "bv_lwt"), "");
    for (const char* column : {"bv_oldValue1", "bv_oldValue2", "bv_oldValue3"})
        EXPECT_EQ(Number(1, column), 0) << column;
    EXPECT_EQ(system.dialogs.messages.size(), 21u);
}

TEST_F(Scan, CarriesNoLettersOverToAPartWithoutExtents) {
    // With sizes of 0 then and now nothing has changed, so letters that are there would stay.
    system.settings.Set("WCSMeasure", "1");
    FakeEntity& first = system.Document().AddEntity("A");
    first.data["ORIE"] = "LWT";
    system.Document().AddEntity("B").failOnData = Failure(-5, "Host", "no data");
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Text(0, "bv_lwt"), "LWT");
    EXPECT_EQ(Text(1, "bv_lwt"), "");
}

TEST_F(Scan, SettlesLettersByWhatAMeasurementThatIsNoGoodGave) {
    system.AddSolid("A", 18, 600, 400);
    FakeEntity& second = system.AddSolid("B", 5, 6, 7);
    second.data = {{"ORIE", "LWT"}, {"OLDVALUE1", "5"}, {"OLDVALUE2", "6"}, {"OLDVALUE3", "7"}};
    system.measuring.results[second.ObjectID()].status = 0;
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Text(1, "bv_lwt"), "LWT");
    EXPECT_EQ(Number(1, "bv_length"), 7);
    EXPECT_EQ(Number(1, "bv_x"), 18);
}

TEST_F(Scan, CarriesTheExtentsWhereAMeasurementIsNoGood) {
    system.AddSolid("A", 18, 600, 400);
    FakeEntity& second = system.AddSolid("B", 5, 6, 7);
    system.measuring.results[second.ObjectID()].status = 0;
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(1, "bv_x"), 18);
    EXPECT_EQ(Number(1, "bv_y"), 600);
    EXPECT_EQ(Number(1, "bv_z"), 400);
}

TEST_F(Scan, BeginsWithExtentsOfZero) {
    FakeEntity& first = system.AddSolid("A", 5, 6, 7);
    system.measuring.results[first.ObjectID()].status = -1;
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 0);
}

TEST_F(Scan, MakesTheMeasuringComponentAnewForEachSolidAndReleasesIt) {
    system.AddSolid("A", 18, 600, 400);
    system.AddSolid("B", 18, 600, 400);
    GridFormInstance().ScanSelection();
    EXPECT_EQ(system.measuring.created, 2);
    EXPECT_EQ(system.measuring.alive, 0);
}

TEST_F(Scan, FailsForARowWhoseLayerCannotBeRead) {
    system.AddSolid("A", 18, 600, 400).failOnLayer = Failure(-7, "Host", "no layer");
    system.AddSolid("B", 18, 600, 400);
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(Text(0, "bv_id"), "B");
}

TEST_F(Scan, RoundsMeasuredExtentsToFiveDecimals) {
    FakeEntity& solid = system.AddSolid("A", 18.0000049, 600.000001, 399.999996);
    solid.data = {{"ORIE", "LWT"}, {"OLDVALUE1", "18"}, {"OLDVALUE2", "600"}, {"OLDVALUE3", "400"}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 18);
    EXPECT_EQ(Text(0, "bv_lwt"), "LWT");
    EXPECT_EQ(Number(0, "bv_width"), 400);
}

// 47/64 of an inch in millimetres, as equal boards have it that lie at different angles.
TEST_F(Scan, GivesEqualBoardsOneSizeWhereTheirNoiseStandsAtAHalf) {
    for (const double noise : {0.0, 1.8e-13, -2.4e-13, 6e-11})
        system.AddSolid("A", 18.653125 + noise, 768.35, 520.7);
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 4);
    for (int row = 0; row < 4; ++row) EXPECT_EQ(Number(row, "bv_x"), 18.65312) << row;
}

struct SourceCase {
    const char *rule, *wcs, *noMeasure, *nonSolids, *objectName;
    double x;

    friend void PrintTo(const SourceCase& each, std::ostream* out) { *out << each.rule; }
};

class ExtentsSource : public Scan, public testing::WithParamInterface<SourceCase> {};

TEST_P(ExtentsSource, IsTheFirstThatApplies) {
    const SourceCase& source = GetParam();
    system.settings.Set("WCSMeasure", source.wcs);
    system.settings.Set("NoMeasure", source.noMeasure);
    system.settings.Set("MeasureNonSolids", source.nonSolids);
    FakeEntity& entity = system.Document().AddEntity("A", source.objectName);
    entity.box = {{10, 0, 0}, {110, 20, 30}};
    entity.data["OLDVALUE1"] = "55.1234567";
    if (entity.ObjectName() == "AcDb3dSolid") system.measuring.results[entity.ObjectID()] = {18, 19, 20, 1};
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 1);
    EXPECT_EQ(Number(0, "bv_x"), source.x);
}

const SourceCase Sources[] = {
    {"WorldBoxWhenSwitchedOn", "1", "0", "0", "AcDb3dSolid", 100},
    {"WorldBoxOfANonSolidWhenSwitchedOn", "1", "0", "0", "AcDbRegion", 100},
    {"WorldBoxWinsOverNoMeasuring", "1", "1", "1", "AcDb3dSolid", 100},
    {"OnlyOneSwitchesTheWorldBoxOn", "2", "0", "0", "AcDb3dSolid", 18},
    {"BlankLeavesTheWorldBoxOff", "", "0", "0", "AcDb3dSolid", 18},
    {"SavedValuesWhenMeasuringIsOff", "0", "1", "0", "AcDb3dSolid", 55.123457},
    {"AnyNumberButZeroTurnsMeasuringOff", "0", "2", "0", "AcDb3dSolid", 55.123457},
    {"NoMeasuringWinsOverNonSolids", "0", "1", "1", "AcDbRegion", 55.123457},
    {"WorldBoxOfANonSolid", "0", "0", "1", "AcDbRegion", 100},
    {"ComponentForASolid", "0", "0", "1", "AcDb3dSolid", 18},
    {"ClassNamesCompareExactly", "0", "0", "1", "acdb3dsolid", 100},
    {"ComponentForANonSolidThatIsNotToBeBoxed", "0", "0", "0", "AcDbRegion", 0},
    {"OnlyOneBoxesNonSolids", "0", "0", "2", "AcDbRegion", 0},
};

INSTANTIATE_TEST_SUITE_P(Scan, ExtentsSource, testing::ValuesIn(Sources),
                         [](const auto& source) { return std::string(source.param.rule); });

TEST_F(Scan, SkipsASavedValueThatIsNoNumberWhenMeasuringIsOff) {
    system.settings.Set("NoMeasure", "1");
    FakeEntity& entity = system.AddSolid("A", 18, 600, 400);
    entity.data = {{"OLDVALUE1", "600 mm"}, {"OLDVALUE2", "400"}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 0);
    EXPECT_EQ(Number(0, "bv_y"), 400);
    EXPECT_EQ(Number(0, "bv_z"), 0);
    // The row's own old value is read by the lenient rule.
    EXPECT_EQ(Number(0, "bv_oldValue1"), 600);
    EXPECT_TRUE(system.dialogs.messages.empty());
}

TEST_F(Scan, BeginsEachSavedExtentAtZeroWhenMeasuringIsOff) {
    system.settings.Set("NoMeasure", "1");
    system.AddSolid("A", 1, 2, 3).data = {{"OLDVALUE1", "18"}, {"OLDVALUE2", "600"}, {"OLDVALUE3", "400"}};
    system.AddSolid("B", 1, 2, 3).data = {{"OLDVALUE2", "wide"}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_z"), 400);
    for (const char* column : {"bv_x", "bv_y", "bv_z"}) EXPECT_EQ(Number(1, column), 0) << column;
    EXPECT_EQ(system.measuring.created, 0);
}

TEST_F(Scan, RoundsTheWorldBoxToFiveDecimals) {
    system.settings.Set("WCSMeasure", "1");
    system.Document().AddEntity("A").box = {{1, 1, 1}, {101.000004, 21.000006, 31.0000049}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 100);
    EXPECT_EQ(Number(0, "bv_y"), 20.00001);
    EXPECT_EQ(Number(0, "bv_z"), 30);
}

TEST_F(Scan, GoesOnWithTheExtentsOfThePartBeforeWhereTheBoxFails) {
    system.settings.Set("WCSMeasure", "1");
    system.Document().AddEntity("A").box = {{0, 0, 0}, {1, 2, 3}};
    system.Document().AddEntity("B").failOnBox = Failure(-8, "Host", "no box");
    GridFormInstance().ScanSelection();
    ASSERT_EQ(Rows(), 2);
    EXPECT_EQ(Number(1, "bv_z"), 3);
    EXPECT_EQ(system.Messages(), std::vector<std::string>{"-8\r\nHost\r\nno box"});
}

TEST_F(Scan, ReadsTheMeasuringSettingsAnewEachTime) {
    system.AddSolid("A", 18, 600, 400).box = {{0, 0, 0}, {1, 2, 3}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 18);
    system.settings.Set("WCSMeasure", "1");
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Number(0, "bv_x"), 1);
}

TEST_F(Scan, KeepsTheLettersOfAStretchedPanelTrue) {
    system.AddSolid("A", 18, 600, 800).data = {
        {"ORIE", "LWT"}, {"OLDVALUE1", "18"}, {"OLDVALUE2", "600"}, {"OLDVALUE3", "400"}};
    GridFormInstance().ScanSelection();
    EXPECT_EQ(Text(0, "bv_lwt"), "WLT");
    EXPECT_EQ(Number(0, "bv_length"), 600);
    EXPECT_EQ(Number(0, "bv_width"), 800);
    EXPECT_EQ(Number(0, "bv_thickness"), 18);
}

}  // namespace
}  // namespace brenvik
