// Splitting a text into lines.
#include "base/text_lines.h"

#include "base/byte_order_mark.h"

namespace brenvik {

std::vector<std::string> LinesOf(std::string_view text) {
    text = WithoutByteOrderMark(text);
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        lines.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + (text.substr(end).starts_with("\r\n") ? 2 : 1));
    }
    return lines;
}

}  // namespace brenvik
