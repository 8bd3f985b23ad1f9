// Where the seam of a full round runs: from a vertex of one loop straight across to the other, clear
// of every opening in between. Vertices of full circles are there only to give the circle an end, so
// they may move; edges are split only where nothing else is left.
#include "drafting_host/acis/face_plan.h"

#include <Geom2d_Line.hxx>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace brenvik::acis {
namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr double parameterNoise = 1e-7;
constexpr int mostTries = 5000;  // of places for one seam; a damaged text may offer millions
constexpr int triedPlaces = 61;  // a prime, so that regular patterns of openings are not all hit

double Along(const gp_Pnt2d& p, bool alongU) { return alongU ? p.X() : p.Y(); }
double Across(const gp_Pnt2d& p, bool alongU) { return alongU ? p.Y() : p.X(); }

double Wrapped(double difference) { return difference - fullTurn * std::round(difference / fullTurn); }

class SeamPlanner {
  public:
    SeamPlanner(FacePlan& f, std::vector<FacePlan>& all, Nodes& n, FaceChart c)
        : face(f), faces(all), nodes(n), chart(std::move(c)), pair(*chart.pair) {}

    void Run() {
        if (!(Matched() || Moved() || MovedBoth() || Divided())) {
            throw BadRecord(face.record, "no place for a seam was found on a round face");
        }
        face.seam = seam;
        TurnToSeam();
    }

  private:
    struct End {
        double along, across;
        int vertex;
    };

    const LoopChart* Loop(int index) const {
        return index < 0 ? nullptr : &chart.loops[static_cast<std::size_t>(index)];
    }

    std::vector<End> Vertices(int loop) const {
        std::vector<End> ends;
        if (const LoopChart* laid = Loop(loop)) {
            for (const ChartPiece& piece : laid->pieces) {
                ends.push_back({Along(piece.Start(), pair.alongU), Across(piece.Start(), pair.alongU),
                                piece.startVertex});
            }
        }
        return ends;
    }

    double SingularAcross(bool low) const {
        return low ? face.frame.LowSingularity().value_or(0) : face.frame.HighSingularity().value_or(0);
    }

    double Metric() const { return pair.alongU ? face.frame.UMetric() : face.frame.VMetric(); }

    bool Movable(int loop) const {
        const LoopChart* laid = Loop(loop);
        if (laid == nullptr || laid->pieces.size() != 1) return false;
        const ChartPiece& piece = laid->pieces.front();
        const EdgeNode& edge = nodes.edges[static_cast<std::size_t>(piece.edge)];
        const VertexNode& vertex = nodes.vertices[static_cast<std::size_t>(edge.start)];
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

    FacePlan& face;
    std::vector<FacePlan>& faces;
    Nodes& nodes;
    FaceChart chart;
    WoundPair pair;
    Seam seam;
    double seamAlong = 0;
    int tries = 0;
};

bool SeamPlanner::BlockedBy(const gp_Pnt2d& a, const gp_Pnt2d& b, double along, double low,
                            double high) const {
    const double from = std::min(Along(a, pair.alongU), Along(b, pair.alongU)) - parameterNoise;
    const double to = std::max(Along(a, pair.alongU), Along(b, pair.alongU)) + parameterNoise;
    const double place = along + fullTurn * std::ceil((from - along) / fullTurn);
    if (place > to) return false;
    double first = Across(a, pair.alongU);
    double second = Across(b, pair.alongU);
    const double width = Along(b, pair.alongU) - Along(a, pair.alongU);
    if (std::abs(width) > 4 * parameterNoise) {
        const double share = std::clamp((place - Along(a, pair.alongU)) / width, 0.0, 1.0);
        first = second = first + share * (second - first);
    }
    const double edge = 1e-6 * std::max(1.0, std::abs(high - low));
    return std::max(first, second) > low + edge && std::min(first, second) < high - edge;
}

// True where nothing lies on the way between the two ends.
bool SeamPlanner::Clear(double along, double low, double high) {
    if (high <= low || ++tries > mostTries) return false;
    for (const LoopChart& loop : chart.loops) {
        for (const ChartPiece& piece : loop.pieces) {
            for (std::size_t i = 1; i < piece.samples.size(); ++i) {
                if (BlockedBy(piece.samples[i - 1], piece.samples[i], along, low, high)) return false;
            }
        }
    }
    return true;
}

void SeamPlanner::Settle(double along, int lowVertex, int highVertex) {
    seam = {pair.alongU, lowVertex, highVertex};
    seamAlong = along;
    for (const int vertex : {lowVertex, highVertex}) {
        if (vertex >= 0) nodes.vertices[static_cast<std::size_t>(vertex)].settled = true;
    }
}

// Vertices of both loops that already stand opposite each other, or a vertex opposite a spread point.
bool SeamPlanner::Matched() {
    std::vector<End> lows = Vertices(pair.low);
    std::vector<End> highs = Vertices(pair.high);
    if (pair.low < 0) {
        for (const End& high : highs) lows.push_back({high.along, SingularAcross(true), -1});
    }
    if (pair.high < 0) {
        for (const End& low : lows) highs.push_back({low.along, SingularAcross(false), -1});
    }
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
    if (pair.low >= 0 || pair.high >= 0) return false;
    for (int i = 0; i < triedPlaces; ++i) {
        const double along = fullTurn * i / triedPlaces;
        if (!Clear(along, SingularAcross(true), SingularAcross(false))) continue;
        Settle(along, -1, -1);
        return true;
    }
    return false;
}

void SeamPlanner::MoveVertex(int loop, const Passing& passing) {
    EdgeNode& edge = nodes.edges[static_cast<std::size_t>(Loop(loop)->pieces.front().edge)];
    edge.first = passing.parameter;
    edge.last = passing.parameter + fullTurn;
    nodes.vertices[static_cast<std::size_t>(edge.start)].place = edge.curve->Value(edge.first);
}

// The vertex of one loop goes to where the other's stands.
bool SeamPlanner::Moved() {
    for (const bool moveHigh : {true, false}) {
        const int moving = moveHigh ? pair.high : pair.low;
        const int standing = moveHigh ? pair.low : pair.high;
        if (!Movable(moving) || standing < 0) continue;
        for (const End& end : Vertices(standing)) {
            const auto passing = FindPassing(*Loop(moving), nodes, pair.alongU, end.along);
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

// Neither vertex stands well, but both may go anywhere.
bool SeamPlanner::MovedBoth() {
    if ((pair.low >= 0 && !Movable(pair.low)) || (pair.high >= 0 && !Movable(pair.high))) return false;
    for (int i = 0; i < triedPlaces; ++i) {
        const double along = fullTurn * i / triedPlaces;
        std::array<std::optional<Passing>, 2> passings;
        std::array<double, 2> across{SingularAcross(true), SingularAcross(false)};
        std::array<int, 2> vertices{-1, -1};
        bool reached = true;
        for (std::size_t side = 0; side < 2; ++side) {
            const int loop = side == 0 ? pair.low : pair.high;
            if (loop < 0) continue;
            passings[side] = FindPassing(*Loop(loop), nodes, pair.alongU, along);
            reached = reached && passings[side].has_value();
            if (!passings[side]) continue;
            across[side] = passings[side]->across;
            vertices[side] = Loop(loop)->pieces.front().startVertex;
        }
        if (!reached || !Clear(along, across[0], across[1])) continue;
        if (passings[0]) MoveVertex(pair.low, *passings[0]);
        if (passings[1]) MoveVertex(pair.high, *passings[1]);
        Settle(along, vertices[0], vertices[1]);
        return true;
    }
    return false;
}

// A new vertex on an edge, in every loop that uses it.
int SeamPlanner::Divide(int loop, const Passing& passing) {
    const int divided = Loop(loop)->pieces[passing.piece].edge;
    const int added = static_cast<int>(nodes.edges.size());
    const int vertex = static_cast<int>(nodes.vertices.size());
    EdgeNode& edge = nodes.edges[static_cast<std::size_t>(divided)];
    VertexNode node;
    node.place = edge.curve->Value(passing.parameter);
    node.edgeCount = 2;
    nodes.vertices.push_back(node);
    EdgeNode rest = edge;
    rest.first = edge.last = passing.parameter;
    rest.start = edge.end = vertex;
    if (edge.start == rest.end) ++nodes.vertices[static_cast<std::size_t>(rest.end)].edgeCount;
    nodes.edges.push_back(rest);
    for (FacePlan& other : faces) {
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
        const int divided = divideHigh ? pair.high : pair.low;
        const int standing = divideHigh ? pair.low : pair.high;
        if (divided < 0) continue;
        std::vector<End> ends = Vertices(standing);
        if (standing < 0) {
            for (int i = 0; i < triedPlaces; ++i)
                ends.push_back({fullTurn * i / triedPlaces, SingularAcross(divideHigh), -1});
        }
        for (const End& end : ends) {
            const auto passing = FindPassing(*Loop(divided), nodes, pair.alongU, end.along);
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
    if (!seam.alongU || face.frame.kind == SurfaceFrame::Kind::EllipticCylinder) return;
    gp_Ax3& axes = face.frame.axes;
    const int vertex = seam.lowVertex >= 0 ? seam.lowVertex : seam.highVertex;
    gp_XYZ out =
        axes.XDirection().XYZ() * std::cos(seamAlong) + axes.YDirection().XYZ() * std::sin(seamAlong);
    if (vertex >= 0) {
        const gp_XYZ reach =
            nodes.vertices[static_cast<std::size_t>(vertex)].place.XYZ() - axes.Location().XYZ();
        const gp_XYZ level = reach - axes.Direction().XYZ() * reach.Dot(axes.Direction().XYZ());
        if (level.Modulus() > 1e-3 * face.frame.radius) out = level;
    }
    axes = gp_Ax3(axes.Location(), axes.Direction(), CleanDirection(out, face.record, "seam"));
}

}  // namespace

std::optional<Passing> FindPassing(const LoopChart& chart, const Nodes& nodes, bool alongU, double value) {
    for (std::size_t index = 0; index < chart.pieces.size(); ++index) {
        const ChartPiece& piece = chart.pieces[index];
        for (std::size_t i = 1; i < piece.samples.size(); ++i) {
            const double from = Along(piece.samples[i - 1], alongU);
            const double to = Along(piece.samples[i], alongU);
            const double place = value + fullTurn * std::ceil((std::min(from, to) - value) / fullTurn);
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
