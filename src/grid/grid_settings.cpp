// The grid form's settings, read and written.
#include "grid/grid_settings.h"

#include <algorithm>
#include <functional>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "grid/frm_main.h"
#include "parts/mdatabase.h"
#include "parts/part_table.h"
#include "session/session.h"
#include "settings/grid_layout.h"
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

}  // namespace

void LoadGridSettings() {
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

void SaveGridSettings() {
    Session& session = TheSession();
    frmMain& form = GridFormInstance();
    session.DialogWidth = NumberToText(form.width);
    session.DialogHeight = NumberToText(form.height);
    session.DialogLeft = NumberToText(form.left);
    session.DialogTop = NumberToText(form.top);
    SaveSettingText(setting::MDBPath, mDatabase::DatabasePathToKeep());
    SaveSettingText(setting::DialogWidth, session.DialogWidth);
    SaveSettingText(setting::DialogHeight, session.DialogHeight);
    SaveSettingText(setting::DialogLeft, session.DialogLeft);
    SaveSettingText(setting::DialogTop, session.DialogTop);
    ForEachWidthColumn(form.fpSpread1, [](GridColumn& column, std::string_view key) {
        SaveSettingText(SettingName(WidthName(key)), NumberToText(column.width));
    });
}

}  // namespace brenvik
