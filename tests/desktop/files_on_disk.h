// What the program's work has left in files.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace brenvik::desktop {

inline std::string Content(const std::filesystem::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

inline int SolidsIn(const std::filesystem::path& drawing) {
    constexpr std::string_view solid = "\n3DSOLID\r\n";
    const std::string content = Content(drawing);
    int count = 0;
    for (std::size_t at = content.find(solid); at != std::string::npos; at = content.find(solid, at + 1))
        ++count;
    return count;
}

}  // namespace brenvik::desktop
