// Cutting paths and matching file names.
#include "file_roots/system_path.h"

#include "base/ascii.h"
#include "base/failure.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "base/wildcard.h"

namespace brenvik {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == '/'; }

void AppendName(SystemPath& path, std::string_view name) {
    if (name.empty() || name == ".") return;
    if (name != "..") {
        path.names.emplace_back(name);
        return;
    }
    const bool canGoUp = !path.names.empty() && path.names.back() != "..";
    if (canGoUp)
        path.names.pop_back();
    else if (!path.absolute)
        path.names.emplace_back(name);
}

}  // namespace

SystemPath ParseSystemPath(std::string_view path) {
    if (IsBlank(path) || path.find('\0') != std::string_view::npos) throw BadFileName(std::string(path));
    SystemPath parsed;
    std::string_view rest = path;
    if (rest.size() >= 2 && rest[1] == ':' && IsAsciiLetter(rest[0])) {
        parsed.drive = FoldLower(rest.substr(0, 1)).front();
        // A drive's own current folder is its root: nobody ever changes it.
        parsed.absolute = true;
        rest.remove_prefix(2);
    } else {
        parsed.absolute = IsSeparator(rest.front());
    }
    while (!rest.empty()) {
        std::size_t end = 0;
        while (end < rest.size() && !IsSeparator(rest[end])) ++end;
        AppendName(parsed, rest.substr(0, end));
        rest.remove_prefix(end < rest.size() ? end + 1 : end);
    }
    return parsed;
}

bool MatchesFilePattern(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*") return true;
    return MatchesWildcards(name, pattern, FileWildcards);
}

}  // namespace brenvik
