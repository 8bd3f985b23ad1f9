#include "drafting_host/dwg/checksums.h"

#include <algorithm>
#include <array>

namespace brenvik::dwg {
namespace {

template <typename Word, Word Polynomial>
constexpr std::array<Word, 256> TableOf() {
    std::array<Word, 256> table{};
    for (unsigned byte = 0; byte < 256; ++byte) {
        Word value = static_cast<Word>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = static_cast<Word>((value & 1U) != 0 ? (value >> 1U) ^ Polynomial : value >> 1U);
        table[byte] = value;
    }
    return table;
}

template <typename Word>
Word Sum(const std::array<Word, 256>& table, Word value, std::string_view bytes) {
    for (const char c : bytes)
        value = static_cast<Word>((value >> 8U) ^ table[(value ^ static_cast<unsigned char>(c)) & 0xFFU]);
    return value;
}

}  // namespace

namespace {

constexpr std::size_t Together = 8;
using ShortTable = std::array<std::uint16_t, 256>;

/// What a byte makes of the sum when as many bytes follow it as the table's number says.
constexpr std::array<ShortTable, Together> TablesOfFollowers() {
    std::array<ShortTable, Together> tables{TableOf<std::uint16_t, 0xA001>()};
    for (std::size_t followers = 1; followers < Together; ++followers)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint16_t before = tables[followers - 1][byte];
            tables[followers][byte] = static_cast<std::uint16_t>((before >> 8U) ^ tables[0][before & 0xFFU]);
        }
    return tables;
}

}  // namespace

// Every object has such a sum: eight bytes at a time, since the steps of single ones wait for each other.
std::uint16_t Crc16(std::string_view bytes, std::uint16_t seed) {
    static constexpr auto tables = TablesOfFollowers();
    std::uint16_t sum = seed;
    for (; bytes.size() >= Together; bytes.remove_prefix(Together)) {
        unsigned next = 0;
        for (std::size_t i = 0; i < Together; ++i) {
            const unsigned carried = i < sizeof sum ? (sum >> (8 * i)) & 0xFFU : 0;
            next ^= tables[Together - 1 - i][static_cast<unsigned char>(bytes[i]) ^ carried];
        }
        sum = static_cast<std::uint16_t>(next);
    }
    return Sum(tables[0], sum, bytes);
}

std::uint32_t Crc32(std::string_view bytes) {
    static constexpr auto table = TableOf<std::uint32_t, 0xEDB88320U>();
    return ~Sum(table, ~std::uint32_t{0}, bytes);
}

std::uint32_t PageSum(std::uint32_t seed, std::string_view bytes) {
    constexpr std::uint32_t modulus = 0xFFF1;
    constexpr std::size_t beforeOverflow = 0x15B0;
    std::uint32_t low = seed & 0xFFFFU, high = seed >> 16U;
    while (!bytes.empty()) {
        const std::string_view piece = bytes.substr(0, beforeOverflow);
        std::size_t at = 0;
        // Sixteen bytes that don't wait for each other.
        for (constexpr std::uint32_t block = 16; at + block <= piece.size(); at += block) {
            std::uint32_t sum = 0, sumOfSums = 0;
            for (std::uint32_t i = 0; i < block; ++i) {
                const std::uint32_t byte = static_cast<unsigned char>(piece[at + i]);
                sum += byte;
                sumOfSums += (block - i) * byte;
            }
            high += block * low + sumOfSums;
            low += sum;
        }
        for (; at < piece.size(); ++at) {
            low += static_cast<unsigned char>(piece[at]);
            high += low;
        }
        low %= modulus;
        high %= modulus;
        bytes.remove_prefix(piece.size());
    }
    return (high << 16U) | low;
}

}  // namespace brenvik::dwg
