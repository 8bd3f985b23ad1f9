// Whole-file writing by POSIX calls, which alone can bring data to the disk.
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "file_roots/claim.h"
#include "file_roots/dead_work_files.h"
#include "file_roots/file_failures.h"
#include "file_roots/late_folders.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

Failure FromErrno(int code, const fs::path& file) {
    // A quota is a disk of one's own; the standard has no name for it.
    const int known = code == EDQUOT ? ENOSPC : code;
    return FileFailure(std::error_code(known, std::generic_category()), file);
}

class Descriptor {
  public:
    Descriptor() = default;
    Descriptor(const fs::path& file, int flags, mode_t mode)
        : mNumber(::open(file.c_str(), flags | O_CLOEXEC, mode)) {}
    ~Descriptor() { Close(); }
    Descriptor(Descriptor&& other) noexcept : mNumber(std::exchange(other.mNumber, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(mNumber, other.mNumber);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int Number() const { return mNumber; }
    /// The same open file once more: its lock lasts until both are closed.
    Descriptor Twin() const {
        Descriptor twin;
        twin.mNumber = ::fcntl(mNumber, F_DUPFD_CLOEXEC, 0);
        return twin;
    }
    // Whether closing went well: some file systems report a full disk only now.
    bool Close() { return mNumber < 0 || ::close(std::exchange(mNumber, -1)) == 0; }

  private:
    int mNumber = -1;
};

// A work file that is removed unless it became the target.
class WorkFile {
  public:
    explicit WorkFile(fs::path path) : mPath(std::move(path)) {}
    ~WorkFile() {
        if (!mKept) ::unlink(mPath.c_str());
    }
    WorkFile(const WorkFile&) = delete;
    WorkFile& operator=(const WorkFile&) = delete;

    const fs::path& Path() const { return mPath; }
    void Keep() { mKept = true; }

  private:
    fs::path mPath;
    bool mKept = false;
};

void WriteAll(int descriptor, std::string_view content, const fs::path& shown) {
    while (!content.empty()) {
        const ssize_t written = ::write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) throw FromErrno(errno, shown);
        content.remove_prefix(static_cast<std::size_t>(written));
    }
}

fs::path WorkName(const fs::path& folder) {
    static std::atomic<unsigned> counter = 0;
    return folder /
           (std::string(WorkFilePrefix) + std::to_string(::getpid()) + "-" + std::to_string(++counter));
}

// Locks a new work file as one in use. False when another program has just taken it for a dead one's and
// cleared it away. A file system without locks has nobody who clears.
bool Lock(const Descriptor& descriptor) {
    int outcome = 0;
    do {
        outcome = ::flock(descriptor.Number(), LOCK_EX);
    } while (outcome != 0 && errno == EINTR);
    struct stat present {};
    return outcome != 0 || ::fstat(descriptor.Number(), &present) != 0 || present.st_nlink > 0;
}

// Opens a work file of a name that is free, and locks it. A program that died half way leaves its file, and
// process ids are used again, in a container even at once.
fs::path OpenWorkFile(const fs::path& folder, Descriptor& descriptor) {
    while (true) {
        fs::path name = WorkName(folder);
        descriptor = Descriptor(name, O_RDWR | O_CREAT | O_EXCL, 0666);
        if (descriptor.Number() < 0 && errno == EEXIST) continue;
        if (descriptor.Number() < 0 || Lock(descriptor)) return name;
    }
}

// Nobody holds the lock of a program that died.
void ClearIfUnlocked(const fs::path& workFile) {
    if (const Claim claim(workFile); claim.Outcome() == Claim::State::Held) ::unlink(workFile.c_str());
}

// A device keeps no old content that could be lost.
void WriteToDevice(const fs::path& device, std::string_view content) {
    Descriptor descriptor(device, O_WRONLY, 0);
    if (descriptor.Number() < 0) throw FromErrno(errno, device);
    WriteAll(descriptor.Number(), content, device);
    if (!descriptor.Close()) throw FromErrno(errno, device);
}

// Where a chain of links ends, so that the link stays one.
fs::path BehindLinks(const fs::path& file) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(file, error))) return file;
    const fs::path target = fs::weakly_canonical(file, error);
    return error ? file : target;
}

enum class Reach { Disk, System };

void Replace(const fs::path& file, std::string_view content, Reach reach) {
    const fs::path target = BehindLinks(file);
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) throw PathAccess(target.native() + " (a folder stands there)");
    if (exists && !S_ISREG(old.st_mode)) return WriteToDevice(target, content);
    // The move would replace a file that the user has protected.
    if (exists && ::access(target.c_str(), W_OK) != 0) throw FromErrno(errno, target);

    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    ClearDeadWorkFiles(folder, ClearIfUnlocked);
    Descriptor descriptor;
    const fs::path workPath = OpenWorkFile(folder, descriptor);
    if (descriptor.Number() < 0) throw FromErrno(errno, target);
    WorkFile work(workPath);
    // Until it has its name, nobody may take the file for a dead program's.
    const Descriptor held = descriptor.Twin();
    if (exists) ::fchmod(descriptor.Number(), old.st_mode & 07777);
    WriteAll(descriptor.Number(), content, target);
    if (reach == Reach::Disk && ::fsync(descriptor.Number()) != 0) throw FromErrno(errno, target);
    if (!descriptor.Close()) throw FromErrno(errno, target);
    if (::rename(work.Path().c_str(), target.c_str()) != 0) throw FromErrno(errno, target);
    work.Keep();
    if (reach == Reach::Disk) BringNameToDisk(folder);
}

}  // namespace

void WriteWholeFile(const fs::path& file, std::string_view content) { Replace(file, content, Reach::Disk); }
void WriteScratchFile(const fs::path& file, std::string_view content) {
    Replace(file, content, Reach::System);
}

void SyncFile(const fs::path& file) {
    const Descriptor descriptor(file, O_RDONLY, 0);
    if (descriptor.Number() < 0 || ::fsync(descriptor.Number()) != 0) throw FromErrno(errno, file);
}

void SyncFolder(const fs::path& folder) {
    const Descriptor descriptor(folder, O_RDONLY | O_DIRECTORY, 0);
    if (descriptor.Number() >= 0) ::fsync(descriptor.Number());
}

}  // namespace brenvik
