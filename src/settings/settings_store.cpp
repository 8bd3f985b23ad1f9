// Settings by way of the settings port.
#include "settings/settings_store.h"

#include <set>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "session/ports/settings_port.h"
#include "session/session.h"
#include "settings/settings_keys.h"

namespace brenvik {

namespace {

constexpr SettingsRoot Root = SettingsRoot::LocalMachine;

SettingsPort& Store() { return *ThePlatform().settings; }

std::string KeyPath(std::string_view subkey) {
    std::string path(SettingsKeyPath);
    if (!subkey.empty()) path += "\\" + std::string(subkey);
    return path;
}

/// A strict reading whose failure names the value.
template <typename Read>
auto ReadStrictly(SettingName name, Read read) {
    const std::string text = GetSettingText(name);
    try {
        return read(text);
    } catch (const Failure& failure) {
        throw Failure(failure.number(), failure.source(), failure.description(),
                      "setting " + std::string(name.text) + " is \"" + text + "\", a number was expected");
    }
}

}  // namespace

std::string GetSettingText(SettingName name) { return GetSubkeyText({}, name); }

void SaveSettingText(SettingName name, std::string_view text) { SaveSubkeyText({}, name, text); }

void DeleteSettingText(SettingName name) { DeleteSubkeyText({}, name); }

std::string GetSubkeyText(std::string_view subkey, SettingName name) {
    return Store().GetSetting(Root, KeyPath(subkey), name);
}

void SaveSubkeyText(std::string_view subkey, SettingName name, std::string_view text) {
    Store().SaveSetting(Root, KeyPath(subkey), name, text);
}

void DeleteSubkeyText(std::string_view subkey, SettingName name) {
    Store().DeleteSetting(Root, KeyPath(subkey), name);
}

std::vector<std::pair<std::string, std::string>> EnumerateSubkey(std::string_view subkey) {
    return Store().EnumerateSettings(Root, KeyPath(subkey));
}

void ChangeSettingsTogether(const std::function<void()>& changes) { Store().ChangeTogether(changes); }

bool SwitchIsOn(SettingName name) { return SwitchIsOne(GetSettingText(name)); }

double NumberSetting(SettingName name) { return LenientNumber(GetSettingText(name)); }

double StrictNumberSetting(SettingName name) { return ReadStrictly(name, StrictNumber); }

std::int32_t StrictIntegerSetting(SettingName name) { return ReadStrictly(name, StrictInteger); }

void CreateInitialSettings(MeasureUnits units, std::string_view applicationPath, bool replace) {
    ChangeSettingsTogether([=] {
        std::set<std::string, LessIgnoreCase> present;
        for (const std::string_view subkey : {std::string_view(), CsvSaveSubkey, AccessSaveSubkey})
            for (const auto& [name, text] : EnumerateSubkey(subkey)) present.insert(name);
        for (const SettingEntry& entry : SettingTable()) {
            if (!entry.createdAtInstall || (!replace && present.contains(entry.name))) continue;
            std::string_view initial = units == MeasureUnits::Metric ? entry.metric : entry.imperial;
            if (entry.name == setting::ApplicationPath) initial = applicationPath;
            SaveSubkeyText(entry.subkey, SettingName(entry.name), initial);
        }
    });
}

}  // namespace brenvik
