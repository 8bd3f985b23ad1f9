// The DXF file of a part and side.
#include <string>
#include <string_view>
#include <vector>

#include "base/file_name.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/proof/run_proof.h"
#include "cnc/run/part_steps.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlaceDigits = 6, OutlineColor = 2;
/// What the files of second sides begin with.
constexpr std::string_view SecondSideMark = "B";

/// A text of the part for its file's name. Work lists name the file and are parted by commas.
std::string TextForName(std::string_view text) { return ReplaceAll(FileNameText(text), ",", " "); }

std::string NameOfPart(const RunState& run) {
    std::vector<std::string> texts{TextForName(run.texts.PartName), TextForName(run.texts.PN)};
    // THERM's list names the sub assembly too, and a list has to name the file that is there.
    if (run.target == Target::THERM) texts.push_back(TextForName(run.texts.SubAssembly));
    const std::string head = "Part_" + std::to_string(run.partIndex), ending = ".dxf";
    MakeFit(texts, LongestFileName - SecondSideMark.size() - head.size() - texts.size() - ending.size());
    return head + "_" + Join(texts, "_") + ending;
}

/// The receiver's zero of the second side: the back left corner, which lies on the first side's own.
void MoveOriginToBackLeftCorner(RunState& run) {
    run.part->SendCommand("ucs ");
    run.part->SendCommand("move ");
    const Point3 corner =
        Rounded({run.LowestCorner.x, run.LowestCorner.y + run.ExtentY, run.LowestCorner.z}, PlaceDigits);
    run.part->SendCommand(PointAnswer(corner));
}

/// Where the receiver makes its own outside path, the first side goes without one. A cut-out as deep as the
/// part may lie on the outline's layer, and stays.
void DropOutsidePath(RunState& run) {
    constexpr int outsideColor = 50;
    for (AcadLWPolyline* polyline : All<AcadLWPolyline>(*run.part)) {
        const bool outline = polyline->Layer() == run.OutlineLayer && polyline->Color() == OutlineColor;
        if (outline) NoteLeftOutOutline(run, *polyline);
        if (outline || polyline->Color() == outsideColor) polyline->Delete();
    }
}

}  // namespace

std::string WrittenFileName(const RunState& run) {
    return std::string(run.FirstPass() ? "" : SecondSideMark) + NameOfPart(run);
}

void WritePartFile(RunState& run) {
    if (run.FirstPass() && SwitchIsOn("BiesseWorksNest")) DropOutsidePath(run);
    if (!run.FirstPass() && SwitchIsOn("2SideUCS")) MoveOriginToBackLeftCorner(run);
    run.writtenFile = std::string(run.FirstPass() ? OutputFolder : SecondSideFolder) + WrittenFileName(run);
    run.part->SaveAs(run.writtenFile, SaveAsKind::Dxf2000);
    GatherWrittenSide(run);
}

}  // namespace brenvik
