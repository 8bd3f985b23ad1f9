// How single values are written: rounds, body lines, texts, angles, centres, handles; and what is refused.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "base/failure.h"
#include "drafting_host/dxf/data/standard_entries.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "dxf/dxf_texts.h"
#include "dxf/made_drawings.h"

namespace brenvik {
namespace {

using test::EmptyDrawing;
using test::Entity;
using test::With;
using test::WithPlainLineEnds;

constexpr double pi = std::numbers::pi;

TEST(DxfWriting, FullRoundIsACircle) {
    for (const auto& [start, end] : {std::pair{0.0, 2 * pi}, std::pair{pi, 3 * pi}, std::pair{1.0, 1.0}}) {
        const std::string text = WriteDxf(With(ArcData{{1, 2, 0}, 5, start, end}));
        EXPECT_EQ(text.find("\r\nARC\r\n"), std::string::npos);
        EXPECT_EQ(std::get<CircleData>(test::ModelSpace(test::Read(text)).at(0).geometry),
                  (CircleData{{1, 2, 0}, 5}));
    }
    EXPECT_NE(WriteDxf(With(ArcData{{1, 2, 0}, 5, 0, 1e-6})).find("\r\nARC\r\n"), std::string::npos);
}

TEST(DxfWriting, BodyLinesAreMaskedAndCut) {
    AcisData body;
    body.text = std::string(300, 'A') + "\nb\n";
    const std::string text = WithPlainLineEnds(WriteDxf(With(body)));
    const std::size_t begin = text.find("AcDbModelerGeometry\n 70\n1\n");
    ASSERT_NE(begin, std::string::npos);
    std::string expected = "  1\n";
    for (int i = 0; i < 127; ++i) expected += "^ ";
    expected += "\n  3\n";
    for (int i = 0; i < 127; ++i) expected += "^ ";
    expected += "\n  3\n";
    for (int i = 0; i < 46; ++i) expected += "^ ";
    expected += "\n  1\n=\n  0\n";
    EXPECT_EQ(text.substr(begin + 26, expected.size()), expected);
}

struct Encoded {
    std::string text, expected;
};

TEST(DxfWriting, TextIsAscii) {
    for (const Encoded& example :
         {Encoded{"plain ^I \\P", "plain ^ I \\P"}, Encoded{"T\u00FCr", "T\\U+00FCr"},
          Encoded{"a\nb\r\t", "a^Jb^M^I"}, Encoded{"^", "^ "}, Encoded{"^ ^^J", "^  ^ ^ J"},
          Encoded{"\x01", "\\U+0001"}, Encoded{"\U0001F600", "\\U+D83D\\U+DE00"},
          Encoded{"\\U+0041", "\\U+005CU+0041"}, Encoded{"\xFF", "\\U+FFFD"},
          Encoded{"\\M+18341", "\\U+005CM+18341"}, Encoded{"\\M+1FFFF", "\\M+1FFFF"},
          Encoded{"\\U+xyz", "\\U+xyz"},
          Encoded{"\u1F60"
                  "0a",
                  "\\U+1F60\\U+0030a"},
          Encoded{"\x01"
                  "f600",
                  "\\U+0001\\U+0066600"},
          Encoded{"\x7F", "\\U+007F"}}) {
        EXPECT_EQ(EncodeText(example.text), example.expected);
        const std::string expected = example.text == "\xFF" ? "\uFFFD" : example.text;
        EXPECT_EQ(TextDecoder().Decode(EncodeText(example.text)), expected);
    }
}

TEST(DxfWriting, AnglesComeBackToTheLastBit) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> angle(-7, 7);
    for (int i = 0; i < 20000; ++i) {
        const double radians = angle(random);
        EXPECT_EQ(RadiansOfDegrees(*ParseLongReal(DegreesText(radians))), radians);
    }
    EXPECT_EQ(DegreesText(pi / 2), "90.0");
    EXPECT_EQ(DegreesText(pi / 4), "45.0");
    EXPECT_EQ(DegreesText(0), "0.0");
}

Point3 PointOf(const EntityPlane& plane, const PlanePointTexts& texts) {
    return plane.ToWorld({*ParseLongReal(texts.x), *ParseLongReal(texts.y), *ParseLongReal(texts.z)});
}

TEST(DxfWriting, NoiseOfSumsAndNegativeZerosAreZeros) {
    const double noise = -3.552713678800501e-15;
    DrawingData data = EmptyDrawing();
    LWPolylineData outline;
    outline.vertices = {{noise, -0.0}, {600, 1e-16, noise}, {600, 2100}};
    outline.thickness = noise;
    outline.elevation = -0.0;
    EntityData part = Entity(outline, 0x30, "0");
    part.xdata = {{"ELSE", {{1040, noise}}}};
    const ArcData arc{{noise, 600, -0.0}, 5, noise, 1, noise, {noise, 1, -0.0}};
    data.blocks[0].entities = {part,
                               Entity(LineData{{noise, -0.0, 5}, {1, 2, noise}, 0, {noise, -0.0, 1}}, 0x31),
                               Entity(arc, 0x32)};
    const std::string text = WriteDxf(data);
    const std::size_t entities = text.find("ENTITIES");
    const std::size_t elsewhere = text.find("ELSE", entities);
    ASSERT_NE(elsewhere, std::string::npos);
    EXPECT_NE(text.find("-3.552713678800501e-15", elsewhere), std::string::npos) << "it is somebody else's";
    for (const std::string_view mark : {"e-1", "-0.0\r"}) {
        const std::size_t first = text.find(mark, entities);
        EXPECT_TRUE(first == std::string::npos || (first > elsewhere && first < elsewhere + 60)) << mark;
    }
    // What is as large as a length can be stays to the last bit.
    data.blocks[0].entities = {Entity(LineData{{1.0000000000000002e-10, 0.1, 5}, {1, 2, 3}}, 0x31)};
    EXPECT_NE(WriteDxf(data).find("1.0000000000000002e-10"), std::string::npos);
}

TEST(DxfWriting, CentersInOddPlanesComeBackAndStay) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> number(-1, 1);
    for (int i = 0; i < 5000; ++i) {
        const EntityPlane plane({number(random), number(random), number(random)});
        const Point3 point{i % 3 == 0 ? 0 : 1000 * number(random), 600,
                           i % 5 == 0 ? 0 : 100 * number(random)};
        const Point3 back = PointOf(plane, PlanePointText(plane, point));
        // An eighth of the last bit of a coordinate of 1000, half of it for rounding.
        constexpr double closeEnough = 1e-14;
        EXPECT_NEAR(back.x, point.x, closeEnough);
        EXPECT_EQ(back.y, point.y);
        EXPECT_NEAR(back.z, point.z, closeEnough);
        EXPECT_EQ(back.z == 0, point.z == 0);
        EXPECT_EQ(PointOf(plane, PlanePointText(plane, back)), back);
    }
}

TEST(DxfWriting, CentersInSquarePlanesComeBackToTheLastBit) {
    for (const Point3& normal :
         {Point3{1, 0, 0}, Point3{-1, 0, 0}, Point3{0, 1, 0}, Point3{0, -1, 0}, Point3{0, 0, -1}}) {
        const EntityPlane plane(normal);
        const Point3 point{1. / 3, 600.1, -1e-9};
        const PlanePointTexts texts = PlanePointText(plane, point);
        EXPECT_EQ(PointOf(plane, texts), point);
        EXPECT_LE(texts.x.size() + texts.y.size() + texts.z.size(), 32U) << "short texts";
    }
}

TEST(DxfWriting, HandlesAreKeptAndNewOnesLieAboveTheSeed) {
    DrawingData data = EmptyDrawing();
    data.handleSeed = 0x1000;
    data.blocks[0].entities = {Entity(PointData{}, 0x2F), Entity(PointData{}, 0x2F), Entity(PointData{})};
    const DrawingData read = test::Read(WriteDxf(data));
    EXPECT_EQ(test::ModelSpace(read)[0].handle, 0x2FU);
    EXPECT_GE(test::ModelSpace(read)[1].handle, 0x1000U);
    EXPECT_GE(test::ModelSpace(read)[2].handle, 0x1000U);
    EXPECT_GT(read.handleSeed, 0x1000U);
}

struct Unwritable {
    std::string name;
    DrawingData data;
    std::string expected;
    friend std::ostream& operator<<(std::ostream& out, const Unwritable& self) { return out << self.name; }
};

DrawingData WithLayer(const std::string& name) {
    DrawingData data = EmptyDrawing();
    data.layers.emplace_back().name = name;
    return data;
}

DrawingData WithXData(XDataItem item) {
    DrawingData data = With(PointData{});
    data.blocks[0].entities[0].xdata = {{"LWT", {std::move(item)}}};
    return data;
}

std::vector<Unwritable> Unwritables() {
    std::vector<Unwritable> all;
    int number = 0;
    for (const char c : std::string("<>/\\\":;?*=|`\n"))
        all.push_back({"LayerName" + std::to_string(++number), WithLayer(std::string("Board") + c),
                       std::string("\"Board") + c});
    const double nan = std::numeric_limits<double>::quiet_NaN();
    DrawingData onLayer = With(PointData{});
    onLayer.blocks[0].entities[0].layer = "a/b";
    DrawingData twice = WithLayer("Board");
    twice.layers.push_back(twice.layers[0]);
    all.push_back({"EmptyLayerName", WithLayer(""), "layer name \"\""});
    all.push_back({"LayerOfAnEntity", onLayer, "\"a/b\""});
    all.push_back({"LayerTwice", twice, "layer \"Board\" stands there twice"});
    all.push_back({"NotANumber", With(LineData{{nan, 0, 0}, {}}), "LINE 10: a finite number"});
    all.push_back({"NotANumberInAnOddPlane", With(CircleData{{nan, 0, 0}, 1, 0, {1, 0, 0}}),
                   "CIRCLE 10: a finite number"});
    all.push_back({"InfiniteAngle", With(ArcData{{}, 1, 0, std::numeric_limits<double>::infinity()}),
                   "ARC 10: a finite"});
    all.push_back(
        {"PolylineWithoutVertices", With(LWPolylineData{}), "LWPOLYLINE 10: a polyline with vertices"});
    all.push_back(
        {"OldPolylineWithoutVertices", With(PolylineData{}), "POLYLINE 10: a polyline with vertices"});
    all.push_back({"MissingBlock", With(InsertData{"Nowhere", {}}), "\"Nowhere\""});
    all.push_back({"LongXData", WithXData({1000, std::string(256, 'x')}), "POINT 10, extended data of LWT"});
    all.push_back({"XDataOfAnotherType", WithXData({1000, 1.5}), "code 1000"});
    return all;
}

class DxfUnwritable : public testing::TestWithParam<Unwritable> {};

TEST_P(DxfUnwritable, IsRefusedByName) {
    try {
        WriteDxf(GetParam().data);
        FAIL() << "was written";
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.number(), 5);
        EXPECT_NE(failure.detail().find(GetParam().expected), std::string::npos) << failure.detail();
    }
}

INSTANTIATE_TEST_SUITE_P(All, DxfUnwritable, testing::ValuesIn(Unwritables()),
                         [](const auto& unwritable) { return unwritable.param.name; });

TEST(DxfWriting, XDataTextCountsCharactersNotTheBytesOfEscapes) {
    std::string text;
    for (int i = 0; i < 255; ++i) text += "\u0416";
    const DrawingData read = test::Read(WriteDxf(WithXData({1000, text})));
    EXPECT_EQ(std::get<std::string>(test::ModelSpace(read).at(0).xdata.at(0).items.at(0).value), text);
}

TEST(DxfWriting, NamesThatCannotBeSavedAreChangedOnReading) {
    const DrawingData data = test::Read(test::Entities("0 POINT|8 a/b|10 0|20 0"));
    EXPECT_EQ(test::ModelSpace(data).at(0).layer, "a_b");
    EXPECT_NE(test::NotesOf(data).find("8: layer \"a/b\" is called \"a_b\""), std::string::npos)
        << test::NotesOf(data);
    EXPECT_NO_THROW(WriteDxf(data));
}

}  // namespace
}  // namespace brenvik
