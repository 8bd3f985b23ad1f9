// Drawings that this host has written itself, kept in memory for as long as their files stand unchanged:
// a part that is written only to be opened again is neither parsed nor built anew.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "drafting_host/document/drawing_snapshot.h"

namespace brenvik {

class WrittenDrawings {
  public:
    /// Keeps the drawing for the file as it stands on the disk now.
    void Keep(const std::filesystem::path& file, std::shared_ptr<const DrawingSnapshot> drawing);
    /// The drawing of the file, or null where it was never kept or the file is another one by now.
    std::shared_ptr<const DrawingSnapshot> Find(const std::filesystem::path& file);
    /// For a copy of the file, as it stands on the disk now: read from its text the drawing would come back
    /// with other last digits.
    void KeepCopy(const std::filesystem::path& file, const std::filesystem::path& copy);

    /// The file's content that the same drawing gave last, or null: a run writes each part twice over.
    const std::string* ContentOf(const DrawingSnapshot& drawing) const;
    void KeepContent(std::shared_ptr<const DrawingSnapshot> drawing, std::string content);

  private:
    /// Distinguishes a file from a later one of the same name.
    struct Stamp {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type changed;
        friend bool operator==(const Stamp&, const Stamp&) = default;
    };
    struct Kept {
        Stamp stamp;
        std::shared_ptr<const DrawingSnapshot> drawing;
    };
    static std::optional<Stamp> StampOf(const std::filesystem::path& file);
    /// Lets go of the drawings whose files are gone or others by now.
    void Sweep();

    std::map<std::filesystem::path, Kept> mKept;
    std::size_t mSweepAt = 4096;
    std::shared_ptr<const DrawingSnapshot> mLast;
    std::string mLastContent;
};

}  // namespace brenvik
