// Claims by locks on the place's own descriptor: no file is made for them where that can be locked.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "file_roots/claim.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

Claim::State Lock(int descriptor) {
    int outcome = 0;
    do {
        outcome = ::flock(descriptor, LOCK_EX | LOCK_NB);
    } while (outcome != 0 && errno == EINTR);
    if (outcome == 0) return Claim::State::Held;
    return errno == EWOULDBLOCK ? Claim::State::Taken : Claim::State::Unknown;
}

/// Whether the descriptor is of what the path leads to now.
bool IsAt(int descriptor, const std::filesystem::path& path) {
    struct stat opened {
    }, present{};
    return ::fstat(descriptor, &opened) == 0 && ::stat(path.c_str(), &present) == 0 &&
           opened.st_dev == present.st_dev && opened.st_ino == present.st_ino;
}

}  // namespace

Claim::Claim(const std::filesystem::path& place)
    : mHandle(::open(place.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (mHandle >= 0) mState = Lock(static_cast<int>(mHandle));
    std::error_code error;
    if (mState == State::Unknown && std::filesystem::is_directory(place, error)) LockFileIn(place);
}

Claim::Claim(const std::filesystem::path& folder, ByFile) { LockFileIn(folder); }

// Removed while still locked. A program that opened it before checks again whether it is there.
void Claim::LockFileIn(const std::filesystem::path& folder) {
    mMark = folder / (std::string(WorkFilePrefix) + "claim");
    do {
        if (mHandle >= 0) ::close(static_cast<int>(mHandle));
        mHandle = ::open(mMark.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        mState = mHandle < 0 ? State::Unknown : Lock(static_cast<int>(mHandle));
    } while (mState == State::Held && !IsAt(static_cast<int>(mHandle), mMark));
}

Claim::~Claim() {
    if (mState == State::Held && !mMark.empty()) ::unlink(mMark.c_str());
    if (mHandle >= 0) ::close(static_cast<int>(mHandle));
}

bool Claim::IsStillAt(const std::filesystem::path& place) const {
    return mHandle >= 0 && IsAt(static_cast<int>(mHandle), mMark.empty() ? place : mMark);
}

}  // namespace brenvik
