// References that a person has looked at: files under tests/ that an output has to equal to the byte. A new
// output lies under golden in the build folder, from where scripts/accept-files takes it over.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

#include "checkout_paths.h"

namespace brenvik::test {

/// Where two texts part, as a line number and both lines.
inline std::string FirstDifference(const std::string& expected, const std::string& written) {
    const auto [a, b] = std::ranges::mismatch(expected, written);
    const auto lineAt = [](const std::string& text, std::string::const_iterator place) {
        const auto from = static_cast<std::size_t>(place - text.begin());
        const std::size_t before = from == 0 ? std::string::npos : text.rfind('\n', from - 1);
        const std::size_t begin = before == std::string::npos ? 0 : before + 1;
        return text.substr(begin, text.find('\n', begin) - begin);
    };
    return "line " + std::to_string(std::count(expected.begin(), a, '\n') + 1) + ": expected \"" +
           lineAt(expected, a) + "\", written \"" + lineAt(written, b) + "\"";
}

/// `reference` is the file's path under tests/.
inline void ExpectGolden(const std::string& reference, const std::string& written) {
    namespace fs = std::filesystem;
    std::ifstream file(fs::path(BRENVIK_SOURCE_DIR) / "tests" / reference, std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file), {}};
    const fs::path actual = fs::path(BRENVIK_BINARY_DIR) / "golden" / reference;
    if (expected == written) {
        std::error_code none;
        fs::remove(actual, none);
        return;
    }
    fs::create_directories(actual.parent_path());
    std::ofstream(actual, std::ios::binary) << written;
    ADD_FAILURE() << reference << ", " << FirstDifference(expected, written)
                  << "\nAfter a look at the change: scripts/accept-files";
}

}  // namespace brenvik::test
