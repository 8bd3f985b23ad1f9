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

enum class PassEnd { NextPart, SecondSide, EndRun };

void ResetForPass(RunState& run) {
    run.part.ExportScaleSetting = ToInteger(NumberSetting(setting::ExportScaleSetting));
    run.part.bits.RouteSkip = 0;
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
}

/// Opens the drawing of the pass, scaled and looked at from above.
void OpenPart(RunState& run, const PartFile& file) {
    run.part.drawing = nullptr;
    run.app->Documents().Open(run.FirstPass() ? file.FirstSidePath() : file.SecondSidePath());
    TakePartDrawing(run, *run.app->ActiveDocument());
    BringWithinReach(*run.part.drawing);
    AddLayer(*run.part.drawing, layers::BrenvikExplode);
    FreshSet(*run.part.drawing, "exploded");
    ResetForPass(run);
    ScaleForExport(*run.part.drawing, run.part.ExportScaleSetting);
    TopView(*run.part.drawing);
    run.app->ZoomExtents();
}

PassOutcome WorkOnPass(RunState& run, const PassWork& steps) {
    for (const auto& step : steps.pass)
        if (const PassOutcome came = step(run); came != PassOutcome::GoOn) return came;
    steps.writePartFile(run);
    steps.addListLine(run);
    return PassOutcome::GoOn;
}

bool WithoutSecondSides() { return ToInteger(NumberSetting(setting::DontDoTwoSided)) == 1; }

/// The part begins again from its second-side file.
void BeginSecondSide(RunState& run) {
    run.part.SecondSidePass = 1;
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
    run.part.SecondSidePass = 0;
    run.part.ThroughRouteSeen = 0;
}

/// File failures would hit the next part too, so they end the run. A truncated record concerns only parts of
/// that material; a library that isn't text concerns every part.
bool IsOfFiles(const Failure& failure) {
    const long number = failure.number();
    if (number == failure_number::InputPastEnd) return false;
    return number == failure_number::InvalidFileFormat || IsOfFileSystem(failure);
}

/// The work on the open drawing. A part that the host or the modeller refuses is skipped and reported, so
/// that the other parts of a job come out; a folder that can't be written ends the run.
PassOutcome WorkOrSkip(RunState& run, const PassWork& steps, const PartFile& file) {
    PassOutcome came = PassOutcome::SkipPart;
    const std::optional<Failure> failure = Attempt([&] { came = WorkOnPass(run, steps); });
    if (!failure) {
        // The box that announced it doesn't name the part.
        if (came == PassOutcome::SkipPart && run.FirstPass())
            run.report.skipped.push_back("The part " + file.label + " was skipped.");
        return came;
    }
    if (IsOfFiles(*failure)) throw *failure;
    ShowFailureWithDetail(*failure);
    run.report.unexplained.push_back("The part " + file.label + " was skipped" +
                                     (run.FirstPass() ? "" : " on its second side") +
                                     ": it could not be worked on.");
    return PassOutcome::SkipPart;
}

PassEnd DoPass(RunState& run, const PassWork& steps, const PartFile& file) {
    if (run.FirstPass() && !ThePlatform().files->FileExists(file.FirstSidePath())) {
        run.report.passedOver.push_back("The part " + file.label +
                                        " was passed over: " + file.FirstSidePath() + " has vanished.");
        return PassEnd::NextPart;
    }
    OpenPart(run, file);
    const PassOutcome came = WorkOrSkip(run, steps, file);
    if (came == PassOutcome::EndRun) return PassEnd::EndRun;
    bool bothSides = !run.FirstPass();
    if (came == PassOutcome::GoOn) {
        if (WithoutSecondSides()) {
            run.part.LeavesSecondSide = NeedsOtherSide(run);
            bothSides = true;
        } else if (run.FirstPass() && NeedsOtherSide(run)) {
            BeginSecondSide(run);
            return PassEnd::SecondSide;
        }
    }
    CleanUp(run, file, bothSides);
    return PassEnd::NextPart;
}

/// One line for the part; what both passes met is told once.
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

/// The lists' receivers part the columns at every comma, wherever it comes from.
void ReportShiftedColumns(RunState& run, const PartFile& file) {
    if (run.part.shiftingTexts.empty()) return;
    run.report.unexplained.push_back("The part " + file.label +
                                     " moves the columns of the work list, by the comma in: " +
                                     Join(std::exchange(run.part.shiftingTexts, {}), "; "));
}

PassEnd WorkOnPart(RunState& run, const PassWork& steps, std::span<const PartFile> parts) {
    const PartFile& file = parts[static_cast<std::size_t>(run.part.index)];
    PassEnd end = PassEnd::SecondSide;
    while (end == PassEnd::SecondSide) {
        detail::TellRunObserver(
            {run.part.index + 1, static_cast<int>(parts.size()), !run.FirstPass(), file.label});
        end = DoPass(run, steps, file);
    }
    if (steps.prove) steps.prove(run);
    ReportUnexplained(run, file);
    ReportDifferences(run, file);
    ReportShiftedColumns(run, file);
    return end;
}

/// Reports the part that ended the run, and how many were left.
void ReportTheRest(const PartFile& file, std::size_t left, std::vector<std::string>& lines) {
    std::string line = "The run ended at the part " + file.label;
    if (left == 1) line += "; 1 more part has not been worked on";
    if (left > 1) line += "; " + std::to_string(left) + " more parts have not been worked on";
    lines.push_back(line + ".");
}

/// The part files of a run that a failure or the user ends.
void RemoveFilesFrom(RunState& run, std::span<const PartFile> parts, std::size_t part) {
    CleanUp(run, parts[part], true);
    for (const PartFile& later : parts.subspan(part)) RemovePartFiles(later);
}

}  // namespace

bool WorkOnPartAt(RunState& run, const PassWork& steps, std::span<const PartFile> parts, std::size_t part) {
    // What the parts before it have left: the bit in hand, and the flags of one whose file had vanished.
    PartState before = std::move(run.part);
    run.part = {};
    run.part.bits = std::move(before.bits);
    run.part.NeedSecondSide = before.NeedSecondSide;
    run.part.ThroughRouteSeen = before.ThroughRouteSeen;
    BeginPartWithBitInHand();
    run.firstSide = {};
    run.part.index = static_cast<int>(part);
    try {
        if (WorkOnPart(run, steps, parts) != PassEnd::EndRun) return true;
        ReportTheRest(parts[part], parts.size() - part - 1, run.report.passedOver);
        return false;
    } catch (const Failure&) {
        EndRunAt(run, parts, part);
        throw;
    }
}

void EndRunAt(RunState& run, std::span<const PartFile> parts, std::size_t part) {
    ReportTheRest(parts[part], parts.size() - part - 1, run.report.unexplained);
    RemoveFilesFrom(run, parts, part);
}

void CancelRunAt(RunState& run, std::span<const PartFile> parts, std::size_t part) {
    run.report.passedOver.push_back("The run was cancelled ahead of the part " + parts[part].label + ", " +
                                    std::to_string(part + 1) + " of " + std::to_string(parts.size()) + ".");
    RemoveFilesFrom(run, parts, part);
}

PartsEnd WorkOnParts(RunState& run, const PassWork& steps, std::span<const PartFile> parts,
                     std::string_view what) {
    Progress progress({what, static_cast<int>(parts.size()), true});
    for (std::size_t part = 0; part < parts.size(); ++part) {
        if (!progress.Next(parts[part].label)) {
            CancelRunAt(run, parts, part);
            return PartsEnd::Cancelled;
        }
        if (!WorkOnPartAt(run, steps, parts, part)) return PartsEnd::EndedByPart;
    }
    return PartsEnd::Whole;
}

}  // namespace brenvik
