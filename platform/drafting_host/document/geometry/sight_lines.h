// What of a part is seen along a line of sight, decided point by point: a point is seen where on one side of
// it at least nothing stands between it and the eye.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <IntCurvesFace_Intersector.hxx>
#include <TopoDS_Face.hxx>
#include <memory>
#include <optional>
#include <vector>

#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

class SightLines {
  public:
    /// From the drawing towards the eye, a unit vector.
    explicit SightLines(const Point3& towardsEye) : mFrame(vectors::ObjectAxes(towardsEye)) {}

    /// A face of a solid that may stand in the way.
    void Add(const TopoDS_Face& face);
    /// Whether a point on an edge is seen; `along` is the edge's direction there. Looking past the edge on
    /// either side keeps clear of the walls that run along the line of sight.
    bool Sees(const Point3& point, const Point3& along) const;

  private:
    struct Flat {
        double x = 0, y = 0;
    };
    struct Span {
        double low = 0, high = 0;
    };
    struct Segment {
        Flat from, to;
    };
    /// Half a circle or less, its ends in ascending height: x = center.x + side * sqrt(...).
    struct Bow {
        Flat center;
        double radius = 0, side = 1;
        Span y;
    };
    struct Disc {
        Flat center;
        double radius = 0;
    };
    /// A face that is seen whole: its outline, and its height over each point of the view.
    struct Cover {
        Span x, y;
        double top = 0;
        std::vector<Segment> segments;
        std::vector<Bow> bows;
        std::vector<Disc> discs;
        /// Of a flat face: height = base + slope · (x, y).
        double base = 0;
        Flat slope;
        /// Of a cone along the line of sight: height = base + steepness * distance from its axis.
        double steepness = 0;
        Flat axis;
    };
    /// A face that may hide parts of itself.
    struct Bulge {
        Span x, y;
        double top = 0;
        TopoDS_Face face;
        mutable std::unique_ptr<IntCurvesFace_Intersector> hits;
    };

    Flat OnView(const Point3& point) const;
    std::optional<Cover> CoverOf(const TopoDS_Face& face, bool& bulges) const;
    void AddOutline(Cover& cover, const TopoDS_Face& face) const;
    void AddBulge(const TopoDS_Face& face);
    void AddArc(Cover& cover, const Flat& center, double radius, double start, double end) const;
    static bool Inside(const Cover& cover, const Flat& point);
    static double HeightOf(const Cover& cover, const Flat& point);
    bool Covered(const Point3& point, double height) const;

    vectors::Axes mFrame;
    std::vector<Cover> mCovers;
    std::vector<Bulge> mBulges;
};

}  // namespace brenvik
