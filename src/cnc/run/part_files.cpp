// Part files by the host's Wblock.
#include "cnc/run/part_files.h"

#include <array>
#include <cstddef>
#include <utility>

#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/part/part_file_name.h"
#include "parts/letters_in_use.h"
#include "parts/mautocad.h"
#include "parts/part_data_faults.h"
#include "parts/part_trouble.h"
#include "session/ports/files_port.h"
#include "session/ports/workers_port.h"
#include "session/progress.h"
#include "session/session.h"

namespace brenvik {

namespace {

/// A folder that could not be made before now says why.
void RequireFolders() {
    FilesPort& files = *ThePlatform().files;
    for (const std::string_view folder : {OutputFolder, SecondSideFolder})
        if (!files.FolderExists(folder)) files.MakeFolder(folder);
}

/// Drawings that outlived the emptying of the folder would be taken for parts of this run. They go before the
/// first part is written, so that no part of this run goes with them.
void RemoveOldPartFiles() {
    FilesPort& files = *ThePlatform().files;
    if (files.ListFiles(OutputFolder, FirstSideDrawings).empty()) return;
    for (const std::string_view pattern : {"*.dwg", "*.dxf"})
        for (const std::string& name : files.ListFiles(OutputFolder, pattern))
            RemoveIfThere(std::string(OutputFolder) + name);
}

std::string LabelOf(const AcadEntity& solid) {
    const std::string handle = solid.Handle();
    std::string name;
    Skip([&] { name = mAutoCAD::PartDataOf(solid, "PartName"); });
    return PartLabel(handle, name);
}

/// A quantity that isn't a whole number is used as its number, and reported. Quantities from the list are
/// whole.
void TellQuantityFault(const AcadEntity& solid, const std::string& label, RunReport& report) {
    std::string quantity;
    if (!Skip([&] { quantity = mAutoCAD::PartDataOf(solid, "Quantity"); })) return;
    if (const auto fault = QuantityFault(quantity))
        report.unexplained.push_back("The part " + label + ": " + *fault + ".");
}

void TellLettersInUse(const AcadEntity& solid, const std::string& label, RunReport& report) {
    NoteMissingLetters(solid);
    if (const auto fault = FaultOfLettersInUse(solid))
        report.unexplained.push_back("The part " + label + ": " + *fault + ".");
}

/// Takes the part files back unless all could be written.
class PartFilesInTheMaking {
  public:
    PartFilesInTheMaking() = default;
    ~PartFilesInTheMaking() {
        for (const PartFile& part : mParts) RemovePartFiles(part);
    }
    PartFilesInTheMaking(const PartFilesInTheMaking&) = delete;
    PartFilesInTheMaking& operator=(const PartFilesInTheMaking&) = delete;

    std::size_t Count() const { return mParts.size(); }
    const PartFile& Add(PartFile part) { return mParts.emplace_back(std::move(part)); }
    std::vector<PartFile> Keep() { return std::exchange(mParts, {}); }

  private:
    std::vector<PartFile> mParts;
};

void WritePart(RunState& run, AcadEntity& solid, AcadSelectionSet& one, PartFilesInTheMaking& parts) {
    AcadDocument& drawing = *run.sessionDrawing;
    if (parts.Count() == 0) {
        RequireFolders();
        RemoveOldPartFiles();
    }
    UnlockLayer(drawing, solid.Layer());
    one.Clear();
    one.AddItems(std::array{&solid});
    const PartFile& part =
        parts.Add({PartFileHeadOf(static_cast<int>(parts.Count())) + ".dwg", LabelOf(solid)});
    TellQuantityFault(solid, part.label, run.report);
    TellLettersInUse(solid, part.label, run.report);
    drawing.Wblock(part.FirstSidePath(), one);
    drawing.Wblock(part.SecondSidePath(), one);
}

}  // namespace

void RemovePartFiles(const PartFile& part) {
    RemoveIfThere(part.FirstSidePath());
    RemoveIfThere(part.SecondSidePath());
}

std::optional<std::vector<PartFile>> WritePartFiles(RunState& run, AcadSelectionSet& prev,
                                                    LentQuantities& quantities, WorkersPort* workers) {
    AcadDocument& drawing = *run.sessionDrawing;
    AcadSelectionSet& one = FreshSet(drawing, "EXPORTSET");
    FreshSet(drawing, "explode");
    PartFilesInTheMaking parts;
    std::vector<AcadEntity*> members;
    for (int member = 0; member < prev.Count(); ++member) members.push_back(prev.Item(member));
    Progress progress({"Preparing the parts", static_cast<int>(members.size()), true});
    bool goesOn = true;
    const auto write = [&](std::size_t member) {
        goesOn = progress.Next({});
        if (!goesOn)
            run.report.passedOver.push_back(
                "The run was cancelled while its parts were prepared, ahead of number " +
                std::to_string(member + 1) + " of " + std::to_string(members.size()) + ".");
        if (!goesOn || members[member]->ObjectName() != "AcDb3dSolid") return goesOn;
        WritePart(run, *members[member], one, parts);
        quantities.GiveBack(*members[member]);
        return true;
    };
    if (workers != nullptr)
        workers->DrawAhead(members, write);
    else
        TakeInTurn(members.size(), write);
    if (!goesOn) return std::nullopt;
    return parts.Keep();
}

}  // namespace brenvik
