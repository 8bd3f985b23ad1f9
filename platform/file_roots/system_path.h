// Paths of the system's own form: folders parted by backslashes (or slashes), drive letters, no case.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// A path cut into its parts. "." and ".." are worked out; ".." never leads above a drive or a root.
struct SystemPath {
    /// Lower-case drive letter, or 0.
    char drive = 0;
    /// Begins at a root: of a drive, or of the whole file system where there is no drive letter.
    bool absolute = false;
    std::vector<std::string> names;
};

/// Cuts a path. Throws Failure 52 "Bad file name or number" for a blank path or one with a zero
/// character.
SystemPath ParseSystemPath(std::string_view path);

/// Whether a file name fits a pattern of * and ?, the case of Latin letters ignored. "*.*" fits every
/// name, with a dot or without.
bool MatchesFilePattern(std::string_view name, std::string_view pattern);

}  // namespace brenvik
