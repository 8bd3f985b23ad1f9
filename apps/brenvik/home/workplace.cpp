// The wiring. Loading comes last and unloading first: the forms of the system stand on connections that the
// platforms own.
#include "home/workplace.h"

#include <algorithm>
#include <iostream>

#include "base/failure.h"
#include "export/profiles.h"
#include "file_roots/claim.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "home/home_files.h"
#include "home/install_home.h"
#include "home/settings_file_check.h"
#include "session/library/loading.h"
#include "session/output_rule.h"
#include "session/session.h"
#include "settings/home_units.h"
#include "settings/settings_keys.h"
#include "shell/exit_status.h"
#include "shell/shell_word.h"

namespace brenvik::app {

namespace {

bool IsControl(char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }

void RequirePlainName(std::string shown) {
    const bool holdsControl = std::ranges::any_of(shown, IsControl);
    const bool holdsBackslash =
        std::filesystem::path::preferred_separator != '\\' && shown.find('\\') != std::string::npos;
    if (!holdsControl && !holdsBackslash) return;
    std::ranges::replace_if(shown, IsControl, '?');
    throw CommandError(
        ExitStatus::WrongWords,
        "--home, or BRENVIK_HOME: expected a folder's name without " +
            std::string(holdsControl ? "line breaks and other control characters"
                                     : "a backslash, which parts folders in the home's paths") +
            ", found " + shown);
}

/// A home on a drive that was taken out is not made anew, in units of nobody's choice, in the middle of a
/// call.
const std::string& HomeStillThere(const HeldHome& held) {
    const std::filesystem::path settings = HomeOf(held.option) / SettingsFile;
    std::error_code unknown;
    if (held.settings && !std::filesystem::exists(settings, unknown))
        throw CommandError(
            ExitStatus::Unreadable,
            TextFromPath(settings) + ": expected the settings that this command began with, found none");
    return held.option;
}

void Warn(const std::string& remark) { std::cerr << "brenvik: " << remark << '\n'; }

std::shared_ptr<const Claim> ClaimDatabase(const std::filesystem::path& file) {
    auto claim = std::make_shared<const Claim>(file);
    if (claim->Outcome() == Claim::State::Unknown)
        Warn(TextFromPath(file) + " can't be locked: let no other program open it at the same time");
    return claim->Outcome() == Claim::State::Taken ? nullptr : claim;
}

}  // namespace

// Settings and messages name the home's files, a line each. The system's own paths part folders by a
// backslash, so one within a name would spread the home over two folders.
std::filesystem::path HomeOf(const std::string& homeOption) {
    const std::filesystem::path home = homeOption.empty() ? DefaultHome() : PathFromText(homeOption);
    std::filesystem::path place = AbsolutePath(home).lexically_normal();
    // The folder that a relative name stands in may be what is wrong.
    for (const std::filesystem::path& named : {home, place}) RequirePlainName(TextFromPath(named));
    return place;
}

Workplace::Workplace(const std::string& homeOption, DialogPort& dialogs, Purpose purpose,
                     std::optional<MeasureUnits> units)
    : home(HomeOf(homeOption)),
      workFolder(home / "_db", Warn),
      files(home),
      settings(home / SettingsFile, WriteWholeFile),
      toldSettings(settings, TextFromPath(home / SettingsFile), ProgramWords(homeOption)),
      database([this](std::string_view path) { return files.Resolve(path); }, WriteWholeFile, ClaimDatabase),
      exportDatabases([this](std::string_view path) { return files.Resolve(path); }),
      shell(std::cerr),
      printer(std::cout),
      host([this](const std::filesystem::path& file,
                  std::string_view content) { WriteDrawing(file, content); },
           WriteScratchFile),
      typedCommands(host) {
    files.SetWorkFolder(workFolder);
    kept.KeepHome(home);
    toldSettings.storeFaults = [this] {
        return SettingsFileFaults(settings.Lines(), TextFromPath(home / SettingsFile));
    };
    toldSettings.lineOf = [this](std::string_view path, std::string_view name) {
        return LineOfSetting(settings.Lines(), path, name);
    };
    Load(dialogs);
    RequireReadableSettings();
    std::error_code unknown;
    if (!std::filesystem::exists(home / SettingsFile, unknown)) MakeHome(purpose, units);
}

Workplace::Workplace(const HeldHome& held, DialogPort& dialogs) : Workplace(HomeStillThere(held), dialogs) {
    if (held.settings && !mHomeWasMade) settings.HoldAt(*held.settings);
    if (held.boards && !mHomeWasMade) files.HoldAt(BoardsIn(files), *held.boards);
}

// Of two programs that come to a new home at once, one makes it while the other waits. The settings file is
// the last of the home's files, and comes as a whole.
void Workplace::MakeHome(Purpose purpose, std::optional<MeasureUnits> units) {
    files.MakeFolder(files.InstallFolder());
    settings.ChangeTogether([&] {
        mHomeWasMade = settings.EnumerateSettings(SettingsRoot::LocalMachine, SettingsKeyPath).empty();
        if (!mHomeWasMade) return;
        // An installation writes the settings last, so what lies there was somebody's home.
        std::error_code unknown;
        const bool settingsWereLost = std::filesystem::exists(home / MaterialsFile, unknown) ||
                                      std::filesystem::exists(home / CsvProfileFile, unknown);
        const std::optional<MeasureUnits> ofLibrary = UnitsOfMaterials(files);
        const MeasureUnits made = units.value_or(ofLibrary.value_or(MeasureUnits::Metric));
        InstallHome(files, database, made);
        // The name may be mistyped, and the units are not everybody's.
        if (!settingsWereLost && purpose != Purpose::Installation)
            Warn("made a new home, in " + std::string(NameOf(made)) + " units: " + TextFromPath(home));
        if (settingsWereLost && !units)
            toldSettings.TellDamage(TextFromPath(home / SettingsFile) +
                                    ": expected the settings of this home, found none; made anew in " +
                                    std::string(NameOf(made)) + " units" +
                                    (ofLibrary ? ", those of its material library"
                                               : ", which may not be those of its material library"));
    });
}

Workplace::~Workplace() { UnloadSystem(); }

// A drawing is typed at the host, saved by a journal or named by an option; here they all come along.
void Workplace::WriteDrawing(const std::filesystem::path& file, std::string_view content) {
    // What was looked at when the call began is watched by its content.
    if (!drawingFiles.Knows(file)) RequireOutputPlace(TextFromPath(file), OutputKind::Drawing);
    drawingFiles.Write(file, content);
    kept.NoteWritten(file);
    if (drawingWritten) drawingWritten(file);
}

void Workplace::Load(DialogPort& dialogs) {
    Platform platform;
    platform.dialogs = &dialogs;
    platform.settings = &toldSettings;
    platform.database = &database;
    platform.exportDatabases = &exportDatabases;
    platform.files = &files;
    platform.measuring = &host;
    platform.sections = &host;
    platform.shell = &shell;
    platform.print = &printer;
    host.SetPathResolver([this](std::string_view path) { return files.Resolve(path); });
    LoadSystem(platform);
    SetOutputRule(
        [this](std::string_view path, OutputKind kind) { return kept.At(files.Resolve(path), kind); });
}

void Workplace::RequireReadableSettings() {
    try {
        settings.EnumerateSettings(SettingsRoot::LocalMachine, SettingsKeyPath);
    } catch (const Failure& failure) {
        throw CommandError(ExitStatus::Unreadable, failure.what());
    }
}

}  // namespace brenvik::app
