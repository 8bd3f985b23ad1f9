// The three streams of an object or a framed section: values, texts and handles. Before release 2007 texts
// stand among the values.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "drafting_host/dwg/bit_reader.h"
#include "drafting_host/dwg/containers.h"
#include "drafting_host/dxf/texts/dxf_text.h"

namespace brenvik::dwg {

/// How the texts of a drawing become UTF-8.
class Texts {
  public:
    Texts() = default;
    /// `codePage` is the file's number of a page. An unknown one counts as 1252, see IsKnown.
    Texts(Release release, unsigned codePage);

    bool IsKnown() const { return mIsKnown; }
    bool IsUnicode() const { return mIsUnicode; }
    /// A text as it stands in a stream: its length, then its characters.
    std::string Read(BitReader& reader) const;
    /// Characters of the code page. A closing zero isn't part of a text.
    std::string FromPage(std::string_view bytes) const;
    /// Units of 16 bits, lowest byte first.
    std::string FromUnits(std::string_view bytes) const;

    /// How many texts have kept the escape of a character that could not be decoded, and the first of them.
    std::size_t Escaped() const { return mEscaped; }
    const std::string& FirstEscaped() const { return mFirstEscaped; }
    /// How many texts have a zero within, where they end, and the first of them.
    std::size_t Cut() const { return mCut; }
    const std::string& FirstCut() const { return mFirstCut; }
    /// How many texts have a control character that isn't a tab or the end of a line, and the first of them.
    std::size_t Controlled() const { return mControlled; }
    const std::string& FirstControlled() const { return mFirstControlled; }
    /// A program ends each text by a zero or none. How many do otherwise than nearly all, and the first of
    /// them.
    std::size_t OddlyEnded() const;
    const std::string& FirstOddlyEnded() const;

  private:
    std::string Decoded(std::string_view text) const;

    TextDecoder mDecoder;
    bool mIsUnicode = false, mIsKnown = true;
    struct Seen {
        std::size_t count = 0;
        std::string first{};
        void Add(const std::string& text) {
            if (count++ == 0) first = text;
        }
    };
    /// Of the texts with and without a zero at their end those that are few.
    const Seen* Few() const;

    mutable std::size_t mEscaped = 0, mCut = 0, mControlled = 0;
    mutable std::string mFirstEscaped, mFirstCut, mFirstControlled;
    mutable Seen mEnded, mUnended;
};

struct Streams {
    Release release = Release::R2000;
    const Texts* texts = nullptr;
    BitReader data, strings, handles;
    HandleValue own = 0;  ///< Whose references these are.

    bool IsAtLeast(Release other) const { return release >= other; }
    std::string Text() { return texts->Read(IsAtLeast(Release::R2007) ? strings : data); }
    HandleValue Handle() { return handles.Handle().From(own); }
};

/// References that nobody reads. Writers that end in front of them are no reason to refuse an object.
void SkipHandles(Streams& streams, unsigned count);

/// What is left of an object's streams when all is read that its kind has, or a number that a drawing can't
/// have; blank for nothing. A count or a mark that is damaged makes the reading end early, mostly.
std::string RestOf(const Streams& streams);

/// The streams between two bits: `handlesAt` is where the handles begin, where texts end too. Throws Damage.
Streams StreamsOf(std::string_view bytes, std::size_t begin, std::size_t handlesAt, std::size_t end,
                  Release release, const Texts& texts);

/// The data of the header or the classes, out of their frame of marks. Throws Damage if the frame is broken.
/// A wrong checksum only sets `sumIsWrong`; the data are read all the same.
struct Frame {
    std::string_view data;
    bool sumIsWrong = false;
};
Frame FrameOf(std::string_view section, std::string_view beginMark, Release release, unsigned maintenance);

inline constexpr std::string_view HeaderMark =
    "\xCF\x7B\x1F\x23\xFD\xDE\x38\xA9\x5F\x7C\x68\xB8\x4E\x6D\x33\x5F";
inline constexpr std::string_view ClassesMark =
    "\x8D\xA1\xC4\xB8\xC4\xA9\xF8\xC5\xC0\xDC\xF4\x5F\xE7\xCF\xB6\x8A";

/// The streams of a framed section: from release 2007 on it begins with the number of bits to its handles.
Streams StreamsOfFrame(const Frame& frame, Release release, const Texts& texts);

}  // namespace brenvik::dwg
