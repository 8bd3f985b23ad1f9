// One part on its way from the session's drawing to a file of its own. What has to be found out is found out
// on an exploded copy, which goes before the solid is turned.
#include "tools/part_export_part.h"

#include <array>
#include <optional>
#include <utility>
#include <variant>

#include "base/failure.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/explode_all.h"
#include "cnc/drawing/prepare_drawing.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/laying/alignment_edges.h"
#include "cnc/laying/alignment_faces.h"
#include "cnc/laying/orientation.h"
#include "parts/mautocad.h"
#include "session/message.h"
#include "session/session_drawing.h"
#include "settings/settings_store.h"
#include "tools/part_export_files.h"

namespace brenvik {

namespace {

constexpr int MaterialColor = 1;
constexpr std::string_view LockedLayer = "Locked";
constexpr std::string_view SideOfY = "0,10000000,0 ";
constexpr std::string_view NoFlatSide =
    "This part does not have a flat side to work with. It will be saved to the export folder, but some "
    "processing will not be done.";
constexpr std::string_view NoConnectedLine = "Cannot process this solid, exiting now";

void Send(AcadDocument& drawing, std::span<const std::string_view> answers) {
    for (const std::string_view answer : answers) drawing.SendCommand(answer);
}

/// Erases everything that is on unlocked layers.
void EraseAll(AcadDocument& drawing) {
    Send(drawing, std::to_array<std::string_view>({"erase ", "all ", " "}));
}

/// Erases what the copy has fallen apart to.
void EraseCopy(AcadDocument& drawing) {
    const OnlyUnlocked only(drawing, {layers::BrenvikExplode, layers::Region});
    EraseAll(drawing);
}

/// Looks at the part from above and lays a user system by its faces. A host whose user systems know no faces
/// goes back to world coordinates.
void LayUserSystem(AcadDocument& drawing) {
    Send(drawing, std::to_array<std::string_view>({"regen ", "-v ", "top ", "_ucs ", "fa ", "c ",
                                                   "-1000000,-1000000 ", "1000000,1000000 ", " "}));
}

std::variant<SquaringPoints, MissingEdge> FindEdges(AcadDocument& drawing, const FlatFaces& faces) {
    faces.LargestRegion.region->SetLayer(layers::Region);
    const OnlyUnlocked only(drawing, {layers::BrenvikExplode, layers::Region});
    drawing.SendCommand(ExplodeAll);
    return FindSquaringPoints(drawing, faces.LargestRegion.normal);
}

/// The points as they will lie in a drawing that is written from the present user system.
SquaringPoints InUserSystem(AcadDocument& drawing, const SquaringPoints& points) {
    const auto place = [&drawing](const Point3& point) {
        return drawing.Utility().TranslateCoordinates(point, CoordinateSystem::World,
                                                      CoordinateSystem::UserCoordinates);
    };
    return {place(points.origin), place(points.onX), place(points.towardsY)};
}

std::string TextOfPart(AcadDocument& drawing, std::string_view key) {
    return mAutoCAD::PartDataOf(LastSolid(drawing), key);
}

}  // namespace

PassOutcome PartExport::Run() {
    OpenScaled();
    ExplodeCopyToFaces(*mDrawing, LastSolid(*mDrawing));
    const std::optional<FlatFaces> faces = FindLargestFace(*mDrawing);
    if (!faces) {
        ShowMessage(NoFlatSide);
        return FinishWithoutFlatSide();
    }
    const auto edges = FindEdges(*mDrawing, *faces);
    if (const auto* missing = std::get_if<MissingEdge>(&edges)) {
        const bool noLine = *missing == MissingEdge::Line;
        ShowMessage(noLine ? NoLineMessage : NoConnectedLine);
        return noLine ? PassOutcome::SkipPart : PassOutcome::EndRun;
    }
    EraseCopy(*mDrawing);
    LayUserSystem(*mDrawing);
    const SquaringPoints points = InUserSystem(*mDrawing, std::get<SquaringPoints>(edges));
    ContinueInWorkDrawing();
    SquareToAxes(*mDrawing, points, SideOfY);
    if (!TurnAndMove()) return PassOutcome::SkipPart;
    PutOnMaterialLayer();
    TopView(*mDrawing);
    SaveAndClose();
    return PassOutcome::GoOn;
}

void PartExport::OpenScaled() {
    mDrawing = mApp.Documents().Open(PartExportPath(mIndex));
    // The active drawing is the session's, whichever it is.
    GoToDrawing(mDrawing);
    AddLayer(*mDrawing, layers::BrenvikExplode);
    ScaleForExport(*mDrawing, ToInteger(NumberSetting(setting::ExportScaleSetting)));
}

PassOutcome PartExport::FinishWithoutFlatSide() {
    EraseCopy(*mDrawing);
    if (!TurnAndMove()) return PassOutcome::SkipPart;
    TopView(*mDrawing);
    Send(*mDrawing, std::to_array<std::string_view>({"z ", "e "}));
    PutOnMaterialLayer();
    SaveAndClose();
    return PassOutcome::GoOn;
}

void PartExport::ContinueInWorkDrawing() {
    AcadSelectionSet& all = FreshSet(*mDrawing, "exploded");
    all.Select(SelectMode::All);
    mDrawing->Wblock(PartExportWorkDrawing, all);
    std::exchange(mDrawing, nullptr)->Close(false);
    mDrawing = mApp.Documents().Open(PartExportWorkDrawing);
    GoToDrawing(mDrawing);
    // Nothing that is still typed at "all" moves the solid before its points are known in this drawing.
    UnlockAllLayers(*mDrawing);
    AddLayer(*mDrawing, LockedLayer);
    LastSolid(*mDrawing).SetLayer(LockedLayer);
    const Locked solid(*mDrawing, {LockedLayer});
    if (mDrawing->ModelSpace().Count() > 1) {
        mDrawing->SendCommand(ExplodeAll);
        EraseAll(*mDrawing);
    }
}

bool PartExport::TurnAndMove() {
    Acad3DSolid& solid = LastSolid(*mDrawing);
    const std::optional<std::string> letters = UsableLettersOf(solid);
    if (!letters) return false;
    mDimT = TurnByLetters(*mDrawing, solid, *letters).thickness;
    // Many receivers read world coordinates and know no user system: both have the corner for their origin.
    solid.Move(solid.GetBoundingBox().min, {});
    MoveOriginToCorner(*mDrawing, solid);
    return true;
}

void PartExport::PutOnMaterialLayer() {
    const std::string name = MaterialLayerName(LenientNumber(mDimT), TextOfPart(*mDrawing, "Material"));
    AddLayer(*mDrawing, name, MaterialColor);
    for (Acad3DSolid* solid : All<Acad3DSolid>(*mDrawing)) {
        solid->SetLayer(name);
        solid->Update();
    }
}

void PartExport::SaveAndClose() {
    mDrawing->PurgeAll();
    const std::string path =
        FinishedPartPath(mIndex, TextOfPart(*mDrawing, "PartName"), TextOfPart(*mDrawing, "PN"));
    mDrawing->SaveAs(path, SaveAsKind::Native);
    mWritten = path.substr(PartExportFolder.size());
    std::exchange(mDrawing, nullptr)->Close(false);
}

void PartExport::CleanUp() {
    if (mDrawing != nullptr) Skip([this] { std::exchange(mDrawing, nullptr)->Close(false); });
    RemoveExportFile(PartExportPath(mIndex));
    RemoveExportFile(PartExportWorkDrawing);
}

}  // namespace brenvik
