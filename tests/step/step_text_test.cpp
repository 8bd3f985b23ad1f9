// The text of STEP files: statements, numbers, code pages.
#include "drafting_host/step/texts/step_text.h"
#include "drafting_host/step/text_faults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "drafting_host/step/texts/step_grammar.h"
#include "drafting_host/step/texts/step_quarantine.h"
#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {
namespace {

TEST(StepText, ALineForAMessageIsShort) {
    EXPECT_EQ(LineForMessage("one\r\n  two \r\nthree", 5), "two");
    EXPECT_EQ(LineForMessage("T\xC3\xBC" + std::string(100, 'x'), 0), "T??" + std::string(57, 'x') + "...");
    EXPECT_EQ(LineForMessage("", 0), "");
}

TEST(StepStatements, AreTakenFromTheDataOutsideOfQuotesAndComments) {
    const Statements text(
        "ISO-10303-21;\nHEADER;FILE_NAME('#7=A();');ENDSEC;\nDATA;\n/* #8=B(); */ #1=A('it''s; #9',#2);\n"
        "#2 = (C(#1) D_E('F(',$));\nENDSEC;\nEND-ISO-10303-21;\n");
    ASSERT_EQ(text.All().size(), 2U);
    EXPECT_EQ(text.All()[0].number, 1);
    EXPECT_EQ(text.All()[0].kind, "A");
    ASSERT_EQ(text.ReferencesOf(text.All()[0]).size(), 1U);
    EXPECT_EQ(text.ReferencesOf(text.All()[0])[0].number, 2);
    EXPECT_EQ(text.KindsOf(text.All()[1]), (std::vector<std::string_view>{"C", "D_E"}));
    EXPECT_EQ(text.LineOf(2), 5U);
    EXPECT_EQ(text.LineOf(9), 0U);
    EXPECT_TRUE(text.End());
    EXPECT_FALSE(text.BrokenData());
    EXPECT_FALSE(TailOf(text));
}

TEST(StepText, CommentsBecomeBlanksLineForLine) {
    EXPECT_EQ(WithoutComments("#1=/*'*/A('/* no */');"), "#1=     A('/* no */');");
    EXPECT_EQ(WithoutComments("(1./* #5,\r\n) it's */,2.)"), "(1.      \r\n         ,2.)");
    EXPECT_EQ(WithoutComments("'it''s /*'/**/'*/'/ *"), "'it''s /*'    '*/'/ *");
    EXPECT_EQ(WithoutComments("a /* open 'x'"), "a /* open 'x'");
    EXPECT_EQ(WithoutComments("/*/ one */two"), "          two");
    EXPECT_EQ(WithoutComments("'open /* */"), "'open /* */");
}

TEST(StepStatements, ABrokenOneLeavesTheOthers) {
    for (const char* broken :
         {"#2=A(5.9.9,'x;y');", "#2=A((1,2);", "#2=A(1,2));", "#2=A(\n'x);", "#2=A(1)"}) {
        const std::string content =
            "DATA;\n#1=A();\n" + std::string(broken) + "\n#3=A();\nENDSEC;\nEND-ISO-10303-21;";
        const Statements text(content);
        const Statement* found = text.Find(2);
        ASSERT_NE(found, nullptr) << broken;
        EXPECT_FALSE(found->wellFormed) << broken;
        EXPECT_EQ(text.LineOf(2), 3U) << broken;
        ASSERT_NE(text.Find(3), nullptr) << broken;
        EXPECT_TRUE(text.Find(3)->wellFormed) << broken;
        EXPECT_TRUE(text.End()) << broken;
    }
}

TEST(StepStatements, WhatStandsBehindTheEndIsNoPartOfTheFile) {
    const std::string file = "DATA;\n#1=A();\nENDSEC;\nEND-ISO-10303-21;";
    const auto tail = [&](const std::string& more) {
        const std::string content = file + more;
        const Statements text(content);
        const auto found = TailOf(text);
        if (!found) return std::string("nothing");
        return std::to_string(text.LineAt(found->place)) + (found->holdsRecords ? ": records" : ": text");
    };
    EXPECT_EQ(tail(" \r\n\x1A"), "nothing");
    EXPECT_EQ(tail("\nSIGNATURE;\nabc\nENDSEC;\n"), "5: text");
    EXPECT_EQ(tail("#2=A();"), "4: records");
    EXPECT_EQ(tail("\n\nISO-10303-21;\n"), "6: records");
}

TEST(StepStatements, FarNumbersAreFoundToo) {
    const Statements text("DATA;#5=A(#2147483647);#2147483647=B();#2147483648=C();ENDSEC;");
    ASSERT_NE(text.Find(2147483647), nullptr);
    EXPECT_EQ(text.Find(2147483647)->kind, "B");
    EXPECT_EQ(text.All()[2].number, 0);
}

std::vector<std::string> FaultsOf(const std::string& data) {
    const std::string content = "DATA;" + data + "ENDSEC;";
    const Statements text(content);
    std::vector<std::string> expected;
    for (const StatementFault& fault : TextFaults(text)) expected.push_back(fault.expected);
    return expected;
}

TEST(StepStatements, OrientedEdgesHoldEdges) {
    const std::vector<std::string> nested{"an oriented edge that holds an edge"};
    const std::string vertices = "#3=V();#4=V();#5=L();";
    EXPECT_TRUE(
        FaultsOf(vertices + "#1=ORIENTED_EDGE('#1',*,*,#2,.T.);#2=EDGE_CURVE('#2',#3,#4,#5,.T.);").empty());
    EXPECT_TRUE(FaultsOf(vertices + "#1=ORIENTED_EDGE('it''s; #1',*,*,/* #1; */#3,.T.);").empty());
    EXPECT_TRUE(FaultsOf("#1=A('#2=ORIENTED_EDGE(#1)',$);/*#3=ORIENTED_EDGE(#3);*/").empty());
    EXPECT_EQ(FaultsOf(vertices + "#1=ORIENTED_EDGE('',*,*,#2,.T.);#2= ORIENTED_EDGE('',*,*,#3,.T.);"),
              nested);
}

/// The data of a file without what fell with its faults.
std::string Sound(const std::string& data) {
    const std::string content = "DATA;" + data + "ENDSEC;END-ISO-10303-21;";
    const Statements text(content);
    Quarantine quarantine(text);
    for (const StatementFault& fault : TextFaults(text))
        if (!quarantine.Remove(fault)) return "refused: " + fault.expected;
    std::string sound = quarantine.Content().substr(5);
    return sound.substr(0, sound.find("ENDSEC;"));
}

TEST(StepQuarantine, GeometryFallsWithAnyOfItsPieces) {
    EXPECT_EQ(
        Sound("#1=P();#2=L(#1,#9);#3=CLOSED_SHELL('',(#1,#2));#4=MANIFOLD_SOLID_BREP('',#3);"
              "#5=MANIFOLD_SOLID_BREP('',#1);#6=ADVANCED_BREP_SHAPE_REPRESENTATION('',(#4 , #5),#7);#7=C();"
              "#8=STYLED_ITEM('',(#1),#4);"),
        "#1=P();#5=MANIFOLD_SOLID_BREP('',#1);#6=ADVANCED_BREP_SHAPE_REPRESENTATION('',( #5),#7);#7=C();");
}

TEST(StepQuarantine, AListOfStylesLosesOnlyItsFaultyOnes) {
    EXPECT_EQ(Sound("#1=COLOUR_RGB('',1,1.2.3);#2=STYLED_ITEM('',(#1),#3);#3=A();#4=STYLED_ITEM('',(#3),#3);"
                    "#5=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#2,#4),#3);"),
              "#3=A();#4=STYLED_ITEM('',(#3),#3);"
              "#5=MECHANICAL_DESIGN_GEOMETRIC_PRESENTATION_REPRESENTATION('',(#4),#3);");
}

TEST(StepQuarantine, PapersFallAndLeaveTheProduct) {
    EXPECT_EQ(
        Sound("#1=PERSON_AND_ORGANIZATION(#18446744073709551615,#2);#2=PRODUCT('a','a','',(#3));"
              "#3=PRODUCT_CONTEXT('',#4,'');#5=CC_DESIGN_PERSON_AND_ORGANIZATION_ASSIGNMENT(#1,#2,(#2));"),
        "#2=PRODUCT('a','a','',());");
}

TEST(StepQuarantine, TheStructureOfProductsStaysWholeOrNothingIsRead) {
    EXPECT_EQ(Sound("#1=NEXT_ASSEMBLY_USAGE_OCCURRENCE('','','',#2,#3,$);#2=A();"),
              "refused: a statement #3, the file has none");
    EXPECT_EQ(Sound("#1=D(1.2.3);#2=ITEM_DEFINED_TRANSFORMATION('','',#1,#1);").substr(0, 30),
              "refused: well-formed STEP stat");
}

bool IsWellFormed(std::string_view statement) {
    StatementWalk walk;
    WalkStatement(statement, 0, walk);
    return walk.wellFormed;
}

TEST(StepGrammar, AStatementHasANumberAKindAndValuesPartedByCommas) {
    for (const char* good :
         {"#1=A();", "#12 = CARTESIAN_POINT('',(0.,-1.5E-3,+2));", "#3=(A(1.) B() C(#1,$,*));",
          "#4=A('it''s; (#',.T.,\"0F\",LENGTH(2.5),((),(1)));", "#5 /* note; */ = A(#1 ,\n #2);",
          "#6=!OWN(.5);"})
        EXPECT_TRUE(IsWellFormed(good)) << good;
    for (const char* bad : {"#1=A;",     "1=A();",     "#=A();",          "#1 A();",      "#1=A(1,);",
                            "#1=A(,1);", "#1=A(1 2);", "#1=A(1;",         "#1=A(1));",    "#1=A(.T);",
                            "#1=A('x);", "#1=A(1.E);", "#1=A(1e5);",      "#1=A(1.2.3);", "#1=A(-);",
                            "#1=A(#);",  "#1=A(B);",   "#1=(A(1),B(2));", "#1=A() B();",  "#1=A(?);"})
        EXPECT_FALSE(IsWellFormed(bad)) << bad;
}

TEST(StepText, CodePageFollowsTheBytes) {
    EXPECT_EQ(CodePageOf("plain"), CodePage::Utf8);
    EXPECT_EQ(CodePageOf("T\xC3\xBCr"), CodePage::Utf8);
    EXPECT_EQ(CodePageOf("T\xFCr"), CodePage::Western);
    EXPECT_EQ(CodePageOf("'\xC2\xFB\xEA\xEB\xFE\xF7'"), CodePage::Cyrillic);
    EXPECT_EQ(CodePageOf("'\x91\xA4\x94\xC2'"), CodePage::Japanese);
    EXPECT_EQ(CodePageOf("'\x83\x65\x81\x5B\x83\x75\x83\x8B'"), CodePage::Japanese);
    EXPECT_EQ(CodePageOf("'it\x92s \x93"
                         "A\x94 caf\xE9'"),
              CodePage::Western);
}

TEST(StepText, HasNoNoiseAmongItsNumbers) {
    EXPECT_EQ(WithoutNoise("#10=CARTESIAN_POINT('',(-0.,3.552713678801E-15,-600.5));"),
              "#10=CARTESIAN_POINT('',(0.,0.,-600.5));");
    EXPECT_EQ(WithoutNoise("#11=DIRECTION('a -0. 1.E-15',(1.,-0.,-1.E-16));"),
              "#11=DIRECTION('a -0. 1.E-15',(1.,0.,0.));");
    const char* const kept =
        "#1E5=X_0(.T.,*,$,#20,1.E-07,-0.5,0,(LENGTH_MEASURE(1.E-09)),'it''s -0.',.UNSPECIFIED.);";
    EXPECT_EQ(WithoutNoise(kept), kept);
    EXPECT_EQ(WithoutNoise("'open"), "'open");
}

}  // namespace
}  // namespace brenvik::step
