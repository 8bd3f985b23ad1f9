// The text of a message box and the order of its buttons.
#include "session/message_text.h"

#include "base/text.h"

namespace brenvik {

std::string MessageLine(const MessageRequest& request) {
    const std::string text = ReplaceAll(ReplaceAll(request.text, "\r", "\\r"), "\n", "\\n");
    return "[" + request.title + "] " + text;
}

std::vector<MessageAnswer> OfferedAnswers(MessageButtons buttons) {
    switch (buttons) {
        case MessageButtons::Ok:
            return {MessageAnswer::Ok};
        case MessageButtons::OkCancel:
            return {MessageAnswer::Ok, MessageAnswer::Cancel};
        case MessageButtons::YesNoCancel:
            return {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel};
        case MessageButtons::YesNo:
            return {MessageAnswer::Yes, MessageAnswer::No};
    }
    return {MessageAnswer::Ok};
}

bool IsQuestion(MessageButtons buttons) { return OfferedAnswers(buttons).size() > 1; }

std::string_view AnswerName(MessageAnswer answer) {
    switch (answer) {
        case MessageAnswer::Ok:
            return "ok";
        case MessageAnswer::Cancel:
            return "cancel";
        case MessageAnswer::Yes:
            return "yes";
        case MessageAnswer::No:
            return "no";
    }
    return "ok";
}

}  // namespace brenvik
