// SHA-256 as FIPS 180-4 has it.
#include "base/sha256.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

#include "base/hex.h"

namespace brenvik {

namespace {

constexpr std::size_t BlockSize = 64;

/// The first 32 bits behind the point of the cube roots of the first 64 primes.
constexpr std::array<std::uint32_t, 64> RoundKeys{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

/// Those of the square roots of the first eight primes.
constexpr std::array<std::uint32_t, 8> FirstState{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                                  0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

using State = std::array<std::uint32_t, 8>;

std::uint32_t WordAt(std::string_view bytes, std::size_t at) {
    std::uint32_t word = 0;
    for (std::size_t byte = 0; byte < 4; ++byte)
        word = word << 8U | static_cast<unsigned char>(bytes[at + byte]);
    return word;
}

std::array<std::uint32_t, 64> ScheduleOf(std::string_view block) {
    std::array<std::uint32_t, 64> words{};
    for (std::size_t word = 0; word < 16; ++word) words[word] = WordAt(block, 4 * word);
    for (std::size_t word = 16; word < words.size(); ++word) {
        const std::uint32_t early = words[word - 15], late = words[word - 2];
        words[word] = words[word - 16] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3U) +
                      words[word - 7] + (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10U);
    }
    return words;
}

void TakeBlock(State& state, std::string_view block) {
    const std::array<std::uint32_t, 64> words = ScheduleOf(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t round = 0; round < words.size(); ++round) {
        const std::uint32_t first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) +
                                    ((e & f) ^ (~e & g)) + RoundKeys[round] + words[round];
        const std::uint32_t second =
            (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + first;
        d = c;
        c = b;
        b = a;
        a = first + second;
    }
    const State worked{a, b, c, d, e, f, g, h};
    for (std::size_t word = 0; word < state.size(); ++word) state[word] += worked[word];
}

/// What is left behind the last whole block, with a one behind it and the length in bits at the end.
std::string TailOf(std::string_view bytes) {
    constexpr std::size_t lengthSize = 8;
    std::string tail(bytes.substr(bytes.size() / BlockSize * BlockSize));
    tail += '\x80';
    while (tail.size() % BlockSize != BlockSize - lengthSize) tail += '\0';
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    for (std::size_t byte = lengthSize; byte-- > 0;) tail += static_cast<char>(bits >> 8 * byte & 0xFFU);
    return tail;
}

void TakeBlocks(State& state, std::string_view bytes) {
    for (; bytes.size() >= BlockSize; bytes.remove_prefix(BlockSize))
        TakeBlock(state, bytes.substr(0, BlockSize));
}

}  // namespace

std::string Sha256(std::string_view bytes) {
    State state = FirstState;
    TakeBlocks(state, bytes);
    TakeBlocks(state, TailOf(bytes));
    std::string digits;
    for (const std::uint32_t word : state) AppendHex(digits, word, 8, SmallHexDigits);
    return digits;
}

}  // namespace brenvik
