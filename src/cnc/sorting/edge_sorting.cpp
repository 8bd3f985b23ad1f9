// Arcs come from faces and from the projection; the lines that matter here come from faces alone.
#include "cnc/sorting/edge_sorting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"

namespace brenvik {

namespace {

constexpr int ArcColor = 2;
constexpr int NormalDecimals = 5;

constexpr auto OwnRole = std::to_array<std::string_view>(
    {layers::BrenvikExplode, layers::RegionCopy, layers::CircleHold, layers::Region, layers::RegionCopyCopy,
     layers::Zero, layers::SolidHold});

bool StrictlyInside(double z, const Box3& part) { return Less(part.min.z, z) && Less(z, part.max.z); }

}  // namespace

void SortArcsAndLines(RunState& run, const Box3& part) {
    AcadDocument& drawing = *run.part.drawing;
    AddLayer(drawing, layers::ArcPv, ArcColor);
    for (AcadArc* arc : All<AcadArc>(drawing)) {
        const std::string layer = arc->Layer();
        if (std::find(OwnRole.begin(), OwnRole.end(), layer) != OwnRole.end()) continue;
        arc->SetLayer(StrictlyInside(arc->StartPoint().z, part) ? layers::BrenvikExplode : layers::ArcPv);
    }
    for (AcadLine* line : AllOn<AcadLine>(drawing, layers::BrenvikExplode)) {
        const bool level = std::abs(RoundHalfEven(line->Normal().z, NormalDecimals)) == 1;
        if (level)
            line->SetNormal({0, 0, 1});
        else if (StrictlyInside(line->StartPoint().z, part))
            line->Delete();
    }
}

}  // namespace brenvik
