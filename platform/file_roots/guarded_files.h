// Files that this program has looked at and means to write over, while other programs may do the same.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string_view>

namespace brenvik {

class GuardedFiles {
  public:
    /// From now on the file is written over only as long as it stands as it does now. One that isn't there is
    /// known as missing. What is no plain file, such as a device, is not looked after.
    void Know(const std::filesystem::path& file);

    bool Knows(const std::filesystem::path& file) const;

    /// Writes a file whole or not at all. Throws Failure for one that is known and has been changed by
    /// another program since. Of two programs that write into one folder at once, one waits for the other.
    void Write(const std::filesystem::path& file, std::string_view content);

  private:
    struct Stamp {
        std::uintmax_t size = 0;
        std::size_t content = 0;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    /// Null for a file that isn't there.
    static std::optional<Stamp> StampOf(const std::filesystem::path& file);

    std::map<std::filesystem::path, std::optional<Stamp>> mKnown;
};

}  // namespace brenvik
