// Kinds of which no drawing at hand has one, made as the format is described.
#include "dwg/made_objects.h"

#include <gtest/gtest.h>

#include "drafting_host/dwg/bodies.h"
#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/records.h"

namespace brenvik::dwg {
namespace {

using test::BitWriter;
using test::MadeObject;

constexpr auto Releases = std::to_array({Release::R13, Release::R14, Release::R2000, Release::R2004,
                                         Release::R2007, Release::R2010, Release::R2013, Release::R2018});

/// Opens the object that was made and hands it on while its bytes live.
template <typename Use>
void Opened(const MadeObject& made, Use use) {
    const Sections sections = made.Sections();
    constexpr unsigned usualPage = 30;
    const Texts texts(made.release, usualPage);
    Object object = OpenObject(sections, texts, {made.handle, MadeObject::Place});
    EXPECT_EQ(object.type, made.type);
    use(object);
}

const Names& NamesOfOne() {
    static const Names names = [] {
        Names made;
        made.blockNames[0x50] = "Box";
        return made;
    }();
    return names;
}

EntityGeometry ShapeOf(const MadeObject& made, std::string_view kind, Further& further) {
    EntityGeometry shape;
    Opened(made, [&](Object& object) {
        const std::unordered_map<HandleValue, std::string> bodies;
        Links links;
        const Surroundings surroundings{NamesOfOne(), bodies, links, {}};
        const Common common = ReadCommon(object);
        EXPECT_EQ(common.layer, 0x10U);
        shape = ReadShape(object, common, kind, surroundings, further);
        EXPECT_EQ(object.streams.data.Left(), 0U) << "all values are read";
        EXPECT_LT(object.streams.handles.Left(), 8U) << "all references are read";
    });
    return shape;
}

TEST(DwgMade, NamedCoordinateSystemsHaveOriginAndAxes) {
    for (const Release release : Releases) {
        MadeObject made{release, 63};
        made.BeginRecord("Front");
        made.data.Point({1, 2, 3}).Point({0, 1, 0}).Point({0, 0, 1});
        if (made.IsAtLeast(Release::R2000)) made.data.Real(0).Short(0).Short(0);
        Opened(made, [](Object& object) {
            const UcsData ucs = ReadUcs(object);
            EXPECT_EQ(ucs.name, "Front");
            EXPECT_EQ(ucs.origin, (Point3{1, 2, 3}));
            EXPECT_EQ(ucs.xAxis, (Point3{0, 1, 0}));
            EXPECT_EQ(ucs.yAxis, (Point3{0, 0, 1}));
        });
    }
}

TEST(DwgMade, ArraysOfReferencesHaveTheirColumnsAndRows) {
    for (const Release release : Releases) {
        MadeObject made{release, 8};
        made.BeginEntity();
        made.data.Point({10, 20, 30});
        if (made.IsAtLeast(Release::R2000))
            made.data.Bits(3, 2);
        else
            made.data.Point({1, 1, 1});
        made.data.Real(0.5).Point({0, 0, 1}).Bits(0, 1).Short(3).Short(2).Real(100).Real(200);
        made.handles.Handle(5, 0x50);
        Further further;
        const auto insert = std::get<InsertData>(ShapeOf(made, "MINSERT", further));
        EXPECT_EQ(insert.block, "Box");
        EXPECT_EQ(insert.insertion, (Point3{10, 20, 30}));
        EXPECT_EQ(insert.columns, 3);
        EXPECT_EQ(insert.rows, 2);
        EXPECT_EQ(insert.columnSpacing, 100);
        EXPECT_EQ(insert.rowSpacing, 200);
    }
}

/// A polyline in space of one vertex, with a byte for its curve and the flags of the vertex; closed.
PolylineData PolylineInSpace(Release release, unsigned curve, unsigned flags, std::string& doubt) {
    MadeObject made{release, 16}, vertex{release, 11};
    constexpr HandleValue ofVertex = 0x101, ofEnd = 0x102;
    made.BeginEntity();
    made.data.Raw(curve, 1).Raw(1, 1);
    if (made.IsAtLeast(Release::R2004)) made.data.Long(1);
    made.handles.Handle(3, ofVertex);
    if (!made.IsAtLeast(Release::R2004)) made.handles.Handle(3, ofVertex);
    made.handles.Handle(3, ofEnd);
    vertex.handle = ofVertex;
    vertex.BeginEntity();
    vertex.data.Raw(flags, 1).Point({1, 2, 3});
    PolylineData line;
    Opened(vertex, [&](Object& part) {
        ReadCommon(part);
        Opened(made, [&](Object& object) {
            const std::unordered_map<HandleValue, std::string> bodies;
            Links links;
            const Surroundings surroundings{
                NamesOfOne(), bodies, links,
                [&](const std::vector<HandleValue>&, HandleValue, HandleValue) { return std::vector{part}; }};
            Further further;
            const Common common = ReadCommon(object);
            line = std::get<PolylineData>(ReadShape(object, common, "POLYLINE_3D", surroundings, further));
            doubt = further.doubt;
        });
    });
    return line;
}

TEST(DwgMade, PolylinesInSpaceHaveTheirCurveInAByteOfItsOwn) {
    constexpr int closed = 1, splined = 4, inSpace = 8, plain = 32, ofSpline = 40;
    for (const Release release : Releases) {
        std::string doubt;
        const auto expect = [&](unsigned curve, unsigned vertex, int flags, int surface) {
            const PolylineData line = PolylineInSpace(release, curve, vertex, doubt);
            EXPECT_EQ(line.flags, flags) << curve;
            EXPECT_EQ(line.surfaceType, surface) << curve;
        };
        expect(0, plain, closed | inSpace, 0);
        EXPECT_EQ(doubt, "");
        expect(1, ofSpline, closed | splined | inSpace, 5);
        EXPECT_EQ(doubt, "");
        expect(2, ofSpline, closed | splined | inSpace, 6);
        EXPECT_EQ(doubt, "");
        expect(8, plain, closed | inSpace, 0);
        EXPECT_EQ(doubt, "its curve is 8 where 0 to 2 was expected");
        expect(2, plain, closed | splined | inSpace, 6);
        EXPECT_EQ(doubt, "it is said to be smoothed and has no vertex of a spline");
        expect(0, ofSpline, closed | inSpace, 0);
        EXPECT_EQ(doubt,
                  "its vertex (handle 101) has the flags 40 of a smoothing that the polyline doesn't have");
    }
}

MadeObject SplineThrough(Release release, int knotKind, const Point3& slope, int flags = 1) {
    constexpr int stale = 1, byPoints = 2;
    MadeObject made{release, 36};
    made.BeginEntity();
    made.data.Long(made.IsAtLeast(Release::R2013) ? stale : byPoints);
    if (made.IsAtLeast(Release::R2013)) made.data.Long(flags).Long(knotKind);
    made.data.Long(3).Real(1e-10).Point(slope).Point(slope).Long(3);
    made.data.Point({0, 0, 0}).Point({3, 4, 0}).Point({10, 4, 0});
    return made;
}

TEST(DwgMade, SplinesThroughPointsGetTheirCurveAndTellWhatIsOpen) {
    for (const Release release : Releases) {
        Further further;
        const auto spline =
            std::get<SplineData>(ShapeOf(SplineThrough(release, 0, {1, 0, 0}), "SPLINE", further));
        EXPECT_EQ(spline.controlPoints.size(), 5U);
        EXPECT_EQ(spline.knots.back(), 12) << "by the distances of the points";
        EXPECT_EQ(further.unsettled, "its knots are taken by the distances of the points");
    }
    constexpr int uniform = 2, closed = 1 | 4;
    Further settled, free, ring;
    const auto spline =
        std::get<SplineData>(ShapeOf(SplineThrough(Release::R2018, uniform, {1, 0, 0}), "SPLINE", settled));
    EXPECT_EQ(spline.knots.back(), 2);
    EXPECT_EQ(settled.unsettled, "");
    ShapeOf(SplineThrough(Release::R2018, uniform, {0, 0, 0}), "SPLINE", free);
    EXPECT_EQ(free.unsettled, "its ends are taken without curvature");
    const auto points = std::get<SplineData>(
        ShapeOf(SplineThrough(Release::R2018, uniform, {1, 0, 0}, closed), "SPLINE", ring));
    EXPECT_EQ(points.fitPoints.size(), 3U);
    EXPECT_EQ(ring.unsettled, "it stays as points alone");
}

/// A segment of the store of bodies: its head, and what follows.
std::string Segment(std::string_view content) {
    BitWriter head;
    head.Raw(0xD5AC, 2);
    std::string bytes = head.Bytes() + "_data_" + std::string(28, '\0');
    constexpr unsigned align = 4;  // units of 16 bytes from the segment to its data
    bytes += BitWriter().Raw(align, 4).Bytes() + std::string(8, 'U');
    return bytes + std::string(content);
}

TEST(DwgMade, ABodyTooLargeForItsSegmentIsPutTogetherFromItsPages) {
    const std::string body = "ACIS BinaryFile" + std::string(300, 'x');
    const std::size_t half = 100;
    const auto page = [&](std::size_t from, std::size_t size) {
        return Segment(BitWriter().Raw(body.size(), 8).Raw(from, 8).Raw(0, 4).Raw(2, 4).Raw(size, 8).Bytes() +
                       body.substr(from, size));
    };
    // One record: its entry, then at 16 bytes behind the head what stands for the bytes.
    const std::string entry = BitWriter().Raw(0x14, 4).Raw(1, 4).Raw(0xABC, 8).Bytes();
    const std::string reference = BitWriter()
                                      .Raw(0xBB106BB1, 4)
                                      .Raw(body.size(), 8)
                                      .Raw(2, 4)
                                      .Raw(0, 4)
                                      .Raw(half, 4)
                                      .Raw(0, 4)
                                      .Raw(0, 8)
                                      .Raw(3, 4)
                                      .Raw(half, 4)
                                      .Raw(4, 4)
                                      .Raw(body.size() - half, 4)
                                      .Bytes();
    const std::string record =
        Segment(entry + BitWriter().Raw(16, 4).Bytes() + std::string(12, 'p') + reference);
    const std::string index = Segment(BitWriter().Raw(1, 4).Raw(0, 4).Raw(2, 4).Raw(0, 4).Raw(0, 4).Bytes());
    const std::vector<std::string> segments = {
        {}, index, record, page(0, half), page(half, body.size() - half)};
    std::string store(128, '\0');
    BitWriter rows;
    std::string rest;
    constexpr std::size_t row = 12, segmentHead = 48;
    const std::size_t first = store.size() + segmentHead + row * segments.size();
    for (const std::string& segment : segments) {
        rows.Raw(first + rest.size(), 8).Raw(segment.size(), 4);
        rest += segment;
    }
    store += Segment(rows.Bytes()) + rest;
    const auto put = [&](std::size_t at, std::uint32_t value) {
        store.replace(at, 4, BitWriter().Raw(value, 4).Bytes());
    };
    put(0, 0x6472616A);
    put(24, 128);
    put(32, static_cast<std::uint32_t>(segments.size()));
    put(40, 1);
    Sections sections;
    sections.dataStore = store;
    const auto bodies = ReadDataStore(sections);
    EXPECT_TRUE(sections.notes.empty()) << sections.notes.front().text;
    ASSERT_EQ(bodies.size(), 1U);
    EXPECT_EQ(bodies.at(0xABC), body);
    // A page less is no body.
    store.resize(store.size() - 1);
    sections.dataStore = store;
    EXPECT_TRUE(ReadDataStore(sections).empty());
    EXPECT_EQ(sections.notes.size(), 1U);
}

}  // namespace
}  // namespace brenvik::dwg
