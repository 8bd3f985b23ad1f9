// Who listens to a run.
#include "cnc/part/run_report.h"

#include <utility>

#include "cnc/part/run_listener.h"
#include "session/module_state.h"

namespace brenvik {

namespace {

struct RunModule {
    std::function<void(const RunProgress&)> observer;
    std::function<void(const RunReport&)> endObserver;
};

}  // namespace

namespace detail {

void TellRunObserver(const RunProgress& progress) {
    if (const auto& observer = StateOf<RunModule>().observer) observer(progress);
    for (RunListener* listener : RunListeners()) listener->OnPass(progress);
}

void TellRunEndObserver(const RunReport& report) {
    if (const auto& observer = StateOf<RunModule>().endObserver) observer(report);
    for (RunListener* listener : RunListeners()) listener->OnEnd(report);
}

}  // namespace detail

void ObserveRuns(std::function<void(const RunProgress&)> observer) {
    StateOf<RunModule>().observer = std::move(observer);
}

void ObserveRunEnds(std::function<void(const RunReport&)> observer) {
    StateOf<RunModule>().endObserver = std::move(observer);
}

}  // namespace brenvik
