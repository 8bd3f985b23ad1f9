// Dialogs of the export by way of the dialog port.
#include "export/export_dialogs.h"

#include <optional>
#include <string>

#include "export/adjustment_file.h"
#include "session/session.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

FileRequest AdjustmentFileRequest(std::string_view path, bool saving) {
    return {"Choose Adjustment File", "BrenvikAdjustments Text File (*.txt)|*.txt", "txt", std::string(path),
            saving};
}

bool ChooseAdjustmentFile(std::string_view path) {
    const std::optional<std::string> chosen =
        ThePlatform().dialogs->ChooseFile(AdjustmentFileRequest(path, false));
    if (!chosen) return false;
    SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting, *chosen);
    return true;
}

}  // namespace brenvik
