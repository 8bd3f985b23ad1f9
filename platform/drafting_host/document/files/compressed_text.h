// Texts of bodies that lie in memory unread: their records repeat each other, so that they take a fourth.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brenvik {

struct CompressedText {
    std::string bytes;
    std::size_t size = 0;  ///< Of the text, in bytes.
};

/// Quick rather than thorough, as a large drawing's bodies are compressed while it is read. Throws
/// std::length_error for texts of more than 2 GB.
CompressedText Compressed(std::string_view text);
/// The text that `compressed` was made of.
std::string Uncompressed(const CompressedText& compressed);

}  // namespace brenvik
