// The record level of ACIS data: head, records, fields. Knows where a record ends and how its fields are
// typed, but not what the records mean. This file and its source parse text, binary_records.h parses binary
// data.
#pragma once

#include "drafting_host/acis/acis_text.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik::acis {

/// Farther out than any drawing reaches; beyond it neither coordinates nor tolerances mean anything.
inline constexpr double LongestLength = 1e9;

/// One field of a record. A choice is what text has a word for (forward or reversed, I or F) and binary data
/// a number, whose meaning hangs on the place.
struct Field {
    enum class Kind { Pointer, Number, Word, Text, Choice };
    Kind kind = Kind::Word;
    std::string_view text;  ///< As it stands, for counted strings without the count.
    double number = 0;      ///< For numbers and choices; always finite.
    long index = -1;        ///< For pointers; -1 points nowhere.
};

/// One record. `fields` are views into the data that were split.
struct Record {
    std::string_view name;
    std::vector<Field> fields;
    std::size_t line = 0;  ///< 0 in binary data.
};

/// A text taken apart.
struct RecordText {
    TextHeader header;
    std::vector<Record> records;
    std::vector<Problem> problems;
    bool readable = false;          ///< False where the text as a whole is refused; `problems` says why.
    std::deque<std::string> names;  ///< Of records of binary data, where these come in pieces.
};

/// Splits a text into head and records. A text that breaks off keeps the records that are whole and
/// gets a problem with the place. The result refers to `text`, which has to outlive it.
RecordText SplitRecords(std::string_view text);

/// The fields that stand in a piece of text, without counted strings and without the end of a record.
std::vector<Field> TextFields(std::string_view text);

/// No version of ACIS data is higher.
constexpr int HighestVersion = 1000000;
/// Why data of a version are not read, with the way out; empty for a version that is.
std::string VersionRefusal(int version);

/// A record or field that is not what it has to be; `record` is its index or -1.
class BadRecord : public std::runtime_error {
  public:
    BadRecord(long index, const std::string& what) : std::runtime_error(what), record(index) {}
    long record;
};

/// Walks the fields of one record in order. Each step throws BadRecord when the field is missing or
/// of another kind, naming the field and what was found.
class FieldCursor {
  public:
    FieldCursor(const Record& source, long index) : mRecord(source), mRecordIndex(index) {}

    long Pointer(std::string_view what);
    double Number(std::string_view what);
    std::string_view Word(std::string_view what);
    /// True for `yes`, false for `no`; anything else is a BadRecord.
    bool Choice(std::string_view what, std::string_view no, std::string_view yes);
    /// Steps over the numbers and choices that stand next, if any.
    void SkipNumbers();
    /// True where the bound of a parameter is a number, which stands next; false for none. False too where
    /// the record holds no bound, as those before version 106.
    bool TakeBound();
    bool AtNumber() const;
    bool AtPointer() const;
    bool AtWord() const;
    bool AtChoice() const;
    /// Steps over a word, or the number or choice that stands for it.
    void SkipWordOrNumber(std::string_view what);
    bool AtEnd() const { return mPosition >= mRecord.fields.size(); }
    /// Fields not yet taken.
    std::size_t Left() const { return mRecord.fields.size() - mPosition; }
    std::size_t Position() const { return mPosition; }
    /// Goes to a field of the record by its place.
    void Seek(std::size_t place) { mPosition = std::min(place, mRecord.fields.size()); }

  private:
    const Field& Next(std::string_view what, Field::Kind kind);
    const Record& mRecord;
    long mRecordIndex;
    std::size_t mPosition = 0;
};

}  // namespace brenvik::acis
