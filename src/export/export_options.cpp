// Options done through the export dialog, unseen.
#include "export/export_options.h"

#include <string_view>

#include "base/failure.h"
#include "base/letter_case.h"
#include "export/adjustments.h"
#include "export/frm_export.h"
#include "export/text_lines.h"
#include "session/module_state.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

[[noreturn]] void Refuse(std::string_view option, const std::string& complaint) {
    throw Failure(failure_number::invalidCall, std::string(ownSource),
                  std::string(option) + ": " + complaint);
}

/// Another adjustment file for as long as it lives; then the settings have theirs again.
class AdjustmentsLent {
  public:
    explicit AdjustmentsLent(std::string_view path)
        : before(GetSubkeyText(CsvSaveSubkey, AdjustmentPathSetting)), lent(!path.empty()) {
        if (lent) SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting, path);
    }
    ~AdjustmentsLent() {
        if (!lent) return;
        try {
            if (before.empty())
                DeleteSubkeyText(CsvSaveSubkey, AdjustmentPathSetting);
            else
                SaveSubkeyText(CsvSaveSubkey, AdjustmentPathSetting, before);
        } catch (const Failure&) {
            // A store that can't be written now could not take the path of this export either.
        }
    }
    AdjustmentsLent(const AdjustmentsLent&) = delete;
    AdjustmentsLent& operator=(const AdjustmentsLent&) = delete;

  private:
    std::string before;
    bool lent;
};

class UnloadAtEnd {
  public:
    explicit UnloadAtEnd(Form& openForm) : form(openForm) {}
    ~UnloadAtEnd() { form.Unload(); }
    UnloadAtEnd(const UnloadAtEnd&) = delete;
    UnloadAtEnd& operator=(const UnloadAtEnd&) = delete;

  private:
    Form& form;
};

void ChooseProfileOf(frmExport& form, const std::string& wanted) {
    std::string known;
    for (const ExportProfile& profile : form.Profiles()) {
        if (EqualsIgnoreCase(profile.name, wanted)) {
            form.ChooseProfile(profile.name);
            return;
        }
        known += (known.empty() ? "" : ", ") + profile.name;
    }
    const std::string file = ApplicationFolder() + std::string(CsvProfileFile);
    Refuse("profile", "there is no profile \"" + wanted + "\" in " + file + "; " +
                          (known.empty() ? "it has none" : "the profiles are " + known));
}

}  // namespace

bool ExportToCsv(const CsvExportChoices& choices) {
    if (!choices.adjustments.empty()) {
        if (choices.profile.empty())
            Refuse("adjustments",
                   "they apply to the columns of a profile only; the standard columns show the sizes as "
                   "they are, so name a profile too");
        ReadLines(choices.adjustments);
    }
    const AdjustmentsLent lent(choices.adjustments);
    auto& form = StateOf<frmExport>();
    form.Unload();
    form.Load();
    const UnloadAtEnd unload(form);
    form.cboExportType.SetListIndex(CsvExportType);
    form.chkSave.SetValue(0);
    form.chkReduce.SetValue(choices.fractions ? 1 : 0);
    form.chkChooseCSV.SetValue(choices.profile.empty() ? 0 : 1);
    if (!choices.profile.empty()) ChooseProfileOf(form, choices.profile);
    form.txtSaveCSVFile.SetText(choices.path);
    form.Get<Control>("cmdGo").Press();
    return form.exportEnded;
}

}  // namespace brenvik
