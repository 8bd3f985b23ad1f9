// Matching with one point of return, the last run met: a later run takes over all that an earlier one
// could still give.
#include "base/wildcard.h"

#include <cstddef>
#include <optional>
#include <string>

#include "base/letter_case.h"
#include "base/utf8.h"

namespace brenvik {
namespace {

bool MatchesFolded(std::string_view text, std::string_view pattern, Wildcards wildcards) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::optional<std::size_t> afterRun;
    std::size_t resume = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == wildcards.anyRun) {
            afterRun = ++p;
            resume = t;
        } else if (p < pattern.size() && pattern[p] == wildcards.anyOne) {
            t += Utf8CharacterAt(text, t).length;
            ++p;
        } else if (p < pattern.size() && pattern[p] == text[t]) {
            ++t;
            ++p;
        } else if (afterRun) {
            resume += Utf8CharacterAt(text, resume).length;
            t = resume;
            p = *afterRun;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == wildcards.anyRun) ++p;
    return p == pattern.size();
}

}  // namespace

bool MatchesWildcards(std::string_view text, std::string_view pattern, Wildcards wildcards) {
    return MatchesFolded(FoldLower(text), FoldLower(pattern), wildcards);
}

}  // namespace brenvik
