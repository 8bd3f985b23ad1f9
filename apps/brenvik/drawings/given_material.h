// The material that a command gives to parts without one.
#pragma once

#include <string>

#include "drafting_host/document/host_document.h"
#include "reports/teller.h"

namespace brenvik::app {

/// Puts the material on each entity of the previous selection that has none, as part data of the open
/// drawing, and reports how many. A blank name changes no part; a part that refuses it is reported.
void GiveMaterial(HostDocument& document, const std::string& material, Teller& teller);

}  // namespace brenvik::app
