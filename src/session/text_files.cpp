// Text files by way of the files port.
#include "session/text_files.h"

#include <algorithm>

#include "base/file_failure.h"
#include "base/quoted.h"
#include "base/text_lines.h"
#include "base/utf8.h"
#include "base/western_text.h"
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

FileLines ReadFileLines(std::string_view path) {
    return LinesOfFile(ThePlatform().files->ReadFile(path), path);
}

FileLines LinesOfFile(std::string_view content, std::string_view path) {
    if (const std::string found = OtherEncodingOf(content); !found.empty())
        throw Failure(failure_number::InvalidFileFormat, std::string(OwnSource),
                      "Invalid file format: expected text in UTF-8, found " + found, std::string(path));
    return LinesInUtf8(content);
}

FileLines LinesInUtf8(std::string_view content) {
    FileLines file{LinesOf(content), {}};
    for (std::size_t at = 0; at < file.lines.size(); ++at) {
        if (IsUtf8(file.lines[at])) continue;
        file.lines[at] = WesternAsUtf8(file.lines[at]);
        file.guessed.push_back(at + 1);
    }
    return file;
}

std::string GuessedLineFault(std::string_view line) {
    return "expected text in UTF-8; it was taken for the Western Windows code page, as " + InQuotes(line) +
           "; save the file as UTF-8";
}

std::string ControlCharacterFault(std::string_view line) {
    const auto found = std::ranges::find_if(
        line, [](char c) { return (static_cast<unsigned char>(c) < ' ' && c != '\t') || c == '\x7F'; });
    if (found == line.end()) return {};
    const std::string_view ahead(line.begin(), found);
    return "expected text without control characters, found the character of number " +
           std::to_string(static_cast<int>(*found)) + " behind " + InQuotes(ahead) +
           "; nothing that is compared with it is equal";
}

std::vector<std::string> ReadLines(std::string_view path) { return ReadFileLines(path).lines; }

}  // namespace brenvik
