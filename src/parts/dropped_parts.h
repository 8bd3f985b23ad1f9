// The parts that scans could not take into the part table. A list without them is a wrong list unless it
// reports them, part by part.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

struct DroppedPart {
    std::string handle, name;
    /// What the part table said of its row; blank if the table could not be used at all, which is reported
    /// elsewhere.
    std::string reason;
};

/// The parts that the scans since the last call have left out, in the order of the scans, each once.
std::vector<DroppedPart> TakeDroppedParts();

/// For the scan.
void NoteDroppedPart(DroppedPart part);

}  // namespace brenvik
