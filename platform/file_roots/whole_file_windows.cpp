// Whole-file writing by Windows calls.
#include <windows.h>

#include <atomic>
#include <charconv>
#include <memory>
#include <string>
#include <system_error>
#include <type_traits>
#include <utility>

#include "base/failure.h"
#include "file_roots/dead_work_files.h"
#include "file_roots/file_failures.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

std::error_code MeaningOf(DWORD code) {
    switch (code) {
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return std::make_error_code(std::errc::no_space_on_device);
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return std::make_error_code(std::errc::permission_denied);
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return std::make_error_code(std::errc::no_such_file_or_directory);
        case ERROR_INVALID_NAME:
        case ERROR_FILENAME_EXCED_RANGE:
            return std::make_error_code(std::errc::filename_too_long);
        default:
            return {static_cast<int>(code), std::system_category()};
    }
}

Failure FromCode(DWORD code, const fs::path& file) { return FileFailure(MeaningOf(code), file); }

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

// The number of the program begins the name behind the prefix.
void ClearIfProgramEnded(const fs::path& workFile) {
    const std::string name = TextFromPath(workFile.filename());
    DWORD program = 0;
    const char* number = name.data() + WorkFilePrefix.size();
    const bool numbered = std::from_chars(number, name.data() + name.size(), program).ec == std::errc();
    if (numbered && !IsAlive(program)) DeleteFileW(workFile.c_str());
}

void Replace(const fs::path& file, std::string_view content, Reach reach) {
    const DWORD attributes = GetFileAttributesW(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw PathAccess(TextFromPath(file) + " (a folder stands there)");
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        throw PermissionDenied(TextFromPath(file));
    static std::atomic<unsigned> counter = 0;
    // Process ids are reused, and one that died half way has left
    // its file: the time distinguishes them.
    const std::string name = std::string(WorkFilePrefix) + std::to_string(GetCurrentProcessId()) + "-" +
                             std::to_string(GetTickCount64()) + "-" + std::to_string(++counter);
    const fs::path folder = file.has_parent_path() ? file.parent_path() : fs::path(".");
    ClearDeadWorkFiles(folder, ClearIfProgramEnded);
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

void SyncFile(const fs::path& file) {
    const HANDLE opened = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (opened == INVALID_HANDLE_VALUE) throw FromCode(GetLastError(), file);
    const Handle handle(opened);
    if (!FlushFileBuffers(handle.get())) throw FromCode(GetLastError(), file);
}

// A move that writes through has brought the name to the disk.
void SyncFolder(const fs::path&) {}

}  // namespace brenvik
