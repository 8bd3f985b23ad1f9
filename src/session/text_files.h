// The text files that are delivered with the system or kept by its users: where they lie, and their lines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// The folder of the installed system with a backslash at its end: where the delivered files lie.
std::string ApplicationFolder();

/// Where the lists that the grid hands over to a CNC run lie: in the application folder, or in a folder of
/// this program's own while another program is at work in that one. With a backslash at its end.
std::string HandOverFolder();

/// The lines of a file, all in UTF-8.
struct FileLines {
    std::vector<std::string> lines;
    /// The numbers of those that were none and have been taken for the Western Windows code page. That is a
    /// guess, and whoever reads by them has to say so.
    std::vector<std::size_t> guessed;
};
/// The lines of a content that has been read.
FileLines LinesInUtf8(std::string_view content);
/// The same, and a failure with 321, naming the path, for a content in UTF-16.
FileLines LinesOfFile(std::string_view content, std::string_view path);
/// Reads them by way of the files port; fails as ReadLines does.
FileLines ReadFileLines(std::string_view path);

/// What to say of a guessed line.
std::string GuessedLineFault(std::string_view line);

/// What to say of a line with a control character other than a tab: nobody sees it, and what is compared with
/// the line differs by it. Blank for any other.
std::string ControlCharacterFault(std::string_view line);

/// The lines of a file by way of the files port; fails as that does, and with 321 for a file in UTF-16.
std::vector<std::string> ReadLines(std::string_view path);

}  // namespace brenvik
