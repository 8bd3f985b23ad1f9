// The three extents of a part, as a cut list wants them: the board's own sizes, however it stands.
#pragma once

#include <TopoDS_Shape.hxx>

namespace brenvik::solids {

/// How a part was measured, or why it couldn't be. Values above 0 are good.
namespace measure_status {
inline constexpr int NotFinite = -1;   ///< coordinates that are no numbers or beyond all bounds
inline constexpr int Nothing = 0;      ///< no shape, or no face in it
inline constexpr int Square = 1;       ///< along the world's X, Y and Z
inline constexpr int OwnFrame = 2;     ///< along the largest flat face and its longest straight edge
inline constexpr int SmallestBox = 3;  ///< no flat face: the smallest box at any angle
}  // namespace measure_status

/// Three extents in drawing units and the status of measuring (measure_status). With a status of 0 or
/// less the extents are 0.
struct Extents {
    double d1 = 0;
    double d2 = 0;
    double d3 = 0;
    int status = measure_status::Nothing;
};

/// Measures a part. The outcome never depends on where the part lies.
///
/// The part's own frame: the normal of its largest flat face, and in that face the direction of the
/// longest straight run of its outer boundary (pieces of one line, parted by notches, count together).
/// A largest face with no straight edge takes the smallest rectangle around the part in its plane. A
/// part with no flat face takes the smallest box: about the axis of its largest turned face where it has
/// one, otherwise at any angle.
///
/// The part is square to the world, and d1, d2, d3 are its extents along X, Y and Z, when its own frame
/// is parallel to the axes (to about 1e-9 rad), or when it has flat faces or straight edges along all
/// three axes and either more flat area square to the world than to its own frame, or a box along the
/// axes that is no larger than its own. So a right-angled gusset with its legs on the axes is square
/// although its longest edge is the slanted one, and so is an upright leg tapered on four sides.
///
/// Otherwise d1 is the size along the longest edge, d2 across it in the face, d3 along the normal.
///
/// Ties: among equal faces or equal edges a frame parallel to the axes is taken first, then the one with
/// the smallest box, then the one with the greatest d1.
///
/// Never throws for a shape that can't be measured; the status says so.
Extents MeasureShape(const TopoDS_Shape& shape);

}  // namespace brenvik::solids
