// Reading whole files with the standard library alone.
#include "drafting_host/document/files/read_file.h"

#include <cerrno>
#include <fstream>
#include <system_error>

#include "base/failure.h"

namespace brenvik {

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) throw FileNotFound(path.string());
    if (!std::filesystem::is_regular_file(path, error)) throw PathAccess(path.string() + ": expected a file");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw PathAccess(path.string() + ": " + std::generic_category().message(errno));
    const auto size = std::filesystem::file_size(path, error);
    std::string content(error ? 0 : size, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (file.bad()) throw PathAccess(path.string());
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

}  // namespace brenvik
