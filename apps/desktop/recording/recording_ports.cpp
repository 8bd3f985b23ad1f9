// What was answered, in the words of a journal.
#include "recording/recording_ports.h"

#include <utility>

#include "journal/journal_parser.h"
#include "recording/journal_recorder.h"
#include "session/message_text.h"
#include "toolkit/exact_text.h"

namespace brenvik::desktop {

namespace {

std::string TextAnswer(const char* word, const std::optional<std::string>& answer) {
    return std::string(word) + " " + (answer ? JournalText(*answer) : "cancel");
}

}  // namespace

MessageAnswer RecordingDialogs::Show(const MessageRequest& request) {
    const MessageAnswer answer = mAsked.Show(request);
    if (recorder == nullptr) return answer;
    if (IsQuestion(request.buttons)) recorder->Answer("answer " + std::string(AnswerName(answer)));
    recorder->Remark(MessageLine(request));
    return answer;
}

std::optional<std::string> RecordingDialogs::ChooseFile(const FileRequest& request) {
    const std::optional<std::string> chosen = mAsked.ChooseFile(request);
    if (recorder != nullptr) recorder->Answer(TextAnswer("file", chosen));
    return chosen;
}

std::optional<Point3> RecordingPrompts::GetPoint(std::string_view prompt) {
    const std::optional<Point3> point = mAsked.GetPoint(prompt);
    if (recorder == nullptr) return point;
    recorder->Answer(point ? "point " + ExactText(*point) : "point cancel");
    return point;
}

std::optional<double> RecordingPrompts::GetReal(std::string_view prompt) {
    const std::optional<double> number = mAsked.GetReal(prompt);
    if (recorder != nullptr) recorder->Answer(number ? "real " + ExactText(*number) : "real cancel");
    return number;
}

std::optional<std::string> RecordingPrompts::GetString(bool blanksAllowed, std::string_view prompt) {
    const std::optional<std::string> text = mAsked.GetString(blanksAllowed, prompt);
    if (recorder != nullptr) recorder->Answer(TextAnswer("keyword", text));
    return text;
}

std::optional<std::string> RecordingPrompts::GetKeyword(std::string_view prompt) {
    const std::optional<std::string> word = mAsked.GetKeyword(prompt);
    if (recorder != nullptr) recorder->Answer(TextAnswer("keyword", word));
    return word;
}

void RecordingProgress::Begin(const ProgressTask& task) {
    mTasks.push_back({std::string(task.what)});
    mShown.Begin(task);
}

bool RecordingProgress::Step(int step, std::string_view name) {
    if (mShown.Step(step, name)) return true;
    Task& task = mTasks.back();
    if (recorder != nullptr && !std::exchange(task.cancelled, true))
        recorder->Answer("cancel work " + JournalText(task.what) + " " + std::to_string(step));
    return false;
}

void RecordingProgress::End() {
    mTasks.pop_back();
    mShown.End();
}

}  // namespace brenvik::desktop
