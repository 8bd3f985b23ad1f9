// The stack of windows and the guard around what the user does.
#include "form_windows/form_desk.h"

#include <QApplication>
#include <utility>

#include "base/failure.h"
#include "form_windows/form_window.h"
#include "recording/journal_recorder.h"
#include "session/message.h"

namespace brenvik::desktop {

namespace {

/// A value for as long as it lives, and then the one before.
class For {
  public:
    For(int& variable, int value) : mVariable(variable), mBefore(std::exchange(variable, value)) {}
    ~For() { mVariable = mBefore; }
    For(const For&) = delete;
    For& operator=(const For&) = delete;

  private:
    int& mVariable;
    int mBefore;
};

}  // namespace

FormDesk::FormDesk() = default;
FormDesk::~FormDesk() = default;

void FormDesk::Do(const std::function<void()>& wish) {
    const int noted = mNoted;
    // Nothing may be thrown through the toolkit's own code.
    try {
        const For going(mDepth, mDepth + 1);
        wish();
    } catch (const Failure& failure) {
        if (mKeepFailures)
            mKept = std::current_exception();
        else {
            if (mNoted != noted) NoteFailure();
            ShowFailure(failure);
        }
    } catch (...) {
        if (!mKeepFailures) throw;
        mKept = std::current_exception();
    }
    ShowModels();
    if (onDone) onDone();
}

void FormDesk::Note(const std::string& step, const std::string& replaces) {
    ++mNoted;
    if (recorder != nullptr) recorder->Step(step, replaces);
}

void FormDesk::NoteFailure() {
    if (recorder != nullptr) recorder->Answer("accept failure");
}

void FormDesk::ShowModels() {
    for (const std::unique_ptr<FormWindow>& window : mWindows)
        if (window->Shown().Loaded()) window->ShowModel();
}

void FormDesk::RethrowKept() {
    if (const std::exception_ptr kept = std::exchange(mKept, nullptr)) std::rethrow_exception(kept);
}

void FormDesk::Open(Form& form, const std::function<void(FormWindow&)>& work) {
    form.Load();
    if (!form.Loaded()) return;
    mWindows.push_back(std::make_unique<FormWindow>(form, *this, Top()));
    struct Closing {
        std::vector<std::unique_ptr<FormWindow>>& windows;
        ~Closing() { windows.pop_back(); }
    } const closing{mWindows};
    FormWindow& window = *mWindows.back();
    window.ShowModel();
    window.PlaceAsForm();
    window.setModal(true);
    window.show();
    const For waiting(mDepth, 0);
    while (form.Loaded()) work(window);
    window.hide();
}

FormWindow* FormDesk::WindowOf(const Form& form) const {
    for (const std::unique_ptr<FormWindow>& window : mWindows)
        if (&window->Shown() == &form) return window.get();
    return nullptr;
}

QWidget* FormDesk::Top() const {
    if (!mWindows.empty()) return mWindows.back().get();
    return owner;
}

}  // namespace brenvik::desktop
