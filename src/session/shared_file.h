// Text files of a home that several programs change: a program writes over what it has looked at, and over
// nothing else.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace brenvik {

/// What stands in a file; null if there is none. Fails as reading does.
std::optional<std::string> ContentOf(const std::string& path);

/// A file and its content when the user looked at it; null if there was none.
struct LookedAtFile {
    std::string path;
    std::optional<std::string> content;
};

/// Runs `write` if the file still holds what was seen, or is gone; other programs wait meanwhile. Otherwise a
/// message box of this title asks whether to keep the file; No overwrites what it held at that moment.
/// Returns whether `write` has run. Fails as `write` does, and as reading the file does.
bool WriteUnlessChanged(LookedAtFile file, const std::string& boxTitle, const std::function<void()>& write);

/// What to say of a file that was left as it is.
std::string ChangedElsewhere(const std::string& path);

}  // namespace brenvik
