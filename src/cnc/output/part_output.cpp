// The DXF file of a part and side.
#include "cnc/output/part_output.h"

#include <string>
#include <string_view>
#include <vector>

#include "base/numbers.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "cnc/proof/run_proof.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlaceDigits = 6;

/// The receiver's zero of the second side: the back left corner, which is on the first side's own zero.
void MoveOriginToBackLeftCorner(RunState& run) {
    run.part.drawing->SendCommand("ucs ");
    run.part.drawing->SendCommand("move ");
    const Point3 corner = Rounded(
        {run.part.LowestCorner.x, run.part.LowestCorner.y + run.part.ExtentY, run.part.LowestCorner.z},
        PlaceDigits);
    run.part.drawing->SendCommand(PointAnswer(corner));
}

/// Deletes the outside path of a first side whose receiver makes its own. A cut-out as deep as the part may
/// lie on the outline's layer; it is kept.
void DropOutsidePath(RunState& run) {
    constexpr int outsideColor = 50;
    for (AcadLWPolyline* polyline : All<AcadLWPolyline>(*run.part.drawing)) {
        const bool outline =
            polyline->Layer() == run.part.OutlineLayer && polyline->Color() == layers::OutlineColor;
        if (outline) NoteLeftOutOutline(run, *polyline);
        if (outline || polyline->Color() == outsideColor) polyline->Delete();
    }
}

}  // namespace

void WritePartFile(RunState& run) {
    if (run.FirstPass() && SwitchIsOn(setting::BiesseWorksNest)) DropOutsidePath(run);
    if (!run.FirstPass() && SwitchIsOn(setting::TwoSideUCS)) MoveOriginToBackLeftCorner(run);
    run.part.writtenFile =
        std::string(run.FirstPass() ? OutputFolder : SecondSideFolder) + WrittenFileName(run);
    run.part.drawing->SaveAs(run.part.writtenFile, SaveAsKind::Dxf2000);
    GatherWrittenSide(run, *run.part.drawing, !run.FirstPass());
}

}  // namespace brenvik
