// The level sections of a part: what it covers in plan over its whole height.
#pragma once

#include <memory>
#include <vector>

#include "cnc/outline/cut_outs.h"
#include "cnc/part/run_state.h"
#include "session/ports/host_interface.h"
#include "session/ports/section_port.h"

namespace brenvik {

/// Slices one part and unites the sections, as a region on the top plane.
class PartSections {
  public:
    /// `part` is the box of the part's solid.
    PartSections(RunState& run, const Box3& part);

    /// The part as a source of sections that draw nothing. Null where they can't be had.
    const SolidSections* Held();

    /// Takes a copy of the part apart to its edges.
    void TakeEdges();

    /// Whether a level edge of the part runs within the contour and isn't one of its sides; one that leads
    /// across it from corner to corner is none. Full circles don't count: they are holes and circular routes,
    /// which have recognisers of their own. Needs the edges.
    bool MayBeNarrower(const LeftContour& contour) const;

    /// Whether anything of the part stands outside a region that lies on the top plane: on a frame around it,
    /// or on its openings. The region is used up.
    bool StandsOutside(AcadRegion& covered) const;

    /// Leaves the sections on `RegionPv`, united with the region of the outline if there is one. Needs the
    /// edges, at whose heights the part is sliced, and in even steps where that may not be enough.
    void Unite(AcadRegion* outline);

  private:
    void Add(AcadRegion* section);
    bool RegionFillsTheBox() const;
    bool BoxSidesAreWhole() const;
    bool LevelsTellAll(const std::vector<double>& heights);
    std::vector<double> Levels() const;
    std::vector<double> Steps() const;
    bool SliceAt(const std::vector<double>& heights);

    /// An edge of the part: its ends, and the height of its centre where it is round.
    struct Edge {
        Point3 from, to;
        double centerZ = 0;
        bool full = false;  ///< A full circle.
    };

    RunState& mRun;
    const Box3 mPart;
    std::vector<Edge> mEdges;
    AcadRegion* mRegion = nullptr;
    std::unique_ptr<SolidSections> mHeld;
    bool mWithout = false;  ///< They have been asked for in vain.
};

}  // namespace brenvik
