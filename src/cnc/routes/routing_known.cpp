// The memory of what has been cut, and what is left to the operator.
#include "cnc/routes/routing_known.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "base/numbers.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/polyline_shape.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/second_side.h"
#include "cnc/part/told.h"
#include "parts/mautocad.h"
#include "session/message.h"

namespace brenvik {

namespace {

constexpr double SameArea = 1e-4;

bool SameContour(const CutContour& a, const CutContour& b) {
    return NearlyEqual(a.minX, b.minX) && NearlyEqual(a.minY, b.minY) && NearlyEqual(a.maxX, b.maxX) &&
           NearlyEqual(a.maxY, b.maxY) && NearlyEqual(a.z, b.z) &&
           std::abs(a.area - b.area) <= SameArea * (1 + std::abs(a.area));
}

/// "Part_0_Shelf_7.dxf" becomes "Part_0_Shelf_7_by_hand.dxf": no machine takes it for a finished file.
std::string HandWorkFile(RunState& run) {
    const Acad3DSolid& solid = LastSolid(*run.part.drawing);
    const auto read = [&solid](std::string_view key) { return mAutoCAD::PartDataOf(solid, key); };
    run.part.texts.PartName = read("PartName");
    run.part.texts.PN = read("PN");
    run.part.texts.SubAssembly = read("SubAssembly");
    std::string name = WrittenFileName(run);
    name.insert(name.rfind('.'), "_by_hand");
    return std::string(run.FirstPass() ? OutputFolder : SecondSideFolder) + name;
}

}  // namespace

CutContour PlaceOf(const RunState& run, const Box3& part, const AcadEntity& contour, double area) {
    const Box3 box = contour.GetBoundingBox();
    const Point3 a = OnFirstSide(run, part, box.min), b = OnFirstSide(run, part, box.max);
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y), a.z, area};
}

void NoteCut(RunState& run, const CutContour& contour) {
    if (run.FirstPass()) run.firstSide.paths.push_back(contour);
}

bool CutOnFirstSide(const RunState& run, const CutContour& contour) {
    return !run.FirstPass() && std::ranges::any_of(run.firstSide.paths, [&contour](const CutContour& cut) {
        return SameContour(cut, contour);
    });
}

void NoteUncut(RunState& run, const Box3& part, std::string_view kind, const CutContour& contour) {
    NoteUnexplained(run,
                    std::string(kind) + " from " + ReportedLength(contour.minX) + "," +
                        ReportedLength(contour.minY) + " to " + ReportedLength(contour.maxX) + "," +
                        ReportedLength(contour.maxY) + ", " + ReportedLength(part.max.z - contour.z) +
                        " below the top: no operation",
                    {{contour.minX, contour.minY, contour.z}, {contour.maxX, contour.maxY, contour.z}});
}

void KeepForHandWork(RunState& run) {
    ShowMessage(
        " This part has a route path that cannot be processed. It is being saved and you will have to "
        "process "
        "it by hand.");
    AcadDocument& drawing = *run.part.drawing;
    const std::string file = HandWorkFile(run);
    for (AcadEntity* entity : All<AcadEntity>(drawing))
        if (dynamic_cast<Acad3DSolid*>(entity) == nullptr) Skip([entity] { entity->Delete(); });
    drawing.SaveAs(file, SaveAsKind::Dxf2000);
}

}  // namespace brenvik
