// Cleaning and cutting of names.
#include "base/file_name.h"

#include <algorithm>

#include "base/text.h"

namespace brenvik {

std::string WithoutCharacters(std::string_view refused, std::string_view text) {
    std::string clean(text);
    std::ranges::replace_if(
        clean,
        [refused](char letter) {
            return refused.find(letter) != std::string_view::npos || static_cast<unsigned char>(letter) < ' ';
        },
        '_');
    return clean;
}

std::string FileNameText(std::string_view text) { return WithoutCharacters("\\/:*?\"<>|", text); }

void MakeFit(std::vector<std::string>& texts, std::size_t room) {
    const auto used = [&texts] {
        std::size_t bytes = 0;
        for (const std::string& text : texts) bytes += text.size();
        return bytes;
    };
    while (used() > room) {
        std::string& longest = *std::ranges::max_element(texts, {}, &std::string::size);
        longest = DropRight(longest, 1);
    }
}

}  // namespace brenvik
