// How far a shape reaches along any direction, exactly: from its vertices, from the formulas of its
// round edges and bulging faces, and numerically only where a free-form curve or surface leaves no
// other way. Boxes and board sizes are built on it.
#pragma once

#include <BRepAdaptor_Curve.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Shape.hxx>
#include <gp_XYZ.hxx>
#include <vector>

namespace brenvik::solids {

class BulgingFace;

/// The least and the greatest coordinate along a direction.
struct Reach {
    double low;
    double high;

    double Length() const { return high - low; }
};

/// The support function of a shape. It is gathered once (one walk over the shape) and can then be asked
/// for any number of directions, each in time linear in vertices and curved edges. It keeps what it
/// needs of the shape; lengths are drawing units.
class Support {
  public:
    /// Gathers the features of `shape`. Straight edges, planes, cylinders, cones and other ruled
    /// surfaces reach no further than their boundary and cost nothing.
    explicit Support(const TopoDS_Shape& shape);
    ~Support();
    Support(Support&&) noexcept;
    Support& operator=(Support&&) noexcept;

    /// True when the shape has no point at all.
    bool Empty() const;

    /// Least and greatest value of (p - origin) · direction over all points p of the shape. `direction`
    /// has unit length. With a world axis and the world origin the coordinates of vertices come out to
    /// the last bit. For an empty shape low is above high;
    /// where a coordinate is no number, or beyond all bounds, both are not-a-number.
    Reach Along(const gp_XYZ& direction, const gp_XYZ& origin = gp_XYZ(0, 0, 0)) const;

  private:
    struct RoundEdge {
        gp_XYZ center;
        gp_XYZ major;   // centre to the point at parameter 0
        gp_XYZ minor;   // centre to the point at a quarter turn
        gp_XYZ normal;  // unit
        double first;
        double last;
        bool circle;
    };
    struct FreeEdge {
        Handle(BRepAdaptor_Curve) curve;
        std::vector<double> parameters;  // samples, close enough that each holds one peak at most
        std::vector<gp_XYZ> points;
        std::vector<gp_XYZ> hull;  // control points; the curve lies within their hull
    };

    void AddEdge(const TopoDS_Edge& edge);
    double RoundPeak(const RoundEdge& edge, const gp_XYZ& direction, const gp_XYZ& origin, double best) const;
    double FreePeak(const FreeEdge& edge, const gp_XYZ& direction, const gp_XYZ& origin, double best) const;

    bool mFinite = true;
    std::vector<gp_XYZ> mPoints;
    std::vector<RoundEdge> mRounds;
    std::vector<FreeEdge> mFrees;
    std::vector<BulgingFace> mBulges;
};

}  // namespace brenvik::solids
