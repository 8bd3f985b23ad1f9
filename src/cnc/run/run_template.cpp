// The order of a run.
#include "cnc/run/run_template.h"

#include <array>
#include <optional>
#include <utility>

#include "base/skip.h"
#include "cnc/output/output_claim.h"
#include "cnc/run/part_files.h"
#include "cnc/run/part_loop.h"
#include "cnc/run/run_set_up.h"
#include "session/message.h"
#include "session/module_state.h"
#include "session/ports/dialog_port.h"
#include "session/ports/host_interface.h"
#include "session/session.h"
#include "settings/bit_choice.h"
#include "settings/settings_store.h"
#include "settings/standing_answer.h"

namespace brenvik {

namespace {

struct RunModule {
    RunReport report;
    std::function<void(const RunProgress&)> observer;
    std::function<void(const RunReport&)> endObserver;
};

/// The drawing as the run found it, the window, and the standing answers of this run: whatever ended it.
void LeaveHost(RunState& run, bool windowWasMinimized) {
    TheSession().AcadDoc = run.sessionDrawing;
    if (windowWasMinimized) Skip([&] { run.app->SetWindowState(WindowStateKind::Maximized); });
    Skip(ForgetStandingAnswer);
}

/// Returns whether the run has an end to be told: one without parts, or whose list has not got its name, has
/// not.
bool WorkThrough(RunState& run, const PartSteps& steps, RunReport& report) {
    steps.clearWorkLists(run.target);
    ShowMessage(RunWarning);
    ApplyGridBeforeRun(run);
    PrepareSession(run);
    std::vector<PartFile> parts;
    {
        LentQuantities quantities;
        AcadSelectionSet* prev = TakeParts(run, quantities, report);
        if (prev == nullptr) return false;
        EmptyOutputFolders();
        parts = WritePartFiles(run, *prev, quantities, report);
    }
    report.parts = static_cast<int>(parts.size());
    const std::optional<Failure> failure =
        Attempt([&] { report.complete = WorkOnParts(run, steps, parts, report); });
    // What was written before a failure stays, and the user has been told what is missing.
    const bool listed = ShowAndResume(ShowFailureWithDetail, [&] { steps.finishWorkLists(run.target); });
    if (failure) throw *failure;
    report.complete = report.complete && listed;
    return listed;
}

}  // namespace

namespace detail {

RunReport& ReportOfRun() { return StateOf<RunModule>().report; }

void TellRunObserver(const RunProgress& progress) {
    if (const auto& observer = StateOf<RunModule>().observer) observer(progress);
}

}  // namespace detail

const RunReport& LastRunReport() { return detail::ReportOfRun(); }

void ObserveRuns(std::function<void(const RunProgress&)> observer) {
    StateOf<RunModule>().observer = std::move(observer);
}

void ObserveRunEnds(std::function<void(const RunReport&)> observer) {
    StateOf<RunModule>().endObserver = std::move(observer);
}

void RunParts(AcadApplication& app, Target target, RunForm form, const PartSteps& steps) {
    Skip([] { ThePlatform().dialogs->DoEvents(); });
    RunReport& report = detail::ReportOfRun();
    report = {};
    RunState run;
    run.target = target;
    run.form = form;
    run.app = &app;
    run.sessionDrawing = app.ActiveDocument();
    const std::optional<OutputClaims> claims =
        ClaimOutputToEmpty(std::array{OutputFolder, SecondSideFolder}, *run.sessionDrawing, RunEmpties);
    if (!claims) return;
    const StandingAnswersOfRun answers;
    const bool windowIsMinimized = SwitchIsOn("MyWindowState");
    bool toldComplete = false;
    ShowAndResume(ShowFailureWithDetail, [&] { toldComplete = WorkThrough(run, steps, report); });
    Skip([&] { run.sessionDrawing->SendCommand("plinetype\r2\r"); });
    for (const std::string& text : report.unexplained) ShowMessage(text, "Brenvik");
    if (toldComplete) ShowMessage(RunComplete);
    LeaveHost(run, windowIsMinimized);
    if (const auto& observer = StateOf<RunModule>().endObserver) observer(report);
}

}  // namespace brenvik
