// The places where ends of curves meet, found by a grid.
#pragma once

#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

/// Numbers the places of a plane; places within the fuzz of each other are one.
class EndNodes {
  public:
    explicit EndNodes(double fuzz) : mFuzz(fuzz), mCell(fuzz * 4) {}

    /// The number of a place, a new one where nothing is near. The coordinates of a `drawn` place are kept
    /// rather than those of one that isn't.
    std::size_t Put(const Point3& p, bool drawn) {
        const std::int64_t left = Cell(p.x - mFuzz), right = Cell(p.x + mFuzz);
        const std::int64_t low = Cell(p.y - mFuzz), high = Cell(p.y + mFuzz);
        for (std::int64_t x = left; x <= right; ++x) {
            for (std::int64_t y = low; y <= high; ++y) {
                const auto [first, last] = mByCell.equal_range(KeyOf(x, y));
                for (auto each = first; each != last; ++each) {
                    Node& node = mNodes[each->second];
                    if (std::hypot(node.place.x - p.x, node.place.y - p.y) > mFuzz) continue;
                    if (drawn && !node.drawn) node = {p, true};
                    return each->second;
                }
            }
        }
        mNodes.push_back({p, drawn});
        mByCell.emplace(KeyOf(Cell(p.x), Cell(p.y)), mNodes.size() - 1);
        return mNodes.size() - 1;
    }

    const Point3& Place(std::size_t node) const { return mNodes[node].place; }
    std::size_t Count() const { return mNodes.size(); }

  private:
    struct Node {
        Point3 place;
        bool drawn = false;
    };

    std::int64_t Cell(double value) const { return static_cast<std::int64_t>(std::floor(value / mCell)); }
    static std::uint64_t KeyOf(std::int64_t x, std::int64_t y) {
        return static_cast<std::uint64_t>(x) * 0x9E3779B97F4A7C15u ^ static_cast<std::uint64_t>(y);
    }

    double mFuzz;
    double mCell;
    std::vector<Node> mNodes;
    std::unordered_multimap<std::uint64_t, std::size_t> mByCell;
};

}  // namespace brenvik
