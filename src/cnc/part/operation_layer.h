// The layers that carry operations.
#pragma once

#include <string_view>

namespace brenvik {

struct RunState;

/// A layer that carries an operation: made if it is missing, and then the run's last added one.
void EnsureOperationLayer(RunState& run, std::string_view name);

}  // namespace brenvik
