// From an entity's groups to its shape: curves, points and faces.
#include <algorithm>
#include <cmath>

#include "drafting_host/dxf/reading/reading.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik {
namespace {

// Points that the file gives in the entity's own plane and the drawing holds in the world.
bool TakePlanePoint(const Group& group, int index, PlanePoint& point) {
    switch (group.code - index) {
        case 10:
            point.x = LongRealOf(group);
            return true;
        case 20:
            point.y = LongRealOf(group);
            return true;
        case 30:
            point.z = LongRealOf(group);
            return true;
        default:
            return false;
    }
}

/// A vector shorter than this has no reliable direction.
bool HasDirection(const Point3& vector) { return std::hypot(vector.x, vector.y, vector.z) > 1e-100; }

void RequirePositive(double value, std::string_view what, std::size_t line) {
    if (!(value > 0)) throw EntityRefused{line, "a " + std::string(what) + " above 0 was expected"};
}

LineData ReadLine(Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20, 11, 21}, line);
    LineData data;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.start) || TakePoint(group, 1, data.end) ||
            TakeNormal(group, data.normal))
            continue;
        if (group.code == 39) data.thickness = RealOf(group);
    }
    return data;
}

PointData ReadPoint(Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20}, line);
    PointData data;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.position) || TakeNormal(group, data.normal)) continue;
        if (group.code == 39) data.thickness = RealOf(group);
    }
    return data;
}

// What circles and arcs share.
template <typename Round>
Round ReadRound(Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20, 40}, line);
    Round data;
    PlanePoint center;
    for (const Group& group : groups) {
        if (TakePlanePoint(group, 0, center) || TakeNormal(group, data.normal)) continue;
        if (group.code == 39) data.thickness = RealOf(group);
        if (group.code == 40) data.radius = RealOf(group);
    }
    RequirePositive(data.radius, "radius", line);
    const Point3 normal = HasDirection(data.normal) ? data.normal : Point3{0, 0, 1};
    data.center = EntityPlane(normal).ToWorld(center);
    return data;
}

ArcData ReadArc(Groups groups, std::size_t line) {
    RequireGroups(groups, {50, 51}, line);
    ArcData data = ReadRound<ArcData>(groups, line);
    data.startAngle = AngleOf(*FindGroup(groups, 50));
    data.endAngle = AngleOf(*FindGroup(groups, 51));
    return data;
}

EllipseData ReadEllipse(Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20, 11, 21, 40}, line);
    EllipseData data;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.center) || TakePoint(group, 1, data.majorAxis) ||
            TakeNormal(group, data.normal))
            continue;
        if (group.code == 40) data.ratio = RealOf(group);
        if (group.code == 41) data.startParameter = RealOf(group);
        if (group.code == 42) data.endParameter = RealOf(group);
    }
    if (vectors::IsZero(data.majorAxis)) throw EntityRefused{line, "a major axis with a length was expected"};
    RequirePositive(data.ratio, "ratio of the axes", line);
    return data;
}

// Lists of points come as groups in order; the counts in the file are not believed.
void TakeListedPoint(const Group& group, int index, std::vector<Point3>& points) {
    if (group.code == 10 + index) points.emplace_back();
    if (!points.empty()) TakePoint(group, index, points.back());
}

/// A point of a list without its Y would lie on the axis.
void RequireEachY(Groups groups, int index, std::size_t points, std::size_t line) {
    const int code = 20 + index;
    const auto found = static_cast<std::size_t>(
        std::ranges::count_if(groups, [code](const Group& group) { return group.code == code; }));
    if (found < points)
        throw EntityRefused{line, "group " + std::to_string(code) + " was expected with each of " +
                                      std::to_string(points) + " points, found " + std::to_string(found)};
}

SplineData ReadSpline(Reading& reading, Groups groups, std::size_t line) {
    SplineData data;
    for (const Group& group : groups) {
        TakeListedPoint(group, 0, data.controlPoints);
        TakeListedPoint(group, 1, data.fitPoints);
        if (TakeNormal(group, data.normal)) continue;
        if (group.code == 40) data.knots.push_back(RealOf(group));
        if (group.code == 41) data.weights.push_back(RealOf(group));
        if (group.code == 70) data.flags = FlagsOf(reading, group, 0x7FFF);
        if (group.code == 71) data.degree = IntegerOf(group);
    }
    constexpr int highestDegree = 25;
    if (data.degree < 1 || data.degree > highestDegree)
        throw EntityRefused{line, "a degree from 1 to 25 was expected"};
    const std::size_t controls = data.controlPoints.size();
    const std::size_t knots = controls + static_cast<std::size_t>(data.degree) + 1;
    if (controls == 0 && data.fitPoints.size() < 2)
        throw EntityRefused{line, "control or fit points were expected"};
    if (controls > 0 && data.knots.size() != knots)
        throw EntityRefused{line, std::to_string(knots) + " knots were expected for " +
                                      std::to_string(controls) + " control points, found " +
                                      std::to_string(data.knots.size())};
    RequireEachY(groups, 0, controls, line);
    RequireEachY(groups, 1, data.fitPoints.size(), line);
    if (!data.weights.empty() && data.weights.size() != controls)
        throw EntityRefused{line, "a weight for each control point was expected"};
    return data;
}

LWPolylineData ReadLWPolyline(Reading& reading, Groups groups, std::size_t line) {
    constexpr int flagClosed = 1, flagLinetype = 128;
    LWPolylineData data;
    for (const Group& group : groups) {
        if (group.code == 10) data.vertices.push_back({RealOf(group)});
        if (TakeNormal(group, data.normal)) continue;
        if (group.code == 38) data.elevation = RealOf(group);
        if (group.code == 39) data.thickness = RealOf(group);
        if (group.code == 43) data.constantWidth = RealOf(group);
        if (group.code == 70) {
            const int flags = FlagsOf(reading, group, flagClosed | flagLinetype);
            data.closed = (flags & flagClosed) != 0;
            data.flags = flags & flagLinetype;
        }
        if (data.vertices.empty()) continue;
        if (group.code == 20) data.vertices.back().y = RealOf(group);
        if (group.code == 40) data.vertices.back().startWidth = RealOf(group);
        if (group.code == 41) data.vertices.back().endWidth = RealOf(group);
        if (group.code == 42) data.vertices.back().bulge = RealOf(group);
    }
    if (data.vertices.empty()) throw EntityRefused{line, "a vertex (group 10) was expected"};
    RequireEachY(groups, 0, data.vertices.size(), line);
    return data;
}

PolylineData ReadPolyline(Reading& reading, Groups groups) {
    constexpr int mostVertices = 32767;
    PolylineData data;
    Point3 elevation;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, elevation) || TakeNormal(group, data.normal)) continue;
        switch (group.code) {
            case 39:
                data.thickness = RealOf(group);
                break;
            case 70:
                data.flags = FlagsOf(reading, group, 0xFF);
                break;
            case 71:
                data.mCount = IntegerWithin(reading, group, 0, mostVertices, "a count", 0);
                break;
            case 72:
                data.nCount = IntegerWithin(reading, group, 0, mostVertices, "a count", 0);
                break;
            case 73:
                data.mDensity = IntegerWithin(reading, group, 0, mostVertices, "a count", 0);
                break;
            case 74:
                data.nDensity = IntegerWithin(reading, group, 0, mostVertices, "a count", 0);
                break;
            case 75:
                data.surfaceType = IntegerWithin(reading, group, 0, 8, "a kind of surface", 0);
                break;
            default:
                break;
        }
    }
    data.elevation = elevation.z;
    return data;
}

QuadData ReadQuad(Reading& reading, Groups groups, QuadData::Kind kind, std::size_t line) {
    RequireGroups(groups, {10, 20, 11, 21, 12, 22}, line);
    QuadData data;
    data.kind = kind;
    for (const Group& group : groups) {
        for (int i = 0; i < 4; ++i) TakePoint(group, i, data.corners[static_cast<std::size_t>(i)]);
        if (TakeNormal(group, data.normal)) continue;
        if (group.code == 39) data.thickness = RealOf(group);
        if (group.code == 70 && kind == QuadData::Kind::Face) data.edgeFlags = FlagsOf(reading, group, 0x0F);
    }
    // A triangle may leave its fourth corner out.
    if (FindGroup(groups, 13) == nullptr) data.corners[3] = data.corners[2];
    return data;
}

/// A count of columns or rows. Others are not guessed at: how many parts a job has hangs on it.
int CountOf(Reading& reading, const Group& group) {
    constexpr int most = 32767;
    const int count = IntegerOf(group), taken = std::clamp(count, 1, most);
    if (count != taken)
        reading.Note(group.line, "INSERT: group " + std::to_string(group.code) + " holds " +
                                     std::to_string(count) + " where a count from 1 to " +
                                     std::to_string(most) + " was expected; " + std::to_string(taken) +
                                     " is taken");
    return taken;
}

InsertData ReadInsert(Reading& reading, Groups groups, std::size_t line) {
    RequireGroups(groups, {2, 10, 20}, line);
    InsertData data;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, data.insertion) || TakeNormal(group, data.normal)) continue;
        switch (group.code) {
            case 2:
                data.block = CanonicalBlockName(reading.Text(group));
                break;
            case 41:
                data.scale.x = RealOf(group);
                break;
            case 42:
                data.scale.y = RealOf(group);
                break;
            case 43:
                data.scale.z = RealOf(group);
                break;
            case 44:
                data.columnSpacing = RealOf(group);
                break;
            case 45:
                data.rowSpacing = RealOf(group);
                break;
            case 50:
                data.rotation = AngleOf(group);
                break;
            case 70:
                data.columns = CountOf(reading, group);
                break;
            case 71:
                data.rows = CountOf(reading, group);
                break;
            default:
                break;
        }
    }
    if (data.scale.x == 0 || data.scale.y == 0 || data.scale.z == 0)
        throw EntityRefused{line, "scales other than 0 were expected"};
    return data;
}

}  // namespace

PolylineData::Vertex ReadPolylineVertex(Reading& reading, Groups groups, std::size_t line) {
    RequireGroups(groups, {10, 20}, line);
    PolylineData::Vertex vertex;
    for (const Group& group : groups) {
        if (TakePoint(group, 0, vertex.point)) continue;
        switch (group.code) {
            case 5:
                vertex.handle = HandleOf(group);
                break;
            case 40:
                vertex.startWidth = RealOf(group);
                break;
            case 41:
                vertex.endWidth = RealOf(group);
                break;
            case 42:
                vertex.bulge = RealOf(group);
                break;
            case 70:
                vertex.flags = FlagsOf(reading, group, 0xFF);
                break;
            case 71:
            case 72:
            case 73:
            case 74:
                vertex.faceIndices[static_cast<std::size_t>(group.code - 71)] =
                    std::clamp(IntegerOf(group), -32768, 32767);
                break;
            default:
                break;
        }
    }
    return vertex;
}

namespace {

/// A normal without length is no direction, and what is turned into its plane would lie nowhere.
void MendNormal(Reading& reading, const Record& record, EntityGeometry& geometry) {
    const auto mend = [&](Point3& normal) {
        if (HasDirection(normal)) return;
        normal = {0, 0, 1};
        reading.Note(record.line,
                     std::string(record.name) +
                         ": a normal with a length was expected (groups 210, 220, 230) and it is "
                         "0,0,0; 0,0,1 is taken");
    };
    std::visit(
        [&](auto& data) {
            if constexpr (requires { data.normal; }) mend(data.normal);
        },
        geometry);
}

std::optional<EntityGeometry> ReadShape(Reading& reading, const Record& record, Groups groups) {
    const std::string_view name = record.name;
    const std::size_t line = record.line;
    if (name == "LINE") return ReadLine(groups, line);
    if (name == "LWPOLYLINE") return ReadLWPolyline(reading, groups, line);
    if (name == "CIRCLE") return ReadRound<CircleData>(groups, line);
    if (name == "ARC") return ReadArc(groups, line);
    if (name == "3DSOLID" || name == "REGION" || name == "BODY") return ReadAcis(reading, record, groups);
    if (name == "INSERT") return ReadInsert(reading, groups, line);
    if (name == "POLYLINE") return ReadPolyline(reading, groups);
    if (name == "ELLIPSE") return ReadEllipse(groups, line);
    if (name == "SPLINE") return ReadSpline(reading, groups, line);
    if (name == "POINT") return ReadPoint(groups, line);
    if (name == "TEXT") return ReadText(reading, groups, line);
    if (name == "MTEXT") return ReadMText(reading, groups, line);
    if (name == "SOLID") return ReadQuad(reading, groups, QuadData::Kind::Solid, line);
    if (name == "TRACE") return ReadQuad(reading, groups, QuadData::Kind::Trace, line);
    if (name == "3DFACE") return ReadQuad(reading, groups, QuadData::Kind::Face, line);
    if (name == "VIEWPORT") return ReadViewport(reading, groups, line);
    return std::nullopt;
}

}  // namespace

std::optional<EntityGeometry> ReadGeometry(Reading& reading, const Record& record, Groups groups) {
    std::optional<EntityGeometry> geometry = ReadShape(reading, record, groups);
    if (geometry) {
        MendNormal(reading, record, *geometry);
        TellDoubled(reading, record.name, groups);
    }
    return geometry;
}

}  // namespace brenvik
