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
    std::string_view subkey, count, key, text, tag, target;
};

constexpr MappingKeys CsvMapping = {CsvSaveSubkey, "CVS_COL_COUNT", "CVS_COL_KEY", "CVS_COL_VALUE", "", ""};
constexpr MappingKeys AccessMappingKeys = {AccessSaveSubkey, "ACCESS_MAP_COUNT", "ACCESS_KEY",
                                           "ACCESS_VALUE",   "ACCESS_TAG",       "ACCESS_TO"};

std::string Numbered(std::string_view name, std::size_t row) {
    return std::string(name) + std::to_string(row);
}

void SaveRows(const ListViewControl& view, const MappingKeys& keys) {
    SaveSubkeyText(keys.subkey, keys.count, std::to_string(view.rows.size()));
    for (std::size_t row = 0; row < view.rows.size(); ++row) {
        const ListViewControl::Row& each = view.rows[row];
        SaveSubkeyText(keys.subkey, Numbered(keys.key, row), each.key);
        SaveSubkeyText(keys.subkey, Numbered(keys.text, row), each.text);
        if (keys.tag.empty()) continue;
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
        if (!keys.tag.empty()) {
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
    SaveSettingText("EXPORT_TYPE", std::to_string(cboExportType.ListIndex()));
    SaveSettingText("SAVE_SWITCH", SwitchText(chkSave));
    SaveSubkeyText(CsvSaveSubkey, "CVS_EXPORT_PATH", txtSaveCSVFile.Text());
    SaveSubkeyText(CsvSaveSubkey, "CVS_MAPPING_SWITCH", SwitchText(chkChooseCSV));
    SaveSubkeyText(CsvSaveSubkey, "CSV_REDUCE", SwitchText(chkReduce));
    SaveRows(lvCVSMapping, CsvMapping);
    SaveSubkeyText(AccessSaveSubkey, "ACCESS_EXPORT_PATH", txtExportAccess.Text());
    SaveSubkeyText(AccessSaveSubkey, "ACCESS_TABLE_NAME", cboAccessTable.Text());
    SaveRows(lvAccessMap, AccessMappingKeys);
}

void frmExport::RestoreState() {
    const std::string type = GetSettingText("EXPORT_TYPE");
    if (IsNumeric(type)) {
        const double index = RoundHalfEven(StrictNumber(type), 0);
        if (index >= 0 && index < static_cast<double>(cboExportType.ListCount()))
            cboExportType.SetListIndex(static_cast<int>(index));
    }
    RestoreSwitch(chkSave, GetSettingText("SAVE_SWITCH"));
    RestoreSwitch(chkChooseCSV, GetSubkeyText(CsvSaveSubkey, "CVS_MAPPING_SWITCH"));
    RestoreSwitch(chkReduce, GetSubkeyText(CsvSaveSubkey, "CSV_REDUCE"));
    txtSaveCSVFile.SetText(GetSubkeyText(CsvSaveSubkey, "CVS_EXPORT_PATH"));
    RestoreRows(lvCVSMapping, CsvMapping);
    txtExportAccess.SetText(GetSubkeyText(AccessSaveSubkey, "ACCESS_EXPORT_PATH"));
    RestoreRows(lvAccessMap, AccessMappingKeys);
    if (!txtExportAccess.Text().empty()) populateTableList();
    RestoreTarget();
}

/// The table of the last time: chosen as by a click where it is offered, else just named.
void frmExport::RestoreTarget() {
    const std::string table = GetSubkeyText(AccessSaveSubkey, "ACCESS_TABLE_NAME");
    if (table.empty()) return;
    const auto& tables = cboAccessTable.Items();
    const auto found = std::ranges::find(tables, table);
    if (found != tables.end())
        cboAccessTable.SetListIndex(static_cast<int>(found - tables.begin()));
    else
        cboAccessTable.SetText(table);
}

}  // namespace brenvik
