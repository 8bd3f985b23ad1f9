// Claims by locks on the place's own descriptor: no file is made for them.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "file_roots/claim.h"

namespace brenvik {

Claim::Claim(const std::filesystem::path& place)
    : mHandle(::open(place.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
    if (mHandle < 0) return;
    int outcome = 0;
    do {
        outcome = ::flock(static_cast<int>(mHandle), LOCK_EX | LOCK_NB);
    } while (outcome != 0 && errno == EINTR);
    if (outcome == 0) mState = State::Held;
    if (outcome != 0 && errno == EWOULDBLOCK) mState = State::Taken;
}

Claim::~Claim() {
    if (mHandle >= 0) ::close(static_cast<int>(mHandle));
}

bool Claim::IsStillAt(const std::filesystem::path& place) const {
    struct stat claimed {
    }, present{};
    return mHandle >= 0 && ::fstat(static_cast<int>(mHandle), &claimed) == 0 &&
           ::stat(place.c_str(), &present) == 0 && claimed.st_dev == present.st_dev &&
           claimed.st_ino == present.st_ino;
}

}  // namespace brenvik
