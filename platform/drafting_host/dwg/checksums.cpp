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

std::uint16_t Crc16(std::string_view bytes, std::uint16_t seed) {
    static constexpr auto table = TableOf<std::uint16_t, 0xA001>();
    return Sum(table, seed, bytes);
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
        for (const char c : piece) {
            low += static_cast<unsigned char>(c);
            high += low;
        }
        low %= modulus;
        high %= modulus;
        bytes.remove_prefix(piece.size());
    }
    return (high << 16U) | low;
}

}  // namespace brenvik::dwg
