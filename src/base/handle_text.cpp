// Handles to and from hexadecimal text.
#include "base/handle_text.h"

#include <array>
#include <charconv>
#include <system_error>

#include "base/letter_case.h"
#include "base/text.h"

namespace brenvik {

std::string HandleToText(std::uint64_t handle) {
    std::array<char, 16> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), handle, 16);
    return FoldUpper(std::string_view(buffer.data(), static_cast<std::size_t>(written.ptr - buffer.data())));
}

std::optional<std::uint64_t> HandleFromText(std::string_view text) {
    const std::string digits = Trim(text);
    std::uint64_t handle = 0;
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), handle, 16);
    if (read.ec != std::errc{} || read.ptr != digits.data() + digits.size()) return std::nullopt;
    return handle;
}

}  // namespace brenvik
