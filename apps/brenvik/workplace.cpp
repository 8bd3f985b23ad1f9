// The wiring. Loading comes last and unloading first: the forms of the system stand on connections that the
// platforms own.
#include "workplace.h"

#include <iostream>

#include "base/failure.h"
#include "exit_status.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "install_home.h"
#include "session/session.h"
#include "settings/settings_keys.h"

namespace brenvik::app {

namespace {

constexpr const char* settingsFileName = "settings.txt";

}  // namespace

std::filesystem::path HomeOf(const std::string& homeOption) {
    const std::filesystem::path home = homeOption.empty() ? DefaultHome() : PathFromText(homeOption);
    return AbsolutePath(home).lexically_normal();
}

Workplace::Workplace(const std::string& homeOption, DialogPort& dialogs, MeasureUnits units)
    : home(HomeOf(homeOption)),
      files(home),
      settings(home / settingsFileName, WriteWholeFile),
      database([this](std::string_view path) { return files.Resolve(path); }),
      exportDatabases([this](std::string_view path) { return files.Resolve(path); }),
      shell(std::cerr),
      printer(std::cout),
      host(WriteWholeFile, WriteScratchFile),
      typedCommands(host) {
    Load(dialogs);
    RequireReadableSettings();
    std::error_code unknown;
    homeWasMade = !std::filesystem::exists(home / settingsFileName, unknown);
    if (homeWasMade) InstallHome(files, database, units);
}

Workplace::~Workplace() { UnloadSystem(); }

void Workplace::Load(DialogPort& dialogs) {
    Platform platform;
    platform.dialogs = &dialogs;
    platform.settings = &settings;
    platform.database = &database;
    platform.exportDatabases = &exportDatabases;
    platform.files = &files;
    platform.measuring = &host;
    platform.shell = &shell;
    platform.print = &printer;
    host.SetPathResolver([this](std::string_view path) { return files.Resolve(path); });
    LoadSystem(platform);
}

void Workplace::RequireReadableSettings() {
    try {
        settings.EnumerateSettings(SettingsRoot::LocalMachine, SettingsKeyPath);
    } catch (const Failure& failure) {
        throw CommandError(ExitStatus::Unreadable, failure.what());
    }
}

}  // namespace brenvik::app
