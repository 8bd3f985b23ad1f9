// Upper and lower case of Latin letters in UTF-8: a shop's part is called "Türseite". The letters of
// ASCII, Latin-1, Latin Extended-A, -B and Additional are folded where an upper and a lower form belong
// to each other one to one; other scripts, and bytes that are no valid UTF-8, stay as they are. The
// German ß, which has no upper form of this kind, stays itself.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// The text with its Latin letters in lower case.
std::string FoldLower(std::string_view text);

/// The text with its Latin letters in upper case.
std::string FoldUpper(std::string_view text);

/// Whether two texts are the same but for the case of Latin letters.
bool EqualsIgnoreCase(std::string_view a, std::string_view b);

/// Whether `text` begins with `start`, the case of Latin letters ignored. Every text begins with the
/// empty one.
bool StartsWithIgnoreCase(std::string_view text, std::string_view start);

/// An ordering for maps and sets that ignores the case of Latin letters.
struct LessIgnoreCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

}  // namespace brenvik
