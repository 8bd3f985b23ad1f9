// Message boxes as text, for dialog platforms without a screen: one line for the box, the answers that its
// buttons give, and the default among them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/ports/dialog_port.h"

namespace brenvik {

/// "[title] text" in one line: line breaks of the text are written as "\r" and "\n".
std::string MessageLine(const MessageRequest& request);

/// The answers of the box's buttons, in their order. The first is the default button.
std::vector<MessageAnswer> OfferedAnswers(MessageButtons buttons);

/// Whether the box asks something: more than one button.
bool IsQuestion(MessageButtons buttons);

/// "ok", "cancel", "yes" or "no".
std::string_view AnswerName(MessageAnswer answer);

}  // namespace brenvik
