// Reading and replacing whole files with the standard library alone.
#include "drafting_host/document/whole_file.h"

#include <cerrno>
#include <fstream>
#include <random>
#include <system_error>

#include "base/failure.h"

namespace brenvik {
namespace {

/// The unfinished file beside the target; it goes away unless it was put in the target's place.
class Unfinished {
  public:
    explicit Unfinished(const std::filesystem::path& target) : mPath(target) {
        mPath += ".";
        mPath += std::to_string(std::random_device{}());
        mPath += ".part";
    }
    ~Unfinished() {
        std::error_code ignored;
        if (!mDone) std::filesystem::remove(mPath, ignored);
    }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    const std::filesystem::path& Path() const { return mPath; }
    void PutInPlace(const std::filesystem::path& target) {
        std::error_code error;
        std::filesystem::rename(mPath, target, error);
        if (error) throw PathAccess(target.string() + ": " + error.message());
        mDone = true;
    }

  private:
    std::filesystem::path mPath;
    bool mDone = false;
};

}  // namespace

std::string ReadWholeFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) throw FileNotFound(path.string());
    if (!std::filesystem::is_regular_file(path, error)) throw PathAccess(path.string() + ": expected a file");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw PathAccess(path.string());
    const auto size = std::filesystem::file_size(path, error);
    std::string content(error ? 0 : size, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (file.bad()) throw PathAccess(path.string());
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

void WriteWholeFile(const std::filesystem::path& path, std::string_view content) {
    std::error_code error;
    const std::filesystem::path folder = path.parent_path();
    if (!folder.empty() && !std::filesystem::is_directory(folder, error)) throw PathNotFound(path.string());
    if (std::filesystem::is_directory(path, error)) throw PathAccess(path.string() + ": expected a file");
    Unfinished part(path);
    std::ofstream file(part.Path(), std::ios::binary | std::ios::trunc);
    if (!file) throw PathAccess(path.string());
    errno = 0;
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) {
        if (errno == ENOSPC) throw DiskFull(path.string());
        throw PathAccess(path.string());
    }
    part.PutInPlace(path);
}

}  // namespace brenvik
