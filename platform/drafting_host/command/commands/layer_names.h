// Layers by a typed list of names and patterns.
#pragma once

#include <string>
#include <vector>

namespace brenvik {

class CommandSession;
class HostLayer;

/// The layers that a list such as "A,bv-section*" means, in the drawing's order. Reports if there is none.
std::vector<HostLayer*> LayersNamed(const CommandSession& session, const std::string& list);

}  // namespace brenvik
