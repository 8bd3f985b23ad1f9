// Claims by Windows calls: a range of a file is locked far behind all content; a folder, which can't be
// locked, has a file in it that goes with its handle.
#include <windows.h>

#include "file_roots/claim.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

constexpr DWORD FarBehindAllContent = 0x7fffffff;
constexpr DWORD ShareWithAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE AsHandle(std::intptr_t value) { return reinterpret_cast<HANDLE>(value); }

}  // namespace

Claim::Claim(const std::filesystem::path& place) {
    std::error_code error;
    if (std::filesystem::is_directory(place, error)) {
        LockFileIn(place);
        return;
    }
    const HANDLE opened = CreateFileW(place.c_str(), GENERIC_READ, ShareWithAll, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    mHandle = reinterpret_cast<std::intptr_t>(opened);
    if (opened == INVALID_HANDLE_VALUE) return;
    OVERLAPPED range{};
    range.OffsetHigh = FarBehindAllContent;
    if (LockFileEx(opened, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &range))
        mState = State::Held;
    else if (GetLastError() == ERROR_LOCK_VIOLATION)
        mState = State::Taken;
}

Claim::Claim(const std::filesystem::path& folder, ByFile) { LockFileIn(folder); }

void Claim::LockFileIn(const std::filesystem::path& folder) {
    mMark = folder / (std::string(WorkFilePrefix) + "claim");
    const HANDLE opened = CreateFileW(mMark.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    mHandle = reinterpret_cast<std::intptr_t>(opened);
    if (opened != INVALID_HANDLE_VALUE)
        mState = State::Held;
    else if (GetLastError() == ERROR_SHARING_VIOLATION)
        mState = State::Taken;
}

Claim::~Claim() {
    if (AsHandle(mHandle) != INVALID_HANDLE_VALUE) CloseHandle(AsHandle(mHandle));
}

bool Claim::IsStillAt(const std::filesystem::path& place) const {
    // An open file keeps its folder, and its own name, in place.
    std::error_code error;
    return AsHandle(mHandle) != INVALID_HANDLE_VALUE && std::filesystem::exists(place, error);
}

}  // namespace brenvik
