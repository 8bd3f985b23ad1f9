// Drawings that this host has written itself, kept in memory for as long as their files stand unchanged:
// a part that is written only to be opened again is neither parsed nor built anew.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "drafting_host/document/drawing_snapshot.h"

namespace brenvik {

class WrittenDrawings {
  public:
    /// Keeps the drawing for the file as it stands on the disk now; the oldest one gives way.
    void Keep(const std::filesystem::path& file, std::shared_ptr<const DrawingSnapshot> drawing);
    /// The drawing of the file, or nothing where it was never kept or the file is another one by now.
    std::shared_ptr<const DrawingSnapshot> Find(const std::filesystem::path& file);

    /// The file's content that the same drawing gave last, or nothing: a run writes each part twice over.
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

    std::map<std::filesystem::path, Kept> mKept;
    std::deque<std::filesystem::path> mOrder;
    std::shared_ptr<const DrawingSnapshot> mLast;
    std::string mLastContent;
};

}  // namespace brenvik
