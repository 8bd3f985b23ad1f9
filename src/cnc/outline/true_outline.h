// The outside profile: as wide as the part is anywhere in its height.
#pragma once

#include <vector>

#include "cnc/outline/cut_outs.h"
#include "cnc/outline/part_sections.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// The profile of one part, begun with the outline of the kept face and widened at the end.
class TrueOutline {
  public:
    explicit TrueOutline(RunState& run);

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
    bool BoxReachesBeyond() const;
    bool ReachesBeyond();
    void JoinRegion();
    bool IsLeftOpen() const;
    bool HoldsThePart() const;
    PassOutcome TakeContours(bool withOpenings);

    RunState& mRun;
    const Box3 mPart;  ///< Nothing moves the part while its outline is made.
    PartSections mSections;
    AcadLWPolyline* mProfile = nullptr;
    std::vector<AcadLWPolyline*> mLumps;  ///< Outlines of lumps that don't touch the profile's.
};

}  // namespace brenvik
