// What each kind of entity brings along, and what makes one be left out.
#include <gtest/gtest.h>

#include <array>
#include <numbers>

#include "dxf/dxf_texts.h"

namespace brenvik {
namespace {

using test::Entities;
using test::ModelSpace;
using test::NotesOf;
using test::PaperSpace;
using test::Read;

constexpr double pi = std::numbers::pi;

template <typename Geometry>
Geometry One(std::string_view groups) {
    const DrawingData data = Read(Entities(groups));
    EXPECT_EQ(ModelSpace(data).size(), 1U) << NotesOf(data);
    if (ModelSpace(data).size() != 1 || !std::holds_alternative<Geometry>(ModelSpace(data)[0].geometry))
        return {};
    EXPECT_EQ(NotesOf(data), "");
    return std::get<Geometry>(ModelSpace(data)[0].geometry);
}

TEST(DxfEntities, LineHasTwoPointsThicknessAndNormal) {
    const auto line = One<LineData>("0 LINE|10 1|20 2|30 3|11 4|21 5|31 6|39 0.5|210 0|220 0|230 -1");
    EXPECT_EQ(line, (LineData{{1, 2, 3}, {4, 5, 6}, 0.5, {0, 0, -1}}));
}

TEST(DxfEntities, FlatLineStandsAtHeightZero) {
    EXPECT_EQ(One<LineData>("0 LINE|10 1|20 2|11 4|21 5"), (LineData{{1, 2, 0}, {4, 5, 0}}));
}

TEST(DxfEntities, ArcAnglesBecomeRadians) {
    const auto arc = One<ArcData>("0 ARC|10 1|20 2|30 0|40 5|50 90|51 270");
    EXPECT_EQ(arc, (ArcData{{1, 2, 0}, 5, pi / 2, 1.5 * pi}));
}

TEST(DxfEntities, CenterInAMirroredPlaneIsBroughtIntoTheWorld) {
    const auto circle = One<CircleData>("0 CIRCLE|10 3|20 4|30 5|40 2|39 18|210 0|220 0|230 -1");
    EXPECT_EQ(circle, (CircleData{{-3, 4, -5}, 2, 18, {0, 0, -1}}));
}

TEST(DxfEntities, CenterInAnUprightPlaneIsBroughtIntoTheWorld) {
    // Across the world's Z: the plane's X is the world's Y for a normal along X, so (3,4,5) is (5,3,4).
    const auto circle = One<CircleData>("0 CIRCLE|10 3|20 4|30 5|40 2|210 1|220 0|230 0");
    EXPECT_EQ(circle.center, (Point3{5, 3, 4}));
}

TEST(DxfEntities, EllipseKeepsItsParameters) {
    const auto ellipse = One<EllipseData>("0 ELLIPSE|10 1|20 2|30 3|11 4|21 0|31 0|40 0.5|41 0.25|42 3");
    EXPECT_EQ(ellipse, (EllipseData{{1, 2, 3}, {4, 0, 0}, {0, 0, 1}, 0.5, 0.25, 3}));
}

TEST(DxfEntities, SplineListsAreTakenWhateverTheCountsSay) {
    const DrawingData data = Read(Entities(
        "0 SPLINE|70 8|71 2|72 999999999|73 0|74 0|40 0|40 0|40 0|40 1|40 1|40 1|10 0|20 0|30 0|10 1|20 2|30 "
        "0|10 "
        "2|20 0|30 0"));
    const auto& spline = std::get<SplineData>(ModelSpace(data).at(0).geometry);
    EXPECT_EQ(spline.degree, 2);
    EXPECT_EQ(spline.flags, 8);
    EXPECT_EQ(spline.knots, (std::vector<double>{0, 0, 0, 1, 1, 1}));
    EXPECT_EQ(spline.controlPoints, (std::vector<Point3>{{0, 0, 0}, {1, 2, 0}, {2, 0, 0}}));
}

TEST(DxfEntities, VerticesOfReleaseTwelveHaveTheWidthsOfTheirPolyline) {
    const DrawingData data =
        Read(Entities("0 POLYLINE|66 1|10 0|20 0|40 2|41 3|0 VERTEX|10 0|20 0|0 "
                      "VERTEX|10 1|20 0|41 0|0 SEQEND"));
    const auto& vertices = std::get<PolylineData>(ModelSpace(data).at(0).geometry).vertices;
    ASSERT_EQ(vertices.size(), 2U);
    EXPECT_EQ(vertices[0].startWidth, 2);
    EXPECT_EQ(vertices[0].endWidth, 3);
    EXPECT_EQ(vertices[1].startWidth, 2);
    EXPECT_EQ(vertices[1].endWidth, 0);
}

TEST(DxfEntities, LightweightPolylineHasBulgesAndWidthsPerVertex) {
    const auto polyline = One<LWPolylineData>(
        "0 LWPOLYLINE|90 2|70 129|38 7|39 18|43 0.1|10 0|20 0|42 1|10 5|20 0|40 1|41 2|210 0|220 0|230 -1");
    const std::vector<LWPolylineData::Vertex> vertices{{0, 0, 1, 0, 0}, {5, 0, 0, 1, 2}};
    EXPECT_EQ(polyline, (LWPolylineData{vertices, true, 128, 0.1, 7, 18, {0, 0, -1}}));
}

TEST(DxfEntities, OldPolylineTakesItsVerticesUntilItsEnd) {
    const auto polyline = One<PolylineData>(
        "0 POLYLINE|5 A0|66 1|70 1|10 0|20 0|30 4|0 VERTEX|5 A1|10 0|20 0|30 4|42 0.5|0 VERTEX|5 A2|10 1|20 "
        "0|0 "
        "SEQEND|5 A3");
    ASSERT_EQ(polyline.vertices.size(), 2U);
    EXPECT_EQ(polyline.vertices[0].bulge, 0.5);
    EXPECT_EQ(polyline.vertices[1].handle, 0xA2U);
    EXPECT_EQ(polyline.seqendHandle, 0xA3U);
    EXPECT_EQ(polyline.elevation, 4);
    EXPECT_EQ(polyline.flags, 1);
}

TEST(DxfEntities, PolyfaceMeshKeepsItsFaces) {
    const auto mesh = One<PolylineData>(
        "0 POLYLINE|66 1|70 64|71 3|72 1|0 VERTEX|10 0|20 0|70 192|0 VERTEX|10 1|20 0|70 192|0 VERTEX|10 "
        "1|20 1|70 "
        "192|0 VERTEX|10 0|20 0|70 128|71 1|72 -2|73 3|0 SEQEND");
    ASSERT_EQ(mesh.vertices.size(), 4U);
    EXPECT_EQ(mesh.vertices[3].faceIndices, (std::array<int, 4>{1, -2, 3, 0}));
    EXPECT_EQ(mesh.mCount, 3);
}

TEST(DxfEntities, PointHasAPlace) {
    EXPECT_EQ(One<PointData>("0 POINT|10 1|20 2|30 3").position, (Point3{1, 2, 3}));
}

TEST(DxfEntities, TextStaysInItsOwnPlane) {
    const auto text = One<TextData>(
        "0 TEXT|10 1|20 2|30 3|40 2.5|1 T\\U+00FCr ^J|50 180|41 0.8|51 15|7 STANDARD|71 2|72 1|11 4|21 5|31 "
        "6|73 "
        "3|210 0|220 0|230 -1");
    EXPECT_EQ(text.insertion, (Point3{1, 2, 3}));
    EXPECT_EQ(text.alignment, (Point3{4, 5, 6}));
    EXPECT_EQ(text.text, "T\u00FCr \n");
    EXPECT_EQ(text.style, "Standard");
    EXPECT_EQ(text.rotation, pi);
    EXPECT_DOUBLE_EQ(text.oblique, pi / 12);
    EXPECT_EQ(text.widthFactor, 0.8);
    EXPECT_EQ(text.horizontal, 1);
    EXPECT_EQ(text.vertical, 3);
    EXPECT_EQ(text.generation, 2);
}

TEST(DxfEntities, ParagraphTextIsJoinedBeforeItIsDecoded) {
    const auto text =
        One<MTextData>("0 MTEXT|10 1|20 2|40 3|41 100|71 5|72 1|3 Bo\\U+0|3 0E4rd |1 left|11 0|21 1|31 0");
    EXPECT_EQ(text.text, "Bo\u00E4rd left");
    EXPECT_EQ(text.direction, (Point3{0, 1, 0}));
    EXPECT_EQ(text.attachment, 5);
}

TEST(DxfEntities, EmbeddedObjectsAreNoPartOfTheParagraph) {
    EXPECT_EQ(One<MTextData>("0 MTEXT|10 1|20 2|40 3|1 a|101 Embedded Object|10 9|20 9|40 9").insertion,
              (Point3{1, 2, 0}));
}

TEST(DxfEntities, InsertNamesABlock) {
    const DrawingData data =
        Read(test::Section("BLOCKS", "0 BLOCK|2 Knob|70 0|10 1|20 0|30 0|0 POINT|10 0|20 0|0 ENDBLK") +
             Entities("0 INSERT|2 KNOB|10 5|20 6|30 0|41 2|42 3|43 4|50 45|70 2|71 3|44 10|45 20"));
    ASSERT_EQ(ModelSpace(data).size(), 1U) << NotesOf(data);
    const auto& insert = std::get<InsertData>(ModelSpace(data)[0].geometry);
    EXPECT_EQ(insert.scale, (Point3{2, 3, 4}));
    EXPECT_EQ(insert.rotation, pi / 4);
    EXPECT_EQ(insert.columns, 2);
    EXPECT_EQ(insert.rows, 3);
    ASSERT_EQ(data.blocks.size(), 3U);
    EXPECT_EQ(data.blocks[2].name, "Knob");
    EXPECT_EQ(data.blocks[2].base, (Point3{1, 0, 0}));
    EXPECT_EQ(data.blocks[2].entities.size(), 1U);
}

TEST(DxfEntities, AnInsertOfNoColumnsOrFewerIsOneAndTold) {
    const DrawingData data = Read(test::Section("BLOCKS", "0 BLOCK|2 Knob|70 0|10 1|20 0|30 0|0 ENDBLK") +
                                  Entities("0 INSERT|2 KNOB|10 5|20 6|70 0|71 -2|44 10|45 20"));
    ASSERT_EQ(ModelSpace(data).size(), 1U) << NotesOf(data);
    const auto& insert = std::get<InsertData>(ModelSpace(data)[0].geometry);
    EXPECT_EQ(insert.columns, 1);
    EXPECT_EQ(insert.rows, 1);
    EXPECT_NE(NotesOf(data).find("INSERT: group 70 holds 0 where a count from 1 to 32767 was expected; 1 is"),
              std::string::npos)
        << NotesOf(data);
    EXPECT_NE(NotesOf(data).find("INSERT: group 71 holds -2 where"), std::string::npos) << NotesOf(data);
    EXPECT_TRUE(data.notes.at(0).dataLost);
}

TEST(DxfEntities, ANormalWithoutLengthIsTheWorldsAndTold) {
    const DrawingData data =
        Read(test::Section("BLOCKS", "0 BLOCK|2 Knob|70 0|10 1|20 0|30 0|0 ENDBLK") +
             Entities("0 INSERT|2 KNOB|10 5|20 6|210 0|220 0|230 0|0 CIRCLE|10 1|20 2|40 3|230 0"));
    ASSERT_EQ(ModelSpace(data).size(), 2U) << NotesOf(data);
    EXPECT_EQ(std::get<InsertData>(ModelSpace(data)[0].geometry).normal, (Point3{0, 0, 1}));
    const auto& circle = std::get<CircleData>(ModelSpace(data)[1].geometry);
    EXPECT_EQ(circle.center, (Point3{1, 2, 0}));
    for (const std::string kind : {"INSERT", "CIRCLE"})
        EXPECT_NE(NotesOf(data).find(kind + ": a normal with a length was expected"), std::string::npos)
            << NotesOf(data);
}

TEST(DxfEntities, FacesHaveFourCorners) {
    const auto face =
        One<QuadData>("0 3DFACE|10 0|20 0|30 1|11 1|21 0|31 1|12 1|22 1|32 1|13 0|23 1|33 1|70 5");
    EXPECT_EQ(face.kind, QuadData::Kind::Face);
    EXPECT_EQ(face.corners[3], (Point3{0, 1, 1}));
    EXPECT_EQ(face.edgeFlags, 5);
    const auto solid = One<QuadData>("0 SOLID|10 0|20 0|11 1|21 0|12 1|22 1|39 3");
    EXPECT_EQ(solid.kind, QuadData::Kind::Solid);
    EXPECT_EQ(solid.corners[3], solid.corners[2]);
    EXPECT_EQ(One<QuadData>("0 TRACE|10 0|20 0|11 1|21 0|12 1|22 1|13 2|23 2").kind, QuadData::Kind::Trace);
}

TEST(DxfEntities, ViewportStandsInPaperSpace) {
    const DrawingData data =
        Read(Entities("0 VIEWPORT|67 1|10 5|20 6|40 200|41 100|68 2|69 3|12 1|22 2|16 0|26 -1|36 0|17 1|27 "
                      "2|37 3|42 35|45 80|51 "
                      "90|90 32768|331 ABCD"));
    ASSERT_EQ(PaperSpace(data).size(), 1U);
    const auto& viewport = std::get<ViewportData>(PaperSpace(data)[0].geometry);
    EXPECT_EQ(viewport.width, 200);
    EXPECT_EQ(viewport.status, 2);
    EXPECT_EQ(viewport.id, 3);
    EXPECT_EQ(viewport.viewDirection, (Point3{0, -1, 0}));
    EXPECT_EQ(viewport.viewTarget, (Point3{1, 2, 3}));
    EXPECT_EQ(viewport.twist, pi / 2);
    EXPECT_TRUE(viewport.frozenLayers.empty()) << "no layer has this handle";
}

TEST(DxfEntities, CommonPropertiesAreTaken) {
    const DrawingData data =
        Read(Entities("0 POINT|5 2F|8 Boards|6 Dashed|48 2|60 1|62 3|370 25|102 {ACAD_REACTORS|330 1|102 "
                      "}|330 1F|10 0|20 0"));
    const EntityData& entity = ModelSpace(data).at(0);
    EXPECT_EQ(entity.handle, 0x2FU);
    EXPECT_EQ(entity.layer, "Boards");
    EXPECT_EQ(entity.linetype, "Dashed");
    EXPECT_EQ(entity.linetypeScale, 2);
    EXPECT_FALSE(entity.visible);
    EXPECT_EQ(entity.color, 3);
    EXPECT_EQ(entity.lineweight, 25);
}

TEST(DxfEntities, ColoursThatDontExistAreThoseOfTheLayerAndToldOnce) {
    const DrawingData data = Read(
        Entities("0 POINT|5 2F|62 257|10 0|20 0|0 POINT|5 30|62 -5|10 0|20 0|0 POINT|5 31|62 256|10 0|20 0"));
    ASSERT_EQ(ModelSpace(data).size(), 3U);
    for (const EntityData& entity : ModelSpace(data)) EXPECT_EQ(entity.color, 256);
    EXPECT_EQ(
        NotesOf(data),
        "10: 2 entity(s) with a colour that doesn't exist get that of their layer, the first one: POINT "
        "(handle 2F) holds 257 in group 62 where 0 to 256 was expected\n");
    EXPECT_FALSE(data.notes.at(0).dataLost);
}

TEST(DxfEntities, ColoursThatALayerCantHaveAreTold) {
    for (const std::string color : {"0", "256", "300", "-256"}) {
        const DrawingData data = Read(
            test::Section("TABLES", "0 TABLE|2 LAYER|70 1|0 LAYER|2 Doors|70 0|62 " + color + "|0 ENDTAB") +
            Entities("0 POINT|8 Doors|10 0|20 0"));
        EXPECT_NE(NotesOf(data).find("layer \"Doors\": group 62 holds " + color +
                                     " where a colour from 1 to 255 was expected; 7 is taken"),
                  std::string::npos)
            << NotesOf(data);
        EXPECT_FALSE(data.notes.at(0).dataLost);
    }
}

TEST(DxfEntities, CountsThatContradictTheirListsAreTold) {
    const auto notes = [](const std::string& groups) { return NotesOf(Read(Entities(groups))); };
    EXPECT_EQ(notes("0 LWPOLYLINE|5 2F|90 3|70 0|10 0|20 0|10 5|20 0"),
              "10: LWPOLYLINE (handle 2F): group 90 states 3 vertices, found 2, which are taken\n");
    EXPECT_EQ(notes("0 LWPOLYLINE|5 2F|70 0|10 0|20 0|10 5|20 0"), "");
    const std::string rest = "|40 0|40 0|40 1|40 1|10 0|20 0|30 0|10 1|20 2|30 0";
    EXPECT_EQ(notes("0 SPLINE|5 2F|70 8|71 1|72 4|73 2|74 0" + rest), "");
    EXPECT_EQ(notes("0 SPLINE|5 2F|70 8|71 1|72 9|73 -1|74 1" + rest),
              "14: SPLINE (handle 2F): group 72 states 9 knots, found 4, which are taken\n"
              "16: SPLINE (handle 2F): group 73 states -1 control points, found 2, which are taken\n"
              "18: SPLINE (handle 2F): group 74 states 1 fit points, found 0, which are taken\n");
    const std::string vertices = "|0 VERTEX|10 0|20 0|70 64|0 VERTEX|10 1|20 0|70 64|0 SEQEND";
    EXPECT_EQ(notes("0 POLYLINE|66 1|70 16|71 1|72 2" + vertices), "");
    EXPECT_NE(
        notes("0 POLYLINE|66 1|70 16|71 2|72 2" + vertices)
            .find("POLYLINE: groups 71 and 72 state a mesh of 2 by 2 vertices, found 2, which are taken"),
        std::string::npos);
}

TEST(DxfEntities, NamesThatNoTableHoldsAreAdded) {
    const DrawingData data = Read(Entities("0 POINT|8 Boards|10 0|20 0|0 POINT|8 BOARDS|10 0|20 0"));
    ASSERT_EQ(data.layers.size(), 2U);
    EXPECT_EQ(data.layers[0].name, "0");
    EXPECT_EQ(data.layers[1].name, "Boards");
    EXPECT_EQ(ModelSpace(data)[1].layer, "Boards");
}

TEST(DxfEntities, BlankNamesAreTheStandardOnes) {
    const DrawingData data = Read(Entities("0 TEXT|8 |6 |7 |10 0|20 0|40 1|1 A"));
    ASSERT_EQ(ModelSpace(data).size(), 1U);
    const EntityData& entity = ModelSpace(data)[0];
    EXPECT_EQ(entity.layer, "0");
    EXPECT_EQ(entity.linetype, "ByLayer");
    EXPECT_EQ(std::get<TextData>(entity.geometry).style, "Standard");
    for (const LinetypeData& linetype : data.linetypes) EXPECT_NE(linetype.name, "");
}

struct Body {
    std::string name, groups, text;
    friend std::ostream& operator<<(std::ostream& out, const Body& self) { return out << self.name; }
};

class DxfBodies : public testing::TestWithParam<Body> {};

TEST_P(DxfBodies, TextArrivesInClear) {
    const auto body = One<AcisData>("0 3DSOLID|100 AcDbModelerGeometry|70 1|" + GetParam().groups);
    EXPECT_EQ(body.text, GetParam().text);
    EXPECT_EQ(body.firstLine, 12U);
}

INSTANTIATE_TEST_SUITE_P(All, DxfBodies,
                         testing::Values(Body{"Masked", "1 koo o n o ", "400 0 1 0 \n"},
                                         Body{"TwoLines", "1 koo|1 =0;&", "400\nbody\n"},
                                         Body{"LetterA", "1 koo|1 ^ ^ =", "400\nAAb\n"},
                                         Body{"Continued", "1 ko|3 o|1 =0|3 ;&", "400\nbody\n"},
                                         Body{"PairOverTwoGroups", "1 koo|1 ^|3  =", "400\nAb\n"},
                                         Body{"InClear", "1 400 0 1 0 |1 body ^ $-1",
                                              "400 0 1 0 \nbody ^ $-1\n"}),
                         [](const auto& body) { return body.param.name; });

TEST(DxfBodies, PreviewPicturesAreNoBody) {
    const DrawingData data = Read(Entities("0 REGION|92 4|310 01020304|100 AcDbModelerGeometry|70 1"));
    EXPECT_TRUE(ModelSpace(data).empty());
    EXPECT_NE(NotesOf(data).find("REGION left out: the body's text (group 1) was expected"),
              std::string::npos);
}

TEST(DxfBodies, WithoutTheirDataAreToldByHandleAndTheOthersArrive) {
    const DrawingData data = Read(test::Section("HEADER", "9 $ACADVER|1 AC1027") +
                                  Entities("0 3DSOLID|5 3A|290 1|0 POINT|10 0|20 0"));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    ASSERT_EQ(data.notes.size(), 1U);
    EXPECT_EQ(data.notes[0].line, 16U);
    EXPECT_EQ(data.notes[0].text.find("3DSOLID (handle 3A) left out: its binary body"), 0U);
    EXPECT_TRUE(data.notes[0].dataLost);
}

struct Refused {
    std::string name, groups, expected;
    friend std::ostream& operator<<(std::ostream& out, const Refused& self) { return out << self.name; }
};

class DxfRefusedEntities : public testing::TestWithParam<Refused> {};

TEST_P(DxfRefusedEntities, AreToldAndTheOthersArrive) {
    const DrawingData data = Read(Entities(GetParam().groups + "|0 POINT|10 7|20 7"));
    ASSERT_EQ(ModelSpace(data).size(), 1U) << NotesOf(data);
    EXPECT_TRUE(std::holds_alternative<PointData>(ModelSpace(data)[0].geometry));
    EXPECT_NE(NotesOf(data).find(GetParam().expected), std::string::npos) << NotesOf(data);
}

INSTANTIATE_TEST_SUITE_P(
    All, DxfRefusedEntities,
    testing::Values(
        Refused{"NotANumber", "0 LINE|10 a|20 0|11 0|21 0", "8: LINE left out: group 10 holds \"a\""},
        Refused{"Nan", "0 LINE|10 nan|20 0|11 0|21 0", "finite number"},
        Refused{"Infinite", "0 LINE|10 0|20 inf|11 0|21 0", "finite number"},
        Refused{"TooLarge", "0 LINE|10 1e999|20 0|11 0|21 0", "finite number"},
        Refused{"EmptyNumber", "0 LINE|10 |20 0|11 0|21 0", "finite number"},
        Refused{"MissingPoint", "0 LINE|10 1|20 0|11 0", "group 21 was expected and is missing"},
        Refused{"NoRadius", "0 CIRCLE|10 1|20 0", "group 40 was expected"},
        Refused{"RadiusZero", "0 CIRCLE|10 1|20 0|40 0", "radius above 0"},
        Refused{"NoMajorAxis", "0 ELLIPSE|10 1|20 0|11 0|21 0|40 1", "major axis with a length"},
        Refused{"TooFewKnots", "0 SPLINE|71 1|40 0|10 0|20 0|10 1|20 0", "4 knots were expected"},
        Refused{"HugeDegree", "0 SPLINE|71 2147483647|40 0|10 0|20 0", "degree from 1 to 25"},
        Refused{"NoVertices", "0 LWPOLYLINE|90 5|70 0", "a vertex (group 10) was expected"},
        Refused{"OldPolylineNoVertices", "0 POLYLINE|70 0|0 SEQEND", "a vertex was expected"},
        Refused{"BadVertex", "0 POLYLINE|70 0|0 VERTEX|10 1|20 x|0 VERTEX|10 1|20 1|0 SEQEND",
                "its polyline is left out"},
        Refused{"MissingBlock", "0 INSERT|2 Nowhere|10 0|20 0", "a block of the drawing was expected"},
        Refused{"InsertOfASpace", "0 INSERT|2 *Model_Space|10 0|20 0", "INSERT left out"},
        Refused{"ScaleZero", "0 INSERT|2 x|10 0|20 0|41 0", "scales other than 0"},
        Refused{"UnknownKind", "0 MESH|10 0|0 MESH", "2 of kind \"MESH\" passed over"}),
    [](const auto& refused) { return refused.param.name; });

TEST(DxfRefusedEntities, AnnotationIsPassedOverWithoutLossToTheJob) {
    const DrawingData data = Read(Entities("0 HATCH|10 0|0 DIMENSION|0 HATCH|0 WIDGET"));
    ASSERT_EQ(data.notes.size(), 3U);
    EXPECT_EQ(data.notes[1].text.find("2 of kind \"HATCH\""), 0U);
    EXPECT_EQ(data.notes[1].line, 6U);
    EXPECT_FALSE(data.notes[0].dataLost);
    EXPECT_FALSE(data.notes[1].dataLost);
    EXPECT_TRUE(data.notes[2].dataLost);
}

TEST(DxfRefusedEntities, BlocksThatHoldThemselvesAreCutOpen) {
    const DrawingData data =
        Read(test::Section(
                 "BLOCKS",
                 "0 BLOCK|2 A|10 0|20 0|0 INSERT|2 B|10 0|20 0|0 ENDBLK|0 BLOCK|2 B|10 0|20 0|0 INSERT|2 "
                 "A|10 0|20 0|0 ENDBLK") +
             Entities("0 INSERT|2 A|10 0|20 0"));
    EXPECT_EQ(ModelSpace(data).size(), 1U);
    EXPECT_EQ(data.blocks.at(2).entities.size(), 1U);
    EXPECT_TRUE(data.blocks.at(3).entities.empty());
    EXPECT_NE(NotesOf(data).find("which holds itself"), std::string::npos);
}

}  // namespace
}  // namespace brenvik
