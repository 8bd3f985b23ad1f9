// The grid form's settings, read and written.
#include "grid/grid_settings.h"

#include <algorithm>
#include <array>
#include <functional>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "grid/frm_main.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "session/module_state.h"
#include "session/session.h"
#include "settings/grid_layout.h"
#include "settings/seen_values.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

namespace {

constexpr int LastColumnLookedAt = 100;

/// Walks the grid's columns up to the first without a header, and visits those that have a width key.
void ForEachWidthColumn(GridControl& grid,
                        const std::function<void(GridColumn&, std::string_view key)>& visit) {
    for (int column = 1; column <= std::min(LastColumnLookedAt, grid.MaxCols()); ++column) {
        GridColumn& gridColumn = grid.Column(column);
        if (gridColumn.header.empty()) return;
        const PartColumn* part = FindPartColumnByHeader(gridColumn.header);
        if (part != nullptr && !part->widthKey.empty()) visit(gridColumn, part->widthKey);
    }
}

constexpr std::array PlaceNames = {setting::MDBPath, setting::DialogWidth, setting::DialogHeight,
                                   setting::DialogLeft, setting::DialogTop};

struct GridSetting {
    std::string name, text;
};

/// What the form and its columns are now.
std::vector<GridSetting> PresentSettings() {
    frmMain& form = GridFormInstance();
    const std::array<std::string, PlaceNames.size()> texts = {
        mDatabase::DatabasePathToKeep(), NumberToText(form.width), NumberToText(form.height),
        NumberToText(form.left), NumberToText(form.top)};
    std::vector<GridSetting> settings;
    for (std::size_t at = 0; at < texts.size(); ++at)
        settings.push_back({std::string(PlaceNames[at].text), texts[at]});
    ForEachWidthColumn(form.fpSpread1, [&](GridColumn& column, std::string_view key) {
        settings.push_back({WidthName(key), NumberToText(column.width)});
    });
    return settings;
}

struct SeenGridSettings {
    SeenValues values;
};

}  // namespace

void LoadGridSettings() {
    SeenValues& seen = StateOf<SeenGridSettings>().values;
    seen.Forget();
    // Ahead of what the form takes of them: what changes in between was not seen.
    const auto note = [&seen](std::string_view name) {
        seen.NoteStored(name, GetSettingText(SettingName(name)));
    };
    for (const SettingName name : PlaceNames) note(name);
    ForEachWidthColumn(GridFormInstance().fpSpread1,
                       [&](GridColumn&, std::string_view key) { note(WidthName(key)); });
    Session& session = TheSession();
    session.ApplicationPath = GetSettingText(setting::ApplicationPath);
    session.ApplicationVersion = GetSettingText(setting::ApplicationVersion);
    session.DialogWidth = GetSettingText(setting::DialogWidth);
    session.DialogHeight = GetSettingText(setting::DialogHeight);
    session.DialogLeft = GetSettingText(setting::DialogLeft);
    session.DialogTop = GetSettingText(setting::DialogTop);
    mDatabase::TakeWorkingDatabasePath();
    session.SettingsEvent = SwitchIsNotZero(GetSettingText(setting::SettingsEvent));
    session.MeasureNonSolids = SwitchIsNotZero(GetSettingText(setting::MeasureNonSolids));
    session.NoMeasure = SwitchIsNotZero(GetSettingText(setting::NoMeasure));

    const std::vector<std::string> keys = Split(ColumnWidthKeyList, ',');
    session.ColumnCaptions.assign(keys.size(), {});
    ForEachWidthColumn(GridFormInstance().fpSpread1, [&](GridColumn& column, std::string_view key) {
        const std::string width = GetSettingText(SettingName(WidthName(key)));
        if (IsNumeric(width)) column.width = StrictNumber(width);
        const auto place = std::find(keys.begin(), keys.end(), key) - keys.begin();
        session.ColumnCaptions[static_cast<std::size_t>(place)] = width;
    });
}

void NoteGridSettingsShown() {
    for (const GridSetting& each : PresentSettings())
        StateOf<SeenGridSettings>().values.NoteShown(each.name, each.text);
}

void SaveGridSettings() {
    Session& session = TheSession();
    frmMain& form = GridFormInstance();
    session.DialogWidth = NumberToText(form.width);
    session.DialogHeight = NumberToText(form.height);
    session.DialogLeft = NumberToText(form.left);
    session.DialogTop = NumberToText(form.top);
    const SeenValues& seen = StateOf<SeenGridSettings>().values;
    ChangeSettingsTogether([&] {
        for (const GridSetting& each : PresentSettings()) {
            const SettingName name(each.name);
            if (seen.ChangeOf(each.name, GetSettingText(name), each.text) != ValueChange::Elsewhere)
                SaveSettingText(name, each.text);
        }
    });
}

}  // namespace brenvik
