// Splitting ACIS text into records. The head differs by version, counted strings may hold blanks,
// line ends and the record mark, and texts break off in the middle.
#include "drafting_host/acis/sat_records.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/ascii.h"

namespace brenvik::acis {
namespace {

// The versions of the drawings of release 13 and after. Those before 200 have a head of one line.
constexpr int FirstReadVersion = 105;
// Counted strings carry a mark from here on, which distinguishes them from numbers.
constexpr int FirstMarkedStrings = 700;
// The last version of the independent line of the kernel that keeps the layouts known here, and the
// range of the line that drafting programs went over to.
constexpr int LastPlainVersion = 3500;
constexpr int FirstBranchVersion = 20800;
constexpr int LastBranchVersion = 22399;

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f' || c == '\v'; }
bool IsLetter(char c) { return IsAsciiLetter(c) || c == '_'; }

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
    if (token.front() == '$' && ParseInteger(token.substr(1), field.index))
        field.kind = Field::Kind::Pointer;
    else if (ParseNumber(token, field.number))
        field.kind = Field::Kind::Number;
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
    explicit Splitter(std::string_view source) : mText(source) {}

    RecordText Run() {
        if (!ReadHead()) return std::move(mResult);
        mResult.readable = true;
        ReadRecords();
        CheckCompleteness();
        return std::move(mResult);
    }

  private:
    void Tell(std::size_t line, long record, std::string what) {
        mResult.problems.push_back({line, record, std::move(what)});
    }

    std::string_view TakeLine() {
        const std::size_t end = std::min(mText.find('\n', mAt), mText.size());
        std::string_view line = mText.substr(mAt, end - mAt);
        mAt = std::min(end + 1, mText.size());
        ++mLineNumber;
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

    std::string_view mText;
    std::size_t mAt = 0;
    std::size_t mLineNumber = 0;  // lines begun so far
    bool mEndMarkSeen = false;
    bool mBrokenOff = false;
    RecordText mResult;
};

bool Splitter::ReadHead() {
    if (!ReadVersionLine()) return false;
    // Records begin with a name or with their number, -0; a head goes on with counts.
    const std::size_t next = mText.find_first_not_of(" \t\r\n", mAt);
    if (next != std::string_view::npos && (IsLetter(mText[next]) || mText[next] == '-')) return true;
    if (mAt >= mText.size()) {
        Tell(mLineNumber + 1, -1,
             "the text breaks off after its first line; expected product and scale lines");
        return false;
    }
    ReadProductLine(TakeLine());
    if (mAt >= mText.size()) {
        Tell(mLineNumber + 1, -1, "the text breaks off in its head; expected the scale line");
        return false;
    }
    ReadScaleLine(TakeLine());
    // Some late writers add a line of their own, which may begin with a lone T; records begin with a name.
    while (mAt < mText.size()) {
        const std::size_t first = mText.find_first_not_of(" \t\r", mAt);
        if (first == std::string_view::npos) break;
        const bool lone = first + 1 < mText.size() && IsBlank(mText[first + 1]);
        if ((IsLetter(mText[first]) && !lone) || mText[first] == '-') break;
        TakeLine();
    }
    return true;
}

bool Splitter::ReadVersionLine() {
    while (mAt < mText.size() && IsBlank(mText[mAt])) {
        if (mText[mAt] == '\n') ++mLineNumber;
        ++mAt;
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
    if (numbers.size() < 2 || numbers[0] <= 0 || numbers[0] > HighestVersion) {
        Tell(mLineNumber, -1,
             "expected the head of an ACIS text (version, records, bodies, flags), found '" +
                 Shortened(line) + "'");
        return false;
    }
    mResult.header.version = static_cast<int>(numbers[0]);
    mResult.header.declaredRecords = std::max(0L, numbers[1]);
    mResult.header.declaredBodies = numbers.size() > 2 ? std::max(0L, numbers[2]) : 0;
    return AcceptVersion();
}

bool Splitter::AcceptVersion() {
    const std::string refusal = VersionRefusal(mResult.header.version);
    if (refusal.empty()) return true;
    Tell(mLineNumber, -1, refusal);
    return false;
}

void Splitter::ReadProductLine(std::string_view line) {
    std::string* const targets[] = {&mResult.header.product, &mResult.header.modeller, &mResult.header.date};
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
    const std::string_view unit = line.substr(first, end - first);
    if (ParseNumber(unit, value))
        mResult.header.millimetresPerUnit = value;
    else
        mResult.header.unreadableUnit = Shortened(unit);
}

bool Splitter::SkipBlanks() {
    while (mAt < mText.size() && IsBlank(mText[mAt])) {
        if (mText[mAt] == '\n') ++mLineNumber;
        ++mAt;
    }
    return mAt < mText.size();
}

std::string_view Splitter::TakeToken() {
    const std::size_t begin = mAt;
    while (mAt < mText.size() && !IsBlank(mText[mAt])) ++mAt;
    return mText.substr(begin, mAt - begin);
}

// A counted string that has to be taken whole, since it may hold blanks and record marks. A count
// that reaches over the end of the text is taken for a word of its own.
bool Splitter::TakeCounted(std::string_view token, Field& field) {
    if (mResult.header.version < FirstMarkedStrings || token.size() < 2 || token[0] != '@') return false;
    long length = 0;
    if (!ParseInteger(token.substr(1), length) || length < 0) return false;
    const std::size_t begin = mAt + 1;
    if (begin > mText.size() || static_cast<std::size_t>(length) > mText.size() - begin) return false;
    field.kind = Field::Kind::Text;
    field.text = mText.substr(begin, static_cast<std::size_t>(length));
    mLineNumber += static_cast<std::size_t>(
        std::count(mText.begin() + static_cast<long>(mAt),
                   mText.begin() + static_cast<long>(begin + field.text.size()), '\n'));
    mAt = begin + field.text.size();
    return true;
}

// Called behind a lone record mark. Before strings carried a mark they could hide one; what really
// ends a record stands at the end of a line or before the name and attribute of the next.
bool Splitter::EndsRecord() const {
    if (mResult.header.version >= FirstMarkedStrings) return true;
    std::size_t place = mAt;
    while (place < mText.size() && (mText[place] == ' ' || mText[place] == '\t' || mText[place] == '\r'))
        ++place;
    if (place >= mText.size() || mText[place] == '\n') return true;
    if (!IsLetter(mText[place])) return false;
    while (place < mText.size() && !IsBlank(mText[place])) ++place;
    while (place < mText.size() && mText[place] == ' ') ++place;
    return place < mText.size() && mText[place] == '$';
}

bool Splitter::ReadRecord() {
    Record record;
    record.line = mLineNumber;
    std::string_view token = TakeToken();
    long ownIndex = 0;
    if (ParseInteger(token, ownIndex)) {
        // Some writers number their records: -0, -1, -2 ...
        if (-ownIndex != static_cast<long>(mResult.records.size())) {
            Tell(mLineNumber, static_cast<long>(mResult.records.size()),
                 "record numbered " + Shortened(token) + " stands out of order");
            return false;
        }
        if (!SkipBlanks()) return false;
        token = TakeToken();
    }
    record.name = token;
    for (;;) {
        if (!SkipBlanks()) {
            mBrokenOff = true;
            Tell(mLineNumber, static_cast<long>(mResult.records.size()),
                 "the text breaks off within record " + std::to_string(mResult.records.size()) + " (" +
                     Shortened(record.name) + "); expected its end mark '#'");
            return false;
        }
        Field field;
        field.text = TakeToken();
        if (field.text.front() == '#') {
            // The next record may follow the end mark without a blank.
            const std::size_t behind = mAt;
            mAt -= field.text.size() - 1;
            if (EndsRecord()) break;
            mAt = behind;
        }
        field = FieldOf(field.text);
        if (field.kind == Field::Kind::Word) TakeCounted(std::string_view(field.text), field);
        record.fields.push_back(field);
    }
    mResult.records.push_back(std::move(record));
    return true;
}

void Splitter::ReadRecords() {
    ++mLineNumber;  // from here on the number of the line that is being read
    while (SkipBlanks()) {
        for (const std::string_view mark :
             {"End-of-ACIS-data", "End-of-ASM-data", "Begin-of-ACIS-History", "Begin-of-ASM-History"}) {
            if (mText.substr(mAt, mark.size()) != mark) continue;
            mEndMarkSeen = true;
            mAt += mark.size();
            if (mark.starts_with("End")) CheckTail();
            return;
        }
        if (!ReadRecord()) return;
    }
}

/// Blanks and the control Z of old systems may follow the end mark.
void Splitter::CheckTail() {
    const auto isBlank = [](char c) { return static_cast<unsigned char>(c) <= ' '; };
    const std::string_view tail = mText.substr(mAt);
    const auto found = std::ranges::find_if_not(tail, isBlank);
    if (found == tail.end()) return;
    const auto breaks = std::count(tail.begin(), found, '\n');
    Tell(mLineNumber + static_cast<std::size_t>(breaks), -1, "what stands behind the end mark is left out");
}

void Splitter::CheckCompleteness() {
    if (mBrokenOff) return;
    const long found = static_cast<long>(mResult.records.size());
    const long declared = mResult.header.declaredRecords;
    if (declared > 0 && found < declared) {
        Tell(mLineNumber, found,
             "the text breaks off: expected " + std::to_string(declared) + " records, found " +
                 std::to_string(found));
    } else if (declared == 0 && !mEndMarkSeen) {
        Tell(mLineNumber, found,
             "the text breaks off after " + std::to_string(found) +
                 " records; expected a record or the end mark");
    } else if (declared > 0 && found > declared) {
        mResult.problems.push_back({1, -1,
                                    "the head counts " + std::to_string(declared) + " records, found " +
                                        std::to_string(found) + ": all of them are read",
                                    false});
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
    if ((version >= FirstReadVersion && version <= LastPlainVersion) ||
        (version >= FirstBranchVersion && version <= LastBranchVersion)) {
        return {};
    }
    return "ACIS data of version " + std::to_string(version) + " are not read; expected version " +
           std::to_string(FirstReadVersion) + " to " + std::to_string(LastPlainVersion) + " or " +
           std::to_string(FirstBranchVersion) + " to " + std::to_string(LastBranchVersion) +
           "; save the drawing as DXF of release 2010, or the solids as STEP";
}

const Field& FieldCursor::Next(std::string_view what, Field::Kind kind) {
    if (mPosition < mRecord.fields.size() && mRecord.fields[mPosition].kind == kind)
        return mRecord.fields[mPosition++];
    static constexpr const char* kindNames[] = {"a pointer", "a number", "a word", "a string", "a choice"};
    const std::string found =
        mPosition < mRecord.fields.size() ? Shown(mRecord.fields[mPosition]) : "the end of the record";
    throw BadRecord(mRecordIndex, Shortened(mRecord.name) + ": expected " +
                                      kindNames[static_cast<int>(kind)] + " (" + std::string(what) +
                                      "), found " + found);
}

long FieldCursor::Pointer(std::string_view what) { return Next(what, Field::Kind::Pointer).index; }
double FieldCursor::Number(std::string_view what) { return Next(what, Field::Kind::Number).number; }
std::string_view FieldCursor::Word(std::string_view what) {
    // Binary data of some programs have strings for words.
    if (!AtEnd() && mRecord.fields[mPosition].kind == Field::Kind::Text)
        return mRecord.fields[mPosition++].text;
    return Next(what, Field::Kind::Word).text;
}

bool FieldCursor::Choice(std::string_view what, std::string_view no, std::string_view yes) {
    // Writers of early versions put the bare number of the choice, and binary data have nothing else.
    if ((AtNumber() || AtChoice()) &&
        (mRecord.fields[mPosition].number == 0 || mRecord.fields[mPosition].number == 1)) {
        return mRecord.fields[mPosition++].number == 1;
    }
    const std::string_view word = Word(what);
    if (word == no) return false;
    if (word == yes) return true;
    throw BadRecord(mRecordIndex, std::string(mRecord.name) + ": expected " + std::string(no) + " or " +
                                      std::string(yes) + " (" + std::string(what) + "), found '" +
                                      Shortened(word) + "'");
}

void FieldCursor::SkipNumbers() {
    while (AtNumber() || AtChoice()) ++mPosition;
}

void FieldCursor::SkipWordOrNumber(std::string_view what) {
    if (AtNumber() || AtChoice())
        ++mPosition;
    else
        Word(what);
}

bool FieldCursor::TakeBound() {
    if (AtChoice()) return mRecord.fields[mPosition++].number == 1;
    return AtWord() && Word("parameter bound") == "F";
}

bool FieldCursor::AtNumber() const {
    return !AtEnd() && mRecord.fields[mPosition].kind == Field::Kind::Number;
}
bool FieldCursor::AtPointer() const {
    return !AtEnd() && mRecord.fields[mPosition].kind == Field::Kind::Pointer;
}
bool FieldCursor::AtChoice() const {
    return !AtEnd() && mRecord.fields[mPosition].kind == Field::Kind::Choice;
}
bool FieldCursor::AtWord() const { return !AtEnd() && mRecord.fields[mPosition].kind == Field::Kind::Word; }

}  // namespace brenvik::acis
