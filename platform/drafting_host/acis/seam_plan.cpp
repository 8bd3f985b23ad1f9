// Where the seam of a full round runs: from a vertex of one loop straight across to the other, clear
// of every opening in between. Vertices of full circles are there only to give the circle an end, so
// they may move; edges are split only where nothing else is left.
#include "drafting_host/acis/face_plan.h"

#include <Geom2d_Line.hxx>

#include <algorithm>
#include <array>
#include <cmath>

#include "base/angles.h"

namespace brenvik::acis {
namespace {

constexpr double ParameterNoise = 1e-7;
constexpr int MostTries = 5000;  // of places for one seam; a damaged text may offer millions
constexpr int TriedPlaces = 61;  // a prime, so that regular patterns of openings are not all hit

double Across(const gp_Pnt2d& p, bool alongU) { return alongU ? p.Y() : p.X(); }

double Wrapped(double difference) { return difference - FullTurn * std::round(difference / FullTurn); }

class SeamPlanner {
  public:
    SeamPlanner(FacePlan& f, std::vector<FacePlan>& all, Nodes& n, FaceChart c)
        : mFace(f), mFaces(all), mNodes(n), mChart(std::move(c)), mPair(*mChart.pair) {}

    void Run() {
        if (!(Matched() || Moved() || MovedBoth() || Divided()))
            throw BadRecord(mFace.record, "no place for a seam was found on a round face");
        mFace.seam = mSeam;
        TurnToSeam();
    }

  private:
    struct End {
        double along, across;
        int vertex;
    };

    const LoopChart* Loop(int index) const {
        return index < 0 ? nullptr : &mChart.loops[static_cast<std::size_t>(index)];
    }

    std::vector<End> Vertices(int loop) const {
        std::vector<End> ends;
        if (const LoopChart* laid = Loop(loop)) {
            for (const ChartPiece& piece : laid->pieces) {
                ends.push_back({Along(piece.Start(), mPair.alongU), Across(piece.Start(), mPair.alongU),
                                piece.startVertex});
            }
        }
        return ends;
    }

    double SingularAcross(bool low) const {
        return low ? mFace.frame.LowSingularity().value_or(0) : mFace.frame.HighSingularity().value_or(0);
    }

    double Metric() const { return mPair.alongU ? mFace.frame.UMetric() : mFace.frame.VMetric(); }

    bool Movable(int loop) const {
        const LoopChart* laid = Loop(loop);
        if (laid == nullptr || laid->pieces.size() != 1) return false;
        const ChartPiece& piece = laid->pieces.front();
        const EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(piece.edge)];
        const VertexNode& vertex = mNodes.vertices[static_cast<std::size_t>(edge.start)];
        // Free curves begin where they begin.
        if (!edge.curve->IsPeriodic()) return false;
        return edge.start == edge.end && vertex.edgeCount == 1 && !vertex.settled;
    }

    bool Clear(double along, double low, double high);
    bool BlockedBy(const gp_Pnt2d& a, const gp_Pnt2d& b, double along, double low, double high) const;
    bool Matched();
    bool Moved();
    bool MovedBoth();
    bool Divided();
    void MoveVertex(int loop, const Passing& passing);
    int Divide(int loop, const Passing& passing);
    void Settle(double along, int lowVertex, int highVertex);
    void TurnToSeam();

    FacePlan& mFace;
    std::vector<FacePlan>& mFaces;
    Nodes& mNodes;
    FaceChart mChart;
    WoundPair mPair;
    Seam mSeam;
    double mSeamAlong = 0;
    int mTries = 0;
};

bool SeamPlanner::BlockedBy(const gp_Pnt2d& a, const gp_Pnt2d& b, double along, double low,
                            double high) const {
    const double from = std::min(Along(a, mPair.alongU), Along(b, mPair.alongU)) - ParameterNoise;
    const double to = std::max(Along(a, mPair.alongU), Along(b, mPair.alongU)) + ParameterNoise;
    const double place = along + FullTurn * std::ceil((from - along) / FullTurn);
    if (place > to) return false;
    double first = Across(a, mPair.alongU);
    double second = Across(b, mPair.alongU);
    const double width = Along(b, mPair.alongU) - Along(a, mPair.alongU);
    if (std::abs(width) > 4 * ParameterNoise) {
        const double share = std::clamp((place - Along(a, mPair.alongU)) / width, 0.0, 1.0);
        first = second = first + share * (second - first);
    }
    const double edge = 1e-6 * std::max(1.0, std::abs(high - low));
    return std::max(first, second) > low + edge && std::min(first, second) < high - edge;
}

// True where the way between the two ends is free.
bool SeamPlanner::Clear(double along, double low, double high) {
    if (high <= low || ++mTries > MostTries) return false;
    for (const LoopChart& loop : mChart.loops) {
        for (const ChartPiece& piece : loop.pieces) {
            for (std::size_t i = 1; i < piece.samples.size(); ++i)
                if (BlockedBy(piece.samples[i - 1], piece.samples[i], along, low, high)) return false;
        }
    }
    return true;
}

void SeamPlanner::Settle(double along, int lowVertex, int highVertex) {
    mSeam = {mPair.alongU, lowVertex, highVertex};
    mSeamAlong = along;
    for (const int vertex : {lowVertex, highVertex})
        if (vertex >= 0) mNodes.vertices[static_cast<std::size_t>(vertex)].settled = true;
}

// Vertices of both loops that already stand opposite each other, or a vertex opposite a spread point.
bool SeamPlanner::Matched() {
    std::vector<End> lows = Vertices(mPair.low);
    std::vector<End> highs = Vertices(mPair.high);
    if (mPair.low < 0)
        for (const End& high : highs) lows.push_back({high.along, SingularAcross(true), -1});
    if (mPair.high < 0)
        for (const End& low : lows) highs.push_back({low.along, SingularAcross(false), -1});
    std::sort(highs.begin(), highs.end(),
              [](const End& a, const End& b) { return Wrapped(a.along) < Wrapped(b.along); });
    for (const End& low : lows) {
        for (const End& high : highs) {
            if (std::abs(Wrapped(low.along - high.along)) * Metric() > 1e-6) continue;
            if (low.vertex < 0 && high.vertex < 0) continue;
            if (!Clear(low.along, low.across, high.across)) continue;
            Settle(low.along, low.vertex, high.vertex);
            return true;
        }
    }
    if (mPair.low >= 0 || mPair.high >= 0) return false;
    for (int i = 0; i < TriedPlaces; ++i) {
        const double along = FullTurn * i / TriedPlaces;
        if (!Clear(along, SingularAcross(true), SingularAcross(false))) continue;
        Settle(along, -1, -1);
        return true;
    }
    return false;
}

void SeamPlanner::MoveVertex(int loop, const Passing& passing) {
    EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(Loop(loop)->pieces.front().edge)];
    edge.first = passing.parameter;
    edge.last = passing.parameter + FullTurn;
    mNodes.vertices[static_cast<std::size_t>(edge.start)].place = edge.curve->Value(edge.first);
}

// The vertex of one loop moves to that of the other.
bool SeamPlanner::Moved() {
    for (const bool moveHigh : {true, false}) {
        const int moving = moveHigh ? mPair.high : mPair.low;
        const int standing = moveHigh ? mPair.low : mPair.high;
        if (!Movable(moving) || standing < 0) continue;
        for (const End& end : Vertices(standing)) {
            const auto passing = FindPassing(*Loop(moving), mNodes, mPair.alongU, end.along);
            if (!passing) continue;
            const double low = moveHigh ? end.across : passing->across;
            const double high = moveHigh ? passing->across : end.across;
            if (!Clear(end.along, low, high)) continue;
            MoveVertex(moving, *passing);
            const int moved = Loop(moving)->pieces.front().startVertex;
            Settle(end.along, moveHigh ? end.vertex : moved, moveHigh ? moved : end.vertex);
            return true;
        }
    }
    return false;
}

// Neither vertex is well placed, but both may be moved anywhere.
bool SeamPlanner::MovedBoth() {
    if ((mPair.low >= 0 && !Movable(mPair.low)) || (mPair.high >= 0 && !Movable(mPair.high))) return false;
    for (int i = 0; i < TriedPlaces; ++i) {
        const double along = FullTurn * i / TriedPlaces;
        std::array<std::optional<Passing>, 2> passings;
        std::array<double, 2> across{SingularAcross(true), SingularAcross(false)};
        std::array<int, 2> vertices{-1, -1};
        bool reached = true;
        for (std::size_t side = 0; side < 2; ++side) {
            const int loop = side == 0 ? mPair.low : mPair.high;
            if (loop < 0) continue;
            passings[side] = FindPassing(*Loop(loop), mNodes, mPair.alongU, along);
            reached = reached && passings[side].has_value();
            if (!passings[side]) continue;
            across[side] = passings[side]->across;
            vertices[side] = Loop(loop)->pieces.front().startVertex;
        }
        if (!reached || !Clear(along, across[0], across[1])) continue;
        if (passings[0]) MoveVertex(mPair.low, *passings[0]);
        if (passings[1]) MoveVertex(mPair.high, *passings[1]);
        Settle(along, vertices[0], vertices[1]);
        return true;
    }
    return false;
}

// A new vertex on an edge, in every loop that uses it.
int SeamPlanner::Divide(int loop, const Passing& passing) {
    const int divided = Loop(loop)->pieces[passing.piece].edge;
    const int added = static_cast<int>(mNodes.edges.size());
    const int vertex = static_cast<int>(mNodes.vertices.size());
    EdgeNode& edge = mNodes.edges[static_cast<std::size_t>(divided)];
    VertexNode node;
    node.place = edge.curve->Value(passing.parameter);
    node.edgeCount = 2;
    mNodes.vertices.push_back(node);
    EdgeNode rest = edge;
    rest.first = edge.last = passing.parameter;
    rest.start = edge.end = vertex;
    if (edge.start == rest.end) ++mNodes.vertices[static_cast<std::size_t>(rest.end)].edgeCount;
    mNodes.edges.push_back(rest);
    for (FacePlan& other : mFaces) {
        for (LoopUse& use : other.loops) {
            for (std::size_t i = 0; i < use.size(); ++i) {
                if (use[i].edge != divided) continue;
                const bool forward = use[i].forward;
                use.insert(use.begin() + static_cast<long>(forward ? i + 1 : i),
                           CoedgeUse{added, forward, {}});
                ++i;
            }
        }
    }
    return vertex;
}

bool SeamPlanner::Divided() {
    for (const bool divideHigh : {true, false}) {
        const int divided = divideHigh ? mPair.high : mPair.low;
        const int standing = divideHigh ? mPair.low : mPair.high;
        if (divided < 0) continue;
        std::vector<End> ends = Vertices(standing);
        if (standing < 0) {
            for (int i = 0; i < TriedPlaces; ++i)
                ends.push_back({FullTurn * i / TriedPlaces, SingularAcross(divideHigh), -1});
        }
        for (const End& end : ends) {
            const auto passing = FindPassing(*Loop(divided), mNodes, mPair.alongU, end.along);
            if (!passing || Loop(divided)->pieces[passing->piece].edge < 0) continue;
            const double low = divideHigh ? end.across : passing->across;
            const double high = divideHigh ? passing->across : end.across;
            if (!Clear(end.along, low, high)) continue;
            const int made = Divide(divided, *passing);
            Settle(end.along, divideHigh ? end.vertex : made, divideHigh ? made : end.vertex);
            return true;
        }
    }
    return false;
}

// The modeller's own primitives begin their parameters at the seam; so do we where the surface can be
// turned about its axis.
void SeamPlanner::TurnToSeam() {
    if (!mSeam.alongU || mFace.frame.kind == SurfaceFrame::Kind::EllipticCylinder) return;
    gp_Ax3& axes = mFace.frame.axes;
    const int vertex = mSeam.lowVertex >= 0 ? mSeam.lowVertex : mSeam.highVertex;
    gp_XYZ out =
        axes.XDirection().XYZ() * std::cos(mSeamAlong) + axes.YDirection().XYZ() * std::sin(mSeamAlong);
    if (vertex >= 0) {
        const gp_XYZ reach =
            mNodes.vertices[static_cast<std::size_t>(vertex)].place.XYZ() - axes.Location().XYZ();
        const gp_XYZ level = reach - axes.Direction().XYZ() * reach.Dot(axes.Direction().XYZ());
        if (level.Modulus() > 1e-3 * mFace.frame.radius) out = level;
    }
    axes = gp_Ax3(axes.Location(), axes.Direction(), CleanDirection(out, mFace.record, "seam"));
}

}  // namespace

std::optional<Passing> FindPassing(const LoopChart& chart, const Nodes& nodes, bool alongU, double value) {
    for (std::size_t index = 0; index < chart.pieces.size(); ++index) {
        const ChartPiece& piece = chart.pieces[index];
        for (std::size_t i = 1; i < piece.samples.size(); ++i) {
            const double from = Along(piece.samples[i - 1], alongU);
            const double to = Along(piece.samples[i], alongU);
            const double place = value + FullTurn * std::ceil((std::min(from, to) - value) / FullTurn);
            if (place > std::max(from, to) || std::abs(to - from) < 1e-12 || piece.edge < 0) continue;
            const EdgeNode& edge = nodes.edges[static_cast<std::size_t>(piece.edge)];
            const double step = (edge.last - edge.first) / static_cast<double>(piece.samples.size() - 1);
            const auto parameterAt = [&](double position) {
                return piece.forward ? edge.first + step * position : edge.last - step * position;
            };
            double low = parameterAt(static_cast<double>(i) - 1);
            double high = parameterAt(static_cast<double>(i));
            const auto alongAt = [&](double t) {
                return Along(piece.curve->Value(t).Translated(piece.shift), alongU);
            };
            if (piece.samples.size() == 2) low = high = low + (high - low) * (place - from) / (to - from);
            for (int round = 0; round < 60 && low != high; ++round) {
                const double middle = (low + high) / 2;
                ((alongAt(middle) < place) == (from < to) ? low : high) = middle;
            }
            return Passing{index, low, Across(piece.curve->Value(low).Translated(piece.shift), alongU)};
        }
    }
    return std::nullopt;
}

void PlanSeam(FacePlan& face, std::vector<FacePlan>& faces, Nodes& nodes) {
    std::optional<FaceChart> chart = ChartFace(face, nodes);
    if (!chart) throw BadRecord(face.record, "the loops of a face enclose nothing");
    if (chart->pair) SeamPlanner(face, faces, nodes, std::move(*chart)).Run();
}

}  // namespace brenvik::acis
