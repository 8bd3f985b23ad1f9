// What is known of the bit in hand.
#include "settings/bit_in_hand.h"

#include "session/module_state.h"

namespace brenvik {

namespace {

struct BitInHand {
    bool isOfThisPart = false, earlierWasUsed = false;
};

}  // namespace

void BeginPartWithBitInHand() { StateOf<BitInHand>() = {}; }

void TakeBitInHand() { StateOf<BitInHand>().isOfThisPart = true; }

void CutWithBitInHand() {
    BitInHand& bit = StateOf<BitInHand>();
    if (!bit.isOfThisPart) bit.earlierWasUsed = true;
}

bool HasBitOfItsOwn() { return StateOf<BitInHand>().isOfThisPart; }

bool HasUsedBitOfEarlierPart() { return StateOf<BitInHand>().earlierWasUsed; }

}  // namespace brenvik
