// The one place where errors become messages and exit statuses.
#pragma once

#include <functional>

#include "shell/exit_status.h"

namespace brenvik::app {

/// Does the work of a command, and reports on standard error what ends it.
ExitStatus Reported(const std::function<ExitStatus()>& work);

/// What a full disk or device has not taken is reported, and the command isn't done. Nor is it where what it
/// had to report was lost: nobody has read it.
ExitStatus WithWrittenOutput(ExitStatus status);

}  // namespace brenvik::app
