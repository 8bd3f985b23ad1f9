// The file dialog for adjustments, which the dialogs of the export share.
#pragma once

#include <string_view>

#include "session/ports/dialog_port.h"

namespace brenvik {

/// The file dialog for adjustments, which begins at a path.
FileRequest AdjustmentFileRequest(std::string_view path, bool saving);

/// Lets the user choose an adjustment file, beginning at a path, and stores the choice in the settings.
/// Returns false when the dialog was cancelled, and nothing is stored then.
bool ChooseAdjustmentFile(std::string_view path);

}  // namespace brenvik
