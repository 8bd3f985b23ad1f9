// The edges of a STEP file as points: where they begin, pass and end by the word of their statements.
#pragma once

#include <Geom_Curve.hxx>
#include <Geom_Surface.hxx>
#include <ShapeAnalysis_Surface.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>
#include <optional>
#include <vector>

namespace brenvik::step {

/// Points of an edge in the units of the file.
struct EdgeSamples {
    gp_Pnt start, end;
    gp_Pnt middle;               ///< Half way by the curve's parameters.
    std::vector<gp_Pnt> inner;   ///< Of a spline at least one in each span; none where the curve isn't known.
    double endMisfit = 0;        ///< How far the farther vertex lies from the curve.
    bool free = false;           ///< The curve is no line and no conic.
    Handle(Geom_Curve) curve;    ///< Null where it isn't known.
    double first = 0, last = 0;  ///< Where the edge begins and ends on it, from its start vertex to its end.

    /// Points from the start to the end, near enough to each other to follow an angle by.
    std::vector<gp_Pnt> Walk() const;
};

/// Null if a vertex is no point. Raises the modeller's failures for numbers that make no curve.
std::optional<EdgeSamples> SampleEdge(const Handle(StepShape_EdgeCurve) & edge);

/// A face's surface to measure distances from.
class FaceSurface {
  public:
    /// Raises the modeller's failures for numbers that make no surface.
    explicit FaceSurface(const Handle(StepShape_FaceSurface) & face);
    /// False for kinds that aren't known here.
    bool Known() const { return !mSurface.IsNull(); }
    /// True for a surface that has no formula.
    bool Free() const { return !mSearch.IsNull(); }
    double Distance(const gp_Pnt& point);
    const Handle(Geom_Surface) & Surface() const { return mSurface; }

  private:
    Handle(Geom_Surface) mSurface;
    Handle(ShapeAnalysis_Surface) mSearch;  ///< Of a free surface.
    std::optional<gp_Pnt2d> mLast;          ///< Where the last point was found on it.
};

}  // namespace brenvik::step
