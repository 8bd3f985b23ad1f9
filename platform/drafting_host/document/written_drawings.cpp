// Finds the file that a drawing in memory was written to, by the file's size and the time of its last change.
#include "drafting_host/document/written_drawings.h"

#include <algorithm>
#include <system_error>

namespace brenvik {
namespace {

/// A run writes every part twice before it opens the first one. A kept part shares its shapes with the
/// drawing it came from, so many cost little; a limit there has to be all the same.
constexpr std::size_t MostKept = 4096;

}  // namespace

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
    if (mKept.insert_or_assign(file, Kept{*stamp, std::move(drawing)}).second) mOrder.push_back(file);
    if (mOrder.size() <= MostKept) return;
    mKept.erase(mOrder.front());
    mOrder.pop_front();
}

std::shared_ptr<const DrawingSnapshot> WrittenDrawings::Find(const std::filesystem::path& file) {
    const auto found = mKept.find(file);
    if (found == mKept.end()) return nullptr;
    if (StampOf(file) == found->second.stamp) return found->second.drawing;
    std::erase(mOrder, file);
    mKept.erase(found);
    return nullptr;
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
