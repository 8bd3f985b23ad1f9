// The settings as every module reads them: text values under the system's key, converted at use, with no
// cache. A value that isn't there reads as blank.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "settings/setting_names.h"

namespace brenvik {

/// The value as it stands.
std::string GetSettingText(SettingName name);
void SaveSettingText(SettingName name, std::string_view text);
void DeleteSettingText(SettingName name);

/// The same under a subkey, such as `CSV_SAVE`.
std::string GetSubkeyText(std::string_view subkey, SettingName name);
void SaveSubkeyText(std::string_view subkey, SettingName name, std::string_view text);
void DeleteSubkeyText(std::string_view subkey, SettingName name);
/// Names and values directly under a subkey.
std::vector<std::pair<std::string, std::string>> EnumerateSubkey(std::string_view subkey);
/// Saves and deletes as one change of the store, and reads what it changes: see the settings port.
void ChangeSettingsTogether(const std::function<void()>& changes);

/// Whether a switch is on: exactly 1 counts.
bool SwitchIsOn(SettingName name);
/// The number by the lenient rule: 0 for blank and for text that is no number.
double NumberSetting(SettingName name);
/// The number by the strict rule. Fails with 13, naming the value, when it is no number, as a blank is.
double StrictNumberSetting(SettingName name);
/// The same as a whole number, halves to even; fails with 6 out of range.
std::int32_t StrictIntegerSetting(SettingName name);

enum class MeasureUnits { Metric, Imperial };

/// Writes the values that an installation begins with. A value that is there already stays, so that a
/// second installation keeps what the shop has chosen; with `replace` the present ones are written over.
/// `applicationPath` is the folder that `ApplicationPath` names.
void CreateInitialSettings(MeasureUnits units, std::string_view applicationPath, bool replace = false);

}  // namespace brenvik
