// Files by their identity: two names for one file are one file.
#include "home/kept_files.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "base/letter_case.h"
#include "drafting_host/document/files/drawing_origin.h"
#include "export/profiles.h"
#include "file_roots/places.h"
#include "grid/help.h"
#include "home/home_files.h"
#include "parts/cnc_list.h"
#include "shell/exit_status.h"

namespace brenvik::app {

namespace {

namespace fs = std::filesystem;

/// The place behind all links, whether something stands there or not.
fs::path RealPlace(const fs::path& file) {
    std::error_code error;
    fs::path place = fs::weakly_canonical(fs::absolute(file, error), error);
    // A link to nothing is followed by whoever writes there.
    if (!error && fs::is_symlink(place, error)) {
        const fs::path target = fs::read_symlink(place, error);
        if (!error) place = fs::weakly_canonical(place.parent_path() / target, error);
    }
    return error ? file : place;
}

/// A place for an output, looked at once for all the files that are kept from it.
struct Asked {
    explicit Asked(const fs::path& asked) : place(asked), real(RealPlace(asked)) {
        std::error_code error;
        isFree = fs::symlink_status(place, error).type() == fs::file_type::not_found;
    }

    fs::path place, real;
    bool isFree = false;
};

/// Where nothing stands yet, only a file of the same name or a link can be the same one. A run asks for
/// each of its files, and most are of this kind.
bool CanBeSameFile(const Asked& asked, const fs::path& kept) {
    const std::string name = TextFromPath(kept.filename());
    if (!asked.isFree || name.empty() || name == "." || name == "..") return true;
    std::error_code error;
    return EqualsIgnoreCase(TextFromPath(asked.real.filename()), name) ||
           fs::is_symlink(fs::symlink_status(kept, error));
}

bool IsSameFile(const Asked& asked, const fs::path& kept) {
    if (!CanBeSameFile(asked, kept)) return false;
    std::error_code error;
    if (fs::equivalent(asked.place, kept, error)) return true;
    const fs::path& first = asked.real;
    const fs::path second = RealPlace(kept);
    if (first == second) return true;
    return !fs::exists(first, error) && fs::equivalent(first.parent_path(), second.parent_path(), error) &&
           EqualsIgnoreCase(TextFromPath(first.filename()), TextFromPath(second.filename()));
}

bool LiesBelow(const Asked& asked, const fs::path& folder) {
    std::error_code error;
    for (fs::path above = asked.real.parent_path(); above.has_relative_path(); above = above.parent_path())
        if (fs::equivalent(above, folder, error)) return true;
    return false;
}

}  // namespace

void KeptFiles::Keep(const fs::path& file, std::string what, std::optional<OutputKind> mayBe) {
    mFiles.push_back({file, std::move(what), mayBe});
}

void KeptFiles::KeepFolder(const fs::path& folder, std::string what) {
    mFolders.push_back({folder, std::move(what), {}});
}

void KeptFiles::KeepHome(const fs::path& home) {
    Keep(home / SettingsFile, "the settings of the home");
    Keep(home / MaterialsFile, "the material library of the home");
    Keep(home / "materials.bak", "the backup of the material library");
    Keep(home / CsvProfileFile, "the profiles for exports of the home");
    Keep(home / CncProfileFile, "the profiles for CNC runs of the home");
    Keep(home / NoAdjustmentsFile, "the adjustment file of the home", OutputKind::Adjustments);
    Keep(home / HelpFile, "the help of the home");
    Keep(home / CncWorkFile, "a list that the grid hands over to CNC runs");
    Keep(home / CncListFile, "a list that the grid hands over to CNC runs");
    KeepFolder(home / "_db", "a file of the part databases of the home");
}

std::string KeptFiles::At(const fs::path& place, OutputKind kind) const {
    const Asked asked(place);
    bool mayBeReplaced = false;
    for (const Kept& kept : mFiles) {
        if (!IsSameFile(asked, kept.place)) continue;
        if (kept.mayBe != kind) return kept.what;
        mayBeReplaced = true;
    }
    for (const Kept& kept : mFolders)
        if (LiesBelow(asked, kept.place)) return kept.what;
    return mayBeReplaced ? std::string() : StrangerAt(place, kind);
}

// A drawing of somebody else holds more than is known of it, and none was read here.
std::string KeptFiles::StrangerAt(const fs::path& place, OutputKind kind) const {
    const bool isDrawing = kind == OutputKind::Drawing;
    if (isDrawing && mWritten.contains(RealPlace(place))) return {};
    const std::string found = isDrawing ? ForeignFileAt(place) : DrawingAt(place);
    return found.empty() ? found : found + ", which is not written over: give another name";
}

void KeptFiles::NoteWritten(const fs::path& drawing) { mWritten.insert(RealPlace(drawing)); }

void KeptFiles::RequireFree(const fs::path& place, OutputKind kind, const std::string& shown) const {
    if (const std::string found = At(place, kind); !found.empty())
        throw CommandError(
            ExitStatus::WrongWords,
            shown + ": expected a file of its own for the output, found " + found + "; nothing was written");
}

}  // namespace brenvik::app
