// Releases, and what the three kinds of files share.
#include "drafting_host/dwg/containers.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/ascii.h"
#include "base/file_failure.h"
#include "base/quoted.h"

namespace brenvik::dwg {
namespace {

/// In the order of Release.
constexpr auto ReleaseMarks = std::to_array<std::string_view>(
    {"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"});

constexpr std::size_t MarkLength = 6, MaintenanceAt = 0x0B, CodePageAt = 0x13, HeadLength = 0x80;

constexpr auto SectionNames = std::to_array<std::pair<std::string_view, std::string Sections::*>>({
    {"AcDb:Header", &Sections::header},
    {"AcDb:Classes", &Sections::classes},
    {"AcDb:Handles", &Sections::objectMap},
    {"AcDb:AcDbObjects", &Sections::objects},
    {"AcDb:Template", &Sections::measurement},
    {"AcDb:AcDsPrototype_1b", &Sections::dataStore},
    {"AcDb:SummaryInfo", &Sections::summary},
});

std::string Sections::*MemberOf(std::string_view name) {
    for (const auto& [known, member] : SectionNames)
        if (known == name) return member;
    return nullptr;
}

[[noreturn]] void Refuse(std::string_view fileName, std::size_t place, const std::string& expected,
                         const std::string& found) {
    throw InvalidFileFormat(std::string(fileName) + ", byte " + std::to_string(place) + ": expected " +
                            expected + ", found " + found);
}

std::string Shown(std::string_view text) {
    std::string shown;
    for (const char c : text) shown += c >= ' ' && c <= '~' ? c : '.';
    return InQuotes(shown);
}

/// Whether a section of this name is used at all.
bool IsUsed(std::string_view name) { return MemberOf(name) != nullptr; }

/// Whether a mark is of the form of those above and stands behind them all.
bool IsLater(std::string_view mark) {
    return mark.size() == MarkLength && mark.starts_with(ReleaseMarks.back().substr(0, 2)) &&
           IsDigitsAlone(mark.substr(2)) && mark > ReleaseMarks.back();
}

/// The release by the first six bytes. Throws Failure 321 for one that can't be read, naming it and the way
/// out.
Release ReleaseOf(std::string_view content, std::string_view fileName) {
    const std::string_view mark = content.substr(0, MarkLength);
    const auto found = std::ranges::find(ReleaseMarks, mark);
    if (found != ReleaseMarks.end()) return static_cast<Release>(found - ReleaseMarks.begin());
    const std::string wayOut = IsLater(mark)
                                   ? "a later one can be saved as DXF, or as DWG of release 2018"
                                   : "an older one can be saved as DXF, or as DWG of release 14 or later";
    Refuse(fileName, 0, "a binary drawing (DWG) of release 13 to 2018; " + wayOut, Shown(mark));
}

}  // namespace

void Note(Sections& sections, std::string text, bool dataLost) {
    sections.notes.push_back({0, std::move(text), dataLost});
}

std::size_t MostUnpacked(std::size_t fileSize) { return fileSize * 12; }

std::string_view PartAt(std::string_view bytes, std::uint64_t at, std::uint64_t size) {
    if (at > bytes.size() || size > bytes.size() - at)
        throw BrokenFile{static_cast<std::size_t>(std::min<std::uint64_t>(at, bytes.size())),
                         std::to_string(size) + " bytes"};
    return bytes.substr(static_cast<std::size_t>(at), static_cast<std::size_t>(size));
}

std::uint16_t ShortAt(std::string_view bytes, std::size_t at) {
    const std::string_view part = PartAt(bytes, at, 2);
    return static_cast<std::uint16_t>(static_cast<unsigned char>(part[0]) |
                                      (static_cast<unsigned>(static_cast<unsigned char>(part[1])) << 8U));
}

std::uint32_t LongAt(std::string_view bytes, std::size_t at) {
    PartAt(bytes, at, 4);
    return ShortAt(bytes, at) | (static_cast<std::uint32_t>(ShortAt(bytes, at + 2)) << 16U);
}

std::uint64_t LongLongAt(std::string_view bytes, std::size_t at) {
    PartAt(bytes, at, 8);
    return LongAt(bytes, at) | (static_cast<std::uint64_t>(LongAt(bytes, at + 4)) << 32U);
}

void Keep(Sections& sections, std::string_view name, std::string bytes) {
    if (std::string Sections::*const member = MemberOf(name)) sections.*member = std::move(bytes);
}

void TakeSection(Sections& sections, const PagedSection& section, std::size_t fileSize, std::size_t& left,
                 const std::function<void(std::size_t page, std::string& bytes)>& takePage) {
    if (!IsUsed(section.name)) return;
    const std::string name(section.name);
    if (section.isEncrypted)
        throw BrokenFile{HeadLength, "a drawing without a password; save it without one"};
    if (section.size > left) {
        Note(sections, "section " + name + " is left out: its size of " + std::to_string(section.size) +
                           " bytes can't be true for a file of " + std::to_string(fileSize));
        return;
    }
    if (section.size == 0) Note(sections, "section " + name + " is empty");
    left -= static_cast<std::size_t>(section.size);
    std::string bytes(static_cast<std::size_t>(section.size), '\0');
    for (std::size_t page = 0; page < section.pages; ++page) {
        try {
            takePage(page, bytes);
        } catch (const BrokenFile& broken) {
            Note(sections, "byte " + std::to_string(broken.place) + ": a page of section " + name +
                               " is left out, " + broken.expected + " was expected");
        }
    }
    Keep(sections, section.name, std::move(bytes));
}

Sections Unpack(std::string_view content, std::string_view fileName) {
    Sections sections;
    sections.release = ReleaseOf(content, fileName);
    if (content.size() < HeadLength)
        Refuse(fileName, content.size(), "the head of a binary drawing", "the end of the file");
    sections.maintenance = static_cast<unsigned char>(content[MaintenanceAt]);
    sections.codePage = ShortAt(content, CodePageAt);
    try {
        if (sections.release <= Release::R2000)
            UnpackFlat(content, sections);
        else if (sections.release == Release::R2007)
            UnpackPaged2007(content, sections);
        else
            UnpackPaged(content, sections);
    } catch (const BrokenFile& broken) {
        Refuse(fileName, broken.place, broken.expected,
               broken.place >= content.size() ? "the end of the file" : "damaged data");
    }
    if (sections.objectMap.empty() || sections.objects.empty())
        Refuse(fileName, HeadLength, "the drawing's objects and their map", "neither or one of them");
    return sections;
}

int ReleaseNumber(Release release) {
    constexpr std::array numbers{1012, 1014, 1015, 1018, 1021, 1024, 1027, 1032};
    return numbers[static_cast<std::size_t>(release)];
}

}  // namespace brenvik::dwg
