// A drawing, and beside it a note that names it: the note is written last, so work is there as a whole or as
// it was kept before.
#include "recovery/recovery_store.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <random>
#include <sstream>
#include <system_error>
#include <utility>

#include "file_roots/file_content.h"
#include "file_roots/file_failures.h"
#include "file_roots/places.h"
#include "file_roots/whole_file.h"

namespace brenvik::desktop {

namespace {

namespace fs = std::filesystem;

constexpr const char* NoteName = "work.txt";
constexpr std::string_view FolderPrefix = "work-", AsidePrefix = "damaged-";

std::string NewName() {
    std::random_device random;
    std::ostringstream name;
    name << FolderPrefix << std::hex << random() << random();
    return name.str();
}

/// The file's name comes last and to the end, since it may hold anything.
std::string TextOf(const WorkNote& note, const std::string& drawing) {
    std::ostringstream text;
    text << drawing << '\n' << note.time << '\n';
    if (note.source)
        text << note.source->size << ' ' << note.source->content << '\n';
    else
        text << "none\n";
    text << note.file;
    return text.str();
}

struct ReadNote {
    std::string drawing;
    WorkNote note;
};

std::optional<ReadNote> NoteIn(const fs::path& folder) {
    const std::optional<std::string> content = ContentIfAny(folder / NoteName);
    if (!content) return std::nullopt;
    std::istringstream text(*content);
    ReadNote read;
    std::string stamp;
    if (!std::getline(text, read.drawing) || !std::getline(text, read.note.time) ||
        !std::getline(text, stamp))
        return std::nullopt;
    std::istringstream numbers(stamp);
    if (FileStamp source; numbers >> source.size >> source.content) read.note.source = source;
    read.note.file.assign(std::istreambuf_iterator<char>(text), {});
    // A name alone: what stands elsewhere is nobody's kept work.
    if (read.drawing.empty() || read.drawing.find_first_of("/\\") != std::string::npos) return std::nullopt;
    return read;
}

void RemoveFolder(const fs::path& folder) {
    std::error_code ignored;
    fs::remove_all(folder, ignored);
}

}  // namespace

std::optional<FileStamp> StampOf(const fs::path& file) {
    const std::optional<std::string> content = ContentIfAny(file);
    if (!content) return std::nullopt;
    // FNV-1a: the same in every build of the program.
    FileStamp stamp{content->size(), 0xcbf29ce484222325U};
    for (const char byte : *content)
        stamp.content = (stamp.content ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    return stamp;
}

fs::path RecoveryFolder(const fs::path& home) { return home / "recovery"; }

// A folder may be cleared by another program between its making and its claim.
void WorkPlace::Settle() {
    if (mClaim && mClaim->IsStillAt(mFolder)) return;
    mClaim.reset();
    mDrawing.clear();
    std::error_code error;
    fs::create_directories(mRoot, error);
    if (error || !fs::is_directory(mRoot))
        throw FileFailure(error ? error : std::make_error_code(std::errc::not_a_directory), mRoot);
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path folder = mRoot / NewName();
        if (!fs::create_directory(folder, error)) {
            if (error) throw FileFailure(error, folder);
            continue;
        }
        auto claim = std::make_unique<Claim>(folder);
        if (claim->Outcome() != Claim::State::Held || !claim->IsStillAt(folder)) continue;
        mFolder = folder;
        mClaim = std::move(claim);
        return;
    }
    throw FileFailure(std::make_error_code(std::errc::no_lock_available), mRoot);
}

void WorkPlace::Keep(std::string_view dxf, const WorkNote& note) {
    Settle();
    const fs::path drawing = mFolder / (std::to_string(mNext) + ".dxf");
    WriteWholeFile(drawing, dxf);
    try {
        WriteWholeFile(mFolder / NoteName, TextOf(note, TextFromPath(drawing.filename())));
    } catch (...) {
        std::error_code ignored;
        fs::remove(drawing, ignored);
        throw;
    }
    std::error_code ignored;
    if (!mDrawing.empty()) fs::remove(mDrawing, ignored);
    mDrawing = drawing;
    ++mNext;
}

void WorkPlace::Clear() {
    if (!mClaim) return;
    if (mClaim->IsStillAt(mFolder)) RemoveFolder(mFolder);
    mClaim.reset();
    mDrawing.clear();
    // The last one to go leaves nothing behind.
    std::error_code ignored;
    fs::remove(mFolder, ignored);
    fs::remove(mRoot, ignored);
}

AbandonedWork::AbandonedWork(fs::path folder, std::unique_ptr<Claim> claim, fs::path drawing, WorkNote note)
    : mFolder(std::move(folder)),
      mDrawing(std::move(drawing)),
      mClaim(std::move(claim)),
      mNote(std::move(note)) {}

fs::path AbandonedWork::SourcePath() const { return PathFromText(mNote.file); }

void AbandonedWork::Remove() {
    RemoveFolder(mFolder);
    mClaim.reset();
    std::error_code ignored;
    fs::remove(mFolder, ignored);
    fs::remove(mFolder.parent_path(), ignored);
}

namespace {

/// A program that died ahead of its first keeping leaves nothing; a half-written file is nothing either.
bool HoldsWork(const fs::path& folder) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().extension() == ".dxf" || entry->path().filename() == NoteName) return true;
    return false;
}

/// Under a name that no start looks at again; where that can't be, it stays and is told again.
fs::path SetAside(const fs::path& folder) {
    const fs::path place =
        folder.parent_path() /
        (std::string(AsidePrefix) + TextFromPath(folder.filename()).substr(FolderPrefix.size()));
    std::error_code error;
    fs::rename(folder, place, error);
    return error ? folder : place;
}

}  // namespace

FoundWork FindAbandonedWork(const fs::path& recoveryFolder) {
    FoundWork found;
    std::vector<fs::path> folders;
    std::error_code error;
    for (fs::directory_iterator entry(recoveryFolder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        if (TextFromPath(entry->path().filename()).starts_with(FolderPrefix) && !entry->is_symlink(ignored) &&
            entry->is_directory(ignored))
            folders.push_back(entry->path());
    }
    for (const fs::path& folder : folders) {
        auto claim = std::make_unique<Claim>(folder);
        // Of one that can't be locked nobody knows whether its program lives.
        if (claim->Outcome() != Claim::State::Held || !claim->IsStillAt(folder)) continue;
        std::optional<ReadNote> note = NoteIn(folder);
        const fs::path drawing = note ? folder / PathFromText(note->drawing) : fs::path();
        std::error_code ignored;
        if (note && fs::is_regular_file(drawing, ignored))
            found.works.emplace_back(folder, std::move(claim), drawing, std::move(note->note));
        else if (HoldsWork(folder))
            found.damaged.push_back(SetAside(folder));
        else
            RemoveFolder(folder);
    }
    std::ranges::sort(found.works, std::ranges::greater(),
                      [](const AbandonedWork& work) { return work.Note().time; });
    return found;
}

}  // namespace brenvik::desktop
