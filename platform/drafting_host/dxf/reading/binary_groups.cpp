// Codes and values of a binary DXF file.
#include "drafting_host/dxf/reading/binary_groups.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <string>

#include "base/hex.h"
#include "drafting_host/dxf/texts/dxf_text.h"

namespace brenvik {
namespace {

using namespace std::string_view_literals;

constexpr std::string_view Begin = "AutoCAD Binary DXF"sv;
constexpr std::string_view Sentinel = "AutoCAD Binary DXF\r\n\x1A\0"sv;
static_assert(Sentinel.size() == 22);

enum class ValueKind { Text, Real, Int16, Int32, Int64, Flag, Chunk, None };

struct KindOfCodes {
    int first, last;
    ValueKind kind;
};

// In the order of the codes. What stands between the ranges is used by no release.
constexpr KindOfCodes Kinds[] = {
    {0, 9, ValueKind::Text},        {10, 59, ValueKind::Real},      {60, 79, ValueKind::Int16},
    {90, 99, ValueKind::Int32},     {100, 105, ValueKind::Text},    {110, 149, ValueKind::Real},
    {160, 169, ValueKind::Int64},   {170, 179, ValueKind::Int16},   {210, 239, ValueKind::Real},
    {270, 289, ValueKind::Int16},   {290, 299, ValueKind::Flag},    {300, 309, ValueKind::Text},
    {310, 319, ValueKind::Chunk},   {320, 369, ValueKind::Text},    {370, 389, ValueKind::Int16},
    {390, 399, ValueKind::Text},    {400, 409, ValueKind::Int16},   {410, 419, ValueKind::Text},
    {420, 429, ValueKind::Int32},   {430, 439, ValueKind::Text},    {440, 459, ValueKind::Int32},
    {460, 469, ValueKind::Real},    {470, 481, ValueKind::Text},    {999, 1003, ValueKind::Text},
    {1004, 1004, ValueKind::Chunk}, {1005, 1009, ValueKind::Text},  {1010, 1059, ValueKind::Real},
    {1060, 1070, ValueKind::Int16}, {1071, 1071, ValueKind::Int32},
};

ValueKind KindOf(int code) {
    const auto range = std::lower_bound(std::begin(Kinds), std::end(Kinds), code,
                                        [](const KindOfCodes& r, int wanted) { return r.last < wanted; });
    return range == std::end(Kinds) || code < range->first ? ValueKind::None : range->kind;
}

// Files are little-endian on every machine.
template <typename Number>
Number NumberAt(const char* bytes) {
    static_assert(std::endian::native == std::endian::little);
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

}  // namespace

bool IsBinaryDxf(std::string_view content) { return content.starts_with(Begin); }

std::string_view BinaryGroups::TextStore::Keep(std::string_view text) {
    constexpr std::size_t pieceSize = 1U << 16U;
    if (mPieces.empty() || text.size() > mSize - mUsed) {
        mSize = std::max(pieceSize, text.size());
        mPieces.push_back(std::make_unique_for_overwrite<char[]>(mSize));
        mUsed = 0;
    }
    char* const place = mPieces.back().get() + mUsed;
    std::copy(text.begin(), text.end(), place);
    mUsed += text.size();
    return {place, text.size()};
}

BinaryGroups::BinaryGroups(std::string_view content, std::string_view fileName)
    : mContent(content), mFileName(fileName), mAt(Sentinel.size()) {
    if (!content.starts_with(Sentinel)) {
        throw InvalidDxf(fileName, Begin.size(), "the end of a binary DXF drawing's mark (0D 0A 1A 00)",
                         "other bytes: the file was changed on its way, as by a transfer as text",
                         PlaceUnit::Byte);
    }
    // A file begins with group 0 and the text SECTION. Release 12 and before write one byte of 0, later
    // ones two.
    mHasShortCodes = content.size() > mAt + 1 && content[mAt] == 0 && content[mAt + 1] != 0;
}

template <typename Number>
bool BinaryGroups::TakeRaw(Number& number) {
    if (mContent.size() - mAt < sizeof number) return false;
    number = NumberAt<Number>(mContent.data() + mAt);
    mAt += sizeof number;
    return true;
}

template <typename Number>
bool BinaryGroups::TakeNumber(std::string_view& value) {
    Number number;
    if (!TakeRaw(number)) return false;
    char text[32];
    const char* end = nullptr;
    if constexpr (sizeof number == 1)
        end = std::to_chars(text, text + sizeof text, static_cast<int>(number)).ptr;
    else
        end = std::to_chars(text, text + sizeof text, number).ptr;
    value = mTexts.Keep({text, end});
    return true;
}

bool BinaryGroups::TakeText(std::string_view& value) {
    const std::size_t end = mContent.find('\0', mAt);
    if (end == std::string_view::npos) return false;
    value = mContent.substr(mAt, end - mAt);
    mAt = end + 1;
    if (value.find_first_of("^\t\n\r") != std::string_view::npos) value = mTexts.Keep(EscapeControls(value));
    return true;
}

bool BinaryGroups::TakeChunk(std::string_view& value) {
    std::uint8_t length = 0;
    if (!TakeRaw(length) || mContent.size() - mAt < length) return false;
    char text[2 * 255];
    for (std::size_t i = 0; i < length; ++i) {
        const auto byte = static_cast<unsigned char>(mContent[mAt + i]);
        text[2 * i] = HexDigits[byte >> 4U];
        text[2 * i + 1] = HexDigits[byte & 0xFU];
    }
    mAt += length;
    value = mTexts.Keep({text, 2U * length});
    return true;
}

bool BinaryGroups::TakeCode(int& code) {
    constexpr std::uint8_t longCodeFollows = 255;
    if (mHasShortCodes) {
        std::uint8_t shortCode = 0;
        if (!TakeRaw(shortCode)) return false;
        code = shortCode;
        if (shortCode != longCodeFollows) return true;
    }
    std::int16_t longCode = 0;
    if (!TakeRaw(longCode)) return false;
    code = longCode;
    return true;
}

bool BinaryGroups::TakeValue(int code, std::string_view& value) {
    switch (KindOf(code)) {
        case ValueKind::Text:
            return TakeText(value);
        case ValueKind::Real:
            return TakeNumber<double>(value);
        case ValueKind::Int16:
            return TakeNumber<std::int16_t>(value);
        case ValueKind::Int32:
            return TakeNumber<std::int32_t>(value);
        case ValueKind::Int64:
            return TakeNumber<std::int64_t>(value);
        case ValueKind::Flag:
            return TakeNumber<std::uint8_t>(value);
        case ValueKind::Chunk:
            return TakeChunk(value);
        case ValueKind::None:
            break;
    }
    return false;
}

bool BinaryGroups::Next(Group& group, CutOff& cut) {
    if (mBrokeOff) return false;
    const std::size_t place = mAt;
    if (!TakeCode(group.code)) {
        mBrokeOff = true;
        cut = {place, "a group code"};
        return false;
    }
    if (KindOf(group.code) == ValueKind::None) {
        throw InvalidDxf(mFileName, place, "a group code of a DXF drawing", std::to_string(group.code),
                         PlaceUnit::Byte);
    }
    group.line = place;
    if (TakeValue(group.code, group.value)) return true;
    mBrokeOff = true;
    cut = {place, "the whole value of group " + std::to_string(group.code)};
    return false;
}

}  // namespace brenvik
