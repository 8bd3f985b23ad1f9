// Text files by way of the files port.
#include "session/text_files.h"

#include "base/failure.h"
#include "base/text_lines.h"
#include "base/utf8.h"
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
    const std::string content = ThePlatform().files->ReadFile(path);
    if (const std::string found = OtherEncodingOf(content); !found.empty())
        throw Failure(invalidFileFormat, std::string(ownSource),
                      "Invalid file format: expected text in UTF-8, found " + found, std::string(path));
    return LinesOf(content);
}

}  // namespace brenvik
