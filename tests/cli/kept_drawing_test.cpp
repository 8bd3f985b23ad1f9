// A DXF that was read and is saved keeps what the program doesn't understand, through conversions and through
// the changes of a journal, and an independent reader finds nothing wrong with it.
#include <algorithm>

#include "program.h"
#include "support/ezdxf_audit.h"
#include "support/sample_files.h"

namespace brenvik::cli_test {
namespace {

using KeptDrawing = ProgramTest;

/// "0 LINE|8 Boards" as the four lines of two groups, as files have them.
std::string Groups(std::string_view groups) {
    std::string text;
    while (!groups.empty()) {
        const std::string_view group = groups.substr(0, groups.find('|'));
        groups.remove_prefix(std::min(groups.size(), group.size() + 1));
        const std::size_t blank = std::min(group.find(' '), group.size());
        if (blank < 3) text.append(3 - blank, ' ');
        text.append(group.substr(0, blank)).append("\r\n");
        text.append(group.substr(std::min(blank + 1, group.size()))).append("\r\n");
    }
    return text;
}

constexpr std::string_view hatch =
    "0 HATCH|5 A2|330 1F|100 AcDbEntity|8 0|420 255|100 AcDbHatch|10 0|20 0|30 0|210 0|220 0|230 1|2 "
    "SOLID|70 1|71 1|"
    "91 1|92 7|72 0|73 1|93 3|10 0|20 0|10 1|20 0|10 1|20 1|97 1|330 A1|75 1|76 1|98 0";

/// A line in two colours with an extension dictionary, a hatch over it, and a block reference with an
/// attribute.
std::string Drawing() {
    return Groups(
               "0 SECTION|2 HEADER|9 $ACADVER|1 AC1018|9 $HANDSEED|5 1000|9 $DIMTXT|40 3.3|0 ENDSEC|"
               "0 SECTION|2 TABLES|0 TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 3|"
               "0 BLOCK_RECORD|5 1F|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 "
               "*Model_Space|340 0|"
               "0 BLOCK_RECORD|5 1B|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 "
               "*Paper_Space|340 0|"
               "0 BLOCK_RECORD|5 E0|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 Mark|340 0|70 "
               "4|0 ENDTAB|"
               "0 ENDSEC|0 SECTION|2 BLOCKS|0 BLOCK|5 E1|330 E0|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 "
               "Mark|70 2|10 0|"
               "20 0|30 0|3 Mark|1 |4 marks a board|0 ENDBLK|5 E2|330 E0|100 AcDbEntity|8 0|100 "
               "AcDbBlockEnd|0 ENDSEC|"
               "0 SECTION|2 ENTITIES|0 LINE|5 A1|102 {ACAD_XDICTIONARY|360 D1|102 }|330 1F|100 AcDbEntity|8 "
               "0|62 1|"
               "420 16711680|440 33554559|100 AcDbLine|10 0|20 0|30 0|11 1|21 0|31 0|") +
           Groups(hatch) +
           Groups(
               "0 INSERT|5 A3|330 1F|100 AcDbEntity|8 0|100 AcDbBlockReference|66 1|2 Mark|10 0|20 0|30 0|"
               "0 ATTRIB|5 A4|330 A3|100 AcDbEntity|8 0|100 AcDbText|10 5|20 6|30 0|40 2.5|1 Oak|100 "
               "AcDbAttribute|2 "
               "WOOD|70 0|0 SEQEND|5 A5|330 A3|100 AcDbEntity|8 0|0 ENDSEC|"
               "0 SECTION|2 OBJECTS|0 DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|"
               "0 DICTIONARY|5 D1|330 A1|100 AcDbDictionary|281 1|3 NOTE|360 D2|"
               "0 XRECORD|5 D2|330 D1|100 AcDbXrecord|280 1|1 second choice|0 ENDSEC|0 EOF");
}

TEST_F(KeptDrawing, ConvertingKeepsAllAndEndsWithZero) {
    Write("in.dxf", Drawing());
    const Outcome outcome = Run({"convert", "in.dxf", "out.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    const std::string file = Read("out.dxf");
    for (const std::string_view kept :
         {hatch, std::string_view("9 $DIMTXT|40 3.3"), std::string_view("62 1|420 16711680|440 33554559"),
          std::string_view("102 {ACAD_XDICTIONARY|360 D1|102 }"), std::string_view("280 1|1 second choice"),
          std::string_view("40 2.5|1 Oak|100 AcDbAttribute|2 WOOD"), std::string_view("1 |4 marks a board"),
          std::string_view("1 AC1018")})
        EXPECT_NE(file.find(Groups(kept)), std::string::npos) << kept;
    const auto problems = test::AuditWithEzdxf(folder / "out.dxf");
    EXPECT_FALSE(problems) << *problems;
}

TEST_F(KeptDrawing, BroughtToAnotherUnitItsViewsStylesAndVariablesGoAlong) {
    std::string drawing = Drawing();
    const auto put = [&](const std::string& before, const std::string& groups) {
        drawing.insert(drawing.find(Groups(before)), Groups(groups));
    };
    put("9 $DIMTXT",
        "9 $INSUNITS|70 1|9 $EXTMIN|10 1e20|20 1e20|30 1e20|9 $EXTMAX|10 10|20 5|30 0|9 $LIMMAX|10 20|20 "
        "10|9 $LTSCALE|40 2|9 $TEXTSIZE|40 0.5|9 $DIMASZ|40 0.5|9 $DIMSCALE|40 3");
    put("0 TABLE|2 BLOCK_RECORD",
        "0 TABLE|2 VPORT|5 8|330 0|100 AcDbSymbolTable|70 1|0 VPORT|5 94|330 8|100 AcDbSymbolTableRecord|100 "
        "AcDbViewportTableRecord|2 *Active|70 0|10 0|20 0|11 1|21 1|12 10|22 5|13 0|23 0|14 0.5|24 0.5|15 "
        "0.5|25 0.5|16 0|26 0|36 1|17 1|27 2|37 0|40 10|41 1.5|42 50|43 0|44 0|50 0|51 0|71 0|0 ENDTAB|"
        "0 TABLE|2 VIEW|5 6|330 0|100 AcDbSymbolTable|70 2|0 VIEW|5 95|330 6|100 AcDbSymbolTableRecord|100 "
        "AcDbViewTableRecord|2 Front|70 0|40 10|10 5|20 4|41 20|11 0|21 -1|31 0|12 1|22 2|32 3|42 50|43 0|44 "
        "0|50 0|71 0|0 VIEW|5 96|330 6|100 AcDbSymbolTableRecord|100 AcDbViewTableRecord|2 Sheet|70 1|40 "
        "7|10 3.5|20 4|41 9|11 0|21 0|31 1|12 0|22 0|32 0|42 50|43 0|44 0|50 0|71 0|0 ENDTAB|"
        "0 TABLE|2 STYLE|5 3|330 0|100 AcDbSymbolTable|70 1|0 STYLE|5 97|330 3|100 AcDbSymbolTableRecord|100 "
        "AcDbTextStyleTableRecord|2 Notes|70 0|40 0.5|41 0.8|50 0|71 0|42 2|3 txt|4 |0 ENDTAB|"
        "0 TABLE|2 DIMSTYLE|5 A|330 0|100 AcDbSymbolTable|70 1|100 AcDbDimStyleTable|0 DIMSTYLE|105 98|330 "
        "A|100 AcDbSymbolTableRecord|100 AcDbDimStyleTableRecord|2 Shop|70 0|40 3|41 0.5|140 2|144 1|0 "
        "ENDTAB|");
    Write("in.dxf", drawing);
    const Outcome outcome = Run({"convert", "in.dxf", "out.dxf"});
    EXPECT_NE(outcome.errors.find("keeps its lengths there"), std::string::npos) << "of the hatch";
    const std::string file = Read("out.dxf");
    for (const std::string_view scaled :
         {"9 $EXTMIN|10 1e20", "9 $EXTMAX|10 254.0|20 127.0|30 0", "9 $LIMMAX|10 508.0|20 254.0",
          "9 $LTSCALE|40 50.8", "9 $TEXTSIZE|40 12.7", "9 $DIMASZ|40 12.7", "9 $DIMSCALE|40 3",
          "9 $INSUNITS|70 4", "12 254.0|22 127.0|13 0", "14 12.7|24 12.7",
          "16 0|26 0|36 1|17 25.4|27 50.8|37 0|40 254.0|41 1.5|42 50",
          "2 Front|70 0|40 254.0|10 127.0|20 101.6|41 508.0|11 0|21 -1|31 0|12 25.4|22 50.8",
          "2 Sheet|70 1|40 7", "2 Notes|70 0|40 12.7|41 0.8|50 0|71 0|42 50.8",
          "2 Shop|70 0|40 3|41 12.7|140 50.8|144 1|42 1.5875|43 9.652"})
        EXPECT_NE(file.find(Groups(scaled)), std::string::npos) << scaled;
}

TEST_F(KeptDrawing, LengthsThatStayInAnotherUnitAreTold) {
    std::string drawing = Drawing();
    const auto put = [&](const std::string& before, const std::string& groups) {
        drawing.insert(drawing.find(Groups(before)), Groups(groups));
    };
    put("9 $DIMTXT", "9 $INSUNITS|70 1");
    put("0 ENDBLK|5 E2",
        "0 LINE|5 E3|330 E0|100 AcDbEntity|8 0|100 AcDbLine|10 0|20 0|30 0|11 1|21 0|31 0|1001 "
        "MAKER|1041 3.5|0 MTEXT|5 E4|330 E0|100 AcDbEntity|8 0|100 AcDbMText|10 0|20 0|30 0|40 1|41 "
        "0|46 2|71 1|72 1|1 in a block|");
    put("0 INSERT|5 A3",
        "0 MTEXT|5 A6|330 1F|100 AcDbEntity|8 0|100 AcDbMText|10 0|20 0|30 0|40 1|41 0|46 2|71 "
        "1|72 1|1 set lines|");
    put("0 XRECORD|5 D2", "0 XRECORD|5 D4|330 D1|100 AcDbXrecord|280 1|40 12.5|");
    Write("in.dxf", drawing);
    const Outcome outcome = Run({"convert", "in.dxf", "out.dxf"});
    EXPECT_NE(outcome.errors.find(
                  "lengths that stay as they stood in the file: extended data of 1 entity in blocks, 1 "
                  "XRECORD"),
              std::string::npos)
        << outcome.errors;
    // The height of a text's lines follows the text; in a block both stay.
    const std::string file = Read("out.dxf");
    EXPECT_NE(file.find(Groups("46 50.8")), std::string::npos);
    EXPECT_NE(file.find(Groups("46 2")), std::string::npos);
}

TEST_F(KeptDrawing, KindsThatStayInADrawingAreNoLossOfAConversionAndOneOfAList) {
    std::string drawing = Drawing();
    const std::string line = Groups("0 LINE");
    drawing.replace(drawing.find(line), line.size(), Groups("0 MESH|5 F1|330 1F|100 AcDbEntity|8 0") + line);
    Write("in.dxf", drawing);
    EXPECT_EQ(Run({"convert", "in.dxf", "out.dxf"}).status, 0);
    EXPECT_NE(Read("out.dxf").find(Groups("0 MESH|5 F1|330 1F|100 AcDbEntity|8 0")), std::string::npos);
    const Outcome list = Run({"list", "in.dxf"});
    EXPECT_NE(list.status, 0);
    EXPECT_NE(list.errors.find("1 of kind \"MESH\""), std::string::npos) << list.errors;
}

TEST_F(KeptDrawing, CopiesAndMovesCarryTheLookAndAttributesGoAlong) {
    Write("in.dxf", Drawing());
    Write("a.journal",
          "host \"copy (handent \\\"A1\\\")  0,0 0,10 \"\n"
          "host \"move (handent \\\"A3\\\")  0,0 100,0 \"\n"
          "save \"out.dxf\"\n");
    const Outcome outcome = Run({"run", "in.dxf", "--journal", "a.journal"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    const std::string file = Read("out.dxf");
    const std::string look = Groups("62 1|420 16711680|440 33554559");
    EXPECT_NE(file.find(look), file.rfind(look)) << "the copy has its original's colour";
    const std::string own = Groups("102 {ACAD_XDICTIONARY|360 D1");
    EXPECT_EQ(file.find(own), file.rfind(own)) << "the original's dictionary is its own";
    EXPECT_NE(file.find(Groups("100 AcDbText|10 105|20 6")), std::string::npos);
    const auto problems = test::AuditWithEzdxf(folder / "out.dxf");
    EXPECT_FALSE(problems) << *problems;
}

TEST_F(KeptDrawing, WhatReferredToAnErasedObjectIsMended) {
    Write("in.dxf", Drawing());
    Write("a.journal", "host \"erase (handent \\\"A1\\\")  \"\nsave \"out.dxf\"\n");
    const Outcome outcome = Run({"run", "in.dxf", "--journal", "a.journal"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    const std::string file = Read("out.dxf");
    EXPECT_NE(file.find(Groups("97 0|75 1")), std::string::npos);
    for (const std::string_view gone : {"5 A1", "5 D1", "5 D2", "330 A1"})
        EXPECT_EQ(file.find(Groups(gone)), std::string::npos) << gone;
    const auto problems = test::AuditWithEzdxf(folder / "out.dxf");
    EXPECT_FALSE(problems) << *problems;
}

TEST_F(KeptDrawing, WhatOfReleaseTwelveHasNoPlaceIsToldByKindAndGroup) {
    Write(
        "old.dxf",
        Groups(
            "0 SECTION|2 HEADER|9 $ACADVER|1 AC1009|0 ENDSEC|0 SECTION|2 TABLES|0 TABLE|2 VPORT|70 1|0 "
            "VPORT|2 *Active|70 0|40 9|0 ENDTAB|0 TABLE|2 LAYER|70 1|0 "
            "LAYER|2 "
            "Cuts|70 2|62 3|6 CONTINUOUS|0 ENDTAB|0 ENDSEC|0 SECTION|2 BLOCKS|0 BLOCK|8 0|2 Mark|70 0|10 "
            "0|20 "
            "0|30 0|3 Mark|1 |4 a mark|0 ENDBLK|8 0|0 ENDSEC|0 SECTION|2 ENTITIES|0 LINE|8 Cuts|38 7|10 0|20 "
            "0|30 0|11 1|21 0|31 0|0 POLYLINE|8 0|66 1|10 0|20 0|30 0|40 2|41 3|0 VERTEX|8 Cuts|10 0|20 0|30 "
            "0|0 "
            "VERTEX|8 0|10 1|20 0|30 0|0 SEQEND|8 0|0 ENDSEC|0 EOF"));
    const Outcome outcome = Run({"convert", "old.dxf", "new.dxf"});
    EXPECT_EQ(outcome.status, 1);
    for (const char* lost :
         {"1 of kind \"LINE, group 38\"", "1 of kind \"VERTEX, group 8\"",
          "1 of kind \"BLOCK, its description\"", "1 of kind \"LAYER, frozen in new viewports\""})
        EXPECT_NE(outcome.errors.find(lost), std::string::npos) << lost << outcome.errors;
    EXPECT_NE(outcome.errors.find("VPORT \"*Active\" is not taken along"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n'), 5) << outcome.errors;
}

TEST_F(KeptDrawing, DrawingsOfOtherProgramsPassTheAuditOnceConverted) {
    if (!test::HasSamples()) GTEST_SKIP() << "no sample drawings at " << test::SampleFolder();
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed for the system's Python";
    for (const std::string name : {"ACadSharp__sample_AC1015_ascii", "ACadSharp__sample_AC1018_ascii",
                                   "ACadSharp__sample_AC1024_ascii", "ezdxf__torus_r2007"}) {
        const Outcome outcome = Run({"convert", (test::SampleFolder() / "dxf" / (name + ".dxf")).string(),
                                     name + ".dxf", "--unit", "mm"});
        EXPECT_EQ(outcome.status, 0) << name << outcome.errors;
        const auto problems = test::AuditWithEzdxf(folder / (name + ".dxf"));
        EXPECT_FALSE(problems) << *problems;
    }
}

}  // namespace
}  // namespace brenvik::cli_test
