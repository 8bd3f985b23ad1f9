// Message boxes, questions, prompts and file dialogs, answered from the queues.
#include "journal/journal_dialogs.h"

#include <algorithm>

#include "base/text.h"
#include "journal/journal_failure.h"
#include "session/message_text.h"

namespace brenvik {

namespace {

std::string OfferedNames(MessageButtons buttons) {
    std::vector<std::string> names;
    for (const MessageAnswer answer : OfferedAnswers(buttons)) names.emplace_back(AnswerName(answer));
    return Join(names, " or ");
}

}  // namespace

std::optional<QueuedAnswer> JournalDialogs::Take(AnswerKind kind) {
    const auto found = std::find_if(mAnswers.begin(), mAnswers.end(),
                                    [kind](const QueuedAnswer& answer) { return answer.kind == kind; });
    if (found == mAnswers.end()) return std::nullopt;
    QueuedAnswer answer = std::move(*found);
    mAnswers.erase(found);
    return answer;
}

bool JournalDialogs::TakeCancel(const std::string& task, int step) {
    const auto found = std::find_if(mAnswers.begin(), mAnswers.end(), [&](const QueuedAnswer& answer) {
        return answer.kind == AnswerKind::Work && answer.text == task && answer.step == step;
    });
    if (found == mAnswers.end()) return false;
    mAnswers.erase(found);
    return true;
}

bool JournalWork::Step(int step, std::string_view) { return !mDialogs.TakeCancel(mTasks.back(), step); }

std::optional<std::string> JournalDialogs::AnswerPrompt(AnswerKind kind, const std::string& prompt) {
    if (std::optional<QueuedAnswer> answer = Take(kind)) return answer->text;
    mTranscript << "prompt \"" << Trim(prompt) << "\": no answer queued, left empty\n";
    return std::nullopt;
}

void JournalDialogs::ShowModal(Form& form) { playForm(form); }

MessageAnswer JournalDialogs::Show(const MessageRequest& request) {
    mMessages.push_back({request});
    const std::vector<MessageAnswer> offered = OfferedAnswers(request.buttons);
    if (!IsQuestion(request.buttons)) {
        mTranscript << MessageLine(request) << '\n';
        return offered.front();
    }
    const std::optional<QueuedAnswer> queued = Take(AnswerKind::MessageBox);
    if (!queued) {
        mTranscript << MessageLine(request) << " -> " << AnswerName(offered.front()) << " (default)\n";
        return offered.front();
    }
    for (const MessageAnswer answer : offered) {
        if (AnswerName(answer) != *queued->text) continue;
        mMessages.back().answered = true;
        mTranscript << MessageLine(request) << " -> " << AnswerName(answer) << '\n';
        return answer;
    }
    throw JournalFailure(queued->line, "answer " + *queued->text,
                         OfferedNames(request.buttons) + " for " + MessageLine(request), *queued->text);
}

std::optional<std::string> JournalDialogs::ChooseFile(const FileRequest& request) {
    if (std::optional<QueuedAnswer> answer = Take(AnswerKind::File)) return answer->text;
    mTranscript << "file dialog \"" << request.title << "\": no answer queued, cancelled\n";
    return std::nullopt;
}

}  // namespace brenvik
