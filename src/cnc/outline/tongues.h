// Tongues that stand out from the edges of a part.
#pragma once

namespace brenvik {

struct RunState;

/// Lead-in and lead-out for tongues that stand out from the edges.
void ProcessTongues(RunState& run);

}  // namespace brenvik
