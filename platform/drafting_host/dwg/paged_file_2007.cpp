// The files of release 2007. Their pages end with parity for repairs, which only tells here whether one is
// damaged.
#include <algorithm>
#include <cstdlib>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/utf8.h"
#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/decompression.h"
#include "drafting_host/dwg/parity.h"

namespace brenvik::dwg {
namespace {

constexpr std::size_t HeadAt = 0x80, PagesAt = 0x480, HeadBlocks = 3, BlockSize = ParityBlock;
constexpr std::size_t SystemData = DataOfBlock(Parity::OfSystemPages),
                      PageData = DataOfBlock(Parity::OfDataPages), HeadSize = 0x110;

/// The numbers of the head that are used, by their places in it.
enum HeadNumber : std::size_t {
    PageMapRepeats = 3,
    PageMapOffset = 7,
    PageMapPacked = 10,
    PageMapSize = 11,
    SectionMapPacked = 22,
    SectionMapPage = 24,
    SectionMapSize = 25,
    SectionMapRepeats = 27,
};

/// Blocks stand interleaved, byte by byte; `used` bytes of each are data, the rest is parity.
std::string WithoutParity(std::string_view stored, std::size_t blocks, std::size_t used) {
    std::string data;
    data.reserve(blocks * used);
    for (std::size_t block = 0; block < blocks; ++block)
        for (std::size_t i = 0; i < used; ++i) data += stored[block + i * blocks];
    return data;
}

std::uint64_t AlignedToEight(std::uint64_t size) { return (size + 7) / 8 * 8; }

struct PageEntry {
    std::uint64_t offset = 0, id = 0, size = 0, packed = 0;
};

struct SectionEntry {
    std::uint64_t size = 0, encryption = 0, encoding = 0;
    std::string name;
    std::vector<PageEntry> pages;
};

class PagedFile2007 {
  public:
    PagedFile2007(std::string_view content, Sections& sections)
        : mContent(content), mSections(sections), mLeft(MostUnpacked(content.size())) {}

    void Run() {
        ReadHead();
        ReadPageMap();
        for (const SectionEntry& section : SectionMap()) TakeSection(section);
    }

  private:
    std::uint64_t Number(HeadNumber which) const { return LongLongAt(mHead, which * 8); }

    void ReadHead() {
        const std::string_view stored = PartAt(mContent, HeadAt, HeadBlocks * BlockSize);
        if (!FitsParity(stored, HeadBlocks, Parity::OfSystemPages))
            Note(mSections, "the parity of the file's head is wrong");
        const std::string data = WithoutParity(stored, HeadBlocks, SystemData);
        constexpr std::size_t lengthAt = 24, packedAt = 32;
        const auto length = static_cast<std::int32_t>(LongAt(data, lengthAt));
        const auto count = static_cast<std::uint64_t>(std::llabs(length));
        const std::string_view packed = PartAt(data, packedAt, count);
        auto head = length < 0 ? std::string(packed) : Unpack2007(packed, HeadSize);
        if (!head || head->size() < HeadSize)
            throw BrokenFile{HeadAt, "the head of a drawing of release 2007"};
        mHead = std::move(*head);
    }

    std::string SystemPage(std::uint64_t offset, std::uint64_t packedSize, std::uint64_t size,
                           std::uint64_t repeats) {
        const std::uint64_t most = mContent.size();
        if (packedSize > most || repeats > most || size > mLeft || repeats == 0)
            throw BrokenFile{HeadAt, "a map that fits the file"};
        const std::uint64_t blocks = (AlignedToEight(packedSize) * repeats + SystemData - 1) / SystemData;
        if (blocks > most / BlockSize || offset > most) throw BrokenFile{HeadAt, "a map within the file"};
        const std::string_view stored = PartAt(mContent, PagesAt + offset, blocks * BlockSize);
        if (!FitsParity(stored, blocks, Parity::OfSystemPages))
            Note(mSections, "byte " + std::to_string(PagesAt + offset) + ": the parity of a map is wrong");
        const std::string data = WithoutParity(stored, blocks, SystemData);
        auto clear = Unpack2007(PartAt(data, 0, packedSize), static_cast<std::size_t>(size));
        if (!clear)
            throw BrokenFile{static_cast<std::size_t>(PagesAt + offset), "a map that can be unpacked"};
        return std::move(*clear);
    }

    void ReadPageMap() {
        const std::string map = SystemPage(Number(PageMapOffset), Number(PageMapPacked), Number(PageMapSize),
                                           Number(PageMapRepeats));
        std::uint64_t offset = 0;
        for (std::size_t at = 0; at + 16 <= map.size(); at += 16) {
            const auto id = static_cast<std::int64_t>(LongLongAt(map, at + 8));
            mOffsets[static_cast<std::uint64_t>(std::llabs(id))] = offset;
            offset += LongLongAt(map, at);
        }
    }

    std::uint64_t OffsetOf(std::uint64_t page) const {
        const auto found = mOffsets.find(page);
        if (found == mOffsets.end()) throw BrokenFile{HeadAt, "page " + std::to_string(page)};
        return found->second;
    }

    std::vector<SectionEntry> SectionMap() {
        const std::string map = SystemPage(OffsetOf(Number(SectionMapPage)), Number(SectionMapPacked),
                                           Number(SectionMapSize), Number(SectionMapRepeats));
        std::vector<SectionEntry> sections;
        constexpr std::size_t fixedPart = 64, pageRow = 56;
        for (std::size_t at = 0; at + fixedPart <= map.size();) {
            SectionEntry section;
            section.size = LongLongAt(map, at);
            section.encryption = LongLongAt(map, at + 16);
            const std::uint64_t nameLength = LongLongAt(map, at + 32);
            section.encoding = LongLongAt(map, at + 48);
            const std::uint64_t pages = LongLongAt(map, at + 56);
            at += fixedPart;
            const std::string_view name = PartAt(map, at, nameLength);
            for (std::size_t i = 0; i + 1 < name.size() && name[i] != '\0'; i += 2) section.name += name[i];
            at += name.size();
            if (pages > (map.size() - at) / pageRow) throw BrokenFile{HeadAt, "pages of a section"};
            for (std::uint64_t page = 0; page < pages; ++page, at += pageRow)
                section.pages.push_back({LongLongAt(map, at), LongLongAt(map, at + 16),
                                         LongLongAt(map, at + 24), LongLongAt(map, at + 32)});
            sections.push_back(std::move(section));
        }
        return sections;
    }

    void TakeSection(const SectionEntry& section) {
        dwg::TakeSection(
            mSections, {section.name, section.size, section.encryption == 1, section.pages.size()},
            mContent.size(), mLeft,
            [&](std::size_t page, std::string& bytes) { TakePage(section, section.pages[page], bytes); });
    }

    void TakePage(const SectionEntry& section, const PageEntry& page, std::string& bytes) {
        const std::uint64_t at = PagesAt + OffsetOf(page.id);
        const auto place = static_cast<std::size_t>(at);
        if (page.offset > bytes.size() || page.size > bytes.size() - page.offset ||
            page.packed > mContent.size())
            throw BrokenFile{place, "a page within its section"};
        constexpr std::uint64_t withParity = 4;
        std::string data;
        if (section.encoding == withParity) {
            const std::uint64_t blocks = (AlignedToEight(page.packed) + PageData - 1) / PageData;
            const std::string_view stored = PartAt(mContent, at, blocks * BlockSize);
            if (!FitsParity(stored, blocks, Parity::OfDataPages))
                Note(mSections, "byte " + std::to_string(at) + ": the parity of a page of section " +
                                    section.name + " is wrong");
            data = WithoutParity(stored, blocks, PageData);
        } else {
            data = PartAt(mContent, at, page.packed);
        }
        const auto clear = Unpack2007(PartAt(data, 0, page.packed), static_cast<std::size_t>(page.size));
        if (!clear) throw BrokenFile{place, "a page that can be unpacked"};
        std::copy(clear->begin(), clear->end(), bytes.begin() + static_cast<std::ptrdiff_t>(page.offset));
    }

    std::string_view mContent;
    Sections& mSections;
    std::size_t mLeft;
    std::string mHead;
    std::map<std::uint64_t, std::uint64_t> mOffsets;
};

}  // namespace

void UnpackPaged2007(std::string_view content, Sections& sections) { PagedFile2007(content, sections).Run(); }

}  // namespace brenvik::dwg
