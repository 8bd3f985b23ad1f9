// Laying out loops. Circles around a round surface and lines along it are straight lines in its
// parameters and stay exact; other edges, such as a slanted cut through a bore, are interpolated.
#include "drafting_host/acis/loop_chart.h"

#include "base/angles.h"
#include "drafting_host/acis/free_chart.h"

#include <BSplCLib.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <Geom2d_Line.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_Line.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <TColgp_Array1OfPnt2d.hxx>

#include <algorithm>
#include <array>
#include <cmath>

namespace brenvik::acis {
namespace {

// Between neighbouring samples a curve that keeps clear of the poles turns far less than this.
constexpr double LongestStep = 2.0;
// A slanted cut all round a bore is met to 1e-12 of the radius.
constexpr int InterpolationPoints = 65;
// Pieces of a free curve meet with less smoothness, which takes closer points.
constexpr int PointsPerPiece = 12;
constexpr int MostInterpolationPoints = 1025;
constexpr int SplineDegree = 7;
constexpr double SlopeNoise = 1e-6;

double Nearest(double value, double reference) {
    return value - FullTurn * std::round((value - reference) / FullTurn);
}

gp_Pnt2d NearestTurn(const SurfaceFrame& frame, gp_Pnt2d uv, const gp_Pnt2d& reference) {
    if (frame.UPeriodic()) uv.SetX(Nearest(uv.X(), reference.X()));
    if (frame.VPeriodic()) uv.SetY(Nearest(uv.Y(), reference.Y()));
    return uv;
}

gp_Pnt2d OnSurface(const SurfaceFrame& frame, const EdgeNode& edge, double t) {
    const gp_Pnt point = edge.curve->Value(t);
    const gp_Pnt2d uv = frame.Parameters(point);
    if (frame.Value(uv).Distance(point) > HealedFit)
        throw BadRecord(edge.record, "an edge does not lie on its face's surface");
    return uv;
}

// 0, 1 or -1 where a slope is one of these but for noise, else nothing.
std::optional<double> UnitSlope(double slope) {
    const double nearest = std::round(slope);
    if (std::abs(nearest) > 1 || std::abs(slope - nearest) > SlopeNoise) return std::nullopt;
    return nearest;
}

// The edge as a straight line along u or along v with the edge's own parameter, if it is one. Ends are
// left out of the test, since at a pole u means nothing.
Handle(Geom2d_Curve) StraightInParameters(const SurfaceFrame& frame, const EdgeNode& edge) {
    constexpr std::array<double, 5> places{1.0 / 16, 5.0 / 16, 0.5, 11.0 / 16, 15.0 / 16};
    std::array<double, places.size()> t{};
    std::array<gp_Pnt2d, places.size()> uv;
    for (std::size_t i = 0; i < places.size(); ++i) {
        t[i] = edge.first + places[i] * (edge.last - edge.first);
        uv[i] = OnSurface(frame, edge, t[i]);
        if (i > 0) uv[i] = NearestTurn(frame, uv[i], uv[i - 1]);
    }
    const double span = t.back() - t.front();
    const auto uSlope = UnitSlope((uv.back().X() - uv.front().X()) / span);
    const auto vSlope = UnitSlope((uv.back().Y() - uv.front().Y()) / span);
    if (!uSlope || !vSlope || std::abs(*uSlope) + std::abs(*vSlope) != 1) return {};
    const gp_Pnt2d& middle = uv[2];
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double du = uv[i].X() - (middle.X() + *uSlope * (t[i] - t[2]));
        const double dv = uv[i].Y() - (middle.Y() + *vSlope * (t[i] - t[2]));
        if (std::hypot(du * frame.UMetric(), dv * frame.VMetric()) > 10 * LooseFit) return {};
        if (std::abs(du) > SlopeNoise || std::abs(dv) > std::max(SlopeNoise, SlopeNoise * std::abs(span)))
            return {};
    }
    const gp_Dir2d direction(*uSlope, *vSlope);
    const gp_Pnt2d origin(middle.X() - *uSlope * t[2], middle.Y() - *vSlope * t[2]);
    return new Geom2d_Line(origin, direction);
}

// A spline through points at even parameters. Of a high degree, since the modeller integrates volumes
// over these curves: a cubic would show in the ninth place.
Handle(Geom2d_Curve)
    SplineThrough(TColgp_Array1OfPnt2d& points, const TColStd_Array1OfReal& parameters, long record) {
    const int count = points.Length();
    const int inner = count - SplineDegree - 1;
    TColStd_Array1OfReal knots(1, inner + 2);
    TColStd_Array1OfInteger multiplicities(1, inner + 2);
    multiplicities.Init(1);
    multiplicities(1) = multiplicities(inner + 2) = SplineDegree + 1;
    knots(1) = parameters(1);
    knots(inner + 2) = parameters(count);
    for (int k = 1; k <= inner; ++k) {
        double sum = 0;
        for (int i = 1; i <= SplineDegree; ++i) sum += parameters(k + i);
        knots(k + 1) = sum / SplineDegree;
    }
    TColStd_Array1OfReal flatKnots(1, count + SplineDegree + 1);
    BSplCLib::KnotSequence(knots, multiplicities, SplineDegree, Standard_False, flatKnots);
    TColStd_Array1OfInteger contacts(1, count);
    contacts.Init(0);
    int singular = 0;
    BSplCLib::Interpolate(SplineDegree, flatKnots, parameters, contacts, points, singular);
    if (singular != 0) throw BadRecord(record, "an edge cannot be laid out on its face's surface");
    return new Geom2d_BSplineCurve(points, knots, multiplicities, SplineDegree);
}

int PointCount(const EdgeNode& edge) {
    const auto spline = Handle(Geom_BSplineCurve)::DownCast(edge.curve);
    if (spline.IsNull()) return InterpolationPoints;
    return std::clamp(PointsPerPiece * (spline->NbKnots() - 1) + 1, InterpolationPoints,
                      MostInterpolationPoints);
}

Handle(Geom2d_Curve) Interpolated(const SurfaceFrame& frame, const EdgeNode& edge) {
    const int count = PointCount(edge);
    TColgp_Array1OfPnt2d points(1, count);
    TColStd_Array1OfReal parameters(1, count);
    for (int i = 1; i <= count; ++i) {
        const double t = edge.first + (edge.last - edge.first) * (i - 1) / (count - 1);
        gp_Pnt2d uv = OnSurface(frame, edge, t);
        if (i > 1) {
            const gp_Pnt2d& previous = points.Value(i - 1);
            uv = NearestTurn(frame, uv, previous);
            if (frame.UPeriodic() && std::abs(uv.X() - previous.X()) > LongestStep)
                throw BadRecord(edge.record, "an edge runs through the pole of its face's surface");
        }
        points.SetValue(i, uv);
        parameters.SetValue(i, t);
    }
    return SplineThrough(points, parameters, edge.record);
}

std::vector<gp_Pnt2d> Sample(const Handle(Geom2d_Curve) & curve, const EdgeNode& edge, bool forward) {
    const int steps = curve->IsKind(STANDARD_TYPE(Geom2d_Line)) ? 1 : 48;
    std::vector<gp_Pnt2d> samples;
    samples.reserve(static_cast<std::size_t>(steps) + 1);
    for (int i = 0; i <= steps; ++i)
        samples.push_back(curve->Value(edge.first + (edge.last - edge.first) * i / steps));
    if (!forward) std::reverse(samples.begin(), samples.end());
    return samples;
}

ChartPiece PlanePiece(const SurfaceFrame& frame, const EdgeNode& edge, const CoedgeUse& use) {
    // A plane needs no parameter curves; samples show the loop's sense and the edge's fit.
    ChartPiece piece;
    const int steps = edge.curve->IsKind(STANDARD_TYPE(Geom_Line)) ? 1 : 24;
    for (int i = 0; i <= steps; ++i)
        piece.samples.push_back(OnSurface(frame, edge, edge.first + (edge.last - edge.first) * i / steps));
    if (!use.forward) std::reverse(piece.samples.begin(), piece.samples.end());
    return piece;
}

class Charter {
  public:
    Charter(const SurfaceFrame& f, const Nodes& n, bool straight)
        : mFrame(f), mNodes(n), mStraightOnly(straight) {}

    LoopChart Run(const LoopUse& loop) {
        for (const CoedgeUse& use : loop) Append(Piece(use));
        Close();
        return std::move(mChart);
    }

  private:
    ChartPiece Piece(const CoedgeUse& use) const {
        const EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(use.edge)];
        ChartPiece piece;
        if (mFrame.kind == SurfaceFrame::Kind::Plane) {
            piece = PlanePiece(mFrame, edge, use);
        } else {
            piece.curve = StraightInParameters(mFrame, edge);
            if (piece.curve.IsNull()) {
                if (mStraightOnly)
                    throw BadRecord(edge.record, "an edge is not straight on its face's surface");
                piece.curve = Interpolated(mFrame, edge);
            }
            piece.samples = Sample(piece.curve, edge, use.forward);
        }
        piece.edge = use.edge;
        piece.forward = use.forward;
        piece.startVertex = use.forward ? edge.start : edge.end;
        return piece;
    }

    // -1 at the lower end of v, 1 at the upper, 0 away from both.
    int SingularEnd(const gp_Pnt2d& uv) const {
        const double near = 1e-6 / mFrame.VMetric();
        if (const auto low = mFrame.LowSingularity(); low && std::abs(uv.Y() - *low) < near) return -1;
        if (const auto high = mFrame.HighSingularity(); high && std::abs(uv.Y() - *high) < near) return 1;
        return 0;
    }

    // The way from the end of one piece to the start of the next: nothing, or along a spread point.
    // The face lies to the left, so along the lower end of v the walk goes up in u and along the upper
    // end down.
    gp_Vec2d Bridge(const gp_Pnt2d& from, const gp_Pnt2d& to, int vertex) {
        const int side = SingularEnd(from);
        if (side == 0 || SingularEnd(to) != side) return {0, 0};
        double turn = std::fmod(to.X() - from.X(), FullTurn);
        if (side < 0 && turn < 1e-9) turn += FullTurn;
        if (side > 0 && turn > -1e-9) turn -= FullTurn;
        ChartPiece spread;
        spread.startVertex = vertex;
        const double v = side < 0 ? *mFrame.LowSingularity() : *mFrame.HighSingularity();
        spread.samples = {gp_Pnt2d(from.X(), v), gp_Pnt2d(from.X() + turn, v)};
        mChart.pieces.push_back(std::move(spread));
        return {turn, 0};
    }

    void CheckGap(const gp_Pnt2d& from, const gp_Pnt2d& to, long record) const {
        constexpr double widest = 2 * HealedFit;  // of two edges
        if (std::abs(from.Y() - to.Y()) * mFrame.VMetric() > widest ||
            (SingularEnd(from) == 0 && std::abs(from.X() - to.X()) * mFrame.UMetric() > widest)) {
            throw BadRecord(record, "a loop is torn where two edges should meet");
        }
    }

    void Append(ChartPiece piece) {
        if (!mChart.pieces.empty()) {
            const gp_Pnt2d from = mChart.pieces.back().End();
            const gp_Vec2d bridge = Bridge(from, piece.Start(), piece.startVertex);
            const gp_Pnt2d target(from.X() + bridge.X(), from.Y());
            const gp_Pnt2d nearest = NearestTurn(mFrame, piece.Start(), target);
            piece.Move(gp_Vec2d(piece.Start(), nearest));
            CheckGap(target, piece.Start(), RecordOf(piece));
        }
        mChart.pieces.push_back(std::move(piece));
    }

    void Close() {
        if (mChart.pieces.empty()) return;
        const gp_Pnt2d begin = mChart.pieces.front().Start();
        const gp_Pnt2d from = mChart.pieces.back().End();
        const int vertex = mChart.pieces.front().startVertex;
        const gp_Vec2d bridge = Bridge(from, begin, vertex);
        const gp_Pnt2d end(from.X() + bridge.X(), from.Y());
        CheckGap(NearestTurn(mFrame, end, begin), begin, RecordOf(mChart.pieces.front()));
        if (mFrame.UPeriodic())
            mChart.windU = static_cast<int>(std::lround((end.X() - begin.X()) / FullTurn));
        if (mFrame.VPeriodic())
            mChart.windV = static_cast<int>(std::lround((end.Y() - begin.Y()) / FullTurn));
    }

    long RecordOf(const ChartPiece& piece) const {
        return piece.edge < 0 ? -1 : mNodes.edges[static_cast<std::size_t>(piece.edge)].record;
    }

    const SurfaceFrame& mFrame;
    const Nodes& mNodes;
    bool mStraightOnly;
    LoopChart mChart;
};

}  // namespace

void ChartPiece::Move(const gp_Vec2d& by) {
    shift += by;
    for (gp_Pnt2d& sample : samples) sample.Translate(by);
}

void LoopChart::Move(const gp_Vec2d& by) {
    for (ChartPiece& piece : pieces) piece.Move(by);
}

double LoopChart::Area(bool againstU) const {
    double area = 0;
    for (const ChartPiece& piece : pieces) {
        for (std::size_t i = 1; i < piece.samples.size(); ++i) {
            const gp_Pnt2d& a = piece.samples[i - 1];
            const gp_Pnt2d& b = piece.samples[i];
            area += againstU ? (a.X() + b.X()) / 2 * (b.Y() - a.Y()) : -(a.Y() + b.Y()) / 2 * (b.X() - a.X());
        }
    }
    return area;
}

LoopChart ChartLoop(const SurfaceFrame& frame, const LoopUse& loop, const Nodes& nodes, bool straightOnly) {
    if (frame.kind == SurfaceFrame::Kind::Free) return ChartFreeLoop(frame.free, loop, nodes);
    return Charter(frame, nodes, straightOnly).Run(loop);
}

}  // namespace brenvik::acis
