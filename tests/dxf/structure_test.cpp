// The file around the entities: line ends, code pages, damage, handles, tables, groups, layouts.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>

#include "base/failure.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "dxf/dxf_texts.h"

namespace brenvik {
namespace {

using test::Entities;
using test::Groups;
using test::ModelSpace;
using test::NotesOf;
using test::PaperSpace;
using test::Read;
using test::Section;

constexpr std::string_view twoPoints =
    "0 SECTION|2 ENTITIES|0 POINT|10 1|20 2|0 POINT|10 3|20 4|0 ENDSEC|0 EOF";

std::string FailureOf(const std::string& text) {
    try {
        Read(text);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 321);
        EXPECT_EQ(failure.description(), "Invalid file format");
        return failure.detail();
    }
    return "no failure";
}

TEST(DxfStructure, AnyLineEndIsRead) {
    for (const std::string_view lineEnd : {"\n", "\r\n", "\r"}) {
        const DrawingData data = Read(Groups(twoPoints, lineEnd));
        EXPECT_EQ(ModelSpace(data).size(), 2U);
        EXPECT_EQ(NotesOf(data), "");
    }
}

TEST(DxfStructure, CommentsMarksAndAControlZAtTheEndAreNoContent) {
    const DrawingData data = Read("\xEF\xBB\xBF" + Groups("999 made by hand") + Groups(twoPoints) + "\x1A");
    EXPECT_EQ(ModelSpace(data).size(), 2U);
    EXPECT_EQ(NotesOf(data), "");
}

TEST(DxfStructure, BlanksAroundCodesAndNumbersAreAllowed) {
    const DrawingData data = Read(
        "  0\nSECTION\n  2\nENTITIES\n  0 \nPOINT\n 10\n  1.5 \n\t20\n +2.5E+01\n  0\nENDSEC\n  0\nEOF\n");
    EXPECT_EQ(std::get<PointData>(ModelSpace(data).at(0).geometry).position, (Point3{1.5, 25, 0}));
}

TEST(DxfStructure, LastLineNeedsNoLineEnd) {
    std::string text = Groups(twoPoints);
    text.pop_back();
    EXPECT_EQ(NotesOf(Read(text)), "");
}

struct Foreign {
    std::string name, content, expected;
    friend std::ostream& operator<<(std::ostream& out, const Foreign& self) { return out << self.name; }
};

class DxfForeignContent : public testing::TestWithParam<Foreign> {};

TEST_P(DxfForeignContent, IsRefusedWithFilePlaceAndExpectation) {
    const std::string message = FailureOf(GetParam().content);
    EXPECT_EQ(message.find("job.dxf, line "), 0U) << message;
    EXPECT_NE(message.find("expected "), std::string::npos) << message;
    EXPECT_NE(message.find(GetParam().expected), std::string::npos) << message;
}

INSTANTIATE_TEST_SUITE_P(
    All, DxfForeignContent,
    testing::Values(Foreign{"Empty", "", "section"},
                    Foreign{"BinaryDrawing", "AC1015\x01\x02", "line 1: expected a section"},
                    Foreign{"Step", "ISO-10303-21;\n", "line 1: expected a group code"},
                    Foreign{"Garbage", "hello\nworld\n", "line 1: expected a group code"},
                    Foreign{"NumbersOnly", "12\n34\n56\n78\n", "line 2: expected group 0"},
                    Foreign{"Blank", "\n\n\n", "section"}, Foreign{"OnlyTheEnd", "0\nEOF\n", "section"},
                    Foreign{"NoSection", "0\nLINE\n8\n0\n0\nEOF\n", "line 2: expected a section"},
                    Foreign{"CodeNoNumber", "0\nSECTION\n2\nENTITIES\n0\nPOINT\nten\n5\n0\nEOF\n",
                            "line 7: expected a group code (a whole number), found \"ten\""},
                    Foreign{"Utf16",
                            "\xFF\xFE"
                            "0",
                            "line 1: expected a section"}),
    [](const auto& foreign) { return foreign.param.name; });

TEST(DxfDamage, WhatStandsBeforeTheBreakArrives) {
    const DrawingData data = Read(Groups("0 SECTION|2 ENTITIES|0 POINT|10 1|20 2|0 POINT|10 3"));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    ASSERT_EQ(data.notes.size(), 1U);
    EXPECT_EQ(data.notes[0].line, 14U);
    EXPECT_EQ(
        data.notes[0].text,
        "the file breaks off: expected a group code or the end mark EOF; \"POINT\" of line 12 is left out");
    EXPECT_TRUE(data.notes[0].dataLost);
}

TEST(DxfDamage, WhatStandsBehindTheEndIsTold) {
    const std::string text = Groups(twoPoints);
    EXPECT_TRUE(Read(text + " \r\n\x1A").notes.empty());
    const DrawingData data = Read(text + "\n" + text);
    EXPECT_EQ(ModelSpace(data).size(), 2U);
    ASSERT_EQ(data.notes.size(), 1U);
    EXPECT_EQ(data.notes[0].line, static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 2);
    EXPECT_EQ(data.notes[0].text, "what stands behind the end of the file (0 EOF) is left out");
    EXPECT_TRUE(data.notes[0].dataLost);
}

TEST(DxfDamage, CuttingAnywhereNeverFailsBehindTheFirstSection) {
    const std::string text = WriteDxf(Read(Groups(twoPoints)));
    const std::size_t sectionEnd = text.find("HEADER\r\n") + 8;
    const std::size_t fileEnd = text.find("EOF");
    for (std::size_t length = sectionEnd; length < fileEnd; ++length) {
        const DrawingData data = Read(text.substr(0, length));
        EXPECT_FALSE(data.notes.empty()) << length;
        EXPECT_LE(ModelSpace(data).size(), 2U);
    }
}

TEST(DxfDamage, BrokenOffPolylineIsLeftOut) {
    const DrawingData data =
        Read(Groups("0 SECTION|2 ENTITIES|0 POLYLINE|70 0|0 VERTEX|10 1|20 2|0 VERTEX|10 3"));
    EXPECT_TRUE(ModelSpace(data).empty());
    EXPECT_NE(NotesOf(data).find("POLYLINE"), std::string::npos) << NotesOf(data);
}

TEST(DxfDamage, MissingSectionEndIsTold) {
    const DrawingData data =
        Read(Groups("0 SECTION|2 ENTITIES|0 POINT|10 1|20 2|0 SECTION|2 OBJECTS|0 ENDSEC|0 EOF"));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    EXPECT_NE(NotesOf(data).find("12: ENDSEC was expected"), std::string::npos) << NotesOf(data);
}

TEST(DxfDamage, UnknownSectionsArePassedOver) {
    const DrawingData data = Read(Section("THUMBNAILIMAGE", "90 5|310 00") +
                                  Section("ACDSDATA", "0 ACDSRECORD|310 00") + Groups(twoPoints));
    EXPECT_EQ(ModelSpace(data).size(), 2U);
    EXPECT_EQ(NotesOf(data), "");
}

struct Coded {
    std::string name, header, bytes, expected;
    friend std::ostream& operator<<(std::ostream& out, const Coded& self) { return out << self.name; }
};

class DxfCodePages : public testing::TestWithParam<Coded> {};

TEST_P(DxfCodePages, TextsBecomeUtf8) {
    const DrawingData data =
        Read(Section("HEADER", GetParam().header) + Entities("0 TEXT|10 0|20 0|1 " + GetParam().bytes));
    EXPECT_EQ(std::get<TextData>(ModelSpace(data).at(0).geometry).text, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    All, DxfCodePages,
    testing::Values(
        Coded{"Western", "9 $ACADVER|1 AC1015|9 $DWGCODEPAGE|3 ANSI_1252", "T\xFCr \x80", "T\u00FCr \u20AC"},
        Coded{"LowerCaseName", "9 $ACADVER|1 AC1009|9 $DWGCODEPAGE|3 ansi_1252", "T\xFCr", "T\u00FCr"},
        Coded{"Central", "9 $DWGCODEPAGE|3 ANSI_1250", "\xB3\xF3\xBF", "\u0142\u00F3\u017C"},
        Coded{"Cyrillic", "9 $DWGCODEPAGE|3 ANSI_1251", "\xC1\xEE\xEA", "\u0411\u043E\u043A"},
        Coded{"Greek", "9 $DWGCODEPAGE|3 ANSI_1253", "\xE1\xE2", "\u03B1\u03B2"},
        Coded{"Turkish", "9 $DWGCODEPAGE|3 ANSI_1254", "\xDD\xFE", "\u0130\u015F"},
        Coded{"Hebrew", "9 $DWGCODEPAGE|3 ANSI_1255", "\xE0", "\u05D0"},
        Coded{"Arabic", "9 $DWGCODEPAGE|3 ANSI_1256", "\xC7", "\u0627"},
        Coded{"Baltic", "9 $DWGCODEPAGE|3 ANSI_1257", "\xE0", "\u0105"},
        Coded{"Vietnamese", "9 $DWGCODEPAGE|3 ANSI_1258", "\xFE", "\u20AB"},
        Coded{"Thai", "9 $DWGCODEPAGE|3 ANSI_874", "\xA1", "\u0E01"},
        Coded{"Japanese", "9 $DWGCODEPAGE|3 ANSI_932", "a\x83\x41\xB1z", "a\u30A2\uFF71z"},
        Coded{"Chinese", "9 $DWGCODEPAGE|3 ANSI_936", "\xB0\xE5", "\u677F"},
        Coded{"Utf8FromRelease2007", "9 $ACADVER|1 AC1021|9 $DWGCODEPAGE|3 ANSI_1252", "T\u00FCr",
              "T\u00FCr"},
        Coded{"PageWhereUtf8IsBroken", "9 $ACADVER|1 AC1021|9 $DWGCODEPAGE|3 ANSI_1252", "T\xFCr",
              "T\u00FCr"},
        Coded{"NothingSaidUtf8", "9 $LTSCALE|40 1", "T\u00FCr", "T\u00FCr"},
        Coded{"NothingSaidWestern", "9 $LTSCALE|40 1", "T\xFCr", "T\u00FCr"},
        Coded{"Escape", "9 $ACADVER|1 AC1015", "T\\U+00FCr", "T\u00FCr"},
        Coded{"LowerCaseEscape", "9 $ACADVER|1 AC1015", "\\u+20ac", "\u20AC"},
        Coded{"SurrogatePair", "9 $ACADVER|1 AC1015", "\\U+D83D\\U+DE00", "\U0001F600"},
        Coded{"EscapeOfEightDigits", "9 $ACADVER|1 AC1015", "a\\U+0001f600b \\U+00020000",
              "a\U0001F600b \U00020000"},
        Coded{"ControlCharacterAheadOfLetters", "9 $ACADVER|1 AC1015", "\\U+0001f60 \\U+0009face",
              "\x01"
              "f60 \tface"},
        Coded{"LoneSurrogateStays", "9 $ACADVER|1 AC1015", "\\U+D83Dx\\U+DE00", "\\U+D83Dx\\U+DE00"},
        Coded{"BrokenEscapeStays", "9 $ACADVER|1 AC1015", "\\U+00Fx \\U+0", "\\U+00Fx \\U+0"},
        Coded{"Johab", "9 $DWGCODEPAGE|3 johab", "\xCC\x65", "\uD310"},
        Coded{"TaiwanByName", "9 $DWGCODEPAGE|3 big5", "\xAA\x4F", "\u677F"},
        Coded{"EscapeOfEachPage", "9 $ACADVER|1 AC1015", "\\M+18341\\M+2AA4F\\M+3C6C7\\m+4cc65\\M+5B0E5",
              "\u30A2\u677F\uD310\uD310\u677F"},
        Coded{"EscapeOfOneByte", "9 $ACADVER|1 AC1015", "\\M+100B1", "\uFF71"},
        Coded{"PageEscapeInUtf8", "9 $ACADVER|1 AC1021", "\u677F \\M+5B0E5", "\u677F \u677F"},
        Coded{"NoPageEscapeStays", "9 $ACADVER|1 AC1015", "\\M+68341 \\M+1834x \\M+10041 \\M+1FFFF",
              "\\M+68341 \\M+1834x \\M+10041 \\M+1FFFF"},
        Coded{"UnknownPairStays", "9 $DWGCODEPAGE|3 ANSI_936", "\xFF\xE5z", "\\M+5FFE5z"},
        Coded{"Carets", "9 $ACADVER|1 AC1015", "a^Ib^Jc^M^ d^ ", "a\tb\nc\r^d^"},
        Coded{"OtherCaretsStay", "9 $ACADVER|1 AC1015", "x^2 ^j^^", "x^2 ^j^^"}),
    [](const auto& coded) { return coded.param.name; });

TEST(DxfCodePages, UnknownPageIsTold) {
    const DrawingData data =
        Read(Section("HEADER", "9 $DWGCODEPAGE|3 dos850") + Entities("0 POINT|10 0|20 0"));
    EXPECT_NE(NotesOf(data).find("8: code page \"dos850\" is unknown"), std::string::npos) << NotesOf(data);
}

TEST(DxfCodePages, CharactersThatStayEscapedAreToldOnce) {
    const std::string text = Entities("0 TEXT|10 0|20 0|1 \\M+1FFFF|0 TEXT|10 0|20 0|1 a\\M+1FFFE");
    const DrawingData data = Read(text);
    ASSERT_EQ(data.notes.size(), 1U) << NotesOf(data);
    const auto linesAhead =
        std::count(text.begin(), text.begin() + static_cast<long>(text.find("\\M+1FFFF")), '\n');
    EXPECT_EQ(data.notes.front().line, static_cast<std::size_t>(linesAhead) + 1);
    EXPECT_NE(data.notes.front().text.find("2 texts keep them as \\M+nXXXX, first here"), std::string::npos)
        << NotesOf(data);
    EXPECT_TRUE(data.notes.front().dataLost);
}

TEST(DxfCodePages, AFifthDigitIsTold) {
    const DrawingData data = Read(Entities("0 TEXT|10 0|20 0|1 \\U+1f600|0 TEXT|10 0|20 0|1 \\U+00e9cole"));
    ASSERT_EQ(data.notes.size(), 1U) << NotesOf(data);
    EXPECT_NE(data.notes.front().text.find("found a fifth digit; 1 text has"), std::string::npos)
        << NotesOf(data);
    EXPECT_TRUE(data.notes.front().dataLost);
}

TEST(DxfCodePages, DecodedCharactersAreNotTold) {
    EXPECT_EQ(NotesOf(Read(Section("HEADER", "9 $DWGCODEPAGE|3 ANSI_936") +
                           Entities("0 TEXT|10 0|20 0|1 \xB0\xE5\\M+18341"))),
              "");
}

TEST(DxfHandles, FileWithoutHandlesGetsThem) {
    const DrawingData data = Read(Groups(twoPoints));
    std::set<HandleValue> handles;
    for (const EntityData& entity : ModelSpace(data)) handles.insert(entity.handle);
    for (const BlockData& block : data.blocks) handles.insert(block.handle);
    for (const LayerData& layer : data.layers) handles.insert(layer.handle);
    EXPECT_EQ(handles.size(), 2 + data.blocks.size() + data.layers.size());
    EXPECT_FALSE(handles.contains(0));
    EXPECT_GT(data.handleSeed, *handles.rbegin());
}

TEST(DxfHandles, SecondOfTwoEqualHandlesIsReplacedAndTold) {
    const DrawingData data =
        Read(Entities("0 POINT|5 1F|10 0|20 0|0 POINT|5 1f|10 1|20 0|0 POINT|5 20|10 2|20 0"));
    EXPECT_EQ(ModelSpace(data)[0].handle, 0x1FU);
    EXPECT_EQ(ModelSpace(data)[2].handle, 0x20U);
    EXPECT_GT(ModelSpace(data)[1].handle, 0x20U);
    EXPECT_NE(NotesOf(data).find("14: handle used twice"), std::string::npos) << NotesOf(data);
}

TEST(DxfHandles, HandleBeyondReasonIsReplaced) {
    const DrawingData data = Read(Section("HEADER", "9 $HANDSEED|5 FFFFFFFFFFFFFFFF") +
                                  Entities("0 POINT|5 FFFFFFFFFFFFFFFF|10 0|20 0|0 POINT|5 xyz|10 0|20 0"));
    EXPECT_EQ(ModelSpace(data).size(), 2U);
    EXPECT_LT(data.handleSeed, 0x1000U);
    EXPECT_NE(NotesOf(data).find("a handle was expected, found \"FFFFFFFFFFFFFFFF\""), std::string::npos);
    EXPECT_NE(NotesOf(data).find("a handle was expected, found \"xyz\""), std::string::npos) << NotesOf(data);
}

TEST(DxfHandles, SeedStaysAboveEverythingUsed) {
    EXPECT_EQ(
        Read(Section("HEADER", "9 $HANDSEED|5 2") + Entities("0 POINT|5 500|10 0|20 0")).handleSeed > 0x500U,
        true);
    EXPECT_GE(Read(Section("HEADER", "9 $HANDSEED|5 5000") + Entities("0 POINT|5 500|10 0|20 0")).handleSeed,
              0x5000U);
}

TEST(DxfTables, LayersHaveTheirStates) {
    const DrawingData data = Read(
        Section("TABLES",
                "0 TABLE|2 LAYER|70 4|0 LAYER|2 Off|70 0|62 -3|6 Continuous|0 LAYER|2 Frozen|70 1|62 5|0 "
                "LAYER|2 Locked|70 4|62 0|290 0|370 25|0 LAYER|2 OFF|62 1|0 ENDTAB") +
        Groups(twoPoints));
    ASSERT_EQ(data.layers.size(), 4U);
    EXPECT_FALSE(data.layers[0].on);
    EXPECT_EQ(data.layers[0].color, 3);
    EXPECT_TRUE(data.layers[1].frozen);
    EXPECT_TRUE(data.layers[2].locked);
    EXPECT_FALSE(data.layers[2].plottable);
    EXPECT_EQ(data.layers[2].color, 7);
    EXPECT_EQ(data.layers[2].lineweight, 25);
    EXPECT_EQ(data.layers[3].name, "0");
    EXPECT_NE(NotesOf(data).find("\"OFF\" passed over"), std::string::npos);
}

TEST(DxfTables, OwnersTellTheSpace) {
    const DrawingData data = Read(
        Section("TABLES",
                "0 BLOCK_RECORD|5 1F|2 *MODEL_SPACE|0 BLOCK_RECORD|5 1B|2 *PAPER_SPACE|0 BLOCK_RECORD|5 3E|2 "
                "*Paper_Space0") +
        Entities("0 POINT|330 1B|10 0|20 0|0 POINT|330 3E|10 0|20 0|0 POINT|330 1F|10 0|20 0|0 POINT|330 "
                 "99|67 1|10 0|20 0"));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    EXPECT_EQ(PaperSpace(data).size(), 2U);
    ASSERT_EQ(data.blocks.size(), 3U);
    EXPECT_EQ(data.blocks[2].name, "*Paper_Space0");
    EXPECT_EQ(data.blocks[2].entities.size(), 1U);
    EXPECT_EQ(data.blocks[0].handle, 0x1FU);
}

TEST(DxfTables, SpacesOfRelease12HaveTheirNewNames) {
    const DrawingData data =
        Read(Section("BLOCKS",
                     "0 BLOCK|2 $MODEL_SPACE|10 0|20 0|0 ENDBLK|0 BLOCK|2 $PAPER_SPACE|10 "
                     "0|20 0|0 ENDBLK") +
             Groups(twoPoints));
    EXPECT_EQ(data.blocks.size(), 2U);
    EXPECT_EQ(data.blocks[0].name, "*Model_Space");
    EXPECT_EQ(data.version, "AC1009");
}

TEST(DxfObjects, GroupsHaveNamesAndLivingMembers) {
    const DrawingData data =
        Read(Section("ENTITIES", "0 POINT|5 A1|10 0|20 0|0 HATCH|5 A2") +
             Section("OBJECTS",
                     "0 DICTIONARY|5 C|3 ACAD_GROUP|350 D|0 DICTIONARY|5 D|3 Carcase|350 E1|0 GROUP|5 E1|300 "
                     "left|70 0|71 1|340 A1|340 A2|0 GROUP|5 E2|70 1|71 0|340 A1") +
             Groups("0 EOF"));
    ASSERT_EQ(data.groups.size(), 2U);
    EXPECT_EQ(data.groups[0], (GroupData{0xE1, "Carcase", "left", true, {0xA1}}));
    EXPECT_EQ(data.groups[1].name, "*A1");
    EXPECT_FALSE(data.groups[1].selectable);
}

TEST(DxfHeader, UcsUnitsAndVariablesAreKept) {
    const DrawingData data = Read(
        Section(
            "HEADER",
            "9 $ACADVER|1 AC1015|9 $INSUNITS|70 4|9 $MEASUREMENT|70 1|9 $UCSORG|10 1|20 2|30 3|9 $UCSXDIR|10 "
            "0|20 1|30 0|9 $UCSYDIR|10 -1|20 0|30 0|9 $LTSCALE|40 2.5|9 $LIMMIN|10 0|20 1|9 $CLAYER|8 "
            "boards|9 $UNHEARDOF|40 1|9 $PLINEGEN|70 x") +
        Entities("0 POINT|8 Boards|10 0|20 0"));
    EXPECT_EQ(data.insertUnits, 4);
    EXPECT_EQ(data.measurement, 1);
    EXPECT_EQ(data.ucs.origin, (Point3{1, 2, 3}));
    EXPECT_EQ(data.ucs.xAxis, (Point3{0, 1, 0}));
    EXPECT_EQ(data.ucs.yAxis, (Point3{-1, 0, 0}));
    EXPECT_EQ(data.currentLayer, "Boards");
    using Values = std::vector<std::pair<int, std::string>>;
    EXPECT_EQ(data.headerVariables.at("$LTSCALE"), (Values{{40, "2.5"}}));
    EXPECT_EQ(data.headerVariables.at("$LIMMIN"), (Values{{10, "0"}, {20, "1"}}));
    EXPECT_FALSE(data.headerVariables.contains("$UNHEARDOF"));
    EXPECT_FALSE(data.headerVariables.contains("$PLINEGEN"));
    EXPECT_NE(NotesOf(data).find("$PLINEGEN"), std::string::npos);
}

TEST(DxfXData, EveryCodeHasItsType) {
    const DrawingData data =
        Read(Entities("0 POINT|10 0|20 0|1001 LWT|1000 T\\U+00FCr |1002 {|1003 Boards|1005 2F|1004 01fF|1010 "
                      "1|1020 2|1030 3|1040 "
                      "0.5|1070 65535|1071 -70000|1002 }|1001 Other"));
    const auto& xdata = ModelSpace(data).at(0).xdata;
    ASSERT_EQ(xdata.size(), 2U) << NotesOf(data);
    EXPECT_EQ(xdata[0].app, "LWT");
    const std::vector<XDataItem> expected{{1000, std::string("T\u00FCr ")},
                                          {1002, std::string("{")},
                                          {1003, std::string("Boards")},
                                          {1005, std::string("2F")},
                                          {1004, std::vector<std::uint8_t>{1, 255}},
                                          {1010, Point3{1, 2, 3}},
                                          {1040, 0.5},
                                          {1070, std::int16_t{-1}},
                                          {1071, std::int32_t{-70000}},
                                          {1002, std::string("}")}};
    EXPECT_EQ(xdata[0].items, expected);
    EXPECT_TRUE(xdata[1].items.empty());
    EXPECT_NE(std::find(data.applications.begin(), data.applications.end(), "Other"),
              data.applications.end());
}

TEST(DxfXData, ATextThatIsTooLongIsCutBetweenTwoCharactersAndTold) {
    // 255 as the format counts: characters, those beyond FFFF as two.
    std::string umlauts, faces;
    for (int i = 0; i < 300; ++i) umlauts += "\\U+00FC";
    for (int i = 0; i < 200; ++i) faces += "\\U+D83D\\U+DE00";
    const DrawingData data =
        Read(Entities("0 POINT|5 2F|10 0|20 0|1001 PARTNAME|1000 " + umlauts + "|1001 NOTES|1000 " + faces +
                      "|1001 PN|1000 " + std::string(255, 'x')));
    const auto& xdata = ModelSpace(data).at(0).xdata;
    ASSERT_EQ(xdata.size(), 3U);
    std::string wantedUmlauts, wantedFaces;
    for (int i = 0; i < 255; ++i) wantedUmlauts += "\u00FC";
    for (int i = 0; i < 127; ++i) wantedFaces += "\U0001F600";
    EXPECT_EQ(std::get<std::string>(xdata[0].items.at(0).value), wantedUmlauts);
    EXPECT_EQ(std::get<std::string>(xdata[1].items.at(0).value), wantedFaces);
    EXPECT_EQ(std::get<std::string>(xdata[2].items.at(0).value), std::string(255, 'x'));
    ASSERT_EQ(data.notes.size(), 2U) << NotesOf(data);
    EXPECT_GT(data.notes[0].line, 0U);
    EXPECT_EQ(data.notes[0].text,
              "POINT (handle 2F), extended data of \"PARTNAME\": a text of 300 characters was cut to the 255 "
              "that a drawing takes");
}

TEST(DxfXData, AZeroCharacterIsLeftOutAndTold) {
    std::string text =
        Entities("0 POINT|5 2F|10 0|20 0|1001 PARTNAME|1000 Left@Side|1001 NOTES|1000 a\\U+0000b");
    text[text.find('@')] = '\0';
    const DrawingData data = Read(text);
    const auto& xdata = ModelSpace(data).at(0).xdata;
    EXPECT_EQ(std::get<std::string>(xdata.at(0).items.at(0).value), "LeftSide");
    EXPECT_EQ(std::get<std::string>(xdata.at(1).items.at(0).value), "ab");
    EXPECT_EQ(data.notes.size(), 2U) << NotesOf(data);
}

TEST(DxfXData, ACutKeepsWhatStandsForACharacterWhole) {
    const std::string start(254, 'x');
    for (const std::string kept : {"\\U+D800", "\\M+1A1B2"}) {
        const DrawingData data =
            Read(Entities("0 POINT|5 2F|10 0|20 0|1001 PARTNAME|1000 " + start + kept + "yyy"));
        EXPECT_EQ(std::get<std::string>(ModelSpace(data).at(0).xdata.at(0).items.at(0).value), start) << kept;
    }
}

TEST(DxfXData, PartDataThatBeginWithABracketAreTold) {
    const DrawingData data = Read(Entities("0 POINT|5 2F|10 0|20 0|1001 PARTNAME|1002 {|1000 Side|1002 }"));
    ASSERT_EQ(data.notes.size(), 1U) << NotesOf(data);
    EXPECT_NE(data.notes[0].text.find("\"PARTNAME\": a text was expected behind it, found a bracket"),
              std::string::npos)
        << data.notes[0].text;
}

TEST(DxfXData, PartDataThatAreNoTextAreToldWithLineAndEntity) {
    const DrawingData data =
        Read(Entities("0 POINT|5 2F|10 0|20 0|1001 PARTNAME|1010 1|1020 2|1030 3|1001 NOTES"
                      "|1004 01fF|1001 QUANTITY|1070 2|1001 Other|1010 1|1020 2|1030 3|1001 PRICE"));
    ASSERT_EQ(data.notes.size(), 3U) << NotesOf(data);
    EXPECT_EQ(
        data.notes[0].text,
        "POINT (handle 2F), extended data of \"PARTNAME\": a text was expected behind it, found a point or "
        "bytes");
    EXPECT_NE(data.notes[2].text.find("\"PRICE\": a text was expected behind it, found nothing"),
              std::string::npos);
    for (const ReadNote& note : data.notes) EXPECT_GT(note.line, 0U);
    EXPECT_EQ(ModelSpace(data).at(0).xdata.size(), 5U);
}

TEST(DxfXData, DamagedItemsAreToldAndTheOthersArrive) {
    const DrawingData data = Read(Entities(
        "0 POINT|10 0|20 0|1000 early|1001 LWT|1040 nan|1004 0g|1002 }|1002 {|1070 99999|1000 good"));
    const auto& xdata = ModelSpace(data).at(0).xdata;
    ASSERT_EQ(xdata.size(), 1U);
    const std::vector<XDataItem> expected{
        {1002, std::string("{")}, {1000, std::string("good")}, {1002, std::string("}")}};
    EXPECT_EQ(xdata[0].items, expected);
    EXPECT_EQ(data.notes.size(), 6U) << NotesOf(data);
}

TEST(DxfSpeed, TenThousandEntitiesTakeFarLessThanASecond) {
    std::string groups;
    for (int i = 0; i < 10000; ++i)
        groups += "0 LINE|5 " + std::to_string(100000 + i) +
                  "|8 Boards|10 1.25|20 2.5|30 0.0|11 600.125|21 18.0|31 0.0|";
    const std::string text = Entities(groups);
    const auto begin = std::chrono::steady_clock::now();
    const DrawingData data = Read(text);
    const std::string written = WriteDxf(data);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(ModelSpace(data).size(), 10000U);
    EXPECT_GT(written.size(), text.size());
    RecordProperty("milliseconds", static_cast<int>(1000 * seconds.count()));
}

}  // namespace
}  // namespace brenvik
