// What a driver's library shows of it before a connection is made.
#pragma once

#include <string_view>

#include "odbc/api.h"

namespace brenvik::odbc {

/// The functions that texts travel through to the driver in this library. Wide where the library can't be
/// found: then the manager will say what is wrong with it.
TextCalls CallsOf(std::string_view library);

}  // namespace brenvik::odbc
