// Everything that stands behind the ports, handed over once when the library is loaded.
#pragma once

namespace brenvik {

class DatabasePort;
class DialogPort;
class ExportDatabasePort;
class FilesPort;
class MeasuringPort;
class PrintPort;
class SectionPort;
class SettingsPort;
class ShellPort;

/// All members must be set; the owners outlive the loaded library. `print`, `shell`,
/// `exportDatabases` and `sections` may be null where the platform has none.
struct Platform {
    DialogPort* dialogs = nullptr;
    SettingsPort* settings = nullptr;
    DatabasePort* database = nullptr;
    FilesPort* files = nullptr;
    MeasuringPort* measuring = nullptr;
    PrintPort* print = nullptr;
    ShellPort* shell = nullptr;
    ExportDatabasePort* exportDatabases = nullptr;
    SectionPort* sections = nullptr;
};

}  // namespace brenvik
