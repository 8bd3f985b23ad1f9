// The end of a part's way: its data are read, the sheet is drawn, and all that is no operation goes. The part
// leaves with its top face on Z 0.
#include "cnc/output/closing.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/outline/cut_outs.h"
#include "cnc/outline/tongues.h"
#include "cnc/part/operation_layer.h"
#include "cnc/part/part_measures.h"
#include "cnc/proof/run_proof.h"
#include "cnc/targets/target_table.h"
#include "parts/mautocad.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// Layers whose entities have done their work; the names compare letter by letter. "circleHold2" has a small
/// c on purpose: what was left on `CircleHold2` stays.
constexpr auto UsedUp = std::to_array<std::string_view>(
    {layers::Region, layers::BrenvikExplode, layers::RegionCopyCopy, layers::ArcPv, layers::RegionCopy,
     layers::CircleHold, layers::RoutingLayer1, layers::RoutingLayer2, layers::Border, layers::Border2,
     layers::RouteCircleHold, "circleHold2", layers::MaxCircleHold, layers::NextBiggestRegion,
     layers::HorzCircleHold, layers::MyHorzCircleHold, layers::RegionPv, layers::RegionPv2});

template <class Wanted>
void DeleteWhere(AcadDocument& drawing, Wanted&& wanted) {
    for (AcadEntity* entity : All<AcadEntity>(drawing))
        if (wanted(*entity)) entity->Delete();
}

bool IsUsedUp(const std::string& layer) {
    return std::find(UsedUp.begin(), UsedUp.end(), layer) != UsedUp.end();
}

/// The blank that the part is cut from, as a plane outline with the thickness of the part.
void DrawSheet(RunState& run) {
    const std::string layer = SheetLayerName(run, run.part.ExtentZ);
    if (layer.empty()) return;
    EnsureOperationLayer(run, layer);
    const Point3& low = run.part.LowestCorner;
    const double right = low.x + run.part.ExtentX, back = low.y + run.part.ExtentY;
    const std::array<double, 12> corners{low.x, low.y, low.z, right, low.y, low.z,
                                         right, back,  low.z, low.x, back,  low.z};
    Acad3DPolyline* sheet = run.part.drawing->ModelSpace().Add3DPoly(corners);
    sheet->SetClosed(true);
    sheet->SetThickness(run.part.ExtentZ);
    sheet->SetColor(layers::SheetColor);
    sheet->SetLayer(layer);
}

/// The second side has no business with what the first has cut: the outline, and what went right through.
void DropFirstSidePaths(RunState& run) {
    const bool outlineToo = SwitchIsOn(setting::DeleteOT);
    for (AcadLWPolyline* polyline : All<AcadLWPolyline>(*run.part.drawing)) {
        const bool outline =
            polyline->Layer() == run.part.OutlineLayer && polyline->Color() == layers::OutlineColor;
        const bool through = IsCutThrough(run, *polyline);
        if (through || (outlineToo && (outline || polyline->Layer().starts_with(OutlinePrefix))))
            polyline->Delete();
    }
}

/// Whether a second side has anything to cut that the first hasn't: its outline and its sheet are drawn for
/// every part, and a file with nothing else would only cost the turning of the board.
bool IsNeedless(RunState& run) {
    if (run.FirstPass()) return false;
    bool needed = false;
    run.part.drawing->ModelSpace().ForEach([&](AcadEntity& entity) {
        if (layers::OnProjection(entity.Layer())) return;
        if (const auto* path = dynamic_cast<const AcadLWPolyline*>(&entity))
            needed |= path->Layer() != run.part.OutlineLayer || path->Color() != layers::OutlineColor;
        else
            needed |= dynamic_cast<const AcadCircle*>(&entity) != nullptr;
    });
    return !needed;
}

/// Erases what is left of the projection, in the model and on the sheet of paper.
void EraseProjection(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    {
        const OnlyUnlocked only(drawing, {});
        drawing.ModelSpace().ForEach([&drawing](AcadEntity& entity) {
            if (const std::string layer = entity.Layer(); layers::OnProjection(layer))
                UnlockLayer(drawing, layer);
        });
        drawing.SendCommand("e\rall\r\r");
    }
    drawing.SetActiveSpace(ActiveSpaceKind::PaperSpace);
    drawing.SetMSpace(false);
    drawing.SendCommand("erase\rall\r\r");
    drawing.SetActiveSpace(ActiveSpaceKind::ModelSpace);
}

/// The drawing as its receiver wants it: the top face on Z 0.
void PutTopOnZero(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    drawing.SendCommand("m ");
    drawing.SendCommand("all  ");
    drawing.SendCommand("0,0,0 ");
    drawing.SendCommand("0,0,-" + Trim(NumberToText(run.part.ExtentZ)) + " ");
}

}  // namespace

void ReadPartTexts(RunState& run) {
    const Acad3DSolid& solid = LastSolid(*run.part.drawing);
    const auto read = [&solid](std::string_view key) { return mAutoCAD::PartDataOf(solid, key); };
    PartTexts& texts = run.part.texts;
    texts = {read("PartName"), read("PN"),        read("SubAssembly"), read("ORIE"),  read("Notes"),
             read("Face"),     read("UserData1"), read("UserData2"),   read("Price"), read("EB1"),
             read("EB2"),      read("EB3"),       read("EB4")};
    // A part without a quantity is one part, as the list has it.
    const std::string quantity = read("Quantity");
    run.part.Quantity = IsBlank(quantity) ? 1 : ToInteger(LenientNumber(quantity));
}

PassOutcome ClosePart(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    ReadPartTexts(run);
    TopView(drawing);
    run.app->ZoomExtents();
    if (!run.part.LastAddedLayer.empty() && LayerExists(drawing, run.part.LastAddedLayer))
        drawing.SetActiveLayer(*drawing.Layers().Item(run.part.LastAddedLayer));
    DeleteWhere(drawing, [](const AcadEntity& entity) {
        return IsUsedUp(entity.Layer()) || dynamic_cast<const AcadRegion*>(&entity) != nullptr;
    });
    drawing.PurgeAll();

    AddLayer(drawing, layers::Delete);
    for (AcadLine* line : All<AcadLine>(drawing))
        if (layers::OnProjection(line->Layer())) line->SetLayer(layers::Delete);
    for (AcadLine* line : All<AcadLine>(drawing))
        if (const std::string layer = line->Layer();
            layer == layers::Delete || layer == layers::BrenvikExplode)
            line->Delete();

    MeasurePart(run, BoxOfPart(run));
    DrawSheet(run);
    if (SwitchIsOn(setting::ToungeProcessing)) ProcessTongues(run);
    if (!run.FirstPass()) DropFirstSidePaths(run);
    if (IsNeedless(run)) return PassOutcome::SkipPart;

    HoldPartForProof(run);
    for (Acad3DSolid* solid : All<Acad3DSolid>(drawing)) solid->Delete();
    EraseProjection(run);
    drawing.PurgeAll();
    PutTopOnZero(run);
    return PassOutcome::GoOn;
}

}  // namespace brenvik
