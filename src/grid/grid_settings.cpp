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
    session.ApplicationPath = GetSettingText("ApplicationPath");
    session.ApplicationVersion = GetSettingText("ApplicationVersion");
    session.DialogWidth = GetSettingText("DialogWidth");
    session.DialogHeight = GetSettingText("DialogHeight");
    session.DialogLeft = GetSettingText("DialogLeft");
    session.DialogTop = GetSettingText("DialogTop");
    mDatabase::TakeWorkingDatabasePath();
    session.SettingsEvent = SwitchIsNotZero(GetSettingText("SettingsEvent"));
    session.MeasureNonSolids = SwitchIsNotZero(GetSettingText("MeasureNonSolids"));
    session.NoMeasure = SwitchIsNotZero(GetSettingText("NoMeasure"));

    const std::vector<std::string> keys = Split(ColumnWidthKeyList, ',');
    session.ColumnCaptions.assign(keys.size(), {});
    ForEachWidthColumn(GridFormInstance().fpSpread1, [&](GridColumn& column, std::string_view key) {
        const std::string width = GetSettingText(WidthName(key));
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
    SaveSettingText("MDBPath", mDatabase::DatabasePathToKeep());
    SaveSettingText("DialogWidth", session.DialogWidth);
    SaveSettingText("DialogHeight", session.DialogHeight);
    SaveSettingText("DialogLeft", session.DialogLeft);
    SaveSettingText("DialogTop", session.DialogTop);
    ForEachWidthColumn(form.fpSpread1, [](GridColumn& column, std::string_view key) {
        SaveSettingText(WidthName(key), NumberToText(column.width));
    });
}

}  // namespace brenvik
