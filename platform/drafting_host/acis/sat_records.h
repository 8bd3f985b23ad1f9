// The record level of ACIS text: head, records, fields. Knows how a record is told apart from the
// next and how its fields are typed, and nothing of what the records mean.
#pragma once

#include "drafting_host/acis/acis_text.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik::acis {

/// One field of a record.
struct Field {
    enum class Kind { Pointer, Number, Word, Text };
    Kind kind = Kind::Word;
    std::string_view text;  ///< As it stands, for counted strings without the count.
    double number = 0;      ///< For numbers; always finite.
    long index = -1;        ///< For pointers; -1 points nowhere.
};

/// One record. `fields` are views into the text given to SplitRecords.
struct Record {
    std::string_view name;
    std::vector<Field> fields;
    std::size_t line = 0;
};

/// A text taken apart.
struct RecordText {
    TextHeader header;
    std::vector<Record> records;
    std::vector<Problem> problems;
    bool readable = false;  ///< False where the text as a whole is refused; `problems` says why.
};

/// Splits a text into head and records. A text that breaks off keeps the records that are whole and
/// gets a problem with the place. The result refers to `text`, which has to outlive it.
RecordText SplitRecords(std::string_view text);

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
    FieldCursor(const Record& source, long index) : record(source), recordIndex(index) {}

    long Pointer(std::string_view what);
    double Number(std::string_view what);
    std::string_view Word(std::string_view what);
    /// True for `yes`, false for `no`; anything else is a BadRecord.
    bool Choice(std::string_view what, std::string_view no, std::string_view yes);
    /// Steps over the numbers that stand next, if any.
    void SkipNumbers();
    bool AtNumber() const;
    bool AtPointer() const;
    bool AtWord() const;
    bool AtEnd() const { return position >= record.fields.size(); }
    /// Fields not yet taken.
    std::size_t Left() const { return record.fields.size() - position; }
    std::size_t Position() const { return position; }
    /// Goes to a field of the record by its place.
    void Seek(std::size_t place) { position = std::min(place, record.fields.size()); }

  private:
    const Field& Next(std::string_view what, Field::Kind kind);
    const Record& record;
    long recordIndex;
    std::size_t position = 0;
};

}  // namespace brenvik::acis
