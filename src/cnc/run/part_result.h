// The result of the work on one part, in a form that another process can hand over: the run's own process may
// not be the one that has worked on the part.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cnc/output/work_lists.h"
#include "cnc/part/run_report.h"
#include "parts/part_trouble.h"
#include "session/ports/dialog_port.h"
#include "settings/bit_choice.h"

namespace brenvik {

struct PartResult {
    /// The work asked the user or ended the run, so the run's own process must repeat it.
    bool isForTheRun = false;
    /// The files that it has written, by their names below the output folder.
    std::vector<std::string> files;
    std::vector<MessageRequest> boxes;
    std::vector<ListLine> lines;
    /// The lines of this part alone.
    RunReport report;
    std::vector<PartTrouble> troubles;
    /// The bit that it leaves in hand; none where it has chosen none.
    std::optional<BitChoice> bits;
};

/// As a text, and back. Fails with 13 for a text that is none.
std::string PackResult(const PartResult& result);
PartResult UnpackResult(std::string_view packed);

/// Adds what a part has reported to the report of its run, in which some lines stand once.
void AddReport(RunReport& run, const RunReport& part);

}  // namespace brenvik
