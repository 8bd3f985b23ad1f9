// The port of whoever runs the system, and the steps that are counted for it.
#include "session/progress.h"

#include "session/module_state.h"

namespace brenvik {

namespace {

struct ProgressShown {
    ProgressPort* port = nullptr;
};

}  // namespace

void ShowProgressBy(ProgressPort* port) { StateOf<ProgressShown>().port = port; }

Progress::Progress(const ProgressTask& task)
    : mPort(StateOf<ProgressShown>().port), mCanCancel(task.canCancel) {
    if (mPort != nullptr) mPort->Begin(task);
}

Progress::~Progress() {
    if (mPort != nullptr) mPort->End();
}

bool Progress::Next(std::string_view name) {
    if (mPort == nullptr || mCancelled) return !mCancelled;
    mCancelled = !mPort->Step(++mStep, name) && mCanCancel;
    return !mCancelled;
}

}  // namespace brenvik
