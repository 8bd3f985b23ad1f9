// Finds the file that a drawing in memory was written to, by the file's size and the time of its last change.
#include "drafting_host/document/written_drawings.h"

#include <algorithm>
#include <system_error>

namespace brenvik {

std::optional<WrittenDrawings::Stamp> WrittenDrawings::StampOf(const std::filesystem::path& file) {
    std::error_code error;
    Stamp stamp;
    stamp.size = std::filesystem::file_size(file, error);
    if (error) return std::nullopt;
    stamp.changed = std::filesystem::last_write_time(file, error);
    if (error) return std::nullopt;
    return stamp;
}

void WrittenDrawings::Keep(const std::filesystem::path& file,
                           std::shared_ptr<const DrawingSnapshot> drawing) {
    const std::optional<Stamp> stamp = StampOf(file);
    if (!stamp) return;
    mKept.insert_or_assign(file, Kept{*stamp, std::move(drawing)});
    if (mKept.size() > mSweepAt) Sweep();
}

// A run writes every part twice before it opens the first one, and none of them may be let go: which ones
// come from their text would hang on the others. A kept part shares its shapes with the drawing it came
// from, so many cost little.
void WrittenDrawings::Sweep() {
    std::erase_if(mKept, [](const auto& kept) { return StampOf(kept.first) != kept.second.stamp; });
    mSweepAt = std::max(mSweepAt, 2 * mKept.size());
}

std::shared_ptr<const DrawingSnapshot> WrittenDrawings::Find(const std::filesystem::path& file) {
    const auto found = mKept.find(file);
    if (found == mKept.end()) return nullptr;
    if (StampOf(file) == found->second.stamp) return found->second.drawing;
    mKept.erase(found);
    return nullptr;
}

void WrittenDrawings::KeepCopy(const std::filesystem::path& file, const std::filesystem::path& copy) {
    if (std::shared_ptr<const DrawingSnapshot> drawing = Find(file)) Keep(copy, std::move(drawing));
}

const std::string* WrittenDrawings::ContentOf(const DrawingSnapshot& drawing) const {
    const auto same = [](const TopoDS_Shape& a, const TopoDS_Shape& b) { return a.IsEqual(b); };
    if (!mLast || !std::ranges::equal(mLast->shapes, drawing.shapes, same)) return nullptr;
    return mLast->data == drawing.data ? &mLastContent : nullptr;
}

void WrittenDrawings::KeepContent(std::shared_ptr<const DrawingSnapshot> drawing, std::string content) {
    mLast = std::move(drawing);
    mLastContent = std::move(content);
}

}  // namespace brenvik
