// What the export dialog keeps in the settings: its choices, and the rows of its two mappings.
#include <algorithm>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "export/export_troubles.h"
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

void SaveRows(const std::vector<ListViewControl::Row>& rows, const MappingKeys& keys) {
    SaveSubkeyText(keys.subkey, keys.count, std::to_string(rows.size()));
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const ListViewControl::Row& each = rows[row];
        SaveSubkeyText(keys.subkey, Numbered(keys.key, row), each.key);
        SaveSubkeyText(keys.subkey, Numbered(keys.text, row), each.text);
        if (keys.tag.text.empty()) continue;
        SaveSubkeyText(keys.subkey, Numbered(keys.tag, row), each.tag);
        SaveSubkeyText(keys.subkey, Numbered(keys.target, row),
                       each.subItems.empty() ? std::string() : each.subItems.front());
    }
}

std::vector<ListViewControl::Row> ReadRows(const MappingKeys& keys) {
    std::vector<ListViewControl::Row> rows;
    const double stored = LenientNumber(GetSubkeyText(keys.subkey, keys.count));
    // A row takes two values at least, so the number of values that are there shows a damaged count.
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
        rows.push_back(std::move(each));
    }
    return rows;
}

/// All of one saving: the columns of two would go into wrong fields.
std::vector<ListViewControl::Row> StoredRows(const MappingKeys& keys) {
    std::vector<ListViewControl::Row> rows;
    ChangeSettingsTogether([&] { rows = ReadRows(keys); });
    return rows;
}

/// A mapping as one text: its rows mean something together only.
std::string TextOf(const std::vector<ListViewControl::Row>& rows) {
    constexpr char separator = '\0';
    std::string text;
    for (const ListViewControl::Row& row : rows) {
        text += row.key + separator + row.text + separator + row.tag + separator;
        text += (row.subItems.empty() ? std::string() : row.subItems.front()) + separator;
    }
    return text;
}

std::string SwitchText(const CheckControl& box) { return box.Value() == 1 ? "1" : "0"; }

void RestoreSwitch(CheckControl& box, std::string_view text) { box.SetValue(SwitchIsOne(text) ? 1 : 0); }

}  // namespace

std::vector<frmExport::KeptChoice> frmExport::KeptChoices() const {
    const auto value = [](std::string_view subkey, SettingName name, std::string text) {
        return KeptChoice{std::string(name.text), [=] { return GetSubkeyText(subkey, name); },
                          [=] { SaveSubkeyText(subkey, name, text); }, text};
    };
    const auto mapping = [](const ListViewControl& view, const MappingKeys& keys) {
        return KeptChoice{std::string(keys.count.text), [&keys] { return TextOf(StoredRows(keys)); },
                          [&keys, rows = view.rows] { SaveRows(rows, keys); }, TextOf(view.rows)};
    };
    return {value({}, setting::EXPORT_TYPE, std::to_string(cboExportType.ListIndex())),
            value({}, setting::SAVE_SWITCH, SwitchText(chkSave)),
            value(CsvSaveSubkey, setting::CVS_EXPORT_PATH, txtSaveCSVFile.Text()),
            value(CsvSaveSubkey, setting::CVS_MAPPING_SWITCH, SwitchText(chkChooseCSV)),
            value(CsvSaveSubkey, setting::CSV_REDUCE, SwitchText(chkReduce)),
            mapping(lvCVSMapping, CsvMapping),
            value(AccessSaveSubkey, setting::ACCESS_EXPORT_PATH, txtExportAccess.Text()),
            value(AccessSaveSubkey, setting::ACCESS_TABLE_NAME, cboAccessTable.Text()),
            mapping(lvAccessMap, AccessMappingKeys)};
}

void frmExport::SaveState() {
    std::string replaced;
    ChangeSettingsTogether([&] {
        for (const KeptChoice& choice : KeptChoices()) {
            const ValueChange change = mSeen.ChangeOf(choice.name, choice.stored(), choice.text);
            if (change == ValueChange::Elsewhere) continue;
            if (change == ValueChange::Both) replaced += (replaced.empty() ? "" : ", ") + choice.name;
            choice.save();
        }
        NoteStored();
    });
    if (!replaced.empty())
        NoteExportTrouble(
            "the choices of this export were saved over others that another program has saved "
            "since the dialog was opened: " +
            replaced);
    NoteShown();
}

void frmExport::NoteStored() {
    for (const KeptChoice& choice : KeptChoices()) mSeen.NoteStored(choice.name, choice.stored());
}

void frmExport::NoteShown() {
    for (const KeptChoice& choice : KeptChoices()) mSeen.NoteShown(choice.name, choice.text);
}

void frmExport::RestoreState() {
    // Ahead of what the controls take: what changes in between was not seen.
    NoteStored();
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
    lvCVSMapping.rows = StoredRows(CsvMapping);
    txtExportAccess.SetText(GetSubkeyText(AccessSaveSubkey, setting::ACCESS_EXPORT_PATH));
    lvAccessMap.rows = StoredRows(AccessMappingKeys);
    if (!txtExportAccess.Text().empty()) populateTableList();
    RestoreTarget();
    NoteShown();
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
