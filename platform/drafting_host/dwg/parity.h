// The parity of pages of release 2007: Reed-Solomon blocks of 255 bytes, of which the last few follow from
// those ahead.
#pragma once

#include <cstddef>
#include <string_view>

namespace brenvik::dwg {

inline constexpr std::size_t ParityBlock = 255;

/// The two codes of a file.
enum class Parity { OfSystemPages, OfDataPages };

/// How many bytes of a block are data.
constexpr std::size_t DataOfBlock(Parity parity) { return parity == Parity::OfSystemPages ? 239 : 251; }

/// Whether the blocks of a page, which stand interleaved byte by byte, fit their parity. A page whose parity
/// is nothing but zeros comes from a program that doesn't keep it, and fits.
bool FitsParity(std::string_view stored, std::size_t blocks, Parity parity);

}  // namespace brenvik::dwg
