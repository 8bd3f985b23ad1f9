// The drafting host's prompts, answered from a journal's queues.
#pragma once

#include <ostream>

#include "drafting_host/document/host_utility.h"
#include "journal/journal_dialogs.h"

namespace brenvik::app {

class JournalPrompts : public PromptPort {
  public:
    /// Both must outlive the prompts.
    JournalPrompts(JournalDialogs& journalDialogs, std::ostream& transcriptStream)
        : mDialogs(journalDialogs), mTranscript(transcriptStream) {}

    std::optional<Point3> GetPoint(std::string_view prompt) override;
    std::optional<double> GetReal(std::string_view prompt) override;
    std::optional<std::string> GetString(bool blanksAllowed, std::string_view prompt) override;
    std::optional<std::string> GetKeyword(std::string_view prompt) override;
    /// A journal points at nothing on a screen: cancelled.
    std::optional<std::vector<AcadEntity*>> SelectOnScreen(AcadDocument& document) override;
    void Prompt(std::string_view text) override;

  private:
    JournalDialogs& mDialogs;
    std::ostream& mTranscript;
};

}  // namespace brenvik::app
