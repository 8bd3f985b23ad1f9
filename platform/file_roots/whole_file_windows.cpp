// Whole-file writing by Windows calls.
#include <windows.h>

#include <atomic>
#include <charconv>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <type_traits>
#include <utility>

#include "base/failure.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

Failure FromCode(DWORD code, const fs::path& file) {
    const std::string shown = TextFromPath(file);
    switch (code) {
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return DiskFull(shown);
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return PermissionDenied(shown);
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return PathNotFound(shown);
        case ERROR_INVALID_NAME:
        case ERROR_FILENAME_EXCED_RANGE:
            return BadFileName(shown);
        default:
            return PathAccess(shown + " (error " + std::to_string(code) + ")");
    }
}

struct HandleCloser {
    void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<std::remove_pointer_t<HANDLE>, HandleCloser>;

class WorkFile {
  public:
    explicit WorkFile(fs::path path) : mPath(std::move(path)) {}
    ~WorkFile() {
        if (!mKept) DeleteFileW(mPath.c_str());
    }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    const fs::path& Path() const { return mPath; }
    void Keep() { mKept = true; }

  private:
    fs::path mPath;
    bool mKept = false;
};

enum class Reach { Disk, System };

void WriteTo(const fs::path& work, std::string_view content, const fs::path& shown, Reach reach) {
    const HANDLE created =
        CreateFileW(work.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (created == INVALID_HANDLE_VALUE) throw FromCode(GetLastError(), shown);
    const Handle handle(created);
    constexpr std::size_t largestPiece = 1U << 30U;
    while (!content.empty()) {
        const std::string_view piece = content.substr(0, largestPiece);
        DWORD written = 0;
        if (!::WriteFile(handle.get(), piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr))
            throw FromCode(GetLastError(), shown);
        content.remove_prefix(written);
    }
    if (reach == Reach::Disk && !FlushFileBuffers(handle.get())) throw FromCode(GetLastError(), shown);
}

bool IsAlive(DWORD program) {
    const Handle opened(OpenProcess(SYNCHRONIZE, FALSE, program));
    return opened == nullptr ? GetLastError() == ERROR_ACCESS_DENIED
                             : WaitForSingleObject(opened.get(), 0) == WAIT_TIMEOUT;
}

// Clears the work files of programs that died; their numbers begin the names behind the prefix. Once for each
// folder is enough.
void ClearDeadWorkFiles(const fs::path& folder) {
    static std::mutex guard;
    static std::set<fs::path> cleared;
    {
        const std::lock_guard lock(guard);
        if (!cleared.insert(folder).second) return;
    }
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = TextFromPath(entry->path().filename());
        if (!name.starts_with(workFilePrefix)) continue;
        DWORD program = 0;
        const char* number = name.data() + workFilePrefix.size();
        const bool numbered = std::from_chars(number, name.data() + name.size(), program).ec == std::errc();
        if (numbered && !IsAlive(program)) DeleteFileW(entry->path().c_str());
    }
}

void Replace(const fs::path& file, std::string_view content, Reach reach) {
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw PathAccess(TextFromPath(file) + " (a folder stands there)");
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw PermissionDenied(TextFromPath(file));
    static std::atomic<unsigned> counter = 0;
    // Numbers of programs come again, and one that died half way has left its file: the time tells them
    // apart.
    const std::string name = std::string(workFilePrefix) + std::to_string(GetCurrentProcessId()) + "-" +
                             std::to_string(GetTickCount64()) + "-" + std::to_string(++counter);
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    ClearDeadWorkFiles(folder);
    WorkFile work(folder / name);
    WriteTo(work.Path(), content, file, reach);
    const DWORD how = MOVEFILE_REPLACE_EXISTING | (reach == Reach::Disk ? MOVEFILE_WRITE_THROUGH : 0U);
    if (!MoveFileExW(work.Path().c_str(), file.c_str(), how)) throw FromCode(GetLastError(), file);
    work.Keep();
}

}  // namespace

void WriteWholeFile(const fs::path& file, std::string_view content) { Replace(file, content, Reach::Disk); }
void WriteScratchFile(const fs::path& file, std::string_view content) {
    Replace(file, content, Reach::System);
}

}  // namespace brenvik
