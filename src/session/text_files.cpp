// Text files by way of the files port.
#include "session/text_files.h"

#include "base/text_lines.h"
#include "session/ports/files_port.h"
#include "session/session.h"

namespace brenvik {

std::string ApplicationFolder() {
    std::string folder = TheSession().InstallFolder;
    if (!folder.ends_with('\\')) folder += '\\';
    return folder;
}

std::string HandOverFolder() {
    std::string own = ThePlatform().files->WorkFolder();
    return own.empty() ? ApplicationFolder() : own;
}

std::vector<std::string> ReadLines(std::string_view path) {
    return LinesOf(ThePlatform().files->ReadFile(path));
}

}  // namespace brenvik
