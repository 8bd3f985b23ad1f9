// Laying out loops on free surfaces. A given curve is taken only where it follows its edge, since edges may
// have been divided and texts may be wrong.
#include "drafting_host/acis/free_chart.h"

#include <BSplCLib.hxx>
#include <Geom2d_BSplineCurve.hxx>
#include <ShapeConstruct_ProjectCurveOnSurface.hxx>
#include <TColStd_Array1OfReal.hxx>

#include <algorithm>
#include <cmath>
#include <utility>

namespace brenvik::acis {
namespace {

constexpr int SampleSteps = 48;
constexpr double Rounding = 1e-9;

class FreeCharter {
  public:
    FreeCharter(const Handle(Geom_Surface) & s, const Nodes& n) : mSurface(s), mNodes(n) {
        mSurface->Bounds(mU1, mU2, mV1, mV2);
    }

    LoopChart Run(const LoopUse& loop) {
        LoopChart chart;
        for (const CoedgeUse& use : loop) Append(chart, Piece(use));
        if (!chart.pieces.empty()) Bridge(chart, chart.pieces.front());
        return chart;
    }

  private:
    // The largest distance between the edge and the surface along a curve; far where the curve leaves the
    // surface's parameters.
    double Misfit(const Handle(Geom2d_Curve) & curve, const EdgeNode& edge) const {
        constexpr int places = 8;
        // Curves matched within a program's tolerance swing across the surface's end by that much.
        constexpr double slack = 1e-5;
        const double slackU = slack * (mU2 - mU1);
        const double slackV = slack * (mV2 - mV1);
        double widest = 0;
        for (int i = 0; i <= places; ++i) {
            const double t = edge.first + (edge.last - edge.first) * i / places;
            const gp_Pnt2d uv = curve->Value(t);
            if (uv.X() < mU1 - slackU || uv.X() > mU2 + slackU || uv.Y() < mV1 - slackV ||
                uv.Y() > mV2 + slackV)
                return 2 * HealedFit;
            widest = std::max(widest, mSurface->Value(uv.X(), uv.Y()).Distance(edge.curve->Value(t)));
        }
        return widest;
    }

    // Given curves run with their coedge, in the parameters of the curve in space, negative where they run
    // against it. Edges of this reader may count from another start.
    Handle(Geom2d_Curve) Given(const CoedgeUse& use, const EdgeNode& edge) const {
        const auto given = Handle(Geom2d_BSplineCurve)::DownCast(use.given);
        if (given.IsNull()) return {};
        Handle(Geom2d_Curve) best;
        double nearest = 1.0001 * HealedFit;
        for (const bool against : {!use.forward, use.forward}) {
            const Handle(Geom2d_BSplineCurve) curve = Handle(Geom2d_BSplineCurve)::DownCast(given->Copy());
            if (against) curve->Reverse();
            const double first = against ? -given->LastParameter() : given->FirstParameter();
            const double last = against ? -given->FirstParameter() : given->LastParameter();
            for (const auto& [from, to] : {std::pair{edge.first, edge.last}, std::pair{first, last}}) {
                if (from > edge.first + Rounding || to < edge.last - Rounding) continue;
                TColStd_Array1OfReal knots(1, curve->NbKnots());
                curve->Knots(knots);
                BSplCLib::Reparametrize(from, to, knots);
                curve->SetKnots(knots);
                const Handle(Geom2d_Curve) fitting(curve.get());
                if (const double misfit = Misfit(fitting, edge); misfit < nearest) {
                    nearest = misfit;
                    best = fitting;
                }
                if (nearest <= LooseFit) return best;
            }
        }
        return best;
    }

    Handle(Geom2d_Curve) Projected(const EdgeNode& edge) const {
        ShapeConstruct_ProjectCurveOnSurface projection;
        projection.Init(mSurface, Coincidence);
        Handle(Geom_Curve) inSpace = edge.curve;
        Handle(Geom2d_Curve) curve;
        projection.Perform(inSpace, edge.first, edge.last, curve);
        if (curve.IsNull() || Misfit(curve, edge) > HealedFit)
            throw BadRecord(edge.record, "an edge does not lie on its face's surface");
        return curve;
    }

    ChartPiece Piece(const CoedgeUse& use) const {
        const EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(use.edge)];
        ChartPiece piece;
        piece.edge = use.edge;
        piece.forward = use.forward;
        piece.startVertex = use.forward ? edge.start : edge.end;
        piece.curve = Given(use, edge);
        if (piece.curve.IsNull()) piece.curve = Projected(edge);
        for (int i = 0; i <= SampleSteps; ++i) {
            piece.samples.push_back(
                piece.curve->Value(edge.first + (edge.last - edge.first) * i / SampleSteps));
        }
        if (!use.forward) std::reverse(piece.samples.begin(), piece.samples.end());
        return piece;
    }

    void Append(LoopChart& chart, ChartPiece piece) const {
        if (!chart.pieces.empty()) Bridge(chart, piece);
        chart.pieces.push_back(std::move(piece));
    }

    // Adds nothing if the pieces meet; a spread point if a whole side of the surface is one point.
    void Bridge(LoopChart& chart, const ChartPiece& next) const {
        const gp_Pnt2d from = chart.pieces.back().End();
        const gp_Pnt2d to = next.Start();
        const double du = std::abs(to.X() - from.X());
        const double dv = std::abs(to.Y() - from.Y());
        constexpr double noise = 1e-4;
        if (du <= noise * (mU2 - mU1) && dv <= noise * (mV2 - mV1)) return;
        const gp_Pnt2d middle((from.X() + to.X()) / 2, (from.Y() + to.Y()) / 2);
        const gp_Pnt there = mSurface->Value(from.X(), from.Y());
        const double gap = std::max(mSurface->Value(middle.X(), middle.Y()).Distance(there),
                                    mSurface->Value(to.X(), to.Y()).Distance(there));
        // Loose edges meet beside each other; a whole side that is one point is farther along.
        constexpr double beside = 0.02;
        const bool near = du <= beside * (mU2 - mU1) && dv <= beside * (mV2 - mV1);
        if (near && gap > Rounding && gap <= 2 * HealedFit) return;
        const bool alongSide = std::min(du / (mU2 - mU1), dv / (mV2 - mV1)) <= noise;
        // Beside the one point of a side, loose edges leave a ring of no use to anybody.
        const bool whole = std::max(du / (mU2 - mU1), dv / (mV2 - mV1)) >= 1 - noise;
        if (!alongSide || gap > (whole ? HealedFit : LooseFit)) {
            throw BadRecord(mNodes.edges[static_cast<std::size_t>(next.edge)].record,
                            "a loop on a free surface is torn where two edges should meet");
        }
        ChartPiece spread;
        spread.startVertex = next.startVertex;
        spread.samples = {from, to};
        chart.pieces.push_back(std::move(spread));
    }

    const Handle(Geom_Surface) & mSurface;
    const Nodes& mNodes;
    double mU1 = 0, mU2 = 0, mV1 = 0, mV2 = 0;
};

}  // namespace

LoopChart ChartFreeLoop(const Handle(Geom_Surface) & surface, const LoopUse& loop, const Nodes& nodes) {
    return FreeCharter(surface, nodes).Run(loop);
}

}  // namespace brenvik::acis
