// Work in a process of its own.
#pragma once

#include <functional>
#include <string>

#include "shell/exit_status.h"

namespace brenvik::app {

/// What the process has written, and how it ended.
struct WorkApart {
    ExitStatus status = ExitStatus::Done;
    std::string output, errors;
};

/// Does the work in a copy of this process and waits for it. Errors that end a command are reported on its
/// standard error. One that a signal ends is Incomplete: `name` and the signal stand behind its errors, and
/// what it had put out doesn't count. Throws CommandError where no process can be made.
WorkApart RunApart(const std::string& name, const std::function<ExitStatus()>& work);

}  // namespace brenvik::app
