// The two commands: the set-up, a drawing for each solid, and the loop over them; and the second name.
#include "tools/part_export.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/skip.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/prepare_drawing.h"
#include "cnc/output/output_claim.h"
#include "parts/letters_in_use.h"
#include "parts/mautocad.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/session_drawing.h"
#include "tools/part_export_files.h"
#include "tools/part_export_part.h"

namespace brenvik {

namespace {

/// A folder that could not be made before now says why.
void RequireFolder() {
    FilesPort& files = *ThePlatform().files;
    if (!files.FolderExists(PartExportFolder)) files.MakeFolder(PartExportFolder);
}

/// A drawing that outlived the emptying of the folder would be taken for one of this export.
void RemoveOldDrawings(std::string_view path) {
    if (!ThePlatform().files->FileExists(path)) return;
    EmptyPartExportFolder("*.dwg");
    EmptyPartExportFolder("*.dxf");
}

/// A solid as the session's drawing has it.
struct ExportedSolid {
    std::string handle, name;
};

ExportedSolid SolidOf(const AcadEntity& entity) {
    ExportedSolid solid{entity.Handle(), {}};
    Skip([&] { solid.name = mAutoCAD::PartDataOf(entity, "PartName"); });
    return solid;
}

/// Writes each solid of the set to "Part<n>.dwg" and returns them.
std::vector<ExportedSolid> WriteSolids(AcadDocument& drawing, AcadSelectionSet& prev) {
    AcadSelectionSet& one = FreshSet(drawing, "EXPORTSET");
    FreshSet(drawing, "explode");
    std::vector<ExportedSolid> solids;
    for (int member = 0; member < prev.Count(); ++member) {
        AcadEntity* entity = prev.Item(member);
        if (entity->ObjectName() != "AcDb3dSolid") continue;
        UnlockLayer(drawing, entity->Layer());
        one.Clear();
        one.AddItems(std::span(&entity, 1));
        const std::string path = PartExportPath(static_cast<int>(solids.size()));
        if (solids.empty()) {
            RequireFolder();
            RemoveOldDrawings(path);
        }
        drawing.Wblock(path, one);
        solids.push_back(SolidOf(*entity));
        NoteMissingLetters(*entity);
        if (auto fault = FaultOfLettersInUse(*entity))
            NotePartTrouble({solids.back().handle, solids.back().name, *std::move(fault)});
    }
    return solids;
}

/// False when a part ends the command; its drawing stays open then, as it is what the user has to look at.
bool WorkOnPart(AcadApplication& app, int index, const ExportedSolid& solid) {
    if (!ThePlatform().files->FileExists(PartExportPath(index))) return true;
    PartExport part(app, index);
    PassOutcome came = PassOutcome::GoOn;
    ShowAndResume(ShowFailureWithDetail, [&] { came = part.Run(); });
    if (came == PassOutcome::EndRun) return false;
    part.CleanUp();
    if (part.Written().empty())
        NotePartTrouble({solid.handle, solid.name, "it has no drawing, as a message box has told", true});
    else
        StateOf<PartExportReport>().written.push_back(part.Written());
    return true;
}

std::string NameWithoutExtension(const std::string& name) { return name.substr(0, name.find_last_of('.')); }

}  // namespace

const PartExportReport& LastPartExport() { return StateOf<PartExportReport>(); }

void ExportParts(AcadApplication& app, const std::function<void()>& applyOpenGrid) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    StateOf<PartExportReport>() = {};
    const std::optional<OutputClaims> claims =
        ClaimOutputToEmpty(std::array{PartExportFolder}, drawing, PartExportEmpties);
    if (!claims) return;
    ShowMessage(PartExportWarning);
    applyOpenGrid();
    PrepareDrawing(drawing);
    AcadSelectionSet& prev = FreshSet(drawing, "prev");
    prev.Select(SelectMode::Previous);
    NoteForeignFiles(PartExportFolder, IsFileOfAnExport);
    EmptyPartExportFolder("*.*");
    std::vector<ExportedSolid> solids;
    if (!ShowAndResume(ShowFailureWithDetail, [&] { solids = WriteSolids(drawing, prev); })) {
        // Copies that nothing has turned yet would be taken for finished drawings.
        return EmptyPartExportFolder("*.*");
    }
    for (std::size_t index = 0; index < solids.size(); ++index)
        if (!WorkOnPart(app, static_cast<int>(index), solids[index])) return;
    GoToDrawing(&drawing);
    ShowMessage(PartExportComplete);
}

namespace commands {

void BVDWG2(AcadApplication& app) {
    AcadDocument& drawing = *TheSession().AcadDoc;
    if (drawing.Name().empty()) throw BadFileName("the drawing has no name yet");
    const std::optional<OutputClaims> claims = ClaimOutput(std::array{PartExportFolder});
    if (!claims) return;
    drawing.SendCommand("_ucs\rw\r");
    ShowAndResume(ShowFailureWithDetail, [&] { drawing.Save(); });
    FreshSet(drawing, "prev").Select(SelectMode::All);
    MakePartExportFolder();
    const std::string path = std::string(PartExportFolder) + NameWithoutExtension(drawing.Name());
    drawing.SaveAs(path + ".dwg", SaveAsKind::Native);
    drawing.SendCommand("regen ");
    drawing.SaveAs(path + "2.dwg", SaveAsKind::Native);
    GoToDrawing(app.Documents().Open(path + ".dwg"));
    drawing.Close(false);
}

}  // namespace commands

}  // namespace brenvik
