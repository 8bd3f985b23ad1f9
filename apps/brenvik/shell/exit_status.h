// How the program ends, and the errors that end it.
#pragma once

#include <stdexcept>
#include <string>

namespace brenvik::app {

enum class ExitStatus {
    Done = 0,
    Incomplete = 1,  ///< Done, but something was skipped or failed, each reported on standard error.
    WrongWords = 2,  ///< The words of the command are wrong.
    Unreadable = 3,  ///< An input can't be read.
};

/// Ends a command with a status. what() is the message for standard error.
class CommandError : public std::runtime_error {
  public:
    CommandError(ExitStatus endStatus, const std::string& message)
        : std::runtime_error(message), mStatus(endStatus) {}
    ExitStatus Status() const { return mStatus; }

  private:
    ExitStatus mStatus;
};

}  // namespace brenvik::app
