// Patterns with wildcards: of file names (* and ?) and of Like in statements (% and _).
#pragma once

#include <string_view>

namespace brenvik {

/// The two characters of a pattern that stand for others.
struct Wildcards {
    char anyRun;  ///< any number of characters, none too
    char anyOne;  ///< exactly one character
};

inline constexpr Wildcards FileWildcards = {'*', '?'};
inline constexpr Wildcards LikeWildcards = {'%', '_'};

/// Whether the whole text fits the pattern, the case of Latin letters ignored. Takes time in proportion to
/// the product of the lengths at worst.
bool MatchesWildcards(std::string_view text, std::string_view pattern, Wildcards wildcards);

}  // namespace brenvik
