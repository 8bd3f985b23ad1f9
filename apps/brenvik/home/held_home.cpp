// Reading both files.
#include "home/held_home.h"

#include <filesystem>
#include <utility>

#include "base/skip.h"
#include "file_roots/file_roots.h"
#include "file_roots/places.h"
#include "home/home_files.h"
#include "home/workplace.h"

namespace brenvik::app {

namespace {

std::optional<std::string> ContentOf(FilesPort& files, const std::string& path) {
    std::optional<std::string> content;
    Skip([&] { content = files.ReadFile(path); });
    return content;
}

}  // namespace

HeldHome HoldHome(const std::string& homeOption) {
    const std::filesystem::path home = HomeOf(homeOption);
    FileRoots files(home);
    HeldHome held{homeOption, ContentOf(files, TextFromPath(home / SettingsFile)), {}};
    if (held.settings) held.boards = ContentOf(files, BoardsIn(files));
    return held;
}

std::string BoardsIn(FilesPort& files) { return files.InstallFolder() + "\\" + std::string(MaterialsFile); }

}  // namespace brenvik::app
