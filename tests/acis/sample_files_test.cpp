// Files written by other programs: every one is read without a complaint, is valid, and has the volume
// that an independent modeller found in the same part.
#include "acis_testing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace brenvik::acis::testing {
namespace {

constexpr double pi = std::numbers::pi;

struct SampleCase {
    const char* file;
    std::vector<double> volumes;
    int faces;
};

void PrintTo(const SampleCase& sample, std::ostream* out) { *out << sample.file; }

class SampleFile : public ::testing::TestWithParam<SampleCase> {};

TEST_P(SampleFile, IsReadWithItsVolumes) {
    const auto text = Sample(GetParam().file);
    if (!text) GTEST_SKIP() << "sample file " << GetParam().file << " is absent";
    const ReadResult result = ReadText(*text);
    for (const Problem& problem : result.problems)
        ADD_FAILURE() << "line " << problem.line << ", record " << problem.record << ": " << problem.text;
    ASSERT_EQ(result.bodies.size(), GetParam().volumes.size());
    int faces = 0;
    for (std::size_t i = 0; i < result.bodies.size(); ++i) {
        ExpectValid(result.bodies[i]);
        const double expected = GetParam().volumes[i];
        EXPECT_NEAR(Volume(result.bodies[i]), expected, 1e-8 * expected);
        EXPECT_EQ(Count(result.bodies[i], TopAbs_SOLID), 1);
        faces += Count(result.bodies[i], TopAbs_FACE);
    }
    EXPECT_EQ(faces, GetParam().faces);
}

INSTANTIATE_TEST_SUITE_P(Sat, SampleFile,
                         ::testing::Values(SampleCase{"sat/meshkit__threeholecube.sat", {0.91706593}, 12},
                                           SampleCase{"sat/meshkit__brick.sat", {1}, 6},
                                           SampleCase{"sat/meshkit__cube.sat", {1000}, 6},
                                           SampleCase{"sat/meshkit__cylcube.sat", {1000, 250 * pi}, 9},
                                           SampleCase{"sat/meshkit__simpletet.sat", {std::sqrt(3.0) / 4}, 4},
                                           SampleCase{"sat/meshkit__sphere.sat", {4000 * pi / 3}, 1},
                                           SampleCase{"sat/cgma__merge.sat", {1000, 1000}, 12},
                                           SampleCase{"sat/cgma__brick_2.sat", {8}, 6},
                                           SampleCase{
                                               "sat/3Dshapes_1.sat", {6.25 * pi * 2.557429510356272306}, 3},
                                           SampleCase{"sat/3Dshapes_2.sat", {25 * 4.642655294131080801}, 6},
                                           SampleCase{"sat/3Dshapes_3.sat", {22.5 * pi}, 3}));

}  // namespace
}  // namespace brenvik::acis::testing
