// A binary DXF file as a sequence of groups: a code of one or two bytes and a value, whose kind follows from
// the code. Every value gets the form that it has in an ASCII file (numbers as text, chunks of bytes as
// hexadecimal digits, line ends and carets within texts as escapes), so that all code behind the groups reads
// both kinds of file alike. Other texts are slices of the file.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

#include "drafting_host/dxf/reading/group_reader.h"

namespace brenvik {

/// Whether the content begins as binary DXF files of all releases do; the rest may be damaged all the same.
bool IsBinaryDxf(std::string_view content);

class BinaryGroups {
  public:
    /// `content` outlives the groups, and the groups' values outlive nothing but this object. Throws
    /// InvalidDxf where the 22 bytes at the begin are damaged, as by a transfer as text.
    BinaryGroups(std::string_view content, std::string_view fileName);

    /// Reads the next group; its line is the place of its code, in bytes from 0. False at the end, with `cut`
    /// set where the file breaks off. Throws InvalidDxf for a code that no release has: the length of its
    /// value is unknown.
    bool Next(Group& group, CutOff& cut);
    /// The place that is read next.
    std::size_t Place() const { return mAt; }

  private:
    /// Texts of numbers, set aside in large pieces that stay where they are.
    class TextStore {
      public:
        std::string_view Keep(std::string_view text);

      private:
        std::vector<std::unique_ptr<char[]>> mPieces;
        std::size_t mUsed = 0, mSize = 0;
    };

    bool TakeCode(int& code);
    bool TakeValue(int code, std::string_view& value);
    bool TakeText(std::string_view& value);
    bool TakeChunk(std::string_view& value);
    template <typename Number>
    bool TakeNumber(std::string_view& value);
    template <typename Number>
    bool TakeRaw(Number& number);

    std::string_view mContent;
    std::string_view mFileName;
    std::size_t mAt = 0;
    bool mHasShortCodes = false;
    bool mBrokeOff = false;
    TextStore mTexts;
};

}  // namespace brenvik
