// Between our UTF-8 and the UTF-16 of the driver manager's wide-character functions.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/api.h"

namespace brenvik::odbc {

/// A byte that is no UTF-8 becomes the character of that number. No zero at the end.
std::vector<SQLWCHAR> ToWide(std::string_view text);

/// Half of a surrogate pair with no other half becomes U+FFFD.
std::string FromWide(std::span<const SQLWCHAR> text);

}  // namespace brenvik::odbc
