// Places on Windows, which has drive letters and a data folder of its own.
#include <cstdlib>

#include "base/failure.h"
#include "base/path_text.h"
#include "file_roots/places.h"

namespace brenvik {

namespace fs = std::filesystem;

fs::path PathFromText(std::string_view text) { return fs::path(std::u8string(text.begin(), text.end())); }

std::string TextFromPath(const fs::path& path) { return PathText(path); }

std::string_view TextLineEnd() { return "\r\n"; }

fs::path RootOf(const SystemPath& path, const fs::path&) {
    if (path.drive != 0) return fs::path(std::string(1, path.drive) + ":\\");
    return path.absolute ? CurrentFolder().root_path() : CurrentFolder();
}

fs::path DefaultHome() {
    return DefaultHome([](const char* name) -> const char* { return std::getenv(name); });
}

fs::path DefaultHome(const EnvironmentLookup& variable) {
    if (const char* named = variable("BRENVIK_HOME"); named != nullptr && *named != '\0')
        return AbsolutePath(named);
    if (const char* data = variable("APPDATA"); data != nullptr && *data != '\0')
        return fs::path(data) / "brenvik";
    throw PathNotFound("neither BRENVIK_HOME nor APPDATA names a folder");
}

}  // namespace brenvik
