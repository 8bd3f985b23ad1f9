// The measured sizes are taken ahead of the turns; the box afterwards is compared with them.
#include "cnc/laying/laid_sizes.h"

#include <memory>

#include "base/skip.h"
#include "cnc/laying/orientation.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "parts/extents.h"
#include "session/session.h"

namespace brenvik {

std::optional<mAutoCAD::SortedExtents> MeasuredSizesOf(const AcadEntity& solid) {
    if (ThePlatform().measuring == nullptr) return std::nullopt;
    std::unique_ptr<SolidMeasurer> measurer;
    mAutoCAD::MeasuredExtents extents;
    bool measured = false;
    if (!Skip([&] { measured = mAutoCAD::ObtainExtents(solid, {}, {}, measurer, extents); }) || !measured)
        return std::nullopt;
    return mAutoCAD::SortExtents(extents.D[0], extents.D[1], extents.D[2]);
}

void NoteWhereLarger(RunState& run, const mAutoCAD::SortedExtents& measured, const AcadEntity& laid) {
    constexpr double muchInMillimetres = 0.1;
    const double much = muchInMillimetres * MillimetreIn(run.Metric());
    const PartExtents box = ExtentsOf(laid.GetBoundingBox());
    const mAutoCAD::SortedExtents lies = mAutoCAD::SortExtents(box.x, box.y, box.z);
    if (lies.Big <= measured.Big + much && lies.Mid <= measured.Mid + much) return;
    run.part.liesAslant = "lies along its longest edge, which runs aslant: it takes " +
                          ReportedLength(lies.Big) + " by " + ReportedLength(lies.Mid) +
                          " there and measures " + ReportedLength(measured.Big) + " by " +
                          ReportedLength(measured.Mid) + ", and its grain is turned by as much.";
}

}  // namespace brenvik
