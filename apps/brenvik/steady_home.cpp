// Looking at the home before and after.
#include "steady_home.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>

#include "base/failure.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "home_files.h"
#include "settings/setting_names.h"
#include "settings/settings_keys.h"
#include "settings_store/text_settings.h"
#include "workplace.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// What no command on a drawing changes itself, and lists and files are made by.
constexpr std::array DecidingSettings{
    setting::WCSMeasure,       setting::NoMeasure,        setting::MeasureNonSolids,
    setting::PocketConversion, setting::BiesseWorksNest,  setting::ConvertMaterialName,
    setting::HorzBoreOn2,      setting::TwoSideUCS,       setting::DeleteOT,
    setting::ToungeProcessing, setting::DontDoTwoSided,   setting::SpecialMaterial,
    setting::CNCApplyClose,    setting::CNCSave,          setting::ExportScaleSetting,
    setting::CircleSize,       setting::BiesseWorksSpoil, setting::CNCMultiplier,
    setting::DrillSpoilAmount, setting::BWPriority,       setting::ClearCores,
    setting::HomeUnits};

struct HomeState {
    std::map<std::string_view, std::string> settings;
    std::string boards;
};

std::string ContentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Nothing of a home that isn't there or can't be read, which the work itself reports.
std::optional<HomeState> StateOf(const fs::path& home) {
    std::error_code unknown;
    if (!fs::exists(home / SettingsFile, unknown)) return std::nullopt;
    HomeState state;
    try {
        TextSettings settings(home / SettingsFile, WriteWholeFile);
        for (const SettingName& name : DecidingSettings)
            state.settings[name] = settings.GetSetting(SettingsRoot::LocalMachine, SettingsKeyPath, name);
    } catch (const Failure&) {
        return std::nullopt;
    }
    state.boards = ContentOf(home / MaterialsFile);
    return state;
}

/// Reports the differences; whether there are any.
bool TellChanges(const fs::path& home, HomeUse use, const HomeState& before, const HomeState& after) {
    bool changed = false;
    const auto tell = [&](std::string_view file, const std::string& what) {
        std::cerr
            << "brenvik: " << TextFromPath(home / file) << ": " << what
            << " by another program while this one was at work, so that its output may be made by the old "
               "state in part and by the new one in part: run it again\n";
        changed = true;
    };
    for (const auto& [name, value] : before.settings) {
        const std::string& now = after.settings.at(name);
        if (now != value)
            tell(SettingsFile, std::string(name) + " was changed from \"" + value + "\" to \"" + now + "\"");
    }
    if (use == HomeUse::SettingsAndBoards && !after.boards.starts_with(before.boards))
        tell(MaterialsFile, "the boards were changed");
    return changed;
}

}  // namespace

ExitStatus WhileHomeIsSteady(const std::string& homeOption, HomeUse use,
                             const std::function<ExitStatus()>& work) {
    const fs::path home = HomeOf(homeOption);
    const std::optional<HomeState> before = StateOf(home);
    const ExitStatus status = work();
    if (!before) return status;
    const std::optional<HomeState> after = StateOf(home);
    const bool changed = after && TellChanges(home, use, *before, *after);
    return changed ? std::max(status, ExitStatus::Incomplete) : status;
}

}  // namespace brenvik::app
