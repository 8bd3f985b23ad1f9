// The system loaded over platforms of its own in a temporary home, as the command line wires it.
#pragma once

#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <string_view>

#include "console/console_dialogs.h"
#include "console/console_shell.h"
#include "drafting_host/command/session/host_command_line.h"
#include "drafting_host/document/host_application.h"
#include "file_roots/file_roots.h"
#include "part_table/sqlite_database.h"
#include "settings_store/text_settings.h"

namespace brenvik {
class frmMain;
}

namespace brenvik::bench {

class Workshop {
  public:
    /// Message boxes are told on `told`, which has to outlive the workshop.
    explicit Workshop(std::ostream& told = std::cerr);
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    /// Selects every solid of the active drawing; how many.
    int SelectSolids();
    /// Opens the grid form, which measures the selection into the part table, and closes it; how many
    /// rows the list had.
    int Scan();
    /// The same with something to do while the form is open.
    void WithList(const std::function<void(frmMain&)>& work);
    /// Puts a file into the installed folder; its path as the system writes it.
    std::string InstallFile(std::string_view name, std::string_view text);

    HostApplication& Host() { return mHost; }
    FileRoots& Files() { return mFiles; }

  private:
    std::filesystem::path mHome;
    FileRoots mFiles;
    TextSettings mSettings;
    SqliteDatabase mDatabase;
    ConsoleDialogs mDialogs;
    ConsoleShell mShell;
    HostApplication mHost;
    HostCommandLine mCommandLine;
};

}  // namespace brenvik::bench
