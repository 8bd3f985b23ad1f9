// What is written comes back: volumes, places, names, assemblies, layers, colours.
#include <gtest/gtest.h>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakeSphere.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <TopExp_Explorer.hxx>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/failure.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/step/step_reader.h"
#include "solids/parts.h"
#include "step/write_step.h"

namespace brenvik::step {
namespace {

using solids::test::Board;
using solids::test::DrilledBoard;
using solids::test::Mirrored;
using solids::test::OddPlace;

/// A folder of the test's own that goes with it.
class StepFiles : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        mFolder = std::filesystem::path(::testing::TempDir()) / ("brenvik_step_" + std::string(test->name()));
        std::filesystem::remove_all(mFolder);
        std::filesystem::create_directories(mFolder);
    }
    void TearDown() override { std::filesystem::remove_all(mFolder); }

    std::filesystem::path File(const std::string& name) const { return mFolder / name; }

    static std::string Content(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    StepDocument RoundTrip(const std::vector<StepSolid>& parts) const {
        WriteStep(File("out.step"), parts);
        return ReadStep(File("out.step"));
    }

    std::filesystem::path mFolder;
};

TEST_F(StepFiles, TransparencyAndWhatIsHiddenComeBack) {
    std::vector<StepSolid> parts{{Board(600, 400, 18), "Glass", "Job", "Doors", Rgb{0, 120, 240, 102}},
                                 {Board(500, 400, 18), "Hidden", "Job", "Doors", Rgb{200, 0, 0}},
                                 {Board(300, 200, 12), "Off", "", "Construction", Rgb{0, 0, 255}},
                                 {Board(100, 20, 10), "Plain", "", "", std::nullopt}};
    parts[1].visible = false;
    parts[2].layerVisible = false;
    const StepDocument document = RoundTrip(parts);
    ASSERT_EQ(document.solids.size(), parts.size());
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const auto back = std::ranges::find(document.solids, parts[index].name, &StepSolid::name);
        ASSERT_NE(back, document.solids.end()) << parts[index].name;
        EXPECT_EQ(back->color, parts[index].color) << parts[index].name;
        EXPECT_EQ(back->visible, parts[index].visible) << parts[index].name;
        EXPECT_EQ(back->layerVisible, parts[index].layerVisible) << parts[index].name;
    }
    EXPECT_TRUE(document.notes.empty());
}

TEST_F(StepFiles, NamesAssembliesLayersAndColoursComeBack) {
    const std::vector<StepSolid> parts{
        {Board(600, 400, 18), "Türseite links", "Küche Änne", "Eiche hell", Rgb{200, 100, 50}},
        {Board(500, 400, 18), "Boden", "Küche Änne", "", std::nullopt},
        {Board(300, 200, 12), "Дверь", "Bar's \\ 2\"", "layer 2", Rgb{0, 0, 255}},
        {Board(100, 20, 10), "Strip", "", "", Rgb{255, 255, 255}},
        {Board(90, 20, 10), "面板", "", "", std::nullopt},
        {Board(80, 20, 10), "Brett \xF0\x9F\xAA\xB5 1", "", "", std::nullopt},
    };
    const StepDocument document = RoundTrip(parts);
    ASSERT_EQ(document.solids.size(), parts.size());
    for (const StepSolid& part : parts) {
        const auto found = std::ranges::find(document.solids, part.name, &StepSolid::name);
        ASSERT_NE(found, document.solids.end()) << part.name;
        EXPECT_EQ(found->assembly, part.assembly);
        EXPECT_EQ(found->layer, part.layer) << part.name;
        EXPECT_EQ(found->color, part.color) << part.name;
        EXPECT_NEAR(solids::Volume(found->shape) / solids::Volume(part.shape), 1, 1e-12);
    }
    EXPECT_EQ(document.millimetresPerUnit, std::vector<double>{1});
    EXPECT_TRUE(document.notes.empty());
}

TEST_F(StepFiles, VolumesAndBoxesComeBackToNineDigits) {
    const std::vector<TopoDS_Shape> shapes{
        Board(596.3, 381.7, 18.9),
        DrilledBoard(600, 400, 18, 12),
        solids::Transformed(DrilledBoard(600, 400, 18, 3), OddPlace()),
        BRepPrimAPI_MakeCylinder(12.3, 700).Shape(),
        BRepPrimAPI_MakeSphere(25).Shape(),
        BRepPrimAPI_MakeTorus(40, 10).Shape(),
        Mirrored(DrilledBoard(300, 200, 18, 2), gp_Ax2(gp_Pnt(1, 2, 3), gp::DX())),
    };
    std::vector<StepSolid> parts;
    for (const TopoDS_Shape& shape : shapes)
        parts.push_back({shape, "Part " + std::to_string(parts.size()), "Job", "", std::nullopt});
    const StepDocument document = RoundTrip(parts);
    ASSERT_EQ(document.solids.size(), parts.size());
    for (std::size_t index = 0; index < parts.size(); ++index) {
        EXPECT_EQ(document.solids[index].name, parts[index].name);
        EXPECT_NEAR(solids::Volume(document.solids[index].shape) / solids::Volume(parts[index].shape), 1,
                    1e-9);
        const solids::Box before = solids::ExactBox(parts[index].shape);
        const solids::Box after = solids::ExactBox(document.solids[index].shape);
        EXPECT_NEAR(after.min.Distance(before.min), 0, 1e-9);
        EXPECT_NEAR(after.max.Distance(before.max), 0, 1e-9);
        EXPECT_TRUE(solids::Valid(document.solids[index].shape));
    }
}

TEST_F(StepFiles, TheSameShapeTwiceStaysTwoParts) {
    const TopoDS_Shape board = Board(600, 400, 18);
    const StepDocument document =
        RoundTrip({{board, "Left", "A", "", std::nullopt},
                   {board, "Right", "B", "", std::nullopt},
                   {board.Located(TopLoc_Location(OddPlace())), "Third", "A", "", std::nullopt}});
    ASSERT_EQ(document.solids.size(), 3U);
    for (const char* name : {"Left", "Right", "Third"})
        EXPECT_EQ(std::ranges::count(document.solids, name, &StepSolid::name), 1) << name;
}

TEST_F(StepFiles, PartOfSeveralLumpsGivesOneEntryEachWithItsName) {
    const TopoDS_Shape lumps = solids::test::TwoPieces();
    const StepDocument document = RoundTrip({{lumps, "Pair", "", "", std::nullopt}});
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].name, "Pair");
    EXPECT_EQ(document.solids[1].name, "Pair");
}

TEST_F(StepFiles, FileIsPlainAsciiAndTellsItsSchema) {
    WriteStep(File("Müller.step"), std::vector<StepSolid>{{Board(1, 2, 3), "Größe", "", "", std::nullopt}});
    const std::string content = Content(File("Müller.step"));
    EXPECT_TRUE(std::ranges::all_of(content, [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
    EXPECT_NE(content.find("AUTOMOTIVE_DESIGN"), std::string::npos);
    EXPECT_NE(content.find("Gr\\X2\\00F600DF\\X0\\e"), std::string::npos);
    EXPECT_EQ(ReadStep(File("Müller.step")).solids.at(0).name, "Größe");
}

TEST_F(StepFiles, WritingWhatIsNoSolidIsTold) {
    EXPECT_THROW(StepText("a.step", {}), Failure);
    EXPECT_THROW(StepText("a.step", std::vector<StepSolid>{{TopoDS_Shape(), "A", "", "", std::nullopt}}),
                 Failure);
    const TopoDS_Shape face = TopExp_Explorer(Board(1, 2, 3), TopAbs_FACE).Current();
    EXPECT_THROW(StepText("a.step", std::vector<StepSolid>{{face, "A", "", "", std::nullopt}}), Failure);
}

}  // namespace
}  // namespace brenvik::step
