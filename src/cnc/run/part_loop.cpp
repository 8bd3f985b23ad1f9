// Passes, second sides, and cleaning.
#include "cnc/run/part_loop.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/file_failure.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "cnc/drawing/drawing_walk.h"
#include "cnc/drawing/prepare_drawing.h"
#include "cnc/drawing/work_layers.h"
#include "cnc/part/part_drawing.h"
#include "cnc/part/run_report.h"
#include "cnc/part/second_side.h"
#include "cnc/run/run_set_up.h"
#include "session/message.h"
#include "session/ports/files_port.h"
#include "session/progress.h"
#include "session/session.h"
#include "settings/bit_in_hand.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

void ResetForPass(RunState& run) {
    run.part.ExportScaleSetting = ToInteger(NumberSetting(setting::ExportScaleSetting));
    run.part.bits.RouteSkip = false;
    run.part.bits.SavedToolDiameters = {};
    run.part.RouteCount = 0;
    run.part.DimL = run.part.DimW = run.part.DimT = "0";
    run.part.LastAddedLayer.clear();
    if (!run.FirstPass()) return;
    run.part.unexplained.clear();
    run.part.notePlaces.clear();
    run.part.wholePartNotes.clear();
    run.part.differences.clear();
    run.part.proof.reset();
    run.part.shiftingTexts.clear();
    run.part.liesAslant.clear();
}

/// The pieces of a solid have its colour, and on the way to the file colours tell outlines, cut-outs and
/// holes from all other paths: those of a yellow part would count as outlines.
void TakeColorsOff(AcadDocument& drawing) {
    constexpr int byLayer = 256;
    for (Acad3DSolid* solid : All<Acad3DSolid>(drawing)) solid->SetColor(byLayer);
}

/// Opens the drawing of the pass, scaled and looked at from above.
void OpenPart(RunState& run, const PartFile& file) {
    run.part.drawing = nullptr;
    run.app->Documents().Open(run.FirstPass() ? file.FirstSidePath() : file.SecondSidePath());
    TakePartDrawing(run, *run.app->ActiveDocument());
    BringWithinReach(*run.part.drawing);
    TakeColorsOff(*run.part.drawing);
    AddLayer(*run.part.drawing, layers::BrenvikExplode);
    FreshSet(*run.part.drawing, "exploded");
    ResetForPass(run);
    ScaleForExport(*run.part.drawing, run.part.ExportScaleSetting);
    TopView(*run.part.drawing);
    run.app->ZoomExtents();
}

bool WithoutSecondSides() { return ToInteger(NumberSetting(setting::DontDoTwoSided)) == 1; }

/// The part begins again from its second-side file.
void BeginSecondSide(RunState& run) {
    run.part.SecondSidePass = true;
    ClosePartDrawing(run);
    RemoveIfThere(std::string(WorkDrawing));
    RemoveIfThere(std::string(WorkDrawing2));
}

/// Ends every part, skipped or not, and closes its drawing. `bothSides`: its second side needs no more
/// work.
void CleanUp(RunState& run, const PartFile& file, bool bothSides) {
    ClosePartDrawing(run);
    if (Skip([&] { ThePlatform().files->RemoveFile(file.FirstSidePath()); })) {
        RemoveIfThere(file.SecondSidePath());
        CancelOtherSide(run);
    }
    RemoveIfThere(std::string(WorkDrawing2));
    RemoveIfThere(std::string(WorkDrawing));
    if (!bothSides) return;
    RemoveIfThere(std::string(SecondSideWorkDrawing));
    RemoveIfThere(std::string(SecondSideWorkDrawing2));
    run.part.SecondSidePass = false;
    run.part.ThroughRouteSeen = false;
}

/// File failures would hit the next part too, so they end the run. A truncated record concerns only parts of
/// that material; a library that isn't text concerns every part.
bool IsOfFiles(const Failure& failure) {
    const long number = failure.number();
    if (number == failure_number::InputPastEnd) return false;
    return number == failure_number::InvalidFileFormat || IsOfFileSystem(failure);
}

/// One line for the part; what both passes met is reported once.
void ReportUnexplained(RunState& run, const PartFile& file) {
    std::vector<std::string> texts;
    for (std::string& text : run.part.unexplained)
        if (std::ranges::find(texts, text) == texts.end()) texts.push_back(std::move(text));
    run.part.unexplained.clear();
    if (texts.empty()) return;
    run.report.unexplained.push_back("The part " + file.label +
                                     " has features without an operation: " + Join(texts, "; "));
}

/// Where the part that the files make differs from the drawn one.
void ReportDifferences(RunState& run, const PartFile& file) {
    if (run.part.differences.empty()) return;
    run.report.unexplained.push_back("The part " + file.label + " does not come out as it is drawn: " +
                                     Join(std::exchange(run.part.differences, {}), "; "));
}

/// A part that lies otherwise than the list has it comes out whole, but of another blank.
void ReportAslant(RunState& run, const PartFile& file) {
    if (run.part.liesAslant.empty()) return;
    run.report.unexplained.push_back("The part " + file.label + " " + std::exchange(run.part.liesAslant, {}));
}

/// The lists' receivers part the columns at every comma, wherever it comes from.
void ReportShiftedColumns(RunState& run, const PartFile& file) {
    if (run.part.shiftingTexts.empty()) return;
    run.report.unexplained.push_back("The part " + file.label +
                                     " moves the columns of the work list, by the comma in: " +
                                     Join(std::exchange(run.part.shiftingTexts, {}), "; "));
}

/// Reports the part that ended the run, and how many were left.
void ReportTheRest(const PartFile& file, std::size_t left, std::vector<std::string>& lines) {
    std::string line = "The run ended at the part " + file.label;
    if (left == 1) line += "; 1 more part has not been worked on";
    if (left > 1) line += "; " + std::to_string(left) + " more parts have not been worked on";
    lines.push_back(line + ".");
}

}  // namespace

PassOutcome PartLoop::WorkOnPass() {
    for (const auto& step : mSteps.pass)
        if (const PassOutcome came = step(mRun); came != PassOutcome::GoOn) return came;
    mSteps.writePartFile(mRun);
    mSteps.addListLine(mRun);
    return PassOutcome::GoOn;
}

PassOutcome PartLoop::WorkOrSkip() {
    PassOutcome came = PassOutcome::SkipPart;
    const std::optional<Failure> failure = Attempt([&] { came = WorkOnPass(); });
    if (!failure) {
        // The box that announced it doesn't name the part.
        if (came == PassOutcome::SkipPart && mRun.FirstPass())
            mRun.report.skipped.push_back("The part " + File().label + " was skipped.");
        return came;
    }
    if (IsOfFiles(*failure)) throw *failure;
    ShowFailureWithDetail(*failure);
    mRun.report.unexplained.push_back("The part " + File().label + " was skipped" +
                                      (mRun.FirstPass() ? "" : " on its second side") +
                                      ": it could not be worked on.");
    return PassOutcome::SkipPart;
}

PartLoop::PassEnd PartLoop::DoPass() {
    const PartFile& file = File();
    if (mRun.FirstPass() && !ThePlatform().files->FileExists(file.FirstSidePath())) {
        mRun.report.passedOver.push_back("The part " + file.label +
                                         " was passed over: " + file.FirstSidePath() + " has vanished.");
        return PassEnd::NextPart;
    }
    OpenPart(mRun, file);
    const PassOutcome came = WorkOrSkip();
    if (came == PassOutcome::EndRun) return PassEnd::EndRun;
    bool bothSides = !mRun.FirstPass();
    if (came == PassOutcome::GoOn) {
        if (WithoutSecondSides()) {
            mRun.part.LeavesSecondSide = NeedsOtherSide(mRun);
            bothSides = true;
        } else if (mRun.FirstPass() && NeedsOtherSide(mRun)) {
            BeginSecondSide(mRun);
            return PassEnd::SecondSide;
        }
    }
    CleanUp(mRun, file, bothSides);
    return PassEnd::NextPart;
}

PartLoop::PassEnd PartLoop::DoPasses() {
    const PartFile& file = File();
    PassEnd end = PassEnd::SecondSide;
    while (end == PassEnd::SecondSide) {
        detail::TellRunObserver(
            {mRun.part.index + 1, static_cast<int>(mParts.size()), !mRun.FirstPass(), file.label});
        end = DoPass();
    }
    if (mSteps.prove) mSteps.prove(mRun);
    ReportUnexplained(mRun, file);
    ReportDifferences(mRun, file);
    ReportAslant(mRun, file);
    ReportShiftedColumns(mRun, file);
    return end;
}

bool PartLoop::WorkOn(std::size_t part) {
    // What the parts before it have left: the bit in hand, and the flags of one whose file had vanished.
    PartState before = std::move(mRun.part);
    mRun.part = {};
    mRun.part.bits = std::move(before.bits);
    mRun.part.NeedSecondSide = before.NeedSecondSide;
    mRun.part.ThroughRouteSeen = before.ThroughRouteSeen;
    BeginPartWithBitInHand();
    mRun.firstSide = {};
    mRun.part.index = static_cast<int>(part);
    try {
        if (DoPasses() != PassEnd::EndRun) return true;
        ReportTheRest(mParts[part], mParts.size() - part - 1, mRun.report.passedOver);
        return false;
    } catch (const Failure&) {
        EndAt(part);
        throw;
    }
}

PartsEnd PartLoop::WorkOnAll(std::string_view what) {
    Progress progress({what, static_cast<int>(mParts.size()), true});
    for (std::size_t part = 0; part < mParts.size(); ++part) {
        if (!progress.Next(mParts[part].label)) {
            CancelAt(part);
            return PartsEnd::Cancelled;
        }
        if (!WorkOn(part)) return PartsEnd::EndedByPart;
    }
    return PartsEnd::Whole;
}

void PartLoop::EndAt(std::size_t part) {
    ReportTheRest(mParts[part], mParts.size() - part - 1, mRun.report.unexplained);
    RemoveFilesFrom(part);
}

void PartLoop::CancelAt(std::size_t part) {
    mRun.report.passedOver.push_back("The run was cancelled ahead of the part " + mParts[part].label + ", " +
                                     std::to_string(part + 1) + " of " + std::to_string(mParts.size()) + ".");
    RemoveFilesFrom(part);
}

void PartLoop::RemoveFilesFrom(std::size_t part) {
    CleanUp(mRun, mParts[part], true);
    for (const PartFile& later : mParts.subspan(part)) RemovePartFiles(later);
}

}  // namespace brenvik
