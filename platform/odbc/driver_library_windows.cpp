// The driver manager of Windows translates for narrow drivers by itself, by the code page that they use.
#include "odbc/driver_library.h"

namespace brenvik::odbc {

TextCalls CallsOf(std::string_view) { return TextCalls::Wide; }

}  // namespace brenvik::odbc
