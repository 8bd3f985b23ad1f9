// Part files by the host's Wblock.
#include "cnc/part_files.h"

#include "base/skip.h"
#include "cnc/drawing_walk.h"
#include "parts/mautocad.h"
#include "session/files_port.h"
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
    if (files.ListFiles(OutputFolder, "Part_*.dwg").empty()) return;
    for (const std::string_view pattern : {"*.dwg", "*.dxf"})
        for (const std::string& name : files.ListFiles(OutputFolder, pattern))
            RemoveIfThere(std::string(OutputFolder) + name);
}

std::string LabelOf(const AcadEntity& solid) {
    const std::string handle = solid.Handle();
    std::string name;
    Skip([&] { name = mAutoCAD::GetPartData(handle, "PartName"); });
    return name.empty() ? handle : "\"" + name + "\" (" + handle + ")";
}

}  // namespace

std::vector<PartFile> WritePartFiles(RunState& run, AcadSelectionSet& prev, LentQuantities& quantities) {
    AcadDocument& drawing = *run.sessionDrawing;
    AcadSelectionSet& one = FreshSet(drawing, "EXPORTSET");
    FreshSet(drawing, "explode");
    std::vector<PartFile> parts;
    const int count = prev.Count();
    for (int member = 0; member < count; ++member) {
        AcadEntity* entity = prev.Item(member);
        if (entity->ObjectName() != "AcDb3dSolid") continue;
        if (parts.empty()) {
            RequireFolders();
            RemoveOldPartFiles();
        }
        UnlockLayer(drawing, entity->Layer());
        one.Clear();
        one.AddItems(std::span(&entity, 1));
        PartFile part{"Part_" + std::to_string(parts.size()) + ".dwg", LabelOf(*entity)};
        drawing.Wblock(part.FirstSidePath(), one);
        drawing.Wblock(part.SecondSidePath(), one);
        quantities.GiveBack(*entity);
        parts.push_back(std::move(part));
    }
    return parts;
}

}  // namespace brenvik
