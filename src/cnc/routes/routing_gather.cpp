// Level edges between the faces, and the host's join command on them.
#include "cnc/routes/routing_gather.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/joining.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/drawing/work_layers.h"

namespace brenvik {

namespace {

constexpr int HeightDecimals = 5, NormalDecimals = 4;
constexpr double SameHeight = 0.00001;

/// The heights strictly between the two faces.
class BetweenFaces {
  public:
    explicit BetweenFaces(const Box3& part)
        : mLow(RoundHalfEven(part.min.z, HeightDecimals)), mHigh(RoundHalfEven(part.max.z, HeightDecimals)) {}

    bool Holds(double z) const {
        // Most edges lie in a face itself and are distinguished without rounding.
        if (z <= mLow || z >= mHigh) return false;
        const double rounded = RoundHalfEven(z, HeightDecimals);
        return rounded > mLow && rounded < mHigh;
    }
    bool Holds(const Point3& from, const Point3& to) const {
        return std::abs(from.z - to.z) < SameHeight && Holds(from.z) && Holds(to.z);
    }

  private:
    double mLow, mHigh;
};

bool Upright(const Point3& normal) { return std::abs(RoundHalfEven(normal.z, NormalDecimals)) == 1; }

bool IsFreeCurve(const AcadEntity& entity) {
    return entity.ObjectName() == "AcDbEllipse" || entity.ObjectName() == "AcDbSpline";
}

/// A curve in a level plane bounds a floor. Others are where bores meet holes, and bound none.
bool IsLevel(const Box3& box) { return std::abs(box.max.z - box.min.z) < SameHeight; }

/// Takes the edges of the inner levels to the layer where they are joined. False when one can't be joined.
bool TakeEdges(AcadDocument& drawing, const BetweenFaces& between) {
    std::vector<AcadEntity*> edges;
    bool followable = true;
    drawing.ModelSpace().ForEach([&](AcadEntity& entity) {
        if (entity.Layer() != layers::BrenvikExplode) return;
        if (const auto* line = dynamic_cast<const AcadLine*>(&entity)) {
            if (between.Holds(line->StartPoint(), line->EndPoint())) edges.push_back(&entity);
        } else if (const auto* arc = dynamic_cast<const AcadArc*>(&entity)) {
            if (Upright(arc->Normal()) && between.Holds(arc->StartPoint().z)) edges.push_back(&entity);
        } else if (IsFreeCurve(entity)) {
            const Box3 box = entity.GetBoundingBox();
            if (IsLevel(box) && between.Holds(box.min.z)) followable = false;
        }
    });
    for (AcadEntity* edge : edges) edge->SetLayer(layers::RoutingLayer1);
    return followable;
}

/// All layers but one frozen for a while: the host's "all" takes nothing else then.
class OnlyThawed {
  public:
    OnlyThawed(AcadDocument& drawing, std::string_view name)
        : mDrawing(drawing), mActive(drawing.ActiveLayer()) {
        // The current layer can't be frozen.
        mDrawing.SetActiveLayer(*mDrawing.Layers().Item(name));
        const int count = mDrawing.Layers().Count();
        for (int i = 0; i < count; ++i) {
            AcadLayer* layer = mDrawing.Layers().Item(i);
            if (layer->Name() == name || layer->Freeze()) continue;
            layer->SetFreeze(true);
            mFrozen.push_back(layer);
        }
    }
    ~OnlyThawed() {
        for (AcadLayer* layer : mFrozen) Skip([layer] { layer->SetFreeze(false); });
        if (mActive != nullptr) Skip([this] { mDrawing.SetActiveLayer(*mActive); });
    }
    OnlyThawed(const OnlyThawed&) = delete;
    OnlyThawed& operator=(const OnlyThawed&) = delete;

  private:
    AcadDocument& mDrawing;
    AcadLayer* mActive;
    std::vector<AcadLayer*> mFrozen;
};

/// What lies on the layer of the join: the polylines, and how many edges are still loose.
struct JoinLayer {
    std::vector<AcadLWPolyline*> polylines;
    std::size_t loose = 0;
};

JoinLayer LookAtJoinLayer(AcadDocument& drawing) {
    JoinLayer found;
    drawing.ModelSpace().ForEach([&found](AcadEntity& entity) {
        if (entity.Layer() != layers::RoutingLayer1) return;
        if (auto* polyline = dynamic_cast<AcadLWPolyline*>(&entity))
            found.polylines.push_back(polyline);
        else
            ++found.loose;
    });
    return found;
}

/// Polylines leave the layer at once, since the command would begin with an open one again and again.
void TakePolylines(const JoinLayer& found, GatheredContours& contours) {
    for (AcadLWPolyline* polyline : found.polylines) {
        polyline->SetLayer(layers::RoutingLayer2);
        (polyline->Closed() ? contours.closed : contours.open).push_back(polyline);
    }
}

void Join(AcadDocument& drawing, GatheredContours& contours) {
    JoinLayer found = LookAtJoinLayer(drawing);
    if (found.loose > 0) {
        const OnlyThawed only(drawing, layers::RoutingLayer1);
        TopView(drawing);
        while (found.loose > 0) {
            TakePolylines(found, contours);
            const std::size_t before = found.loose;
            drawing.SendCommand(JoinCommand);
            found = LookAtJoinLayer(drawing);
            if (found.loose >= before) {
                contours.followable = false;
                break;
            }
        }
    }
    TakePolylines(found, contours);
}

/// How far a point is from a side, straight or round; an arc counts within its ends.
double DistanceToSide(const PathVertex& from, const PathVertex& to, double x, double y) {
    const double dx = to.x - from.x, dy = to.y - from.y, chord = std::hypot(dx, dy);
    const double toEnds = std::min(std::hypot(x - from.x, y - from.y), std::hypot(x - to.x, y - to.y));
    if (chord == 0) return toEnds;
    if (from.bulge == 0) {
        const double along = ((x - from.x) * dx + (y - from.y) * dy) / chord;
        if (along < 0 || along > chord) return toEnds;
        return std::abs((x - from.x) * dy - (y - from.y) * dx) / chord;
    }
    // From the chord's middle to the centre, to the left of the chord.
    const double offset = chord * (1 - from.bulge * from.bulge) / (4 * from.bulge);
    const double radius = chord * (1 + from.bulge * from.bulge) / (4 * std::abs(from.bulge));
    const double centerX = (from.x + to.x) / 2 - dy / chord * offset;
    const double centerY = (from.y + to.y) / 2 + dx / chord * offset;
    // A counter-clockwise arc is to the right of its chord.
    const double right = ((x - from.x) * dy - (y - from.y) * dx) / chord;
    if (right * from.bulge < 0) return toEnds;
    return std::min(toEnds, std::abs(std::hypot(x - centerX, y - centerY) - radius));
}

bool OnContour(const std::vector<PathVertex>& contour, double x, double y) {
    constexpr double samePlace = 0.0001;
    for (std::size_t i = 0; i < contour.size(); ++i)
        if (DistanceToSide(contour[i], contour[(i + 1) % contour.size()], x, y) < samePlace) return true;
    return false;
}

/// Whether an open chain runs along a closed contour of its height all the way: a second drawing of edges
/// that two faces share.
bool RunsAlong(const AcadLWPolyline& chain, const AcadLWPolyline& contour) {
    if (!NearlyEqual(chain.Elevation(), contour.Elevation())) return false;
    const std::vector<PathVertex> points = VerticesOf(chain), sides = VerticesOf(contour);
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!OnContour(sides, points[i].x, points[i].y)) return false;
        if (i + 1 == points.size()) break;
        // The middle of the side: half a chord along and the bulge's share of it to the right.
        const PathVertex &from = points[i], &to = points[i + 1];
        const double x = (from.x + to.x) / 2 + from.bulge * (to.y - from.y) / 2;
        const double y = (from.y + to.y) / 2 - from.bulge * (to.x - from.x) / 2;
        if (!OnContour(sides, x, y)) return false;
    }
    return true;
}

/// Whether a chain lies in the flat floor of a round hole: a bore that just touches the floor leaves the line
/// of contact there, which bounds no area.
bool LiesInRoundFloor(const AcadLWPolyline& chain, const AcadCircle& circle) {
    const Point3 center = circle.Center();
    if (!Upright(circle.Normal()) || !NearlyEqual(center.z, chain.Elevation())) return false;
    constexpr double samePlace = 0.0001;
    return std::ranges::all_of(VerticesOf(chain), [&](const PathVertex& corner) {
        return std::hypot(corner.x - center.x, corner.y - center.y) < circle.Radius() + samePlace;
    });
}

/// Whether a closed path runs out and back the same way. Edges that two faces share are drawn twice, and not
/// always parted alike, so that some join to a loop of their own.
bool EnclosesNothing(const AcadLWPolyline& path) {
    constexpr double sameWay = 0.0001;
    const std::vector<PathVertex> corners = VerticesOf(path);
    double around = 0;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const PathVertex &from = corners[i], &to = corners[(i + 1) % corners.size()];
        around += std::hypot(to.x - from.x, to.y - from.y);
    }
    return 2 * std::abs(path.Area()) <= sameWay * around;
}

/// What encloses nothing is no more a contour than an open chain.
void OpenWhatEnclosesNothing(GatheredContours& contours) {
    const auto empty =
        std::stable_partition(contours.closed.begin(), contours.closed.end(),
                              [](const AcadLWPolyline* path) { return !EnclosesNothing(*path); });
    contours.open.insert(contours.open.end(), empty, contours.closed.end());
    contours.closed.erase(empty, contours.closed.end());
}

void DropWhatBoundsNothing(AcadDocument& drawing, GatheredContours& contours) {
    if (contours.open.empty()) return;
    const std::vector<AcadCircle*> circles = All<AcadCircle>(drawing);
    std::erase_if(contours.open, [&](AcadLWPolyline* chain) {
        const bool drop =
            std::ranges::any_of(
                contours.closed,
                [chain](const AcadLWPolyline* contour) { return RunsAlong(*chain, *contour); }) ||
            std::ranges::any_of(
                circles, [chain](const AcadCircle* circle) { return LiesInRoundFloor(*chain, *circle); });
        if (drop) chain->Delete();
        return drop;
    });
}

}  // namespace

GatheredContours GatherContours(AcadDocument& drawing, const Box3& part) {
    GatheredContours contours;
    for (const std::string_view name : {layers::BrenvikExplode, layers::RoutingLayer1, layers::RoutingLayer2})
        AddLayer(drawing, name);
    contours.followable = TakeEdges(drawing, BetweenFaces(part));
    if (!contours.followable) return contours;
    Join(drawing, contours);
    OpenWhatEnclosesNothing(contours);
    DropWhatBoundsNothing(drawing, contours);
    return contours;
}

}  // namespace brenvik
