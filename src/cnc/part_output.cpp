// The DXF file of a part and side.
#include <algorithm>

#include "base/number_text.h"
#include "base/numbers.h"
#include "cnc/drawing_walk.h"
#include "cnc/part_steps.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlaceDigits = 6;

/// Part names are typed by people; what a file name can't hold becomes a low line.
std::string FileNameText(std::string_view text) {
    constexpr std::string_view refused = "\\/:*?\"<>|";
    std::string name(text);
    std::replace_if(
        name.begin(), name.end(),
        [refused](char letter) {
            return refused.find(letter) != std::string_view::npos ||
                   (static_cast<unsigned char>(letter) < ' ');
        },
        '_');
    return name;
}

std::string NameOfPart(const RunState& run) {
    std::string name = "Part_" + std::to_string(run.partIndex) + "_" + FileNameText(run.texts.PartName) +
                       "_" + FileNameText(run.texts.PN);
    // THERM's list names the sub assembly too, and a list has to name the file that is there.
    if (run.target == Target::THERM) name += "_" + FileNameText(run.texts.SubAssembly);
    return name + ".dxf";
}

/// The receiver's zero of the second side: the back left corner, which lies on the first side's own.
void MoveOriginToBackLeftCorner(RunState& run) {
    run.part->SendCommand("ucs ");
    run.part->SendCommand("move ");
    const Point3 corner =
        Rounded({run.LowestCorner.x, run.LowestCorner.y + run.ExtentY, run.LowestCorner.z}, PlaceDigits);
    run.part->SendCommand(PointAnswer(corner));
}

/// Where the receiver makes its own outside path, the first side goes without one.
void DropOutsidePath(RunState& run) {
    constexpr int outsideColor = 50;
    for (AcadLWPolyline* polyline : All<AcadLWPolyline>(*run.part))
        if (polyline->Color() == outsideColor || polyline->Layer() == run.OutlineLayer) polyline->Delete();
}

}  // namespace

std::string WrittenFileName(const RunState& run) { return (run.FirstPass() ? "" : "B") + NameOfPart(run); }

void WritePartFile(RunState& run) {
    if (run.FirstPass() && StrictIntegerSetting("BiesseWorksNest") == 1) DropOutsidePath(run);
    if (!run.FirstPass() && StrictIntegerSetting("2SideUCS") == 1) MoveOriginToBackLeftCorner(run);
    run.writtenFile = std::string(run.FirstPass() ? OutputFolder : SecondSideFolder) + WrittenFileName(run);
    run.part->SaveAs(run.writtenFile, SaveAsKind::Dxf2000);
}

}  // namespace brenvik
