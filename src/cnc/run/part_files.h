// One drawing for each solid of a run, twice: the second is for the other side.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "cnc/run/run_set_up.h"

namespace brenvik {

class WorkersPort;

struct PartFile {
    std::string name;  ///< "Part_0.dwg".
    /// How messages name the part: its name, if it has one, and its handle in the session drawing.
    std::string label;

    std::string FirstSidePath() const { return std::string(OutputFolder) + name; }
    std::string SecondSidePath() const {
        return std::string(SecondSideFolder) + std::string(SecondSideMark) + name;
    }
};

/// Deletes both drawings of a part, as far as they are there.
void RemovePartFiles(const PartFile& part);

/// Writes the solids of a set in its order; what is no solid is passed over. Unlocks their layers, and gives
/// each its lent quantity back. Quantities that are no counts go into the report. Fails as the host does
/// where a folder can't be written, and leaves no part file then. Null if the user cancels it; then no
/// part file is left, and the report says so. `workers` help with it, if there are any.
std::optional<std::vector<PartFile>> WritePartFiles(RunState& run, AcadSelectionSet& prev,
                                                    LentQuantities& quantities, WorkersPort* workers);

}  // namespace brenvik
