// Regions of trials.
#include "cnc/part/trial_objects.h"

#include <array>

#include "base/skip.h"

namespace brenvik {

TrialObjects::~TrialObjects() {
    for (AcadEntity* object : mObjects) Skip([object] { object->Delete(); });
}

AcadRegion& RegionOf(AcadDocument& drawing, AcadEntity& curve, TrialObjects& objects) {
    const std::array<AcadEntity*, 1> curves{&curve};
    // A contour that doesn't cross itself makes one.
    const std::vector<AcadRegion*> regions = drawing.ModelSpace().AddRegion(curves);
    for (AcadRegion* region : regions) objects.Keep(region);
    return *regions.front();
}

}  // namespace brenvik
