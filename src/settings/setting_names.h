// The settings by name. Whoever reads or writes a setting names it by a constant, so that a misspelt name
// doesn't compile; a store answers an unknown name with a blank, which would read as a switch that is off.
#pragma once

#include <string_view>

namespace brenvik {

/// The name of a setting. Made from a text only where names come from a table, such as the column widths.
struct SettingName {
    std::string_view text;

    constexpr explicit SettingName(std::string_view name) : text(name) {}
    constexpr operator std::string_view() const { return text; }
};

namespace setting {

inline constexpr SettingName WCSMeasure{"WCSMeasure"};
inline constexpr SettingName NoMeasure{"NoMeasure"};
inline constexpr SettingName MeasureNonSolids{"MeasureNonSolids"};
inline constexpr SettingName SettingsEvent{"SettingsEvent"};
inline constexpr SettingName PocketConversion{"PocketConversion"};
inline constexpr SettingName BiesseWorksNest{"BiesseWorksNest"};
inline constexpr SettingName ConvertMaterialName{"ConvertMaterialName"};
inline constexpr SettingName MyWindowState{"MyWindowState"};
inline constexpr SettingName HorzBoreOn2{"HorzBoreOn2"};
inline constexpr SettingName TwoSideUCS{"2SideUCS"};
inline constexpr SettingName DeleteOT{"DeleteOT"};
inline constexpr SettingName ToungeProcessing{"ToungeProcessing"};
inline constexpr SettingName DontDoTwoSided{"DontDoTwoSided"};
inline constexpr SettingName SpecialMaterial{"SpecialMaterial"};
inline constexpr SettingName CNCApplyClose{"CNCApplyClose"};
inline constexpr SettingName CNCSave{"CNCSave"};
inline constexpr SettingName ExportScaleSetting{"ExportScaleSetting"};
inline constexpr SettingName CircleSize{"CircleSize"};
inline constexpr SettingName BiesseWorksSpoil{"BiesseWorksSpoil"};
inline constexpr SettingName CNCMultiplier{"CNCMultiplier"};
inline constexpr SettingName DrillSpoilAmount{"DrillSpoilAmount"};
inline constexpr SettingName BWPriority{"BWPriority"};
inline constexpr SettingName ClearCores{"ClearCores"};
inline constexpr SettingName HomeUnits{"HomeUnits"};
inline constexpr SettingName ApplicationPath{"ApplicationPath"};
inline constexpr SettingName ApplicationVersion{"ApplicationVersion"};
inline constexpr SettingName MDBPath{"MDBPath"};
inline constexpr SettingName DialogWidth{"DialogWidth"};
inline constexpr SettingName DialogHeight{"DialogHeight"};
inline constexpr SettingName DialogLeft{"DialogLeft"};
inline constexpr SettingName DialogTop{"DialogTop"};
inline constexpr SettingName Skipandcontinue{"Skipandcontinue"};
inline constexpr SettingName skipandcontinuevalue{"skipandcontinuevalue"};
inline constexpr SettingName EXPORT_TYPE{"EXPORT_TYPE"};
inline constexpr SettingName SAVE_SWITCH{"SAVE_SWITCH"};
inline constexpr SettingName CVS_ADJ_PATH{"CVS_ADJ_PATH"};
inline constexpr SettingName CVS_EXPORT_PATH{"CVS_EXPORT_PATH"};
inline constexpr SettingName CVS_MAPPING_SWITCH{"CVS_MAPPING_SWITCH"};
inline constexpr SettingName CSV_REDUCE{"CSV_REDUCE"};
inline constexpr SettingName CVS_COL_COUNT{"CVS_COL_COUNT"};
inline constexpr SettingName CVS_COL_KEY{"CVS_COL_KEY"};
inline constexpr SettingName CVS_COL_VALUE{"CVS_COL_VALUE"};
inline constexpr SettingName ACCESS_EXPORT_PATH{"ACCESS_EXPORT_PATH"};
inline constexpr SettingName ACCESS_TABLE_NAME{"ACCESS_TABLE_NAME"};
inline constexpr SettingName ACCESS_MAP_COUNT{"ACCESS_MAP_COUNT"};
inline constexpr SettingName ACCESS_KEY{"ACCESS_KEY"};
inline constexpr SettingName ACCESS_VALUE{"ACCESS_VALUE"};
inline constexpr SettingName ACCESS_TAG{"ACCESS_TAG"};
inline constexpr SettingName ACCESS_TO{"ACCESS_TO"};

}  // namespace setting

}  // namespace brenvik
