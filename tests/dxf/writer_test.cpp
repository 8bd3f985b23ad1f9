// What the writer writes: the whole file of a small drawing, and everything a drawing can hold there and back
// again.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>
#include <random>
#include <set>

#include "base/failure.h"
#include "drafting_host/dxf/data/standard_entries.h"
#include "drafting_host/dxf/texts/dxf_text.h"
#include "drafting_host/dxf/texts/exact_numbers.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "dxf/dxf_texts.h"
#include "dxf/made_drawings.h"
#include "support/ezdxf_audit.h"
#include "support/golden.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

using test::EmptyDrawing;
using test::Entity;
using test::With;
using test::WithPlainLineEnds;

constexpr double pi = std::numbers::pi;

DrawingData BoardDrawing() {
    DrawingData data = EmptyDrawing();
    data.insertUnits = 4;
    data.measurement = 1;
    data.handleSeed = 0x40;
    data.layers.push_back({0x20, "0", 7, "Continuous", true, false, false, true, -3});
    data.layers.push_back({0x21, "Material_.75 Ahorn", 3, "Continuous", true, false, false, true, -3});
    data.currentLayer = "Material_.75 Ahorn";
    AcisData body;
    body.text = "400 0 1 0 \nbody $-1 $1 $-1 $-1 #\nAcis " + std::string(300, 'A') + "\n";
    EntityData board = Entity(body, 0x30, "Material_.75 Ahorn");
    board.color = 3;
    board.xdata = {{"PARTNAME", {{1000, std::string("T\u00FCrseite \u20AC")}}},
                   {"LWT", {{1000, std::string("600,18,2100")}}}};
    LWPolylineData outline;
    outline.vertices = {{0, 0}, {600, 0, 1}, {600, 2100}, {0, 2100}};
    outline.closed = true;
    outline.thickness = -18;
    data.blocks[0].entities = {board, Entity(outline, 0x31),
                               Entity(CircleData{{37, 64.5, 0}, 2.5, -13}, 0x32)};
    data.groups.push_back({0x33, "Left", "left side", true, {0x31, 0x32}});
    return data;
}

TEST(DxfGolden, BoardDrawingIsWrittenWhole) {
    const std::string written = WriteDxf(BoardDrawing());
    EXPECT_EQ(written.find("\r\n"), written.find('\n') - 1);
    test::ExpectGolden("dxf/golden/board.dxf", WithPlainLineEnds(written));
}

SplineData Curve() {
    SplineData spline;
    spline.degree = 2;
    spline.flags = 12;
    spline.knots = {0, 0, 0, 0.1, 1, 1, 1};
    spline.weights = {1, 0.5, 2, 1};
    spline.controlPoints = {{0, 0, 0}, {1, 2, 0}, {2, 0, 1. / 3}, {4, 4, 4}};
    spline.fitPoints = {{0, 0, 0}, {4, 4, 4}};
    return spline;
}

PolylineData OldPolyline(int flags) {
    PolylineData polyline;
    polyline.flags = flags;
    polyline.elevation = (flags & 8) != 0 ? 0 : 7;
    polyline.vertices.resize(3);
    for (std::size_t i = 0; i < 3; ++i) {
        polyline.vertices[i].point = {1.0 + static_cast<double>(i * i), static_cast<double>(i),
                                      polyline.elevation};
        polyline.vertices[i].flags = (flags & 8) != 0 ? 32 : 0;
    }
    if ((flags & 8) == 0) polyline.vertices[1].bulge = -0.41421356237309503;
    return polyline;
}

PolylineData FaceMesh() {
    PolylineData mesh;
    mesh.flags = 64;
    mesh.mCount = 3;
    mesh.nCount = 1;
    mesh.vertices.resize(4);
    for (std::size_t i = 0; i < 3; ++i) {
        mesh.vertices[i].point = {static_cast<double>(i % 2), static_cast<double>(i / 2), 5};
        mesh.vertices[i].flags = 192;
    }
    mesh.vertices[3].flags = 128;
    mesh.vertices[3].faceIndices = {1, 2, -3, 0};
    return mesh;
}

TextData Label() {
    TextData text;
    text.insertion = {1, 2, 3};
    text.alignment = Point3{4, 5, 6};
    text.height = 2.5;
    text.rotation = 1;
    text.oblique = 0.2;
    text.widthFactor = 0.9;
    text.horizontal = 1;
    text.vertical = 2;
    text.generation = 4;
    text.text = " \u0411\u043E\u043A \U0001F600 \\U+0041 a\nb\tc ^ \\P {x} ";
    text.style = "Notes";
    return text;
}

MTextData Paragraph() {
    MTextData text;
    text.insertion = {1, 2, 3};
    text.direction = Point3{0, 1, 0};
    text.rotation = 0.7;
    text.width = 40;
    text.attachment = 9;
    text.flow = 5;
    for (int i = 0; i < 80; ++i) text.text += "Bohrung \u00D8 5 ";
    return text;
}

ViewportData Window() {
    ViewportData viewport;
    viewport.center = {100, 80, 0};
    viewport.width = 200;
    viewport.height = 160;
    viewport.status = 2;
    viewport.id = 2;
    viewport.viewTarget = {1, 2, 3};
    viewport.viewDirection = {1, -1, 1};
    viewport.viewCenter = {5, 6};
    viewport.viewHeight = 3000;
    viewport.twist = 0.3;
    viewport.statusFlags = 32768;
    viewport.frozenLayers = {0x21};
    return viewport;
}

std::vector<XDataOfApp> EveryXData() {
    return {{"BRENVIK",
             {{1000, std::string(255, 'x')},
              {1002, std::string("{")},
              {1003, std::string("0")},
              {1005, std::string("30")},
              {1004, std::vector<std::uint8_t>{0, 1, 255}},
              {1010, Point3{1, 2, 3}},
              {1011, Point3{0.1, 0.2, 1. / 3}},
              {1040, -0.1},
              {1041, 1e-300},
              {1070, std::int16_t{-32768}},
              {1071, std::int32_t{2147483647}},
              {1002, std::string("}")}}},
            {"Nothing", {}}};
}

// Everything that a drawing can hold.
DrawingData FullDrawing() {
    DrawingData data = BoardDrawing();
    data.codePage = "ANSI_1251";
    data.layers[1].on = false;
    data.layers.push_back({0x22, "T\u00FCren, 2\u00B0", 255, "Dash", true, true, true, false, 25});
    data.linetypes = {{0, "Dash", "__ __", 3, {2, -1}}};
    data.styles = {{0, "Notes", "arial.ttf", "big.shx", 2.5, 0.8, 0.3, 4, 2}};
    data.namedUcs = {{0, "Front", {1, 2, 3}, {1, 0, 0}, {0, 0, 1}}};
    data.ucs = {0, "Front", {1, 2, 3}, {1, 0, 0}, {0, 0, 1}};
    data.applications = {"SPARE"};
    data.headerVariables["$LTSCALE"] = {{40, "2.5"}};
    data.headerVariables["$HYPERLINKBASE"] = {{1, "T\u00FCr"}};
    const Point3 odd{1. / 3, 2. / 3, 2. / 3};
    auto& model = data.blocks[0].entities;
    for (EntityGeometry geometry : std::vector<EntityGeometry>{
             LineData{{0.1, 1. / 3, -0.0}, {1e20, 1e-10, 3e-10}, 3, odd},
             ArcData{{1, 2, 3}, 5, 1, 2, 0.5, odd}, ArcData{{0, 0, 0}, 5, pi / 2, 1.5 * pi},
             CircleData{{100.1, 200.2, 300.3}, 2, 1, odd}, CircleData{{1, 2, 3}, 2, 0, {0, 0, -1}},
             EllipseData{{1, 2, 3}, {4, 1, 0}, {0, 0, 1}, 0.5, 0.1, 4}, Curve(),
             LWPolylineData{{{0, 0, 1, 0, 0}, {5, 0, 0, 1, 2}}, false, 128, 0, 7, 18, {0, 0, -1}},
             OldPolyline(1), OldPolyline(8), FaceMesh(), PointData{{1, 2, 3}, 4, odd}, Label(), Paragraph(),
             InsertData{"Knob", {1, 2, 3}, {1, -1, 2}, {0, 0, -1}, 0.5, 2, 3, 32, 64},
             QuadData{QuadData::Kind::Solid, {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}}, 0, 2},
             QuadData{QuadData::Kind::Trace, {{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}}}},
             QuadData{QuadData::Kind::Face, {{{0, 0, 1}, {1, 0, 1}, {0, 1, 3}, {1, 1, 1}}}, 5}})
        model.push_back(Entity(std::move(geometry)));
    model[3].xdata = EveryXData();
    model[4].layer = "T\u00FCren, 2\u00B0";
    model[4].linetype = "Dash";
    model[4].linetypeScale = 0.5;
    model[4].visible = false;
    model[4].lineweight = 30;
    data.blocks[1].entities = {Entity(Window()), Entity(LineData{{0, 0, 0}, {1, 1, 0}})};
    data.blocks.push_back({0, "*Paper_Space0", {}, 0, "Schr\u00E4nke", {Entity(Window())}});
    data.blocks.push_back(
        {0, "Knob", {1, 2, 3}, 0, "", {Entity(CircleData{{0, 0, 0}, 5}), Entity(OldPolyline(1))}});
    data.blocks.push_back({0, "*U1", {}, 1, "", {Entity(LineData{{0, 0, 0}, {1, 0, 0}})}});
    return data;
}

TEST(DxfRoundTrip, ReadingWhatWasWrittenGivesTheSameDrawing) {
    // Once through, so that the tables are complete and everything has its handle.
    const DrawingData first = test::Read(WriteDxf(FullDrawing()));
    EXPECT_EQ(test::NotesOf(first), "");
    const std::string text = WriteDxf(first);
    const DrawingData second = test::Read(text);
    EXPECT_TRUE(first == second);
    EXPECT_EQ(text, WriteDxf(second));
}

TEST(DxfRoundTrip, EntitiesComeBackAsTheyWere) {
    const DrawingData before = FullDrawing();
    const DrawingData after = test::Read(WriteDxf(before));
    ASSERT_EQ(before.blocks.size(), after.blocks.size());
    for (std::size_t b = 0; b < before.blocks.size(); ++b) {
        EXPECT_EQ(before.blocks[b].name, after.blocks[b].name);
        EXPECT_EQ(before.blocks[b].layoutName, after.blocks[b].layoutName);
        EXPECT_EQ(before.blocks[b].base, after.blocks[b].base);
        ASSERT_EQ(before.blocks[b].entities.size(), after.blocks[b].entities.size());
        for (std::size_t e = 0; e < before.blocks[b].entities.size(); ++e) {
            EntityData expected = before.blocks[b].entities[e];
            const EntityData& found = after.blocks[b].entities[e];
            if (expected.handle == 0) expected.handle = found.handle;
            if (auto* const body = std::get_if<AcisData>(&expected.geometry))
                body->firstLine = std::get<AcisData>(found.geometry).firstLine;
            if (auto* const polyline = std::get_if<PolylineData>(&expected.geometry)) {
                const auto& other = std::get<PolylineData>(found.geometry);
                polyline->seqendHandle = other.seqendHandle;
                for (std::size_t v = 0; v < polyline->vertices.size(); ++v)
                    polyline->vertices[v].handle = other.vertices.at(v).handle;
            }
            EXPECT_TRUE(expected == found)
                << before.blocks[b].name << " entity " << e << ", kind " << expected.geometry.index();
        }
    }
    EXPECT_EQ(before.groups, after.groups);
    EXPECT_EQ(before.currentLayer, after.currentLayer);
    EXPECT_EQ(before.codePage, after.codePage);
    EXPECT_EQ(before.insertUnits, after.insertUnits);
    EXPECT_EQ(before.ucs, after.ucs);
    EXPECT_EQ(after.layers, before.layers);
    EXPECT_EQ(after.headerVariables.at("$HYPERLINKBASE")[0].second, "T\u00FCr");
}

TEST(DxfRoundTrip, EveryHandleStandsOnceAndBelowTheSeed) {
    const std::string text = WithPlainLineEnds(WriteDxf(FullDrawing()));
    std::set<std::string> handles;
    for (const char* code : {"\n  5\n", "\n105\n"}) {
        const std::string marker(code);
        for (std::size_t at = text.find(marker); at != std::string::npos; at = text.find(marker, at + 1)) {
            const std::size_t begin = at + marker.size();
            const std::string handle = text.substr(begin, text.find('\n', begin) - begin);
            EXPECT_TRUE(handles.insert(handle).second) << handle;
        }
    }
    std::string owners = text;
    for (std::size_t at = text.find("\n330\n"); at != std::string::npos; at = text.find("\n330\n", at + 1)) {
        const std::string owner = text.substr(at + 5, text.find('\n', at + 5) - at - 5);
        EXPECT_TRUE(owner == "0" || handles.contains(owner)) << owner;
    }
}

TEST(DxfRoundTrip, EzdxfFindsNothingToMend) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed for the system's Python";
    int number = 0;
    for (const DrawingData& data : {FullDrawing(), BoardDrawing(), EmptyDrawing(), DrawingData()}) {
        const auto path =
            std::filesystem::path(testing::TempDir()) / ("audited_" + std::to_string(++number) + ".dxf");
        std::ofstream(path, std::ios::binary) << WriteDxf(data);
        const auto problems = test::AuditWithEzdxf(path);
        EXPECT_FALSE(problems) << *problems;
        std::filesystem::remove(path);
    }
}

}  // namespace
}  // namespace brenvik
