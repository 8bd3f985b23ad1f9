// The store of release 2013 on: a small file system of segments, with an index of records by handle.
#include <algorithm>
#include <vector>

#include "drafting_host/dwg/bodies.h"

namespace brenvik::dwg {
namespace {

constexpr std::uint32_t StoreMark = 0x6472616A, BlobMark = 0xBB106BB1;
constexpr std::uint16_t SegmentMark = 0xD5AC;
constexpr std::size_t SegmentHead = 48, AlignUnit = 16;

class DataStore {
  public:
    explicit DataStore(Sections& sections) : mSections(sections), mBytes(sections.dataStore) {}

    std::unordered_map<HandleValue, std::string> Run() {
        try {
            if (LongAt(mBytes, 0) != StoreMark) throw BrokenFile{0, "the mark of the store"};
            ReadSegments(LongAt(mBytes, 24), LongAt(mBytes, 32));
            ReadRecords(LongAt(mBytes, 40));
        } catch (const BrokenFile& broken) {
            Tell(broken);
        }
        return std::move(mBodies);
    }

  private:
    void Tell(const BrokenFile& broken) {
        Note(mSections, "the store of bodies can't be read at its byte " + std::to_string(broken.place) +
                            ": expected " + broken.expected);
    }

    /// Where a segment begins; checked by its mark.
    std::size_t Segment(std::size_t index) const {
        if (index >= mSegments.size() || mSegments[index] == 0)
            throw BrokenFile{0, "segment " + std::to_string(index)};
        const std::size_t at = mSegments[index];
        if (ShortAt(mBytes, at) != SegmentMark) throw BrokenFile{at, "the mark of a segment"};
        return at;
    }

    void ReadSegments(std::size_t indexAt, std::size_t count) {
        constexpr std::size_t row = 12;
        const std::size_t first = indexAt + SegmentHead;
        if (first > mBytes.size() || count > (mBytes.size() - first) / row)
            throw BrokenFile{indexAt, "an index of segments that fits the store"};
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint64_t at = LongLongAt(mBytes, first + i * row);
            const bool isUsed = LongAt(mBytes, first + i * row + 8) != 0;
            if (isUsed && at >= mBytes.size())
                throw BrokenFile{first + i * row, "a segment within the store"};
            mSegments.push_back(isUsed ? static_cast<std::size_t>(at) : 0);
        }
    }

    void ReadRecords(std::size_t indexSegment) {
        constexpr std::size_t row = 12, head = 8;
        const std::size_t first = Segment(indexSegment) + SegmentHead;
        const std::size_t count = LongAt(mBytes, first);
        if (count > (mBytes.size() - first) / row)
            throw BrokenFile{first, "an index of records that fits the store"};
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t segment = LongAt(mBytes, first + head + i * row);
            if (segment == 0) continue;
            try {
                TakeRecord(Segment(segment), LongAt(mBytes, first + head + i * row + 4));
            } catch (const BrokenFile& broken) {
                Tell(broken);
            }
        }
    }

    void TakeRecord(std::size_t segment, std::size_t offset) {
        const std::size_t record = segment + SegmentHead + offset;
        const HandleValue handle = LongLongAt(mBytes, record + 8);
        const std::size_t alignment = LongAt(mBytes, segment + 36);
        const std::size_t at = segment + alignment * AlignUnit + LongAt(mBytes, record + 16);
        const std::uint32_t length = LongAt(mBytes, at);
        std::string bytes = length == BlobMark ? Blob(at + 4) : std::string(PartAt(mBytes, at + 4, length));
        if (IsBinaryAcis(bytes)) mBodies.emplace(handle, std::move(bytes));
    }

    /// A record too large for its segment lies in pages.
    std::string Blob(std::size_t at) const {
        const std::uint64_t total = LongLongAt(mBytes, at);
        const std::size_t pages = LongAt(mBytes, at + 8);
        constexpr std::size_t head = 32, row = 8, pageHead = 32;
        if (total > mBytes.size() || pages > mBytes.size() / row)
            throw BrokenFile{at, "a body that fits the store"};
        std::string bytes;
        for (std::size_t page = 0; page < pages; ++page) {
            const std::size_t from = Segment(LongAt(mBytes, at + head + page * row)) + SegmentHead;
            bytes += PartAt(mBytes, from + pageHead, LongLongAt(mBytes, from + 24));
            if (bytes.size() > total) throw BrokenFile{from, "a body of " + std::to_string(total) + " bytes"};
        }
        if (bytes.size() != total) throw BrokenFile{at, "a body of " + std::to_string(total) + " bytes"};
        return bytes;
    }

    Sections& mSections;
    std::string_view mBytes;
    std::vector<std::size_t> mSegments;
    std::unordered_map<HandleValue, std::string> mBodies;
};

}  // namespace

std::unordered_map<HandleValue, std::string> ReadDataStore(Sections& sections) {
    if (sections.dataStore.empty()) return {};
    return DataStore(sections).Run();
}

}  // namespace brenvik::dwg
