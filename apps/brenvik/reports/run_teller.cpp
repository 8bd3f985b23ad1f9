// The report of a run in lines, and what to do about a material that the library hasn't.
#include "reports/run_teller.h"

#include "reports/material_advice.h"

namespace brenvik::app {

RunTeller::RunTeller(Teller& commandTeller, RunWatch runWatch)
    : mTeller(commandTeller), mWatch(std::move(runWatch)), mProgress(commandTeller) {
    ObserveRunEnds([this](const RunReport& report) { TellReport(report); });
}

RunTeller::~RunTeller() { ObserveRunEnds(nullptr); }

void RunTeller::Line(const std::string& text, bool lost) {
    mTeller.Wipe();
    if (mWatch.line) {
        mWatch.line(text);
        if (lost) mTeller.MarkIncomplete();
    } else if (lost) {
        mTeller.Loss(text);
    } else {
        mTeller.Remark(text);
    }
}

void RunTeller::TellReport(const RunReport& report) {
    ++mRuns;
    const bool trouble = mWatch.takeTrouble();
    // Without a box that could be looked at, the name of a skipped part is its only report.
    const bool boxTells = trouble && mWatch.boxesAreLookedAt;
    for (const std::string& text : report.skipped) Line(text, !boxTells);
    for (const std::string& text : report.passedOver) Line(text, true);
    for (const std::string& text : report.doubtfulMaterials) Line(text, true);
    if (!report.complete && !trouble && report.passedOver.empty())
        Line("the run did not go to its end", true);
    if (trouble && !mWatch.boxesAreLookedAt) mTeller.MarkIncomplete();
    for (const std::string& text : MaterialAdvice(report.unknownMaterials, mWatch.programWords))
        mTeller.Remark(text);
}

}  // namespace brenvik::app
