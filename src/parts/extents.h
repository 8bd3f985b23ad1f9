// Where an entity's extents come from: its box, its saved values, or the solid measuring component.
#pragma once

#include <memory>

#include "parts/orie_update.h"
#include "session/ports/measuring_port.h"

namespace brenvik {

class AcadEntity;

namespace mAutoCAD {

/// The switches that choose the source, as a scan read them.
struct MeasuringChoice {
    bool WCSMeasure = false;
    int NoMeasure = 0, MeasureNonSolids = 0;
};

/// Writes the entity's extents. With measuring off they are `oldValues`. Where a solid can't be measured,
/// `E` keeps what it held before, and the result is false. `measurer` is made anew for each solid that is
/// measured, and the one before it is released then. Fails as host and component do.
bool ObtainExtents(const AcadEntity& entity, const MeasuringChoice& choice,
                   const std::array<std::string_view, 3>& oldValues, std::unique_ptr<SolidMeasurer>& measurer,
                   MeasuredExtents& extents);

}  // namespace mAutoCAD

}  // namespace brenvik
