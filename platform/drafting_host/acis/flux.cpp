// On each of the analytic surfaces the distance of a point's tangent plane from the surface's own centre
// depends on v alone, so the integral over the face becomes one along its loops. What the centre lies off
// the origin adds the face's vector area, which is an integral along the edges too.
#include "drafting_host/acis/flux.h"

#include <Geom_Circle.hxx>
#include <Geom_Ellipse.hxx>
#include <Geom_Line.hxx>

#include <cmath>
#include <numbers>

#include "base/angles.h"

namespace brenvik::acis {
namespace {

// Half the integral of position times step along an edge, seen from the origin.
gp_XYZ SweptArea(const EdgeNode& edge, const Nodes& nodes, const gp_XYZ& origin) {
    const gp_XYZ start = nodes.vertices[static_cast<std::size_t>(edge.start)].place.XYZ() - origin;
    const gp_XYZ end = nodes.vertices[static_cast<std::size_t>(edge.end)].place.XYZ() - origin;
    if (const auto* circle = dynamic_cast<const Geom_Circle*>(edge.curve.get())) {
        const gp_XYZ centre = circle->Location().XYZ() - origin;
        const double sector = circle->Radius() * circle->Radius() * (edge.last - edge.first);
        return (centre.Crossed(end - start) + circle->Axis().Direction().XYZ() * sector) / 2;
    }
    if (const auto* ellipse = dynamic_cast<const Geom_Ellipse*>(edge.curve.get())) {
        const gp_XYZ centre = ellipse->Location().XYZ() - origin;
        const double sector = ellipse->MajorRadius() * ellipse->MinorRadius() * (edge.last - edge.first);
        return (centre.Crossed(end - start) + ellipse->Axis().Direction().XYZ() * sector) / 2;
    }
    if (edge.curve->IsKind(STANDARD_TYPE(Geom_Line))) return start.Crossed(end) / 2;
    constexpr int steps = 64;  // enough to distinguish inside from outside
    gp_XYZ area(0, 0, 0);
    gp_XYZ previous = edge.curve->Value(edge.first).XYZ() - origin;
    for (int i = 1; i <= steps; ++i) {
        const gp_XYZ next =
            edge.curve->Value(edge.first + (edge.last - edge.first) * i / steps).XYZ() - origin;
        area += previous.Crossed(next) / 2;
        previous = next;
    }
    return area;
}

// The integral over v of the distance of the tangent plane from the centre times the area element.
double Primitive(const SurfaceFrame& frame, double v) {
    const double major = frame.radius;
    const double minor = frame.minorRadius;
    switch (frame.kind) {
        case SurfaceFrame::Kind::Plane:
        case SurfaceFrame::Kind::Cone:
            return 0;  // the tangent planes go through the origin or the apex
        case SurfaceFrame::Kind::Free:
            return 0;  // left to the modeller's own integration
        case SurfaceFrame::Kind::Cylinder:
            return major * major * v;
        case SurfaceFrame::Kind::EllipticCylinder:
            return major * minor * v;
        case SurfaceFrame::Kind::Sphere:
            return major * major * major * std::sin(v);
        case SurfaceFrame::Kind::Torus:
            return minor * (1.5 * major * minor * v + (major * major + minor * minor) * std::sin(v) +
                            major * minor * std::sin(2 * v) / 4);
    }
    return 0;
}

gp_XYZ Centre(const SurfaceFrame& frame) {
    const gp_XYZ location = frame.axes.Location().XYZ();
    if (frame.kind != SurfaceFrame::Kind::Cone) return location;
    return location - frame.axes.Direction().XYZ() * (frame.radius / std::tan(frame.semiAngle));
}

double WholeFlux(const SurfaceFrame& frame) {
    if (frame.kind == SurfaceFrame::Kind::Sphere) return 2 * FullTurn * std::pow(frame.radius, 3);
    const double turn = std::numbers::pi;
    return FullTurn * (Primitive(frame, turn) - Primitive(frame, -turn));
}

// Minus the integral of the primitive along u: the face lies to the left of the walk.
double AlongLoops(const SurfaceFrame& frame, const FaceChart& chart) {
    double sum = 0;
    for (const LoopChart& loop : chart.loops) {
        for (const ChartPiece& piece : loop.pieces) {
            for (std::size_t i = 1; i < piece.samples.size(); ++i) {
                const gp_Pnt2d& a = piece.samples[i - 1];
                const gp_Pnt2d& b = piece.samples[i];
                if (a.X() == b.X()) continue;
                sum -= (Primitive(frame, a.Y()) + Primitive(frame, b.Y())) / 2 * (b.X() - a.X());
            }
        }
    }
    if (!chart.pair || !chart.pair->alongU) return sum;
    // Spread points close the band where a loop is missing.
    if (chart.pair->low < 0) sum -= FullTurn * Primitive(frame, frame.LowSingularity().value_or(0));
    if (chart.pair->high < 0) sum += FullTurn * Primitive(frame, frame.HighSingularity().value_or(0));
    return sum;
}

// Loops around a torus tube leave the seams at both ends of v, which do not cancel in this integral.
double AcrossTube(const SurfaceFrame& frame, const FaceChart& chart) {
    const double low = chart.loops[static_cast<std::size_t>(chart.pair->low)].pieces.front().Start().X();
    const double high = chart.loops[static_cast<std::size_t>(chart.pair->high)].pieces.front().Start().X();
    return (Primitive(frame, FullTurn) - Primitive(frame, 0)) * (high - low);
}

}  // namespace

double Flux(const FacePlan& face, const FaceChart* chart, const Nodes& nodes, const gp_XYZ& origin) {
    const double side = face.naturalSide ? 1 : -1;
    if (chart == nullptr) return side * WholeFlux(face.frame);
    double flux =
        chart->pair && !chart->pair->alongU ? AcrossTube(face.frame, *chart) : AlongLoops(face.frame, *chart);
    gp_XYZ area(0, 0, 0);
    for (const LoopUse& loop : face.loops) {
        for (const CoedgeUse& use : loop) {
            const gp_XYZ swept = SweptArea(nodes.edges[static_cast<std::size_t>(use.edge)], nodes, origin);
            area += use.forward ? swept : swept.Reversed();
        }
    }
    flux += (Centre(face.frame) - origin).Dot(area);
    return side * flux;
}

}  // namespace brenvik::acis
