// Texts of a STEP file as the format writes them between quotes, and a table that keeps them out of the
// modeller's hands: it breaks, doubles, trims and replaces characters of names on their way to and from a
// file.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "drafting_host/step/texts/step_text.h"

class TCollection_ExtendedString;

namespace brenvik::step {

/// A text of the modeller as UTF-8.
std::string Utf8(const TCollection_ExtendedString& text);

/// UTF-8 text as it stands between the quotes: apostrophe and backslash doubled, everything outside of
/// printable ASCII as \X2\ escapes.
std::string EncodedText(std::string_view text);

/// The UTF-8 text that stands between the quotes: all escapes of the format undone (\X2\, \X4\, \X\, \S\,
/// \P.\, and \N\ and \T\ for line feed and tab), bytes beyond ASCII taken by the code page, line breaks left
/// out, as the format has them. A backslash that begins no escape stands for itself: programs write paths so.
std::string DecodedText(std::string_view written, CodePage codePage);

/// Whether an escape for characters in the text has no end or other digits than its kind; DecodedText leaves
/// it as it stands.
bool HasBrokenEscape(std::string_view written);

/// Whether the file was written by this program: then its texts are taken to the letter, blanks included, and
/// a blank name means that nobody has named the part.
bool IsWrittenHere(std::string_view content);

/// Who names a program that writes a file: the header's originating system.
std::string OriginatingSystem();

/// Texts that the modeller would harm, and the plain words that it gets in their place.
class StandIns {
  public:
    /// The word for a text, the same for equal texts.
    std::string WordFor(std::string_view text);
    /// The text behind a word; any other text stays.
    std::string TextFor(std::string_view shown) const;

    /// The content of a file with every text that is more than plain words replaced by its word.
    std::string PutInto(std::string_view content, CodePage codePage);
    /// Texts of a file that was put in with characters that don't exist, such as half of a pair: they hold a
    /// replacement character instead.
    const std::vector<std::string>& Mended() const { return mMended; }
    /// Texts of a file that was put in with a broken escape, as they stand there, each once.
    const std::vector<std::string>& Broken() const { return mBroken; }
    /// The modeller's text with the texts behind the words, each on one line.
    std::string Resolve(std::string_view written) const;

  private:
    std::map<std::string, std::string, std::less<>> mWordOf;
    std::map<std::string, std::string, std::less<>> mTextOf;
    std::vector<std::string> mMended, mBroken;
    std::set<std::string, std::less<>> mKnownBroken;
};

}  // namespace brenvik::step
