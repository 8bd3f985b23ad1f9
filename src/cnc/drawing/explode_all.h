// The host's command that takes everything apart that is neither locked nor frozen.
#pragma once

#include <string_view>

namespace brenvik {

/// The second blank closes the selection prompt.
inline constexpr std::string_view ExplodeAll = "Explode all  ";

}  // namespace brenvik
