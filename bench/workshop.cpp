// Wiring, and the way from a selection to a list.
#include "workshop.h"

#include <random>
#include <string>
#include <system_error>
#include <vector>

#include "drafting_host/command/commands/built_in_commands.h"
#include "file_roots/whole_file.h"
#include "forms/form.h"
#include "forms/grid_control.h"
#include "grid/frm_main.h"
#include "session/library/brenvik_class.h"
#include "session/library/loading.h"
#include "session/session.h"
#include "settings/settings_store.h"

namespace brenvik::bench {
namespace {

std::filesystem::path NewHome() {
    return std::filesystem::temp_directory_path() /
           ("brenvik-bench-home-" + std::to_string(std::random_device{}()));
}

}  // namespace

Workshop::Workshop(std::ostream& told)
    : mHome(NewHome()),
      mFiles(mHome),
      mSettings(mHome / "settings.txt", WriteWholeFile),
      mDatabase([this](std::string_view path) { return mFiles.Resolve(path); }, WriteWholeFile),
      mDialogs(told),
      mShell(told),
      mHost(WriteWholeFile, WriteScratchFile),
      mCommandLine(mHost, FindBuiltInCommand) {
    mHost.SetPathResolver([this](std::string_view path) { return mFiles.Resolve(path); });
    Platform platform;
    platform.dialogs = &mDialogs;
    platform.settings = &mSettings;
    platform.database = &mDatabase;
    platform.files = &mFiles;
    platform.measuring = &mHost;
    platform.sections = &mHost;
    platform.shell = &mShell;
    LoadSystem(platform);
    const std::string databases = mFiles.InstallFolder() + "\\_db\\";
    mFiles.MakeFolder(databases);
    mDatabase.CreateBlankPartDatabase(databases + "bv-back04.mdb");
    mDatabase.CreateBlankPartDatabase(databases + "bv04.mdb");
    CreateInitialSettings(MeasureUnits::Metric, mFiles.InstallFolder() + "\\");
}

Workshop::~Workshop() {
    UnloadSystem();
    std::error_code ignored;
    std::filesystem::remove_all(mHome, ignored);
}

int Workshop::SelectSolids() {
    HostDocument* document = mHost.Active();
    if (document == nullptr) return 0;
    std::vector<HostEntity*> solids;
    document->ModelSpace().ForEach([&solids](AcadEntity& entity) {
        if (entity.ObjectName() == "AcDb3dSolid") solids.push_back(dynamic_cast<HostEntity*>(&entity));
    });
    document->SetPreviousSelection(solids);
    return static_cast<int>(solids.size());
}

int Workshop::Scan() {
    int rows = 0;
    WithList([&rows](frmMain& form) {
        if (const Recordset* records = form.Adodc1.Records()) rows = records->RecordCount();
    });
    return rows;
}

void Workshop::WithList(const std::function<void(frmMain&)>& work) {
    mDialogs.whileOpen = [&work](Form& form) { work(dynamic_cast<frmMain&>(form)); };
    cBrenvik().Show(mHost);
    mDialogs.whileOpen = nullptr;
}

std::string Workshop::InstallFile(std::string_view name, std::string_view text) {
    std::string path = mFiles.InstallFolder() + "\\" + std::string(name);
    mFiles.WriteFile(path, text);
    return path;
}

}  // namespace brenvik::bench
