// Boxes, pieces and areas of the host's entities, from their analytic values.
#include <BRepBuilderAPI_MakeEdge.hxx>

#include "base/text.h"
#include "drafting_host/document/geometry/curve_edges.h"
#include "drafting_host/document/geometry/host_geometry.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/exact_box.h"

namespace brenvik {

using namespace vectors;

namespace {

/// A letter of a drafting font is about this much of its height wide.
constexpr double LetterWidth = 0.6;

Box3 ShapeBox(const TopoDS_Shape& shape) {
    const solids::Box box = solids::ExactBox(shape);
    return {{box.min.X(), box.min.Y(), box.min.Z()}, {box.max.X(), box.max.Y(), box.max.Z()}};
}

void AddThick(BoxBuilder& box, const Box3& flat, const Point3& normal, double thickness) {
    box.Add(flat);
    if (thickness == 0) return;
    const Point3 rise = Unit(normal) * thickness;
    box.Add(Box3{flat.min + rise, flat.max + rise});
}

/// The extremes of centre + major cos t + minor sin t over a span of t. Along each axis the curve is
/// one cosine, so its peaks are known.
Box3 RoundBox(const Point3& center, const Point3& major, const Point3& minor, double start, double end) {
    const auto at = [&](double angle) {
        const auto [sine, cosine] = OfAngle(angle);
        return center + major * cosine + minor * sine;
    };
    BoxBuilder box;
    box.Add(at(start));
    box.Add(at(end));
    Box3 result = box.Box();
    const auto peak = [&](double a, double b, double middle, double& low, double& high) {
        const double angle = std::atan2(b, a);
        if (InSpan(angle, start, end)) high = std::max(high, middle + std::hypot(a, b));
        if (InSpan(angle + std::numbers::pi, start, end)) low = std::min(low, middle - std::hypot(a, b));
    };
    peak(major.x, minor.x, center.x, result.min.x, result.max.x);
    peak(major.y, minor.y, center.y, result.min.y, result.max.y);
    peak(major.z, minor.z, center.z, result.min.z, result.max.z);
    return result;
}

Box3 ArcBox(const ArcData& data) {
    const Axes axes = ObjectAxes(data.normal);
    return RoundBox(data.center, axes.x * data.radius, axes.y * data.radius, data.startAngle, data.endAngle);
}

/// The straight or round piece from one vertex of a plane polyline to the next.
std::optional<PolylinePiece> Piece(const Axes& axes, const Point3& from, const Point3& to, double bulge,
                                   double thickness) {
    const double dx = to.x - from.x, dy = to.y - from.y;
    const double chord = std::hypot(dx, dy);
    if (chord == 0) return std::nullopt;
    if (bulge == 0) return LineData{ToWorld(axes, from), ToWorld(axes, to), thickness, axes.z};
    // The centre stands off the chord's middle by chord (1 - bulge²) / (4 bulge), to the left.
    const double off = (1 - bulge * bulge) / (4 * bulge);
    const Point3 middle{(from.x + to.x) / 2 - dy * off, (from.y + to.y) / 2 + dx * off, from.z};
    const double first = std::atan2(from.y - middle.y, from.x - middle.x);
    const double second = std::atan2(to.y - middle.y, to.x - middle.x);
    ArcData arc;
    arc.center = ToWorld(axes, middle);
    arc.radius = chord * (1 + bulge * bulge) / (4 * std::abs(bulge));
    arc.startAngle = NormalAngle(bulge > 0 ? first : second);
    arc.endAngle = NormalAngle(bulge > 0 ? second : first);
    arc.thickness = thickness;
    arc.normal = axes.z;
    return arc;
}

std::optional<Box3> PiecesBox(const std::vector<PolylinePiece>& pieces) {
    BoxBuilder box;
    for (const PolylinePiece& piece : pieces)
        box.Add(*std::visit([](const auto& curve) { return BoxOf(curve); }, piece));
    return box.Empty() ? std::nullopt : std::optional(box.Box());
}

Box3 TextBox(const Axes& axes, const Point3& corner, double rotation, double width, double height) {
    const auto [sine, cosine] = OfAngle(rotation);
    const Point3 along = axes.x * cosine + axes.y * sine, up = axes.y * cosine - axes.x * sine;
    BoxBuilder box;
    box.Add(corner);
    box.Add(corner + along * width);
    box.Add(corner + up * height);
    box.Add(corner + along * width + up * height);
    return box.Box();
}

double Letters(const std::string& text) { return static_cast<double>(CharacterCount(text)); }

}  // namespace

std::optional<Box3> BoxOf(const LineData& data) {
    BoxBuilder flat, box;
    flat.Add(data.start);
    flat.Add(data.end);
    AddThick(box, flat.Box(), data.normal, data.thickness);
    return box.Box();
}

std::optional<Box3> BoxOf(const ArcData& data) {
    BoxBuilder box;
    AddThick(box, ArcBox(data), data.normal, data.thickness);
    return box.Box();
}

std::optional<Box3> BoxOf(const CircleData& data) {
    const ArcData round{data.center, data.radius, 0, 0, data.thickness, data.normal};
    return BoxOf(round);
}

std::optional<Box3> BoxOf(const EllipseData& data) {
    const Point3 minor = Cross(Unit(data.normal), data.majorAxis) * data.ratio;
    return RoundBox(data.center, data.majorAxis, minor, data.startParameter, data.endParameter);
}

std::optional<Box3> BoxOf(const SplineData& data) {
    if (const std::optional<TopoDS_Edge> edge = EdgeOf(data)) return ShapeBox(*edge);
    BoxBuilder box;
    for (const Point3& p : data.controlPoints) box.Add(p);
    for (const Point3& p : data.fitPoints) box.Add(p);
    return box.Empty() ? std::nullopt : std::optional(box.Box());
}

std::optional<Box3> BoxOf(const LWPolylineData& data) {
    if (std::optional<Box3> box = PiecesBox(PiecesOf(data))) return box;
    if (data.vertices.empty()) return std::nullopt;
    const LWPolylineData::Vertex& only = data.vertices.front();
    const Point3 p = ToWorld(ObjectAxes(data.normal), {only.x, only.y, data.elevation});
    return Box3{p, p};
}

std::optional<Box3> BoxOf(const PolylineData& data) {
    if (std::optional<Box3> box = PiecesBox(PiecesOf(data))) return box;
    // The vertices that only list a polyface mesh's faces hold no place.
    constexpr int placeOfFaceMesh = 64, faceMeshVertex = 128;
    BoxBuilder box;
    for (const PolylineData::Vertex& vertex : data.vertices) {
        if ((vertex.flags & faceMeshVertex) != 0 && (vertex.flags & placeOfFaceMesh) == 0) continue;
        box.Add(vertex.point);
    }
    return box.Empty() ? std::nullopt : std::optional(box.Box());
}

std::optional<Box3> BoxOf(const PointData& data) {
    BoxBuilder box;
    AddThick(box, {data.position, data.position}, data.normal, data.thickness);
    return box.Box();
}

std::optional<Box3> BoxOf(const TextData& data) {
    const Axes axes = ObjectAxes(data.normal);
    const double width = Letters(data.text) * data.height * LetterWidth * data.widthFactor;
    return TextBox(axes, ToWorld(axes, data.insertion), data.rotation, width, data.height);
}

std::optional<Box3> BoxOf(const MTextData& data) {
    const Axes axes = ObjectAxes(data.normal);
    double rotation = data.rotation;
    if (data.direction) rotation = std::atan2(Dot(axes.y, *data.direction), Dot(axes.x, *data.direction));
    const double letters = Letters(data.text) * data.height * LetterWidth;
    const double width = data.width > 0 ? std::min(data.width, letters) : letters;
    return TextBox(axes, data.insertion, rotation, width, -data.height);
}

std::optional<Box3> BoxOf(const QuadData& data) {
    const Axes axes = ObjectAxes(data.normal);
    const bool world = data.kind == QuadData::Kind::Face;
    BoxBuilder flat, box;
    for (const Point3& corner : data.corners) flat.Add(world ? corner : ToWorld(axes, corner));
    AddThick(box, flat.Box(), data.normal, world ? 0 : data.thickness);
    return box.Box();
}

std::optional<Box3> BoxOf(const ViewportData& data) {
    const Point3 half{data.width / 2, data.height / 2, 0};
    return Box3{data.center - half, data.center + half};
}

std::optional<Box3> BoxOf(const ShapeData& data) {
    if (data.shape.IsNull()) return std::nullopt;
    return ShapeBox(data.shape);
}

std::vector<PolylinePiece> PiecesOf(const LWPolylineData& data) {
    const Axes axes = ObjectAxes(data.normal);
    std::vector<PolylinePiece> pieces;
    const std::size_t count = data.vertices.size();
    for (std::size_t i = 0; i + (data.closed ? 0 : 1) < count; ++i) {
        const LWPolylineData::Vertex& from = data.vertices[i];
        const LWPolylineData::Vertex& to = data.vertices[(i + 1) % count];
        auto piece = Piece(axes, {from.x, from.y, data.elevation}, {to.x, to.y, data.elevation}, from.bulge,
                           data.thickness);
        if (piece) pieces.push_back(*piece);
    }
    return pieces;
}

std::vector<PolylinePiece> PiecesOf(const PolylineData& data) {
    constexpr int closed = 1, splineFrame = 16;
    std::vector<PolylinePiece> pieces;
    const PolylineKind kind = KindOf(data);
    if (kind == PolylineKind::PolygonMesh || kind == PolylineKind::PolyfaceMesh) return pieces;
    const Axes axes = kind == PolylineKind::Plane ? ObjectAxes(data.normal) : Axes{};
    std::vector<const PolylineData::Vertex*> path;
    for (const PolylineData::Vertex& vertex : data.vertices)
        if ((vertex.flags & splineFrame) == 0) path.push_back(&vertex);
    const bool around = (data.flags & closed) != 0;
    for (std::size_t i = 0; i + (around ? 0 : 1) < path.size(); ++i) {
        Point3 from = path[i]->point, to = path[(i + 1) % path.size()]->point;
        if (kind == PolylineKind::Space) {
            if (from != to) pieces.push_back(LineData{from, to, 0, {0, 0, 1}});
            continue;
        }
        from.z = to.z = data.elevation;
        if (auto piece = Piece(axes, from, to, path[i]->bulge, data.thickness)) pieces.push_back(*piece);
    }
    return pieces;
}

double AreaOf(const LWPolylineData& data) {
    double twice = 0;
    const std::size_t count = data.vertices.size();
    for (std::size_t i = 0; i < count; ++i) {
        const LWPolylineData::Vertex& a = data.vertices[i];
        const LWPolylineData::Vertex& b = data.vertices[(i + 1) % count];
        twice += a.x * b.y - b.x * a.y;
        if (a.bulge == 0 || (i + 1 == count && !data.closed)) continue;
        // The piece between chord and arc: half r² (angle - sine), with the bulge's sign.
        const double angle = 4 * std::atan(a.bulge);
        const double chord = std::hypot(b.x - a.x, b.y - a.y);
        const double radius = chord * (1 + a.bulge * a.bulge) / (4 * std::abs(a.bulge));
        twice += radius * radius * (angle - std::sin(angle));
    }
    return std::abs(twice) / 2;
}

PolylineKind KindOf(const PolylineData& data) {
    constexpr int polygonMesh = 16, polyfaceMesh = 64;
    if ((data.flags & polyfaceMesh) != 0) return PolylineKind::PolyfaceMesh;
    if ((data.flags & polygonMesh) != 0) return PolylineKind::PolygonMesh;
    return (data.flags & SpacePolylineFlag) != 0 ? PolylineKind::Space : PolylineKind::Plane;
}

}  // namespace brenvik
