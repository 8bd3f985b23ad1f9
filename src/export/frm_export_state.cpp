// What the export dialog keeps in the settings: its choices, and the rows of its two mappings.
#include <algorithm>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "export/frm_export.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

/// Where a list view's rows stand: the count, and what each row has under its number. Blank names are not
/// kept.
struct MappingKeys {
    std::string_view subkey;
    SettingName count, key, text, tag, target;
};

constexpr SettingName NotKept{""};
constexpr MappingKeys CsvMapping = {
    CsvSaveSubkey, setting::CVS_COL_COUNT, setting::CVS_COL_KEY, setting::CVS_COL_VALUE, NotKept, NotKept};
constexpr MappingKeys AccessMappingKeys = {AccessSaveSubkey,    setting::ACCESS_MAP_COUNT,
                                           setting::ACCESS_KEY, setting::ACCESS_VALUE,
                                           setting::ACCESS_TAG, setting::ACCESS_TO};

/// One value of a family: the name is followed by the row's number.
class Numbered {
  public:
    Numbered(SettingName family, std::size_t row) : mText(std::string(family.text) + std::to_string(row)) {}
    operator SettingName() const { return SettingName(mText); }

  private:
    std::string mText;
};

void SaveRows(const ListViewControl& view, const MappingKeys& keys) {
    SaveSubkeyText(keys.subkey, keys.count, std::to_string(view.rows.size()));
    for (std::size_t row = 0; row < view.rows.size(); ++row) {
        const ListViewControl::Row& each = view.rows[row];
        SaveSubkeyText(keys.subkey, Numbered(keys.key, row), each.key);
        SaveSubkeyText(keys.subkey, Numbered(keys.text, row), each.text);
        if (keys.tag.text.empty()) continue;
        SaveSubkeyText(keys.subkey, Numbered(keys.tag, row), each.tag);
        SaveSubkeyText(keys.subkey, Numbered(keys.target, row),
                       each.subItems.empty() ? std::string() : each.subItems.front());
    }
}

void RestoreRows(ListViewControl& view, const MappingKeys& keys) {
    view.rows.clear();
    const double stored = LenientNumber(GetSubkeyText(keys.subkey, keys.count));
    // A row takes two values at least, so a damaged count is told by the number of values that are there.
    const auto most = static_cast<double>(EnumerateSubkey(keys.subkey).size());
    const auto count = static_cast<std::size_t>(std::clamp(stored, 0.0, most));
    for (std::size_t row = 0; row < count; ++row) {
        ListViewControl::Row each;
        each.key = GetSubkeyText(keys.subkey, Numbered(keys.key, row));
        each.text = GetSubkeyText(keys.subkey, Numbered(keys.text, row));
        if (!keys.tag.text.empty()) {
            each.tag = GetSubkeyText(keys.subkey, Numbered(keys.tag, row));
            each.subItems = {GetSubkeyText(keys.subkey, Numbered(keys.target, row))};
        }
        view.rows.push_back(std::move(each));
    }
}

std::string SwitchText(const CheckControl& box) { return box.Value() == 1 ? "1" : "0"; }

void RestoreSwitch(CheckControl& box, std::string_view text) { box.SetValue(SwitchIsOne(text) ? 1 : 0); }

}  // namespace

void frmExport::SaveState() const {
    SaveSettingText(setting::EXPORT_TYPE, std::to_string(cboExportType.ListIndex()));
    SaveSettingText(setting::SAVE_SWITCH, SwitchText(chkSave));
    SaveSubkeyText(CsvSaveSubkey, setting::CVS_EXPORT_PATH, txtSaveCSVFile.Text());
    SaveSubkeyText(CsvSaveSubkey, setting::CVS_MAPPING_SWITCH, SwitchText(chkChooseCSV));
    SaveSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE, SwitchText(chkReduce));
    SaveRows(lvCVSMapping, CsvMapping);
    SaveSubkeyText(AccessSaveSubkey, setting::ACCESS_EXPORT_PATH, txtExportAccess.Text());
    SaveSubkeyText(AccessSaveSubkey, setting::ACCESS_TABLE_NAME, cboAccessTable.Text());
    SaveRows(lvAccessMap, AccessMappingKeys);
}

void frmExport::RestoreState() {
    const std::string type = GetSettingText(setting::EXPORT_TYPE);
    if (IsNumeric(type)) {
        const double index = RoundHalfEven(StrictNumber(type), 0);
        if (index >= 0 && index < static_cast<double>(cboExportType.ListCount()))
            cboExportType.SetListIndex(static_cast<int>(index));
    }
    RestoreSwitch(chkSave, GetSettingText(setting::SAVE_SWITCH));
    RestoreSwitch(chkChooseCSV, GetSubkeyText(CsvSaveSubkey, setting::CVS_MAPPING_SWITCH));
    RestoreSwitch(chkReduce, GetSubkeyText(CsvSaveSubkey, setting::CSV_REDUCE));
    txtSaveCSVFile.SetText(GetSubkeyText(CsvSaveSubkey, setting::CVS_EXPORT_PATH));
    RestoreRows(lvCVSMapping, CsvMapping);
    txtExportAccess.SetText(GetSubkeyText(AccessSaveSubkey, setting::ACCESS_EXPORT_PATH));
    RestoreRows(lvAccessMap, AccessMappingKeys);
    if (!txtExportAccess.Text().empty()) populateTableList();
    RestoreTarget();
}

/// The table of the last time: chosen as by a click where it is offered, else just named.
void frmExport::RestoreTarget() {
    const std::string table = GetSubkeyText(AccessSaveSubkey, setting::ACCESS_TABLE_NAME);
    if (table.empty()) return;
    const auto& tables = cboAccessTable.Items();
    const auto found = std::ranges::find(tables, table);
    if (found != tables.end())
        cboAccessTable.SetListIndex(static_cast<int>(found - tables.begin()));
    else
        cboAccessTable.SetText(table);
}

}  // namespace brenvik
