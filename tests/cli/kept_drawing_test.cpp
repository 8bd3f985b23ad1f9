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
