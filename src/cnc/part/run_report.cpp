// Who listens to a run.
#include "cnc/part/run_report.h"

#include <utility>
#include <vector>

#include "cnc/part/run_listener.h"
#include "session/module_state.h"

namespace brenvik {

namespace {

struct RunModule {
    std::function<void(const RunProgress&)> observer;
    std::function<void(const RunReport&)> endObserver;
    std::vector<RunListener*> listeners;
};

}  // namespace

namespace detail {

void TellRunObserver(const RunProgress& progress) {
    if (const auto& observer = StateOf<RunModule>().observer) observer(progress);
    for (RunListener* listener : StateOf<RunModule>().listeners) listener->OnPass(progress);
}

void TellRunEndObserver(const RunReport& report) {
    if (const auto& observer = StateOf<RunModule>().endObserver) observer(report);
    for (RunListener* listener : StateOf<RunModule>().listeners) listener->OnEnd(report);
}

}  // namespace detail

void ObserveRuns(std::function<void(const RunProgress&)> observer) {
    StateOf<RunModule>().observer = std::move(observer);
}

void ObserveRunEnds(std::function<void(const RunReport&)> observer) {
    StateOf<RunModule>().endObserver = std::move(observer);
}

void AddRunListener(RunListener& listener) { StateOf<RunModule>().listeners.push_back(&listener); }

void RemoveRunListener(RunListener& listener) { std::erase(StateOf<RunModule>().listeners, &listener); }

}  // namespace brenvik
