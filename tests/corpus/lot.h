// Numbers by lot that are the same on every machine: the library's distributions differ, its generator
// doesn't.
#pragma once

#include <cstdint>
#include <random>

namespace brenvik::corpus {

class Lot {
  public:
    explicit Lot(std::uint32_t seed) : mNumbers(seed) {}
    int Below(int count) { return static_cast<int>(mNumbers() % static_cast<std::uint32_t>(count)); }
    bool OneIn(int count) { return Below(count) == 0; }
    /// In steps of a half.
    double Between(double low, double high) {
        return low + Below(static_cast<int>((high - low) * 2) + 1) / 2.0;
    }
    template <class List>
    auto OneOf(const List& list) {
        return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
    }

  private:
    std::mt19937 mNumbers;
};

}  // namespace brenvik::corpus
