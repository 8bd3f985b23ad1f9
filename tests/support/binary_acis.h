// Binary ACIS data for tests, made from text.
#pragma once

#include <string>
#include <string_view>

namespace brenvik::test {

/// ACIS text of version 400 as a drawing of release 2013 holds the same body: binary tokens, in the layout of
/// version 21800, which has more fields in many records. Throws std::invalid_argument for a text that can't
/// be taken apart.
std::string BinaryAcis(std::string_view text);

}  // namespace brenvik::test
