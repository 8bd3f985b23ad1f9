// The set-up of a run, in the order in which the run template calls it.
#include "cnc/run/run_set_up.h"

#include <algorithm>
#include <optional>

#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/prepare_drawing.h"
#include "cnc/output/output_care.h"
#include "cnc/output/output_claim.h"
#include "cnc/run/run_share.h"
#include "parts/cnc_list.h"
#include "parts/letters_in_use.h"
#include "parts/mautocad.h"
#include "parts/part_trouble.h"
#include "session/message.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/text_files.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr std::string_view QuantityKey = "Quantity";

/// Some hosts answer an erased handle with nothing, some with a failure.
AcadEntity* FindEntity(AcadDocument& drawing, const std::string& handle) {
    AcadObject* object = nullptr;
    Skip([&] { object = drawing.HandleToObject(handle); });
    return dynamic_cast<AcadEntity*>(object);
}

/// Whether the list has guessed the part's letters; then it is skipped, and reported.
bool SkippedForItsLetters(const AcadEntity& entity, RunReport& report) {
    std::string handle, letters, name;
    Skip([&] {
        handle = entity.Handle();
        letters = mAutoCAD::PartDataOf(entity, "ORIE");
        name = mAutoCAD::PartDataOf(entity, "PartName");
    });
    if (!AreGuessedLetters(handle, letters)) return false;
    const std::string part = "The part " + PartLabel(handle, name);
    ShowMessage(part + " is skipped: its letters " + letters +
                " were made out of data that can't be right. Give it letters in the list.");
    report.skipped.push_back(part + " was skipped.");
    return true;
}

std::string PlaceInList(std::size_t line) {
    return std::string(CncListFile) + ", line " + std::to_string(line) + ": ";
}

void TakeListedParts(RunState& run, std::span<const std::string> lines, AcadSelectionSet& prev,
                     LentQuantities& quantities) {
    std::vector<AcadEntity*> entities;
    for (std::size_t line = 1; line <= lines.size(); ++line) {
        const std::string& text = lines[line - 1];
        if (IsBlank(text)) continue;
        const std::optional<ListedPart> part = ParseCncListLine(text);
        if (!part) {
            run.report.passedOver.push_back(
                PlaceInList(line) + "expected a handle, a comma and a quantity, found \"" + text + "\"");
            continue;
        }
        AcadEntity* entity = FindEntity(*run.sessionDrawing, part->handle);
        if (entity == nullptr) {
            run.report.passedOver.push_back(PlaceInList(line) + "the drawing has no part " + part->handle);
            continue;
        }
        if (SkippedForItsLetters(*entity, run.report)) continue;
        if (!quantities.Lend(*run.sessionDrawing, *entity, part->quantity))
            run.report.passedOver.push_back(PlaceInList(line) + "the part " + part->handle +
                                            " does not take the quantity " + std::to_string(part->quantity));
        entities.push_back(entity);
    }
    if (!Skip([&] { prev.AddItems(entities); }))
        run.report.passedOver.push_back(std::string(CncListFile) +
                                        ": its parts can't be selected in the drawing");
}

bool IsDrawing(const std::string& name) {
    const std::string folded = FoldLower(name);
    return folded.ends_with(".dxf") || folded.ends_with(".dwg");
}

void RemoveFiles(std::string_view folder, bool drawings) {
    for (const std::string& name : ThePlatform().files->ListFiles(folder, "*.*"))
        if (IsDrawing(name) == drawings) RemoveIfThere(std::string(folder) + name);
}

}  // namespace

void RemoveIfThere(const std::string& path) {
    Skip([&] { ThePlatform().files->RemoveFile(path); });
}

void PrepareSession(RunState& run) {
    // Those who do the other shares are reading it.
    const bool isSavedNow = ShareOfRuns() == nullptr && !CareOfOutput().savesAtTheEnd;
    PrepareDrawing(*run.sessionDrawing, isSavedNow ? DrawingSave::AsSet : DrawingSave::Never);
    run.SpoilAmount = NumberSetting(setting::BiesseWorksSpoil);
    if (SwitchIsOn(setting::MyWindowState))
        Skip([&] { run.app->SetWindowState(WindowStateKind::Minimized); });
}

LentQuantities::~LentQuantities() {
    while (!mLent.empty()) GiveBack(*mLent.back().entity);
}

bool LentQuantities::Lend(AcadDocument& drawing, AcadEntity& entity, int quantity) {
    Skip([&] { UnlockLayer(drawing, entity.Layer()); });
    auto lent = std::ranges::find(mLent, &entity, &Lent::entity);
    if (lent == mLent.end()) lent = mLent.insert(lent, {&entity, 0, false});
    if (!Skip([&] { mAutoCAD::SetPartData(&entity, QuantityKey, std::to_string(quantity)); })) return false;
    lent->quantity = quantity;
    lent->taken = true;
    return true;
}

void LentQuantities::GiveBack(AcadEntity& entity) {
    const auto found = std::ranges::find(mLent, &entity, &Lent::entity);
    if (found == mLent.end()) return;
    const Lent lent = *found;
    mLent.erase(found);
    if (Skip([&] { mAutoCAD::SetPartData(&entity, QuantityKey, "1"); }) || !lent.taken) return;
    Skip([&] {
        mReport.passedOver.push_back(
            "The part " + entity.Handle() + " keeps the quantity " + std::to_string(lent.quantity) +
            " that the run has lent it; expected 1, as after every run from the list.");
    });
}

AcadSelectionSet* TakeParts(RunState& run, LentQuantities& quantities) {
    AcadSelectionSet& prev = FreshSet(*run.sessionDrawing, "prev");
    switch (run.form) {
        case RunForm::A:
            Skip([&] { prev.Select(SelectMode::Previous); });
            return &prev;
        case RunForm::B:
            break;
    }
    std::vector<std::string> lines;
    if (!Skip([&] { lines = ReadLines(HandOverFolder() + std::string(CncListFile)); })) {
        ShowMessage(ListUnreadable);
        return nullptr;
    }
    TakeListedParts(run, lines, prev, quantities);
    return &prev;
}

void RemoveFilesOfRun() {
    for (const bool drawings : {false, true})
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            for (const std::string& name : ThePlatform().files->ListFiles(folder, "*.*"))
                if (IsFileOfARun(name) && IsDrawing(name) == drawings)
                    RemoveIfThere(std::string(folder) + name);
}

std::vector<std::string> EmptyOutputFolders() {
    FilesPort& files = *ThePlatform().files;
    for (const std::string_view folder : {OutputFolder, SecondSideFolder})
        NoteForeignFiles(folder, IsFileOfARun);
    for (const bool drawings : {false, true})
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            Skip([&] { RemoveFiles(folder, drawings); });
    std::vector<std::string> stayed;
    for (const std::string_view folder : {OutputFolder, SecondSideFolder})
        for (const std::string& name : files.ListFiles(folder, "*.*"))
            stayed.push_back(files.PlaceOf(std::string(folder) + name) +
                             ": this file of before the run could not be removed.");
    return stayed;
}

}  // namespace brenvik
