// The dialogs of a journal: message boxes are kept for the journal's checks and written to the transcript,
// questions take the answers queued for them, and a modal form plays the journal's next steps. The drafting
// host's prompts are answered from the same queues.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "session/ports/dialog_port.h"
#include "session/ports/progress_port.h"

namespace brenvik {

/// What a queued answer is meant for. A point, a number and a keyword answer the host's prompts.
enum class AnswerKind { MessageBox, Point, Real, Keyword, File, Work, Failure };

/// One queued answer. `text` is as the journal has it; a cancelled prompt or file dialog has none.
struct QueuedAnswer {
    AnswerKind kind = AnswerKind::MessageBox;
    std::optional<std::string> text;
    std::size_t line = 0;
    int step = 0;  ///< Of work, the one ahead of which it is cancelled.
};

/// A message box that was shown. One that the journal answered has been looked at by that.
struct ShownMessage : MessageRequest {
    bool answered = false;
};

class JournalDialogs;

/// Long work, which the journal may cancel.
class JournalWork : public ProgressPort {
  public:
    explicit JournalWork(JournalDialogs& dialogs) : mDialogs(dialogs) {}
    void Begin(const ProgressTask& task) override { mTasks.emplace_back(task.what); }
    bool Step(int step, std::string_view name) override;
    void End() override { mTasks.pop_back(); }

  private:
    JournalDialogs& mDialogs;
    std::vector<std::string> mTasks;
};

class JournalDialogs : public DialogPort {
  public:
    /// Message boxes and unused answers are written to the transcript, which must outlive the dialogs.
    explicit JournalDialogs(std::ostream& transcriptStream) : mTranscript(transcriptStream) {}

    /// Set by the player: plays the journal's steps on a form until the form is unloaded.
    std::function<void(Form&)> playForm;

    void Queue(QueuedAnswer answer) { mAnswers.push_back(std::move(answer)); }
    /// The oldest answer queued for this kind of question, taken out of the queue.
    std::optional<QueuedAnswer> Take(AnswerKind kind);
    /// Whether the journal cancels the work of this name ahead of the step; the answer is taken by that.
    bool TakeCancel(const std::string& task, int step);
    JournalWork work{*this};
    /// Answers that no question has asked for, oldest first.
    const std::deque<QueuedAnswer>& Untaken() const { return mAnswers; }
    /// The host's prompts: the next point, number or keyword. Without one the prompt takes its default, as
    /// after an empty answer, and the transcript says so.
    std::optional<std::string> AnswerPrompt(AnswerKind kind, const std::string& prompt);

    /// Message boxes that the journal has not looked at yet, oldest first.
    std::deque<ShownMessage>& Messages() { return mMessages; }

    void ShowModal(Form& form) override;
    /// Throws JournalFailure when the queued answer is no button of this box.
    MessageAnswer Show(const MessageRequest& request) override;
    std::optional<std::string> ChooseFile(const FileRequest& request) override;
    void DoEvents() override {}

  private:
    std::ostream& mTranscript;
    std::deque<QueuedAnswer> mAnswers;
    std::deque<ShownMessage> mMessages;
};

}  // namespace brenvik
