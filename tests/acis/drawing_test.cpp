// ACIS texts as drawings carry them: masked, cut into groups, of several versions.
#include "acis_testing.h"

#include <gtest/gtest.h>
#include <BRepBndLib.hxx>
#include <Bnd_Box.hxx>

#include <cmath>
#include <numbers>

namespace brenvik::acis::testing {
namespace {

constexpr double pi = std::numbers::pi;

TEST(Masking, MirrorsPrintableCharactersAndKeepsBlanks) {
    EXPECT_EQ(DecodeLine("m"), "2");
    EXPECT_EQ(EncodeLine("body $-1 #"), "=0;& {rn |");
    EXPECT_EQ(DecodeLine("=0;& {rn |"), "body $-1 #");
    EXPECT_EQ(EncodeLine("A b\tc"), "^ =\t<");
}

TEST(Masking, IsItsOwnInverse) {
    std::string all;
    for (int c = 1; c < 256; ++c) all.push_back(static_cast<char>(c));
    EXPECT_EQ(DecodeLine(EncodeLine(all)), all);
}

TEST(Masking, CircumflexLosesTheBlankBehindItOnly) {
    EXPECT_EQ(UnescapeDxf("a^ b"), "a^b");
    EXPECT_EQ(UnescapeDxf("^  x"), "^ x");
    EXPECT_EQ(UnescapeDxf("^^ "), "^^");
    EXPECT_EQ(UnescapeDxf("end^"), "end^");
    EXPECT_EQ(EscapeDxf("a^b"), "a^ b");
    EXPECT_EQ(UnescapeDxf(EscapeDxf("^ ^^ x^")), "^ ^^ x^");
}

// By the corner formula from the points in the drawing, worked out by hand.
constexpr double regionArea = 22.666289681790623;
constexpr double prismVolume = 47.53931170692965;

struct DrawingCase {
    const char* file;
    std::vector<double> sizes;  // volume of a solid, area of a sheet
};

void PrintTo(const DrawingCase& drawing, std::ostream* out) { *out << drawing.file; }

class Drawing : public ::testing::TestWithParam<DrawingCase> {};

TEST_P(Drawing, HoldsBodiesOfTheirSizes) {
    const auto text = Sample(GetParam().file);
    if (!text) GTEST_SKIP() << "sample drawing " << GetParam().file << " is absent";
    const std::vector<std::string> texts = TextsInDrawing(*text);
    ASSERT_EQ(texts.size(), GetParam().sizes.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(i);
        const TopoDS_Shape body = ReadOne(texts[i]);
        ASSERT_FALSE(body.IsNull());
        const bool solid = Count(body, TopAbs_SOLID) > 0;
        const double expected = GetParam().sizes[i];
        EXPECT_NEAR(solid ? Volume(body) : Area(body), expected, 1e-9 * expected);
        ExpectRoundTrip(body);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Samples, Drawing,
    ::testing::Values(DrawingCase{"dxf/ACadSharp__sample_AC1015_ascii.dxf", {125, regionArea, prismVolume}},
                      DrawingCase{"dxf/ACadSharp__sample_AC1018_ascii.dxf", {125, regionArea, prismVolume}},
                      DrawingCase{"dxf/ACadSharp__sample_AC1024_ascii.dxf", {125, regionArea, prismVolume}},
                      DrawingCase{"dxf/ezdxf__torus_r2000.dxf", {2 * pi * pi * 31.999999999999993 * 100}},
                      DrawingCase{"dxf/ezdxf__torus_r2007.dxf", {2 * pi * pi * 31.999999999999993 * 100}},
                      DrawingCase{"dxf/ezdxf__acistools_3dsolids.dxf",
                                  {pi / 48, 875, 1000 - std::pow(13.0 / 3, 2) * (10 - 59.0 / 15) / 3,
                                   1000 - 125 * pi / 4, 1000 - 10 * pi* pi}}));

TEST(Drawing, MovesBodiesByTheirTransformExactly) {
    const auto text = Sample("dxf/ACadSharp__sample_AC1015_ascii.dxf");
    if (!text) GTEST_SKIP() << "sample drawing is absent";
    const std::vector<gp_Pnt> corners = Corners(ReadOne(TextsInDrawing(*text).front()));
    ASSERT_EQ(corners.size(), 8u);
    EXPECT_EQ(corners.front().X(), 17.77672546982375934 - 2.5);
    EXPECT_EQ(corners.front().Y(), -220.8501226607159253 - 2.5);
    EXPECT_EQ(corners.front().Z(), 0);
    EXPECT_EQ(corners.back().Z(), 5);
}

}  // namespace
}  // namespace brenvik::acis::testing
