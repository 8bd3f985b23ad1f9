// The message boxes of a command without a person: which of them report that something was skipped or failed.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "console/console_dialogs.h"
#include "journal/journal_dialogs.h"

namespace brenvik::app {

class RunDialogs : public ConsoleDialogs {
  public:
    using ConsoleDialogs::ConsoleDialogs;

    MessageAnswer Show(const MessageRequest& request) override;
    /// A box other than those that every run shows, or that only report a default that was taken.
    bool SomethingWentWrong() const { return mWentWrong; }
    /// The same since the last call.
    bool TakeTrouble() { return std::exchange(mTrouble, false); }

    /// Runs before the box that says that the export of a list is complete, for reports that have to come
    /// first.
    std::function<void()> beforeExportComplete;

  private:
    bool mWentWrong = false, mTrouble = false;
};

/// The same for a journal's dialogs, where a step may look at a box: what it has looked at was meant to come.
class WatchedJournalDialogs : public JournalDialogs {
  public:
    using JournalDialogs::JournalDialogs;

    MessageAnswer Show(const MessageRequest& request) override;
    /// Whether a box has reported trouble since the last call.
    bool TakeTrouble() { return std::exchange(mTrouble, false); }
    /// As for RunDialogs: ahead of that box a reader of the transcript looks for what the list lacks.
    std::function<void()> beforeExportComplete;
    /// Boxes that report trouble and that no step has looked at or answered, oldest first.
    std::vector<MessageRequest> Overlooked();

  private:
    bool mTrouble = false;
};

}  // namespace brenvik::app
