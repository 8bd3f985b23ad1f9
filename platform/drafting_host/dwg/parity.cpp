// A block is a polynomial whose lowest coefficient stands first; one without damage is zero at the roots of
// its code, which are the first powers of the field's generator.
#include "drafting_host/dwg/parity.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace brenvik::dwg {
namespace {

using Product = std::array<std::uint8_t, 256>;

/// For each root what a byte becomes when it is multiplied by the root.
template <unsigned Field, std::size_t Roots>
constexpr std::array<Product, Roots> ProductsOf() {
    constexpr unsigned beyondByte = 0x100;
    std::array<Product, Roots> products{};
    for (unsigned byte = 0; byte < products[0].size(); ++byte) {
        unsigned value = byte;
        for (Product& product : products) {
            value <<= 1U;
            if ((value & beyondByte) != 0) value ^= Field;
            product[byte] = static_cast<std::uint8_t>(value);
        }
    }
    return products;
}

template <std::size_t Roots>
bool IsZeroAtRoots(std::string_view stored, std::size_t block, std::size_t blocks,
                   const std::array<Product, Roots>& products) {
    std::array<std::uint8_t, Roots> values{};
    for (std::size_t i = ParityBlock; i-- > 0;) {
        const auto byte = static_cast<std::uint8_t>(stored[block + i * blocks]);
        for (std::size_t root = 0; root < Roots; ++root)
            values[root] = static_cast<std::uint8_t>(products[root][values[root]] ^ byte);
    }
    return std::ranges::all_of(values, [](std::uint8_t value) { return value == 0; });
}

template <std::size_t Roots>
bool AllAreZeroAtRoots(std::string_view stored, std::size_t blocks,
                       const std::array<Product, Roots>& products) {
    for (std::size_t block = 0; block < blocks; ++block)
        if (!IsZeroAtRoots(stored, block, blocks, products)) return false;
    return true;
}

}  // namespace

bool FitsParity(std::string_view stored, std::size_t blocks, Parity parity) {
    if (stored.size() < blocks * ParityBlock) return false;
    const std::string_view pages = stored.substr(0, blocks * ParityBlock);
    if (pages.find_first_not_of('\0', blocks * DataOfBlock(parity)) == std::string_view::npos) return true;
    static constexpr auto system = ProductsOf<0x169, 16>();
    static constexpr auto data = ProductsOf<0x11D, 4>();
    return parity == Parity::OfSystemPages ? AllAreZeroAtRoots(pages, blocks, system)
                                           : AllAreZeroAtRoots(pages, blocks, data);
}

}  // namespace brenvik::dwg
