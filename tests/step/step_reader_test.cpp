// Files as people really have them: missing, empty, cut off, damaged, nested, in inches.
#include "drafting_host/step/step_reader.h"

#include <gtest/gtest.h>
#include <STEPControl_Reader.hxx>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/failure.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/step/step_grammar.h"
#include "drafting_host/step/step_text.h"
#include "solids/parts.h"
#include "step/nested_assembly.h"
#include "step/write_step.h"

namespace brenvik::step {
namespace {

class StepInput : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        mPath =
            std::filesystem::path(::testing::TempDir()) / ("brenvik_" + std::string(test->name()) + ".step");
    }
    void TearDown() override { std::filesystem::remove(mPath); }

    void Put(const std::string& content) const { std::ofstream(mPath, std::ios::binary) << content; }

    std::string Good() const {
        WriteStep(mPath, std::vector<StepSolid>{
                             {solids::test::Board(600, 400, 18), "Board", "Job", "", std::nullopt}});
        std::ifstream file(mPath, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The failure's text, or what went wrong instead.
    std::string FailureText() const {
        try {
            ReadStep(mPath);
        } catch (const Failure& failure) {
            return failure.what();
        }
        return "no failure";
    }

    std::filesystem::path mPath;
};

void ExpectMentions(const std::string& text, const std::string& part) {
    EXPECT_NE(text.find(part), std::string::npos) << text;
}

TEST_F(StepInput, MissingFileIsNamed) {
    ExpectMentions(FailureText(), "File not found");
    ExpectMentions(FailureText(), mPath.filename().string());
}

TEST_F(StepInput, FolderIsNoFile) {
    mPath = ::testing::TempDir();
    EXPECT_THROW(ReadStep(mPath), Failure);
    mPath = "no such";
}

TEST_F(StepInput, EmptyFileIsTold) {
    for (const char* content : {"", " \r\n\t "}) {
        Put(content);
        ExpectMentions(FailureText(), "the file is empty");
        ExpectMentions(FailureText(), mPath.filename().string());
    }
}

TEST_F(StepInput, GarbageIsTold) {
    for (const std::string& content : {std::string("hello world"), std::string(5000, '\0'),
                                       std::string("0\nSECTION\n"), std::string("\x89PNG\r\n\x1a\n")}) {
        Put(content);
        ExpectMentions(FailureText(), "expected a STEP file");
    }
}

TEST_F(StepInput, CutOffFileTellsTheLineWhereItEnds) {
    const std::string good = Good();
    for (const double share : {0.02, 0.3, 0.6, 0.9, 0.99}) {
        const std::string part =
            good.substr(0, static_cast<std::size_t>(share * static_cast<double>(good.size())));
        Put(part);
        const auto line = 1 + std::count(part.begin(), part.end(), '\n');
        ExpectMentions(FailureText(), "line " + std::to_string(line) + ": expected \"END-ISO-10303-21;\"");
    }
}

TEST_F(StepInput, DamagedStatementTellsItsLine) {
    std::string content = Good();
    const std::size_t place = content.find("CLOSED_SHELL(");
    ASSERT_NE(place, std::string::npos);
    const auto line =
        1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    content.replace(place, 13, "CLOSED_SHELL)");
    Put(content);
    ExpectMentions(FailureText(), "line " + std::to_string(line));
}

TEST_F(StepInput, FileWithoutSolidsIsTold) {
    for (const std::string statements : {"", "#1=CARTESIAN_POINT('',(0.,0.,0.));\n"}) {
        Put("ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
            "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n" +
            statements + "ENDSEC;\nEND-ISO-10303-21;\n");
        ExpectMentions(FailureText(), "at least one solid");
    }
}

TEST_F(StepInput, AnyDamageEndsInSolidsOrAFailure) {
    const std::string good = Good();
    // A stride that is no divisor of the line length meets names, numbers, brackets and quotes alike.
    for (std::size_t place = 20; place < good.size() - 40; place += 211) {
        std::string damaged = good;
        damaged[place] = "('#;x\xFF"[place % 6];
        Put(damaged);
        try {
            const StepDocument document = ReadStep(mPath);
            EXPECT_FALSE(document.solids.empty());
        } catch (const Failure& failure) {
            ExpectMentions(failure.what(), mPath.filename().string());
        }
    }
}

TEST_F(StepInput, AStatementNumberBeyondTheModellersIsRefusedWithItsLine) {
    const std::string good = Good();
    for (const char* number : {"#2147483648", "#99999999999", "#99999999999999999999999999"}) {
        std::string content = good;
        const std::size_t place = content.find("CLOSED_SHELL('',(#") + 17;
        const auto line =
            1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
        content.replace(place, content.find(',', place) - place, number);
        Put(content);
        ExpectMentions(FailureText(), "line " + std::to_string(line) + ": expected statement numbers up to");
    }
}

TEST_F(StepInput, ALongNumberInANameIsNoStatementNumber) {
    std::string content = Good();
    const std::size_t place = content.find("'Board'");
    ASSERT_NE(place, std::string::npos);
    content.replace(place, 7, "'Order #20260101123456 it''s #99999999999'");
    Put(content);
    EXPECT_EQ(FailureText(), "no failure");
}

TEST_F(StepInput, AReferenceToNothingIsRefusedWithItsLine) {
    std::string content = Good();
    const std::size_t place = content.find("EDGE_LOOP('',(#") + 14;
    const auto line =
        1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    content.replace(place, content.find(',', place) - place, "#87654");
    Put(content);
    ExpectMentions(FailureText(), "line " + std::to_string(line) + ": expected a statement #87654");
}

TEST_F(StepInput, AStatementOfNoFormIsRefusedWithItsLine) {
    std::string content = Good();
    const std::size_t place = content.find("DIRECTION('',(");
    ASSERT_NE(place, std::string::npos);
    const auto line =
        1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    content[place + 12] = ';';
    Put(content);
    ExpectMentions(FailureText(), "line " + std::to_string(line) + ": expected");
}

TEST_F(StepInput, ANumberOfNoFormIsToldAsItStands) {
    std::string content = Good();
    const std::size_t place = content.find("600.");
    content.replace(place, 4, "1e308");
    Put(content);
    const auto line =
        1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
    ExpectMentions(FailureText(), "line " + std::to_string(line) +
                                      ": expected well-formed STEP statements (#n = TYPE(...);), found \"#");
    ExpectMentions(FailureText(), "1e308");
}

TEST_F(StepInput, AStatementNumberThatStandsTwiceIsToldWithBothLines) {
    std::string content = Good();
    const std::size_t end = content.rfind("ENDSEC;");
    content.insert(end, "#2 = CARTESIAN_POINT('',(1.,2.,3.));\n");
    Put(content);
    const std::size_t first = content.find("\n#2 =") + 1;
    const auto lineAt = [&](std::size_t place) {
        const auto breaks =
            std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
        return std::to_string(1 + breaks);
    };
    ExpectMentions(FailureText(), "line " + lineAt(end) +
                                      ": expected a statement number of its own, #2 stands in line " +
                                      lineAt(first) + " already");
}

TEST(StepText, ALineForAMessageIsShort) {
    EXPECT_EQ(LineForMessage("one\r\n  two \r\nthree", 2), "two");
    EXPECT_EQ(LineForMessage("one\ntwo", 3), "");
    EXPECT_EQ(LineForMessage("T\xC3\xBC" + std::string(100, 'x'), 1), "T??" + std::string(57, 'x') + "...");
    EXPECT_EQ(LineForMessage("", 1), "");
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

TEST_F(StepInput, ACoordinateBeyondAnyDrawingIsRefusedWithItsLine) {
    const std::string good = Good();
    for (const char* number : {"1.E+308", "-2.E+12", "1.E+999"}) {
        std::string content = good;
        const std::size_t place = content.find("600.");
        ASSERT_NE(place, std::string::npos);
        const auto line =
            1 + std::count(content.begin(), content.begin() + static_cast<std::ptrdiff_t>(place), '\n');
        content.replace(place, 4, number);
        Put(content);
        ExpectMentions(FailureText(), "line " + std::to_string(line) + ": expected a sound statement");
    }
}

/// The notes of reading a file, a line each.
std::string NotesOf(const StepDocument& document) {
    std::string all;
    for (const StepNote& note : document.notes)
        all += std::to_string(note.line) + (note.lost ? ": " : ", nothing lost: ") + note.text + "\n";
    return all;
}

TEST_F(StepInput, AMovedVertexIsToldWithTheLineAndThePart) {
    // Each place of a corner stands in the file for its vertex and for the lines that begin there.
    const std::string good = Good();
    int told = 0;
    for (std::size_t place = good.find("(600."); place != std::string::npos;
         place = good.find("(600.", place + 1)) {
        std::string content = good;
        content.replace(place, 5, "(900.");
        Put(content);
        const StepDocument document = ReadStep(mPath);
        const bool same = solids::ExactBox(document.solids.at(0).shape).max.X() < 600.001;
        if (document.notes.empty()) {
            EXPECT_TRUE(same) << "wrong in silence, place " << place;
            continue;
        }
        ++told;
        EXPECT_GT(document.notes[0].line, 0U);
        EXPECT_TRUE(document.notes[0].lost);
        ExpectMentions(document.notes[0].text, "part \"Board\": ");
    }
    // The vertices of the four corners, at the least.
    EXPECT_GE(told, 4);
}

TEST_F(StepInput, AnEdgeBesideItsFaceIsTold) {
    WriteStep(mPath, std::vector<StepSolid>{
                         {solids::test::DrilledBoard(600, 400, 18, 1), "Board", "", "", std::nullopt}});
    std::ifstream file(mPath, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    const std::size_t place = content.find("CYLINDRICAL_SURFACE('',#");
    ASSERT_NE(place, std::string::npos);
    const std::size_t radius = content.find(',', place + 23) + 1;
    content.insert(radius, "1");
    Put(content);
    ExpectMentions(NotesOf(ReadStep(mPath)), "does not lie on its surface");
}

TEST_F(StepInput, AnOpenShellGivesNoSolidAndIsNamed) {
    std::string content = Good();
    const std::size_t place = content.find("CLOSED_SHELL('',(") + 17;
    content.erase(place, content.find(',', place) + 1 - place);
    Put(content);
    ExpectMentions(FailureText(), "is not closed");
}

TEST_F(StepInput, ASolidThatNoPartLeadsToIsTold) {
    WriteStep(mPath,
              std::vector<StepSolid>{{solids::test::Board(600, 400, 18), "Top", "", "", std::nullopt},
                                     {solids::test::Board(700, 300, 18), "Shelf", "", "", std::nullopt}});
    std::ifstream file(mPath, std::ios::binary);
    std::string content{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(ReadStep(mPath).notes.empty());
    // The second part is given the solid of the first.
    const auto solidOf = [&](std::size_t from) {
        const std::size_t start = content.rfind('#', content.find(" = MANIFOLD_SOLID_BREP", from));
        return content.substr(start, content.find(' ', start) - start);
    };
    const std::size_t first = content.find(" = MANIFOLD_SOLID_BREP");
    const std::string one = solidOf(0), other = solidOf(first + 1);
    ASSERT_NE(one, other);
    const std::size_t items = content.find(other + ")", content.find("ADVANCED_BREP_SHAPE_REPRESENTATION"));
    ASSERT_NE(items, std::string::npos);
    content.replace(items, other.size(), one);
    Put(content);
    ExpectMentions(NotesOf(ReadStep(mPath)), "the solid " + other + " is left out");
}

TEST_F(StepInput, LengthsWithoutAUnitAreTold) {
    std::string content = Good();
    // The length stands first in each context's units.
    constexpr std::string_view units = "GLOBAL_UNIT_ASSIGNED_CONTEXT";
    for (std::size_t place = content.find(units); place != std::string::npos;
         place = content.find(units, place + 1)) {
        const std::size_t first = content.find('#', place), comma = content.find(',', first);
        content.erase(first, comma + 1 - first);
    }
    Put(content);
    ExpectMentions(NotesOf(ReadStep(mPath)), "its lengths have no unit");
}

TEST_F(StepInput, EdgeMadeOfItselfIsTold) {
    std::string content = Good();
    const std::size_t place = content.find(" = EDGE_CURVE(");
    ASSERT_NE(place, std::string::npos);
    const std::size_t start = content.rfind('#', place);
    const std::string number = content.substr(start, place - start);
    content.replace(place, content.find(';', place) - place, " = ORIENTED_EDGE('',*,*," + number + ",.F.)");
    Put(content);
    ExpectMentions(FailureText(), "an oriented edge that holds an edge");
}

TEST_F(StepInput, ATraceOnASurfaceThatHoldsNoCurveIsTold) {
    std::string content = Good();
    const std::size_t place = content.find(" = DEFINITIONAL_REPRESENTATION(");
    ASSERT_NE(place, std::string::npos);
    // The point of the line that it holds stands in its place.
    const std::size_t first = content.find('#', place), end = content.find(')', first);
    const std::string line = "\n" + content.substr(first, end - first) + " = LINE(";
    const std::size_t held = content.find(line);
    ASSERT_NE(held, std::string::npos);
    const std::size_t point = content.find('#', held + line.size());
    content.replace(first, end - first, content.substr(point, content.find(',', point) - point));
    Put(content);
    ExpectMentions(FailureText(), "has to hold a curve");
}

TEST_F(StepInput, VertexWithoutAPlaceInSpaceIsTold) {
    std::string content = Good();
    const std::string corner = "CARTESIAN_POINT('',(600.,0.,0.))";
    for (std::size_t place = content.find(corner); place != std::string::npos; place = content.find(corner)) {
        content.replace(place, corner.size(), "CARTESIAN_POINT('',(600.,0.))");
    }
    Put(content);
    ExpectMentions(FailureText(), "the vertex is no point in space");
}

TEST_F(StepInput, AssemblyThatHoldsItselfIsTold) {
    WriteNested(mPath, "");
    std::ifstream file(mPath, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(file), {});
    // The last two references of a usage are assembly and component: the carcass gets itself for a part.
    const std::size_t usage = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE('", content.find("'Left'") - 60);
    const std::size_t end = content.find(";", usage);
    const std::size_t component = content.rfind('#', end);
    const std::size_t assembly = content.rfind('#', component - 1);
    const std::string number = content.substr(assembly, content.find(',', assembly) - assembly);
    content.replace(component, content.find(',', component) - component, number);
    Put(content);
    ExpectMentions(FailureText(), "refers to itself");
}

TEST_F(StepInput, DamagedColoursAreTheOnlyThingLost) {
    WriteStep(mPath,
              std::vector<StepSolid>{{solids::test::Board(600, 400, 18), "Board", "", "", Rgb{10, 200, 30}}});
    std::ifstream file(mPath, std::ios::binary);
    std::string content(std::istreambuf_iterator<char>(file), {});
    const std::size_t place = content.find("SURFACE_SIDE_STYLE('',(");
    ASSERT_NE(place, std::string::npos);
    content.replace(place, 23, "SURFACE_SIDE_STYLE($,'(");
    content.replace(content.find("));", place), 3, ")');");
    Put(content);
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(document.solids.at(0).name, "Board");
    EXPECT_FALSE(document.solids[0].color);
    ASSERT_EQ(document.notes.size(), 1U);
    ExpectMentions(document.notes[0].text, "colours and layers passed over");
}

TEST_F(StepInput, NestedAssembliesPlaceTheirPartsExactly) {
    WriteNested(mPath, "");
    const StepDocument document = ReadStep(mPath);
    ASSERT_EQ(document.solids.size(), 4U);
    // Two carcasses, the second moved and turned a quarter about Z; each holds a side twice.
    EXPECT_EQ(document.solids[0].name, "Side");
    EXPECT_EQ(document.solids[0].assembly, "Carcass");
    const auto corner = [&](std::size_t index) { return solids::ExactBox(document.solids[index].shape); };
    EXPECT_EQ(corner(0).min.X(), 0);
    EXPECT_EQ(corner(0).max.X(), 18.5);
    EXPECT_EQ(corner(1).min.X(), 582.25);
    EXPECT_EQ(corner(1).max.X(), 582.25 + 18.5);
    EXPECT_EQ(corner(2).min.Y(), 0);
    EXPECT_EQ(corner(2).max.Y(), 18.5);
    EXPECT_EQ(corner(2).max.X(), 1000.5);
    EXPECT_EQ(corner(2).min.X(), 1000.5 - 560);
    EXPECT_EQ(corner(3).min.Y(), 582.25);
    EXPECT_EQ(corner(3).max.Z(), 720);
}

TEST_F(StepInput, InstanceNameStandsInForAMissingProductName) {
    WriteNested(mPath, "namelessSide");
    const StepDocument document = ReadStep(mPath);
    ASSERT_EQ(document.solids.size(), 4U);
    EXPECT_EQ(document.solids[0].name, "Left");
    EXPECT_EQ(document.solids[1].name, "Right");
}

TEST_F(StepInput, InchesComeOutInMillimetres) {
    std::string content = Good();
    const std::string metric = "( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) )";
    for (std::size_t place = content.find(metric); place != std::string::npos;
         place = content.find(metric, place)) {
        content.replace(place, metric.size(),
                        "( CONVERSION_BASED_UNIT('INCH',#900001) LENGTH_UNIT() NAMED_UNIT(#900002) )");
    }
    const std::string extra =
        "#900001 = LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(25.4),#900003);\n"
        "#900002 = DIMENSIONAL_EXPONENTS(1.,0.,0.,0.,0.,0.,0.);\n"
        "#900003 = ( LENGTH_UNIT() NAMED_UNIT(*) SI_UNIT(.MILLI.,.METRE.) );\n";
    content.insert(content.rfind("ENDSEC;"), extra);
    Put(content);
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(document.unit, "inch");
    EXPECT_NEAR(solids::ExactBox(document.solids.at(0).shape).SizeX(), 600 * 25.4, 1e-9);
}

TEST_F(StepInput, StandardOutputStaysEmpty) {
    Good();
    ::testing::internal::CaptureStdout();
    ReadStep(mPath);
    WriteStep(mPath, ReadStep(mPath).solids);
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
}

TEST_F(StepInput, EarlierReadingLeavesNothingBehind) {
    Good();
    const StepDocument first = ReadStep(mPath);
    const StepDocument second = ReadStep(mPath);
    EXPECT_EQ(first.solids.size(), second.solids.size());
    EXPECT_EQ(solids::Volume(first.solids[0].shape), solids::Volume(second.solids[0].shape));
}

TEST(StepText, CodePageFollowsTheBytes) {
    EXPECT_EQ(CodePageOf("plain"), CodePage::Utf8);
    EXPECT_EQ(CodePageOf("T\xC3\xBCr"), CodePage::Utf8);
    EXPECT_EQ(CodePageOf("T\xFCr"), CodePage::Western);
    EXPECT_EQ(CodePageOf("'\xC2\xFB\xEA\xEB\xFE\xF7'"), CodePage::Cyrillic);
}

TEST(StepText, BrokenLineIsThatOfTheStatement) {
    EXPECT_EQ(BrokenLine("ISO-10303-21;\n#1=A('x;(',(1,2));\nEND-ISO-10303-21;\n"), 0U);
    EXPECT_EQ(BrokenLine("ISO-10303-21;\n#1=A((1,2);\nEND-ISO-10303-21;\n"), 2U);
    EXPECT_EQ(BrokenLine("ISO-10303-21;\n#1=A(1,2));\nEND-ISO-10303-21;\n"), 2U);
    EXPECT_EQ(BrokenLine("ISO-10303-21;\n#1=A(\n'x);\n"), 2U);
    EXPECT_EQ(BrokenLine("ISO-10303-21;\n/* a comment; ( */\n#1=A(1)\n"), 3U);
}

TEST(StepText, StatementsAreFoundByNumber) {
    EXPECT_EQ(LineOfStatement("#11=A(#1);\n#1 = B();\n", 1), 2U);
    EXPECT_EQ(LineOfStatement("#11=A(#1);\n", 1), 0U);
    EXPECT_EQ(LineOfStatement("", 1), 0U);
    const StatementLines lines("#11=A(#1,#2);\n#1\n = B();\n#3=C(#11);");
    EXPECT_EQ(lines.Of(11), 1U);
    EXPECT_EQ(lines.Of(1), 2U);
    EXPECT_EQ(lines.Of(3), 4U);
    EXPECT_EQ(lines.Of(2), 0U);
    EXPECT_EQ(StatementLines("").Of(1), 0U);
}

TEST(StepText, OrientedEdgesHoldEdges) {
    EXPECT_EQ(NestedOrientedEdge("#1=ORIENTED_EDGE('',*,*,#2,.T.);\n#2=EDGE_CURVE('',#3,#4,#5,.T.);"), 0);
    EXPECT_EQ(NestedOrientedEdge("#1 = ORIENTED_EDGE('',*,*,#2,.T.);\n#2= ORIENTED_EDGE('',*,*,#3,.T.);"), 1);
    EXPECT_EQ(NestedOrientedEdge("#1=ORIENTED_EDGE('#1',*,*,#2,.T.);\n#2=EDGE_CURVE('#2',#3,#4,#5,.T.);"), 0);
    EXPECT_EQ(
        NestedOrientedEdge("#1=ORIENTED_EDGE('it''s; #1',*,*,#2,.T.);\n#2=ORIENTED_EDGE('',*,*,#3,.T.);"), 1);
    EXPECT_EQ(NestedOrientedEdge("ORIENTED_EDGE"), 0);
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
