// The object map and the classes.
#include "drafting_host/dwg/object_map.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "drafting_host/dwg/checksums.h"

namespace brenvik::dwg {
namespace {

unsigned HighFirst(BitReader& reader) {
    const unsigned high = reader.Byte();
    return (high << 8U) | reader.Byte();
}

/// Fixed numbers; everything else is a class.
constexpr auto FixedKinds = std::to_array<std::pair<unsigned, std::string_view>>({
    {1, "TEXT"},
    {2, "ATTRIB"},
    {3, "ATTDEF"},
    {4, "BLOCK"},
    {5, "ENDBLK"},
    {6, "SEQEND"},
    {7, "INSERT"},
    {8, "MINSERT"},
    {10, "VERTEX_2D"},
    {11, "VERTEX_3D"},
    {12, "VERTEX_MESH"},
    {13, "VERTEX_PFACE"},
    {14, "FACE_PFACE"},
    {15, "POLYLINE_2D"},
    {16, "POLYLINE_3D"},
    {17, "ARC"},
    {18, "CIRCLE"},
    {19, "LINE"},
    {20, "DIMENSION"},
    {21, "DIMENSION"},
    {22, "DIMENSION"},
    {23, "DIMENSION"},
    {24, "DIMENSION"},
    {25, "DIMENSION"},
    {26, "DIMENSION"},
    {27, "POINT"},
    {28, "3DFACE"},
    {29, "POLYLINE_PFACE"},
    {30, "POLYLINE_MESH"},
    {31, "SOLID"},
    {32, "TRACE"},
    {33, "SHAPE"},
    {34, "VIEWPORT"},
    {35, "ELLIPSE"},
    {36, "SPLINE"},
    {37, "REGION"},
    {38, "3DSOLID"},
    {39, "BODY"},
    {40, "RAY"},
    {41, "XLINE"},
    {42, "DICTIONARY"},
    {43, "OLEFRAME"},
    {44, "MTEXT"},
    {45, "LEADER"},
    {46, "TOLERANCE"},
    {47, "MLINE"},
    {48, "BLOCK_CONTROL"},
    {49, "BLOCK_RECORD"},
    {50, "LAYER_CONTROL"},
    {51, "LAYER"},
    {52, "STYLE_CONTROL"},
    {53, "STYLE"},
    {56, "LTYPE_CONTROL"},
    {57, "LTYPE"},
    {60, "VIEW_CONTROL"},
    {61, "VIEW"},
    {62, "UCS_CONTROL"},
    {63, "UCS"},
    {64, "VPORT_CONTROL"},
    {65, "VPORT"},
    {66, "APPID_CONTROL"},
    {67, "APPID"},
    {68, "DIMSTYLE_CONTROL"},
    {69, "DIMSTYLE"},
    {70, "VX_CONTROL"},
    {71, "VX_TABLE_RECORD"},
    {72, "GROUP"},
    {73, "MLINESTYLE"},
    {74, "OLE2FRAME"},
    {76, "LONG_TRANSACTION"},
    {77, "LWPOLYLINE"},
    {78, "HATCH"},
    {79, "XRECORD"},
    {80, "ACDBPLACEHOLDER"},
    {81, "VBA_PROJECT"},
    {82, "LAYOUT"},
    {498, "ACAD_PROXY_ENTITY"},
    {499, "ACAD_PROXY_OBJECT"},
});
constexpr unsigned FirstClass = 500;

}  // namespace

ObjectMap::ObjectMap(Sections& sections) {
    BitReader reader(sections.objectMap);
    constexpr unsigned sizeBytes = 2;
    try {
        while (reader.Left() >= 16) {
            const std::size_t begin = reader.Position() / 8;
            const unsigned size = HighFirst(reader);
            if (size <= sizeBytes) {
                TellRest(sections, begin + sizeBytes + sizeBytes);
                break;
            }
            TakePiece(reader, (begin + size) * 8, sections.objects.size());
            const unsigned sum = HighFirst(reader);
            if (Crc16(std::string_view(sections.objectMap).substr(begin, size), ObjectSeed) != sum)
                Note(sections, "the checksum of a piece of the object map is wrong");
        }
    } catch (const Damage& damage) {
        Note(sections, "the object map breaks off at byte " + std::to_string(damage.bit / 8) + " of " +
                           std::to_string(sections.objectMap.size()) + ": " + damage.reason +
                           "; objects behind are missing");
    }
    if (mEntries.empty()) Note(sections, "the object map names no objects: the drawing is missing");
}

/// An empty piece ends the map; behind its checksum stands nothing.
void ObjectMap::TellRest(Sections& sections, std::size_t end) {
    const std::string_view map = sections.objectMap;
    if (end >= map.size() || map.find_first_not_of('\0', end) == std::string_view::npos) return;
    Note(sections, "the object map ends at byte " + std::to_string(end) + " of " +
                       std::to_string(map.size()) + ": objects named behind are missing");
}

void ObjectMap::TakePiece(BitReader& reader, std::size_t end, std::size_t objectBytes) {
    HandleValue handle = 0;
    std::int64_t place = 0;
    while (reader.Position() < end) {
        const std::uint64_t step = reader.ModularChar();
        place += reader.SignedModularChar();
        handle += step;
        if (step == 0) continue;
        if (place > 0 && static_cast<std::uint64_t>(place) < objectBytes)
            Add(handle, static_cast<std::size_t>(place));
    }
    reader.MoveTo(end);
}

void ObjectMap::Add(HandleValue handle, std::size_t place) {
    const auto [index, isNew] = mIndices.emplace(handle, mEntries.size());
    if (isNew)
        mEntries.push_back({handle, place});
    else
        mEntries[index->second].place = place;
}

const ObjectMap::Entry* ObjectMap::Find(HandleValue handle) const {
    const auto index = mIndices.find(handle);
    return index == mIndices.end() ? nullptr : &mEntries[index->second];
}

Kinds::Kinds(Sections& sections, const Texts& texts) {
    if (sections.classes.empty()) return;
    try {
        const Frame frame = FrameOf(sections.classes, ClassesMark, sections.release, sections.maintenance);
        if (frame.sumIsWrong) Note(sections, "the checksum of the section of classes is wrong");
        Streams streams = StreamsOfFrame(frame, sections.release, texts);
        ReadClasses(streams);
    } catch (const Damage& damage) {
        Note(sections, "the section of classes breaks off at bit " + std::to_string(damage.bit) + ": " +
                           damage.reason + "; objects of further classes are passed over");
    }
}

void Kinds::ReadClasses(Streams& streams) {
    BitReader& data = streams.data;
    std::optional<unsigned> highest;
    if (streams.release == Release::R2004) {
        highest = static_cast<std::uint16_t>(data.BitShort());
        data.Skip(17);
    } else if (streams.IsAtLeast(Release::R2007)) {
        highest = static_cast<unsigned>(data.BitLong());
        data.Bit();
    }
    unsigned last = FirstClass - 1;
    while (data.Left() >= 8) {
        const auto number = static_cast<unsigned>(data.BitShort());
        // Some writers pad the section; numbers that don't rise are none.
        if (number <= last || number > 0x7FFF) break;
        last = number;
        data.BitShort();
        streams.Text();
        streams.Text();
        mClasses.emplace(number, streams.Text());
        data.Bit();
        data.BitShort();  // whether its objects are entities
        if (!streams.IsAtLeast(Release::R2004)) continue;
        for (int i = 0; i < 5; ++i) data.BitLong();
    }
    if (highest && *highest != last && !(mClasses.empty() && *highest <= FirstClass))
        data.Fail("classes up to number " + std::to_string(*highest) + " were expected, the last is " +
                  std::to_string(last));
    while (data.Left() >= 8)
        if (data.Byte() != 0) data.Fail("a class of a higher number was expected");
    if (streams.strings.Left() > 0) data.Fail("the end of the classes' texts was expected");
}

bool Kinds::IsUnnamedClass(unsigned type) const { return type >= FirstClass && !mClasses.contains(type); }

std::string_view Kinds::NameOf(unsigned type) const {
    if (type >= FirstClass) {
        const auto found = mClasses.find(type);
        return found == mClasses.end() ? std::string_view() : std::string_view(found->second);
    }
    for (const auto& [number, name] : FixedKinds)
        if (number == type) return name;
    return {};
}

}  // namespace brenvik::dwg
