// The measured sizes are taken ahead of the turns; the box afterwards is compared with them.
#include "cnc/laying/laid_sizes.h"

#include <memory>

#include "base/skip.h"
#include "cnc/laying/orientation.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/part/told.h"
#include "session/ports/measuring_port.h"
#include "session/session.h"

namespace brenvik {

std::optional<mAutoCAD::SortedExtents> MeasuredSizesOf(const AcadEntity& solid) {
    if (ThePlatform().measuring == nullptr) return std::nullopt;
    double a = 0, b = 0, c = 0;
    int status = 0;
    const bool done = Skip(
        [&] { ThePlatform().measuring->CreateMeasurer()->MeasureSolid(solid.ObjectID(), a, b, c, status); });
    if (!done || status <= 0) return std::nullopt;
    return mAutoCAD::SortExtents(a, b, c);
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
