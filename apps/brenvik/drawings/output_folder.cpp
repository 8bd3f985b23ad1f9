// Looking through a folder that is going to be emptied.
#include "drawings/output_folder.h"

#include <system_error>

#include "base/letter_case.h"
#include "cnc/part/part_file_name.h"
#include "file_roots/file_roots.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"
#include "shell/command_words.h"

namespace brenvik::app {

namespace fs = std::filesystem;

namespace {

/// What is in the way of a folder that can't be made; blank if that is a folder itself, or if the place is
/// free.
std::string WhatIsNoFolder(const fs::path& folder, const std::string& shown) {
    std::error_code error;
    if (fs::is_symlink(folder, error) && !fs::exists(folder, error))
        return shown + ", a link to " + TextFromPath(fs::read_symlink(folder, error)) + ", which isn't there";
    return fs::exists(folder, error) && !fs::is_directory(folder, error) ? "the file " + shown
                                                                         : std::string();
}

}  // namespace

void RequireFolderWithoutDrawing(const fs::path& folder, const fs::path& drawing,
                                 const OutputFolderRule& rule) {
    if (const std::string found = WhatIsNoFolder(folder, TextFromPath(folder)); !found.empty())
        throw CommandError(ExitStatus::Incomplete, "expected a folder for the files, found " + found +
                                                       "; remove it, or choose another folder with --out");
    if (FolderHolds(folder, drawing))
        throw CommandError(ExitStatus::WrongWords,
                           std::string(rule.emptied) + ", and " + TextFromPath(folder) +
                               " holds the drawing itself; choose another folder with "
                               "--out, or move the drawing");
}

void RequireOwnFolder(const fs::path& folder, const std::string& shown, const fs::path& drawing,
                      const OutputFolderRule& rule) {
    std::error_code error;
    if (const std::string found = WhatIsNoFolder(folder, shown); !found.empty())
        throw CommandError(ExitStatus::WrongWords, "--out: expected a folder, found " + found);
    const std::string head = "--out: " + std::string(rule.emptied) + ", and " + shown + " holds ";
    if (FolderHolds(folder, drawing)) throw CommandError(ExitStatus::WrongWords, head + "the drawing itself");
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string name = TextFromPath(entry->path().filename());
        std::error_code unknown;
        // What a program that died left behind is nobody's, and stays where it is.
        if (name.starts_with(WorkFilePrefix) || !entry->is_regular_file(unknown) || rule.isOwn(name))
            continue;
        throw CommandError(ExitStatus::WrongWords,
                           head + name + ", " + std::string(rule.foreign) + "; choose another folder");
    }
}

SeenFolder::SeenFolder(fs::path folder) : mFolder(std::move(folder)), mSeen(Look()) {}

void SeenFolder::AddFilesIn(const fs::path& folder, States& states) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code unknown;
        if (entry->is_regular_file(unknown) &&
            !TextFromPath(entry->path().filename()).starts_with(WorkFilePrefix))
            states[entry->path()] = {entry->file_size(unknown), entry->last_write_time(unknown)};
    }
}

SeenFolder::States SeenFolder::Look() const {
    States states;
    AddFilesIn(mFolder, states);
    for (const fs::path& folder : SecondSideFoldersIn(mFolder)) AddFilesIn(folder, states);
    return states;
}

std::optional<std::string> SeenFolder::WhatIsNew() const {
    for (const auto& [file, state] : Look()) {
        const auto seen = mSeen.find(file);
        if (seen != mSeen.end() && seen->second == state) continue;
        return "since this call began, another program has written " + TextFromPath(file) +
               ", which would be removed now. Look at it, then call again, or choose another folder.";
    }
    return std::nullopt;
}

std::vector<fs::path> SecondSideFoldersIn(const fs::path& folder) {
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (EqualsIgnoreCase(TextFromPath(entry->path().filename()), SecondSideFolderName))
            folders.push_back(entry->path());
    return folders;
}

CareInForce::CareInForce(OutputCare care) : mCare(std::move(care)) { CareForOutput(&mCare); }

CareInForce::~CareInForce() { CareForOutput(nullptr); }

}  // namespace brenvik::app
