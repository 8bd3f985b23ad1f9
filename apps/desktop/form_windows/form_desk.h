// The windows of the open forms, and the one road by which what a user does reaches the forms: a failure is
// reported, and all windows show what has changed.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <vector>

#include "forms/form.h"

class QWidget;

namespace brenvik::desktop {

class FormWindow;
class JournalRecorder;

class FormDesk {
  public:
    FormDesk();
    ~FormDesk();
    FormDesk(const FormDesk&) = delete;
    FormDesk& operator=(const FormDesk&) = delete;

    /// Carries out a user's action, then brings the windows up to date. A Failure is shown in a box, unless a
    /// journal plays: then it waits for RethrowKept.
    void Do(const std::function<void()>& wish);
    /// Records a step before it runs, replacing the last one if that begins with `replaces`.
    void Note(const std::string& step, const std::string& replaces = {});
    /// The noted step failed; recording continues.
    void NoteFailure();
    /// Null for nobody who records. Outlives the desk's use.
    JournalRecorder* recorder = nullptr;
    /// Whether no user action is unfinished. A form that waits for input counts as finished.
    bool AtRest() const { return mDepth == 0; }
    /// Brings every open window up to date.
    void ShowModels();
    /// For as long as `on`, failures are kept for whoever has set the widgets going.
    void KeepFailures(bool on) { mKeepFailures = on; }
    /// What Do has kept since the last call, thrown on.
    void RethrowKept();

    /// Loads the form if need be, shows its window and runs `work` until the form is unloaded; `work` is
    /// called again as long as it isn't.
    void Open(Form& form, const std::function<void(FormWindow&)>& work);
    /// Of an open form; null for another.
    FormWindow* WindowOf(const Form& form) const;
    /// The window that takes the user's input, or the one that all belong to.
    QWidget* Top() const;
    QWidget* owner = nullptr;
    /// The row that the user stands in changed: its solid's handle.
    std::function<void(const std::string& handle)> onRowEntered;
    /// Called after each action.
    std::function<void()> onDone;

  private:
    std::vector<std::unique_ptr<FormWindow>> mWindows;
    int mDepth = 0;
    int mNoted = 0;
    std::exception_ptr mKept;
    bool mKeepFailures = false;
};

}  // namespace brenvik::desktop
