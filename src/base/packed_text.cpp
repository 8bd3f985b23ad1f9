// Lengths in decimal digits, so that what is packed can be read by people too.
#include "base/packed_text.h"

#include <charconv>

#include "base/failure.h"

namespace brenvik {

namespace {

[[noreturn]] void Refuse() { throw TypeMismatch("expected a text with its length ahead of it"); }

std::size_t CountOf(std::string_view digits) {
    std::size_t count = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), count);
    if (error != std::errc() || end != digits.data() + digits.size()) Refuse();
    return count;
}

}  // namespace

void PackText(std::string& packed, std::string_view text) {
    packed += std::to_string(text.size());
    packed += ':';
    packed += text;
}

void PackTexts(std::string& packed, const std::vector<std::string>& texts) {
    PackText(packed, std::to_string(texts.size()));
    for (const std::string& text : texts) PackText(packed, text);
}

std::string PackedTexts::Take() {
    const std::size_t colon = mRest.find(':');
    if (colon == std::string_view::npos) Refuse();
    const std::size_t length = CountOf(mRest.substr(0, colon));
    mRest.remove_prefix(colon + 1);
    if (length > mRest.size()) Refuse();
    std::string text(mRest.substr(0, length));
    mRest.remove_prefix(length);
    return text;
}

std::size_t PackedTexts::TakeCount() { return CountOf(Take()); }

std::vector<std::string> PackedTexts::TakeAll() {
    std::vector<std::string> texts;
    for (std::size_t left = TakeCount(); left > 0; --left) texts.push_back(Take());
    return texts;
}

}  // namespace brenvik
