// Makes the install folder, as an installer would.
#pragma once

#include <optional>

#include "session/ports/files_port.h"
#include "settings/settings_store.h"

namespace brenvik {
class DatabasePort;
}

namespace brenvik::app {

/// Writes the missing parts of a new installation; changes that a shop has made stay. Without units, only the
/// parts that don't depend on them. Needs the loaded system, for the settings. Throws Failure if the folder
/// can't be written.
void InstallHome(FilesPort& files, DatabasePort& database, std::optional<MeasureUnits> units);

/// The units of a material library that is as an installation wrote it.
std::optional<MeasureUnits> UnitsOfMaterials(FilesPort& files);

}  // namespace brenvik::app
