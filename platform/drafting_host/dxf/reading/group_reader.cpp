// Lines, groups and records of a DXF file.
#include "drafting_host/dxf/reading/group_reader.h"

#include <algorithm>
#include <charconv>

#include "base/byte_order_mark.h"
#include "base/file_failure.h"
#include "base/trimmed.h"
#include "drafting_host/dxf/reading/binary_groups.h"

namespace brenvik {
namespace {

constexpr std::string_view Blanks = " \t";

bool ParseCode(std::string_view text, int& code) {
    text = Trimmed(text, Blanks);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), code);
    return !text.empty() && read.ec == std::errc{} && read.ptr == text.data() + text.size();
}

// What stands in the file, short and printable, for a message.
std::string Shown(std::string_view text) {
    constexpr std::size_t longest = 40;
    std::string shown;
    for (const char c : text.substr(0, longest)) shown += c >= ' ' && c <= '~' ? c : '?';
    return "\"" + shown + (text.size() > longest ? "...\"" : "\"");
}

}  // namespace

std::string PlaceText(std::size_t place, PlaceUnit unit) {
    return (unit == PlaceUnit::Byte ? "byte " : "line ") + std::to_string(place);
}

Failure InvalidDxf(std::string_view fileName, std::size_t place, std::string_view expected,
                   std::string_view found, PlaceUnit unit) {
    return InvalidFileFormat(std::string(fileName) + ", " + PlaceText(place, unit) + ": expected " +
                             std::string(expected) + ", found " + std::string(found));
}

GroupReader::GroupReader(std::string_view content, std::string_view fileName)
    : mContent(content), mFileName(fileName) {
    if (IsBinaryDxf(content)) {
        mBinary = std::make_unique<BinaryGroups>(content, fileName);
        return;
    }
    if (mContent.starts_with(ByteOrderMark)) {
        mContent.remove_prefix(ByteOrderMark.size());
        mHasMark = true;
    }
    mNextFeed = std::min(mContent.find('\n'), mContent.size());
    mNextReturn = std::min(mContent.find('\r'), mContent.size());
}

GroupReader::~GroupReader() = default;

std::size_t GroupReader::Line() const { return mBinary ? mBinary->Place() : mLine; }

GroupReader::TextLine GroupReader::NextLine() {
    ++mLine;
    const std::size_t end = mContent.size();
    // Each place is looked up again only when it has been passed, so that a file with one kind of line
    // end is searched once for the other.
    if (mNextFeed < mAt) mNextFeed = std::min(mContent.find('\n', mAt), end);
    if (mNextReturn < mAt) mNextReturn = std::min(mContent.find('\r', mAt), end);
    const std::size_t stop = std::min(mNextFeed, mNextReturn);
    const std::string_view text = mContent.substr(mAt, stop - mAt);
    const bool pair = stop == mNextReturn && mNextFeed == stop + 1 && mNextFeed < end;
    mAt = std::min(end, stop + (pair ? 2 : 1));
    return {text, stop < end};
}

bool GroupReader::OnlyBlanksLeft() const {
    // Files of DOS days end with a control Z.
    return mContent.find_first_not_of(std::string_view(" \t\r\n\x1A\0", 6), mAt) == std::string_view::npos;
}

bool GroupReader::NextGroup(Group& group) {
    if (mHasPending) {
        mHasPending = false;
        group = mPending;
        return true;
    }
    return mBinary ? mBinary->Next(group, mCut) : NextTextGroup(group);
}

bool GroupReader::NextTextGroup(Group& group) {
    const TextLine code = mAt < mContent.size() ? NextLine() : TextLine{};
    if (!ParseCode(code.text, group.code)) {
        if (!code.ended || (Trimmed(code.text, Blanks).empty() && OnlyBlanksLeft())) {
            mCut = {std::max<std::size_t>(mLine, 1), "a group code"};
            return false;
        }
        throw InvalidDxf(mFileName, mLine, "a group code (a whole number)", Shown(code.text));
    }
    if (mAt >= mContent.size()) {
        mCut = {mLine, "the value of group " + std::to_string(group.code)};
        return false;
    }
    const TextLine value = NextLine();
    group.value = value.text;
    group.line = mLine;
    const bool isEnd = group.code == 0 && Trimmed(value.text, Blanks) == "EOF";
    if (!value.ended && !isEnd) {
        mCut = {mLine, "the whole value of group " + std::to_string(group.code) + " and a line end"};
        return false;
    }
    return true;
}

bool GroupReader::NextRecord(Record& record) {
    record.groups.clear();
    record.whole = false;
    Group group;
    do {
        if (mPassedEnd || !NextGroup(group)) return false;
    } while (group.code == 999);
    if (group.code != 0) {
        throw InvalidDxf(mFileName, group.line, "group 0 with the name of a section or the end of the file",
                         "group " + std::to_string(group.code), Unit());
    }
    record.name = Trimmed(group.value, Blanks);
    record.line = group.line;
    if (record.name == "EOF") {
        mPassedEnd = true;
        record.whole = true;
        return true;
    }
    while (NextGroup(group)) {
        if (group.code == 0) {
            mPending = group;
            mHasPending = true;
            record.whole = true;
            return true;
        }
        if (group.code != 999) record.groups.push_back(group);
    }
    return true;
}

}  // namespace brenvik
