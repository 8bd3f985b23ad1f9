// The lines of a part's report, each once.
#include "cnc/part/told.h"

#include <algorithm>

#include "cnc/part/lengths.h"
#include "cnc/part/run_state.h"
#include "cnc/part/second_side.h"

namespace brenvik {

std::string ReportedLength(double value) {
    constexpr int decimals = 3;
    return RoundedText(value, decimals);
}

void NoteOnce(std::vector<std::string>& notes, std::string_view text) {
    if (std::ranges::find(notes, text) == notes.end()) notes.emplace_back(text);
}

void NoteUnexplained(RunState& run, std::string_view text) { NoteOnce(run.part.unexplained, text); }

void NoteUnexplained(RunState& run, const std::string& text, const Box3& place) {
    NoteUnexplained(run, text);
    run.part.notePlaces[text] = place;
}

void NoteWholePart(RunState& run, const std::string& text) {
    NoteUnexplained(run, text);
    run.part.wholePartNotes.insert(text);
}

void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place) {
    const Point3 seen = OnFirstSide(run, part, place);
    const double reach = diameter / 2;
    NoteUnexplained(
        run,
        std::string(kind) + " of " + ReportedLength(diameter) + " at " + ReportedLength(seen.x) + "," +
            ReportedLength(seen.y) + "," + ReportedLength(seen.z) + ": no operation",
        {{seen.x - reach, seen.y - reach, seen.z - reach}, {seen.x + reach, seen.y + reach, seen.z + reach}});
}

}  // namespace brenvik
