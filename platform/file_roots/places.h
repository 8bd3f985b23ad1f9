// What differs from platform to platform about places: texts and paths, where a path begins, and where the
// installed system lies by default.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "file_roots/system_path.h"

namespace brenvik {

std::filesystem::path PathFromText(std::string_view text);
std::string TextFromPath(const std::filesystem::path& path);

/// The current folder. Throws Failure 76 when it has been removed under the program.
std::filesystem::path CurrentFolder();
/// A path counted from the current folder, which has to be there if the path is relative.
std::filesystem::path AbsolutePath(const std::filesystem::path& path);

/// What ends a line of a text file: LF, or CR LF on Windows.
std::string_view TextLineEnd();

/// The folder that a path's names are counted from. Drives without a platform's own are the folders
/// drive_a to drive_z of the home folder.
std::filesystem::path RootOf(const SystemPath& path, const std::filesystem::path& home);

/// Looks up a variable of the environment; null when it is not set.
using EnvironmentLookup = std::function<const char*(const char* name)>;

/// The home folder when nobody names one: BRENVIK_HOME, else the folder "brenvik" of the platform's data
/// folder ($XDG_DATA_HOME, ~/.local/share; %APPDATA% on Windows). Throws Failure 76 when the environment
/// names no place at all.
std::filesystem::path DefaultHome();
std::filesystem::path DefaultHome(const EnvironmentLookup& variable);

}  // namespace brenvik
