// What a message box means to a program that has nobody in front of it.
#pragma once

#include "session/ports/dialog_port.h"

namespace brenvik::app {

/// Whether a box means that something was skipped, refused or failed. Every box counts as one, except for
/// announcements and notes of a default.
bool TellsOfTrouble(const MessageRequest& request);

}  // namespace brenvik::app
