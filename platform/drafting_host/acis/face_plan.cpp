// Which side a face looks to is read from its loops where they leave no choice: the face lies to their
// left. Writers differ in which signs they turn on a concave surface, and loops are what neighbouring
// faces agree on. On spheres and tori both sides of a loop are possible and the signs decide.
#include "drafting_host/acis/face_plan.h"

#include <Geom_Circle.hxx>

#include <algorithm>
#include <cmath>

#include "base/angles.h"

namespace brenvik::acis {

void PlanSeam(FacePlan& face, std::vector<FacePlan>& faces, Nodes& nodes);

namespace {

bool DecidedBySigns(const SurfaceFrame& frame) {
    return frame.kind == SurfaceFrame::Kind::Sphere || frame.kind == SurfaceFrame::Kind::Torus;
}

double TotalArea(const std::vector<LoopChart>& loops, bool againstU) {
    double area = 0;
    for (const LoopChart& loop : loops) area += loop.Area(againstU);
    return area;
}

// The loops that wind by the given sense in u or in v.
std::vector<int> Winding(const std::vector<LoopChart>& loops, bool alongU, int sense) {
    std::vector<int> found;
    for (std::size_t i = 0; i < loops.size(); ++i)
        if ((alongU ? loops[i].windU : loops[i].windV) == sense) found.push_back(static_cast<int>(i));
    return found;
}

// On a torus the band between two loops may reach over the end of the other parameter.
void BringTogether(const SurfaceFrame& frame, std::vector<LoopChart>& loops, const WoundPair& pair) {
    if (frame.kind != SurfaceFrame::Kind::Torus) return;
    const gp_Pnt2d& low = loops[static_cast<std::size_t>(pair.low)].pieces.front().Start();
    const gp_Pnt2d& high = loops[static_cast<std::size_t>(pair.high)].pieces.front().Start();
    const double gap = pair.alongU ? high.Y() - low.Y() : high.X() - low.X();
    const double move = -FullTurn * std::floor((gap - 1e-9) / FullTurn);
    loops[static_cast<std::size_t>(pair.high)].Move(pair.alongU ? gp_Vec2d(0, move) : gp_Vec2d(move, 0));
}

// The pair of loops (or a loop and a spread point) that needs a seam between, walking with the face on
// the left: the lower loop goes up in u, the upper one down. In v it is the other way round.
std::optional<FaceChart> WithPair(const FacePlan& face, FaceChart chart, bool alongU) {
    const std::vector<int> up = Winding(chart.loops, alongU, 1);
    const std::vector<int> down = Winding(chart.loops, alongU, -1);
    WoundPair pair{alongU, -1, -1};
    if (!up.empty()) (alongU ? pair.low : pair.high) = up.front();
    if (!down.empty()) (alongU ? pair.high : pair.low) = down.front();
    if (up.size() > 1 || down.size() > 1)
        throw BadRecord(face.record, "a round face of several separate areas is not read");
    if (up.size() == 1 && down.size() == 1) {
        BringTogether(face.frame, chart.loops, pair);
        if (!DecidedBySigns(face.frame) && TotalArea(chart.loops, !alongU) <= 0) return std::nullopt;
        if (face.frame.kind == SurfaceFrame::Kind::Sphere && TotalArea(chart.loops, false) <= 0)
            throw BadRecord(face.record, "the loops of a spherical face enclose nothing");
    } else {
        if (!alongU) throw BadRecord(face.record, "a loop around a torus lacks its counterpart");
        const bool closes =
            pair.low < 0 ? face.frame.LowSingularity().has_value() : face.frame.HighSingularity().has_value();
        if (!closes) return std::nullopt;
    }
    chart.pair = pair;
    return chart;
}

FaceChart LayOut(const FacePlan& face, const Nodes& nodes, bool straightOnly) {
    FaceChart chart;
    for (const LoopUse& loop : face.loops)
        chart.loops.push_back(ChartLoop(face.frame, loop, nodes, straightOnly));
    return chart;
}

void TurnRound(FacePlan& face) {
    face.naturalSide = !face.naturalSide;
    for (LoopUse& loop : face.loops) {
        std::reverse(loop.begin(), loop.end());
        for (CoedgeUse& use : loop) use.forward = !use.forward;
    }
}

// Spheres have no axis of their own: one is taken along which all edges run straight in the parameters,
// such as that of a circle that bounds the face; failing that one that keeps the poles off the edges.
std::vector<gp_Dir> SphereAxes(const FacePlan& face, const Nodes& nodes) {
    constexpr std::size_t enough = 8;
    std::vector<gp_Dir> axes{face.frame.axes.Direction()};
    gp_XYZ middle(0, 0, 0);
    for (const LoopUse& loop : face.loops) {
        for (const CoedgeUse& use : loop) {
            const EdgeNode& edge = nodes.edges[static_cast<std::size_t>(use.edge)];
            const auto circle = Handle(Geom_Circle)::DownCast(edge.curve);
            middle +=
                edge.curve->Value((edge.first + edge.last) / 2).XYZ() - face.frame.axes.Location().XYZ();
            if (circle.IsNull() || axes.size() >= enough) continue;
            const gp_Dir axis = circle->Axis().Direction();
            const bool known = std::any_of(axes.begin(), axes.end(),
                                           [&](const gp_Dir& a) { return a.IsParallel(axis, 1e-9); });
            if (!known) axes.push_back(axis);
        }
    }
    if (middle.Modulus() > Coincidence) {
        const gp_Ax2 across{gp_Pnt(), gp_Dir(middle)};
        axes.push_back(across.XDirection());
        axes.push_back(across.YDirection());
        axes.push_back(gp_Dir(across.XDirection().XYZ() + across.YDirection().XYZ()));
    }
    return axes;
}

void ChooseSphereAxis(FacePlan& face, const Nodes& nodes) {
    const gp_Ax3 own = face.frame.axes;
    const std::vector<gp_Dir> axes = SphereAxes(face, nodes);
    for (const bool straightOnly : {true, false}) {
        for (const gp_Dir& axis : axes) {
            face.frame.axes = axis.IsEqual(own.Direction(), 1e-12) ? own : gp_Ax3(own.Location(), axis);
            try {
                LayOut(face, nodes, straightOnly);
                return;
            } catch (const BadRecord&) {
                continue;
            }
        }
    }
    throw BadRecord(face.record, "the loops of a spherical face cannot be laid out");
}

}  // namespace

std::optional<FaceChart> ChartFace(const FacePlan& face, const Nodes& nodes) {
    FaceChart chart = LayOut(face, nodes, false);
    const bool woundInU =
        std::any_of(chart.loops.begin(), chart.loops.end(), [](const LoopChart& l) { return l.windU != 0; });
    const bool woundInV =
        std::any_of(chart.loops.begin(), chart.loops.end(), [](const LoopChart& l) { return l.windV != 0; });
    const bool severalTurns = std::any_of(chart.loops.begin(), chart.loops.end(), [](const LoopChart& l) {
        return std::abs(l.windU) > 1 || std::abs(l.windV) > 1;
    });
    if (severalTurns || (woundInU && woundInV))
        throw BadRecord(face.record, "a loop that winds about a torus is not read");
    if (woundInU || woundInV) return WithPair(face, std::move(chart), woundInU);
    if (TotalArea(chart.loops, false) > 0) return chart;
    if (!DecidedBySigns(face.frame)) return std::nullopt;
    // All of a sphere but what the loops enclose: both poles lie in the face.
    if (face.frame.kind == SurfaceFrame::Kind::Torus)
        throw BadRecord(face.record, "a torus with nothing but openings is not read");
    chart.pair = WoundPair{};
    return chart;
}

void PlanFaces(std::vector<FacePlan>& faces, Nodes& nodes) {
    for (FacePlan& face : faces) {
        if (face.loops.empty()) continue;
        if (face.frame.kind == SurfaceFrame::Kind::Sphere) ChooseSphereAxis(face, nodes);
        // The loops as they come have the outside of the face above them; laying out works on the
        // natural side of the surface.
        if (!face.naturalSide) {
            TurnRound(face);
            face.naturalSide = false;
        }
        if (ChartFace(face, nodes)) continue;
        TurnRound(face);
        if (!ChartFace(face, nodes)) throw BadRecord(face.record, "the loops of a face enclose nothing");
    }
    for (std::size_t i = 0; i < faces.size(); ++i) {
        if (faces[i].loops.empty() || faces[i].frame.kind == SurfaceFrame::Kind::Plane) continue;
        if (faces[i].frame.kind == SurfaceFrame::Kind::Free) continue;  // its seams are edges of the text
        PlanSeam(faces[i], faces, nodes);
    }
}

}  // namespace brenvik::acis
