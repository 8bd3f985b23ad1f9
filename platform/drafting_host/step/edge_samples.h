// The edges of a STEP file as points: where they begin, pass and end by the word of their statements.
#pragma once

#include <Geom_Surface.hxx>
#include <ShapeAnalysis_Surface.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <array>
#include <gp_Pnt.hxx>
#include <optional>

namespace brenvik::step {

/// Points of an edge in the units of the file, from its start to its end.
struct EdgeSamples {
    gp_Pnt start, end;
    std::array<gp_Pnt, 3> inner;
    bool curved = false;   ///< False where the kind of curve isn't known here: `inner` then says nothing.
    double endMisfit = 0;  ///< How far the farther vertex lies from the curve.
};

/// Nothing where a vertex is no point. Raises the modeller's failures for numbers that make no curve.
std::optional<EdgeSamples> SampleEdge(const Handle(StepShape_EdgeCurve) & edge);

/// A face's surface to measure distances from.
class FaceSurface {
  public:
    /// Raises the modeller's failures for numbers that make no surface.
    explicit FaceSurface(const Handle(StepShape_FaceSurface) & face);
    /// False for kinds that aren't known here.
    bool Known() const { return !mSurface.IsNull(); }
    double Distance(const gp_Pnt& point);

  private:
    Handle(Geom_Surface) mSurface;
    Handle(ShapeAnalysis_Surface) mSearch;  ///< For surfaces that have no formula for it.
};

}  // namespace brenvik::step
