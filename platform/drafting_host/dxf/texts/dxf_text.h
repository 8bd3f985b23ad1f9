// Texts of a DXF file: from the file's bytes (code page or UTF-8, with "\U+XXXX" escapes, and "^I", "^J",
// "^M" and "^ " for tab, line feed, return and the caret itself) to UTF-8, and back to plain ASCII.
// So are the characters of East Asian pages, as bytes and as "\M+nXXXX"; one that the system doesn't know
// stays that escape, which keeps names apart and is written back as it is. A character beyond four digits is
// a surrogate pair of two escapes; eight digits, as some programs write, are read too.
#pragma once

#include <string>
#include <string_view>

namespace brenvik {

/// Decodes the texts of one file.
class TextDecoder {
  public:
    enum class Bytes {
        Utf8,        ///< Release 2007 on, or a byte order mark.
        Utf8OrPage,  ///< Not stated: UTF-8 if the text is valid UTF-8, else the code page.
        Page,        ///< The code page.
    };

    TextDecoder() = default;
    /// `page` is a Windows number; it also decodes what is no valid UTF-8.
    /// Without `caretsEscape` a caret stands for itself, as in binary drawings.
    TextDecoder(Bytes bytes, int page, bool caretsEscape = true)
        : mBytes(bytes), mPage(page), mCaretsEscape(caretsEscape) {}

    /// The text in UTF-8, always valid.
    std::string Decode(std::string_view text) const;
    /// Whether the file has to be UTF-8; what isn't is read by the code page.
    bool ExpectsUtf8() const { return mBytes == Bytes::Utf8; }

  private:
    std::size_t DecodePageCharacter(std::string& result, std::string_view text, std::size_t at) const;

    Bytes mBytes = Bytes::Utf8OrPage;
    int mPage = 1252;
    bool mCaretsEscape = true;
};

/// Whether a decoded text holds a "\M+nXXXX", a character that could not be decoded.
bool HoldsPageEscape(std::string_view text);

/// Whether a text as it is written holds what a program may have meant as an escape of five digits
/// ("\U+1F600"), which the format doesn't have.
bool HoldsFiveDigitEscape(std::string_view written);
/// The report for a file with so many of these texts.
std::string FiveDigitsNote(std::size_t texts);

/// The report for a drawing with such texts; `first` names the first one or its place.
std::string KeptEscapesNote(std::size_t texts, std::string_view first);

/// The Windows number of a $DWGCODEPAGE such as "ANSI_1252"; 0 for a name that is none.
int CodePageNumber(std::string_view name);

/// The text as release 2000 takes it: ASCII, everything else as "\U+XXXX" (two of them, a surrogate
/// pair, above FFFF). Control characters are escaped too, since a line end would end the value, and so are
/// the caret and the backslash of a literal "\U+" or "\M+", so that reading gives the same text again.
/// With `isUnicode`, as releases from 2007 on take it, characters beyond ASCII stay as they are.
std::string EncodeText(std::string_view text, bool isUnicode = false);

/// A text as an ASCII file has it: tab, line feed, return and the caret as a caret with a letter. Everything
/// else stays as it is.
std::string EscapeControls(std::string_view text);

/// The length of a text as the limits of the format count it: in UTF-16 units, escapes not counted.
std::size_t TextUnits(std::string_view text);
/// The text up to `units` of these, never cut within a character or what stands for one ("\U+D800").
std::string_view FirstTextUnits(std::string_view text, std::size_t units);

}  // namespace brenvik
