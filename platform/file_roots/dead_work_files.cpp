// The walk over a folder, and the note of the folders that are done.
#include "file_roots/dead_work_files.h"

#include <mutex>
#include <set>
#include <system_error>

#include "file_roots/places.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

bool IsFirstTime(const fs::path& folder) {
    static std::mutex guard;
    static std::set<fs::path> cleared;
    const std::lock_guard lock(guard);
    return cleared.insert(folder).second;
}

}  // namespace

void ClearDeadWorkFiles(const fs::path& folder, ClearIfDead clear) {
    if (!IsFirstTime(folder)) return;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (TextFromPath(entry->path().filename()).starts_with(WorkFilePrefix) &&
            fs::is_regular_file(entry->symlink_status(ignored)))
            clear(entry->path());
    }
}

}  // namespace brenvik
