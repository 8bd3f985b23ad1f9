// What no recogniser took: noted while a part is worked on, and reported to the operator when the run ends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/ports/host_interface.h"

namespace brenvik {

struct RunState;

/// A length in the words of a report: three decimals at most.
std::string ReportedLength(double value);

/// Adds a text unless it is among the notes already.
void NoteOnce(std::vector<std::string>& notes, std::string_view text);

/// Adds a line to the part's report, once.
void NoteUnexplained(RunState& run, std::string_view text);
/// The same with its place in the frame of the first side.
void NoteUnexplained(RunState& run, const std::string& text, const Box3& place);

/// Adds a note of something passed over whose place isn't known. The proof withdraws it, since it reports the
/// place itself.
void NoteUntilProved(RunState& run, const std::string& text);

/// Adds a note about the whole part. The proof withdraws it if the part comes out right.
void NoteWholePart(RunState& run, const std::string& text);

/// Adds a hole or pin that no operation was made for. `kind` is the operator's word for it. One that was
/// noted before, from either side, isn't noted again.
void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place);
/// The same for one that is seen elsewhere than at `place` too: `extent` is its box in the pass's frame.
void NoteUnexplained(RunState& run, const Box3& part, std::string_view kind, double diameter,
                     const Point3& place, const Box3& extent);
/// The box of a bore on an axis all through the part.
Box3 AroundAxis(const Box3& part, const Point3& on, const Point3& along, double radius);

}  // namespace brenvik
