// A flat face is known by its normal. A round face is known by its boundary alone, which it shares
// with its neighbours: so curves are gathered by the axis that they turn about.
#include "cnc/sorting/untaken_faces.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/joining.h"
#include "cnc/drawing/level_normal.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"

namespace brenvik {

namespace {

/// Of a component of a unit normal: below it a face is as good as level or upright. A thousandth of a degree
/// is more, and the modeller's noise far less.
constexpr double SameAxis = 1e-5;
/// How far the modeller's curve of two walls that meet may stray from the walls.
constexpr double Stray = 1e-3;

void Tell(RunState& run, const std::string& what, const Point3& at, const Box3& place) {
    NoteUnexplained(run,
                    what + " at " + ReportedLength(at.x) + "," + ReportedLength(at.y) + "," +
                        ReportedLength(at.z) + ": no operation",
                    place);
}

Box3 Around(const Point3& at, double reach) {
    return {{at.x - reach, at.y - reach, at.z - reach}, {at.x + reach, at.y + reach, at.z + reach}};
}

Point3 MiddleOf(const Box3& box) {
    return {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2, (box.min.z + box.max.z) / 2};
}

bool IsUpright(const Point3& normal) { return std::abs(normal.z) < SameAxis; }

/// The longer side first, of a face that is a rectangle or nearly so: one pair of its sides is level, and the
/// other runs straight down the slope.
std::string SizeOfSlope(const Box3& box, const Point3& normal) {
    const double lean = std::hypot(normal.x, normal.y);
    const double down = (box.max.z - box.min.z) / lean;
    const double acrossX = std::abs(normal.y) / lean, acrossY = std::abs(normal.x) / lean;
    const double inPlan = down * std::abs(normal.z);
    const double along = acrossX > acrossY ? (box.max.x - box.min.x - inPlan * acrossY) / acrossX
                                           : (box.max.y - box.min.y - inPlan * acrossX) / acrossY;
    return ReportedLength(std::max(along, down)) + " by " + ReportedLength(std::min(along, down));
}

/// An axis that curves turn about, and how far along it they were seen.
struct Axis {
    Point3 on, along;
    double radius = 0;
    double from = 0, to = 0;

    double Place(const Point3& point) const {
        return (point.x - on.x) * along.x + (point.y - on.y) * along.y + (point.z - on.z) * along.z;
    }
    bool Holds(const Point3& point) const {
        const double place = Place(point);
        return NearlyEqual(point, {on.x + place * along.x, on.y + place * along.y, on.z + place * along.z});
    }
    bool Parallel(const Point3& other) const {
        return NearlyEqual(std::abs(along.x * other.x + along.y * other.y + along.z * other.z), 1);
    }
    Point3 Middle() const {
        const double half = (from + to) / 2;
        return {on.x + half * along.x, on.y + half * along.y, on.z + half * along.z};
    }
};

bool SameRound(const Axis& axis, const Point3& center, const Point3& normal, double radius) {
    return NearlyEqual(axis.radius, radius) && axis.Parallel(normal) && axis.Holds(center);
}

bool Contains(const Box3& column, const Box3& curve) {
    return curve.min.x > column.min.x - Stray && curve.max.x < column.max.x + Stray &&
           curve.min.y > column.min.y - Stray && curve.max.y < column.max.y + Stray;
}

/// The curves of the part's faces, sorted by what they show.
struct Edges {
    std::vector<Axis> bores;    ///< Full circles that aren't level, standing or at an angle.
    std::vector<Axis> pieces;   ///< Arcs that aren't level.
    std::vector<Box3> columns;  ///< Level circles and arcs: upright round walls, in plan.
    std::vector<Box3> others;   ///< Ellipses and splines that aren't level.
    bool slopes = false;        ///< There is an edge such as only a sloped face has.
};

/// An edge that rises and isn't upright.
bool IsSloped(const AcadLine& line) {
    const Point3 from = line.StartPoint(), to = line.EndPoint();
    return !NearlyEqual(from.z, to.z) && !(NearlyEqual(from.x, to.x) && NearlyEqual(from.y, to.y));
}

/// The projection has layers of its own, and what it draws is no edge of a face.
bool IsProjected(const AcadEntity& entity) {
    const std::string layer = entity.Layer();
    return layers::OnProjection(layer);
}

void TakeArc(const AcadArc& arc, std::vector<Axis>& pieces) {
    const Point3 center = arc.Center(), normal = arc.Normal();
    const double radius = arc.Radius();
    for (Axis& axis : pieces) {
        if (!SameRound(axis, center, normal, radius)) continue;
        axis.from = std::min(axis.from, axis.Place(center));
        axis.to = std::max(axis.to, axis.Place(center));
        return;
    }
    pieces.push_back({center, normal, radius});
}

void TakeEdge(const AcadEntity& entity, Edges& edges) {
    if (const auto* line = dynamic_cast<const AcadLine*>(&entity)) {
        edges.slopes = edges.slopes || (IsSloped(*line) && !IsProjected(*line));
        return;
    }
    const auto* circle = dynamic_cast<const AcadCircle*>(&entity);
    const auto* arc = dynamic_cast<const AcadArc*>(&entity);
    const std::string_view kind = entity.ObjectName();
    const bool other = kind == "AcDbEllipse" || kind == "AcDbSpline";
    if ((circle == nullptr && arc == nullptr && !other) || IsProjected(entity)) return;
    const Box3 box = entity.GetBoundingBox();
    if (other) {
        if (!NearlyEqual(box.min.z, box.max.z)) edges.others.push_back(box);
    } else if (IsLevel(circle != nullptr ? circle->Normal() : arc->Normal(), SameAxis)) {
        edges.columns.push_back(box);
    } else if (circle != nullptr) {
        edges.bores.push_back({circle->Center(), circle->Normal(), circle->Radius()});
    } else {
        TakeArc(*arc, edges.pieces);
    }
}

Edges EdgesIn(AcadDocument& drawing) {
    Edges edges;
    for (const AcadEntity* entity : All<AcadEntity>(drawing)) Skip([&] { TakeEdge(*entity, edges); });
    return edges;
}

/// A bore that breaks out somewhere has a whole circle too, at its mouth or at its floor.
bool OfABore(const Axis& piece, const std::vector<Axis>& bores) {
    return std::ranges::any_of(
        bores, [&](const Axis& bore) { return SameRound(bore, piece.on, piece.along, piece.radius); });
}

void TellPieces(RunState& run, const Edges& edges) {
    for (const Axis& piece : edges.pieces) {
        if (OfABore(piece, edges.bores)) continue;
        const std::string kind = IsUpright(piece.along) ? "round face" : "round face at an angle";
        const double length = piece.to - piece.from;
        const std::string size = !NearlyEqual(length, 0) ? " by " + ReportedLength(length) : "";
        Tell(run, kind + " of radius " + ReportedLength(piece.radius) + size, piece.Middle(),
             Around(piece.Middle(), std::max(piece.radius, length / 2)));
    }
}

/// Edges at which holes and bores meet each other, a rounded corner or a sloped face are not reported here;
/// they belong to features that have checks of their own.
void TellOthers(RunState& run, const Edges& edges) {
    for (const Box3& box : edges.others) {
        const auto holds = [&](const Axis& bore) { return bore.Holds(MiddleOf(box)); };
        const auto contains = [&](const Box3& column) { return Contains(column, box); };
        if (std::ranges::any_of(edges.bores, holds) || std::ranges::any_of(edges.columns, contains)) continue;
        Tell(run,
             "curved edge of " + ReportedLength(box.max.x - box.min.x) + " by " +
                 ReportedLength(box.max.y - box.min.y) + " by " + ReportedLength(box.max.z - box.min.z),
             MiddleOf(box), box);
    }
}

/// A sloped face has no upright edge, so one that a part has is seen by its edges: lines that slope, or
/// curves that aren't level.
bool MayHaveSlopes(const Edges& edges) {
    const auto leans = [](const Axis& axis) { return !IsUpright(axis.along); };
    return edges.slopes || !edges.others.empty() || std::ranges::any_of(edges.pieces, leans) ||
           std::ranges::any_of(edges.bores, leans);
}

/// A slanted hole is reported as a hole, and its floor is a part of it.
bool IsFloorOf(const Axis& bore, const AcadRegion& face, const Point3& middle) {
    return bore.Parallel(face.Normal()) && NearlyEqual(bore.on, middle) &&
           NearlyEqual(face.Area(), std::numbers::pi * bore.radius * bore.radius);
}

void TellSlope(RunState& run, const AcadRegion& face, const Edges& edges) {
    const Point3 normal = face.Normal();
    if (IsLevel(normal, SameAxis) || IsUpright(normal)) return;
    const Box3 box = face.GetBoundingBox();
    const auto holds = [&](const Axis& bore) { return IsFloorOf(bore, face, MiddleOf(box)); };
    if (std::ranges::any_of(edges.bores, holds)) return;
    Tell(run, "sloped face of " + SizeOfSlope(box, normal), MiddleOf(box), box);
}

/// Takes a copy of the part apart to its faces.
void TellSlopes(RunState& run, const Edges& edges) {
    AcadDocument& drawing = *run.part.drawing;
    AddLayer(drawing, layers::RegionPv2);
    LastSolid(drawing).Copy()->SetLayer(layers::RegionPv2);
    {
        const OnlyUnlocked only(drawing, {layers::RegionPv2});
        drawing.SendCommand(ExplodeCommand);
    }
    for (const AcadRegion* face : AllOn<AcadRegion>(drawing, layers::RegionPv2))
        Skip([&] { TellSlope(run, *face, edges); });
    for (AcadEntity* piece : AllOn<AcadEntity>(drawing, layers::RegionPv2)) piece->Delete();
}

}  // namespace

void NoteUntakenFaces(RunState& run) {
    if (!run.FirstPass()) return;
    const Edges edges = EdgesIn(*run.part.drawing);
    if (MayHaveSlopes(edges)) TellSlopes(run, edges);
    TellPieces(run, edges);
    TellOthers(run, edges);
}

}  // namespace brenvik
