// Lays a part flat. The part is taken apart on a copy: its flat faces become regions, their edges lines. The
// largest face and its edges determine how to turn the drawing, which carries the solid along.
#include "cnc/laying/alignment.h"

#include <variant>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/explode_all.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/laying/alignment_edges.h"
#include "cnc/laying/alignment_faces.h"
#include "cnc/laying/alignment_top.h"
#include "cnc/laying/laid_sizes.h"
#include "cnc/laying/orientation.h"
#include "cnc/part/part_drawing.h"
#include "cnc/part/second_side.h"
#include "parts/mautocad.h"
#include "session/message.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int RegionCopyColor = 1, CircleHoldColor = 5;
constexpr std::string_view PartSet = "exploded";

/// The first object of the drawing, which is the part.
Acad3DSolid& PartOf(AcadDocument& drawing) {
    AcadBlock& space = drawing.ModelSpace();
    auto* solid = space.Count() == 0 ? nullptr : dynamic_cast<Acad3DSolid*>(space.Item(0));
    if (solid == nullptr) throw ObjectNotSet("the part drawing begins with its solid");
    return *solid;
}

AcadSelectionSet& SelectAll(AcadDocument& drawing) {
    AcadSelectionSet& set = FreshSet(drawing, PartSet);
    set.Select(SelectMode::All);
    return set;
}

/// What the copy has fallen apart to so far falls apart once more: faces, or the blocks of faces.
void ExplodePieces(AcadDocument& drawing) {
    const OnlyUnlocked only(drawing, {layers::BrenvikExplode, layers::Region});
    drawing.SendCommand(ExplodeAll);
}

/// Sets the two faces and a copy of the larger one aside, and explodes all others to their edges; the edges
/// of the largest stay apart on `Region`.
void ExplodeFacesToEdges(AcadDocument& drawing, const FlatFaces& faces) {
    AcadRegion& largest = *faces.LargestRegion.region;
    AddLayer(drawing, layers::NextBiggestRegion);
    largest.SetLayer(layers::Region);
    faces.NextRegion.region->SetLayer(layers::NextBiggestRegion);
    AddLayer(drawing, layers::RegionCopy, RegionCopyColor);
    largest.Copy()->SetLayer(layers::RegionCopy);
    // Where no face lies opposite, the largest face itself may have been set aside; its edges are still
    // needed.
    if (faces.NextRegion.region == &largest) largest.Copy()->SetLayer(layers::Region);
    ExplodePieces(drawing);
}

PassOutcome TellMissingEdge(MissingEdge missing) {
    switch (missing) {
        case MissingEdge::Line:
            ShowMessage(NoLineMessage);
            return PassOutcome::SkipPart;
        case MissingEdge::ConnectedLine:
            ShowMessage(
                "This part does not have a line connected to the endpoint or startpoint of the longest line, "
                "so exiting now.");
            return PassOutcome::EndRun;
    }
    return PassOutcome::SkipPart;
}

/// The host uses only the point's direction. Form A sends a farther point than form B; the result is the
/// same.
std::string_view SideOfY(RunForm form) {
    switch (form) {
        case RunForm::A:
            return "0,10000000,0 ";
        case RunForm::B:
            return "0,1000,0 ";
    }
    return {};
}

/// Returns false, after a message, for letters that don't name the part's sizes. Such a part would be laid in
/// a way that nobody has asked for, and its depths would be those of another thickness.
bool TurnToLetters(RunState& run, const Acad3DSolid& solid) {
    const std::optional<std::string> letters = UsableLettersOf(solid);
    if (!letters) return false;
    const mAutoCAD::LabelledSizes sizes = TurnByLetters(*run.part.drawing, solid, *letters);
    run.part.DimL = sizes.length;
    run.part.DimW = sizes.width;
    run.part.DimT = sizes.thickness;
    return true;
}

/// Parts with another material on their third face are worked on from that face.
bool WorkedFromThirdFace(const Acad3DSolid& solid) {
    const std::string face = FoldUpper(mAutoCAD::PartDataOf(solid, "FACE"));
    return ToInteger(NumberSetting(setting::SpecialMaterial)) == 1 && (IsBlank(face) ? "1" : face) == "3";
}

/// The face that was down is up now, and the other one is the reference.
void TurnToSecondSide(AcadDocument& drawing) {
    TurnOver(drawing);
    const std::vector<AcadRegion*> first = AllOn<AcadRegion>(drawing, layers::RegionCopy);
    const std::vector<AcadRegion*> second = AllOn<AcadRegion>(drawing, layers::NextBiggestRegion);
    for (AcadRegion* region : first) region->SetLayer(layers::NextBiggestRegion);
    for (AcadRegion* region : second) region->SetLayer(layers::RegionCopy);
}

void HoldCircles(AcadDocument& drawing) {
    AddLayer(drawing, layers::CircleHold, CircleHoldColor);
    for (AcadCircle* circle : All<AcadCircle>(drawing)) circle->SetLayer(layers::CircleHold);
}

/// Moves the part's corner to the origin, by way of a drawing that is written from there. The new drawing
/// is the part drawing from now on.
void MoveToOrigin(RunState& run, const Acad3DSolid& solid) {
    MoveOriginToCorner(*run.part.drawing, solid);
    run.part.drawing->Wblock(WorkDrawing2, SelectAll(*run.part.drawing));
    run.part.drawing->Close(false);
    run.part.drawing = nullptr;
    TakePartDrawing(run, *run.app->Documents().Open(WorkDrawing2));
    SelectAll(*run.part.drawing);
}

}  // namespace

PassOutcome AlignPart(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    Acad3DSolid& solid = PartOf(drawing);
    const auto measured = run.FirstPass() ? MeasuredSizesOf(solid) : std::nullopt;
    ExplodeCopyToFaces(drawing, solid);
    const std::optional<FlatFaces> faces = FindFaces(drawing);
    if (!faces) {
        ShowMessage("This part does not have a flat side to work with, so this part will be skipped.");
        return PassOutcome::SkipPart;
    }
    ExplodeFacesToEdges(drawing, *faces);
    const auto edges = FindSquaringPoints(drawing, faces->LargestRegion.normal);
    if (const auto* missing = std::get_if<MissingEdge>(&edges)) return TellMissingEdge(*missing);
    ExplodePieces(drawing);
    SquareToAxes(drawing, std::get<SquaringPoints>(edges), SideOfY(run.form));

    if (!TurnToLetters(run, solid)) return PassOutcome::SkipPart;
    if (measured) NoteWhereLarger(run, *measured, solid);
    BringTopUp(drawing, solid, faces->LargestRegion.area);
    if (WorkedFromThirdFace(solid)) TurnOver(drawing);
    if (NeedsOtherSide(run)) TurnToSecondSide(drawing);
    HoldCircles(drawing);
    MoveToOrigin(run, solid);
    return PassOutcome::GoOn;
}

}  // namespace brenvik
