// Files as people really have them: careless, nested, in inches.
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "step/nested_assembly.h"
#include "step/step_input.h"

namespace brenvik::step {
namespace {

TEST_F(StepInput, ALongNumberInANameIsNoStatementNumber) {
    std::string content = Good();
    const std::size_t place = content.find("'Board'");
    ASSERT_NE(place, std::string::npos);
    content.replace(place, 7, "'Order #20260101123456 it''s #99999999999'");
    Put(content);
    EXPECT_EQ(FailureText(), "no failure");
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

TEST_F(StepInput, PartsOfAnAssemblyThatNobodyHasNamedAreRemarked) {
    WriteNested(mPath, "namelessSide");
    const std::regex usage("NEXT_ASSEMBLY_USAGE_OCCURRENCE\\('[^']*','[^']*'");
    Put(std::regex_replace(Content(), usage, "NEXT_ASSEMBLY_USAGE_OCCURRENCE('',''"));
    const StepDocument document = ReadStep(mPath);
    ASSERT_EQ(document.solids.size(), 4U);
    EXPECT_EQ(document.solids[0].name, mPath.stem().string() + " 1");
    ExpectMentions(NotesOf(document),
                   "0, nothing lost: 4 part(s) without a name of their own are named after "
                   "the file, the first one in \"" +
                       document.solids[0].assembly + "\"\n");
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
    EXPECT_EQ(document.millimetresPerUnit, std::vector<double>{25.4});
    EXPECT_NEAR(solids::ExactBox(document.solids.at(0).shape).SizeX(), 600 * 25.4, 1e-9);
}

TEST_F(StepInput, BodiesComeOutInTheUnitThatIsAskedFor) {
    Good();
    const StepDocument inches = ReadStep(mPath, LengthUnit::Inch);
    EXPECT_EQ(inches.millimetresPerUnit, std::vector<double>{1});
    EXPECT_NEAR(solids::ExactBox(inches.solids.at(0).shape).SizeX(), 600 / 25.4, 1e-9);
    EXPECT_EQ(NotesOf(inches), "");
    EXPECT_NEAR(solids::ExactBox(ReadStep(mPath).solids.at(0).shape).SizeX(), 600, 1e-9);
}

TEST_F(StepInput, AFileIsWrittenInTheUnitOfItsBodies) {
    const std::vector<StepSolid> parts{{solids::test::Board(600, 400, 18), "Board", "Job", "", std::nullopt}};
    std::ofstream(mPath, std::ios::binary) << StepText(mPath, parts, LengthUnit::Inch);
    EXPECT_NE(Content().find("CONVERSION_BASED_UNIT('INCH'"), std::string::npos);
    EXPECT_NE(Content().find("(600.,"), std::string::npos);
    const StepDocument inches = ReadStep(mPath, LengthUnit::Inch);
    EXPECT_EQ(inches.millimetresPerUnit, std::vector<double>{25.4});
    EXPECT_NEAR(solids::ExactBox(inches.solids.at(0).shape).SizeX(), 600, 1e-9);
    EXPECT_NEAR(solids::ExactBox(ReadStep(mPath).solids.at(0).shape).SizeX(), 600 * 25.4, 1e-9);
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

}  // namespace
}  // namespace brenvik::step
