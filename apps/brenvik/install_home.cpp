// The files of an installation; those that a shop edits are written only where they are missing.
#include "install_home.h"

#include <string>
#include <string_view>

#include "install_files.h"
#include "session/database_port.h"

namespace brenvik::app {

namespace {

void WriteIfMissing(FilesPort& files, const std::string& path, const std::string& content) {
    if (!files.FileExists(path)) files.WriteFile(path, content);
}

}  // namespace

void InstallHome(FilesPort& files, DatabasePort& database, MeasureUnits units) {
    std::string folder = files.InstallFolder();
    if (!folder.ends_with('\\')) folder += '\\';
    const std::string databases = folder + "_db\\";
    if (!files.FolderExists(databases)) files.MakeFolder(databases);
    for (const std::string_view name : {"bv-back04.mdb", "bv04.mdb"})
        if (const std::string path = databases + std::string(name); !files.FileExists(path))
            database.CreateBlankPartDatabase(path);
    WriteIfMissing(files, folder + "materials.txt", InitialMaterials(units));
    WriteIfMissing(files, folder + "No Adjustments.txt", "");
    WriteIfMissing(files, folder + "BrenvikProfiles.txt", InitialCsvProfiles());
    WriteIfMissing(files, folder + "CNCProfile.txt", InitialCncProfiles());
    // Nobody edits the help, and it has to tell of this program.
    files.WriteFile(folder + "Brenvik495.chm", HelpText());
    // The settings come last: a folder with settings is a whole installation.
    CreateInitialSettings(units, folder);
}

}  // namespace brenvik::app
