// What a drawing has no value for goes through a reading and a writing as it stood, with its handles and its
// place; what refers to something gone is mended; what the release has no form for is told.
#include <gtest/gtest.h>

#include "drafting_host/dxf/writing/dxf_writer.h"
#include "dxf/dxf_texts.h"

namespace brenvik {
namespace {

using test::Groups;
using test::ModelSpace;
using test::Read;
using test::Section;

/// Records in the form in which they are written: codes in three columns, lines ended as on Windows.
std::string Written(std::string_view groups) {
    std::string text;
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        const std::size_t blank = std::min(group.find(' '), group.size());
        if (blank < 3) text.append(3 - blank, ' ');
        text += group.substr(0, blank);
        text += "\r\n";
        text += group.substr(std::min(blank + 1, group.size()));
        text += "\r\n";
    }
    return text;
}

constexpr std::string_view blockRecords =
    "0 TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 2|"
    "0 BLOCK_RECORD|5 1F|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Model_Space|340 0|70 4|"
    "0 BLOCK_RECORD|5 1B|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 *Paper_Space|340 0|0 "
    "ENDTAB";

std::string Drawing(std::string_view entities, std::string_view objects = "", std::string_view tables = "",
                    std::string_view version = "AC1018") {
    return Section("HEADER", "9 $ACADVER|1 " + std::string(version) + "|9 $HANDSEED|5 1000") +
           Section("TABLES", std::string(blockRecords) + std::string(tables)) +
           Section("ENTITIES", entities) +
           Section("OBJECTS", "0 DICTIONARY|5 C|330 0|100 AcDbDictionary" + std::string(objects)) +
           Groups("0 EOF");
}

std::string Line(std::string_view handle, std::string_view more = "") {
    return "0 LINE|5 " + std::string(handle) + "|330 1F|100 AcDbEntity|8 0" + std::string(more) +
           "|100 AcDbLine|10 0|20 0|11 1|21 0";
}

std::string Hatch(std::string_view handle, std::string_view sources = "|97 0") {
    return "0 HATCH|5 " + std::string(handle) +
           "|330 1F|100 AcDbEntity|8 0|420 255|100 AcDbHatch|70 1|71 1|91 1" + std::string(sources) + "|75 1";
}

void ExpectHolds(const std::string& file, std::string_view groups) {
    EXPECT_NE(file.find(Written(groups)), std::string::npos) << groups;
}
void ExpectLacks(const std::string& file, std::string_view groups) {
    EXPECT_EQ(file.find(Written(groups)), std::string::npos) << groups;
}

TEST(DxfKept, EntitiesOfOtherKindsStayAsTheyStoodAndWhereTheyStood) {
    const std::string hatch = Hatch("A2"), weird = "0 WIDGET|5 A4|330 1F|100 AcDbEntity|8 0|310 0aFF|1000 x";
    const std::string file =
        WriteDxf(Read(Drawing(Line("A1") + "|" + hatch + "|" + Line("A3") + "|" + weird)));
    ExpectHolds(file, hatch + "|0 LINE|5 A3");
    ExpectHolds(file, weird + "|0 ENDSEC");
    EXPECT_LT(file.find(Written("0 LINE|5 A1")), file.find(Written("0 HATCH|5 A2")));
}

TEST(DxfKept, UnderstoodEntitiesKeepTheGroupsThatHaveNoValue) {
    const std::string line =
        Line("A1", "|420 16711680|440 33554559|347 21")
            .insert(std::string("0 LINE|5 A1|").size(), "102 {ACAD_REACTORS|330 C|102 }|");
    const std::string file =
        WriteDxf(Read(Drawing(line + "|0 POINT|5 A2|330 1F|100 AcDbEntity|8 0|100 AcDbPoint|"
                                     "10 1|20 2|30 3|50 45.0")));
    ExpectHolds(
        file,
        "0 LINE|5 A1|102 {ACAD_REACTORS|330 C|102 }|330 1F|100 AcDbEntity|8 0|420 16711680|440 33554559|"
        "347 21|100 AcDbLine");
    ExpectHolds(file, "30 3.0|50 45.0");
}

TEST(DxfKept, TablesAndObjectsKeepTheirRecords) {
    const std::string view =
        "0 VIEW|5 B2|330 B1|100 AcDbSymbolTableRecord|100 AcDbViewTableRecord|2 Front|70 0|40 7.5";
    const std::string record = "0 XRECORD|5 D2|330 D1|100 AcDbXrecord|280 1|1 k^Ia|40 3.50|310 00FFab";
    const std::string file = WriteDxf(Read(Drawing(
        Line("A1"), "|3 STUFF|350 D1|0 DICTIONARY|5 D1|330 C|100 AcDbDictionary|3 R|360 D2|" + record,
        "|0 TABLE|2 VIEW|5 B1|330 0|100 AcDbSymbolTable|70 9|" + view +
            "|0 ENDTAB|0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1|0 LAYER|5 10|330 2|100 "
            "AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 0|70 0|62 7|420 255|6 Continuous|390 F|1001 "
            "AcAecLayerStandard|1000 |1000 Boards|0 ENDTAB")));
    ExpectHolds(file, "0 TABLE|2 VIEW|5 B1|330 0|100 AcDbSymbolTable|70 1|" + view);
    ExpectHolds(file, record);
    ExpectHolds(file, "3 STUFF|350 D1");
    ExpectHolds(file, "420 255|390 F|1001 AcAecLayerStandard|1000 |1000 Boards");
}

TEST(DxfKept, WhatTheRootDictionaryLacksIsAddedToIt) {
    const std::string file = WriteDxf(Read(Drawing(Line("A1"), "|3 STUFF|350 C")));
    EXPECT_EQ(file.find(Written("0 DICTIONARY|5 C")), file.rfind(Written("0 DICTIONARY|5 C")));
    ExpectHolds(file, "3 STUFF|350 C|3 ACAD_GROUP");
}

TEST(DxfKept, ReferencesToWhatIsGoneAreMended) {
    const std::string erased =
        Line("A1").insert(std::string("0 LINE|5 A1|").size(), "102 {ACAD_XDICTIONARY|360 D1|102 }|");
    DrawingData data =
        Read(Drawing(erased + "|" + Line("A3") + "|" + Hatch("A2", "|97 2|330 A1|330 A3"),
                     "|3 LIST|350 D3|0 DICTIONARY|5 D1|330 A1|100 AcDbDictionary|3 R|360 D2|0 XRECORD|5 "
                     "D2|330 D1|100 AcDbXrecord|1 "
                     "mine|0 DICTIONARY|5 D3|330 C|102 {ACAD_REACTORS|330 A1|102 }|100 AcDbDictionary|3 "
                     "Gone|350 A1|3 Here|350 "
                     "A3|0 SORTENTSTABLE|5 D4|330 C|100 AcDbSortentsTable|330 1F|331 A1|5 A3|331 A3|5 A1|0 "
                     "XRECORD|5 D5|330 C|100 AcDbXrecord|340 A1|340 A3"));
    ASSERT_EQ(data.blocks[0].entities.front().handle, 0xA1U);
    data.blocks[0].entities.erase(data.blocks[0].entities.begin());
    const std::string file = WriteDxf(data);
    ExpectHolds(file, "91 1|97 1|330 A3|75 1");
    ExpectLacks(file, "5 D1");  // what was the line's own went with it
    ExpectLacks(file, "5 D2");
    ExpectHolds(file, "0 DICTIONARY|5 D3|330 C|100 AcDbDictionary|3 Here|350 A3");
    ExpectHolds(file, "330 1F|331 A3|5 A1|0 XRECORD");
    ExpectHolds(file, "100 AcDbXrecord|340 0|340 A3");
}

TEST(DxfKept, NewHandlesLieBeyondAllThatWereRead) {
    DrawingData data = Read(Drawing(Line("A1") + "|" + Hatch("F000")));
    data.blocks[0].entities.push_back({});
    data.blocks[0].entities.back().geometry = PointData{};
    const std::string file = WriteDxf(data);
    const DrawingData again = Read(file);
    EXPECT_GT(again.blocks[0].entities.back().handle, 0xF000U);
    EXPECT_GT(again.handleSeed, again.blocks[0].entities.back().handle);
}

/// Read and written again and again, the file is the same: nothing is added by each saving.
void ExpectSteady(const std::string& text) {
    const std::string once = WriteDxf(Read(text));
    EXPECT_EQ(WriteDxf(Read(once)), once);
}

TEST(DxfKept, ADictionaryWhoseBracketWasLeftOpenTakesNewEntriesOnce) {
    ExpectSteady(Drawing(Line("A1"),
                         "|3 ACAD_MLINESTYLE|350 D|0 DICTIONARY|5 D|102 {ACAD_REACTORS|330 C|330 C|100 "
                         "AcDbDictionary|281 1"));
}

TEST(DxfKept, WhatStandsForADeadEntryOfADictionaryIsAddedOnce) {
    const std::string styles =
        "|3 ACAD_PLOTSTYLENAME|350 D|0 ACDBDICTIONARYWDFLT|5 D|330 C|100 AcDbDictionary|3 Normal|";
    ExpectSteady(Drawing(Line("A1"), styles + "350 FF1|100 AcDbDictionaryWithDefault|340 FF1"));
    ExpectSteady(Drawing(Line("A1"), "|3 ACAD_PLOTSTYLENAME|350 FF2" + styles + "350 FF1"));
}

TEST(DxfKept, AnEntryOfADictionaryThatLeadsToAnotherKindGetsAnObjectOfItsOwn) {
    const std::string text =
        Drawing(Line("A1"), "|3 ACAD_PLOTSTYLENAME|350 D", "|0 ENDTAB|0 TABLE|2 ODD|5 2|330 0|0 STRANGE|5 D");
    const std::string file = WriteDxf(Read(text));
    EXPECT_EQ(file.find("\r\n  5\r\nD\r\n"), file.rfind("\r\n  5\r\nD\r\n"));
    ExpectSteady(text);
}

TEST(DxfKept, ADimensionStyleAmongEntitiesKeepsItsHandle) {
    const std::string text = Drawing(Line("A1") + "|0 DIMSTYLE|105 33|330 1F|100 AcDbEntity|2 Odd");
    ExpectHolds(WriteDxf(Read(text)), "0 DIMSTYLE|105 33");
    ExpectSteady(text);
}

TEST(DxfKept, HandlesOfKeptRecordsThatStandTwiceAreToldAndChanged) {
    const DrawingData data = Read(Drawing(Line("A1") + "|" + Hatch("A1")));
    EXPECT_NE(test::NotesOf(data).find("handle used twice: A1"), std::string::npos);
    ExpectLacks(WriteDxf(data), "0 HATCH|5 A1");
}

TEST(DxfKept, TheReleaseIsTheOneThatWasReadAndAtMost2010WithBodies) {
    const auto release = [](const std::string& version, const std::string& entity) {
        const std::string file = WriteDxf(Read(Drawing(entity, "", "", version)));
        const std::size_t at = file.find("AC10");
        return file.substr(at, 6);
    };
    const std::string body =
        "0 3DSOLID|5 A1|330 1F|100 AcDbEntity|8 0|100 AcDbModelerGeometry|70 1|1 400 0 1 0";
    EXPECT_EQ(release("AC1014", Line("A1")), "AC1015");
    EXPECT_EQ(release("AC1015", Line("A1")), "AC1015");
    EXPECT_EQ(release("AC1021", body), "AC1021");
    EXPECT_EQ(release("AC1032", Line("A1")), "AC1032");
    EXPECT_EQ(release("AC1032", body), "AC1024");
}

TEST(DxfKept, WhatAnOlderReleaseHasNoFormForIsTold) {
    std::vector<std::string> unkept;
    const std::string body =
        "|0 3DSOLID|5 A1|330 1F|100 AcDbEntity|8 0|100 AcDbModelerGeometry|70 1|1 400 0 1 0";
    const std::string file = WriteDxf(Read(Drawing("0 SURFACE|5 A2|330 1F|100 AcDbEntity|8 0|0 MTEXT|5 "
                                                   "A3|330 1F|100 AcDbEntity|8 0|100 AcDbMText|10 "
                                                   "0|20 0|1 x|101 Embedded Object|70 1|10 5" +
                                                       body,
                                                   "", "", "AC1032")),
                                      unkept);
    ASSERT_EQ(unkept.size(), 2U);
    EXPECT_EQ(unkept[0].find("1 of kind \"SURFACE\""), 0U) << unkept[0];
    EXPECT_EQ(unkept[1].find("columns or lines of 1 text"), 0U) << unkept[1];
    ExpectLacks(file, "0 SURFACE|5 A2");
    ExpectLacks(file, "101 Embedded Object");
}

TEST(DxfKept, KindsOfRelease12AreTold) {
    std::vector<std::string> unkept;
    WriteDxf(
        Read(Section("HEADER", "9 $ACADVER|1 AC1009") + test::Entities("0 DIMENSION|8 0|0 DIMENSION|8 0")),
        unkept);
    ASSERT_EQ(unkept.size(), 1U);
    EXPECT_EQ(unkept[0].find("2 of kind \"DIMENSION\""), 0U) << unkept[0];
}

TEST(DxfKept, AttributesFollowTheirBlockReferenceAndVerticesTheirPolyline) {
    const std::string attribute =
        "0 ATTRIB|5 A2|330 A1|100 AcDbEntity|8 0|62 3|100 AcDbText|10 1|20 2|30 0|40 2.5|1 "
        "Oak|100 AcDbAttribute|2 WOOD|70 0";
    const std::string end = "0 SEQEND|5 A3|330 A1|100 AcDbEntity|8 0";
    const std::string block =
        Section("BLOCKS",
                "0 BLOCK|5 E1|330 E0|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 B|70 2|10 0|20 0|"
                "30 0|3 B|1 |4 A board|0 ENDBLK|5 E2|330 E0|100 AcDbEntity|8 0|100 AcDbBlockEnd");
    const std::string polyline =
        "0 POLYLINE|5 B1|330 1F|100 AcDbEntity|8 0|100 AcDb2dPolyline|66 1|10 0|20 0|30 0|40 0.5|41 0.5|"
        "0 VERTEX|5 B2|330 B1|100 AcDbEntity|8 Other|62 5|100 AcDbVertex|100 AcDb2dVertex|10 0|20 0|30 0|50 "
        "30.0|"
        "0 VERTEX|5 B3|330 B1|100 AcDbEntity|8 0|100 AcDbVertex|100 AcDb2dVertex|10 1|20 0|30 0|"
        "0 SEQEND|5 B4|330 B1|100 AcDbEntity|8 0";
    const std::string header = Section("HEADER", "9 $ACADVER|1 AC1018");
    const std::string whole =
        WriteDxf(Read(header + block +
                      Section("ENTITIES",
                              "0 INSERT|5 A1|330 1F|100 AcDbEntity|8 0|100 AcDbBlockReference|66 1|2 "
                              "B|10 0|20 0|30 0|" +
                                  attribute + "|" + end + "|" + polyline) +
                      Groups("0 EOF")));
    ExpectHolds(whole, attribute + "|" + end);
    ExpectHolds(whole, "66 1|2 B");
    ExpectHolds(whole, "3 B|1 |4 A board");
    ExpectHolds(whole, "8 Other|62 5|100 AcDbVertex");
    ExpectHolds(whole, "30 0.0|50 30.0|0 VERTEX|5 B3");
    ExpectHolds(whole, "40 0.5|41 0.5");
}

TEST(DxfKept, TextsOfRelease2007StayInUtf8) {
    const std::string file = WriteDxf(Read(Drawing(
        "0 TEXT|5 A1|330 1F|100 AcDbEntity|8 0|100 AcDbText|10 0|20 0|40 1|1 T\u00FCr", "", "", "AC1021")));
    ExpectHolds(file, "1 T\u00FCr");
}

}  // namespace
}  // namespace brenvik
