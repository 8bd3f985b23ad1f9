// Polylines of many objects, and splines.
#include <algorithm>
#include <array>
#include <utility>

#include "drafting_host/dwg/entities.h"
#include "drafting_host/dwg/fitted_spline.h"
#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/reading/stated_counts.h"

namespace brenvik::dwg {
namespace {

// Flags of a polyline as DXF has them (group 70).
constexpr int FlagFitted = 2, FlagSplined = 4, Flag3d = 8, FlagMesh = 16, FlagPolyface = 64;

/// The vertices' handles, in the form of the release: a list, or the ends of a chain.
std::vector<Object> PartsOf(Object& object, std::int32_t count, const Surroundings& surroundings,
                            HandleValue& seqend) {
    Streams& streams = object.streams;
    std::vector<HandleValue> listed;
    HandleValue first = 0, last = 0;
    if (streams.IsAtLeast(Release::R2004)) {
        const std::size_t vertices = streams.handles.Count(count, 8);
        for (std::size_t i = 0; i < vertices; ++i) listed.push_back(streams.Handle());
    } else {
        first = streams.Handle();
        last = streams.Handle();
    }
    seqend = streams.Handle();
    return surroundings.parts(listed, first, last);
}

// The types of a polyline's vertices.
constexpr unsigned Flat = 10, InSpace = 11, OfMesh = 12, OfPolyface = 13, FaceOfPolyface = 14;

// Flags of a vertex as DXF has them (group 70). The first four are how the polyline was smoothed.
constexpr int MadeByFit = 1, HasTangent = 2, OnSpline = 8, OfFrame = 16, VertexInSpace = 32,
              VertexOfMesh = 64, VertexOfPolyface = 128;

/// What a vertex of a type can be: the flags that it always has, and those that it may have.
struct VertexFlags {
    int always = 0, maybe = 0;
};
VertexFlags FlagsOf(unsigned type) {
    constexpr int smoothed = MadeByFit | OnSpline | OfFrame;
    switch (type) {
        case InSpace:
            return {VertexInSpace, smoothed};
        case OfMesh:
            return {VertexOfMesh, smoothed};
        case OfPolyface:
            return {VertexOfMesh | VertexOfPolyface, 0};
        default:
            return {0, smoothed | HasTangent};
    }
}

/// A vertex has the flags of its type, which its polyline's confirms.
void MendFlags(PolylineData::Vertex& vertex, unsigned type, Further& further) {
    const VertexFlags known = FlagsOf(type);
    const int right = (vertex.flags & known.maybe) | known.always;
    if (vertex.flags == right) return;
    further.mended.push_back(ShownHolder({"VERTEX", vertex.handle}) + " has the flags " +
                             std::to_string(vertex.flags) +
                             ", which contradict its kind: " + std::to_string(right) + " is taken");
    vertex.flags = right;
}

/// What a vertex says of a smoothing that its polyline doesn't have; blank for nothing.
std::string SmoothingWithout(const PolylineData& line, const PolylineData::Vertex& vertex) {
    const bool fits = ((vertex.flags & MadeByFit) == 0 || (line.flags & (FlagFitted | FlagSplined)) != 0) &&
                      ((vertex.flags & (OnSpline | OfFrame)) == 0 || (line.flags & FlagSplined) != 0);
    if (fits) return {};
    return ShownHolder({"its vertex", vertex.handle}) + " has the flags " + std::to_string(vertex.flags) +
           " of a smoothing that the polyline doesn't have";
}

PolylineData::Vertex ReadVertex(Object& object, unsigned type) {
    BitReader& data = object.streams.data;
    PolylineData::Vertex vertex;
    vertex.handle = object.handle;
    if (type == FaceOfPolyface) {
        vertex.flags = 128;
        for (int& index : vertex.faceIndices) index = data.BitShort();
        return vertex;
    }
    vertex.flags = data.Byte();
    vertex.point = data.BitPoint();
    if (type != Flat) return vertex;
    vertex.startWidth = data.BitReal();
    // A negative width stands for both.
    if (vertex.startWidth < 0)
        vertex.startWidth = vertex.endWidth = -vertex.startWidth;
    else
        vertex.endWidth = data.BitReal();
    vertex.bulge = data.BitReal();
    if (object.streams.IsAtLeast(Release::R2010)) data.BitLong();  // its number
    data.BitReal();                                                // its tangent
    return vertex;
}

/// Polylines of each kind have vertices of their own.
void RequireVertex(const Object& vertex, std::string_view polyline) {
    const bool fits = polyline == "POLYLINE_2D"   ? vertex.type == Flat
                      : polyline == "POLYLINE_3D" ? vertex.type == InSpace
                      : polyline == "POLYLINE_MESH"
                          ? vertex.type == OfMesh
                          : vertex.type == OfPolyface || vertex.type == FaceOfPolyface;
    if (!fits) vertex.streams.data.Fail("a vertex of " + std::string(polyline) + " was expected");
}

/// Whether a polyline is said to be smoothed by a spline on which none of its vertices lies.
bool LacksItsSpline(const PolylineData& line) {
    return (line.flags & FlagSplined) != 0 && std::ranges::none_of(line.vertices, [](const auto& vertex) {
               return (vertex.flags & (OnSpline | OfFrame)) != 0;
           });
}

/// A polyline in space has its curve and whether it is closed in a byte each, other than DXF has them.
void ReadHeadInSpace(BitReader& data, PolylineData& line, Further& further) {
    constexpr int quadratic = 5, cubic = 6;
    constexpr unsigned none = 0, isQuadratic = 1, isCubic = 2;
    const unsigned curve = data.Byte();
    line.flags = Flag3d | (data.Byte() & 1);
    if (curve > isCubic)
        further.doubt = "its curve is " + std::to_string(curve) + " where 0 to 2 was expected";
    if (curve == none || curve > isCubic) return;
    line.flags |= FlagSplined;
    line.surfaceType = curve == isQuadratic ? quadratic : cubic;
}

}  // namespace

EntityGeometry ReadPolyline(Object& object, std::string_view kind, const Surroundings& surroundings,
                            Further& further) {
    BitReader& data = object.streams.data;
    PolylineData line;
    if (kind == "POLYLINE_2D") {
        line.flags = data.BitShort();
        line.surfaceType = data.BitShort();
        if (line.surfaceType != 0 && (line.flags & FlagSplined) == 0)
            further.doubt =
                "it has the curve " + std::to_string(line.surfaceType) + " of a smoothing that it lacks";
        data.BitReal();
        data.BitReal();
        line.thickness = data.Thickness(IsShort(object));
        line.elevation = data.BitReal();
        line.normal = data.Extrusion(IsShort(object));
    } else if (kind == "POLYLINE_3D") {
        ReadHeadInSpace(data, line, further);
    } else if (kind == "POLYLINE_PFACE") {
        line.flags = FlagPolyface;
        line.mCount = data.BitShort();
        line.nCount = data.BitShort();
    } else {
        line.flags = FlagMesh | data.BitShort();
        line.surfaceType = data.BitShort();
        line.mCount = data.BitShort();
        line.nCount = data.BitShort();
        line.mDensity = data.BitShort();
        line.nDensity = data.BitShort();
    }
    const std::int32_t count = object.streams.IsAtLeast(Release::R2004) ? data.BitLong() : 0;
    for (Object& part : PartsOf(object, count, surroundings, line.seqendHandle)) {
        RequireVertex(part, kind);
        PolylineData::Vertex& vertex = line.vertices.emplace_back(ReadVertex(part, part.type));
        if (part.type != FaceOfPolyface) MendFlags(vertex, part.type, further);
        if (std::string smoothing = SmoothingWithout(line, vertex); !smoothing.empty())
            further.doubt = std::move(smoothing);
        if (const std::string rest = RestOf(part.streams); !rest.empty())
            further.doubt = ShownHolder({"its vertex", part.handle}) + " has " + rest;
        if (kind == "POLYLINE_2D") vertex.point.z = 0;
    }
    if (line.vertices.empty()) data.Fail("a vertex was expected");
    if (LacksItsSpline(line)) further.doubt = "it is said to be smoothed and has no vertex of a spline";
    if (const auto falseCount = FalseCountOfMesh(line, "its head states")) further.doubt = *falseCount;
    return line;
}

namespace {

/// How a spline stands in the file: by its control points, or by the points through which it runs.
struct SplineForm {
    bool isFit = false;
    FitEnds ends;
    std::int32_t knots = 0, controls = 0, fits = 0;
    bool isWeighted = false;
};

SplineForm ReadSplineForm(Object& object, SplineData& spline, Further& further) {
    constexpr int fitScenario = 2, highestDegree = 25;
    constexpr unsigned byFitPoints = 1, closedFit = 4;
    constexpr int flagClosed = 1, flagPeriodic = 2, flagRational = 4;
    BitReader& data = object.streams.data;
    SplineForm form;
    form.isFit = data.BitLong() == fitScenario;
    if (object.streams.IsAtLeast(Release::R2013)) {
        // The scenario is out of date here; the flags count.
        const auto flags = static_cast<unsigned>(data.BitLong());
        form.ends.kind = static_cast<KnotKind>(data.BitLong());
        form.isFit = (flags & byFitPoints) != 0 && form.ends.kind != KnotKind::Own;
        form.ends.isClosed = (flags & closedFit) != 0;
    }
    spline.degree = data.BitLong();
    if (spline.degree < 1 || spline.degree > highestDegree) data.Fail("a degree from 1 to 25 was expected");
    if (form.isFit) {
        data.BitReal();
        form.ends.start = data.BitPoint();
        form.ends.end = data.BitPoint();
        form.fits = data.BitLong();
        return form;
    }
    if (data.Bit()) spline.flags |= flagRational;
    if (data.Bit()) spline.flags |= flagClosed;
    if (data.Bit()) spline.flags |= flagPeriodic;
    const double knotTolerance = data.BitReal(), controlTolerance = data.BitReal();
    further.groups = GroupText().Real(42, knotTolerance).Real(43, controlTolerance).Take();
    form.knots = data.BitLong();
    form.controls = data.BitLong();
    form.isWeighted = data.Bit();
    return form;
}

/// What a spline through points leaves open. The form that was seen beside its text has the slopes at its
/// ends and knots at even steps.
std::string UnsettledOf(const SplineForm& form, const SplineData& spline) {
    const auto isZero = [](const Point3& point) { return point.x == 0 && point.y == 0 && point.z == 0; };
    if (spline.controlPoints.empty()) return "it stays as points alone";
    if (isZero(form.ends.start) || isZero(form.ends.end)) return "its ends are taken without curvature";
    return form.ends.kind == KnotKind::Uniform ? "" : "its knots are taken by the distances of the points";
}

}  // namespace

EntityGeometry ReadSpline(Object& object, Further& further) {
    BitReader& data = object.streams.data;
    SplineData spline;
    const SplineForm form = ReadSplineForm(object, spline, further);
    const std::size_t knotCount = data.Count(form.knots, 2), controlCount = data.Count(form.controls, 6),
                      fitCount = data.Count(form.fits, 6);
    for (std::size_t i = 0; i < knotCount; ++i) spline.knots.push_back(data.BitReal());
    for (std::size_t i = 0; i < controlCount; ++i) {
        spline.controlPoints.push_back(data.BitPoint());
        if (form.isWeighted) spline.weights.push_back(data.BitReal());
    }
    for (std::size_t i = 0; i < fitCount; ++i) spline.fitPoints.push_back(data.BitPoint());
    if (controlCount == 0 && fitCount < 2) data.Fail("control or fit points were expected");
    if (controlCount > 0 && knotCount != controlCount + static_cast<std::size_t>(spline.degree) + 1)
        data.Fail("as many knots as control points and the degree ask for were expected");
    if (form.isFit) {
        FitThroughPoints(spline, form.ends);
        further.unsettled = UnsettledOf(form, spline);
    }
    MarkFlatness(spline);
    return spline;
}

}  // namespace brenvik::dwg
