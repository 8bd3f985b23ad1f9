// A window that shows the progress of long work, with a button that ends the work if that leaves nothing half
// done. Short work shows no window.
#pragma once

#include <QElapsedTimer>
#include <memory>
#include <string>
#include <vector>

#include "session/ports/progress_port.h"

namespace brenvik::desktop {

class FormDesk;

class ProgressWindow : public ProgressPort {
  public:
    /// The work lies under this desk's windows, which take nothing while it goes on. `patience` in
    /// milliseconds: how long work may take before it is shown.
    explicit ProgressWindow(FormDesk& desk, int patience = 500);
    ~ProgressWindow() override;

    void Begin(const ProgressTask& task) override;
    bool Step(int step, std::string_view name) override;
    void End() override;

  private:
    class Box;
    struct Task {
        std::string what;
        int steps = 0;
        bool canCancel = false;
        bool cancelled = false;
    };
    void ShowStep(const Task& task, int step, std::string_view name);

    FormDesk& mDesk;
    int mPatience;
    std::vector<Task> mTasks;
    std::unique_ptr<Box> mBox;
    /// Since the first task has begun; since the window was last brought up to date.
    QElapsedTimer mBegun, mShown;
};

}  // namespace brenvik::desktop
