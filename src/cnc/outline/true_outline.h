// The outside profile: as wide as the part is anywhere in its height.
#pragma once

#include <memory>
#include <vector>

#include "cnc/outline/cut_outs.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"
#include "session/ports/host_interface.h"
#include "session/ports/section_port.h"

namespace brenvik {

/// The profile of one part, begun with the outline of the kept face and widened at the end.
class TrueOutline {
  public:
    explicit TrueOutline(RunState& run) : mRun(run) {}

    /// Names the outline of the kept face: colour 2, on the top plane, as deep as `DimT` and the spoil
    /// board's share. The part has a profile without one too, which the sections alone give.
    void Begin(AcadLWPolyline* keptFace);

    /// Slices the part and unites the sections with the outline. The profile runs counter-clockwise. A
    /// contour that is free all through the part, and that no path follows yet, becomes a cut-out.
    ///
    /// The part is only sliced where that can change anything: where it reaches beyond the outline, and where
    /// a contour of the kept face was left for the other side (`left`) and has edges of the part within it,
    /// since its opening may be narrower further up.
    PassOutcome Finish(const std::vector<LeftContour>& left);

  private:
    void NameLayer(RouteRole role) const;
    PassOutcome ChooseTool();
    void NameProfile(AcadLWPolyline& profile) const;
    bool FillsTheBox() const;
    AcadRegion* RegionOfProfile() const;
    bool StandsOutside(AcadRegion& covered) const;
    const SolidSections* Sections();
    bool BoxReachesBeyond() const;
    bool ReachesBeyond();
    bool RegionFillsTheBox() const;
    bool BoxSidesAreWhole() const;
    bool LevelsTellAll(const std::vector<double>& heights);
    void TakeEdges();
    bool MayBeNarrower(const LeftContour& contour) const;
    std::vector<double> Levels() const;
    std::vector<double> Steps() const;
    bool SliceAt(const std::vector<double>& heights);
    void Unite(AcadRegion* section);
    void UniteSections(bool withOpenings);
    void JoinRegion();
    bool IsLeftOpen() const;
    bool HoldsThePart() const;
    PassOutcome TakeContours(bool withOpenings);

    /// An edge of the part: its ends, and the height of its centre where it is round.
    struct Edge {
        Point3 from, to;
        double centerZ = 0;
        bool full = false;  ///< A full circle.
    };

    RunState& mRun;
    std::vector<Edge> mEdges;
    AcadLWPolyline* mProfile = nullptr;
    std::vector<AcadLWPolyline*> mLumps;  ///< Outlines of lumps that don't touch the profile's.
    AcadRegion* mRegion = nullptr;
    std::unique_ptr<SolidSections> mSections;
    bool mWithoutSections = false;  ///< They have been asked for in vain.
};

}  // namespace brenvik
