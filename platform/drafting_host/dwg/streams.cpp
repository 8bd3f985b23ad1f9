// Texts, streams and frames.
#include "drafting_host/dwg/streams.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/hex.h"
#include "base/utf8.h"
#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dxf/texts/exact_numbers.h"

namespace brenvik::dwg {
namespace {

/// The Windows pages by the file's numbers.
constexpr auto Pages = std::to_array<std::pair<unsigned, int>>(
    {{1, 1252},  {22, 932}, {24, 950},  {25, 949},  {26, 1361}, {28, 1250}, {29, 1251},
     {30, 1252}, {31, 936}, {32, 1253}, {33, 1254}, {34, 1255}, {35, 1256}, {36, 1257},
     {37, 874},  {38, 932}, {39, 936},  {40, 949},  {41, 950},  {42, 1361}, {44, 1258}});
constexpr int UsualPage = 1252;

int PageOf(unsigned codePage) {
    const auto found =
        std::find_if(Pages.begin(), Pages.end(), [&](const auto& page) { return page.first == codePage; });
    return found == Pages.end() ? 0 : found->second;
}

std::string_view UpToZero(std::string_view text) { return text.substr(0, text.find('\0')); }

unsigned UnitAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]) |
           (static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8U);
}

/// Whether a character follows behind a zero.
bool EndsWithin(std::string_view bytes, std::size_t sizeOfUnit) {
    bool isOver = false;
    for (std::size_t at = 0; at + sizeOfUnit <= bytes.size(); at += sizeOfUnit) {
        const bool isZero = bytes.substr(at, sizeOfUnit).find_first_not_of('\0') == std::string_view::npos;
        if (isOver && !isZero) return true;
        isOver = isOver || isZero;
    }
    return false;
}

bool IsControl(char c) {
    constexpr char erased = '\x7F';
    return c == erased || (static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r');
}

/// Half a surrogate pair is no character; it stays as an escape, as texts of DXF have it.
void AppendEscape(std::string& text, unsigned unit) {
    text += "\\U+";
    AppendHex(text, unit, 4);
}

}  // namespace

Texts::Texts(Release release, unsigned codePage) : mIsUnicode(release >= Release::R2007) {
    const int page = PageOf(codePage);
    mIsKnown = mIsUnicode || page != 0;
    mDecoder = TextDecoder(mIsUnicode ? TextDecoder::Bytes::Utf8 : TextDecoder::Bytes::Page,
                           page == 0 ? UsualPage : page, false);
}

std::string Texts::FromPage(std::string_view bytes) const { return Decoded(UpToZero(bytes)); }

std::string Texts::Decoded(std::string_view text) const {
    std::string decoded = mDecoder.Decode(text);
    if (HoldsPageEscape(decoded) && mEscaped++ == 0) mFirstEscaped = decoded;
    if (std::ranges::any_of(decoded, IsControl) && mControlled++ == 0) mFirstControlled = decoded;
    return decoded;
}

std::string Texts::FromUnits(std::string_view bytes) const {
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const unsigned unit = UnitAt(bytes, at);
        if (unit == 0) break;
        const bool isHigh = unit >= 0xD800 && unit <= 0xDBFF, isLow = unit >= 0xDC00 && unit <= 0xDFFF;
        const unsigned next = isHigh && at + 3 < bytes.size() ? UnitAt(bytes, at + 2) : 0;
        if (isHigh && next >= 0xDC00 && next <= 0xDFFF) {
            AppendUtf8(text, 0x10000 + ((unit - 0xD800) << 10U) + (next - 0xDC00));
            at += 2;
        } else if (isHigh || isLow) {
            AppendEscape(text, unit);
        } else {
            AppendUtf8(text, unit);
        }
    }
    return Decoded(text);
}

std::string Texts::Read(BitReader& reader) const {
    const std::size_t length = static_cast<std::uint16_t>(reader.BitShort());
    if (length == 0) return {};
    const std::string bytes = reader.Bytes(mIsUnicode ? length * 2 : length);
    std::string text = mIsUnicode ? FromUnits(bytes) : FromPage(bytes);
    const std::size_t sizeOfUnit = mIsUnicode ? 2 : 1;
    if (EndsWithin(bytes, sizeOfUnit) && mCut++ == 0) mFirstCut = text;
    const bool isEnded = std::string_view(bytes).substr(bytes.size() - sizeOfUnit).find_first_not_of('\0') ==
                         std::string::npos;
    (isEnded ? mEnded : mUnended).Add(text);
    return text;
}

const Texts::Seen* Texts::Few() const {
    constexpr std::size_t nearlyAll = 20;
    const Seen& few = mEnded.count < mUnended.count ? mEnded : mUnended;
    const std::size_t all = mEnded.count + mUnended.count;
    return few.count > 0 && all / few.count > nearlyAll ? &few : nullptr;
}

std::size_t Texts::OddlyEnded() const { return Few() == nullptr ? 0 : Few()->count; }

const std::string& Texts::FirstOddlyEnded() const {
    static const std::string none;
    return Few() == nullptr ? none : Few()->first;
}

Streams StreamsOf(std::string_view bytes, std::size_t begin, std::size_t handlesAt, std::size_t end,
                  Release release, const Texts& texts) {
    Streams streams;
    streams.release = release;
    streams.texts = &texts;
    streams.handles = BitReader(bytes, handlesAt, end);
    std::size_t dataEnd = handlesAt;
    if (release >= Release::R2007 && handlesAt > begin) {
        dataEnd = handlesAt - 1;
        if (BitReader(bytes, dataEnd, handlesAt).Bit()) {
            constexpr std::size_t word = 16;
            const auto lengthAt = [&](std::size_t place) {
                if (place < begin + word) throw Damage{place, "the length of texts was expected"};
                return std::size_t{BitReader(bytes, place - word, place).Short()};
            };
            std::size_t place = dataEnd;
            std::size_t length = lengthAt(place);
            place -= word;
            if ((length & 0x8000U) != 0) {
                length = (length & 0x7FFFU) | (lengthAt(place) << 15U);
                place -= word;
            }
            if (length > place - begin) throw Damage{place, "texts within their object were expected"};
            streams.strings = BitReader(bytes, place - length, place);
            dataEnd = place - length;
        }
    }
    streams.data = BitReader(bytes, begin, dataEnd);
    return streams;
}

void SkipHandles(Streams& streams, unsigned count) {
    constexpr std::size_t shortest = 8;
    for (; count > 0 && streams.handles.Left() >= shortest; --count) streams.Handle();
}

std::string RestOf(const Streams& streams) {
    constexpr std::size_t byte = 8;  // objects end on one
    const std::size_t values = streams.data.Left() + streams.strings.Left(), handles = streams.handles.Left();
    if (const double absurd = streams.data.Absurd(); absurd != 0) return "the number " + RealText(absurd);
    if (values == 0 && handles < byte) return {};
    return values > 0 ? std::to_string(values) + " bits more than its values take"
                      : std::to_string(handles) + " bits more than its references take";
}

Frame FrameOf(std::string_view section, std::string_view beginMark, Release release, unsigned maintenance) {
    if (!section.starts_with(beginMark)) throw Damage{0, "the mark of a section was expected"};
    BitReader reader(section);
    reader.Skip(beginMark.size() * 8);
    const std::size_t sumFrom = reader.Position() / 8;
    const std::size_t size = reader.Long();
    constexpr unsigned lastWithoutHighPart = 3;
    if (release >= Release::R2018 || (release >= Release::R2010 && maintenance > lastWithoutHighPart))
        reader.Long();
    const std::size_t from = reader.Position() / 8;
    reader.Skip(size * 8);
    const std::uint16_t sum = reader.Short();
    return {section.substr(from, size),
            Crc16(section.substr(sumFrom, from + size - sumFrom), ObjectSeed) != sum};
}

Streams StreamsOfFrame(const Frame& frame, Release release, const Texts& texts) {
    const std::size_t end = frame.data.size() * 8;
    if (release < Release::R2007) {
        Streams streams = StreamsOf(frame.data, 0, end, end, release, texts);
        return streams;
    }
    constexpr std::size_t countBits = 32;
    const std::size_t handlesAt = BitReader(frame.data).Long();
    if (handlesAt < countBits || handlesAt > end) throw Damage{0, "the length of a section was expected"};
    return StreamsOf(frame.data, countBits, handlesAt, end, release, texts);
}

}  // namespace brenvik::dwg
