// The outside profile: as wide as the part is anywhere in its height.
#pragma once

#include <vector>

#include "cnc/run_state.h"
#include "session/host_interface.h"

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
    /// contours of the kept face were left for the other side (`contoursLeft`), since their opening may be
    /// narrower further up.
    PartStep Finish(bool contoursLeft);

  private:
    void NameProfile(AcadLWPolyline& profile) const;
    bool FillsTheBox() const;
    bool ReachesBeyond();
    std::vector<double> Heights();
    void Unite(AcadRegion* section);
    void UniteSections(bool withOpenings);
    void JoinRegion();
    PartStep TakeContours();

    RunState& mRun;
    AcadLWPolyline* mProfile = nullptr;
    AcadRegion* mRegion = nullptr;
};

}  // namespace brenvik
