// The checksums of binary drawings.
#pragma once

#include <cstdint>
#include <string_view>

namespace brenvik::dwg {

/// The seed of objects, of the object map's pieces, and of the framed sections.
inline constexpr std::uint16_t ObjectSeed = 0xC0C1;

/// 16 bits, reflected, polynomial A001 (hexadecimal).
std::uint16_t Crc16(std::string_view bytes, std::uint16_t seed);
/// 32 bits, reflected, polynomial EDB88320, as archives use it.
std::uint32_t Crc32(std::string_view bytes);
/// Two sums of 16 bits, each modulo 65521; `seed` holds what they begin with.
std::uint32_t PageSum(std::uint32_t seed, std::string_view bytes);

}  // namespace brenvik::dwg
