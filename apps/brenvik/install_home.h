// Makes the install folder, as an installer would.
#pragma once

#include <optional>

#include "session/files_port.h"
#include "settings/settings_store.h"

namespace brenvik {
class DatabasePort;
}

namespace brenvik::app {

/// Writes what an installation begins with and is not there yet; what a shop has changed stays. Needs the
/// loaded system, for the settings. Throws Failure when the folder can't be written.
void InstallHome(FilesPort& files, DatabasePort& database, MeasureUnits units);

/// What the parts of the home's drawings are measured in, by its settings; nothing when they don't say.
std::optional<MeasureUnits> UnitsOfHome();

}  // namespace brenvik::app
