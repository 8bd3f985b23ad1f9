// Makes links of drawing objects.
#include "drafting_host/command/commands/polyline_links.h"

#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

LinkPiece RoundPiece(const ArcData& arc, const Axes& axes, double start, double sweep) {
    return {OnCircle(arc.center, arc.radius, axes, start),
            OnCircle(arc.center, arc.radius, axes, start + sweep), sweep,
            OnCircle(arc.center, arc.radius, axes, start + sweep / 2)};
}

Link LinkOfLine(const LineData& line) {
    Link link;
    link.pieces = {{line.start, line.end, 0, {}}};
    link.ownNormal = line.normal;
    link.thickness = line.thickness;
    return link;
}

std::optional<Link> LinkOfArc(const ArcData& arc) {
    if (!(arc.radius > 0)) return std::nullopt;
    const Axes axes = ObjectAxes(arc.normal);
    const double sweep = NormalAngle(arc.endAngle - arc.startAngle);
    Link link;
    if (sweep == 0) {
        // A full turn takes two bulges: one would begin and end at the same vertex.
        link.pieces = {RoundPiece(arc, axes, arc.startAngle, std::numbers::pi),
                       RoundPiece(arc, axes, arc.startAngle + std::numbers::pi, std::numbers::pi)};
    } else {
        link.pieces = {RoundPiece(arc, axes, arc.startAngle, sweep)};
        link.pieces.back().to = OnCircle(arc.center, arc.radius, axes, arc.endAngle);
    }
    link.normal = axes.z;
    link.thickness = arc.thickness;
    return link;
}

std::optional<Link> LinkOfPolyline(const LWPolylineData& polyline) {
    if (polyline.closed || polyline.vertices.size() < 2) return std::nullopt;
    const Axes axes = ObjectAxes(polyline.normal);
    Link link;
    link.thickness = polyline.thickness;
    link.ownNormal = axes.z;
    for (std::size_t i = 0; i + 1 < polyline.vertices.size(); ++i) {
        const auto& a = polyline.vertices[i];
        const auto& b = polyline.vertices[i + 1];
        LinkPiece piece;
        piece.from = ToWorld(axes, {a.x, a.y, polyline.elevation});
        piece.to = ToWorld(axes, {b.x, b.y, polyline.elevation});
        piece.sweep = 4 * std::atan(a.bulge);
        // The middle of the bow stands off the chord's middle, to the right of a left turn.
        const double dx = b.x - a.x, dy = b.y - a.y;
        piece.middle = ToWorld(axes, {(a.x + b.x) / 2 + dy * a.bulge / 2, (a.y + b.y) / 2 - dx * a.bulge / 2,
                                      polyline.elevation});
        link.pieces.push_back(piece);
    }
    const bool straight = link.pieces.size() == 1 && link.pieces.front().sweep == 0;
    if (!straight) link.normal = axes.z;
    return link;
}

}  // namespace

std::optional<Link> LinkOf(const HostGeometry& geometry, std::size_t object) {
    std::optional<Link> link;
    if (const auto* line = std::get_if<LineData>(&geometry)) link = LinkOfLine(*line);
    if (const auto* arc = std::get_if<ArcData>(&geometry)) link = LinkOfArc(*arc);
    if (const auto* polyline = std::get_if<LWPolylineData>(&geometry)) link = LinkOfPolyline(*polyline);
    if (link) link->object = object;
    return link;
}

bool SameCurve(const Link& one, const Link& other, double fuzz) {
    if (one.pieces.size() != 1 || other.pieces.size() != 1) return false;
    const LinkPiece& a = one.pieces.front();
    const LinkPiece& b = other.pieces.front();
    if (a.sweep == 0 || b.sweep == 0) return a.sweep == b.sweep;
    return Distance(a.middle, b.middle) <= fuzz;
}

Point3 LevelIfFlat(const Point3& normal) { return std::abs(normal.z) > 1 - 1e-9 ? Point3{0, 0, 1} : normal; }

std::vector<Point3> NormalsOfStraight(const Link& link) {
    const Point3 along = Unit(link.To() - link.From());
    const double rise = std::abs(link.To().z - link.From().z);
    std::vector<Point3> normals;
    if (rise <= PointTolerance) normals.push_back({0, 0, 1});
    if (std::abs(Dot(Unit(link.ownNormal), along)) < 1e-6)
        normals.push_back(LevelIfFlat(Unit(link.ownNormal)));
    normals.push_back(ObjectAxes(along).x);
    return normals;
}

double BulgeOf(double sweep) {
    if (std::abs(std::abs(sweep) - std::numbers::pi) < 1e-12) return std::copysign(1.0, sweep);
    return sweep == 0 ? 0 : std::tan(sweep / 4);
}

}  // namespace brenvik
