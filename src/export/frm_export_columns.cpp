// The CSV frame of the export dialog: profiles and the lists of columns.
#include <algorithm>
#include <string>

#include "base/letter_case.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/export_cells.h"
#include "export/export_troubles.h"
#include "export/frm_export.h"
#include "session/text_files.h"

namespace brenvik {

namespace {

std::string ItemAt(const ListControl& list, int index) {
    return list.Items()[static_cast<std::size_t>(index)];
}

bool Holds(const ListControl& list, std::string_view text) {
    return std::ranges::any_of(list.Items(),
                               [text](const std::string& item) { return EqualsIgnoreCase(item, text); });
}

}  // namespace

void frmExport::ReadProfiles(std::string_view file) {
    mProfiles.clear();
    cboProfileName.Clear();
    Skip([&] {
        const FileLines read = ReadFileLines(ApplicationFolder() + std::string(file));
        mProfiles = ParseProfiles(read.lines, read.guessed);
    });
    for (const ExportProfile& profile : mProfiles) cboProfileName.AddItem(profile.name);
}

void frmExport::LoadProfiles() { ReadProfiles(CsvProfileFile); }

void frmExport::LoadCNCProfiles() { ReadProfiles(CncProfileFile); }

bool frmExport::ChooseProfile(std::string_view profileName) {
    const auto& names = cboProfileName.Items();
    const auto found = std::ranges::find(names, profileName);
    if (found == names.end()) return false;
    cboProfileName.SetListIndex(static_cast<int>(found - names.begin()));
    return true;
}

void frmExport::ProfileChosen() {
    lstExportColumns.Clear();
    const ExportProfile* profile = FindProfile(mProfiles, cboProfileName.Text());
    if (profile == nullptr) return;
    for (const std::string& column : Split(profile->columns, ',')) lstExportColumns.AddItem(column);
}

const ExportProfile* frmExport::ShownProfile() const {
    if (const ExportProfile* chosen = FindProfile(mProfiles, cboProfileName.Text())) return chosen;
    // A hand-over reads the profiles anew, which forgets the choice but not the columns.
    const auto& names = lstExportColumns.Items();
    const auto found = std::ranges::find_if(mProfiles, [&names](const ExportProfile& profile) {
        return !names.empty() && Split(profile.columns, ',') == names;
    });
    return found == mProfiles.end() ? nullptr : &*found;
}

void frmExport::NoteProfileTroubles(std::span<const std::string> unknownNames) const {
    const std::string file =
        ApplicationFolder() + std::string(CncMode == 1 ? CncProfileFile : CsvProfileFile);
    const ExportProfile* profile = ShownProfile();
    if (profile != nullptr)
        for (const ProfileFault& fault : profile->faults) NoteExportTrouble(file, fault.line, fault.text);
    const bool isTold = profile != nullptr && !profile->faults.empty();
    if (lstExportColumns.ListCount() == 0 && !isTold)
        NoteExportTrouble(
            "the export has no columns: expected a profile, or columns chosen in the dialog; its lines are "
            "blank");
    for (const std::string& name : unknownNames) {
        const std::string text = "expected the name of a column, found \"" + name + "\"" +
                                 (FoldLower(name) == BlankColumn
                                      ? ", which stands for a blank cell in small letters alone, (blank)"
                                      : "") +
                                 "; it has no cell, and the cells behind it stand further to the left";
        const bool isOfProfile =
            profile != nullptr && std::ranges::count(Split(profile->columns, ','), name) > 0;
        if (isOfProfile)
            NoteExportTrouble(file, profile->columnsLine, text);
        else
            NoteExportTrouble("the columns of the export: " + text);
    }
}

void frmExport::ChooseCsvSwitched() {
    const bool custom = chkChooseCSV.Value() == 1;
    Get<Control>("btnInsert").enabled = custom;
    Get<Control>("btnRemove").enabled = custom;
    cboCSVCaptionFrom.enabled = custom;
}

void frmExport::InsertColumns() {
    for (int item = 0; item < cboCSVCaptionFrom.ListCount(); ++item) {
        if (!cboCSVCaptionFrom.Selected(item)) continue;
        const std::string name = ItemAt(cboCSVCaptionFrom, item);
        if (FoldLower(name) == BlankColumn || !Holds(lstExportColumns, name)) lstExportColumns.AddItem(name);
    }
}

void frmExport::RemoveColumn() {
    const int item = lstExportColumns.ListIndex();
    if (item < 0) return;
    lstExportColumns.RemoveItem(item);
    if (item < lstExportColumns.ListCount()) lstExportColumns.SetListIndex(item);
}

void frmExport::MoveColumn(int step) {
    const int item = lstExportColumns.ListIndex(), neighbour = item + step;
    if (item < 0 || neighbour < 0 || neighbour >= lstExportColumns.ListCount()) return;
    const std::string moved = ItemAt(lstExportColumns, item);
    lstExportColumns.SetItem(item, ItemAt(lstExportColumns, neighbour));
    lstExportColumns.SetItem(neighbour, moved);
    lstExportColumns.SetListIndex(neighbour);
}

void frmExport::AddFrom() {
    for (int item = 0; item < cboCSVCaptionFrom.ListCount(); ++item) {
        if (!cboCSVCaptionFrom.Selected(item)) continue;
        // The blank column stands first and has no field.
        const std::string field = item == 0 ? std::string() : ItemAt(cboDBNames, item - 1);
        lvCVSMapping.rows.push_back({ItemAt(cboCSVCaptionFrom, item), field, {}, {}});
    }
}

void frmExport::RemoveFrom() {
    if (lvCVSMapping.selectedRow < 0 ||
        lvCVSMapping.selectedRow >= static_cast<int>(lvCVSMapping.rows.size()))
        return;
    lvCVSMapping.rows.erase(lvCVSMapping.rows.begin() + lvCVSMapping.selectedRow);
    lvCVSMapping.selectedRow = -1;
}

}  // namespace brenvik
