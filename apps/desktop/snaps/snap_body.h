// What one solid offers to be snapped to: ends and middles of its edges, centres of the round ones, the edges
// themselves, and its faces along a line of sight.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <IntCurvesFace_ShapeIntersector.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Shape.hxx>
#include <memory>
#include <optional>
#include <vector>

#include "snaps/sight.h"
#include "snaps/snap.h"

namespace brenvik::desktop {

struct SnapEdge {
    TopoDS_Edge edge;
    bool straight = false;
    /// Points along it in order; the two ends of a straight one.
    std::vector<Point3> course;
    /// Of a circle, an ellipse or an arc of one.
    std::optional<Point3> centre;
};

class SnapBody {
  public:
    explicit SnapBody(const TopoDS_Shape& shape);

    const TopoDS_Shape& Shape() const { return mShape; }
    const std::vector<Snap>& Points() const { return mPoints; }
    const std::vector<SnapEdge>& Edges() const { return mEdges; }
    /// Whether something of it, or a centre that it offers, may lie within `reach` pixels of the place.
    bool MayShowAt(const Sight& sight, const ScreenPlace& place, double reach) const;
    /// Where its faces lie on the line from `point` towards the eye, as distances from the point, negative
    /// ones behind it; the nearest to the eye, or null.
    std::optional<double> NearestFace(const Point3& point, const Point3& towardsEye) const;

  private:
    void TakeEdge(const TopoDS_Edge& edge);
    void TakeMiddle(const TopoDS_Edge& edge);

    TopoDS_Shape mShape;
    std::vector<Snap> mPoints;
    std::vector<SnapEdge> mEdges;
    vectors::BoxBuilder mBox;
    /// Made at the first question: most bodies are never asked.
    mutable std::unique_ptr<IntCurvesFace_ShapeIntersector> mFaces;
};

}  // namespace brenvik::desktop
