// The order of a run.
#include "cnc/run/run_template.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

#include "base/skip.h"
#include "cnc/drawing/prepare_drawing.h"
#include "cnc/output/output_care.h"
#include "cnc/output/output_claim.h"
#include "cnc/part/run_report.h"
#include "cnc/run/part_files.h"
#include "cnc/run/run_set_up.h"
#include "cnc/run/run_share.h"
#include "cnc/run/spread_parts.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/ports/host_interface.h"
#include "session/session.h"
#include "session/session_drawing.h"
#include "settings/bit_choice.h"
#include "settings/settings_store.h"
#include "settings/standing_answer.h"

namespace brenvik {

namespace {

/// The drawing as the run found it, the window, and the standing answers of this run: whatever ended it.
void LeaveHost(RunState& run, bool windowWasMinimized) {
    GoToDrawing(run.sessionDrawing);
    if (windowWasMinimized) Skip([&] { run.app->SetWindowState(WindowStateKind::Maximized); });
    Skip(ForgetStandingAnswer);
}

/// Runs the caller's final steps (saving, callback) after a run that was not cut short.
void EndCare(AcadDocument& drawing) {
    const OutputCare& care = CareOfOutput();
    if (care.savesAtTheEnd) SaveAsSet(drawing);
    if (care.over) care.over();
}

/// Writes the list that the grid has just handed over to its solids. A run that doesn't come from the grid
/// applies an open one alone: a list of an earlier export may be older than the drawing.
void ApplyGridBeforeRun(const RunState& run, const RunHooks& hooks) {
    if (hooks.applyOpenGrid()) return;
    // Only a grid that has just closed on this very target has a list that belongs to the drawing. The
    // number of the target outlasts the run.
    if (run.form == RunForm::B && TheSession().ExportTarget == static_cast<int>(run.target))
        hooks.applyLastList();
}

/// Whether to show the closing message: not if there were no parts, for a share of them, or if the list kept
/// its unfinished name.
bool WorkThrough(RunState& run, const PassWork& steps, const RunHooks& hooks) {
    steps.clearWorkLists(run.target);
    ShowMessage(RunWarning);
    ApplyGridBeforeRun(run, hooks);
    PrepareSession(run);
    std::vector<PartFile> parts;
    {
        LentQuantities quantities(run.report);
        AcadSelectionSet* prev = TakeParts(run, quantities);
        if (prev == nullptr) return false;
        std::ranges::move(EmptyOutputFolders(), std::back_inserter(run.report.passedOver));
        if (const auto& emptied = CareOfOutput().emptied) emptied();
        std::optional<std::vector<PartFile>> written =
            WritePartFiles(run, *prev, quantities, WorkersOfRuns());
        if (!written) return false;
        parts = std::move(*written);
    }
    run.report.parts = static_cast<int>(parts.size());
    if (const RunShare* share = ShareOfRuns()) {
        WorkOnShare(run, steps, parts, *share);
        run.report.complete = true;
        return false;
    }
    PartsEnd end = PartsEnd::EndedByPart;
    const std::optional<Failure> failure = Attempt([&] { end = WorkOnPartsSpread(run, steps, parts); });
    if (end == PartsEnd::Cancelled) {
        // Some parts of a job are no job: without a list nobody would know which they are.
        RemoveFilesOfRun();
        return false;
    }
    run.report.complete = end == PartsEnd::Whole;
    // Files written before a failure are kept; a message has named the parts that are missing.
    const bool listed = ShowAndResume(ShowFailureWithDetail, [&] { steps.finishWorkLists(run.target); });
    if (failure) throw *failure;
    run.report.complete = run.report.complete && listed;
    return listed;
}

}  // namespace

void RunParts(AcadApplication& app, Target target, RunForm form, const PassWork& steps,
              const RunHooks& hooks) {
    Skip([] { ThePlatform().dialogs->DoEvents(); });
    RunState run;
    run.target = target;
    run.form = form;
    run.app = &app;
    run.sessionDrawing = app.ActiveDocument();
    const std::optional<OutputClaims> claims =
        ClaimOutputToEmpty(std::array{OutputFolder, SecondSideFolder}, *run.sessionDrawing, RunEmpties);
    if (!claims) return;
    const StandingAnswersOfRun answers;
    const bool windowIsMinimized = SwitchIsOn(setting::MyWindowState);
    bool toldComplete = false;
    ShowAndResume(ShowFailureWithDetail, [&] { toldComplete = WorkThrough(run, steps, hooks); });
    Skip([&] { run.sessionDrawing->SendCommand("plinetype\r2\r"); });
    if (toldComplete) EndCare(*run.sessionDrawing);
    for (const std::string& text : run.report.unexplained) ShowMessage(text, "Brenvik");
    if (toldComplete) ShowMessage(RunComplete);
    LeaveHost(run, windowIsMinimized);
    detail::TellRunEndObserver(run.report);
}

}  // namespace brenvik
