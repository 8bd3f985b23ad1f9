// Lead-in and lead-out where tongues stand out from the edges of a part: on the outside profile, with the
// bit that cuts it.
#include "cnc/outline/tongues.h"

#include <vector>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/outline/tongue_leads.h"
#include "cnc/part/part_measures.h"
#include "cnc/part/run_state.h"
#include "cnc/targets/target_table.h"

namespace brenvik {

namespace {

std::vector<AcadLWPolyline*> Outlines(AcadDocument& drawing) {
    std::vector<AcadLWPolyline*> found;
    for (AcadLWPolyline* polyline : All<AcadLWPolyline>(drawing))
        if (polyline->Closed() && polyline->Layer().starts_with(OutlinePrefix)) found.push_back(polyline);
    return found;
}

}  // namespace

void ProcessTongues(RunState& run) {
    const std::vector<AcadLWPolyline*> outlines = Outlines(*run.part.drawing);
    if (outlines.empty()) return;
    const Box3 part = BoxOfPart(run);
    const double lead = LeadOf(run.part.Material.tools.front().diameter);
    for (AcadLWPolyline* outline : outlines) {
        const std::vector<PathVertex> vertices = VerticesOf(*outline);
        const std::vector<TongueTip> tips = TongueTips(vertices, part);
        if (tips.empty()) continue;
        SetVertices(*outline, WithLeads(vertices, tips, lead));
        outline->Update();
    }
}

}  // namespace brenvik
