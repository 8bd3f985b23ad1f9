// What we write we can read: every body comes back with its solids, faces, sizes and places, or the one who
// saves is told. The long set (BRENVIK_LONG_TESTS) takes twelve of each family, the other one of the quicker
// families.
#include <gtest/gtest.h>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeTorus.hxx>
#include <TopExp_Explorer.hxx>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "base/failure.h"
#include "checkout_paths.h"
#include "drafting_host/acis/proven_body.h"
#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/mass.h"
#include "drafting_host/step/step_reader.h"
#include "made_bodies.h"

namespace brenvik::acis::testing {
namespace {

bool LongSet() { return std::getenv("BRENVIK_LONG_TESTS") != nullptr; }

std::string Joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

int FacesOf(const TopoDS_Shape& shape) {
    int count = 0;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next()) ++count;
    return count;
}

/// Bodies there and back, counted.
struct Tally {
    int bodies = 0, whole = 0, told = 0;

    /// `share` is how much the volume may differ: splines stand for turned profiles, over which the modeller
    /// integrates another way.
    void Take(const std::string& name, const TopoDS_Shape& shape, double share) {
        ++bodies;
        ProvenBody proven;
        try {
            proven = ProveBody(shape);
        } catch (const WriteFailure& failure) {
            ++told;
            std::printf("%s: told: %s\n", name.c_str(), failure.what());
            return;
        }
        const ReadResult read = ReadText(Joined(proven.lines));
        for (const Problem& problem : read.problems)
            EXPECT_FALSE(problem.lost) << name << ": " << problem.text;
        ASSERT_EQ(read.bodies.size(), 1U) << name;
        const TopoDS_Shape& back = read.bodies.front();
        EXPECT_EQ(FacesOf(back), FacesOf(shape)) << name;
        const double volume = solids::Volume(shape);
        EXPECT_NEAR(solids::Volume(back), volume, share * std::abs(volume)) << name;
        const solids::Box before = solids::ExactBox(shape);
        const solids::Box after = solids::ExactBox(back);
        EXPECT_LT(std::max(before.min.Distance(after.min), before.max.Distance(after.max)), 0.02) << name;
        ++whole;
    }
};

TEST(ReadBack, EverySolidOfTheSampleFilesComesBack) {
    const std::filesystem::path samples = std::filesystem::path(BRENVIK_SOURCE_DIR) / "../shared/data/step";
    if (!std::filesystem::is_directory(samples)) GTEST_SKIP() << "the sample files are absent";
    Tally tally;
    for (const auto& entry : std::filesystem::directory_iterator(samples)) {
        try {
            const step::StepDocument document = step::ReadStep(entry.path());
            for (const step::StepSolid& solid : document.solids)
                tally.Take(entry.path().filename().string() + ", " + solid.name, solid.shape, 3e-5);
        } catch (const Failure&) {
            continue;  // told by the reader, with which other tests deal
        }
    }
    EXPECT_GE(tally.bodies, 60);
    EXPECT_EQ(tally.whole, tally.bodies);
}

// In inches curves on faces are matched more coarsely for their size, and swing across the ends of the
// surface.
TEST(ReadBack, CurvesThatSwingAcrossTheEndOfTheirSurfaceComeBack) {
    const std::filesystem::path sample =
        std::filesystem::path(BRENVIK_SOURCE_DIR) / "../shared/data/step/cgma__cub_model.step";
    if (!std::filesystem::exists(sample)) GTEST_SKIP() << "the sample file is absent";
    Tally tally;
    for (const step::StepSolid& solid : step::ReadStep(sample, LengthUnit::Inch).solids)
        tally.Take(solid.name, solid.shape, 3e-5);
    EXPECT_EQ(tally.bodies, 2);
    EXPECT_EQ(tally.whole, 2);
}

TEST(ReadBack, NoMadeBodyIsLostInSilence) {
    Tally tally;
    for (const BodyFamily& family : BodyFamilies()) {
        if (!LongSet() && !family.quick) continue;
        for (unsigned seed = 0; seed < (LongSet() ? 12U : 1U); ++seed) {
            const MadeBody made = Make(family, seed);
            if (!made.shape.IsNull() && made.sound) tally.Take(made.name, made.shape, 5e-3);
        }
    }
    EXPECT_GE(tally.bodies, LongSet() ? 280 : 12);
    // Told, not lost.
    EXPECT_LE(tally.told * (LongSet() ? 100 : 12), tally.bodies)
        << tally.told << " of " << tally.bodies << " could not be written";
}

// Rounded edges that end beside their corners, sheets in another order than their pieces hang together in,
// loosened edges on slim ellipses and around the tip of a turned face.
TEST(ReadBack, BodiesWithGapsAndSheetsOfSeveralPiecesComeBack) {
    const std::vector<std::pair<std::string, unsigned>> seeds = {
        {"filleted", 2}, {"filleted", 5}, {"sheet", 5}, {"loose", 4}, {"loose", 10}};
    Tally tally;
    for (const auto& [name, seed] : seeds) {
        for (const BodyFamily& family : BodyFamilies()) {
            if (family.name != name) continue;
            const MadeBody made = Make(family, seed);
            ASSERT_TRUE(made.sound) << made.name;
            tally.Take(made.name, made.shape, 5e-3);
        }
    }
    EXPECT_EQ(tally.bodies, 5);
    EXPECT_EQ(tally.whole, 5);
}

TEST(ReadBack, ATorusThatCrossesItselfIsWrittenAsASpline) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(10., 10., 10.).Shape();
    EXPECT_TRUE(FitsPlainly(box));
    const BodyFamily* turnedArc = nullptr;
    for (const BodyFamily& family : BodyFamilies())
        if (family.name == std::string("turned arc")) turnedArc = &family;
    ASSERT_NE(turnedArc, nullptr);
    for (unsigned seed = 0; seed < 3; ++seed) {
        const MadeBody lemon = Make(*turnedArc, seed);
        EXPECT_FALSE(FitsPlainly(lemon.shape));
        EXPECT_FALSE(ReadBackFault(lemon.shape, ProveBody(lemon.shape).lines).has_value()) << lemon.name;
    }
}

TEST(ReadBack, EdgesBesideTheirFacesAreHealedAndTold) {
    Dice dice(7);
    TopoDS_Shape box = BRepPrimAPI_MakeBox(100., 60., 18.).Shape();
    box = Loosened(box, 4e-3, dice);
    EXPECT_FALSE(FitsPlainly(box));
    const ProvenBody proven = ProveBody(box);
    const ReadResult read = ReadText(Joined(proven.lines));
    ASSERT_EQ(read.bodies.size(), 1U);
    EXPECT_EQ(FacesOf(read.bodies.front()), 6);
    EXPECT_NEAR(solids::Volume(read.bodies.front()), 108000, 1);
}

TEST(ReadBack, AChangedTextIsNoticed) {
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100., 60., 18.).Shape();
    const TopoDS_Shape other = BRepPrimAPI_MakeBox(100., 60., 19.).Shape();
    EXPECT_FALSE(ReadBackFault(box, WriteText(box)).has_value());
    EXPECT_TRUE(ReadBackFault(box, WriteText(other)).has_value());
    EXPECT_TRUE(ReadBackFault(box, {"400 0 0 0"}).has_value());
    EXPECT_TRUE(ReadBackFault(BRepPrimAPI_MakeTorus(20., 5.).Shape(), WriteText(box)).has_value());
}

}  // namespace
}  // namespace brenvik::acis::testing
