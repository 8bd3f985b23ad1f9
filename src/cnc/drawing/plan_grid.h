// Things of a part found again by their place in plan, however many there are: a hash over small squares.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace brenvik {

/// Indices kept by place. A look-up returns those at and close around a place; callers compare exactly.
class PlanGrid {
  public:
    void Add(double x, double y, std::size_t number) { mCells[Key(Cell(x), Cell(y))].push_back(number); }

    /// All numbers within the distance of a square's side or less, ascending; some further ones among them.
    std::vector<std::size_t> Near(double x, double y) const {
        std::vector<std::size_t> found;
        for (std::int64_t column = Cell(x - Reach); column <= Cell(x + Reach); ++column)
            for (std::int64_t row = Cell(y - Reach); row <= Cell(y + Reach); ++row)
                if (const auto cell = mCells.find(Key(column, row)); cell != mCells.end())
                    found.insert(found.end(), cell->second.begin(), cell->second.end());
        std::sort(found.begin(), found.end());
        return found;
    }

  private:
    // Wider than any tolerance of the run, and much smaller than any distance between two holes.
    static constexpr double Side = 0.01, Reach = 0.001;

    static std::int64_t Cell(double value) { return static_cast<std::int64_t>(std::floor(value / Side)); }
    static std::uint64_t Key(std::int64_t column, std::int64_t row) {
        return static_cast<std::uint64_t>(column) * 0x9E3779B97F4A7C15ULL ^ static_cast<std::uint64_t>(row);
    }

    std::unordered_map<std::uint64_t, std::vector<std::size_t>> mCells;
};

}  // namespace brenvik
