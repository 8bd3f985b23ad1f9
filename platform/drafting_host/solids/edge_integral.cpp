// Edge integrals by formula where the curve has one, by Gauss-Legendre quadrature elsewhere.
#include "drafting_host/solids/edge_integral.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRep_Tool.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp.hxx>
#include <TopoDS_Vertex.hxx>
#include <algorithm>
#include <array>
#include <cmath>

namespace brenvik::solids {
namespace {

/// Abscissas and weights of the 10-point rule on (-1, 1); the other half lies mirrored.
constexpr std::array<std::pair<double, double>, 5> GaussPoints{{{0.1488743389816312, 0.2955242247147529},
                                                                {0.4333953941292472, 0.2692667193099963},
                                                                {0.6794095682990244, 0.2190863625159820},
                                                                {0.8650633666889845, 0.1494513491505806},
                                                                {0.9739065285171717, 0.0666713443086881}}};

/// Sums `integrand(point, tangent)` over the curve, piece by piece between its knots, each of which bends
/// anew. Few spans are cut into more pieces, so that conics (up to a full turn) reach the accuracy of
/// doubles.
template <class Value, class Integrand>
Value Integrate(const BRepAdaptor_Curve& curve, Value sum, const Integrand& integrand) {
    const int spans = std::max(1, curve.NbIntervals(GeomAbs_CN));
    TColStd_Array1OfReal knots(1, spans + 1);
    curve.Intervals(knots, GeomAbs_CN);
    constexpr int fewSpans = 8;
    const int pieces = spans == 1 ? 16 : spans < fewSpans ? 4 : 1;
    for (int span = 1; span <= spans; ++span) {
        const double width = (knots(span + 1) - knots(span)) / pieces;
        for (int piece = 0; piece < pieces; ++piece) {
            const double middle = knots(span) + (piece + 0.5) * width;
            for (const auto& [abscissa, weight] : GaussPoints) {
                for (const double side : {-1.0, 1.0}) {
                    gp_Pnt point;
                    gp_Vec tangent;
                    curve.D1(middle + side * abscissa * width / 2, point, tangent);
                    sum += integrand(point.XYZ(), tangent.XYZ()) * (weight * width / 2);
                }
            }
        }
    }
    return sum;
}

gp_XYZ StartOf(const TopoDS_Edge& edge, const BRepAdaptor_Curve& curve) {
    const TopoDS_Vertex vertex = TopExp::FirstVertex(edge);
    return vertex.IsNull() ? curve.Value(curve.FirstParameter()).XYZ() : BRep_Tool::Pnt(vertex).XYZ();
}

gp_XYZ EndOf(const TopoDS_Edge& edge, const BRepAdaptor_Curve& curve) {
    const TopoDS_Vertex vertex = TopExp::LastVertex(edge);
    return vertex.IsNull() ? curve.Value(curve.LastParameter()).XYZ() : BRep_Tool::Pnt(vertex).XYZ();
}

/// Half of p × dp along an arc of a circle or ellipse: the swing of the chord about the origin, and the
/// sector about the centre.
gp_XYZ SweptConic(const TopoDS_Edge& edge, const BRepAdaptor_Curve& curve, const gp_XYZ& center,
                  const gp_XYZ& sector, const gp_XYZ& origin) {
    const gp_XYZ chord =
        BRep_Tool::IsClosed(edge) ? gp_XYZ(0, 0, 0) : EndOf(edge, curve) - StartOf(edge, curve);
    const double angle = curve.LastParameter() - curve.FirstParameter();
    return (center - origin).Crossed(chord) * 0.5 + sector * (angle / 2);
}

}  // namespace

gp_XYZ SweptArea(const TopoDS_Edge& edge, const gp_XYZ& origin) {
    if (BRep_Tool::Degenerated(edge)) return gp_XYZ(0, 0, 0);
    const BRepAdaptor_Curve curve(edge);
    switch (curve.GetType()) {
        case GeomAbs_Line:
            return (StartOf(edge, curve) - origin).Crossed(EndOf(edge, curve) - origin) * 0.5;
        case GeomAbs_Circle: {
            const gp_Circ circle = curve.Circle();
            const gp_XYZ sector = circle.XAxis().Direction().XYZ().Crossed(circle.YAxis().Direction().XYZ());
            return SweptConic(edge, curve, circle.Location().XYZ(),
                              sector * (circle.Radius() * circle.Radius()), origin);
        }
        case GeomAbs_Ellipse: {
            const gp_Elips ellipse = curve.Ellipse();
            const gp_XYZ sector =
                ellipse.XAxis().Direction().XYZ().Crossed(ellipse.YAxis().Direction().XYZ());
            return SweptConic(edge, curve, ellipse.Location().XYZ(),
                              sector * (ellipse.MajorRadius() * ellipse.MinorRadius()), origin);
        }
        case GeomAbs_Hyperbola:
        case GeomAbs_Parabola:
        case GeomAbs_BezierCurve:
        case GeomAbs_BSplineCurve:
        case GeomAbs_OffsetCurve:
        case GeomAbs_OtherCurve:
            break;
    }
    return Integrate(curve, gp_XYZ(0, 0, 0), [&](const gp_XYZ& point, const gp_XYZ& tangent) {
        return (point - origin).Crossed(tangent) * 0.5;
    });
}

double CylinderArea(const TopoDS_Edge& edge, const gp_Cylinder& cylinder) {
    if (BRep_Tool::Degenerated(edge)) return 0;
    const BRepAdaptor_Curve curve(edge);
    if (curve.GetType() == GeomAbs_Line) return 0;  // straight on a cylinder means along its axis
    const gp_XYZ axis = cylinder.Axis().Direction().XYZ();
    const gp_XYZ foot = cylinder.Location().XYZ();
    if (curve.GetType() == GeomAbs_Circle) {
        const gp_Circ circle = curve.Circle();
        const double turn =
            circle.XAxis().Direction().XYZ().Crossed(circle.YAxis().Direction().XYZ()).Dot(axis);
        if (std::abs(turn) > 1 - 1e-12) {
            const double height = (circle.Location().XYZ() - foot).Dot(axis);
            const double angle = curve.LastParameter() - curve.FirstParameter();
            return -height * cylinder.Radius() * angle * (turn > 0 ? 1 : -1);
        }
    }
    return Integrate(curve, 0.0, [&](const gp_XYZ& point, const gp_XYZ& tangent) {
        const gp_XYZ arm = point - foot;
        const double height = arm.Dot(axis);
        const gp_XYZ radial = arm - axis * height;
        // r du is the part of the step across the radius; on the surface itself |radial| is r.
        return -height * axis.Crossed(radial).Dot(tangent) / radial.Modulus();
    });
}

}  // namespace brenvik::solids
