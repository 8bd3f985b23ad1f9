// Routes and pockets that stop inside a part.
#pragma once

namespace brenvik {

struct RunState;

/// Closed shapes that stop inside the part become routes and pockets. Sets `RouteSkip` on a failure.
void RecogniseRoutes(RunState& run);

}  // namespace brenvik
