// Numbers that distinguish two solids wherever they stand. A measuring component that has them offers this
// interface beside its own.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace brenvik {

/// A solid's marks don't depend on its place and turn; they differ for a mirrored one, unless it is its own
/// mirror image. Solids without marks can't be distinguished.
struct ShapeMarks {
    struct Mark {
        double value = 0;
        /// How far apart two marks of equal solids may lie.
        double slack = 0;
    };
    std::vector<Mark> marks;
};

class ShapeMarker {
  public:
    virtual ~ShapeMarker() = default;
    /// Of the solid with this object id; none for what is no solid.
    virtual ShapeMarks MarksOf(std::int32_t objectId) = 0;
};

/// Whether the marks speak for equal solids. Where one has none, nothing speaks against it.
inline bool MayBeEqual(const ShapeMarks& one, const ShapeMarks& other) {
    const std::size_t count = std::min(one.marks.size(), other.marks.size());
    for (std::size_t i = 0; i < count; ++i)
        if (std::abs(one.marks[i].value - other.marks[i].value) >
            std::max(one.marks[i].slack, other.marks[i].slack))
            return false;
    return true;
}

}  // namespace brenvik
