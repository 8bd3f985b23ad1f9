// Frames of objects, extended data, and the common part of entities.
#include "drafting_host/dwg/objects.h"

#include <array>

#include "base/handle_text.h"
#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dxf/data/aci_colors.h"

namespace brenvik::dwg {
namespace {

constexpr auto Lineweights = std::to_array<int>(
    {0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211});
constexpr unsigned LineweightByLayer = 29, LineweightByBlock = 30, LineweightDefault = 31;

/// A reference is stored with its highest byte first.
HandleValue StoredHandle(BitReader& reader) {
    HandleValue handle = 0;
    for (int i = 0; i < 8; ++i) handle = (handle << 8U) | reader.Byte();
    return handle;
}

XDataValue StoredText(BitReader& reader, const Texts& texts) {
    if (texts.IsUnicode()) return texts.FromUnits(reader.Bytes(std::size_t{reader.Short()} * 2));
    const std::size_t length = reader.Byte();
    reader.Short();  // its code page, which is the drawing's
    return texts.FromPage(reader.Bytes(length));
}

/// The item that a code announces; empty for an unknown code.
std::optional<XDataItem> StoredItem(BitReader& reader, const Texts& texts) {
    const unsigned code = reader.Byte();
    XDataItem item;
    item.code = static_cast<std::int16_t>(1000 + code);
    switch (code) {
        case 0:
        case 1:
            item.value = StoredText(reader, texts);
            return item;
        case 2:
            item.value = std::string(reader.Byte() == 0 ? "{" : "}");
            return item;
        case 3:
        case 5:
            item.value = HandleToText(StoredHandle(reader));
            return item;
        case 4: {
            const std::string bytes = reader.Bytes(reader.Byte());
            item.value = std::vector<std::uint8_t>(bytes.begin(), bytes.end());
            return item;
        }
        case 10:
        case 11:
        case 12:
        case 13:
            item.value = reader.RawPoint();
            return item;
        case 40:
        case 41:
        case 42:
            item.value = reader.Real();
            return item;
        case 70:
            item.value = static_cast<std::int16_t>(reader.Short());
            return item;
        case 71:
            item.value = static_cast<std::int32_t>(reader.Long());
            return item;
        default:
            return std::nullopt;
    }
}

std::vector<RawXData> ReadXData(BitReader& reader, HandleValue own, const Texts& texts) {
    std::vector<RawXData> all;
    while (true) {
        const std::size_t size = static_cast<std::uint16_t>(reader.BitShort());
        if (size == 0) return all;
        RawXData each;
        each.application = reader.Handle().From(own);
        const std::string bytes = reader.Bytes(size);
        BitReader items(bytes);
        while (items.Left() >= 8) {
            auto item = StoredItem(items, texts);
            each.isCut = !item;
            if (!item) break;
            each.items.push_back(std::move(*item));
        }
        each.absurd = items.Absurd();
        all.push_back(std::move(each));
    }
}

/// Colours of entities, with the flags that say what follows.
constexpr std::uint32_t ThreeBytes = 0xFFFFFF;

struct EntityColor {
    int index = 256;
    bool isInBook = false;
    std::optional<std::uint32_t> trueColor{}, transparency{};
    std::string_view oddity{};  ///< Which of its values there isn't.
};

EntityColor ReadEntityColor(BitReader& data, Release release) {
    constexpr unsigned indexMask = 0x1FF, hasTrueColor = 0x8000, isInBook = 0x4000, hasTransparency = 0x2000;
    constexpr unsigned known = indexMask | hasTrueColor | isInBook | hasTransparency;
    const auto value = static_cast<std::uint16_t>(data.BitShort());
    if (release < Release::R2004) return {value, false};
    EntityColor color{static_cast<int>(value & indexMask), (value & isInBook) != 0};
    if ((value & hasTrueColor) != 0 && !color.isInBook)
        color.trueColor = static_cast<std::uint32_t>(data.BitLong()) & ThreeBytes;
    if ((value & hasTransparency) != 0) color.transparency = static_cast<std::uint32_t>(data.BitLong());
    if (color.transparency && !IsTransparency(*color.transparency)) color.oddity = "transparency";
    if ((value & ~known) != 0) color.oddity = "colour";
    return color;
}

}  // namespace

bool IsTransparency(std::uint32_t value) {
    constexpr std::uint32_t ofItsOwn = 2;
    const std::uint32_t kind = value >> 24U;
    return (value & 0xFFFF00U) == 0 && (kind == ofItsOwn || (kind < ofItsOwn && (value & 0xFFU) == 0));
}

bool IsLineweight(unsigned number) {
    return number < Lineweights.size() || (number >= LineweightByLayer && number <= LineweightDefault);
}

int LineweightOf(unsigned number) {
    if (number < Lineweights.size()) return Lineweights[number];
    if (number == LineweightByLayer) return -1;
    return number == LineweightByBlock ? -2 : -3;
}

Object OpenObject(const Sections& sections, const Texts& texts, const ObjectMap::Entry& entry) {
    Object object;
    object.place = entry.place;
    BitReader frame(sections.objects, entry.place * 8, sections.objects.size() * 8);
    const std::uint64_t size = frame.ModularShort();
    std::uint64_t handleBits = 0;
    if (sections.release >= Release::R2010) handleBits = frame.ModularChar();
    const std::size_t start = frame.Position();
    if (size > frame.Left() / 8) frame.Fail("an object within the section was expected");
    const std::size_t end = start + static_cast<std::size_t>(size) * 8;
    if (handleBits > end - start) frame.Fail("handles within the object were expected");
    const std::string_view all = sections.objects;
    BitReader head(all, start, end);
    if (sections.release >= Release::R2010) {
        constexpr unsigned secondBase = 0x1F0;
        const unsigned form = head.Bits(2);
        object.type = form == 0 ? head.Byte() : form == 1 ? head.Byte() + secondBase : head.Short();
    } else {
        object.type = static_cast<std::uint16_t>(head.BitShort());
    }
    std::size_t handlesAt = end - static_cast<std::size_t>(handleBits);
    const bool boundaryAhead = sections.release >= Release::R2000 && sections.release < Release::R2010;
    const auto takeBoundary = [&] {
        const std::size_t bits = head.Long();
        if (bits > end - start) head.Fail("handles within the object were expected");
        handlesAt = start + bits;
    };
    if (boundaryAhead) takeBoundary();
    object.handle = head.Handle().From(0);
    if (object.handle != entry.handle) head.Fail("the object of another handle stands here");
    object.xdata = ReadXData(head, object.handle, texts);
    object.bytes = all;
    object.start = start;
    object.end = end;
    // The oldest two have the boundary further behind: see TakeLateBoundary.
    if (sections.release < Release::R2000) handlesAt = end;
    object.streams = StreamsOf(all, start, handlesAt, end, sections.release, texts);
    object.streams.data.MoveTo(head.Position());
    object.streams.own = object.handle;
    return object;
}

bool SumIsWrong(const Object& object) {
    // Behind the object, over its length and all that follows.
    const std::size_t behind = object.end / 8;
    if (object.bytes.size() < behind + 2) return false;
    const std::uint16_t stored = BitReader(object.bytes, object.end, object.end + 16).Short();
    return stored != Crc16(object.bytes.substr(object.place, behind - object.place), ObjectSeed);
}

namespace {

/// The boundary of releases 13 and 14, which counts from the object's type on.
void TakeLateBoundary(Object& object) {
    Streams& streams = object.streams;
    if (streams.IsAtLeast(Release::R2000)) return;
    const std::size_t bits = streams.data.Long();
    if (bits > object.end - object.start) streams.data.Fail("handles within the object were expected");
    const std::size_t handlesAt = object.start + bits;
    streams.handles = BitReader(object.bytes, handlesAt, object.end);
    streams.data = BitReader(object.bytes, streams.data.Position(), handlesAt);
}

/// The picture that programs leave for those who don't know their entities.
void SkipPicture(Streams& streams) {
    BitReader& data = streams.data;
    if (!data.Bit()) return;
    const std::uint64_t size = streams.IsAtLeast(Release::R2010) ? data.BitLongLong() : data.Long();
    if (size > data.Left() / 8) data.Fail("a picture within the object was expected");
    data.Skip(static_cast<std::size_t>(size) * 8);
}

/// Which references of an entity's common part follow among the handles.
struct Follows {
    std::size_t reactors = 0;
    bool dictionary = true, neighbours = false, bookColor = false, linetype = false;
    unsigned others = 0;  ///< Material, plot style and visual styles.
};

void ReadHearers(Object& object, std::size_t reactors, bool hasDictionary) {
    object.reactors.reserve(reactors);
    for (std::size_t i = 0; i < reactors; ++i) object.reactors.push_back(object.streams.Handle());
    if (hasDictionary) object.dictionary = object.streams.Handle();
}

void ReadCommonHandles(Object& object, const Follows& follows, Common& common) {
    Streams& streams = object.streams;
    if (common.mode == 0) common.owner = streams.Handle();
    ReadHearers(object, follows.reactors, follows.dictionary);
    if (!streams.IsAtLeast(Release::R2000)) {
        common.layer = streams.Handle();
        if (follows.linetype) common.linetype = streams.Handle();
    }
    common.next = object.handle + 1;
    if (follows.neighbours) {
        streams.Handle();
        common.next = streams.Handle();
    }
    if (follows.bookColor) common.bookColor = streams.Handle();
    if (!streams.IsAtLeast(Release::R2000)) return;
    common.layer = streams.Handle();
    if (follows.linetype) common.linetype = streams.Handle();
    for (unsigned i = 0; i < follows.others; ++i) streams.Handle();
}

constexpr unsigned ByHandle = 3;

}  // namespace

Common ReadCommon(Object& object) {
    Streams& streams = object.streams;
    SkipPicture(streams);
    TakeLateBoundary(object);
    BitReader& data = streams.data;
    Common common;
    Follows follows;
    common.mode = data.Bits(2);
    follows.reactors = streams.handles.Count(data.BitLong(), 8);
    if (streams.IsAtLeast(Release::R2004)) follows.dictionary = !data.Bit();
    if (streams.IsAtLeast(Release::R2013)) common.hasStoredData = data.Bit();
    if (!streams.IsAtLeast(Release::R2000)) {
        follows.linetype = !data.Bit();
        if (follows.linetype) common.linetypeBy = LinetypeBy::Handle;
    }
    if (!streams.IsAtLeast(Release::R2004)) follows.neighbours = !data.Bit();
    const EntityColor color = ReadEntityColor(data, streams.release);
    common.color = color.index;
    common.trueColor = color.trueColor;
    common.transparency = color.transparency;
    follows.bookColor = color.isInBook;
    common.linetypeScale = data.BitReal();
    if (streams.IsAtLeast(Release::R2000)) {
        common.linetypeBy = static_cast<LinetypeBy>(data.Bits(2));
        follows.linetype = common.linetypeBy == LinetypeBy::Handle;
    }
    if (streams.IsAtLeast(Release::R2007)) {
        if (data.Bits(2) == ByHandle) ++follows.others;
        data.Byte();
    }
    if (streams.IsAtLeast(Release::R2000) && data.Bits(2) == ByHandle) ++follows.others;
    if (streams.IsAtLeast(Release::R2010))
        for (int style = 0; style < 3; ++style) follows.others += data.Bit() ? 1U : 0U;
    const int invisible = data.BitShort();
    common.invisible = (invisible & 1) != 0;
    unsigned lineweight = LineweightByLayer;
    if (streams.IsAtLeast(Release::R2000)) lineweight = data.Byte();
    common.lineweight = LineweightOf(lineweight);
    constexpr unsigned inNoSpace = 3;
    common.oddity = common.mode == inNoSpace           ? "space"
                    : !color.oddity.empty()            ? color.oddity
                    : invisible != 0 && invisible != 1 ? "visibility"
                    : !IsLineweight(lineweight)        ? "lineweight"
                                                       : "";
    ReadCommonHandles(object, follows, common);
    return common;
}

HandleValue ReadOwner(Object& object) {
    Streams& streams = object.streams;
    TakeLateBoundary(object);
    const std::size_t reactors = streams.handles.Count(streams.data.BitLong(), 8);
    const bool hasDictionary = !streams.IsAtLeast(Release::R2004) || !streams.data.Bit();
    if (streams.IsAtLeast(Release::R2013)) streams.data.Bit();
    const HandleValue owner = streams.Handle();
    ReadHearers(object, reactors, hasDictionary);
    return owner;
}

RecordColor ReadRecordColor(Streams& streams) {
    BitReader& data = streams.data;
    const int index = data.BitShort();
    RecordColor result;
    result.index = index;
    if (!streams.IsAtLeast(Release::R2004)) return result;
    const std::uint32_t color = static_cast<std::uint32_t>(data.BitLong());
    const unsigned flags = data.Byte();
    if ((flags & 1U) != 0) result.name = streams.Text();
    if ((flags & 2U) != 0) result.book = streams.Text();
    constexpr std::uint32_t byLayer = 0xC0, byBlock = 0xC1, byColor = 0xC2, byIndex = 0xC3;
    constexpr int usual = 7, layer = 256;
    const std::uint32_t kind = color >> 24U;
    result.index = kind == byIndex   ? static_cast<int>(color & 0x1FFU)
                   : kind == byLayer ? layer
                   : kind == byBlock ? 0
                                     : usual;
    if (kind == byColor) result.trueColor = color & ThreeBytes;
    return result;
}

int IndexOf(const RecordColor& color) {
    if (!color.trueColor) return color.index;
    return NearestColorIndex({static_cast<std::uint8_t>(*color.trueColor >> 16U),
                              static_cast<std::uint8_t>(*color.trueColor >> 8U),
                              static_cast<std::uint8_t>(*color.trueColor)});
}

}  // namespace brenvik::dwg
