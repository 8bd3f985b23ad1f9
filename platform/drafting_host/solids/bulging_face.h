// Faces that can reach further than their own boundary: spheres, tori, turned and free-form surfaces.
// Each knows the farthest point of its inside along a direction.
#pragma once

#include <BRepAdaptor_Surface.hxx>
#include <TopoDS_Face.hxx>
#include <gp_XYZ.hxx>
#include <memory>
#include <vector>

class BRepTopAdaptor_FClass2d;

namespace brenvik::solids {

/// One face that may bulge. Cheap to make but for free-form surfaces, which are sampled once.
class BulgingFace {
  public:
    /// True when `face` lies on a surface whose inside can stand out beyond its boundary. Planes and
    /// everything ruled (cylinders, cones, extrusions) can't.
    static bool CanBulge(const BRepAdaptor_Surface& surface);

    explicit BulgingFace(const TopoDS_Face& face);

    /// The greatest (p - origin) · direction over points of the face where it is greater than `best`;
    /// otherwise `best`. Boundary points are left to the edges.
    double Peak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const;

  private:
    bool Holds(double u, double v) const;
    double SpherePeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double TorusPeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double TurnedPeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double ProfilePeak(double u, const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double FreePeak(const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double Climb(double u, double v, const gp_XYZ& direction, const gp_XYZ& origin, gp_XYZ& place) const;
    void Sample();

    TopoDS_Face mFace;
    Handle(BRepAdaptor_Surface) mSurface;
    double mUMin = 0, mUMax = 0, mVMin = 0, mVMax = 0;
    int mColumns = 0, mRows = 0;
    std::vector<gp_XYZ> mGrid;  // rows of columns, sampled for free-form surfaces only
    std::vector<gp_XYZ> mHull;  // control points
    mutable std::shared_ptr<BRepTopAdaptor_FClass2d> mInside;  // made at the first question
};

}  // namespace brenvik::solids
