// The report of a run in lines, and what to do about a material that the library hasn't.
#include "run_teller.h"

#include "material_advice.h"

namespace brenvik::app {

RunTeller::RunTeller(Teller& commandTeller, RunWatch runWatch)
    : teller(commandTeller), watch(std::move(runWatch)) {
    ObserveRuns([this](const RunProgress& progress) { TellProgress(progress); });
    ObserveRunEnds([this](const RunReport& report) { TellReport(report); });
}

RunTeller::~RunTeller() {
    ObserveRuns(nullptr);
    ObserveRunEnds(nullptr);
}

void RunTeller::TellProgress(const RunProgress& progress) {
    teller.Progress("part " + std::to_string(progress.part) + " of " + std::to_string(progress.parts) + ", " +
                    progress.name + (progress.secondSide ? ", second side" : ""));
}

void RunTeller::Line(const std::string& text, bool lost) {
    teller.Wipe();
    if (watch.line) {
        watch.line(text);
        if (lost) teller.MarkIncomplete();
    } else if (lost) {
        teller.Loss(text);
    } else {
        teller.Remark(text);
    }
}

void RunTeller::TellReport(const RunReport& report) {
    ++runs;
    const bool trouble = watch.takeTrouble();
    // Without a box that could be looked at, the name of a skipped part is all that tells of it.
    const bool boxTells = trouble && watch.boxesAreLookedAt;
    for (const std::string& text : report.skipped) Line(text, !boxTells);
    for (const std::string& text : report.passedOver) Line(text, true);
    for (const std::string& text : report.doubtfulMaterials) Line(text, true);
    if (!report.complete && !trouble && report.passedOver.empty())
        Line("the run did not go to its end", true);
    if (trouble && !watch.boxesAreLookedAt) teller.MarkIncomplete();
    for (const std::string& text : MaterialAdvice(report.unknownMaterials, watch.programWords))
        teller.Remark(text);
}

}  // namespace brenvik::app
