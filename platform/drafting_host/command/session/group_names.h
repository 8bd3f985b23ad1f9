// Names of groups as they are typed.
#pragma once

#include <string_view>

namespace brenvik {

class HostDocument;

/// True where a blank behind what is typed so far belongs to the name of one of the drawing's groups, so that
/// "BASE 1" can be typed without quotes.
bool GroupNameGoesOn(HostDocument& document, std::string_view typed);

}  // namespace brenvik
