#include "cnc/part/run_listener.h"

#include "session/module_state.h"

namespace brenvik {

namespace {

struct Listening {
    std::vector<RunListener*> listeners;
};

}  // namespace

void AddRunListener(RunListener& listener) { StateOf<Listening>().listeners.push_back(&listener); }

void RemoveRunListener(RunListener& listener) { std::erase(StateOf<Listening>().listeners, &listener); }

std::span<RunListener* const> RunListeners() { return StateOf<Listening>().listeners; }

}  // namespace brenvik
