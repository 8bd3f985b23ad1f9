// Files of other programs, with what an independent reading found in them.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>
#include <set>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "checkout_paths.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/solids/measure.h"
#include "drafting_host/solids/rebuild.h"
#include "drafting_host/step/step_reader.h"

namespace brenvik::step {
namespace {

const std::filesystem::path samples = std::filesystem::path(BRENVIK_SOURCE_DIR) / "../shared/data/step";

struct Sample {
    const char* file;
    std::size_t solids;
    double volume;
    std::array<double, 3> box;
    /// Of the volume; fewer where free-form faces are all there is, which programs integrate differently.
    int digits = 7;

    friend void PrintTo(const Sample& each, std::ostream* out) { *out << each.file; }
};

constexpr std::array<Sample, 29> sampleTable{{
    // Its box by a fine mesh; a box around the control points of its splines is up to 3 mm larger.
    {"cgma__cub_model.step", 2, 11545.347, {16, 48.0974, 51.0795}},
    {"meshkit__cube.stp", 1, 1000, {10, 10, 10}},
    {"meshkit__brick.stp", 1, 1, {1, 1, 1}},
    {"meshkit__cylcube.stp", 2, 1785.3982, {40, 10, 10}},
    {"meshkit__threeholecube.stp", 1, 0.91706593, {1, 1, 1}},
    {"meshkit__simpletet.stp", 1, 0.4330127, {1.5, 1.73205, 1}},
    {"meshkit__sphere.stp", 1, 4188.7902, {20, 20, 20}},
    {"AAGNet__examples_partA.step", 1, 2.038815e+14, {66847.4, 86350.1, 50000}},
    {"MFCAD__0-0-0-6-19.step", 1, 917.79803, {10, 10, 10}},
    {"MFCAD__0-5-9-9-13-23.step", 1, 853.0323, {10, 10, 10}},
    {"MFCAD__0-6-6-9-9-23.step", 1, 538.07357, {10, 10, 10}},
    {"MFCAD__1-10-10-10-10-23.step", 1, 842.17922, {10, 10, 10}},
    {"MFCAD__2-3-4-6-9-23.step", 1, 865.89111, {10, 10, 10}},
    {"MFCAD__2-9-9-11-19.step", 1, 743.74327, {10, 10, 10}},
    {"MFCAD__4-4-7-8-12-23.step", 1, 721.95354, {10, 10, 10}},
    {"Woodworking__Bookcase_001.step", 8, 22368000, {500, 303, 800}},
    {"Woodworking__Drawer_001.step", 5, 3832272, {500, 608, 140}},
    {"Woodworking__Table_002.step", 1, 31245982, {1000, 500, 600}},
    {"Woodworking__Top_001.step", 1, 7954200, {900, 500, 18}},
    {"Woodworking__StorageBox_001.step", 6, 1320000, {300, 200, 106}},
    {"Woodworking__msf003.step", 3, 2317266, {456, 400, 107}},
    {"Woodworking__Test002_edgeband.step", 18, 58919400, {500, 618, 1072}},
    {"gsap__cnc_base__Model_drill_press_table_base_side_left_001.step", 1, 339495.84, {18, 300, 75}},
    {"gsap__cnc_fence_side_reversal__Model_drill_press_table_fence_face_r_001.step",
     1,
     566431.27,
     {337.5, 32, 65}},
    {"gsap__mb_sc_drawer_front.step", 1, 468548, {464.6, 88, 12}},
    {"gsap__mb_sc_drawer_bottom.step", 1, 1940462.4, {452.6, 368, 12}},
    {"Lever-Locks__key.step", 1, 841.08979, {30.7021, 19.05, 5.74851}, 6},
    {"mediapad__box.step", 2, 49690.744, {70, 83, 30.5}, 6},
    {"occt-import-js__footback.stp", 1, 2358.2889, {40, 20, 20}, 3},
}};
/// Shape representations of it hold items of a wrong type, and nobody knows its volume.
constexpr std::string_view sampleWithFalseItems = "stepcode__io1-cm-214.stp";

/// Half of the last digit that a table of eight (boxes: six) digits shows.
double Shown(double value, int digits) {
    return 0.51 * std::pow(10.0, std::floor(std::log10(std::abs(value))) + 1 - digits);
}

class StepSamples : public ::testing::TestWithParam<Sample> {};

TEST_P(StepSamples, SolidsVolumesAndBoxesAgree) {
    const std::filesystem::path path = samples / GetParam().file;
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "sample files are not at hand: " << path;
    const StepDocument document = ReadStep(path);
    ASSERT_EQ(document.solids.size(), GetParam().solids);
    double volume = 0;
    std::array<double, 3> low, high;
    low.fill(std::numeric_limits<double>::infinity());
    high.fill(-std::numeric_limits<double>::infinity());
    for (const StepSolid& part : document.solids) {
        EXPECT_FALSE(part.name.empty());
        EXPECT_TRUE(solids::IsSolid(part.shape)) << part.name;
        EXPECT_TRUE(solids::Valid(part.shape)) << part.name;
        EXPECT_FALSE(solids::HasLocations(part.shape)) << part.name;
        EXPECT_GT(solids::MeasureShape(part.shape).status, 0) << part.name;
        volume += solids::Volume(part.shape);
        const solids::Box box = solids::ExactBox(part.shape);
        for (int axis = 0; axis < 3; ++axis) {
            const auto index = static_cast<std::size_t>(axis);
            low[index] = std::min(low[index], box.min.Coord(axis + 1));
            high[index] = std::max(high[index], box.max.Coord(axis + 1));
        }
    }
    // One digit less than the table shows: edges of free-form faces lie that far off their surfaces.
    EXPECT_NEAR(volume, GetParam().volume, Shown(GetParam().volume, GetParam().digits));
    for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(high[axis] - low[axis], GetParam().box[axis], Shown(GetParam().box[axis], 6))
            << "axis " << axis;
    }
}

INSTANTIATE_TEST_SUITE_P(Files, StepSamples, ::testing::ValuesIn(sampleTable), [](const auto& sample) {
    std::string name = sample.param.file;
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
});

TEST(StepSampleTable, NoSampleIsForgotten) {
    if (!std::filesystem::exists(samples)) GTEST_SKIP() << "sample files are not at hand: " << samples;
    std::set<std::string> known{std::string(sampleWithFalseItems)};
    for (const Sample& sample : sampleTable) known.insert(sample.file);
    for (const auto& entry : std::filesystem::directory_iterator(samples))
        EXPECT_TRUE(known.contains(entry.path().filename().string())) << entry.path();
}

TEST(StepSampleTable, FalseItemsBesideAShapeLeaveTheSolid) {
    const std::filesystem::path path = samples / sampleWithFalseItems;
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "sample files are not at hand: " << path;
    const StepDocument document = ReadStep(path);
    ASSERT_EQ(document.solids.size(), 1U);
    EXPECT_TRUE(solids::Valid(document.solids[0].shape));
    ASSERT_FALSE(document.notes.empty());
    for (const StepNote& note : document.notes) EXPECT_FALSE(note.lost) << note.line << ": " << note.text;
}

TEST(StepSampleNames, BookcaseGivesItsBoards) {
    const std::filesystem::path path = samples / "Woodworking__Bookcase_001.step";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "sample files are not at hand: " << path;
    const StepDocument document = ReadStep(path);
    std::vector<std::string> names;
    for (const StepSolid& part : document.solids) {
        names.push_back(part.name);
        EXPECT_EQ(part.assembly, "Bookcase_001");
        const solids::Extents extents = solids::MeasureShape(part.shape);
        EXPECT_EQ(extents.status, solids::measure_status::Square);
        for (const double side : {extents.d1, extents.d2, extents.d3})
            EXPECT_NEAR(side, std::round(side), 1e-11) << part.name;
    }
    const std::vector<std::string> wanted{"Side left", "Side right", "Top",     "Bottom",
                                          "Back",      "Shelf 1",    "Shelf 2", "Shelf 3"};
    EXPECT_EQ(names, wanted);
    EXPECT_EQ(document.millimetresPerUnit, std::vector<double>{1});
}

TEST(StepSampleNames, CyrillicNamesInAnEightBitCodePageComeOutAsText) {
    const std::filesystem::path path = samples / "cgma__cub_model.step";
    if (!std::filesystem::exists(path)) GTEST_SKIP() << "sample files are not at hand: " << path;
    const StepDocument document = ReadStep(path);
    ASSERT_EQ(document.solids.size(), 2U);
    EXPECT_EQ(document.solids[0].name, "Выключатель BNG-2000");
    EXPECT_EQ(document.solids[1].name, "Клавиша");
    EXPECT_EQ(document.solids[0].assembly, "Выключатель");
    const StepNote codePage{"names read as code page 1251", 0, false};
    EXPECT_EQ(document.notes, std::vector<StepNote>{codePage});
}

}  // namespace
}  // namespace brenvik::step
