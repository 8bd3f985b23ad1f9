// Makes the install folder, as an installer would.
#pragma once

#include "session/files_port.h"
#include "settings/settings_store.h"

namespace brenvik {
class DatabasePort;
}

namespace brenvik::app {

/// Writes what an installation begins with and is not there yet; what a shop has changed stays. Needs the
/// loaded system, for the settings. Throws Failure when the folder can't be written.
void InstallHome(FilesPort& files, DatabasePort& database, MeasureUnits units);

}  // namespace brenvik::app
