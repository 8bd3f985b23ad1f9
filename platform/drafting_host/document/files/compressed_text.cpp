#include "drafting_host/document/files/compressed_text.h"

#include <lz4.h>

#include <stdexcept>

namespace brenvik {

CompressedText Compressed(std::string_view text) {
    if (text.size() > LZ4_MAX_INPUT_SIZE)
        throw std::length_error("a text of more than 2 GB is not compressed");
    const int size = static_cast<int>(text.size());
    std::string bytes(static_cast<std::size_t>(LZ4_compressBound(size)), '\0');
    bytes.resize(static_cast<std::size_t>(
        LZ4_compress_default(text.data(), bytes.data(), size, static_cast<int>(bytes.size()))));
    bytes.shrink_to_fit();
    return {std::move(bytes), text.size()};
}

std::string Uncompressed(const CompressedText& compressed) {
    std::string text(compressed.size, '\0');
    const int size =
        LZ4_decompress_safe(compressed.bytes.data(), text.data(), static_cast<int>(compressed.bytes.size()),
                            static_cast<int>(text.size()));
    if (size != static_cast<int>(text.size()))
        throw std::logic_error("a compressed text is not what was made");
    return text;
}

}  // namespace brenvik
