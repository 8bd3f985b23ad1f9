// The sources of an entity's extents, tried in their order; the first that applies ends the choice.
#include "parts/extents.h"

#include "base/numbers.h"
#include "base/skip.h"
#include "session/ports/host_interface.h"
#include "session/session.h"

namespace brenvik::mAutoCAD {

namespace {

/// A measured size at five decimals. What turning a solid and converting its lengths leave behind the ninth
/// is cut off first: it would decide a half, which every odd 64th of an inch is in millimetres, and equal
/// boards would get two sizes.
double SizeOf(double measured) {
    constexpr int noiseDecimals = 9;
    return RoundHalfEven(RoundHalfEven(measured, noiseDecimals), 5);
}

void TakeWorldBox(const AcadEntity& entity, MeasuredExtents& extents) {
    const Box3 box = entity.GetBoundingBox();
    extents.E = {SizeOf(box.max.x - box.min.x), SizeOf(box.max.y - box.min.y), SizeOf(box.max.z - box.min.z)};
    extents.D = extents.E;
}

void TakeSavedValues(const std::array<std::string_view, 3>& oldValues, MeasuredExtents& extents) {
    for (std::size_t i = 0; i < 3; ++i) {
        extents.D[i] = 0;
        Skip([&] { extents.D[i] = StrictNumber(oldValues[i]); });
        extents.E[i] = RoundHalfEven(extents.D[i], 6);
    }
}

bool MeasureWithComponent(const AcadEntity& entity, std::unique_ptr<SolidMeasurer>& measurer,
                          MeasuredExtents& extents) {
    measurer = ThePlatform().measuring->CreateMeasurer();
    double d1 = 0, d2 = 0, d3 = 0;
    int status = 0;
    measurer->MeasureSolid(entity.ObjectID(), d1, d2, d3, status);
    extents.D = {SizeOf(d1), SizeOf(d2), SizeOf(d3)};
    if (status <= 0) return false;
    for (std::size_t i = 0; i < 3; ++i) extents.E[i] = RoundHalfEven(extents.D[i], 5);
    return true;
}

}  // namespace

bool ObtainExtents(const AcadEntity& entity, const MeasuringChoice& choice,
                   const std::array<std::string_view, 3>& oldValues, std::unique_ptr<SolidMeasurer>& measurer,
                   MeasuredExtents& extents) {
    // The world box comes first: it wins over measuring being off.
    if (choice.WCSMeasure)
        TakeWorldBox(entity, extents);
    else if (choice.NoMeasure != 0)
        TakeSavedValues(oldValues, extents);
    else if (choice.MeasureNonSolids == 1 && entity.ObjectName() != "AcDb3dSolid")
        TakeWorldBox(entity, extents);
    else
        return MeasureWithComponent(entity, measurer, extents);
    return true;
}

}  // namespace brenvik::mAutoCAD
