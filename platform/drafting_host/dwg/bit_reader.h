// The bit stream of a binary drawing. Bits are taken from the highest of each byte on; numbers of several
// bytes begin at any bit and have their lowest byte first.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "drafting_host/dxf/data/drawing_data.h"

namespace brenvik::dwg {

/// What can't be read at a place of a stream: `bit` counts from the stream's first byte.
struct Damage {
    std::size_t bit = 0;
    std::string reason;
};

/// A reference as it stands in the file: how it is meant, and its number.
struct HandleReference {
    unsigned code = 0;
    HandleValue value = 0;

    /// The handle that is meant when `own` is the object that holds the reference; 0 for none.
    HandleValue From(HandleValue own) const;
};

/// Whether a number is none that a drawing has: a coordinate of more digits than a number can hold, or one so
/// small that it comes from a flipped bit. Extents of nothing are 1E+20.
bool IsAbsurd(double value);

/// Reads between two bits of a stream and never beyond: whatever asks for more throws Damage, and so does a
/// number that is none (infinite, an impossible code).
class BitReader {
  public:
    BitReader() = default;
    explicit BitReader(std::string_view bytes) : BitReader(bytes, 0, bytes.size() * 8) {}
    /// From bit `begin` up to bit `end`, which is cut to what the bytes hold.
    BitReader(std::string_view bytes, std::size_t begin, std::size_t end);

    std::size_t Position() const { return mAt; }
    std::size_t End() const { return mEnd; }
    std::size_t Left() const { return mEnd - mAt; }
    /// The first of the numbers read that are absurd; 0 where none is.
    double Absurd() const { return mAbsurd; }
    /// Moves to a bit of the stream. Throws Damage beyond the end.
    void MoveTo(std::size_t bit);
    void Skip(std::size_t bits);

    bool Bit();
    unsigned Bits(unsigned count);
    std::uint8_t Byte() { return static_cast<std::uint8_t>(Bits(8)); }
    std::uint16_t Short();
    std::uint32_t Long();
    std::uint64_t LongLong();
    double Real();
    std::string Bytes(std::size_t count);

    /// Shorter forms, announced by two bits.
    int BitShort();
    std::int32_t BitLong();
    double BitReal();
    /// A count of bytes in three bits, then that many bytes.
    std::uint64_t BitLongLong();
    /// A real that repeats `standard` in part or wholly.
    double RealNear(double standard);

    Point3 BitPoint();
    Point3 RawPoint();
    /// Two coordinates; the third is 0.
    Point3 FlatPoint();
    /// From release 2000 on one bit stands for the usual value of an extrusion and of a thickness.
    Point3 Extrusion(bool isShort);
    double Thickness(bool isShort);

    /// A count of things that take at least `bitsOfEach` bits. Throws Damage for more than what is left can
    /// hold.
    std::size_t Count(std::int64_t count, std::size_t bitsOfEach);
    HandleReference Handle();

    /// Seven bits a byte, the lowest first; the highest bit is set if more follow. The signed form keeps its
    /// sign in the last byte.
    std::uint64_t ModularChar();
    std::int64_t SignedModularChar();
    /// The same with words of fifteen bits.
    std::uint64_t ModularShort();

    [[noreturn]] void Fail(std::string reason) const;

  private:
    std::uint64_t Raw(unsigned bytes);
    double Checked(std::uint64_t image);

    std::string_view mBytes;
    std::size_t mAt = 0, mEnd = 0;
    double mAbsurd = 0;
};

}  // namespace brenvik::dwg
