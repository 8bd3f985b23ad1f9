// Contents are compared, not times: this distinguishes two savings within one tick of a file system's clock,
// or with equal sizes.
#include "file_roots/guarded_files.h"

#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <system_error>

#include "base/failure.h"
#include "file_roots/folder_turn.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

/// One place, however it is written.
fs::path PlaceOf(const fs::path& file) {
    std::error_code error;
    const fs::path place = fs::weakly_canonical(fs::absolute(file, error), error);
    return error ? file : place;
}

}  // namespace

std::optional<GuardedFiles::Stamp> GuardedFiles::StampOf(const fs::path& file) {
    // A folder that has taken the file's place can be opened, but not read.
    std::error_code error;
    if (!fs::is_regular_file(file, error)) return std::nullopt;
    std::ifstream stream(file, std::ios::binary);
    if (!stream) return std::nullopt;
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    return Stamp{content.size(), std::hash<std::string>()(content)};
}

void GuardedFiles::Know(const fs::path& file) {
    const fs::path place = PlaceOf(file);
    std::error_code error;
    const fs::file_status status = fs::status(place, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) return;
    mKnown.insert_or_assign(place, StampOf(place));
}

bool GuardedFiles::Knows(const fs::path& file) const { return mKnown.contains(PlaceOf(file)); }

void GuardedFiles::Write(const fs::path& file, std::string_view content) {
    const fs::path place = PlaceOf(file);
    const auto expected = mKnown.find(place);
    if (expected == mKnown.end()) return WriteWholeFile(file, content);
    const FolderTurn turn(place.parent_path());
    if (StampOf(place) != expected->second)
        throw Failure(failure_number::PathAccess, std::string(OwnSource),
                      TextFromPath(file) + " was " + (expected->second ? "changed" : "made") +
                          " by another program since it was read; nothing was written over it: save under "
                          "another name, or open "
                          "it anew");
    WriteWholeFile(file, content);
    expected->second = Stamp{content.size(), std::hash<std::string_view>()(content)};
}

}  // namespace brenvik
