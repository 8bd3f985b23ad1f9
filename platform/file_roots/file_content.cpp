// A folder or a pipe can be opened like a file, and waits or fails only when it is read.
#include "file_roots/file_content.h"

#include <fstream>
#include <iterator>
#include <system_error>

namespace brenvik {

std::optional<std::string> ContentIfAny(const std::filesystem::path& file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    std::string content{std::istreambuf_iterator<char>(stream), {}};
    if (stream.bad()) return std::nullopt;
    return content;
}

}  // namespace brenvik
