// Bores in the edges of a part.
#pragma once

namespace brenvik {

struct RunState;

/// Circles on the four edges become edge bores.
void BoreHorizontally(RunState& run);

}  // namespace brenvik
