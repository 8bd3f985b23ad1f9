// ACIS data out of entities.
#include "drafting_host/dwg/bodies.h"

#include <algorithm>
#include <array>

#include "drafting_host/dwg/body_checks.h"
#include "drafting_host/dwg/entities.h"

namespace brenvik::dwg {
namespace {

constexpr std::size_t HeadLength = 31;

/// Bytes that follow a tag of fixed length; -1 for a tag that states its length, -2 for an unknown one.
int FixedLength(unsigned tag) {
    switch (tag) {
        case 0x02:
            return 1;
        case 0x03:
            return 2;
        case 0x04:
        case 0x05:
        case 0x0C:
        case 0x15:
            return 4;
        case 0x06:
        case 0x17:
            return 8;
        case 0x0A:
        case 0x0B:
        case 0x0F:
        case 0x10:
        case 0x11:
            return 0;
        case 0x13:
        case 0x14:
            return 24;
        case 0x16:
            return 16;
        case 0x07:
        case 0x08:
        case 0x09:
        case 0x0D:
        case 0x0E:
        case 0x12:
            return -1;
        default:
            return -2;
    }
}

std::size_t LengthOfText(std::string_view data, std::size_t at, unsigned tag, std::size_t& prefix) {
    prefix = tag == 0x08 ? 2 : tag == 0x09 || tag == 0x12 ? 4 : 1;
    std::size_t length = 0;
    for (std::size_t i = 0; i < prefix && at + i < data.size(); ++i)
        length |= std::size_t{static_cast<unsigned char>(data[at + i])} << (8 * i);
    return length;
}

/// The words of the end mark, which come as pieces of one name.
constexpr auto EndWords = std::to_array<std::string_view>({"End", "of", "", "data"});

}  // namespace

bool IsBinaryAcis(std::string_view data) {
    return data.starts_with("ACIS BinaryFile") || data.starts_with("ASM BinaryFile4");
}

std::optional<std::size_t> BinaryAcisLength(std::string_view data) {
    std::size_t at = HeadLength, matched = 0;
    while (at < data.size()) {
        const auto tag = static_cast<unsigned char>(data[at++]);
        const int fixed = FixedLength(tag);
        if (fixed == -2) return std::nullopt;
        std::size_t prefix = 0;
        const std::size_t length =
            fixed >= 0 ? static_cast<std::size_t>(fixed) : LengthOfText(data, at, tag, prefix);
        if (length > data.size() - std::min(at + prefix, data.size())) return std::nullopt;
        const std::string_view word = data.substr(at + prefix, fixed >= 0 ? 0 : length);
        at += prefix + length;
        const bool isName = tag == 0x0D || tag == 0x0E;
        const bool fits =
            isName && (matched == 2 ? word == "ACIS" || word == "ASM" : word == EndWords[matched]);
        matched = fits ? matched + 1 : isName && word == EndWords[0] ? 1 : 0;
        if (matched == EndWords.size()) return at;
    }
    return std::nullopt;
}

std::string Unmasked(std::string_view masked) {
    constexpr unsigned char lowest = 0x21, highest = 0x7E, sum = 0x9F;
    std::string text;
    text.reserve(masked.size());
    for (const char c : masked) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte == '\r') continue;
        text += byte >= lowest && byte <= highest ? static_cast<char>(sum - byte) : c;
    }
    return text;
}

namespace {

AcisData::Kind KindOf(std::string_view kind) {
    if (kind == "REGION") return AcisData::Kind::Region;
    return kind == "BODY" ? AcisData::Kind::Body : AcisData::Kind::Solid;
}

std::string MaskedBlocks(BitReader& data) {
    std::string masked;
    while (true) {
        const std::size_t size = data.Count(data.BitLong(), 8);
        if (size == 0) return masked;
        masked += data.Bytes(size);
    }
}

std::string WithinEntity(BitReader& data, BodyWitness& witness) {
    if (data.Bit()) data.Fail("a body was expected, the entity is empty");
    witness.mark = data.Bit();
    const int version = data.BitShort();
    witness.isText = version == 1;
    if (witness.isText) return Unmasked(MaskedBlocks(data));
    if (version != 2) data.Fail("ACIS text or binary ACIS data were expected");
    const std::size_t begin = data.Position();
    const std::string rest = data.Bytes(data.Left() / 8);
    if (!IsBinaryAcis(rest)) data.Fail("binary ACIS data were expected");
    const auto length = BinaryAcisLength(rest);
    if (!length) data.Fail("the end of the binary ACIS data was expected");
    data.MoveTo(begin + *length * 8);
    return rest.substr(0, *length);
}

}  // namespace

EntityGeometry ReadAcis(Object& object, const Common& common, std::string_view kind,
                        const Surroundings& surroundings, Further& further) {
    AcisData body;
    body.kind = KindOf(kind);
    if (const auto stored = surroundings.bodies.find(object.handle); stored != surroundings.bodies.end()) {
        body.text = stored->second;
    } else {
        if (common.hasStoredData)
            object.streams.data.Fail("its body was expected in the file's store of bodies");
        body.text = WithinEntity(object.streams.data, further.body);
    }
    ReadBehindAcis(object, body.kind, common.hasStoredData, further);
    return body;
}

}  // namespace brenvik::dwg
