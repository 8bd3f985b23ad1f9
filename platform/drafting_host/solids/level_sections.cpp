// Each face is a wall with edges; the plane meets the edges in points, and between these runs the wall's own
// line or circle.
#include "drafting_host/solids/level_sections.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepAdaptor_Surface.hxx>
#include <BRepAlgoAPI_Section.hxx>
#include <BRepBndLib.hxx>
#include <BRep_Tool.hxx>
#include <Bnd_Box.hxx>
#include <GCPnts_QuasiUniformDeflection.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
#include <algorithm>
#include <cmath>
#include <gp_Pln.hxx>
#include <numbers>
#include <optional>

#include "base/angles.h"
#include "base/failure.h"
#include "drafting_host/solids/guard.h"

namespace brenvik::solids {
namespace {

/// Of a component of a unit vector: below it a face counts as level or upright. Parts that other programs
/// have turned are off by far less, and along a board it comes to microns.
constexpr double Square = 1e-6;
/// Two levels closer than this are one.
constexpr double SameLevel = 1e-7;
/// How far the chords of free curves may stray from them.
constexpr double ChordStray = 1e-3;
/// Into how many pieces a free edge is looked at for the places where it crosses a height.
constexpr int FreePieces = 48;

/// An edge of a wall.
struct WallEdge {
    Handle(BRepAdaptor_Curve) curve;
    double first = 0, last = 0;
    bool forward = true;

    gp_Pnt At(double parameter) const { return curve->Value(parameter); }
};

/// Where an edge goes through a height; `up` when the way around the face rises there.
struct Crossing {
    gp_Pnt at;
    bool up = false;
};

/// Height of a circle or an ellipse over its parameter: middle + swing cos(t - peak).
struct Swing {
    double middle = 0, swing = 0, peak = 0;
};

std::optional<Swing> SwingOf(const BRepAdaptor_Curve& curve) {
    const auto from = [](const gp_Ax2& axes, double major, double minor) {
        const double a = major * axes.XDirection().Z(), b = minor * axes.YDirection().Z();
        return Swing{axes.Location().Z(), std::hypot(a, b), std::atan2(b, a)};
    };
    if (curve.GetType() == GeomAbs_Circle) {
        const gp_Circ circle = curve.Circle();
        return from(circle.Position(), circle.Radius(), circle.Radius());
    }
    if (curve.GetType() == GeomAbs_Ellipse) {
        const gp_Elips ellipse = curve.Ellipse();
        return from(ellipse.Position(), ellipse.MajorRadius(), ellipse.MinorRadius());
    }
    return std::nullopt;
}

/// The parameter a whole number of turns further on that lies in the edge.
std::optional<double> WithinEdge(const WallEdge& edge, double parameter) {
    const double inside = edge.first + WithinFullTurn(parameter - edge.first);
    return inside <= edge.last ? std::optional(inside) : std::nullopt;
}

bool Rises(const WallEdge& edge, double parameter) {
    gp_Pnt at;
    gp_Vec along;
    edge.curve->D1(parameter, at, along);
    return (along.Z() > 0) == edge.forward;
}

void AddRound(const WallEdge& edge, const Swing& swing, double height, std::vector<Crossing>& found) {
    const double share = (height - swing.middle) / swing.swing;
    if (swing.swing < SameLevel || std::abs(share) >= 1) return;
    for (const double angle : {swing.peak + std::acos(share), swing.peak - std::acos(share)})
        if (const auto parameter = WithinEdge(edge, angle))
            found.push_back({edge.At(*parameter), Rises(edge, *parameter)});
}

void AddStraight(const WallEdge& edge, double height, std::vector<Crossing>& found) {
    const gp_Pnt from = edge.At(edge.first), to = edge.At(edge.last);
    if ((from.Z() < height) == (to.Z() < height)) return;
    const double share = (height - from.Z()) / (to.Z() - from.Z());
    const gp_XYZ at = from.XYZ() + (to.XYZ() - from.XYZ()) * share;
    found.push_back({gp_Pnt(at), (to.Z() > from.Z()) == edge.forward});
}

void AddFree(const WallEdge& edge, double height, std::vector<Crossing>& found) {
    const double step = (edge.last - edge.first) / FreePieces;
    for (int piece = 0; piece < FreePieces; ++piece) {
        double low = edge.first + piece * step, high = low + step;
        const bool below = edge.At(low).Z() < height;
        if (below == (edge.At(high).Z() < height)) continue;
        for (int halving = 0; halving < 60; ++halving) {
            const double middle = (low + high) / 2;
            ((edge.At(middle).Z() < height) == below ? low : high) = middle;
        }
        found.push_back({edge.At((low + high) / 2), below == edge.forward});
    }
}

std::vector<Crossing> CrossingsOf(const std::vector<WallEdge>& edges, double height) {
    std::vector<Crossing> found;
    for (const WallEdge& edge : edges) {
        if (edge.curve->GetType() == GeomAbs_Line)
            AddStraight(edge, height, found);
        else if (const std::optional<Swing> swing = SwingOf(*edge.curve))
            AddRound(edge, *swing, height, found);
        else
            AddFree(edge, height, found);
    }
    return found;
}

[[noreturn]] void Refuse(double height, const char* face) {
    throw InvalidCall("level section at " + std::to_string(height) + ": a " + face +
                      " face that isn't closed");
}

PlanPoint InPlan(const gp_Pnt& point) { return {point.X(), point.Y()}; }

/// Straight sides between the points in pairs, along a direction.
void AddPairs(std::vector<Crossing>& points, const gp_XYZ& along, double height,
              std::vector<SectionSide>& sides) {
    if (points.size() % 2 != 0) Refuse(height, "flat or lying");
    std::ranges::sort(points, {}, [&](const Crossing& each) { return each.at.XYZ().Dot(along); });
    for (std::size_t i = 0; i + 1 < points.size(); i += 2)
        sides.push_back({InPlan(points[i].at), InPlan(points[i + 1].at)});
}

SectionSide ArcFrom(const gp_Pnt& center, double radius, double from, double sweep) {
    const auto at = [&](double angle) {
        return PlanPoint{center.X() + radius * std::cos(angle), center.Y() + radius * std::sin(angle)};
    };
    return {at(from), at(from + sweep), std::tan(sweep / 4)};
}

/// Half turns keep the bulges small.
void AddArc(const gp_Pnt& center, double radius, double from, double sweep, std::vector<SectionSide>& sides) {
    const int pieces = sweep > std::numbers::pi ? 2 : 1;
    for (int piece = 0; piece < pieces; ++piece)
        sides.push_back(ArcFrom(center, radius, from + piece * sweep / pieces, sweep / pieces));
}

}  // namespace

/// A face that isn't level.
struct LevelSections::Wall {
    enum class Kind { Flat, Upright, Lying, Free };

    Kind kind = Kind::Free;
    TopoDS_Face face;
    std::vector<WallEdge> edges;
    Reach reach{1e300, -1e300};
    gp_XYZ along;  ///< Of a flat wall's section; of a lying cylinder's axis.
    gp_Ax3 axes;
    BRepAdaptor_Surface surface;
    bool outward = true;  ///< A round wall that looks away from its axis.

    void SectionAt(double height, std::vector<SectionSide>& sides) const {
        switch (kind) {
            case Kind::Flat: {
                std::vector<Crossing> points = CrossingsOf(edges, height);
                AddPairs(points, along, height, sides);
                return;
            }
            case Kind::Upright:
                return AddTurns(height, sides);
            case Kind::Lying:
                return AddLines(height, sides);
            case Kind::Free:
                return AddFreeCurves(height, sides);
        }
    }

    double RadiusAt(double height) const {
        const double rise = height - axes.Location().Z();
        switch (surface.GetType()) {
            case GeomAbs_Cylinder:
                return surface.Cylinder().Radius();
            case GeomAbs_Cone: {
                const gp_Cone cone = surface.Cone();
                const double up = axes.Direction().Z() > 0 ? 1 : -1;
                return std::abs(cone.RefRadius() + up * rise * std::tan(cone.SemiAngle()));
            }
            default: {
                const double radius = surface.Sphere().Radius();
                return std::sqrt(std::max(0.0, radius * radius - rise * rise));
            }
        }
    }

    /// Seen from outside, the face lies to the left of the way around it: on a wall that looks outward an
    /// edge that rises ends a stretch that runs counter-clockwise.
    void AddTurns(double height, std::vector<SectionSide>& sides) const {
        const double radius = RadiusAt(height);
        const gp_Pnt center = axes.Location();
        const std::vector<Crossing> points = CrossingsOf(edges, height);
        if (points.empty()) return AddArc(center, radius, 0, FullTurn, sides);
        struct End {
            double angle;
            bool begins;
        };
        std::vector<End> ends;
        for (const Crossing& each : points)
            ends.push_back({WithinFullTurn(std::atan2(each.at.Y() - center.Y(), each.at.X() - center.X())),
                            each.up != outward});
        std::ranges::sort(ends, {}, &End::angle);
        if (ends.size() % 2 != 0) Refuse(height, "round");
        for (std::size_t i = 0; i < ends.size(); ++i) {
            const End &from = ends[i], &to = ends[(i + 1) % ends.size()];
            if (from.begins == to.begins) Refuse(height, "round");
            if (!from.begins) continue;
            const double sweep =
                i + 1 < ends.size() ? to.angle - from.angle : to.angle + FullTurn - from.angle;
            AddArc(center, radius, from.angle, sweep, sides);
        }
    }

    void AddLines(double height, std::vector<SectionSide>& sides) const {
        const gp_XYZ across = gp_XYZ(0, 0, 1).Crossed(along);
        const double middle = axes.Location().XYZ().Dot(across);
        std::vector<Crossing> left, right;
        for (const Crossing& each : CrossingsOf(edges, height))
            (each.at.XYZ().Dot(across) > middle ? left : right).push_back(each);
        AddPairs(left, along, height, sides);
        AddPairs(right, along, height, sides);
    }

    void AddFreeCurves(double height, std::vector<SectionSide>& sides) const {
        BRepAlgoAPI_Section cut(face, gp_Pln(gp_Pnt(0, 0, height), gp_Dir(0, 0, 1)), false);
        cut.Approximation(true);
        cut.Build();
        if (!cut.IsDone()) Refuse(height, "free");
        for (TopExp_Explorer each(cut.Shape(), TopAbs_EDGE); each.More(); each.Next()) {
            const BRepAdaptor_Curve curve(TopoDS::Edge(each.Current()));
            const GCPnts_QuasiUniformDeflection chords(curve, ChordStray);
            if (!chords.IsDone()) Refuse(height, "free");
            for (int i = 1; i < chords.NbPoints(); ++i)
                sides.push_back({InPlan(chords.Value(i)), InPlan(chords.Value(i + 1))});
        }
    }
};

LevelSections::~LevelSections() = default;

LevelSections::LevelSections(const TopoDS_Shape& shape) : mBox(ExactBox(shape)) {
    Guarded("level sections", [&] {
        for (TopExp_Explorer each(shape, TopAbs_FACE); each.More(); each.Next())
            AddFace(TopoDS::Face(each.Current()));
        mLevels.insert(mLevels.end(), {mBox.min.Z(), mBox.max.Z()});
        SortLevels();
    });
}

void LevelSections::SortLevels() {
    std::ranges::sort(mLevels);
    const auto same = [](double a, double b) { return b - a < SameLevel; };
    mLevels.erase(std::unique(mLevels.begin(), mLevels.end(), same), mLevels.end());
}

namespace {

void GatherEdges(const TopoDS_Face& face, std::vector<WallEdge>& edges, std::vector<double>& levels,
                 Reach& reach) {
    const auto level = [&](double height) {
        levels.push_back(height);
        reach.low = std::min(reach.low, height);
        reach.high = std::max(reach.high, height);
    };
    std::vector<TopoDS_Edge> all;
    for (TopExp_Explorer each(face, TopAbs_EDGE); each.More(); each.Next())
        all.push_back(TopoDS::Edge(each.Current()));
    for (const TopoDS_Edge& edge : all) {
        const bool boundary = edge.Orientation() == TopAbs_FORWARD || edge.Orientation() == TopAbs_REVERSED;
        if (!boundary || BRep_Tool::Degenerated(edge)) continue;
        WallEdge wall{new BRepAdaptor_Curve(edge), 0, 0, edge.Orientation() == TopAbs_FORWARD};
        wall.first = wall.curve->FirstParameter();
        wall.last = wall.curve->LastParameter();
        level(wall.At(wall.first).Z());
        level(wall.At(wall.last).Z());
        if (const std::optional<Swing> swing = SwingOf(*wall.curve)) {
            for (const double peak : {swing->peak, swing->peak + std::numbers::pi})
                if (swing->swing > SameLevel && WithinEdge(wall, peak))
                    level(wall.At(*WithinEdge(wall, peak)).Z());
        } else if (wall.curve->GetType() != GeomAbs_Line) {
            for (int piece = 1; piece < FreePieces; ++piece) {
                const double height = wall.At(wall.first + piece * (wall.last - wall.first) / FreePieces).Z();
                reach.low = std::min(reach.low, height);
                reach.high = std::max(reach.high, height);
            }
            level(reach.low);
            level(reach.high);
        }
        // A seam is there twice, once each way, and bounds nothing. An edge on the seam of a surface that two
        // faces share is there once in each.
        const auto same = [&edge](const TopoDS_Edge& other) { return edge.IsSame(other); };
        if (std::ranges::count_if(all, same) == 1) edges.push_back(wall);
    }
}

bool IsUpright(const gp_Dir& direction) { return std::hypot(direction.X(), direction.Y()) < Square; }
bool IsLevel(const gp_Dir& direction) { return std::abs(direction.Z()) < Square; }

/// Whether no face on such a surface is higher or lower than all of its edges.
bool EndsAtItsEdges(GeomAbs_SurfaceType type) {
    return type == GeomAbs_Plane || type == GeomAbs_Cylinder || type == GeomAbs_Cone ||
           type == GeomAbs_SurfaceOfExtrusion;
}

}  // namespace

void LevelSections::AddFace(const TopoDS_Face& face) {
    auto wall = std::make_unique<Wall>();
    wall->face = face;
    wall->surface.Initialize(face, false);
    GatherEdges(face, wall->edges, mLevels, wall->reach);
    const BRepAdaptor_Surface& surface = wall->surface;
    const bool looksOut = face.Orientation() != TopAbs_REVERSED;
    bool sloped = true;
    const auto round = [&](const gp_Ax3& axes) {
        wall->axes = axes;
        wall->outward = axes.Direct() == looksOut;
        if (IsUpright(axes.Direction())) wall->kind = Wall::Kind::Upright;
    };
    switch (surface.GetType()) {
        case GeomAbs_Plane: {
            const gp_Dir normal = surface.Plane().Axis().Direction();
            if (IsUpright(normal)) return;
            wall->kind = Wall::Kind::Flat;
            wall->along = gp_XYZ(0, 0, 1).Crossed(normal.XYZ()).Normalized();
            sloped = !IsLevel(normal);
            break;
        }
        case GeomAbs_Cylinder: {
            const gp_Cylinder cylinder = surface.Cylinder();
            round(cylinder.Position());
            sloped = wall->kind != Wall::Kind::Upright;
            if (!IsLevel(cylinder.Axis().Direction())) break;
            wall->kind = Wall::Kind::Lying;
            wall->along = cylinder.Axis().Direction().XYZ();
            mLying.push_back({cylinder.Location(), wall->along, cylinder.Radius(), !wall->outward});
            mLevels.push_back(cylinder.Location().Z());
            break;
        }
        case GeomAbs_Cone:
            round(surface.Cone().Position());
            break;
        case GeomAbs_Sphere: {
            gp_Ax3 upright(surface.Sphere().Location(), gp_Dir(0, 0, 1));
            const bool direct = surface.Sphere().Position().Direct();
            round(upright);
            wall->outward = direct == looksOut;
            break;
        }
        case GeomAbs_SurfaceOfExtrusion:
            sloped = !IsUpright(surface.Direction());
            break;
        default:
            break;
    }
    if (!EndsAtItsEdges(surface.GetType())) {
        Bnd_Box box;
        BRepBndLib::AddOptimal(face, box, false, false);
        wall->reach = {box.CornerMin().Z(), box.CornerMax().Z()};
        mLevels.insert(mLevels.end(), {wall->reach.low, wall->reach.high});
    }
    if (wall->reach.high - wall->reach.low < SameLevel) return;
    if (sloped) mSlopes.push_back(wall->reach);
    mWalls.push_back(std::move(wall));
}

std::vector<SectionSide> LevelSections::At(double height) const {
    return Guarded("level section", [&] {
        std::vector<SectionSide> sides;
        for (const auto& wall : mWalls)
            if (wall->reach.low < height && height < wall->reach.high) wall->SectionAt(height, sides);
        return sides;
    });
}

}  // namespace brenvik::solids
