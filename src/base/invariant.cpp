// The end of a program whose invariant is broken: one line on standard error, then abort, so that a
// debugger or a core file shows the stack.
#include "base/invariant.h"

#include <cstdio>
#include <cstdlib>

namespace brenvik {

void InvariantBroken(std::string_view text, const SourcePlace& place) {
    std::fprintf(stderr, "%s:%d: broken invariant in %s: %.*s\n", place.file, place.line, place.function,
                 static_cast<int>(text.size()), text.data());
    std::fflush(stderr);
    std::abort();
}

}  // namespace brenvik
