// The orientation letters: which of a part's three extents is its length, its width and its thickness, and
// how the letters move when a solid has changed shape since it was last applied.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace brenvik::mAutoCAD {

/// The extents sorted by size, rounded to 6 decimals.
struct SortedExtents {
    double Small = 0, Mid = 0, Big = 0;
};
SortedExtents SortExtents(double a, double b, double c);

/// The sizes as text, "0" for a label that no letter names.
struct LabelledSizes {
    std::string length = "0", width = "0", thickness = "0";
};

/// The letter mapping: the first letter names the label of the largest extent, the second that of the middle
/// one, the last that of the smallest, in either case. Other characters name nothing.
LabelledSizes MapLetters(std::string_view letters, const SortedExtents& extents);

/// Whether the letters name each size once, in either case, or are blank.
bool AreValidLetters(std::string_view letters);

/// The extents of one entity. `E` is what the row keeps as measured; `D` is the copy that sizes are sorted
/// from. The two differ when a solid could not be measured: `E` then stands as it was.
struct MeasuredExtents {
    std::array<double, 3> E{}, D{};
};

/// The known facts of a part when its letters are settled.
struct OrieInput {
    std::string_view letters;                   ///< As they stand on the solid.
    std::array<std::string_view, 3> oldValues;  ///< Extents at the last Apply, as text.
    MeasuredExtents extents;
};

/// The letters as they leave, and the sizes to be stored as number text.
struct OrieResult {
    std::string letters;
    std::string length, width, thickness;
};

/// Compares a part's extents with those of the last Apply. Unchanged, it keeps letters and sizes; with one
/// extent changed, the letters move so that each stays with its size; otherwise they go blank.
OrieResult UpdateOrie(const OrieInput& input);

}  // namespace brenvik::mAutoCAD
