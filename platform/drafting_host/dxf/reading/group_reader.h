// A DXF file as a sequence of groups and of records. A group is two lines of an ASCII file, a code and a
// value, or their bytes in a binary one. A record is a group 0 with its name and everything up to the next
// group 0: every table entry, entity, object and section begin is one. Values are slices of the file.
#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"

namespace brenvik {

struct Group {
    int code = 0;
    std::string_view value;
    std::size_t line = 0;  ///< Line of the value, from 1; in a binary file the place of the group in bytes.
};

/// What a place in a file counts: the lines of an ASCII file from 1, or the bytes of a binary one from 0.
enum class PlaceUnit { Line, Byte };
/// "line 12" or "byte 12".
std::string PlaceText(std::size_t place, PlaceUnit unit);

/// What a file was cut off in.
struct CutOff {
    std::size_t line = 0;
    std::string expected;
};

struct Record {
    std::string_view name;  ///< Without blanks around it.
    std::size_t line = 0;   ///< Line of the name.
    bool whole = false;     ///< False when the file ended before the next record began.
    std::vector<Group> groups;
};

/// A file that is no DXF drawing at all or can't be read further: number 321, "Invalid file format".
Failure InvalidDxf(std::string_view fileName, std::size_t place, std::string_view expected,
                   std::string_view found, PlaceUnit unit = PlaceUnit::Line);

class BinaryGroups;

class GroupReader {
  public:
    /// `content` outlives the reader, which outlives the groups' values. Binary content is recognised by its
    /// first bytes. A UTF-8 byte order mark is passed over. Throws InvalidDxf for a damaged binary begin.
    GroupReader(std::string_view content, std::string_view fileName);
    ~GroupReader();

    /// Reads the next record into `record`; false at the end. Comments (999) are passed over. Throws
    /// InvalidDxf where a group code is no number or the file doesn't begin with a group 0.
    bool NextRecord(Record& record);

    bool HasByteOrderMark() const { return mHasMark; }
    /// Where and in what the file broke off; asked after the last record.
    const CutOff& Cut() const { return mCut; }
    /// The place reached, and what it counts.
    std::size_t Line() const;
    PlaceUnit Unit() const { return mBinary ? PlaceUnit::Byte : PlaceUnit::Line; }

  private:
    struct TextLine {
        std::string_view text;
        bool ended = false;
    };

    bool NextGroup(Group& group);
    bool NextTextGroup(Group& group);
    TextLine NextLine();
    bool OnlyBlanksLeft() const;

    std::string_view mContent;
    std::string_view mFileName;
    std::unique_ptr<BinaryGroups> mBinary;
    std::size_t mAt = 0;
    std::size_t mLine = 0;
    std::size_t mNextFeed = 0, mNextReturn = 0;  // cached places of the next line end characters
    bool mHasMark = false;
    bool mHasPending = false;
    bool mPassedEnd = false;
    Group mPending;
    CutOff mCut;
};

}  // namespace brenvik
