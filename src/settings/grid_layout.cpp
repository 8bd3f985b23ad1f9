// Names of the grid's layout in the settings.
#include "settings/grid_layout.h"

#include "base/text.h"
#include "settings/settings_keys.h"
#include "settings/settings_store.h"

namespace brenvik {

std::string WidthName(std::string_view key) { return std::string(key) + std::string(WidthSuffix); }

void ResetGridLayout() {
    ChangeSettingsTogether([] {
        for (const SettingName name :
             {setting::DialogWidth, setting::DialogHeight, setting::DialogLeft, setting::DialogTop})
            DeleteSettingText(name);
        for (const std::string& key : Split(ColumnWidthKeyList, ','))
            DeleteSettingText(SettingName(WidthName(key)));
    });
}

}  // namespace brenvik
