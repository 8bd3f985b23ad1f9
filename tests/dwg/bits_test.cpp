// The bit stream, the two ways of packing, and the checksums.
#include <gtest/gtest.h>

#include <limits>

#include "drafting_host/dwg/bit_reader.h"
#include "drafting_host/dwg/bodies.h"
#include "drafting_host/dwg/checksums.h"
#include "drafting_host/dwg/decompression.h"
#include "dwg/made_objects.h"

namespace brenvik::dwg {
namespace {

/// Bytes of a text of zeros and ones, filled up with zeros.
std::string Bits(std::string_view text) {
    std::string bytes;
    std::size_t count = 0;
    for (const char c : text) {
        if (c != '0' && c != '1') continue;
        if (count % 8 == 0) bytes += '\0';
        if (c == '1') bytes.back() = static_cast<char>(bytes.back() | (0x80 >> (count % 8)));
        ++count;
    }
    return bytes;
}

TEST(DwgBits, WholeNumbersHaveFourForms) {
    EXPECT_EQ(BitReader(Bits("00 00000001 00000010")).BitShort(), 0x0201);
    EXPECT_EQ(BitReader(Bits("01 11111111")).BitShort(), 255);
    EXPECT_EQ(BitReader(Bits("10")).BitShort(), 0);
    EXPECT_EQ(BitReader(Bits("11")).BitShort(), 256);
    EXPECT_EQ(BitReader(Bits("01 00000111")).BitLong(), 7);
    EXPECT_THROW(BitReader(Bits("11")).BitLong(), Damage);
}

TEST(DwgBits, RealsHaveShortFormsForOneAndZero) {
    EXPECT_EQ(BitReader(Bits("01")).BitReal(), 1);
    EXPECT_EQ(BitReader(Bits("10")).BitReal(), 0);
    EXPECT_THROW(BitReader(Bits("11")).BitReal(), Damage);
    const std::string infinity("\0\0\0\0\0\0\xF0\x7F", 8);
    EXPECT_THROW(BitReader(infinity).Real(), Damage);
}

TEST(DwgBits, ARealNearAnotherRepeatsPartOfIt) {
    EXPECT_EQ(BitReader(Bits("00")).RealNear(2.5), 2.5);
    // The lowest four bytes are replaced: 2.5 has none of them set.
    const double changed = BitReader(Bits("01 00000001 00000000 00000000 00000000")).RealNear(2.5);
    EXPECT_GT(changed, 2.5);
    EXPECT_LT(changed, 2.5 + 1e-12);
}

TEST(DwgBits, ModularNumbersKeepTheirSignInTheLastByte) {
    EXPECT_EQ(BitReader(std::string("\x82\x24", 2)).ModularChar(), 0x1202U);
    EXPECT_EQ(BitReader(std::string("\x69", 1)).SignedModularChar(), -0x29);
    EXPECT_EQ(BitReader(std::string("\x31\xF4\x8D\x00", 4)).ModularShort(), 0x7431U + (0x8DU << 15U));
}

TEST(DwgBits, HandlesAreAbsoluteOrRelativeToTheirObject) {
    EXPECT_EQ(BitReader(std::string("\x52\x01\x02", 3)).Handle().From(0x10), 0x102U);
    EXPECT_EQ(BitReader(std::string("\x60", 1)).Handle().From(0x10), 0x11U);
    EXPECT_EQ(BitReader(std::string("\x80", 1)).Handle().From(0x10), 0xFU);
    EXPECT_EQ(BitReader(std::string("\xA1\x05", 2)).Handle().From(0x10), 0x15U);
    EXPECT_EQ(BitReader(std::string("\xC1\x05", 2)).Handle().From(0x10), 0xBU);
    EXPECT_THROW(BitReader(std::string("\xF1\x05", 2)).Handle(), Damage);
    EXPECT_THROW(BitReader(std::string("\x5F\x05", 2)).Handle(), Damage);
}

TEST(DwgBits, NothingIsReadBehindTheEnd) {
    const std::string bytes = Bits("1010");
    BitReader reader(bytes, 0, 3);
    reader.Skip(2);
    EXPECT_TRUE(reader.Bit());
    EXPECT_THROW(reader.Bit(), Damage);
    EXPECT_THROW(BitReader(std::string(4, '\0')).LongLong(), Damage);
    EXPECT_THROW(BitReader(std::string(4, '\0')).Count(std::numeric_limits<std::int32_t>::max(), 1), Damage);
    EXPECT_THROW(BitReader(std::string(4, '\0')).Count(-1, 1), Damage);
}

TEST(DwgChecksums, AreThoseOfTheFormat) {
    EXPECT_EQ(Crc32("123456789"), 0xCBF43926U);
    EXPECT_EQ(Crc16("123456789", 0), 0xBB3D);
    EXPECT_EQ(PageSum(0, "abc"), ((97U + 195U + 294U) << 16U) | 294U);
}

TEST(DwgChecksums, OfAnyLengthAreThoseOfSingleBytes) {
    std::string bytes;
    std::uint16_t sum = ObjectSeed;
    std::uint32_t low = 7, high = 9;
    for (unsigned i = 0; i < 100; ++i) {
        EXPECT_EQ(Crc16(bytes, ObjectSeed), sum) << i;
        EXPECT_EQ(PageSum((9U << 16U) | 7U, bytes), (high << 16U) | low) << i;
        const unsigned byte = (i * 151 + 13) & 0xFFU;
        bytes += static_cast<char>(byte);
        unsigned next = sum ^ byte;
        for (int bit = 0; bit < 8; ++bit) next = (next & 1U) != 0 ? (next >> 1U) ^ 0xA001U : next >> 1U;
        sum = static_cast<std::uint16_t>(next);
        low += byte;
        high = (high + low) % 0xFFF1U;
    }
    const std::string most(20000, '\xFF');  // sums come closest to their bounds
    std::uint64_t lowOfMost = 0, highOfMost = 0;
    for (std::size_t i = 0; i < most.size(); ++i) highOfMost += lowOfMost += 0xFF;
    EXPECT_EQ(PageSum(0, most), ((highOfMost % 0xFFF1) << 16U) | (lowOfMost % 0xFFF1));
}

TEST(DwgBits, BytesBeginAtAnyBit) {
    for (unsigned bit = 0; bit < 8; ++bit) {
        test::BitWriter bits;
        bits.Bits(0, bit).Raw(0xFEDC, 2).Raw(0x89ABCDEF, 4).Raw(0x0123456789ABCDEFULL, 8);
        const std::string bytes = bits.Bytes();
        BitReader reader(bytes, bit, bit + 14 * 8);
        EXPECT_EQ(reader.Short(), 0xFEDC) << bit;
        EXPECT_EQ(reader.Long(), 0x89ABCDEFU) << bit;
        EXPECT_EQ(reader.LongLong(), 0x0123456789ABCDEFULL) << bit;
        EXPECT_EQ(reader.Left(), 0U);
        EXPECT_THROW(reader.Short(), Damage);
    }
}

TEST(DwgPacking, OfPagesIsBoundedAndGivesBackWhatWasPacked) {
    // Four plain bytes, then five copied from them (distance 4), then the end.
    const std::string packed(
        "\x01"
        "abcd"
        "\x6C\x00"
        "\x11\x00\x00",
        10);
    EXPECT_EQ(Unpack2004(packed, 100), "abcdabcda");
    EXPECT_EQ(Unpack2004(packed, 5), std::nullopt);
    EXPECT_EQ(Unpack2004(packed.substr(0, 6), 100), std::nullopt);
    EXPECT_EQ(Unpack2004(std::string("\x01"
                                     "abcd"
                                     "\x6C\x7F\x11",
                                     8),
                         100),
              std::nullopt)
        << "a copy from before the beginning";
    EXPECT_EQ(Unpack2007("abc", 3), "abc");
    EXPECT_EQ(Unpack2007("abc", 30), std::nullopt);
}

TEST(DwgBodies, MaskedTextBecomesClear) {
    EXPECT_EQ(Unmasked("ko o"), "40 0");
    EXPECT_EQ(Unmasked("k\r\no"), "4\n0");
}

TEST(DwgBodies, BinaryDataEndBehindTheirMark) {
    const std::string head = "ACIS BinaryFile" + std::string(16, '\0');
    const std::string name(
        "\x07\x04"
        "data",
        6);
    const std::string mark(
        "\x0E\x03"
        "End\x0E\x02of\x0E\x04"
        "ACIS\x0D\x04"
        "data",
        21);
    EXPECT_EQ(BinaryAcisLength(head + name + mark + "behind"), (head + name + mark).size());
    EXPECT_EQ(BinaryAcisLength(head + name), std::nullopt);
    EXPECT_EQ(BinaryAcisLength(head + "\xFF" + mark), std::nullopt);
    EXPECT_EQ(BinaryAcisLength(head + std::string("\x09\xFF\xFF\xFF\xFF", 5) + mark), std::nullopt);
}

}  // namespace
}  // namespace brenvik::dwg
