// The search for the edges. Lengths are compared as rounded, so that of several equal edges the first wins
// however the part lies in its drawing.
#include "cnc/laying/alignment_edges.h"

#include <cmath>
#include <optional>
#include <vector>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/laying/orientation.h"
#include "session/ports/point_arithmetic.h"

namespace brenvik {

using namespace vectors;

namespace {

constexpr int LengthDecimals = 6;
/// Sine of the angle below which two directions are taken for one.
constexpr double SameDirection = 1e-6;

enum class EdgeOf { LargestFace, OtherFace, Elsewhere };

struct Edge {
    const AcadLine* line = nullptr;
    EdgeOf owner = EdgeOf::Elsewhere;
    Point3 start, end;
    double length = 0;
};

double Size(const Point3& a) { return std::sqrt(Dot(a, a)); }

EdgeOf OwnerOf(const AcadLine& line) {
    const std::string layer = line.Layer();
    if (layer == layers::Region) return EdgeOf::LargestFace;
    return layer == layers::BrenvikExplode ? EdgeOf::OtherFace : EdgeOf::Elsewhere;
}

std::vector<Edge> EdgesOf(AcadDocument& drawing) {
    std::vector<Edge> edges;
    for (const AcadLine* line : All<AcadLine>(drawing))
        Skip([&] {
            edges.push_back({line, OwnerOf(*line), line->StartPoint(), line->EndPoint(),
                             Settled(line->Length(), LengthDecimals)});
        });
    return edges;
}

bool IsTwin(const Edge& a, const Edge& b) {
    return (NearlyEqual(a.start, b.start) && NearlyEqual(a.end, b.end)) ||
           (NearlyEqual(a.start, b.end) && NearlyEqual(a.end, b.start));
}

/// The part of a vector that stands square to a unit direction.
Point3 Across(const Point3& vector, const Point3& direction) {
    return vector + direction * -Dot(vector, direction);
}

Point3 DirectionOf(const Edge& edge) {
    const Point3 delta = edge.end - edge.start;
    return delta * (1 / Size(delta));
}

bool LiesAlong(const Edge& edge, const Point3& faceNormal) {
    return std::abs(Dot(DirectionOf(edge), faceNormal)) <= SameDirection;
}

/// The first line of the drawing unless the largest face has a longer one. A first line that leans against
/// the face, as the arris of a tapered leg does, would have the part lean too: any edge of the face is
/// better.
const Edge& LongestLine(const std::vector<Edge>& edges, const Point3& faceNormal) {
    const Edge* longest = &edges.front();
    for (const Edge& edge : edges) {
        if (edge.owner != EdgeOf::LargestFace) continue;
        if (edge.length > longest->length || !LiesAlong(*longest, faceNormal)) longest = &edge;
    }
    return *longest;
}

/// An edge that continues in the line of another doesn't show on which side of it the part is.
bool InLine(const Edge& edge, const Edge& longest) {
    const Point3 delta = edge.end - edge.start;
    return Size(Across(delta, DirectionOf(longest))) <= SameDirection * Size(delta);
}

bool ConnectsTo(const Edge& edge, const Edge& longest) {
    if (edge.owner != EdgeOf::OtherFace || edge.line == longest.line) return false;
    if (!NearlyEqual(edge.start, longest.start) && !NearlyEqual(edge.end, longest.start)) return false;
    return edge.length <= longest.length && !IsTwin(edge, longest) && !InLine(edge, longest);
}

/// The shortest of the edges that meet the longest one in its start: in practice the one across the
/// thickness.
const Edge* ConnectedLine(const std::vector<Edge>& edges, const Edge& longest) {
    const Edge* connected = nullptr;
    for (const Edge& edge : edges)
        if ((connected == nullptr || edge.length < connected->length) && ConnectsTo(edge, longest))
            connected = &edge;
    return connected;
}

/// The end of the connected line that doesn't lie on the longest.
Point3 FarEnd(const Edge& connected, const Edge& longest) {
    const bool endTouches =
        NearlyEqual(connected.end, longest.start) || NearlyEqual(connected.end, longest.end);
    return endTouches ? connected.start : connected.end;
}

/// The point that goes to +Y. Where the two edges make a plane that is neither the largest face nor square to
/// it, as at the bevelled edge of a mitred rail, the far end is moved to where it stands square above the
/// face: by itself it would leave the part leaning by the angle of the bevel.
Point3 TowardsY(const Edge& connected, const Edge& longest, const Point3& faceNormal) {
    const Point3 far = FarEnd(connected, longest);
    const Point3 x = DirectionOf(longest);
    const Point3 across = Across(far - longest.start, x);
    const double small = SameDirection * Size(across);
    const double above = Dot(across, faceNormal);
    const bool bevelled = std::abs(above) > small && Size(across + faceNormal * -above) > small;
    if (!bevelled || !LiesAlong(longest, faceNormal)) return far;
    return longest.start + faceNormal * above;
}

}  // namespace

std::variant<SquaringPoints, MissingEdge> FindSquaringPoints(AcadDocument& drawing,
                                                             const Point3& faceNormal) {
    const std::vector<Edge> edges = EdgesOf(drawing);
    if (edges.empty()) return MissingEdge::Line;
    const Edge& longest = LongestLine(edges, faceNormal);
    const Edge* connected = ConnectedLine(edges, longest);
    if (connected == nullptr) return MissingEdge::ConnectedLine;
    return SquaringPoints{longest.start, longest.end, TowardsY(*connected, longest, faceNormal)};
}

void SquareToAxes(AcadDocument& drawing, const SquaringPoints& points, std::string_view sideOfY) {
    drawing.SendCommand("align ");
    drawing.SendCommand("all  ");
    drawing.SendCommand(PointAnswer(points.origin));
    drawing.SendCommand("0,0,0 ");
    drawing.SendCommand(PointAnswer(points.onX));
    drawing.SendCommand("1000,0,0 ");
    drawing.SendCommand(PointAnswer(points.towardsY));
    drawing.SendCommand(sideOfY);
}

}  // namespace brenvik
