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

constexpr std::string_view OwnFolderPrefix = "work-";

std::string NewName() {
    std::random_device random;
    std::ostringstream name;
    name << OwnFolderPrefix << std::hex << random() << random();
    return name.str();
}

/// Removes a folder that this program has claimed. A file of the claim may keep the folder until it is
/// closed.
void RemoveClaimed(const fs::path& folder, std::unique_ptr<Claim> claim) {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
    claim.reset();
    fs::remove(folder, ignored);
}

/// A folder that can be claimed has no living owner.
void ClearDeadFolders(const fs::path& shared) {
    std::error_code error;
    for (fs::directory_iterator entry(shared, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (!TextFromPath(entry->path().filename()).starts_with(OwnFolderPrefix) ||
            entry->is_symlink(ignored) || !entry->is_directory(ignored))
            continue;
        auto claim = std::make_unique<Claim>(entry->path());
        if (claim->Outcome() == Claim::State::Held) RemoveClaimed(entry->path(), std::move(claim));
    }
}

}  // namespace

WorkFolder::WorkFolder(fs::path shared, std::function<void(const std::string&)> warn)
    : mShared(std::move(shared)), mWarn(std::move(warn)) {}

WorkFolder::~WorkFolder() {
    if (mOwn) RemoveClaimed(*mOwn, std::move(mClaim));
}

const std::optional<fs::path>& WorkFolder::Own() {
    if (mClaim == nullptr) Settle();
    if (mClaim->Outcome() == Claim::State::Held && !mClaim->IsStillAt(Place()))
        throw PathNotFound(TextFromPath(Place()) + " (it was removed while this program worked in it)");
    return mOwn;
}

void WorkFolder::Settle() {
    std::error_code error;
    fs::create_directories(mShared, error);
    if (error && !fs::is_directory(mShared)) throw FileFailure(error, mShared);
    auto claim = std::make_unique<Claim>(mShared);
    ClearDeadFolders(mShared);
    if (claim->Outcome() == Claim::State::Taken) {
        MakeOwn();
        return;
    }
    if (claim->Outcome() == Claim::State::Unknown && mWarn)
        mWarn(TextFromPath(mShared) +
              " can't be locked: let no other program work in this home at the same time");
    mClaim = std::move(claim);
}

void WorkFolder::MakeOwn() {
    while (mClaim == nullptr) {
        const fs::path folder = mShared / NewName();
        std::error_code error;
        const bool made = fs::create_directory(folder, error);
        if (error) throw FileFailure(error, folder);
        if (!made) continue;
        auto claim = std::make_unique<Claim>(folder);
        // Where there are no locks, nobody can take the folder for a dead one. One that was cleared before it
        // could be opened is lost as well.
        const bool lost = claim->Outcome() == Claim::State::Taken ||
                          (claim->Outcome() == Claim::State::Held && !claim->IsStillAt(folder)) ||
                          !fs::is_directory(folder, error);
        if (lost) continue;
        mOwn = folder;
        mClaim = std::move(claim);
    }
}

}  // namespace brenvik
