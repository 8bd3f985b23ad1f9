// The length of the text, then by turns: so many bytes as they are, and so many as stood at a distance
// before. Numbers are in bytes of seven bits, the lowest first.
#include "drafting_host/document/files/packed_text.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace brenvik {
namespace {

/// What is shorter than its reference isn't worth one.
constexpr std::size_t LeastRepeated = 5;

void PutNumber(std::string& packed, std::size_t number) {
    for (; number >= 0x80; number >>= 7U) packed += static_cast<char>(number | 0x80U);
    packed += static_cast<char>(number);
}

std::size_t TakeNumber(std::string_view& packed) {
    std::size_t number = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(packed.front());
        packed.remove_prefix(1);
        number |= static_cast<std::size_t>(byte & 0x7FU) << shift;
        if (byte < 0x80) return number;
    }
}

/// Where the last text with the same beginning stood.
class Beginnings {
  public:
    /// The place noted for the bytes at `place`, which is noted in its stead. 0 where there is none.
    std::size_t Exchange(std::string_view text, std::size_t place) {
        std::uint32_t head = 0;
        std::memcpy(&head, text.data() + place, sizeof head);
        std::uint32_t& noted = mPlaces[head * 2654435761U >> (32U - Bits)];
        const std::uint32_t before = noted;
        noted = static_cast<std::uint32_t>(place);
        return before;
    }

  private:
    static constexpr unsigned Bits = 13;
    std::array<std::uint32_t, std::size_t{1} << Bits> mPlaces{};
};

std::size_t SameBytes(std::string_view text, std::size_t before, std::size_t place) {
    std::size_t length = 0;
    while (place + length < text.size() && text[before + length] == text[place + length]) ++length;
    return length;
}

}  // namespace

std::string Packed(std::string_view text) {
    std::string packed;
    packed.reserve(text.size() / 2);
    PutNumber(packed, text.size());
    Beginnings beginnings;
    std::size_t plain = 0;  // from here on nothing is put yet
    for (std::size_t place = 1; place + LeastRepeated <= text.size();) {
        const std::size_t before = beginnings.Exchange(text, place);
        const std::size_t length = SameBytes(text, before, place);
        if (length < LeastRepeated) {
            ++place;
            continue;
        }
        PutNumber(packed, place - plain);
        packed += text.substr(plain, place - plain);
        PutNumber(packed, length);
        PutNumber(packed, place - before);
        place += length;
        plain = place;
    }
    PutNumber(packed, text.size() - plain);
    packed += text.substr(plain);
    packed.shrink_to_fit();
    return packed;
}

std::string Unpacked(std::string_view packed) {
    const std::size_t size = TakeNumber(packed);
    std::string text;
    text.reserve(size);
    for (;;) {
        const std::size_t plain = TakeNumber(packed);
        text += packed.substr(0, plain);
        packed.remove_prefix(plain);
        if (text.size() == size) return text;
        std::size_t length = TakeNumber(packed);
        // What it repeats may reach into what it makes.
        for (std::size_t from = text.size() - TakeNumber(packed); length > 0; --length) text += text[from++];
    }
}

}  // namespace brenvik
