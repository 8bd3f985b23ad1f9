// A folder of its own for a test that needs files.
#pragma once

#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace brenvik {

/// A folder that lives as long as the object.
class TemporaryFolder {
  public:
    TemporaryFolder()
        : mPath(std::filesystem::temp_directory_path() /
                ("brenvik-test-" + std::to_string(std::random_device{}()) + "-" +
                 std::to_string(std::random_device{}()))) {
        std::filesystem::create_directories(mPath);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return mPath; }

  private:
    std::filesystem::path mPath;
};

}  // namespace brenvik
