// The files of an installation; those that a shop edits are written only where they are missing.
#include "home/install_home.h"

#include <string>
#include <string_view>

#include "base/skip.h"
#include "export/profiles.h"
#include "grid/help.h"
#include "home/home_files.h"
#include "home/install_files.h"
#include "parts/mdatabase.h"
#include "session/ports/database_port.h"
#include "settings/home_units.h"

namespace brenvik::app {

namespace {

void WriteIfMissing(FilesPort& files, const std::string& path, const std::string& content) {
    if (!files.FileExists(path)) files.WriteFile(path, content);
}

/// In a home without settings, a library that nobody has touched is left from an installation in the other
/// units that was broken off.
void WriteMaterials(FilesPort& files, const std::string& path, MeasureUnits units) {
    const bool leftOver = files.FileExists(path) && EnumerateSubkey({}).empty() &&
                          files.ReadFile(path) == InitialMaterials(OtherThan(units));
    if (leftOver)
        files.WriteFile(path, InitialMaterials(units));
    else
        WriteIfMissing(files, path, InitialMaterials(units));
}

/// Nobody edits the help, and it has to describe this program. Where all else is there it is the first file
/// to be refused, and the home is what can't be written, not its help.
void WriteHelp(FilesPort& files, const std::string& folder) {
    if (const auto failure = Attempt([&] { files.WriteFile(folder + std::string(HelpFile), HelpText()); }))
        throw Failure(failure->number(), failure->source(), failure->description(),
                      files.PlaceOf(folder) + " (its " + std::string(HelpFile) +
                          " is to be written as the help of this program)");
}

std::string FolderOf(FilesPort& files) {
    const std::string folder = files.InstallFolder();
    return folder.ends_with('\\') ? folder : folder + '\\';
}

}  // namespace

void InstallHome(FilesPort& files, DatabasePort& database, std::optional<MeasureUnits> units) {
    const std::string folder = FolderOf(files);
    const auto at = [&folder](std::string_view name) { return folder + std::string(name); };
    const std::string databases = folder + "_db\\";
    if (!files.FolderExists(databases)) files.MakeFolder(databases);
    const auto makeDatabase = [&](std::string_view name) {
        if (const std::string path = databases + std::string(name); !files.FileExists(path))
            database.CreateBlankPartDatabase(path);
    };
    makeDatabase(mDatabase::BlankFile);
    // The working one is nobody else's to make while a program works on it.
    if (files.WorkFolder().empty()) makeDatabase(mDatabase::WorkingFile);
    {
        // Nobody makes one of them between the look and the writing.
        const auto turn = files.AwaitTurn(at(MaterialsFile));
        if (units) WriteMaterials(files, at(MaterialsFile), *units);
        WriteIfMissing(files, at(NoAdjustmentsFile), "");
        WriteIfMissing(files, at(CsvProfileFile), InitialCsvProfiles());
        WriteIfMissing(files, at(CncProfileFile), InitialCncProfiles());
    }
    WriteHelp(files, folder);
    // The settings come last: a folder with settings is a whole installation.
    if (units) CreateInitialSettings(*units, folder);
}

std::optional<MeasureUnits> UnitsOfMaterials(FilesPort& files) {
    const std::string path = FolderOf(files) + std::string(MaterialsFile);
    if (!files.FileExists(path)) return std::nullopt;
    const std::string library = files.ReadFile(path);
    for (const MeasureUnits units : {MeasureUnits::Metric, MeasureUnits::Imperial})
        if (library == InitialMaterials(units)) return units;
    return std::nullopt;
}

}  // namespace brenvik::app
