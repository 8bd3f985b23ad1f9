// The message boxes of a run without a person: which of them tell that something was skipped or failed.
#pragma once

#include "console/console_dialogs.h"

namespace brenvik::app {

class RunDialogs : public ConsoleDialogs {
  public:
    using ConsoleDialogs::ConsoleDialogs;

    MessageAnswer Show(const MessageRequest& request) override;
    /// A box other than those that every run shows, or that only tell of a default that was taken.
    bool SomethingWentWrong() const { return wentWrong; }

  private:
    bool wentWrong = false;
};

}  // namespace brenvik::app
