// Which of a part's three extents have been taken already, in each of the two walks over them. The flags
// outlive the operations that raise them, since one walk is made of several calls.
#pragma once

namespace brenvik::mAutoCAD {

struct ExtentsTaken {
    bool Small = false, Big = false, Mid = false;
};

/// The module's two triples of flags.
struct ExtentMatchingState {
    ExtentsTaken ExtentTakenForCount, ExtentTakenForMatch;
};

void ClearExtentsTakenForCount();
void ClearExtentsTakenForMatch();
const ExtentsTaken& ExtentsTakenForMatch();

}  // namespace brenvik::mAutoCAD
