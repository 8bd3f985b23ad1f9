// The system with all its platforms: where they lie, wired once, loaded and unloaded.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "console/console_shell.h"
#include "console/text_printer.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/file_roots.h"
#include "file_roots/guarded_files.h"
#include "home/held_home.h"
#include "home/kept_files.h"
#include "home/told_settings.h"
#include "home/typed_commands.h"
#include "odbc/odbc_database.h"
#include "part_table/sqlite_database.h"
#include "settings/settings_store.h"
#include "settings_store/text_settings.h"

namespace brenvik::app {

class Workplace {
  public:
    enum class Purpose { Work, Installation };
    /// Wires the platforms over the home folder (blank: the default one) and loads the system. A home without
    /// settings gets them first, in `units`, else in those of an untouched library that lies there, else in
    /// metric units. Settings that were lost from a home are reported, unless `units` gives them. Throws
    /// CommandError for settings that can't be read, and Failure where the home can't be made. `dialogs` must
    /// outlive the workplace. Reports a newly made home on standard error, unless an `Installation` made it.
    Workplace(const std::string& homeOption, DialogPort& dialogs, Purpose purpose = Purpose::Work,
              std::optional<MeasureUnits> units = {});
    /// The same, with the settings and the boards as they have been taken: reads go on seeing these and what
    /// is saved here, whatever other programs write.
    Workplace(const HeldHome& held, DialogPort& dialogs);
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    const std::filesystem::path home;
    WorkFolder workFolder;
    FileRoots files;
    TextSettings settings;
    /// The settings as the system reads them, with bad values reported.
    ToldSettings toldSettings;
    SqliteDatabase database;
    OdbcDatabase exportDatabases;
    ConsoleShell shell;
    TextPrinter printer;
    /// What no output of this call may take the place of: the home's own files, and what a command adds.
    KeptFiles kept;
    /// What drawings are saved through.
    GuardedFiles drawingFiles;
    /// Called with the place of each drawing that was saved.
    std::function<void(const std::filesystem::path&)> drawingWritten;
    HostApplication host;
    TypedCommands typedCommands;
    /// Whether this workplace was the first in its home.
    bool HomeWasMade() const { return mHomeWasMade; }

  private:
    void Load(DialogPort& dialogs);
    void RequireReadableSettings();
    void MakeHome(Purpose purpose, std::optional<MeasureUnits> units);
    void WriteDrawing(const std::filesystem::path& file, std::string_view content);

    bool mHomeWasMade = false;
};

/// The home folder that the option names, or the default one; absolute.
std::filesystem::path HomeOf(const std::string& homeOption);

}  // namespace brenvik::app
