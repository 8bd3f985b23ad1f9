// All values of the settings store, said once: name, place, what it holds, the control that edits it, and
// what an installation begins with.
#pragma once

#include <span>
#include <string_view>

namespace brenvik {

/// Key path under the root, and the subkeys of the export dialog's values.
inline constexpr std::string_view SettingsKeyPath = "SOFTWARE\\Orvane, Inc.\\Brenvik04";
inline constexpr std::string_view CsvSaveSubkey = "CSV_SAVE";
inline constexpr std::string_view AccessSaveSubkey = "ACCESS_SAVE";

enum class SettingKind {
    Switch,   ///< "1" on, "0" off.
    Choice,   ///< The number of an option button, from 1.
    Number,   ///< Typed by the user, read by the lenient rule.
    Text,     ///< Anything, such as a path.
    Counted,  ///< A family of values: the name is followed by a number from 0.
};

struct SettingEntry {
    std::string_view name;
    std::string_view subkey;  ///< Blank for values that stand directly under the key.
    SettingKind kind;
    std::string_view control;  ///< On the settings dialog; blank for a value that it doesn't show.
    std::string_view caption;  ///< Of that control.
    bool createdAtInstall;     ///< A value that isn't reads as blank until the system first writes it.
    std::string_view metric, imperial;  ///< What an installation begins with.
};

/// All values but the column widths, which follow from the column width key list.
std::span<const SettingEntry> SettingTable();
/// By name without regard to case; null for an unknown one.
const SettingEntry* FindSetting(std::string_view name);

/// The captions of `chkRunEvent` by its state.
inline constexpr std::string_view RunEventOffCaption = "Check to turn on automatic updating of ORIE data";
inline constexpr std::string_view RunEventOnCaption = "Uncheck to turn off automatic updating of ORIE data";

/// The captions of `Option1` to `Option4`, the numbers of `ExportScaleSetting`. Two end in blanks.
std::span<const std::string_view> ExportScaleCaptions();

/// Names of the column widths in the settings, without the suffix "_WIDTH".
inline constexpr std::string_view ColumnWidthKeyList =
    "QUANTITY,PARTNAME,SUBASSEMBLY,MATERIAL,LWT,X,Y,Z,NOTES,USERDATA1,USERDATA2,PN,PRICE,EB1,EB2,EB3,EB4,"
    "FACE,LAYERNAME";
/// The suffix that makes the name of a column width from its key.
inline constexpr std::string_view WidthSuffix = "_WIDTH";

}  // namespace brenvik
