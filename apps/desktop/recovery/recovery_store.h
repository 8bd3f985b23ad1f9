// Unsaved work on disk, for the next start after a crash: a folder for each open drawing below the home,
// which its program has claimed for as long as it lives.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "file_roots/claim.h"

namespace brenvik::desktop {

/// Identifies the content of a file, to recognise a later change.
struct FileStamp {
    std::uintmax_t size = 0;
    std::uint64_t content = 0;
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
/// Null for a file that can't be read.
std::optional<FileStamp> StampOf(const std::filesystem::path& file);

/// What unsaved work belongs to.
struct WorkNote {
    /// The drawing's full name, absolute.
    std::string file;
    /// When it was kept, as a person reads it.
    std::string time;
    /// Of the file when the drawing was read from it or saved in it.
    std::optional<FileStamp> source;
};

/// Where unsaved work of a home lies.
std::filesystem::path RecoveryFolder(const std::filesystem::path& home);

/// The place of one open drawing.
class WorkPlace {
  public:
    explicit WorkPlace(std::filesystem::path recoveryFolder) : mRoot(std::move(recoveryFolder)) {}
    /// What was kept and not cleared stays for the next start: a program may end in other ways than quietly.
    ~WorkPlace() = default;
    WorkPlace(const WorkPlace&) = delete;
    WorkPlace& operator=(const WorkPlace&) = delete;

    /// Puts the work in the place of what was kept before: whole, or what was kept stays. Throws Failure
    /// where the disk refuses.
    void Keep(std::string_view dxf, const WorkNote& note);
    void Clear();

  private:
    void Settle();

    std::filesystem::path mRoot, mFolder, mDrawing;
    std::unique_ptr<Claim> mClaim;
    int mNext = 1;
};

/// Work that a program has left which is gone. Nobody else finds it as long as this stands.
class AbandonedWork {
  public:
    AbandonedWork(std::filesystem::path folder, std::unique_ptr<Claim> claim, std::filesystem::path drawing,
                  WorkNote note);
    ~AbandonedWork() = default;
    AbandonedWork(AbandonedWork&&) = default;
    AbandonedWork& operator=(AbandonedWork&&) = default;

    const std::filesystem::path& Drawing() const { return mDrawing; }
    const WorkNote& Note() const { return mNote; }
    /// Whether the file is another one than the work began with, or has gone.
    bool SourceChanged() const { return StampOf(SourcePath()) != mNote.source; }
    bool SourceIsThere() const { return StampOf(SourcePath()).has_value(); }
    void Remove();

  private:
    std::filesystem::path SourcePath() const;

    std::filesystem::path mFolder, mDrawing;
    std::unique_ptr<Claim> mClaim;
    WorkNote mNote;
};

struct FoundWork {
    /// The latest first.
    std::vector<AbandonedWork> works;
    /// Where work was set aside that can't be offered, since its note is damaged or its drawing is gone.
    std::vector<std::filesystem::path> damaged;
};

/// All work below the folder that nobody is at.
FoundWork FindAbandonedWork(const std::filesystem::path& recoveryFolder);

}  // namespace brenvik::desktop
