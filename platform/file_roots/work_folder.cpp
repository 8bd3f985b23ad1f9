// Making, claiming and clearing working folders.
#include "file_roots/work_folder.h"

#include <random>
#include <sstream>
#include <system_error>
#include <utility>

#include "file_roots/file_failures.h"
#include "file_roots/places.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view ownFolderPrefix = "work-";

std::string NewName() {
    std::random_device random;
    std::ostringstream name;
    name << ownFolderPrefix << std::hex << random() << random();
    return name.str();
}

/// A folder that can be claimed has no living owner.
void ClearDeadFolders(const fs::path& shared) {
    std::error_code error;
    for (fs::directory_iterator entry(shared, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (!TextFromPath(entry->path().filename()).starts_with(ownFolderPrefix) ||
            entry->is_symlink(ignored) || !entry->is_directory(ignored))
            continue;
        if (const Claim claim(entry->path()); claim.Outcome() == Claim::State::Held)
            fs::remove_all(entry->path(), ignored);
    }
}

}  // namespace

WorkFolder::WorkFolder(fs::path shared) : mShared(std::move(shared)) {}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    if (mOwn) fs::remove_all(*mOwn, ignored);
}

const std::optional<fs::path>& WorkFolder::Own() {
    if (mClaim == nullptr) Settle();
    return mOwn;
}

void WorkFolder::Settle() {
    std::error_code error;
    fs::create_directories(mShared, error);
    if (error && !fs::is_directory(mShared)) throw FileFailure(error, mShared);
    auto claim = std::make_unique<Claim>(mShared);
    ClearDeadFolders(mShared);
    if (claim->Outcome() == Claim::State::Held)
        mClaim = std::move(claim);
    else
        MakeOwn();
}

void WorkFolder::MakeOwn() {
    while (mClaim == nullptr) {
        const fs::path folder = mShared / NewName();
        std::error_code error;
        const bool made = fs::create_directory(folder, error);
        if (error) throw FileFailure(error, folder);
        if (!made) continue;
        auto claim = std::make_unique<Claim>(folder);
        // Where there are no locks, nobody can take the folder for a dead one.
        const bool lost = claim->Outcome() == Claim::State::Taken ||
                          (claim->Outcome() == Claim::State::Held && !claim->IsStillAt(folder));
        if (lost) continue;
        mOwn = folder;
        mClaim = std::move(claim);
    }
}

}  // namespace brenvik
