// The end of a program whose invariant is broken: one line on standard error, then abort, so that a
// debugger or a core file shows the stack.
#include "base/invariant.h"

#include <cstdio>
#include <cstdlib>

namespace brenvik {

void InvariantBroken(std::string_view text, const std::source_location& place) {
    std::fprintf(stderr, "%s:%u: broken invariant in %s: %.*s\n", place.file_name(),
                 static_cast<unsigned>(place.line()), place.function_name(), static_cast<int>(text.size()),
                 text.data());
    std::fflush(stderr);
    std::abort();
}

}  // namespace brenvik
