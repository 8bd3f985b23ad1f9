// Options done through the export dialog, unseen.
#include "export/export_options.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <vector>

#include "base/letter_case.h"
#include "base/quoted.h"
#include "base/text.h"
#include "export/adjustment_file.h"
#include "export/frm_export.h"
#include "forms/form_guards.h"
#include "query/list_options.h"
#include "session/module_state.h"
#include "session/ports/files_port.h"
#include "session/session.h"
#include "session/text_files.h"

namespace brenvik {

namespace {

/// In quotes where a reader would take it for another one: with blanks at an end, or a comma.
std::string ShownName(const std::string& name) {
    const bool isPlain = !IsBlank(name) && Trim(name) == name && name.find(',') == std::string::npos;
    return isPlain ? name : InQuotes(name);
}

/// The names for a message. A damaged file can have thousands, which would bury what the message says.
std::string NamesOf(std::span<const ExportProfile> profiles) {
    constexpr std::size_t most = 20;
    std::vector<std::string> names;
    for (const ExportProfile& profile : profiles.first(std::min(most, profiles.size())))
        names.push_back(ShownName(profile.name));
    if (profiles.size() > most) names.push_back(std::to_string(profiles.size() - most) + " more");
    return Join(names, ", ");
}

void ChooseProfileOf(frmExport& form, const std::string& wanted) {
    const std::span<const ExportProfile> profiles = form.Profiles();
    if (form.ChooseProfile(wanted)) return;
    const auto isWanted = [&](const ExportProfile& profile) {
        return EqualsIgnoreCase(profile.name, wanted);
    };
    const auto found = std::ranges::find_if(profiles, isWanted);
    const std::string file = ApplicationFolder() + std::string(CsvProfileFile);
    // The dialog ignores an unreadable file; if a profile of it was named, its failure is shown.
    if (profiles.empty() && ThePlatform().files->FileExists(file)) ReadLines(file);
    if (std::ranges::count_if(profiles, isWanted) > 1)
        RefuseOption("profile", "several profiles of " + file + " are called \"" + wanted +
                                    "\" in capital or small letters; write it as it stands there");
    if (found != profiles.end()) {
        form.ChooseProfile(found->name);
        return;
    }
    RefuseOption("profile", "there is no profile \"" + wanted + "\" in " + file + "; " +
                                (profiles.empty() ? "it has none" : "the profiles are " + NamesOf(profiles)));
}

}  // namespace

bool ExportToCsv(const CsvExportChoices& choices) {
    if (!choices.adjustments.empty()) {
        if (choices.profile.empty())
            RefuseOption(
                "adjustments",
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
