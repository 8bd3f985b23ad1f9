// What a message box means to a program that has nobody in front of it.
#pragma once

#include "session/ports/dialog_port.h"

namespace brenvik::app {

/// Whether a box tells that something was skipped, refused or failed. Every box is taken for one but those
/// that only announce, or tell of a default that was taken.
bool TellsOfTrouble(const MessageRequest& request);

}  // namespace brenvik::app
