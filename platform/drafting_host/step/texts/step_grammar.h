// The form of a statement in the data of a STEP file: "#1=KIND(values);" or "#1=(KIND(values)
// KIND(values));".
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace brenvik::step {

/// What a walk over one statement finds.
struct StatementWalk {
    bool wellFormed = false;
    std::size_t end = 0;                  ///< Behind the ";", or where the form breaks.
    std::string_view kind;                ///< Blank for a statement of several kinds.
    std::vector<std::size_t> references;  ///< Places of the "#" of what it refers to.
    std::size_t emptyList = 0;            ///< The end of the first list without an entry; 0 for none.
};

/// Walks over the statement at `place`, whose "#" stands there. `walk` is overwritten; its memory is kept.
void WalkStatement(std::string_view content, std::size_t place, StatementWalk& walk);

}  // namespace brenvik::step
