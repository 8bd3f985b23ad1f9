// Places on systems without drive letters, whose file names are bytes.
#include <cstdlib>

#include "base/failure.h"
#include "file_roots/places.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

// A variable that is set to something; a relative place counts as none, since it would follow the current
// folder about.
fs::path AbsolutePlace(const EnvironmentLookup& variable, const char* name) {
    const char* text = variable(name);
    if (text == nullptr || !fs::path(text).is_absolute()) return {};
    return text;
}

}  // namespace

fs::path PathFromText(std::string_view text) { return fs::path(text); }

std::string TextFromPath(const fs::path& path) { return path.native(); }

std::string_view TextLineEnd() { return "\n"; }

fs::path RootOf(const SystemPath& path, const fs::path& home) {
    if (path.drive != 0) return home / (std::string("drive_") + path.drive);
    return path.absolute ? fs::path("/") : CurrentFolder();
}

fs::path DefaultHome() {
    return DefaultHome([](const char* name) -> const char* { return std::getenv(name); });
}

fs::path DefaultHome(const EnvironmentLookup& variable) {
    // This one is the user's own word, so a relative place is taken as it is meant.
    if (const char* named = variable("BRENVIK_HOME"); named != nullptr && *named != '\0')
        return AbsolutePath(named);
    if (const fs::path data = AbsolutePlace(variable, "XDG_DATA_HOME"); !data.empty())
        return data / "brenvik";
    if (const fs::path user = AbsolutePlace(variable, "HOME"); !user.empty())
        return user / ".local/share/brenvik";
    throw PathNotFound("none of BRENVIK_HOME, XDG_DATA_HOME and HOME names a folder");
}

}  // namespace brenvik
