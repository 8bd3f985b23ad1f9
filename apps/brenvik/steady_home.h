// What a command makes hangs on the home's settings and boards, and it reads them one by one while it works.
// Where another program changes them meanwhile, a part of the outcome is made by the old ones and the rest by
// the new.
#pragma once

#include <functional>
#include <string>

#include "exit_status.h"

namespace brenvik::app {

/// Which of a home's files the outcome of a command hangs on, beside its settings.
enum class HomeUse { Settings, SettingsAndBoards };

/// Does the work. A setting that decides what parts become and was changed from outside while the work was
/// going on, and a changed record of the boards, are named on standard error, and the work counts as
/// incomplete. Boards that were added change nothing. A home that is made by the work itself has nothing to
/// compare.
ExitStatus WhileHomeIsSteady(const std::string& homeOption, HomeUse use,
                             const std::function<ExitStatus()>& work);

}  // namespace brenvik::app
