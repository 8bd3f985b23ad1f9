// Values that no shape can have, though their bits make numbers.
#include <gtest/gtest.h>

#include <limits>

#include "drafting_host/dwg/bit_reader.h"
#include "drafting_host/dwg/entity_checks.h"
#include "drafting_host/dwg/object_map.h"
#include "drafting_host/dwg/shape_checks.h"
#include "dwg/made_objects.h"

namespace brenvik {
namespace {

using namespace dwg;

/// A shape with some of its values set.
template <typename Shape, typename Change>
Shape With(const Change& change) {
    Shape shape;
    change(shape);
    return shape;
}

PolylineData Polyface() {
    constexpr int polyface = 64, vertex = 192, face = 128;
    PolylineData mesh;
    mesh.flags = polyface;
    mesh.vertices.resize(4);
    for (int i = 0; i < 3; ++i) mesh.vertices[static_cast<std::size_t>(i)].flags = vertex;
    mesh.vertices[3].flags = face;
    mesh.vertices[3].faceIndices = {1, -2, 3, 0};
    return mesh;
}

TEST(DwgShapeChecks, SoundShapesPass) {
    EXPECT_EQ(ImpossibleIn(LineData{}), "");
    EXPECT_EQ(ImpossibleIn(Polyface()), "");
    EXPECT_EQ(ImpossibleIn(With<TextData>([](auto& shape) { shape.oblique = 6.1; })),
              "");  // a slant to the left
    EXPECT_EQ(ImpossibleIn(EllipseData{{}, {0, 5, 0}, {0, 0, 1}, 1, 0, 6.28}), "");
    EXPECT_EQ(ImpossibleIn(With<SplineData>([](auto& shape) {
                  shape.knots = {0, 0, 1, 1};
                  shape.weights = {1, 0.5};
              })),
              "");
}

TEST(DwgShapeChecks, AFaceThatNamesAVertexThatIsNotThereIsDoubted) {
    PolylineData mesh = Polyface();
    mesh.vertices[3].faceIndices[2] = -4;
    EXPECT_EQ(ImpossibleIn(mesh), "a face names its vertex -4 of 3");
    mesh.vertices[3].faceIndices = {1, 0, 3, 0};
    EXPECT_EQ(ImpossibleIn(mesh), "a face has fewer than 2 corners");
}

TEST(DwgShapeChecks, ValuesOutOfTheirRangeAreDoubted) {
    EXPECT_EQ(ImpossibleIn(With<CircleData>([](auto& shape) {
                  shape.radius = 1;
                  shape.normal = {0, 0.5, 1};
              })),
              "its normal's length is 1.118033988749895 where 1 was expected");
    EXPECT_EQ(ImpossibleIn(With<ArcData>([](auto& shape) {
                  shape.radius = 1;
                  shape.endAngle = 4e9;
              })),
              "its angle is 4e+09 where one of a few turns was expected");
    EXPECT_EQ(ImpossibleIn(EllipseData{{}, {5, 0, 0}, {0, 0, 1}, 2, 0, 6}),
              "its ratio of axes is 2.0 where 1 at most was expected");
    EXPECT_EQ(ImpossibleIn(EllipseData{{}, {5, 0, 1}, {0, 0, 1}, 0.5, 0, 6}),
              "its major axis isn't at right angles to its normal");
    EXPECT_EQ(ImpossibleIn(With<SplineData>([](auto& shape) {
                  shape.knots = {0, 1, 0.5};
              })),
              "its knots don't rise");
    EXPECT_EQ(ImpossibleIn(With<TextData>([](auto& shape) { shape.height = -1; })),
              "its height is -1.0 where more than 0 was expected");
    EXPECT_EQ(ImpossibleIn(With<TextData>([](auto& shape) { shape.vertical = 9; })),
              "its vertical alignment is 9 where 0 to 3 was expected");
    EXPECT_EQ(ImpossibleIn(With<MTextData>([](auto& shape) { shape.attachment = 17; })),
              "its attachment is 17 where 1 to 9 was expected");
    EXPECT_EQ(ImpossibleIn(With<MTextData>([](auto& shape) { shape.flow = 2; })),
              "its direction of flow is 2 where 1, 3 or 5 was expected");
    LWPolylineData line;
    line.vertices.push_back({0, 0, 0, -1, 0});
    EXPECT_EQ(ImpossibleIn(line), "its width is -1.0 where 0 or more was expected");
}

TEST(DwgShapeChecks, AViewportHasTheMarksThatThereAre) {
    const auto with = [](int status) {
        return ImpossibleIn(With<ViewportData>([&](auto& view) {
            view.viewDirection = {0, 0, 1};
            view.statusFlags = status;
        }));
    };
    for (const int status : {0, 0xC8020, 0x3FFFFF}) EXPECT_EQ(with(status), "") << status;
    EXPECT_EQ(with(0x400000), "its status is 4194304 where 0 to 4194303 was expected");
    EXPECT_EQ(with(-1), "its status is -1 where 0 to 4194303 was expected");
}

TEST(DwgShapeChecks, FlagsOfASplineFitItsCurve) {
    SplineData spline;
    spline.degree = 1;
    spline.knots = {0, 0, 1, 1};
    spline.controlPoints = {{1, 2, 0}, {4, 6, 0}};
    constexpr int closed = 1, periodic = 2, rational = 4, planar = 8;
    const auto with = [&](int flags) {
        SplineData flagged = spline;
        flagged.flags = flags;
        return ImpossibleIn(flagged);
    };
    EXPECT_EQ(with(planar), "");
    EXPECT_EQ(with(rational), "it is said to be rational and has no weights");
    EXPECT_EQ(with(periodic), "it is said to be periodic and not closed");
    EXPECT_EQ(with(closed), "it is said to be closed and its ends lie apart by 5.0");
    // The curve of other knots doesn't begin where its control points do.
    spline.knots = {0, 1, 2, 3};
    EXPECT_EQ(with(closed | periodic), "");
    spline.knots = {0, 0, 1, 1};
    spline.controlPoints.back() = spline.controlPoints.front();
    EXPECT_EQ(with(closed), "");
    spline.weights = {1, 1};
    EXPECT_EQ(with(rational), "");
}

TEST(DwgShapeChecks, NumbersOfNoDrawingAreFound) {
    for (const double value : {0.0, 1.0, -2e14, 1e-60, 1e20, -1e20}) EXPECT_FALSE(IsAbsurd(value)) << value;
    for (const double value : {1e16, -3e187, 5e-300, std::numeric_limits<double>::denorm_min()})
        EXPECT_TRUE(IsAbsurd(value)) << value;
    test::BitWriter bits;
    bits.Real(1).Real(1e200).Real(-1e300);
    const std::string bytes = bits.Bytes();
    BitReader reader(bytes);
    reader.BitPoint();
    EXPECT_EQ(reader.Absurd(), 1e200);
}

TEST(DwgEntityChecks, AnEntityStandsInTheBlockThatHasIt) {
    Reading reading;
    reading.recordOfBlock.emplace("DOOR", 0x50);
    Common common;
    common.owner = 0x50;
    CheckOwner(reading, {"LINE", 7}, common, "DOOR");
    common.mode = 2;
    CheckOwner(reading, {"LINE", 8}, common, "*Model_Space");
    reading.TellDoubts();
    EXPECT_TRUE(reading.data.notes.empty());
    CheckOwner(reading, {"LINE", 9}, common, "DOOR");
    reading.TellDoubts();
    ASSERT_EQ(reading.data.notes.size(), 1U);
    EXPECT_TRUE(reading.data.notes[0].text.starts_with(
        "LINE (handle 9) says that it stands in another block than \"DOOR\", which has it"));
}

TEST(DwgEntityChecks, ABlockAndItsRecordHaveOneName) {
    const auto told = [](std::string record, const std::string& begin) {
        Reading reading;
        Block block;
        block.name = std::move(record);
        TakeBlockName(reading, block, begin);
        EXPECT_EQ(block.name, begin.empty() ? "DOOR" : begin);
        return !reading.data.notes.empty();
    };
    EXPECT_FALSE(told("DOOR", "Door"));
    EXPECT_FALSE(told("DOOR", ""));
    EXPECT_FALSE(told("*U", "*U18"));
    EXPECT_FALSE(told("*U", "drawer"));
    EXPECT_TRUE(told("*U", "*D18"));
    EXPECT_TRUE(told("DOOR", "DOOS"));
    EXPECT_TRUE(told("DOOR", "*U18"));
}

TEST(DwgEntityChecks, EveryDrawingHasItsStandardNames) {
    Reading reading;
    Names names;
    names.linetypes[0x15] = "ByLayer";
    names.linetypes[0x14] = "ByXlock";
    Header header;
    header.handles = {{"BYLAYER", 0x15}, {"BYBLOCK", 0x14}};
    CheckStandardNames(reading, names, header);
    ASSERT_EQ(reading.data.notes.size(), 2U);
    EXPECT_EQ(reading.data.notes[0].text, "the drawing has no layer \"0\": it gets one");
    EXPECT_EQ(reading.data.notes[1].text,
              "LTYPE (handle 14) is named \"ByXlock\" where \"ByBlock\" was expected: it may be damaged");
}

}  // namespace
}  // namespace brenvik
