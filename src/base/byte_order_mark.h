// The mark that some editors put ahead of UTF-8 text.
#pragma once

#include <string_view>

namespace brenvik {

inline constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

constexpr std::string_view WithoutByteOrderMark(std::string_view text) {
    return text.substr(text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
}

}  // namespace brenvik
