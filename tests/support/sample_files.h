// The sample drawings of other programs, which stand beside the checkout and may be absent. Header only.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "checkout_paths.h"

namespace brenvik::test {

inline std::filesystem::path SampleFolder() {
    return std::filesystem::path(BRENVIK_SOURCE_DIR).parent_path() / "shared" / "data";
}

inline bool HasSamples() { return std::filesystem::is_directory(SampleFolder()); }

/// The bytes of a file; empty for one that can't be opened.
inline std::string FileBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace brenvik::test
