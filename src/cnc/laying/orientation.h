// How a part lies by its letters: which of its sizes is length, width and thickness, and the quarter turns
// that bring them onto X, Y and Z. Lengths are drawing units. Turns act on all that stands on unlocked
// layers.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "parts/orie_update.h"
#include "session/ports/host_interface.h"

namespace brenvik {

/// Rounded to `decimals`, with the noise of turned coordinates taken off first: a size that ends exactly
/// half way, as 47/64 inch does in millimetres, rounds to the same side however the part lies.
double Settled(double value, int decimals);

/// The sides of a box along X, Y and Z, rounded to 5 decimals.
struct PartExtents {
    double x = 0, y = 0, z = 0;
};
/// The sides of this box.
PartExtents ExtentsOf(const Box3& box);

/// The sizes that the letters name, as text: the first letter's is the largest, the second's the middle one,
/// the last's the smallest. "0" where a letter is none of L, W and T.
mAutoCAD::LabelledSizes SizesByLetters(std::string_view letters, const PartExtents& extents);

/// The part's letters in upper case. A part without letters gets "LWT", with a message. Letters that don't
/// name each size once give nothing, after a message that the part is skipped.
std::optional<std::string> UsableLettersOf(const AcadEntity& solid);

/// The other side up: half a turn about X.
void TurnOver(AcadDocument& drawing);

/// Turns all until length, width and thickness lie on X, Y and Z, by at most one quarter about Z, Y and X in
/// this order, and gives the sizes. The last turn isn't tested: letters that name no size leave the part as
/// it then lies.
mAutoCAD::LabelledSizes TurnByLetters(AcadDocument& drawing, const AcadEntity& solid,
                                      std::string_view letters);

/// Moves the origin of the user coordinate system to the lowest corner of the part's box.
void MoveOriginToCorner(AcadDocument& drawing, const AcadEntity& solid);

}  // namespace brenvik
