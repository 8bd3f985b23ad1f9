// What a caller may say about a drawing that is opened.
#pragma once

#include <string>

namespace brenvik {

/// How a drawing without part data of its own is read.
struct ReadOptions {
    /// Orientation letters for solids of STEP and ACIS files; blank gives none, and no saved extents.
    std::string letters = "LWT";
};

}  // namespace brenvik
