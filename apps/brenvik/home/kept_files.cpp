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

bool IsSameFile(const fs::path& a, const fs::path& b) {
    std::error_code error;
    if (fs::equivalent(a, b, error)) return true;
    const fs::path first = RealPlace(a), second = RealPlace(b);
    if (first == second) return true;
    return !fs::exists(first, error) && fs::equivalent(first.parent_path(), second.parent_path(), error) &&
           EqualsIgnoreCase(TextFromPath(first.filename()), TextFromPath(second.filename()));
}

bool LiesBelow(const fs::path& file, const fs::path& folder) {
    std::error_code error;
    for (fs::path above = RealPlace(file).parent_path(); above.has_relative_path();
         above = above.parent_path())
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
    bool mayBeReplaced = false;
    for (const Kept& kept : mFiles) {
        if (!IsSameFile(place, kept.place)) continue;
        if (kept.mayBe != kind) return kept.what;
        mayBeReplaced = true;
    }
    for (const Kept& kept : mFolders)
        if (LiesBelow(place, kept.place)) return kept.what;
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
