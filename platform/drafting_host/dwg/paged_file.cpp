// The files of releases 2004 and 2010 to 2018: a veiled head, a map of pages, a map of sections, and packed
// pages.
#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dwg/containers.h"
#include "drafting_host/dwg/decompression.h"

namespace brenvik::dwg {
namespace {

constexpr std::size_t HeadAt = 0x80, HeadSize = 0x6C, FirstPageAt = 0x100, DataHeadSize = 32,
                      SystemHeadSize = 20;
constexpr std::size_t MapAddressAt = 0x54, SectionPageAt = 0x5C, HeadSumAt = 0x68;
constexpr std::uint32_t PageMapMark = 0x41630E3B, SectionMapMark = 0x4163003B, DataMark = 0x4163043B;
constexpr std::size_t NameSize = 64;

struct Place {
    std::uint64_t address = 0;
    std::uint32_t size = 0;
};

struct PageOfSection {
    std::uint32_t number = 0;
    std::uint64_t start = 0;
};

struct SectionEntry {
    std::uint64_t size = 0;
    std::uint32_t mostOfPage = 0, compressed = 0, encrypted = 0;
    std::string name;
    std::vector<PageOfSection> pages;
};

/// The bytes that a simple generator gives, by which the head is veiled.
std::string Unveiled(std::string_view veiled) {
    std::string clear(veiled);
    std::uint32_t state = 1;
    for (char& c : clear) {
        state = state * 0x343FDU + 0x269EC3U;
        c = static_cast<char>(static_cast<unsigned char>(c) ^ ((state >> 16U) & 0xFFU));
    }
    return clear;
}

std::string WithZeros(std::string_view bytes, std::size_t at, std::size_t count) {
    std::string changed(bytes);
    std::fill_n(changed.begin() + static_cast<std::ptrdiff_t>(at), count, '\0');
    return changed;
}

class PagedFile {
  public:
    PagedFile(std::string_view content, Sections& sections)
        : mContent(content), mSections(sections), mLeft(MostUnpacked(content.size())) {}

    void Run() {
        const std::string head = Unveiled(PartAt(mContent, HeadAt, HeadSize));
        constexpr std::string_view mark = "AcFssFcAJMB";
        if (!head.starts_with(mark)) throw BrokenFile{HeadAt, "the head of a paged drawing"};
        if (Crc32(WithZeros(head, HeadSumAt, 4)) != LongAt(head, HeadSumAt))
            Note(mSections, "the checksum of the file's head is wrong");
        TakePageMap(LongLongAt(head, MapAddressAt) + FirstPageAt);
        const auto sectionMap = mPages.find(LongAt(head, SectionPageAt));
        if (sectionMap == mPages.end()) throw BrokenFile{HeadAt, "the page of the map of sections"};
        for (const SectionEntry& section : SectionsOf(sectionMap->second.address)) TakeSection(section);
    }

  private:
    std::string SystemPage(std::uint64_t at, std::uint32_t mark) {
        const std::string_view head = PartAt(mContent, at, SystemHeadSize);
        const auto place = static_cast<std::size_t>(at);
        if (LongAt(head, 0) != mark) throw BrokenFile{place, "a map of pages or sections"};
        const std::uint32_t size = LongAt(head, 4);
        const std::string_view packed = PartAt(mContent, at + SystemHeadSize, LongAt(head, 8));
        const std::uint32_t sum = PageSum(PageSum(0, WithZeros(head, 16, 4)), packed);
        if (sum != LongAt(head, 16))
            Note(mSections, "byte " + std::to_string(at) + ": the checksum of a map is wrong");
        if (size > mLeft) throw BrokenFile{place, "a map that fits the file"};
        auto bytes = Unpack2004(packed, size);
        if (!bytes) throw BrokenFile{place, "a map that can be unpacked"};
        return std::move(*bytes);
    }

    void TakePageMap(std::uint64_t at) {
        const std::string map = SystemPage(at, PageMapMark);
        std::uint64_t address = FirstPageAt;
        for (std::size_t entry = 0; entry + 8 <= map.size(); entry += 8) {
            const auto number = static_cast<std::int32_t>(LongAt(map, entry));
            const std::uint32_t size = LongAt(map, entry + 4);
            if (number >= 0) mPages[static_cast<std::uint32_t>(number)] = {address, size};
            // A gap has four more numbers.
            if (number < 0) entry += 16;
            address += size;
        }
    }

    std::vector<SectionEntry> SectionsOf(std::uint64_t at) {
        const std::string map = SystemPage(at, SectionMapMark);
        constexpr std::size_t headOfMap = 20, fixedPart = 32 + NameSize, pageRow = 16;
        std::vector<SectionEntry> sections;
        std::size_t place = headOfMap;
        for (std::uint32_t left = LongAt(map, 0); left > 0 && place + fixedPart <= map.size(); --left) {
            SectionEntry section;
            section.size = LongLongAt(map, place);
            const std::uint32_t pages = LongAt(map, place + 8);
            section.mostOfPage = LongAt(map, place + 12);
            section.compressed = LongAt(map, place + 20);
            section.encrypted = LongAt(map, place + 28);
            const std::string_view name = PartAt(map, place + 32, NameSize);
            section.name = name.substr(0, name.find('\0'));
            place += fixedPart;
            if (pages > (map.size() - place) / pageRow)
                throw BrokenFile{static_cast<std::size_t>(at), "pages of a section"};
            for (std::uint32_t page = 0; page < pages; ++page, place += pageRow)
                section.pages.push_back({LongAt(map, place), LongLongAt(map, place + 8)});
            sections.push_back(std::move(section));
        }
        return sections;
    }

    void TakeSection(const SectionEntry& section) {
        dwg::TakeSection(
            mSections, {section.name, section.size, section.encrypted == 1, section.pages.size()},
            mContent.size(), mLeft,
            [&](std::size_t page, std::string& bytes) { TakePage(section, section.pages[page], bytes); });
    }

    void TakePage(const SectionEntry& section, const PageOfSection& page, std::string& bytes) {
        const auto found = mPages.find(page.number);
        if (found == mPages.end()) throw BrokenFile{HeadAt, "page " + std::to_string(page.number)};
        const std::uint64_t at = found->second.address;
        const auto place = static_cast<std::size_t>(at);
        const std::string head = UnveiledHead(at);
        if (LongAt(head, 0) != DataMark) throw BrokenFile{place, "the head of a page"};
        const std::string_view stored = PartAt(mContent, at + DataHeadSize, LongAt(head, 8));
        const std::uint32_t dataSum = LongAt(head, 28);
        if (PageSum(0, stored) != dataSum || PageSum(dataSum, WithZeros(head, 24, 4)) != LongAt(head, 24))
            Note(mSections, "byte " + std::to_string(at) + ": the checksum of a page of section " +
                                section.name + " is wrong");
        if (page.start > bytes.size()) throw BrokenFile{place, "a page within its section"};
        const auto start = static_cast<std::size_t>(page.start);
        if (section.compressed != 2) return Put(stored, start, bytes);
        // The last page of a section is as long as the others; what hangs over is cut off.
        const auto clear = Unpack2004(stored, section.mostOfPage);
        if (!clear) throw BrokenFile{place, "a page that can be unpacked"};
        Put(*clear, start, bytes);
    }

    static void Put(std::string_view part, std::size_t start, std::string& bytes) {
        const std::size_t count = std::min(part.size(), bytes.size() - start);
        std::copy_n(part.begin(), count, bytes.begin() + static_cast<std::ptrdiff_t>(start));
    }

    /// The head of a data page is veiled by its own place in the file.
    std::string UnveiledHead(std::uint64_t at) const {
        std::string head(PartAt(mContent, at, DataHeadSize));
        const std::uint32_t mask = 0x4164536BU ^ static_cast<std::uint32_t>(at);
        for (std::size_t i = 0; i < head.size(); ++i)
            head[i] =
                static_cast<char>(static_cast<unsigned char>(head[i]) ^ ((mask >> (8 * (i % 4))) & 0xFFU));
        return head;
    }

    std::string_view mContent;
    Sections& mSections;
    std::size_t mLeft;
    std::map<std::uint32_t, Place> mPages;
};

}  // namespace

void UnpackPaged(std::string_view content, Sections& sections) { PagedFile(content, sections).Run(); }

}  // namespace brenvik::dwg
