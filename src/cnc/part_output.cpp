// The DXF file of a part and side.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "cnc/drawing_walk.h"
#include "cnc/part_steps.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int PlaceDigits = 6, OutlineColor = 2;
/// Of a file's name in bytes, its ending included: all that a path may have besides the folder.
constexpr std::size_t LongestName = 240;

/// What the files of second sides begin with.
constexpr std::string_view SecondSideMark = "B";

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

/// Shortens the texts until they have no more than `room` bytes together. The longest gives way, and
/// characters stay whole.
void MakeFit(std::vector<std::string>& texts, std::size_t room) {
    const auto used = [&texts] {
        std::size_t bytes = 0;
        for (const std::string& text : texts) bytes += text.size();
        return bytes;
    };
    while (used() > room) {
        std::string& longest = *std::ranges::max_element(texts, {}, &std::string::size);
        longest = DropRight(longest, 1);
    }
}

std::string NameOfPart(const RunState& run) {
    std::vector<std::string> texts{FileNameText(run.texts.PartName), FileNameText(run.texts.PN)};
    // THERM's list names the sub assembly too, and a list has to name the file that is there.
    if (run.target == Target::THERM) texts.push_back(FileNameText(run.texts.SubAssembly));
    const std::string head = "Part_" + std::to_string(run.partIndex), ending = ".dxf";
    MakeFit(texts, LongestName - SecondSideMark.size() - head.size() - texts.size() - ending.size());
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
}

}  // namespace brenvik
