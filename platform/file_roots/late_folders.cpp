// Which folders are late, and since when.
#include "file_roots/late_folders.h"

#include <chrono>
#include <map>
#include <utility>

#include "file_roots/folder_names.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

using Clock = std::chrono::steady_clock;

/// What a power cut may take of a job.
constexpr auto MostDelay = std::chrono::seconds(2);

struct Late {
    int objects = 0;
    bool hasNewNames = false;
    Clock::time_point synced = Clock::now();
};

std::map<std::filesystem::path, Late>& LateFolders() {
    static std::map<std::filesystem::path, Late> folders;
    return folders;
}

void SyncLate(const std::filesystem::path& folder, Late& late) {
    if (std::exchange(late.hasNewNames, false)) SyncFolder(folder);
    late.synced = Clock::now();
}

}  // namespace

LateFolder::LateFolder(std::filesystem::path folder) : mFolder(PlainFolder(folder)) {
    ++LateFolders()[mFolder].objects;
}

LateFolder::~LateFolder() {
    const auto found = LateFolders().find(mFolder);
    SyncLate(mFolder, found->second);
    if (--found->second.objects == 0) LateFolders().erase(found);
}

void BringNameToDisk(const std::filesystem::path& folder) {
    const auto late = LateFolders().find(folder);
    if (late == LateFolders().end()) return SyncFolder(folder);
    late->second.hasNewNames = true;
    if (Clock::now() - late->second.synced >= MostDelay) SyncLate(folder, late->second);
}

void BringLateNamesToDisk() {
    for (auto& [folder, late] : LateFolders()) SyncLate(folder, late);
}

}  // namespace brenvik
