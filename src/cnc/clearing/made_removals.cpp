// The drawing of a pass read as its file will be.
#include "cnc/clearing/made_removals.h"

#include <algorithm>
#include <string>
#include <utility>

#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/proof/run_proof.h"
#include "cnc/routes/routing.h"

namespace brenvik {

namespace {

/// From the first side's frame to the second's, or back.
void TurnOver(const RunState& run, Removal& removal) {
    for (PlanSide& side : removal.sides) {
        side.from.y = run.part.ExtentY - side.from.y;
        side.to.y = run.part.ExtentY - side.to.y;
        side.bulge = -side.bulge;
    }
    removal.low = run.part.ExtentZ - std::exchange(removal.high, run.part.ExtentZ - removal.low);
}

}  // namespace

Removals RemovalsOf(const RunState& run) {
    const std::vector<std::string> tools = ToolNumbersOf(run);
    const SideContext context{
        run.target,       run.Metric(), !run.FirstPass(),        run.part.ExtentY,
        run.part.ExtentZ, tools,        run.part.Material.tools, std::max(-run.SpoilAmount, 0.0)};
    Removals removals;
    for (AcadEntity* const entity : All<AcadEntity>(*run.part.drawing)) {
        WrittenSide read;
        ReadWrittenEntity(*entity, context, read);
        for (WrittenOperation& operation : read.operations) {
            // What lies above an edge bore is wood, or a bit comes down through it anyway.
            if (operation.kind == OperationKind::Outline || operation.bore) continue;
            Removal removal{operation.sides, operation.low, operation.high};
            if (!run.FirstPass()) TurnOver(run, removal);
            auto* const path = dynamic_cast<AcadLWPolyline*>(entity);
            removal.mayGo = path != nullptr && removal.low > UnitOf(run) * 0.01;
            removals.all.push_back(std::move(removal));
            removals.entities.push_back(entity);
            removals.paths.push_back(path);
            removals.operations.push_back(std::move(operation));
        }
    }
    if (run.FirstPass()) return removals;
    for (Removal first : run.firstSide.removals) {
        TurnOver(run, first);
        first.mayGo = false;
        removals.all.push_back(std::move(first));
    }
    return removals;
}

double WidestBit(const MaterialRecord& material) {
    double widest = 0;
    for (const MaterialTool& tool : material.tools) widest = std::max(widest, tool.diameter);
    return widest;
}

std::optional<OperationName> NameOf(const RunState& run, const WrittenOperation& operation) {
    const std::vector<std::string> tools = ToolNumbersOf(run);
    return ReadOperationName({run.target, run.Metric(), tools, operation.high - operation.low},
                             operation.layer);
}

double BitOf(const RunState& run, const std::optional<OperationName>& name,
             const WrittenOperation& operation) {
    const bool said = name && (name->diameter || !name->tool.empty());
    return said ? operation.bit : WidestBit(run.part.Material);
}

void Redraw(RunState& run, AcadLWPolyline& path, const std::vector<PlanSide>& loop) {
    const double turn = path.Normal().z < 0 ? -1 : 1;
    std::vector<PathVertex> corners;
    for (const PlanSide& side : loop) corners.push_back({turn * side.from.x, side.from.y, turn * side.bulge});
    SetVertices(path, corners);
    BringToDirection(path, DirectionOfCut(run.part.Material));
    path.Update();
}

}  // namespace brenvik
