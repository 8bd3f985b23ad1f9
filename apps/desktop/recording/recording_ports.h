// Dialogs, prompts and long work, whose answers go into the journal that is recorded.
#pragma once

#include <string>
#include <vector>

#include "drafting_host/document/host_utility.h"
#include "session/ports/dialog_port.h"
#include "session/ports/progress_port.h"

namespace brenvik::desktop {

class JournalRecorder;

/// Each hands on to the one that it stands before; without a recorder nothing else happens.
class RecordingDialogs : public DialogPort {
  public:
    explicit RecordingDialogs(DialogPort& asked) : mAsked(asked) {}
    JournalRecorder* recorder = nullptr;

    ScreenSize Screen() const override { return mAsked.Screen(); }
    void ShowModal(Form& form) override { mAsked.ShowModal(form); }
    MessageAnswer Show(const MessageRequest& request) override;
    std::optional<std::string> ChooseFile(const FileRequest& request) override;
    void DoEvents() override { mAsked.DoEvents(); }

  private:
    DialogPort& mAsked;
};

class RecordingPrompts : public PromptPort {
  public:
    explicit RecordingPrompts(PromptPort& asked) : mAsked(asked) {}
    JournalRecorder* recorder = nullptr;

    std::optional<Point3> GetPoint(std::string_view prompt) override;
    std::optional<double> GetReal(std::string_view prompt) override;
    std::optional<std::string> GetString(bool blanksAllowed, std::string_view prompt) override;
    std::optional<std::string> GetKeyword(std::string_view prompt) override;
    std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument& document) override {
        return mAsked.SelectOnScreen(document);
    }
    void Prompt(std::string_view text) override { mAsked.Prompt(text); }

  private:
    PromptPort& mAsked;
};

class RecordingProgress : public ProgressPort {
  public:
    explicit RecordingProgress(ProgressPort& shown) : mShown(shown) {}
    JournalRecorder* recorder = nullptr;

    void Begin(const ProgressTask& task) override;
    bool Step(int step, std::string_view name) override;
    void End() override;

  private:
    struct Task {
        std::string what;
        bool cancelled = false;
    };
    ProgressPort& mShown;
    std::vector<Task> mTasks;
};

}  // namespace brenvik::desktop
