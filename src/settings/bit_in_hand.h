// Whose bit is in hand: where no rule chooses one, a path gets that of the path before it, which may be one
// of another part.
#pragma once

namespace brenvik {

/// A part begins: the bit in hand is that of an earlier one.
void BeginPartWithBitInHand();

/// A bit has been chosen for this part.
void TakeBitInHand();
/// A path is cut with the bit in hand, whosever it is.
void CutWithBitInHand();

/// Whether a bit has been chosen for this part.
bool HasBitOfItsOwn();

/// Whether the part has cut with that of an earlier one.
bool HasUsedBitOfEarlierPart();

}  // namespace brenvik
