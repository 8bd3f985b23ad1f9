// The East Asian code pages, which the C library converts.
#include <iconv.h>

#include <array>
#include <cstdint>
#include <string_view>

#include "drafting_host/dxf/texts/code_pages.h"

namespace brenvik {
namespace {

/// The pages of "\M+1" to "\M+5".
constexpr auto Pages = std::to_array<const char*>({"CP932", "CP950", "CP949", "CP1361", "CP936"});

/// A converter of the C library; it stays open, as it takes longer to find than to use.
class Converter {
  public:
    explicit Converter(const char* page) : mHandle(iconv_open("UTF-32LE", page)) {}
    ~Converter() {
        if (IsOpen()) iconv_close(mHandle);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    /// The one character that all these bytes stand for.
    std::optional<char32_t> CharacterOf(std::string_view bytes) {
        if (!IsOpen()) return std::nullopt;
        std::array<char, 2> input{};
        bytes.copy(input.data(), input.size());
        std::array<char, 8> output{};
        char *from = input.data(), *to = output.data();
        std::size_t unread = bytes.size(), room = output.size();
        iconv(mHandle, nullptr, nullptr, nullptr, nullptr);
        const std::size_t result = iconv(mHandle, &from, &unread, &to, &room);
        const bool isOne = result == 0 && unread == 0 && room == output.size() - sizeof(char32_t);
        if (!isOne) return std::nullopt;
        char32_t character = 0;
        for (std::size_t at = sizeof(char32_t); at-- > 0;)
            character = character * 0x100 + static_cast<unsigned char>(output[at]);
        return character;
    }

  private:
    bool IsOpen() const { return mHandle != reinterpret_cast<iconv_t>(std::intptr_t{-1}); }

    iconv_t mHandle;
};

Converter& ConverterOf(char digit) {
    thread_local std::array<Converter, Pages.size()> converters{Converter(Pages[0]), Converter(Pages[1]),
                                                                Converter(Pages[2]), Converter(Pages[3]),
                                                                Converter(Pages[4])};
    return converters[static_cast<std::size_t>(digit - '1')];
}

}  // namespace

// A high byte of zero names a character of one byte. Those below 80 are ASCII, which nobody escapes.
std::optional<char32_t> MultiByteCharacter(char digit, unsigned bytes) {
    constexpr unsigned firstBeyondAscii = 0x80;
    if (digit < '1' || digit > '5' || bytes < firstBeyondAscii || bytes > 0xFFFF) return std::nullopt;
    const std::array<char, 2> pair{static_cast<char>(bytes >> 8U), static_cast<char>(bytes & 0xFFU)};
    const std::string_view both(pair.data(), pair.size());
    return ConverterOf(digit).CharacterOf(bytes > 0xFF ? both : both.substr(1));
}

}  // namespace brenvik
