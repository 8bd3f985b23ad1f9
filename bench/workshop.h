// The system loaded over platforms of its own in a temporary home, as the command line wires it.
#pragma once

#include <filesystem>
#include <iostream>

#include "console/console_dialogs.h"
#include "console/console_shell.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/file_roots.h"
#include "part_table/sqlite_database.h"
#include "settings_store/text_settings.h"

namespace brenvik::bench {

class Workshop {
  public:
    Workshop();
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// Selects every solid of the active drawing; how many.
    int SelectSolids();
    /// Opens the grid form, which measures the selection into the part table, and closes it; how many
    /// rows the list had.
    int Scan();

    HostApplication& Host() { return mHost; }

  private:
    std::filesystem::path mHome;
    FileRoots mFiles;
    TextSettings mSettings;
    SqliteDatabase mDatabase;
    ConsoleDialogs mDialogs{std::cerr};
    ConsoleShell mShell{std::cerr};
    HostApplication mHost;
};

}  // namespace brenvik::bench
