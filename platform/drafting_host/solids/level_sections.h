// Level sections of a solid, face by face and by formula: the boolean machinery of the modeller is asked for
// free surfaces alone, so a section costs next to nothing.
#pragma once

#include <TopoDS_Shape.hxx>
#include <gp_Pnt.hxx>
#include <gp_XYZ.hxx>
#include <memory>
#include <vector>

#include "drafting_host/solids/exact_box.h"
#include "drafting_host/solids/plan_curve.h"
#include "drafting_host/solids/support.h"

namespace brenvik::solids {

/// A side of a section: straight, or round with the tangent of a quarter of its angle, positive for one that
/// runs counter-clockwise.
struct SectionSide {
    PlanPoint from, to;
    double bulge = 0;
};

/// A cylinder with a level axis.
struct LyingCylinder {
    gp_Pnt on;
    gp_XYZ along;
    double radius = 0;
    bool hollow = false;  ///< The solid is on the outer side of it.
};

class LevelSections {
  public:
    /// Throws Failure for a shape that holds no point.
    explicit LevelSections(const TopoDS_Shape& shape);
    ~LevelSections();
    LevelSections(const LevelSections&) = delete;
    LevelSections& operator=(const LevelSections&) = delete;

    const Box& Bounds() const { return mBox; }
    /// The heights of corners, and of the highest and lowest places of what is round; ascending.
    const std::vector<double>& Levels() const { return mLevels; }
    /// The spans of the faces that aren't upright.
    const std::vector<Reach>& Slopes() const { return mSlopes; }
    const std::vector<LyingCylinder>& Lying() const { return mLying; }

    /// The sides of the section at a height that is none of the levels, in no order. Free curves come in
    /// chords. Throws Failure where a face can't be cut.
    std::vector<SectionSide> At(double height) const;

  private:
    struct Wall;
    void AddFace(const TopoDS_Face& face);
    void SortLevels();

    Box mBox;
    std::vector<std::unique_ptr<Wall>> mWalls;
    std::vector<double> mLevels;
    std::vector<Reach> mSlopes;
    std::vector<LyingCylinder> mLying;
};

}  // namespace brenvik::solids
