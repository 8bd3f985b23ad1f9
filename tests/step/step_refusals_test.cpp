// Files that nothing can be read from: missing, empty, cut off, damaged where the only part hangs on it.
#include <gtest/gtest.h>

#include <fstream>

#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

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

TEST_F(StepInput, AnOpenShellGivesNoSolidAndIsNamed) {
    std::string content = Good();
    const std::size_t place = content.find("CLOSED_SHELL('',(") + 17;
    content.erase(place, content.find(',', place) + 1 - place);
    Put(content);
    ExpectMentions(FailureText(), "is not closed");
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
    for (std::size_t place = content.find(corner); place != std::string::npos; place = content.find(corner))
        content.replace(place, corner.size(), "CARTESIAN_POINT('',(600.,0.))");
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

TEST_F(StepInput, AnAssemblyUsageWithoutAPlaceIsTold) {
    WriteNested(mPath, "");
    std::string content = Content();
    const std::size_t usage = content.find("NEXT_ASSEMBLY_USAGE_OCCURRENCE(", content.find("'Left'") - 60);
    const std::string second = "#900001 = " + content.substr(usage, content.find(';', usage) - usage) + ";\n";
    content.insert(content.rfind("ENDSEC;"), second);
    Put(content);
    const StepDocument document = ReadStep(mPath);
    EXPECT_EQ(document.solids.size(), 4U);
    EXPECT_EQ(NotesOf(document),
              LineAt(content, content.find("#900001")) +
                  ": one more part \"Side\" is left out: its assembly usage #900001 has no "
                  "place\n");
}

TEST_F(StepInput, AVoidThatIsItsOwnShellIsTold) {
    std::string content = Good();
    const std::size_t solid = content.find("MANIFOLD_SOLID_BREP('");
    const std::size_t close = content.find(')', solid);
    const std::string shell = content.substr(content.rfind('#', close), close - content.rfind('#', close));
    content.insert(close, ",(#900001)");
    content.replace(solid, 19, "BREP_WITH_VOIDS");
    content.insert(content.rfind("ENDSEC;"), "#900001 = ORIENTED_CLOSED_SHELL('',*," + shell + ",.F.);\n");
    Put(content);
    ExpectMentions(NotesOf(ReadStep(mPath)), "its void is its own shell");
}

}  // namespace
}  // namespace brenvik::step
