// Numbers out of bits.
#include "drafting_host/dwg/bit_reader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

namespace brenvik::dwg {

HandleValue HandleReference::From(HandleValue own) const {
    switch (code) {
        case 0x6:
            return own + 1;
        case 0x8:
            return own - 1;
        case 0xA:
            return own + value;
        case 0xC:
            return own - value;
        default:
            return value;
    }
}

bool IsAbsurd(double value) {
    // Whole numbers are exact below 2 to the 53rd, which coordinates keep to by a wide margin.
    constexpr double largest = 1e15, smallest = 1e-100, extentsOfNothing = 1e20;
    const double size = std::abs(value);
    return size > largest ? size != extentsOfNothing : size < smallest && size > 0;
}

BitReader::BitReader(std::string_view bytes, std::size_t begin, std::size_t end)
    : mBytes(bytes), mAt(begin), mEnd(std::min(end, bytes.size() * 8)) {
    if (mAt > mEnd) Fail("the stream begins behind its end");
}

void BitReader::Fail(std::string reason) const { throw Damage{mAt, std::move(reason)}; }

void BitReader::MoveTo(std::size_t bit) {
    if (bit > mEnd) Fail("more data were expected");
    mAt = bit;
}

void BitReader::Skip(std::size_t bits) {
    if (bits > Left()) Fail("more data were expected");
    mAt += bits;
}

bool BitReader::Bit() { return Bits(1) != 0; }

unsigned BitReader::Bits(unsigned count) {
    if (count > Left()) Fail("more data were expected");
    unsigned value = 0;
    while (count > 0) {
        const unsigned inByte = static_cast<unsigned>(mAt % 8);
        const unsigned taken = std::min(8 - inByte, count);
        const auto byte = static_cast<unsigned char>(mBytes[mAt / 8]);
        value = (value << taken) | ((byte >> (8 - inByte - taken)) & ((1U << taken) - 1));
        mAt += taken;
        count -= taken;
    }
    return value;
}

/// Whole bytes from any bit on, the lowest first.
std::uint64_t BitReader::Raw(unsigned bytes) {
    constexpr unsigned bits = 8;
    if (std::size_t{bytes} * bits > Left()) Fail("more data were expected");
    const unsigned inByte = static_cast<unsigned>(mAt % bits);
    std::size_t at = mAt / bits;
    std::uint64_t value = 0;
    for (unsigned i = 0; i < bytes; ++i, ++at) {
        unsigned pair = static_cast<unsigned>(static_cast<unsigned char>(mBytes[at])) << bits;
        if (inByte != 0) pair |= static_cast<unsigned char>(mBytes[at + 1]);
        value |= std::uint64_t{(pair >> (bits - inByte)) & 0xFFU} << (bits * i);
    }
    mAt += std::size_t{bytes} * bits;
    return value;
}

std::uint16_t BitReader::Short() { return static_cast<std::uint16_t>(Raw(2)); }
std::uint32_t BitReader::Long() { return static_cast<std::uint32_t>(Raw(4)); }
std::uint64_t BitReader::LongLong() { return Raw(8); }

double BitReader::Checked(std::uint64_t image) {
    const auto value = std::bit_cast<double>(image);
    if (!std::isfinite(value)) Fail("a number was expected");
    if (mAbsurd == 0 && IsAbsurd(value)) mAbsurd = value;
    return value;
}

double BitReader::Real() { return Checked(LongLong()); }

std::string BitReader::Bytes(std::size_t count) {
    if (count > Left() / 8) Fail("more data were expected");
    std::string bytes;
    if (mAt % 8 == 0) {
        bytes = mBytes.substr(mAt / 8, count);
        mAt += count * 8;
        return bytes;
    }
    bytes.reserve(count);
    for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>(Byte());
    return bytes;
}

int BitReader::BitShort() {
    switch (Bits(2)) {
        case 0:
            return static_cast<std::int16_t>(Short());
        case 1:
            return Byte();
        case 2:
            return 0;
        default:
            return 256;
    }
}

std::int32_t BitReader::BitLong() {
    switch (Bits(2)) {
        case 0:
            return static_cast<std::int32_t>(Long());
        case 1:
            return Byte();
        case 2:
            return 0;
        default:
            Fail("the code of a whole number was expected");
    }
}

double BitReader::BitReal() {
    switch (Bits(2)) {
        case 0:
            return Real();
        case 1:
            return 1;
        case 2:
            return 0;
        default:
            Fail("the code of a number was expected");
    }
}

std::uint64_t BitReader::BitLongLong() {
    const unsigned count = Bits(3);
    std::uint64_t value = 0;
    for (unsigned i = 0; i < count; ++i) value |= static_cast<std::uint64_t>(Byte()) << (8 * i);
    return value;
}

double BitReader::RealNear(double standard) {
    const unsigned code = Bits(2);
    if (code == 0) return standard;
    if (code == 3) return Real();
    auto image = std::bit_cast<std::uint64_t>(standard);
    if (code == 2) image = (image & ~(0xFFFFULL << 32)) | (static_cast<std::uint64_t>(Short()) << 32);
    image = (image & ~0xFFFF'FFFFULL) | Long();
    const auto value = std::bit_cast<double>(image);
    if (!std::isfinite(value)) Fail("a number was expected");
    if (mAbsurd == 0 && IsAbsurd(value)) mAbsurd = value;
    return value;
}

Point3 BitReader::BitPoint() {
    Point3 point;
    point.x = BitReal();
    point.y = BitReal();
    point.z = BitReal();
    return point;
}

Point3 BitReader::RawPoint() {
    Point3 point = FlatPoint();
    point.z = Real();
    return point;
}

Point3 BitReader::FlatPoint() {
    Point3 point;
    point.x = Real();
    point.y = Real();
    return point;
}

Point3 BitReader::Extrusion(bool isShort) {
    if (isShort && Bit()) return {0, 0, 1};
    return BitPoint();
}

double BitReader::Thickness(bool isShort) {
    if (isShort && Bit()) return 0;
    return BitReal();
}

std::size_t BitReader::Count(std::int64_t count, std::size_t bitsOfEach) {
    if (count < 0 || static_cast<std::uint64_t>(count) > Left() / std::max<std::size_t>(bitsOfEach, 1))
        Fail("a count of " + std::to_string(count) + " is more than the data hold");
    return static_cast<std::size_t>(count);
}

HandleReference BitReader::Handle() {
    HandleReference handle;
    handle.code = Bits(4);
    const unsigned count = Bits(4);
    if (count > 8) Fail("a handle of at most 8 bytes was expected");
    for (unsigned i = 0; i < count; ++i) handle.value = (handle.value << 8) | Byte();
    constexpr unsigned known = 0b0001'0101'0111'1101;  // 0, 2 to 6, 8, 10 and 12
    if (((known >> handle.code) & 1U) == 0) Fail("the code of a handle was expected");
    return handle;
}

std::uint64_t BitReader::ModularChar() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 64; shift += 7) {
        const std::uint64_t byte = Byte();
        value |= (byte & 0x7F) << shift;
        if ((byte & 0x80) == 0) return value;
    }
    Fail("the end of a number was expected");
}

std::int64_t BitReader::SignedModularChar() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const std::uint64_t byte = Byte();
        if ((byte & 0x80) != 0) {
            value |= (byte & 0x7F) << shift;
            continue;
        }
        value |= (byte & 0x3F) << shift;
        const auto result = static_cast<std::int64_t>(value);
        return (byte & 0x40) != 0 ? -result : result;
    }
    Fail("the end of a number was expected");
}

std::uint64_t BitReader::ModularShort() {
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 60; shift += 15) {
        const std::uint64_t word = Short();
        value |= (word & 0x7FFF) << shift;
        if ((word & 0x8000) == 0) return value;
    }
    Fail("the end of a number was expected");
}

}  // namespace brenvik::dwg
