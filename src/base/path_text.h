// Paths in the words of messages.
#pragma once

#include <filesystem>
#include <string>

namespace brenvik {

/// The path in UTF-8, which is what texts are in, whatever the system writes its paths in.
inline std::string PathText(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace brenvik
