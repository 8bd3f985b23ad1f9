// Splitting ACIS text into records. The head differs by version, counted strings may hold blanks,
// line ends and the record mark, and texts break off in the middle.
#include "drafting_host/acis/sat_records.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace brenvik::acis {
namespace {

// The versions of the drawings of release 13 and after. Those before 200 have a head of one line.
constexpr int firstReadVersion = 105;
// Counted strings carry a mark from here on, and so can be told from numbers.
constexpr int firstMarkedStrings = 700;
// The last version of the independent line of the kernel that keeps the layouts known here, and the
// range of the line that drafting programs went over to.
constexpr int lastPlainVersion = 3500;
constexpr int firstBranchVersion = 20800;
constexpr int lastBranchVersion = 22399;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }

bool ParseNumber(std::string_view text, double& value) {
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (stop != end || text.empty()) return false;
    if (error == std::errc::result_out_of_range) {
        // Too small to hold is nothing; too large is no number.
        if (text.find("e-") == std::string_view::npos && text.find("E-") == std::string_view::npos)
            return false;
        value = 0;
        return true;
    }
    return error == std::errc() && std::isfinite(value);
}

bool ParseInteger(std::string_view text, long& value) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && stop == end && !text.empty();
}

std::string Shortened(std::string_view text) {
    constexpr std::size_t enough = 40;
    std::string shown;
    for (const char c : text.substr(0, enough)) shown.push_back(c >= ' ' && c <= '~' ? c : '?');
    return text.size() > enough ? shown + "..." : shown;
}

std::string NumberShown(double value) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, value).ptr;
    return {text, end};
}

/// A pointer, a number or a word.
Field FieldOf(std::string_view token) {
    Field field;
    field.text = token;
    if (token.front() == '$' && ParseInteger(token.substr(1), field.index)) {
        field.kind = Field::Kind::Pointer;
    } else if (ParseNumber(token, field.number)) {
        field.kind = Field::Kind::Number;
    }
    return field;
}

/// A field as a message shows it. Fields of binary data have no text of their own.
std::string Shown(const Field& field) {
    if (!field.text.empty()) return "'" + Shortened(field.text) + "'";
    if (field.kind == Field::Kind::Pointer) return "a pointer to record " + std::to_string(field.index);
    if (field.kind == Field::Kind::Text) return "an empty string";
    return "the " + std::string(field.kind == Field::Kind::Choice ? "choice " : "number ") +
           NumberShown(field.number);
}

class Splitter {
  public:
    explicit Splitter(std::string_view source) : text(source) {}

    RecordText Run() {
        if (!ReadHead()) return std::move(result);
        result.readable = true;
        ReadRecords();
        CheckCompleteness();
        return std::move(result);
    }

  private:
    void Tell(std::size_t line, long record, std::string what) {
        result.problems.push_back({line, record, std::move(what)});
    }

    std::string_view TakeLine() {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        std::string_view line = text.substr(at, end - at);
        at = std::min(end + 1, text.size());
        ++lineNumber;
        if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
        return line;
    }

    bool ReadHead();
    bool ReadVersionLine();
    void ReadProductLine(std::string_view line);
    void ReadScaleLine(std::string_view line);
    bool AcceptVersion();
    void ReadRecords();
    bool ReadRecord();
    bool SkipBlanks();
    std::string_view TakeToken();
    bool TakeCounted(std::string_view token, Field& field);
    bool EndsRecord() const;
    void CheckTail();
    void CheckCompleteness();

    std::string_view text;
    std::size_t at = 0;
    std::size_t lineNumber = 0;  // lines begun so far
    bool endMarkSeen = false;
    bool brokenOff = false;
    RecordText result;
};

bool Splitter::ReadHead() {
    if (!ReadVersionLine()) return false;
    // Records begin with a name or with their number, -0; a head goes on with counts.
    const std::size_t next = text.find_first_not_of(" \t\r\n", at);
    if (next != std::string_view::npos && (IsLetter(text[next]) || text[next] == '-')) return true;
    if (at >= text.size()) {
        Tell(lineNumber + 1, -1,
             "the text breaks off after its first line; expected product and scale lines");
        return false;
    }
    ReadProductLine(TakeLine());
    if (at >= text.size()) {
        Tell(lineNumber + 1, -1, "the text breaks off in its head; expected the scale line");
        return false;
    }
    ReadScaleLine(TakeLine());
    // Some late writers add a line of their own, which may begin with a lone T; records begin with a name.
    while (at < text.size()) {
        const std::size_t first = text.find_first_not_of(" \t\r", at);
        if (first == std::string_view::npos) break;
        const bool lone = first + 1 < text.size() && IsBlank(text[first + 1]);
        if ((IsLetter(text[first]) && !lone) || text[first] == '-') break;
        TakeLine();
    }
    return true;
}

bool Splitter::ReadVersionLine() {
    while (at < text.size() && IsBlank(text[at])) {
        if (text[at] == '\n') ++lineNumber;
        ++at;
    }
    const std::string_view line = TakeLine();
    std::size_t place = 0;
    std::vector<long> numbers;
    while (place < line.size() && numbers.size() < 4) {
        while (place < line.size() && IsBlank(line[place])) ++place;
        std::size_t end = place;
        while (end < line.size() && !IsBlank(line[end])) ++end;
        long value = 0;
        if (end == place || !ParseInteger(line.substr(place, end - place), value)) break;
        numbers.push_back(value);
        place = end;
    }
    if (numbers.size() < 2 || numbers[0] <= 0 || numbers[0] > highestVersion) {
        Tell(lineNumber, -1,
             "expected the head of an ACIS text (version, records, bodies, flags), found '" +
                 Shortened(line) + "'");
        return false;
    }
    result.header.version = static_cast<int>(numbers[0]);
    result.header.declaredRecords = std::max(0L, numbers[1]);
    result.header.declaredBodies = numbers.size() > 2 ? std::max(0L, numbers[2]) : 0;
    return AcceptVersion();
}

bool Splitter::AcceptVersion() {
    const std::string refusal = VersionRefusal(result.header.version);
    if (refusal.empty()) return true;
    Tell(lineNumber, -1, refusal);
    return false;
}

void Splitter::ReadProductLine(std::string_view line) {
    std::string* const targets[] = {&result.header.product, &result.header.modeller, &result.header.date};
    std::size_t place = 0;
    for (std::string* target : targets) {
        while (place < line.size() && IsBlank(line[place])) ++place;
        if (place < line.size() && line[place] == '@') ++place;
        const std::size_t begin = place;
        while (place < line.size() && IsDigit(line[place])) ++place;
        long length = 0;
        if (!ParseInteger(line.substr(begin, place - begin), length) || place >= line.size()) return;
        ++place;
        const std::size_t left = place <= line.size() ? line.size() - place : 0;
        const std::size_t count = std::min(static_cast<std::size_t>(length), left);
        *target = std::string(line.substr(std::min(place, line.size()), count));
        place += count;
    }
}

void Splitter::ReadScaleLine(std::string_view line) {
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos) return;
    const std::size_t end = std::min(line.find_first_of(" \t", first), line.size());
    double value = 0;
    if (ParseNumber(line.substr(first, end - first), value)) result.header.millimetresPerUnit = value;
}

bool Splitter::SkipBlanks() {
    while (at < text.size() && IsBlank(text[at])) {
        if (text[at] == '\n') ++lineNumber;
        ++at;
    }
    return at < text.size();
}

std::string_view Splitter::TakeToken() {
    const std::size_t begin = at;
    while (at < text.size() && !IsBlank(text[at])) ++at;
    return text.substr(begin, at - begin);
}

// A counted string that has to be taken whole, since it may hold blanks and record marks. A count
// that reaches over the end of the text is taken for a word of its own.
bool Splitter::TakeCounted(std::string_view token, Field& field) {
    if (result.header.version < firstMarkedStrings || token.size() < 2 || token[0] != '@') return false;
    long length = 0;
    if (!ParseInteger(token.substr(1), length) || length < 0) return false;
    const std::size_t begin = at + 1;
    if (begin > text.size() || static_cast<std::size_t>(length) > text.size() - begin) return false;
    field.kind = Field::Kind::Text;
    field.text = text.substr(begin, static_cast<std::size_t>(length));
    lineNumber += static_cast<std::size_t>(
        std::count(text.begin() + static_cast<long>(at),
                   text.begin() + static_cast<long>(begin + field.text.size()), '\n'));
    at = begin + field.text.size();
    return true;
}

// Called behind a lone record mark. Before strings carried a mark they could hide one; what really
// ends a record stands at the end of a line or before the name and attribute of the next.
bool Splitter::EndsRecord() const {
    if (result.header.version >= firstMarkedStrings) return true;
    std::size_t place = at;
    while (place < text.size() && (text[place] == ' ' || text[place] == '\t' || text[place] == '\r')) ++place;
    if (place >= text.size() || text[place] == '\n') return true;
    if (!IsLetter(text[place])) return false;
    while (place < text.size() && !IsBlank(text[place])) ++place;
    while (place < text.size() && text[place] == ' ') ++place;
    return place < text.size() && text[place] == '$';
}

bool Splitter::ReadRecord() {
    Record record;
    record.line = lineNumber;
    std::string_view token = TakeToken();
    long ownIndex = 0;
    if (ParseInteger(token, ownIndex)) {
        // Some writers number their records: -0, -1, -2 ...
        if (-ownIndex != static_cast<long>(result.records.size())) {
            Tell(lineNumber, static_cast<long>(result.records.size()),
                 "record numbered " + Shortened(token) + " stands out of order");
            return false;
        }
        if (!SkipBlanks()) return false;
        token = TakeToken();
    }
    record.name = token;
    for (;;) {
        if (!SkipBlanks()) {
            brokenOff = true;
            Tell(lineNumber, static_cast<long>(result.records.size()),
                 "the text breaks off within record " + std::to_string(result.records.size()) + " (" +
                     Shortened(record.name) + "); expected its end mark '#'");
            return false;
        }
        Field field;
        field.text = TakeToken();
        if (field.text.front() == '#') {
            // The next record may follow the end mark without a blank.
            const std::size_t behind = at;
            at -= field.text.size() - 1;
            if (EndsRecord()) break;
            at = behind;
        }
        field = FieldOf(field.text);
        if (field.kind == Field::Kind::Word) TakeCounted(std::string_view(field.text), field);
        record.fields.push_back(field);
    }
    result.records.push_back(std::move(record));
    return true;
}

void Splitter::ReadRecords() {
    ++lineNumber;  // from here on the number of the line that is being read
    while (SkipBlanks()) {
        for (const std::string_view mark :
             {"End-of-ACIS-data", "End-of-ASM-data", "Begin-of-ACIS-History", "Begin-of-ASM-History"}) {
            if (text.substr(at, mark.size()) != mark) continue;
            endMarkSeen = true;
            at += mark.size();
            if (mark.starts_with("End")) CheckTail();
            return;
        }
        if (!ReadRecord()) return;
    }
}

/// Blanks and the control Z of old systems may follow the end mark.
void Splitter::CheckTail() {
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    const std::string_view tail = text.substr(at);
    const auto found = std::ranges::find_if_not(tail, isBlank);
    if (found == tail.end()) return;
    const auto breaks = std::count(tail.begin(), found, '\n');
    Tell(lineNumber + static_cast<std::size_t>(breaks), -1, "what stands behind the end mark is left out");
}

void Splitter::CheckCompleteness() {
    if (brokenOff) return;
    const long found = static_cast<long>(result.records.size());
    const long declared = result.header.declaredRecords;
    if (declared > 0 && found < declared) {
        Tell(lineNumber, found,
             "the text breaks off: expected " + std::to_string(declared) + " records, found " +
                 std::to_string(found));
    } else if (declared == 0 && !endMarkSeen) {
        Tell(lineNumber, found,
             "the text breaks off after " + std::to_string(found) +
                 " records; expected a record or the end mark");
    }
}

}  // namespace

RecordText SplitRecords(std::string_view text) { return Splitter(text).Run(); }

std::vector<Field> TextFields(std::string_view text) {
    std::vector<Field> fields;
    for (std::size_t at = 0; at < text.size();) {
        if (IsBlank(text[at])) {
            ++at;
            continue;
        }
        std::size_t end = at;
        while (end < text.size() && !IsBlank(text[end])) ++end;
        fields.push_back(FieldOf(text.substr(at, end - at)));
        at = end;
    }
    return fields;
}

std::string VersionRefusal(int version) {
    if ((version >= firstReadVersion && version <= lastPlainVersion) ||
        (version >= firstBranchVersion && version <= lastBranchVersion)) {
        return {};
    }
    return "ACIS data of version " + std::to_string(version) + " are not read; expected version " +
           std::to_string(firstReadVersion) + " to " + std::to_string(lastPlainVersion) + " or " +
           std::to_string(firstBranchVersion) + " to " + std::to_string(lastBranchVersion) +
           "; save the drawing as DXF of release 2010, or the solids as STEP";
}

const Field& FieldCursor::Next(std::string_view what, Field::Kind kind) {
    if (position < record.fields.size() && record.fields[position].kind == kind)
        return record.fields[position++];
    static constexpr const char* kindNames[] = {"a pointer", "a number", "a word", "a string", "a choice"};
    const std::string found =
        position < record.fields.size() ? Shown(record.fields[position]) : "the end of the record";
    throw BadRecord(recordIndex, Shortened(record.name) + ": expected " + kindNames[static_cast<int>(kind)] +
                                     " (" + std::string(what) + "), found " + found);
}

long FieldCursor::Pointer(std::string_view what) { return Next(what, Field::Kind::Pointer).index; }
double FieldCursor::Number(std::string_view what) { return Next(what, Field::Kind::Number).number; }
std::string_view FieldCursor::Word(std::string_view what) {
    // Binary data of some programs have strings for words.
    if (!AtEnd() && record.fields[position].kind == Field::Kind::Text) return record.fields[position++].text;
    return Next(what, Field::Kind::Word).text;
}

bool FieldCursor::Choice(std::string_view what, std::string_view no, std::string_view yes) {
    // Writers of early versions put the bare number of the choice, and binary data have nothing else.
    if ((AtNumber() || AtChoice()) &&
        (record.fields[position].number == 0 || record.fields[position].number == 1)) {
        return record.fields[position++].number == 1;
    }
    const std::string_view word = Word(what);
    if (word == no) return false;
    if (word == yes) return true;
    throw BadRecord(recordIndex, std::string(record.name) + ": expected " + std::string(no) + " or " +
                                     std::string(yes) + " (" + std::string(what) + "), found '" +
                                     Shortened(word) + "'");
}

void FieldCursor::SkipNumbers() {
    while (AtNumber() || AtChoice()) ++position;
}

void FieldCursor::SkipWordOrNumber(std::string_view what) {
    if (AtNumber() || AtChoice()) {
        ++position;
    } else {
        Word(what);
    }
}

bool FieldCursor::TakeBound() {
    if (AtChoice()) return record.fields[position++].number == 1;
    return AtWord() && Word("parameter bound") == "F";
}

bool FieldCursor::AtNumber() const { return !AtEnd() && record.fields[position].kind == Field::Kind::Number; }
bool FieldCursor::AtPointer() const {
    return !AtEnd() && record.fields[position].kind == Field::Kind::Pointer;
}
bool FieldCursor::AtChoice() const { return !AtEnd() && record.fields[position].kind == Field::Kind::Choice; }
bool FieldCursor::AtWord() const { return !AtEnd() && record.fields[position].kind == Field::Kind::Word; }

}  // namespace brenvik::acis
