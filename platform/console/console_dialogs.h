// Dialogs on a console: message boxes are written to a stream, questions take their default, forms are loaded
// and closed at once, file dialogs are cancelled. What a command without a person needs.
#pragma once

#include <functional>
#include <optional>
#include <ostream>
#include <string>

#include "session/ports/dialog_port.h"

namespace brenvik {

class ConsoleDialogs : public DialogPort {
  public:
    /// `errors` must outlive the dialogs.
    explicit ConsoleDialogs(std::ostream& errorStream) : mErrors(errorStream) {}

    /// What a command does with a form between its load and its closing; by default nothing.
    std::function<void(Form&)> whileOpen;

    /// Runs before any message, for a program that has a progress line to wipe away.
    std::function<void()> beforeTelling;

    /// Message boxes shown so far. For a command that expects none, each one means that something went wrong.
    int MessagesShown() const { return mMessagesShown; }

    /// Loads the form if need be, asks it to close, and unloads it if it refuses.
    void ShowModal(Form& form) override;
    MessageAnswer Show(const MessageRequest& request) override;
    std::optional<std::string> ChooseFile(const FileRequest& request) override;
    void DoEvents() override {}

  private:
    std::ostream& mErrors;
    int mMessagesShown = 0;
};

}  // namespace brenvik
