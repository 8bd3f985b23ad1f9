// The files up to release 2000: a table of places at the head, and everything else where it says.
#include <array>
#include <string>

#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dwg/containers.h"

namespace brenvik::dwg {
namespace {

constexpr std::size_t CountAt = 0x15, TableAt = 0x19, RowSize = 9;
constexpr std::uint32_t FewestRows = 3, MostRows = 6;

/// What the checksum of the head is altered by, for 3 to 6 rows.
constexpr std::array<std::uint16_t, 4> Alterations = {0xA598, 0x8101, 0x3CC4, 0x8461};

enum RowNumber : unsigned { HeaderRow = 0, ClassesRow = 1, MapRow = 2, TemplateRow = 4 };

std::string* MemberOf(Sections& sections, unsigned row) {
    switch (row) {
        case HeaderRow:
            return &sections.header;
        case ClassesRow:
            return &sections.classes;
        case MapRow:
            return &sections.objectMap;
        case TemplateRow:
            return &sections.measurement;
        default:
            return nullptr;
    }
}

}  // namespace

void UnpackFlat(std::string_view content, Sections& sections) {
    const std::uint32_t rows = LongAt(content, CountAt);
    if (rows < FewestRows || rows > MostRows) throw BrokenFile{CountAt, "a table of 3 to 6 places"};
    for (std::uint32_t row = 0; row < rows; ++row) {
        const std::size_t at = TableAt + row * RowSize;
        const auto number = static_cast<unsigned char>(PartAt(content, at, RowSize)[0]);
        std::string* const member = MemberOf(sections, number);
        if (member != nullptr) *member = PartAt(content, LongAt(content, at + 1), LongAt(content, at + 5));
    }
    const std::size_t sumAt = TableAt + rows * RowSize;
    const std::uint16_t sum = Crc16(PartAt(content, 0, sumAt), 0) ^ Alterations[rows - FewestRows];
    if (ShortAt(content, sumAt) != sum) Note(sections, "the checksum of the file's head is wrong");
    sections.objects = content;
}

}  // namespace brenvik::dwg
