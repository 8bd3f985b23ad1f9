// Finding real places and the file operations on them.
#include "file_roots/file_roots.h"

#include <algorithm>
#include <fstream>
#include <optional>
#include <span>
#include <sstream>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"
#include "file_roots/claim.h"
#include "file_roots/file_failures.h"
#include "file_roots/folder_turn.h"
#include "file_roots/late_folders.h"
#include "file_roots/places.h"
#include "file_roots/system_path.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

bool IsWithin(std::span<const std::string> names, std::span<const std::string> folder) {
    return names.size() >= folder.size() &&
           std::equal(folder.begin(), folder.end(), names.begin(),
                      [](const std::string& a, const std::string& b) { return EqualsIgnoreCase(a, b); });
}

// Only regular files: reading a device or a pipe need not end.
void RequireRegularFile(const fs::path& file) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found) throw MissingFile(file);
    if (error) throw FileFailure(error, file);
    if (!fs::is_regular_file(status)) throw PathAccess(TextFromPath(file) + " (a file was expected)");
}

std::string ReadWhole(const fs::path& file) {
    RequireRegularFile(file);
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw PermissionDenied(TextFromPath(file));
    std::ostringstream content;
    content << stream.rdbuf();
    // An empty file sets the failure bit of the target, which is no fault of the source.
    if (stream.bad()) throw PathAccess(TextFromPath(file));
    return std::move(content).str();
}

/// Folders of work that programs which died have left in one that this program now has for itself.
void ClearDeadWorkFolders(const fs::path& folder) {
    std::vector<fs::path> dead;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (TextFromPath(entry->path().filename()).starts_with(WorkFilePrefix) &&
            fs::is_directory(entry->symlink_status(ignored)))
            dead.push_back(entry->path());
    }
    for (const fs::path& place : dead) fs::remove_all(place, error);
}

/// While a folder is claimed its names are kept, and reach the disk together.
class ClaimedFolder : public FolderClaim {
  public:
    ClaimedFolder(const fs::path& folder, std::shared_ptr<FolderNames> folderNames)
        : claim(folder), mPlace(folder), mNames(std::move(folderNames)) {
        if (claim.Outcome() == Claim::State::Taken) return;
        ClearDeadWorkFolders(mPlace);
        mNames->Keep(mPlace);
        mLate.emplace(mPlace);
    }
    ~ClaimedFolder() override {
        if (mLate) mNames->Forget(mPlace);
    }
    const Claim claim;

  private:
    const fs::path mPlace;
    const std::shared_ptr<FolderNames> mNames;
    std::optional<LateFolder> mLate;
};

}  // namespace

bool FolderHolds(const fs::path& folder, const fs::path& file) {
    std::error_code error;
    const fs::path place = AbsolutePath(file);
    if (fs::equivalent(place.parent_path(), folder, error)) return true;
    const fs::path behindLinks = fs::canonical(place, error);
    return !error && fs::equivalent(behindLinks.parent_path(), folder, error);
}

FileRoots::FileRoots(const fs::path& home) : mHome(AbsolutePath(home).lexically_normal()) {
    if (!mHome.has_filename() && mHome.has_relative_path()) mHome = mHome.parent_path();
}

void FileRoots::MapFolder(std::string_view systemFolder, const fs::path& folder) {
    SystemPath parsed = ParseSystemPath(systemFolder);
    std::erase_if(mMappings, [&](const Mapping& known) {
        return known.drive == parsed.drive && known.absolute == parsed.absolute &&
               known.names.size() == parsed.names.size() && IsWithin(known.names, parsed.names);
    });
    mMappings.push_back({parsed.drive, parsed.absolute, std::move(parsed.names), AbsolutePath(folder)});
    std::stable_sort(mMappings.begin(), mMappings.end(),
                     [](const Mapping& a, const Mapping& b) { return a.names.size() > b.names.size(); });
}

fs::path FileRoots::Resolve(std::string_view systemPath) const {
    const SystemPath parsed = ParseSystemPath(systemPath);
    std::span<const std::string> names = parsed.names;
    fs::path place = RootOf(parsed, mHome);
    const auto mapped = std::find_if(mMappings.begin(), mMappings.end(), [&](const Mapping& mapping) {
        return mapping.drive == parsed.drive && mapping.absolute == parsed.absolute &&
               IsWithin(names, mapping.names);
    });
    if (mapped != mMappings.end()) {
        place = mapped->folder;
        names = names.subspan(mapped->names.size());
    }
    for (const std::string& name : names) place = mNames->Find(place, name);
    return place;
}

fs::path FileRoots::ResolveToWrite(std::string_view systemPath) const {
    const SystemPath parsed = ParseSystemPath(systemPath);
    // A drive's root is always there for whoever writes to it, in a new home too. Folders in it are not.
    if (parsed.drive != 0) {
        const fs::path root = RootOf(parsed, mHome);
        std::error_code error;
        fs::create_directories(root, error);
        if (error && !fs::is_directory(root)) throw FileFailure(error, root);
    }
    return Resolve(systemPath);
}

std::string FileRoots::InstallFolder() { return TextFromPath(mHome); }

bool FileRoots::FileExists(std::string_view path) {
    if (path.empty()) return false;
    std::error_code error;
    return fs::is_regular_file(Resolve(path), error);
}

bool FileRoots::FolderExists(std::string_view path) {
    if (path.empty()) return false;
    std::error_code error;
    return fs::is_directory(Resolve(path), error);
}

std::string FileRoots::WorkFolder() {
    if (mWorkFolder == nullptr) return {};
    const std::optional<fs::path>& own = mWorkFolder->Own();
    return own ? TextFromPath(*own) + "\\" : std::string();
}

std::string FileRoots::PlaceOf(std::string_view path) {
    const fs::path place = Resolve(path);
    // The last separator of a folder's path has no name behind it.
    return TextFromPath(place.has_filename() ? place : place.parent_path());
}

bool FileRoots::FolderHolds(std::string_view folder, std::string_view file) {
    return !file.empty() && brenvik::FolderHolds(Resolve(folder), Resolve(file));
}

std::unique_ptr<FolderClaim> FileRoots::ClaimFolder(std::string_view path) {
    auto claimed = std::make_unique<ClaimedFolder>(Resolve(path), mNames);
    if (claimed->claim.Outcome() == Claim::State::Taken) return nullptr;
    return claimed;
}

std::unique_ptr<FolderClaim> FileRoots::AwaitTurn(std::string_view path) {
    struct Turn : FolderClaim {
        explicit Turn(const fs::path& folder) : turn(folder) {}
        FolderTurn turn;
    };
    return std::make_unique<Turn>(Resolve(path).parent_path());
}

void FileRoots::RemoveFile(std::string_view path) {
    const fs::path file = Resolve(path);
    std::error_code error;
    if (fs::is_directory(file, error)) throw FileNotFound(TextFromPath(file));
    const bool removed = fs::remove(file, error);
    if (error) throw FileFailure(error, file);
    if (!removed) throw MissingFile(file);
}

void FileRoots::CopyFileOver(std::string_view from, std::string_view to) {
    const std::string content = ReadWhole(Resolve(from));
    WriteWholeFile(ResolveToWrite(to), content);
}

void FileRoots::MoveFileOver(std::string_view from, std::string_view to) {
    const fs::path source = Resolve(from), target = ResolveToWrite(to);
    std::error_code error;
    // What was written in passing is on the disk before it has its name, and so is everything that it names.
    if (mNames->Keeps(source.parent_path()) && fs::exists(source, error)) {
        SyncFile(source);
        BringLateNamesToDisk();
    }
    fs::rename(source, target, error);
    if (error) throw FileFailure(error, fs::exists(source) ? target : source);
    BringNameToDisk(target.parent_path());
}

void FileRoots::MakeFolder(std::string_view path) {
    const fs::path folder = Resolve(path);
    std::error_code error;
    const fs::file_status status = fs::status(folder, error);
    if (fs::exists(status) && !fs::is_directory(status))
        throw PathAccess(TextFromPath(folder) + " (a file stands there)");
    fs::create_directories(folder, error);
    if (error) throw FileFailure(error, folder);
}

std::vector<std::string> FileRoots::ListFiles(std::string_view folder, std::string_view pattern) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(Resolve(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        std::string name = TextFromPath(entry->path().filename());
        std::error_code ignored;
        if (!name.starts_with(WorkFilePrefix) && entry->is_regular_file(ignored) &&
            MatchesFilePattern(name, pattern))
            names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const LessIgnoreCase less;
        if (less(a, b) || less(b, a)) return less(a, b);
        return a < b;
    });
    return names;
}

std::string FileRoots::ReadFile(std::string_view path) {
    const fs::path file = Resolve(path);
    const auto held = mHeld.find(file);
    return held == mHeld.end() ? ReadWhole(file) : held->second;
}

void FileRoots::WriteFile(std::string_view path, std::string_view content) {
    const fs::path file = ResolveToWrite(path);
    mHeld.erase(file);
    if (mNames->Keeps(file.parent_path()))
        WriteScratchFile(file, content);
    else
        WriteWholeFile(file, content);
}

std::string_view FileRoots::LineEnd() const { return TextLineEnd(); }

}  // namespace brenvik
