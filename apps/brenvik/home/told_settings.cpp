// Looking at values as they go by.
#include "home/told_settings.h"

#include <algorithm>
#include <iostream>
#include <utility>

#include "settings/home_units.h"
#include "settings/setting_names.h"
#include "settings/setting_values.h"
#include "settings/settings_keys.h"

namespace brenvik::app {

std::string ValueFaultAt(std::string_view path, std::string_view name, std::string_view value) {
    return StartsWithIgnoreCase(path, SettingsKeyPath) ? SettingValueFault(name, value) : std::string();
}

ToldSettings::ToldSettings(SettingsPort& settingsStore, std::string shownFile, std::string programWords)
    : tell([](const std::string& text) { std::cerr << "brenvik: " << text << '\n'; }),
      mStore(settingsStore),
      mFile(std::move(shownFile)),
      mProgram(std::move(programWords)) {}

void ToldSettings::Look(std::string_view path, std::string_view name, std::string_view value) {
    if (StartsWithIgnoreCase(path, SettingsKeyPath)) TellStoreFaults();
    std::string expected = ValueFaultAt(path, name, value);
    if (expected.empty() && EqualsIgnoreCase(path, SettingsKeyPath) &&
        EqualsIgnoreCase(name, setting::ExportScaleSetting))
        expected = ExportScaleFault(
            value, UnitsNamed(GetSetting(SettingsRoot::LocalMachine, path, setting::HomeUnits)));
    if (expected.empty() || !mTold.insert(std::string(path) + "\\" + std::string(name)).second) return;
    const bool missing = value.empty() && !IsStored(path, name);
    const std::size_t line = missing || !lineOf ? 0 : lineOf(path, name);
    Tell(mFile + (line == 0 ? "" : ":" + std::to_string(line)) + ": " + std::string(name) +
         (missing ? " is missing" : " is \"" + std::string(value) + "\"") + ", expected " + expected +
         (missing ? "; to set it: " : "; to change it: ") + mProgram + " settings set " + std::string(name) +
         " VALUE");
}

bool ToldSettings::IsStored(std::string_view path, std::string_view name) {
    const auto values = mStore.EnumerateSettings(SettingsRoot::LocalMachine, path);
    return std::ranges::any_of(values,
                               [&](const auto& value) { return EqualsIgnoreCase(value.first, name); });
}

void ToldSettings::TellStoreFaults() {
    if (std::exchange(mStoreLookedAt, true) || !storeFaults) return;
    for (const std::string& fault : storeFaults()) Tell(fault);
}

void ToldSettings::Tell(const std::string& text) {
    mDamageFound = true;
    tell(text);
}

std::string ToldSettings::GetSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    std::string value = mStore.GetSetting(root, path, name);
    Look(path, name, value);
    return value;
}

void ToldSettings::SaveSetting(SettingsRoot root, std::string_view path, std::string_view name,
                               std::string_view text) {
    mStore.SaveSetting(root, path, name, text);
    // The settings dialog takes whatever was typed. An installation writes the scale ahead of the units.
    const bool isJudged =
        !EqualsIgnoreCase(name, setting::ExportScaleSetting) || IsStored(SettingsKeyPath, setting::HomeUnits);
    if (isJudged) Look(path, name, text);
}

void ToldSettings::DeleteSetting(SettingsRoot root, std::string_view path, std::string_view name) {
    mStore.DeleteSetting(root, path, name);
}

std::vector<std::pair<std::string, std::string>> ToldSettings::EnumerateSettings(SettingsRoot root,
                                                                                 std::string_view path) {
    return mStore.EnumerateSettings(root, path);
}

void ToldSettings::ChangeTogether(const std::function<void()>& changes) { mStore.ChangeTogether(changes); }

}  // namespace brenvik::app
