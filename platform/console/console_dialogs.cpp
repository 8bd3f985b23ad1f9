// Message boxes printed in one line each, and the answers that need no person.
#include "console/console_dialogs.h"

#include "forms/form.h"
#include "session/message_text.h"

namespace brenvik {

void ConsoleDialogs::ShowModal(Form& form) {
    form.Load();
    if (form.Loaded() && whileOpen) whileOpen(form);
    if (form.Loaded() && !form.RequestClose()) form.Unload();
}

MessageAnswer ConsoleDialogs::Show(const MessageRequest& request) {
    ++mMessagesShown;
    if (beforeTelling) beforeTelling();
    const MessageAnswer answer = OfferedAnswers(request.buttons).front();
    mErrors << MessageLine(request);
    if (IsQuestion(request.buttons)) mErrors << " -> " << AnswerName(answer) << " (default)";
    mErrors << '\n';
    return answer;
}

std::optional<std::string> ConsoleDialogs::ChooseFile(const FileRequest& request) {
    if (beforeTelling) beforeTelling();
    mErrors << "file dialog \"" << request.title << "\": cancelled, there is nobody to choose\n";
    return std::nullopt;
}

}  // namespace brenvik
