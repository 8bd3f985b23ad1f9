// The form of a single STEP statement.
#pragma once

#include <string_view>

namespace brenvik::step {

/// True for "#12 = KIND(values);" and "#12 = (KIND(values) KIND(values));" with values of the kinds that the
/// format knows. `statement` ends with its semicolon and begins without blanks.
bool IsWellFormed(std::string_view statement);

}  // namespace brenvik::step
