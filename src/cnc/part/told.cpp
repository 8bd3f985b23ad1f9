// The lines of a part's report, each once.
#include "cnc/part/told.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

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

void NoteUntilProved(RunState& run, const std::string& text) {
    constexpr double far = std::numeric_limits<double>::max();
    NoteUnexplained(run, text, {{far, far, far}, {-far, -far, -far}});
}

void NoteWholePart(RunState& run, const std::string& text) {
    NoteUnexplained(run, text);
    run.part.wholePartNotes.insert(text);
}

void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place) {
    const double reach = diameter / 2;
    NoteUnexplained(run, part, kind, diameter, place,
                    {{place.x - reach, place.y - reach, place.z - reach},
                     {place.x + reach, place.y + reach, place.z + reach}});
}

void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place, const Box3& extent) {
    const Point3 seen = OnFirstSide(run, part, place), a = OnFirstSide(run, part, extent.min),
                 b = OnFirstSide(run, part, extent.max);
    NoteUnexplained(run,
                    std::string(kind) + " of " + ReportedLength(diameter) + " at " + ReportedLength(seen.x) +
                        "," + ReportedLength(seen.y) + "," + ReportedLength(seen.z) + ": no operation",
                    {{std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)},
                     {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)}});
}

Box3 AroundAxis(const Box3& part, const Point3& on, const Point3& along, double radius) {
    double from = -std::numeric_limits<double>::max(), to = -from;
    const auto stayWithin = [&](double start, double step, double low, double high) {
        if (std::abs(step) < 1e-9) return;
        const double a = (low - radius - start) / step, b = (high + radius - start) / step;
        from = std::max(from, std::min(a, b));
        to = std::min(to, std::max(a, b));
    };
    stayWithin(on.x, along.x, part.min.x, part.max.x);
    stayWithin(on.y, along.y, part.min.y, part.max.y);
    stayWithin(on.z, along.z, part.min.z, part.max.z);
    const auto reach = [&](double start, double step) {
        return std::pair{std::min(start + from * step, start + to * step) - radius,
                         std::max(start + from * step, start + to * step) + radius};
    };
    const auto [left, right] = reach(on.x, along.x);
    const auto [front, back] = reach(on.y, along.y);
    const auto [low, high] = reach(on.z, along.z);
    return {{left, front, low}, {right, back, high}};
}

}  // namespace brenvik
