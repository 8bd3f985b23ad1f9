// Answers of a journal as the host takes them.
#include "commands/journal_prompts.h"

#include "base/numbers.h"
#include "base/text.h"
#include "journal/journal_parser.h"

namespace brenvik::app {

std::optional<Point3> JournalPrompts::GetPoint(std::string_view prompt) {
    const std::optional<std::string> text = mDialogs.AnswerPrompt(AnswerKind::Point, std::string(prompt));
    double coordinates[3];
    if (!text || !ParseJournalPoint(*text, coordinates)) return std::nullopt;
    return Point3{coordinates[0], coordinates[1], coordinates[2]};
}

std::optional<double> JournalPrompts::GetReal(std::string_view prompt) {
    const std::optional<std::string> text = mDialogs.AnswerPrompt(AnswerKind::Real, std::string(prompt));
    return text ? std::optional(LenientNumber(*text)) : std::nullopt;
}

std::optional<std::string> JournalPrompts::GetString(bool, std::string_view prompt) {
    return mDialogs.AnswerPrompt(AnswerKind::Keyword, std::string(prompt));
}

std::optional<std::string> JournalPrompts::GetKeyword(std::string_view prompt) {
    return mDialogs.AnswerPrompt(AnswerKind::Keyword, std::string(prompt));
}

std::optional<std::vector<AcadEntity*>> JournalPrompts::SelectOnScreen(AcadDocument&) { return std::nullopt; }

void JournalPrompts::Prompt(std::string_view text) {
    mTranscript << TrimRight(ReplaceAll(ReplaceAll(text, "\r", " "), "\n", " ")) << '\n';
}

}  // namespace brenvik::app
