// The system's commands as words of the host's command line, and the host's news of changed solids.
#pragma once

#include <string_view>

#include "drafting_host/command/session/host_command_line.h"
#include "session/library/command_table.h"

namespace brenvik::app {

/// Makes every host command of the command table one that can be typed, and has the letters brought up to
/// date (as the settings wish it) when the host has reshaped solids. Both outlive the application's use.
class TypedCommands {
  public:
    explicit TypedCommands(HostApplication& application);

    /// Calls a method by name, typed or from a journal; false for an unknown one. What the command line still
    /// asks is cancelled first, as the host's menus do: it would take what the method types for its answers.
    bool Call(std::string_view method);
    /// Whether a method of the system is running: what the command line shows then is not the user's typing.
    bool AtWork() const { return mRunning > 0; }
    HostCommandLine& Line() { return mLine; }

  private:
    HostApplication& mApplication;
    HostCommandLine mLine;
    int mRunning = 0;
};

}  // namespace brenvik::app
