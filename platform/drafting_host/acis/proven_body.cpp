// Most parts are judged by their faces alone. The others are read back and compared, and where that fails are
// written once more with their edges fitted to their faces, then with all faces as splines, and at last with
// their corners moved.
#include "drafting_host/acis/proven_body.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRepBuilderAPI_Copy.hxx>
#include <BRepBuilderAPI_NurbsConvert.hxx>
#include <BRepGProp.hxx>
#include <BRepLib.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <Geom2d_Curve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_Curve.hxx>
#include <Geom_Line.hxx>
#include <Standard_Failure.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopTools_IndexedDataMapOfShapeListOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Vertex.hxx>
#include <gp_Sphere.hxx>

#include "base/failure.h"
#include "drafting_host/solids/mass.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brenvik::acis {
namespace {

// What goes wrong in reading is a whole face or its complement, so faces are compared roughly: by chords of
// their boundaries, and where those disagree by the modeller's integration, which over splines is no finer.
constexpr double AreaShare = 0.01;
// Edges that gape a little change a thin board by that much.
constexpr double VolumeShare = 2e-3;
constexpr int Chords = 16;
// Edges that the writer fits anew are held to this.
constexpr double Fitted = 1e-6;

/// A face by its boundary.
struct Gauge {
    enum class Kind { Flat, Ball, Other };
    Kind kind = Kind::Other;
    double area = 0;  ///< Of a flat face or a ball its own; of others the area in the parameters.
    double perimeter = 0;
    double tolerance = 0;                                     ///< The widest gap at an edge.
    gp_XYZ low{1e99, 1e99, 1e99}, high{-1e99, -1e99, -1e99};  ///< Of the corners.

    void Take(const gp_Pnt& point) {
        for (int axis = 1; axis <= 3; ++axis) {
            low.SetCoord(axis, std::min(low.Coord(axis), point.Coord(axis)));
            high.SetCoord(axis, std::max(high.Coord(axis), point.Coord(axis)));
        }
    }
};

std::vector<TopoDS_Face> FacesOf(const TopoDS_Shape& shape) {
    std::vector<TopoDS_Face> faces;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        faces.push_back(TopoDS::Face(face.Current().Oriented(TopAbs_FORWARD)));
    return faces;
}

std::size_t SolidsOf(const TopoDS_Shape& shape) {
    std::size_t count = 0;
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) ++count;
    return count;
}

// The chords of an edge in space: its length, its swing about the origin, and its corners. The vertex of a
// ring may stand anywhere on it, and the reader puts seams where it likes.
gp_XYZ TakeEdge(const TopoDS_Face& face, const TopoDS_Edge& edge, Gauge& gauge) {
    gp_XYZ swing(0, 0, 0);
    double first = 0;
    double last = 0;
    const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
    if (curve.IsNull()) return swing;
    gauge.tolerance = std::max(gauge.tolerance, BRep_Tool::Tolerance(edge));
    const int steps = curve->IsKind(STANDARD_TYPE(Geom_Line)) ? 1 : Chords;
    const gp_Pnt begin = curve->Value(first);
    gp_Pnt previous = begin;
    for (int i = 1; i <= steps; ++i) {
        const gp_Pnt next = curve->Value(first + (last - first) * i / steps);
        gauge.perimeter += previous.Distance(next);
        swing += previous.XYZ().Crossed(next.XYZ()) / 2;
        previous = next;
    }
    if (begin.Distance(previous) > 1e-4 && !BRep_Tool::IsClosed(edge, face)) {
        gauge.Take(begin);
        gauge.Take(previous);
    }
    return edge.Orientation() == TopAbs_REVERSED ? swing.Reversed() : swing;
}

// The integral of -v du along the edge, on a ball of -sin v du.
double ParameterShare(const TopoDS_Face& face, const TopoDS_Edge& edge, Gauge::Kind kind) {
    double first = 0;
    double last = 0;
    const Handle(Geom2d_Curve) curve = BRep_Tool::CurveOnSurface(edge, face, first, last);
    if (curve.IsNull()) return 0;
    const auto height = [&](double v) { return kind == Gauge::Kind::Ball ? std::sin(v) : v; };
    const int steps = curve->IsKind(STANDARD_TYPE(Geom2d_Line)) && kind != Gauge::Kind::Ball ? 1 : Chords;
    double sum = 0;
    gp_Pnt2d previous = curve->Value(first);
    for (int i = 1; i <= steps; ++i) {
        const gp_Pnt2d next = curve->Value(first + (last - first) * i / steps);
        sum -= (height(previous.Y()) + height(next.Y())) / 2 * (next.X() - previous.X());
        previous = next;
    }
    return edge.Orientation() == TopAbs_REVERSED ? -sum : sum;
}

Gauge GaugeOf(const TopoDS_Face& face) {
    Gauge gauge;
    const BRepAdaptor_Surface surface(face, false);
    if (surface.GetType() == GeomAbs_Plane) gauge.kind = Gauge::Kind::Flat;
    if (surface.GetType() == GeomAbs_Sphere) gauge.kind = Gauge::Kind::Ball;
    gp_XYZ swing(0, 0, 0);
    double share = 0;
    for (TopExp_Explorer explorer(face, TopAbs_EDGE); explorer.More(); explorer.Next()) {
        const TopoDS_Edge& edge = TopoDS::Edge(explorer.Current());
        if (edge.Orientation() != TopAbs_FORWARD && edge.Orientation() != TopAbs_REVERSED) continue;
        swing += TakeEdge(face, edge, gauge);
        if (gauge.kind != Gauge::Kind::Flat) share += ParameterShare(face, edge, gauge.kind);
    }
    gauge.area = gauge.kind == Gauge::Kind::Flat ? swing.Modulus() : std::abs(share);
    if (gauge.kind == Gauge::Kind::Ball) gauge.area *= std::pow(surface.Sphere().Radius(), 2);
    return gauge;
}

double IntegratedArea(const TopoDS_Face& face) {
    GProp_GProps area;
    BRepGProp::SurfaceProperties(face, area);
    return std::abs(area.Mass());
}

bool SameFace(const TopoDS_Face& before, const Gauge& was, const TopoDS_Face& after, const Gauge& is) {
    if (was.kind == is.kind && std::abs(was.area - is.area) <= 1e-3 * was.area) return true;
    const double area = IntegratedArea(before);
    const double gap = std::max(was.tolerance, is.tolerance);
    return std::abs(IntegratedArea(after) - area) <= AreaShare * area + 4 * gap * was.perimeter;
}

bool SameCorners(const Gauge& one, const Gauge& other) {
    const double gap = 1e-5 + 2 * std::max(one.tolerance, other.tolerance);
    return one.low.IsEqual(other.low, gap) && one.high.IsEqual(other.high, gap);
}

// The faces after, each at the place of the one before that it is. Sheets are written connected piece by
// connected piece, whatever order they stand in.
std::vector<TopoDS_Face> InOrderOf(const std::vector<TopoDS_Face>& was, std::vector<TopoDS_Face> is) {
    std::vector<Gauge> gauges;
    for (const TopoDS_Face& face : is) gauges.push_back(GaugeOf(face));
    for (std::size_t i = 0; i < was.size(); ++i) {
        const Gauge gauge = GaugeOf(was[i]);
        for (std::size_t k = i; k < is.size(); ++k) {
            if (!SameCorners(gauge, gauges[k]) || !SameFace(was[i], gauge, is[k], gauges[k])) continue;
            std::swap(is[i], is[k]);
            std::swap(gauges[i], gauges[k]);
            break;
        }
    }
    return is;
}

std::optional<std::string> Difference(const TopoDS_Shape& before, const TopoDS_Shape& after) {
    const std::size_t count = SolidsOf(before);
    if (SolidsOf(after) != count)
        return std::to_string(count) + " solids became " + std::to_string(SolidsOf(after));
    const std::vector<TopoDS_Face> was = FacesOf(before);
    std::vector<TopoDS_Face> is = FacesOf(after);
    if (was.size() != is.size())
        return std::to_string(was.size()) + " faces became " + std::to_string(is.size());
    if (count == 0) is = InOrderOf(was, std::move(is));
    Gauge all;
    Gauge allAfter;
    double gap = 0;
    for (std::size_t i = 0; i < was.size(); ++i) {
        const Gauge one = GaugeOf(was[i]);
        const Gauge other = GaugeOf(is[i]);
        if (!SameFace(was[i], one, is[i], other))
            return "face " + std::to_string(i + 1) + " changed its size";
        gap = std::max({gap, one.tolerance, other.tolerance});
        for (const auto& [gauge, part] : {std::pair{&all, &one}, std::pair{&allAfter, &other}}) {
            if (part->low.X() > part->high.X()) continue;
            gauge->Take(part->low);
            gauge->Take(part->high);
        }
    }
    const double moved = std::max((all.low - allAfter.low).Modulus(), (all.high - allAfter.high).Modulus());
    if (all.low.X() <= all.high.X() && moved > 1e-5 + 2 * gap) return std::string("the corners moved");
    if (count == 0) return std::nullopt;
    const double volume = solids::Volume(before);
    if (std::abs(solids::Volume(after) - volume) > VolumeShare * std::abs(volume))
        return std::string("the volume changed");
    return std::nullopt;
}

std::string Joined(const std::vector<std::string>& lines) {
    std::size_t size = 0;
    for (const std::string& line : lines) size += line.size() + 1;
    std::string text;
    text.reserve(size);
    for (const std::string& line : lines) (text += line) += '\n';
    return text;
}

// Curves on the faces that keep step with the curves in space, and tolerances that own up to what is left.
TopoDS_Shape Refitted(const TopoDS_Shape& shape) {
    const TopoDS_Shape copy = BRepBuilderAPI_Copy(shape).Shape();
    BRepLib::SameParameter(copy, Fitted, true);
    return copy;
}

// Corners in the middle of the ends that meet there, each of which then lies half as far off.
TopoDS_Shape Centred(const TopoDS_Shape& shape) {
    const TopoDS_Shape copy = BRepBuilderAPI_Copy(shape).Shape();
    TopTools_IndexedDataMapOfShapeListOfShape corners;
    TopExp::MapShapesAndAncestors(copy, TopAbs_VERTEX, TopAbs_EDGE, corners);
    for (int i = 1; i <= corners.Extent(); ++i) {
        const TopoDS_Vertex& corner = TopoDS::Vertex(corners.FindKey(i));
        Gauge ends;
        for (const TopoDS_Shape& one : corners(i)) {
            const TopoDS_Edge edge = TopoDS::Edge(one.Oriented(TopAbs_FORWARD));
            double first = 0;
            double last = 0;
            const Handle(Geom_Curve) curve = BRep_Tool::Curve(edge, first, last);
            if (curve.IsNull()) continue;
            if (TopExp::FirstVertex(edge).IsSame(corner)) ends.Take(curve->Value(first));
            if (TopExp::LastVertex(edge).IsSame(corner)) ends.Take(curve->Value(last));
        }
        if (ends.low.X() > ends.high.X()) continue;
        const gp_Pnt middle((ends.low + ends.high) / 2);
        BRep_Builder().UpdateVertex(corner, middle,
                                    BRep_Tool::Tolerance(corner) + middle.Distance(BRep_Tool::Pnt(corner)));
    }
    return copy;
}

TopoDS_Shape AsSplines(const TopoDS_Shape& shape) { return BRepBuilderAPI_NurbsConvert(shape, true).Shape(); }

}  // namespace

std::optional<std::string> ReadBackFault(const TopoDS_Shape& shape, const std::vector<std::string>& lines) {
    const ReadResult read = ReadText(Joined(lines));
    for (const Problem& problem : read.problems)
        if (problem.lost) return problem.text;
    if (read.bodies.size() != 1) return std::string("no body came back");
    try {
        return Difference(shape, read.bodies.front());
    } catch (const Standard_Failure& failure) {
        return std::string("its faces cannot be measured: ") + failure.DynamicType()->Name();
    } catch (const Failure& failure) {
        return std::string("its volume cannot be measured: ") + failure.what();
    }
}

ProvenBody ProveBody(const TopoDS_Shape& shape) {
    std::string fault;
    constexpr TopoDS_Shape (*ways[])(const TopoDS_Shape&) = {nullptr, Refitted, AsSplines, Centred};
    for (const auto& way : ways) {
        try {
            ProvenBody body;
            body.shape = way == nullptr ? shape : way(shape);
            body.lines = WriteText(body.shape);
            if (way == nullptr && FitsPlainly(shape)) return body;
            const auto found = ReadBackFault(shape, body.lines);
            if (!found) return body;
            if (fault.empty()) fault = "the body would not come back as it is: " + *found;
        } catch (const WriteFailure& failure) {
            if (fault.empty()) fault = failure.what();
        } catch (const Standard_Failure& failure) {
            if (fault.empty())
                fault = std::string("the body cannot be written: ") + failure.DynamicType()->Name();
        }
        if (shape.IsNull()) break;
    }
    throw WriteFailure(fault);
}

}  // namespace brenvik::acis
