// Having a file or folder for oneself while other programs run in the same places.
#pragma once

#include <cstdint>
#include <filesystem>

namespace brenvik {

/// A file or folder that this program has for itself, against every other claim on it, until the object goes
/// out of scope. The system lets go of it when the program dies, and nothing is left behind. Where a folder
/// can't be locked itself, a file in it is.
class Claim {
  public:
    enum class State {
        Held,
        Taken,    ///< Another claim, mostly of another program, holds the place.
        Unknown,  ///< The place can't be opened, or its file system knows no locks.
    };

    explicit Claim(const std::filesystem::path& place);
    /// The way of folders that can't be locked: on network file systems only files open for writing can.
    static Claim ByFileIn(const std::filesystem::path& folder) { return {folder, ByFile{}}; }
    ~Claim();
    Claim(const Claim&) = delete;
    Claim& operator=(const Claim&) = delete;

    State Outcome() const { return mState; }
    /// Whether the place still is what was claimed: between making a folder and claiming it, another program
    /// may have cleared it away.
    bool IsStillAt(const std::filesystem::path& place) const;

  private:
    struct ByFile {};
    Claim(const std::filesystem::path& folder, ByFile way);
    void LockFileIn(const std::filesystem::path& folder);

    State mState = State::Unknown;
    /// A descriptor here, a handle on Windows.
    std::intptr_t mHandle = -1;
    /// The file that is locked in the place of its folder; blank where there is none.
    std::filesystem::path mMark;
};

}  // namespace brenvik
