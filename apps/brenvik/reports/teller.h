// What a command reports beside its output, and what that means for the exit status.
#pragma once

#include <string>

#include "shell/exit_status.h"

namespace brenvik::app {

class Teller {
  public:
    /// Progress is shown on a terminal only; `quiet` leaves out progress and remarks.
    explicit Teller(bool quietWished);
    ~Teller();
    Teller(const Teller&) = delete;
    Teller& operator=(const Teller&) = delete;

    /// The present step; the next step or the end wipes it away.
    void Progress(const std::string& step);
    /// Something that the user may want to know.
    void Remark(const std::string& text);
    /// A message that is shown in any case, though it is no failure.
    void Tell(const std::string& text);
    /// Something was skipped or failed: reported in any case, and the command ends incomplete.
    void Loss(const std::string& text);

    ExitStatus Status() const { return mLost ? ExitStatus::Incomplete : ExitStatus::Done; }
    void MarkIncomplete() { mLost = true; }
    /// Takes the progress line off the terminal.
    void Wipe();

  private:
    bool mQuiet, mTerminal;
    bool mProgressShown = false, mLost = false;
};

}  // namespace brenvik::app
