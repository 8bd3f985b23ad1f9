// Listings, taken once and kept up to date by being asked.
#include "file_roots/folder_names.h"

#include <optional>
#include <system_error>

#include "base/letter_case.h"
#include "file_roots/places.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

bool IsThere(const fs::path& place) {
    std::error_code error;
    return fs::exists(fs::symlink_status(place, error));
}

/// The entry of a folder that has this name in some case. An exact one wins; of several others the first in
/// byte order, so that the answer does not depend on the order of the directory. A name that the folder
/// hasn't is taken as it stands.
fs::path FindEntry(const fs::path& folder, const std::string& name) {
    fs::path exact = folder / PathFromText(name);
    if (IsThere(exact)) return exact;
    const std::string folded = FoldLower(name);
    std::optional<std::string> best;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::string candidate = TextFromPath(entry->path().filename());
        if (FoldLower(candidate) == folded && (!best || candidate < *best)) best = std::move(candidate);
    }
    return best ? folder / PathFromText(*best) : exact;
}

}  // namespace

fs::path PlainFolder(const fs::path& folder) { return folder.has_filename() ? folder : folder.parent_path(); }

void FolderNames::Keep(const fs::path& folder) {
    Names& names = mFolders[PlainFolder(folder)];
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = TextFromPath(entry->path().filename());
        names[FoldLower(name)].insert(name);
    }
}

void FolderNames::Forget(const fs::path& folder) { mFolders.erase(PlainFolder(folder)); }

bool FolderNames::Keeps(const fs::path& folder) const { return mFolders.contains(PlainFolder(folder)); }

fs::path FolderNames::Find(const fs::path& folder, const std::string& name) {
    const auto kept = mFolders.find(PlainFolder(folder));
    if (kept == mFolders.end()) return FindEntry(folder, name);
    std::set<std::string>& known = kept->second[FoldLower(name)];
    // Whoever looks for a name may be about to write it.
    known.insert(name);
    fs::path exact = folder / PathFromText(name);
    if (IsThere(exact)) return exact;
    for (const std::string& other : known)
        if (fs::path place = folder / PathFromText(other); IsThere(place)) return place;
    return exact;
}

}  // namespace brenvik
