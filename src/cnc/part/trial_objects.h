// The objects of a trial cut, and the region of its contour.
#pragma once

#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Deletes the objects of one trial at its end. Those that a step has used up already are gone, and deleting
/// them again is passed over.
class TrialObjects {
  public:
    TrialObjects() = default;
    ~TrialObjects();
    TrialObjects(const TrialObjects&) = delete;
    TrialObjects& operator=(const TrialObjects&) = delete;

    template <class Kind>
    Kind& Keep(Kind* object) {
        mObjects.push_back(object);
        return *object;
    }

  private:
    std::vector<AcadEntity*> mObjects;
};

/// The region of a closed curve, kept among the objects. Fails for a curve that makes none.
AcadRegion& RegionOf(AcadDocument& drawing, AcadEntity& curve, TrialObjects& objects);

}  // namespace brenvik
