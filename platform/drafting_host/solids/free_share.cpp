// By the theorem of Green: the flux from the face's lowest u up to each point of its boundary, summed up
// along the boundary over v. Between two knots a spline is a polynomial, so the rule of Gauss is laid over
// each span on its own.
#include "drafting_host/solids/free_share.h"

#include <BRepAdaptor_Surface.hxx>
#include <BRep_Tool.hxx>
#include <Geom2dAdaptor_Curve.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace brenvik::solids {
namespace {

using Bounds = std::vector<double>;

/// What has no knots bends like a circle, and gets eighths.
constexpr std::size_t FewestSpans = 8;
/// Places on the surface for one face; more would take seconds.
constexpr std::size_t MostPlaces = 400000;

struct GaussPoint {
    double place, weight;
};
/// Exact for polynomials up to the seventh degree.
constexpr std::array<GaussPoint, 4> Rule{{{-0.861136311594053, 0.347854845137454},
                                          {-0.339981043584856, 0.652145154862546},
                                          {0.339981043584856, 0.652145154862546},
                                          {0.861136311594053, 0.347854845137454}}};

template <class Integrand>
double Integrate(double low, double high, const Integrand& integrand) {
    const double middle = (low + high) / 2, half = (high - low) / 2;
    double sum = 0;
    for (const GaussPoint& point : Rule) sum += point.weight * integrand(middle + half * point.place);
    return sum * half;
}

Bounds ToBounds(const TColStd_Array1OfReal& knots) { return {knots.begin(), knots.end()}; }

/// The bounds in order, each span halved until there are enough.
Bounds Refined(Bounds bounds) {
    std::ranges::sort(bounds);
    bounds.erase(std::unique(bounds.begin(), bounds.end()), bounds.end());
    while (bounds.size() > 1 && bounds.size() <= FewestSpans) {
        const std::size_t count = bounds.size();
        for (std::size_t i = 1; i < count; ++i) bounds.push_back((bounds[i - 1] + bounds[i]) / 2);
        std::ranges::sort(bounds);
    }
    return bounds;
}

/// An edge on the face: its trace, and where this passes from one span to the next.
struct Trace {
    Handle(Geom2d_Curve) curve;
    Bounds bounds;
    double sign = 1;
};

class FreeFace {
  public:
    FreeFace(const TopoDS_Face& face, const gp_XYZ& origin)
        : mFace(TopoDS::Face(face.Oriented(TopAbs_FORWARD))),
          mSurface(mFace, Standard_False),
          mOrigin(origin) {
        TColStd_Array1OfReal u(1, mSurface.NbUIntervals(GeomAbs_CN) + 1);
        TColStd_Array1OfReal v(1, mSurface.NbVIntervals(GeomAbs_CN) + 1);
        mSurface.UIntervals(u, GeomAbs_CN);
        mSurface.VIntervals(v, GeomAbs_CN);
        mUKnots = Refined(ToBounds(u));
        mVKnots = ToBounds(v);
    }

    std::optional<double> Flux() {
        for (TopExp_Explorer edge(mFace, TopAbs_EDGE); edge.More(); edge.Next())
            if (!Take(TopoDS::Edge(edge.Current()))) return std::nullopt;
        std::size_t places = 0;
        for (const Trace& trace : mTraces)
            places += trace.bounds.size() * mUKnots.size() * Rule.size() * Rule.size();
        if (places > MostPlaces) return std::nullopt;
        double flux = 0;
        for (const Trace& trace : mTraces) flux += Along(trace);
        return flux;
    }

  private:
    bool Take(const TopoDS_Edge& edge) {
        if (edge.Orientation() != TopAbs_FORWARD && edge.Orientation() != TopAbs_REVERSED) return true;
        double first = 0, last = 0;
        Trace trace;
        trace.curve = BRep_Tool::CurveOnSurface(edge, mFace, first, last);
        if (trace.curve.IsNull()) return false;
        trace.sign = edge.Orientation() == TopAbs_REVERSED ? -1 : 1;
        const Geom2dAdaptor_Curve adaptor(trace.curve, first, last);
        TColStd_Array1OfReal knots(1, adaptor.NbIntervals(GeomAbs_CN) + 1);
        adaptor.Intervals(knots, GeomAbs_CN);
        trace.bounds = Refined(ToBounds(knots));
        AddCrossings(trace);
        for (const double bound : trace.bounds) mLowestU = std::min(mLowestU, trace.curve->Value(bound).X());
        mTraces.push_back(std::move(trace));
        return true;
    }

    /// Where a trace passes the knots of v.
    void AddCrossings(Trace& trace) const {
        const Bounds bounds = trace.bounds;
        for (std::size_t i = 1; i < bounds.size(); ++i) {
            const double from = trace.curve->Value(bounds[i - 1]).Y();
            const double to = trace.curve->Value(bounds[i]).Y();
            const auto [low, high] = std::minmax(from, to);
            const double edge = 1e-9 * (high - low);
            for (auto knot = std::ranges::upper_bound(mVKnots, low + edge);
                 knot != mVKnots.end() && *knot < high - edge; ++knot)
                trace.bounds.push_back(PlaceOf(*knot, *trace.curve, bounds[i - 1], bounds[i], to > from));
        }
        std::ranges::sort(trace.bounds);
    }

    static double PlaceOf(double v, const Geom2d_Curve& curve, double low, double high, bool rises) {
        constexpr int halvings = 40;
        for (int i = 0; i < halvings; ++i) {
            const double middle = (low + high) / 2;
            ((curve.Value(middle).Y() < v) == rises ? low : high) = middle;
        }
        return (low + high) / 2;
    }

    double Along(const Trace& trace) const {
        double sum = 0;
        for (std::size_t i = 1; i < trace.bounds.size(); ++i) {
            sum += Integrate(trace.bounds[i - 1], trace.bounds[i], [&](double place) {
                gp_Pnt2d point;
                gp_Vec2d way;
                trace.curve->D1(place, point, way);
                // Along an edge of constant v nothing is gained.
                return way.Y() == 0 ? 0 : UpTo(point.X(), point.Y()) * way.Y();
            });
        }
        return trace.sign * sum;
    }

    /// The flux through the strip from the lowest u, for each unit of v.
    double UpTo(double u, double v) const {
        double sum = 0;
        double low = mLowestU;
        const auto strip = [&](double high) {
            if (high <= low) return;
            sum += Integrate(low, high, [&](double place) {
                gp_Pnt point;
                gp_Vec uWay, vWay;
                mSurface.D1(place, v, point, uWay, vWay);
                return (point.XYZ() - mOrigin).Dot(uWay.XYZ().Crossed(vWay.XYZ()));
            });
            low = high;
        };
        for (const double knot : mUKnots) strip(std::min(knot, u));
        strip(u);
        return sum;
    }

    TopoDS_Face mFace;
    BRepAdaptor_Surface mSurface;
    gp_XYZ mOrigin;
    Bounds mUKnots, mVKnots;
    std::vector<Trace> mTraces;
    double mLowestU = 1e300;
};

}  // namespace

std::optional<double> FreeShare(const TopoDS_Face& face, const gp_XYZ& origin) {
    const std::optional<double> flux = FreeFace(face, origin).Flux();
    if (!flux) return std::nullopt;
    return (face.Orientation() == TopAbs_REVERSED ? -*flux : *flux) / 3;
}

}  // namespace brenvik::solids
