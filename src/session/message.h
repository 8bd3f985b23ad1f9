// The message boxes that every module shows: a text of its own, or a failure.
#pragma once

#include <string_view>

#include "base/failure.h"
#include "session/ports/dialog_port.h"

namespace brenvik {

/// A message box with an OK button.
void ShowMessage(std::string_view text, std::string_view title = {}, MessageIcon icon = MessageIcon::None);

/// Number, source and description of a failure, a line each, with an empty title and no icon.
void ShowFailure(const Failure& failure);

/// The same with what the failure is about, such as a path, behind the description.
void ShowFailureWithDetail(const Failure& failure);

/// Says that a method of the public class is not part of this build.
void ShowNotAvailable(std::string_view method);

}  // namespace brenvik
