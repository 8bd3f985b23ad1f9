// The part seen from above and broken down to curves. What "all" reaches in each command is settled by the
// layers that are locked at that moment.
#include "cnc/sorting/profile.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "base/fractions.h"
#include "base/numbers.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/explode_all.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/part_material.h"
#include "cnc/part/part_measures.h"
#include "cnc/sorting/circle_sorting.h"
#include "cnc/sorting/circular_routes.h"
#include "cnc/sorting/edge_sorting.h"
#include "cnc/sorting/hole_floors.h"
#include "cnc/sorting/untaken_faces.h"

namespace brenvik {

namespace {

constexpr int SizeDecimals = 6;
constexpr int HoldColor = 5;

/// Draws the profile of the solid from above on layers of its own. It takes a viewport of the sheet, and the
/// four blanks end the selection and take three defaults: hidden lines on a layer of their own, all in one
/// plane, and no tangent edges.
void ProjectPart(RunState& run) {
    for (const std::string_view text :
         {"tilemode ", "0 ", "mview ", "fit ", "mspace ", "-view ", "top ", "hi ", "solprof ", "all ", " ",
          " ", " ", " ", "tilemode ", "1 ", "-v ", "t "})
        run.part.drawing->SendCommand(text);
    run.app->ZoomExtents();
}

/// The boundary of the kept face, drawn on a layer for the time it takes to measure its height.
void DrawBoundaryOfKeptFace(AcadDocument& drawing) {
    AddLayer(drawing, layers::RegionCopyCopy);
    for (AcadRegion* region : AllOn<AcadRegion>(drawing, layers::RegionCopy)) {
        region->Copy();
        region->SetLayer(layers::RegionCopyCopy);
    }
    const OnlyUnlocked only(drawing, {layers::RegionCopyCopy});
    drawing.SendCommand(ExplodeAll);
}

std::optional<double> HeightOfKeptFace(AcadDocument& drawing) {
    for (const AcadLine* line : AllOn<AcadLine>(drawing, layers::RegionCopyCopy)) {
        const double z = line->EndPoint().z;
        if (RoundHalfEven(z, SizeDecimals) > 0) return z;
    }
    return std::nullopt;
}

/// Lowers the kept face to Z 0, where the projection lies and the outline is drawn.
void LowerKeptFace(AcadDocument& drawing) {
    DrawBoundaryOfKeptFace(drawing);
    const std::optional<double> height = HeightOfKeptFace(drawing);
    if (height && LayerExists(drawing, layers::RegionCopy)) {
        const OnlyUnlocked only(drawing, {layers::RegionCopy});
        for (const std::string& text :
             {std::string("m "), std::string("all  "), std::string("0,0,0 "), PointAnswer({0, 0, -*height})})
            drawing.SendCommand(text);
    }
    for (AcadLine* line : AllOn<AcadLine>(drawing, layers::RegionCopyCopy)) line->Delete();
}

/// Everything but the solid falls apart to curves: kept faces, the blocks of the projection and what stands
/// in them. Circles are kept out of the last round: they are gathered already.
void BreakDown(AcadDocument& drawing) {
    AddLayer(drawing, layers::SolidHold);
    LastSolid(drawing).SetLayer(layers::SolidHold);
    {
        const Locked solid(drawing, {layers::SolidHold});
        drawing.SendCommand(ExplodeAll);
        drawing.SendCommand(ExplodeAll);
    }
    for (AcadEntity* entity : All<AcadEntity>(drawing))
        if (entity->ObjectName() == "AcDbBody") entity->Delete();
    AddLayer(drawing, layers::CircleHold, HoldColor);
    const Locked held(drawing, {layers::CircleHold, layers::SolidHold});
    drawing.SendCommand(ExplodeAll);
}

void TakeMeasures(RunState& run, const Acad3DSolid& solid, const Box3& box) {
    MeasurePart(run, box);
    run.part.PartThickness = run.part.ExtentZ;
    run.part.PartBottomZ = RoundHalfEven(box.min.z, SizeDecimals);
    run.part.PartVolume = solid.Volume();
}

}  // namespace

PassOutcome SortEdges(RunState& run) {
    AcadDocument& drawing = *run.part.drawing;
    ProjectPart(run);
    LowerKeptFace(drawing);
    run.part.QuarterThickness = RoundDecimalValue(LenientNumber(run.part.DimT), ExportFractionUnit);
    run.part.MaterialName = MaterialNameOf(LastSolid(drawing));
    AddLayer(drawing, layers::Border);
    BreakDown(drawing);

    const Acad3DSolid& solid = LastSolid(drawing);
    const Box3 part = solid.GetBoundingBox();
    TakeMeasures(run, solid, part);
    NoteUntakenFaces(run);
    CompleteHoleFloors(run, part);
    SortCircles(run, part);
    const PassOutcome routes = SortCircularRoutes(run, part);
    if (routes != PassOutcome::GoOn) return routes;
    SortArcsAndLines(run, part);
    return PassOutcome::GoOn;
}

}  // namespace brenvik
