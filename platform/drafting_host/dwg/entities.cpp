// Curves, points, faces and block references.
#include "drafting_host/dwg/entities.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "drafting_host/dwg/table_data.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

/// The centre of circles and arcs lies in the entity's own plane.
Point3 InWorld(const Point3& point, const Point3& normal) {
    return EntityPlane(normal).ToWorld({point.x, point.y, point.z});
}

void RequirePositive(const BitReader& data, double value, const char* what) {
    if (!(value > 0)) data.Fail(std::string("a ") + what + " above 0 was expected");
}

LineData ReadLine(Object& object) {
    BitReader& data = object.streams.data;
    LineData line;
    if (IsShort(object)) {
        const bool isFlat = data.Bit();
        line.start.x = data.Real();
        line.end.x = data.RealNear(line.start.x);
        line.start.y = data.Real();
        line.end.y = data.RealNear(line.start.y);
        if (!isFlat) {
            line.start.z = data.Real();
            line.end.z = data.RealNear(line.start.z);
        }
    } else {
        line.start = data.BitPoint();
        line.end = data.BitPoint();
    }
    line.thickness = data.Thickness(IsShort(object));
    line.normal = data.Extrusion(IsShort(object));
    return line;
}

template <typename Round>
Round ReadRound(Object& object) {
    BitReader& data = object.streams.data;
    Round round;
    const Point3 center = data.BitPoint();
    round.radius = data.BitReal();
    RequirePositive(data, round.radius, "radius");
    round.thickness = data.Thickness(IsShort(object));
    round.normal = data.Extrusion(IsShort(object));
    round.center = InWorld(center, round.normal);
    return round;
}

ArcData ReadArc(Object& object) {
    ArcData arc = ReadRound<ArcData>(object);
    arc.startAngle = object.streams.data.BitReal();
    arc.endAngle = object.streams.data.BitReal();
    return arc;
}

EllipseData ReadEllipse(Object& object) {
    BitReader& data = object.streams.data;
    EllipseData ellipse;
    ellipse.center = data.BitPoint();
    ellipse.majorAxis = data.BitPoint();
    ellipse.normal = data.BitPoint();
    ellipse.ratio = data.BitReal();
    ellipse.startParameter = data.BitReal();
    ellipse.endParameter = data.BitReal();
    RequirePositive(data, ellipse.ratio, "ratio of the axes");
    return ellipse;
}

PointData ReadPoint(Object& object, Further& further) {
    BitReader& data = object.streams.data;
    PointData point;
    point.position = data.BitPoint();
    point.thickness = data.Thickness(IsShort(object));
    point.normal = data.Extrusion(IsShort(object));
    if (const double turn = data.BitReal(); turn != 0) further.groups = GroupText().Degrees(50, turn).Take();
    return point;
}

/// SOLID and TRACE, in a plane of their own.
QuadData ReadFlatQuad(Object& object, QuadData::Kind kind) {
    BitReader& data = object.streams.data;
    QuadData quad;
    quad.kind = kind;
    quad.thickness = data.Thickness(IsShort(object));
    const double elevation = data.BitReal();
    for (Point3& corner : quad.corners) {
        corner = data.FlatPoint();
        corner.z = elevation;
    }
    quad.normal = data.Extrusion(IsShort(object));
    return quad;
}

QuadData ReadFace(Object& object) {
    BitReader& data = object.streams.data;
    QuadData quad;
    quad.kind = QuadData::Kind::Face;
    bool hasFlags = true;
    if (IsShort(object)) {
        hasFlags = !data.Bit();
        const bool isFlat = data.Bit();
        quad.corners[0] = data.FlatPoint();
        if (!isFlat) quad.corners[0].z = data.Real();
        for (std::size_t i = 1; i < quad.corners.size(); ++i) {
            const Point3& before = quad.corners[i - 1];
            quad.corners[i].x = data.RealNear(before.x);
            quad.corners[i].y = data.RealNear(before.y);
            quad.corners[i].z = data.RealNear(before.z);
        }
    } else {
        for (Point3& corner : quad.corners) corner = data.BitPoint();
    }
    if (hasFlags) quad.edgeFlags = data.BitShort() & 0x0F;
    return quad;
}

/// Flags of a lightweight polyline: the values that it has.
enum LightFlag : unsigned {
    HasNormal = 1,
    HasThickness = 2,
    HasWidth = 4,
    HasElevation = 8,
    HasBulges = 16,
    HasWidths = 32,
    RunsLinetypes = 256,
    IsClosed = 512,
    HasIds = 1024,
};

void ReadLightVertices(Object& object, unsigned flags, LWPolylineData& line) {
    BitReader& data = object.streams.data;
    const std::int32_t vertices = data.BitLong();
    const std::int32_t bulges = (flags & HasBulges) != 0 ? data.BitLong() : 0;
    const bool hasIds = object.streams.IsAtLeast(Release::R2010) && (flags & HasIds) != 0;
    const std::int32_t ids = hasIds ? data.BitLong() : 0;
    const std::int32_t widths = (flags & HasWidths) != 0 ? data.BitLong() : 0;
    line.vertices.resize(data.Count(vertices, 4));
    Point3 before;
    for (std::size_t i = 0; i < line.vertices.size(); ++i) {
        if (i == 0 || !IsShort(object)) {
            before = data.FlatPoint();
        } else {
            before.x = data.RealNear(before.x);
            before.y = data.RealNear(before.y);
        }
        line.vertices[i].x = before.x;
        line.vertices[i].y = before.y;
    }
    const auto most = line.vertices.size();
    const std::size_t bulgeCount = data.Count(bulges, 2), idCount = data.Count(ids, 2),
                      widthCount = data.Count(widths, 4);
    if (bulgeCount > most || widthCount > most) data.Fail("values for each vertex were expected");
    for (std::size_t i = 0; i < bulgeCount; ++i) line.vertices[i].bulge = data.BitReal();
    for (std::size_t i = 0; i < idCount; ++i) data.BitLong();
    for (std::size_t i = 0; i < widthCount; ++i) {
        line.vertices[i].startWidth = data.BitReal();
        line.vertices[i].endWidth = data.BitReal();
    }
}

LWPolylineData ReadLightPolyline(Object& object) {
    BitReader& data = object.streams.data;
    LWPolylineData line;
    const auto flags = static_cast<unsigned>(data.BitShort());
    if ((flags & HasWidth) != 0) line.constantWidth = data.BitReal();
    if ((flags & HasElevation) != 0) line.elevation = data.BitReal();
    if ((flags & HasThickness) != 0) line.thickness = data.BitReal();
    if ((flags & HasNormal) != 0) line.normal = data.BitPoint();
    constexpr int linetypeFlag = 128;
    line.closed = (flags & IsClosed) != 0;
    line.flags = (flags & RunsLinetypes) != 0 ? linetypeFlag : 0;
    ReadLightVertices(object, flags, line);
    if (line.vertices.empty()) data.Fail("a vertex was expected");
    return line;
}

Point3 ReadScale(Object& object) {
    BitReader& data = object.streams.data;
    if (!IsShort(object)) return data.BitPoint();
    Point3 scale{1, 1, 1};
    switch (data.Bits(2)) {
        case 0:
            scale.x = data.Real();
            scale.y = data.RealNear(scale.x);
            scale.z = data.RealNear(scale.x);
            break;
        case 1:
            scale.y = data.RealNear(1);
            scale.z = data.RealNear(1);
            break;
        case 2:
            scale.x = scale.y = scale.z = data.Real();
            break;
        default:
            break;
    }
    return scale;
}

InsertData ReadInsert(Object& object, bool isMany, const Surroundings& surroundings) {
    Streams& streams = object.streams;
    BitReader& data = streams.data;
    InsertData insert;
    insert.insertion = data.BitPoint();
    insert.scale = ReadScale(object);
    insert.rotation = data.BitReal();
    insert.normal = data.BitPoint();
    const bool hasAttributes = data.Bit();
    std::size_t attributes = 0;
    if (hasAttributes)
        attributes = streams.IsAtLeast(Release::R2004) ? streams.handles.Count(data.BitLong(), 8) : 2;
    if (isMany) {
        insert.columns = std::max(data.BitShort(), 1);
        insert.rows = std::max(data.BitShort(), 1);
        insert.columnSpacing = data.BitReal();
        insert.rowSpacing = data.BitReal();
    }
    if (insert.scale.x == 0 || insert.scale.y == 0 || insert.scale.z == 0)
        data.Fail("scales other than 0 were expected");
    const auto block = surroundings.names.blockNames.find(streams.Handle());
    if (block == surroundings.names.blockNames.end()) data.Fail("a block of the drawing was expected");
    insert.block = block->second;
    if (!hasAttributes) return insert;
    // The attributes, up to release 2000 the first and the last, and their end.
    for (std::size_t i = 0; i <= attributes; ++i) streams.Handle();
    return insert;
}

constexpr auto ShapeKinds = std::to_array<std::string_view>(
    {"LINE",          "ARC",     "CIRCLE",     "ELLIPSE",     "POINT",       "SOLID",
     "TRACE",         "3DFACE",  "LWPOLYLINE", "INSERT",      "MINSERT",     "SPLINE",
     "TEXT",          "MTEXT",   "VIEWPORT",   "POLYLINE_2D", "POLYLINE_3D", "POLYLINE_PFACE",
     "POLYLINE_MESH", "3DSOLID", "REGION",     "BODY"});

}  // namespace

bool IsShapeKind(std::string_view kind) {
    return std::find(ShapeKinds.begin(), ShapeKinds.end(), kind) != ShapeKinds.end();
}

bool IsVertexKind(std::string_view kind) { return kind.starts_with("VERTEX_") || kind == "FACE_PFACE"; }

EntityGeometry ReadShape(Object& object, const Common& common, std::string_view kind,
                         const Surroundings& surroundings, Further& further) {
    if (kind == "LINE") return ReadLine(object);
    if (kind == "CIRCLE") return ReadRound<CircleData>(object);
    if (kind == "ARC") return ReadArc(object);
    if (kind == "LWPOLYLINE") return ReadLightPolyline(object);
    if (kind == "3DSOLID" || kind == "REGION" || kind == "BODY")
        return ReadAcis(object, common, kind, surroundings, further);
    if (kind == "INSERT") return ReadInsert(object, false, surroundings);
    if (kind == "MINSERT") return ReadInsert(object, true, surroundings);
    if (kind == "ELLIPSE") return ReadEllipse(object);
    if (kind == "SPLINE") return ReadSpline(object, further);
    if (kind == "POINT") return ReadPoint(object, further);
    if (kind == "TEXT") return ReadText(object, surroundings);
    if (kind == "MTEXT") return ReadMText(object, surroundings, further);
    if (kind == "SOLID") return ReadFlatQuad(object, QuadData::Kind::Solid);
    if (kind == "TRACE") return ReadFlatQuad(object, QuadData::Kind::Trace);
    if (kind == "3DFACE") return ReadFace(object);
    if (kind == "VIEWPORT") return ReadViewport(object, further);
    return ReadPolyline(object, kind, surroundings, further);
}

}  // namespace brenvik::dwg
