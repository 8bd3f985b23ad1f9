// Adjustment files: the walk ends on any bytes and goes as its single steps would, any
// sections can be held against a part, and what the editor reads it writes so that it reads the same again.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_lines.h"
#include "check.h"
#include "export/adjustment_file.h"
#include "export/adjustments.h"
#include "list_session.h"

namespace {

using Lines = std::vector<std::string>;

// The single steps look through the whole file each time, so a large file is followed for its first part.
void CheckWalk(const brenvik::AdjustmentList& list, const Lines& lines) {
    constexpr std::size_t mostSteps = 50;
    brenvik::AdjustmentSection section = brenvik::GetCurrentAdj("", lines);
    for (std::size_t step = 0; step < list.sections.size() && step < mostSteps; ++step) {
        brenvik::fuzz::Require(list.sections[step] == section, "the walk goes as its single steps");
        // A blank first line has no name to go on from.
        if (section.front().empty()) return;
        section = brenvik::GetCurrentAdj(section.front(), lines);
    }
    if (list.sections.size() >= mostSteps) return;
    brenvik::fuzz::Require(section.empty() != list.repeatedHeader.has_value(),
                           "the walk ends at the last section or where it would begin to go round");
}

void CheckEditor(const Lines& lines) {
    const std::vector<brenvik::AdjustmentRow> rows = brenvik::ParseAdjustments(lines);
    std::string text;
    for (const brenvik::AdjustmentRow& row : rows) {
        brenvik::fuzz::Require(row.size() == brenvik::AdjustmentColumnCount, "a row has all its columns");
        text += brenvik::AdjustmentText(row, "\r\n");
    }
    brenvik::fuzz::Require(brenvik::ParseAdjustments(brenvik::LinesOf(text)) == rows,
                           "what was written is read again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const brenvik::fuzz::ListSession session;
    const Lines lines = brenvik::LinesOf({reinterpret_cast<const char*>(data), size});
    const brenvik::AdjustmentList list = brenvik::WalkAdjustments(lines);
    CheckWalk(list, lines);
    brenvik::AdjustmentRules(list.sections).For(brenvik::fuzz::OnePart());
    CheckEditor(lines);
    return 0;
}
