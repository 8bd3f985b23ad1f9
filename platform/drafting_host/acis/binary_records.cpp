// Tokens of binary ACIS data. Damaged data can claim any length, so nothing is set aside before its bytes are
// known to be there.
#include "drafting_host/acis/binary_records.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <unordered_map>

namespace brenvik::acis {
namespace {

enum class Tag : unsigned char {
    Character = 0x02,
    Short = 0x03,
    Integer = 0x04,
    Float = 0x05,
    Double = 0x06,
    Text8 = 0x07,
    Text16 = 0x08,
    Text32 = 0x09,
    True = 0x0A,
    False = 0x0B,
    Pointer = 0x0C,
    Name = 0x0D,       // the last piece of a record's name, or a name within braces
    NamePiece = 0x0E,  // a piece before it
    Open = 0x0F,
    Close = 0x10,
    RecordEnd = 0x11,
    LongText = 0x12,
    Position = 0x13,
    Vector = 0x14,
    Choice = 0x15,
    PlanePosition = 0x16,
    Long = 0x17,
};

constexpr std::string_view Magic15[] = {"ACIS BinaryFile", "ASM BinaryFile4", "ASM BinaryFile8"};
constexpr std::string_view WideMagic = Magic15[2];
constexpr std::size_t MagicLength = 15;

class BinarySplitter {
  public:
    explicit BinarySplitter(std::string_view source) : mData(source) {}

    RecordText Run() {
        if (!ReadHead()) return std::move(mResult);
        mResult.readable = true;
        ReadRecords();
        return std::move(mResult);
    }

  private:
    bool Tell(std::string what, long record = -1) {
        mResult.problems.push_back({0, record, std::move(what)});
        return false;
    }
    std::string Place() const { return "byte " + std::to_string(mAt); }

    bool ReadHead();
    bool ReadHeadTokens();
    void ReadRecords();
    bool ReadRecord();
    bool ReadName(Record& record);
    bool TakeToken(Record& record);
    bool TakeNumbers(std::size_t count);
    bool TakeText(std::size_t countBytes, Field::Kind kind);
    bool TakeLongText(const Record& record);
    bool TakePointer();
    std::string_view Joined(const std::string& name);
    bool EndMarkFollows() const;
    bool BreaksOff(const Record& record);

    template <typename Number>
    std::optional<Number> Take() {
        if (mData.size() - mAt < sizeof(Number)) return std::nullopt;
        static_assert(std::endian::native == std::endian::little);
        Number number;
        std::memcpy(&number, mData.data() + mAt, sizeof number);
        mAt += sizeof number;
        return number;
    }
    std::optional<std::int64_t> TakeInteger() {
        if (mIsWide) return Take<std::int64_t>();
        const auto number = Take<std::int32_t>();
        return number ? std::optional<std::int64_t>(*number) : std::nullopt;
    }
    std::optional<std::string_view> TakeCounted(std::size_t countBytes);

    bool AddNumber(double number, Field::Kind kind = Field::Kind::Number) {
        if (!std::isfinite(number)) return false;
        Field field;
        field.kind = kind;
        field.number = number;
        mFields.push_back(field);
        return true;
    }
    template <typename Number>
    bool AddTaken(std::optional<Number> number, Field::Kind kind = Field::Kind::Number) {
        return number && AddNumber(static_cast<double>(*number), kind);
    }
    void AddWord(std::string_view word) {
        Field field;
        field.text = word;
        mFields.push_back(field);
    }

    std::string_view mData;
    std::size_t mAt = 0;
    bool mIsWide = false;
    std::vector<Field> mFields;  // of the record being read
    std::unordered_map<std::string, std::string_view> mNames;
    RecordText mResult;
};

bool BinarySplitter::ReadHead() {
    mIsWide = mData.starts_with(WideMagic);
    mAt = MagicLength;
    const auto version = TakeInteger(), records = TakeInteger(), bodies = TakeInteger(),
               flags = TakeInteger();
    if (!flags) return Tell("the data break off in their head, at " + Place());
    if (*version <= 0 || *version > HighestVersion)
        return Tell("expected the version of ACIS data at byte 15, found " + std::to_string(*version));
    mResult.header.version = static_cast<int>(*version);
    mResult.header.declaredRecords = std::max<long>(0, *records);
    mResult.header.declaredBodies = std::max<long>(0, *bodies);
    if (const std::string refusal = VersionRefusal(mResult.header.version); !refusal.empty())
        return Tell(refusal);
    if (!ReadHeadTokens()) {
        return Tell(
            "expected product, modeller, date, unit and two tolerances in the head of the data, up to " +
            Place());
    }
    return true;
}

bool BinarySplitter::ReadHeadTokens() {
    Record head;
    for (std::string* target : {&mResult.header.product, &mResult.header.modeller, &mResult.header.date}) {
        if (!TakeToken(head) || mFields.size() != 1 || mFields.front().kind != Field::Kind::Text)
            return false;
        *target = std::string(mFields.front().text);
        mFields.clear();
    }
    for (int i = 0; i < 3; ++i)
        if (!TakeToken(head)) return false;
    for (const Field& field : mFields)
        if (field.kind != Field::Kind::Number) return false;
    if (mFields.size() != 3) return false;
    mResult.header.millimetresPerUnit = mFields.front().number;
    mFields.clear();
    return true;
}

std::optional<std::string_view> BinarySplitter::TakeCounted(std::size_t countBytes) {
    std::size_t count = 0;
    if (countBytes == 1) {
        const auto length = Take<std::uint8_t>();
        if (!length) return std::nullopt;
        count = *length;
    } else if (countBytes == 2) {
        const auto length = Take<std::uint16_t>();
        if (!length) return std::nullopt;
        count = *length;
    } else {
        const auto length = Take<std::uint32_t>();
        if (!length) return std::nullopt;
        count = *length;
    }
    if (mData.size() - mAt < count) return std::nullopt;
    const std::string_view text = mData.substr(mAt, count);
    mAt += count;
    return text;
}

bool BinarySplitter::TakeText(std::size_t countBytes, Field::Kind kind) {
    const auto text = TakeCounted(countBytes);
    if (!text) return false;
    Field field;
    field.kind = kind;
    field.text = *text;
    mFields.push_back(field);
    return true;
}

bool BinarySplitter::TakeNumbers(std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto number = Take<double>();
        if (!number || !AddNumber(*number)) return false;
    }
    return true;
}

// Some programs put the fields of a transform as they stand in ACIS text, in one string.
bool BinarySplitter::TakeLongText(const Record& record) {
    if (!TakeText(4, Field::Kind::Text)) return false;
    if (record.name != "transform") return true;
    const std::string_view text = mFields.back().text;
    mFields.pop_back();
    for (Field& field : TextFields(text)) mFields.push_back(field);
    return true;
}

bool BinarySplitter::TakePointer() {
    const auto index = TakeInteger();
    if (!index) return false;
    Field field;
    field.kind = Field::Kind::Pointer;
    field.index = static_cast<long>(*index);
    mFields.push_back(field);
    return true;
}

// One token other than the end of the record.
bool BinarySplitter::TakeToken(Record& record) {
    const auto tag = Take<unsigned char>();
    if (!tag) return false;
    switch (static_cast<Tag>(*tag)) {
        case Tag::Character:
            return AddTaken(Take<std::int8_t>());
        case Tag::Short:
            return AddTaken(Take<std::int16_t>());
        case Tag::Integer:
            return AddTaken(TakeInteger());
        case Tag::Long:
            return AddTaken(Take<std::int64_t>());
        case Tag::Float:
            return AddTaken(Take<float>());
        case Tag::Double:
            return TakeNumbers(1);
        case Tag::PlanePosition:
            return TakeNumbers(2);
        case Tag::Position:
        case Tag::Vector:
            return TakeNumbers(3);
        case Tag::Text8:
            return TakeText(1, Field::Kind::Text);
        case Tag::Text16:
            return TakeText(2, Field::Kind::Text);
        case Tag::Text32:
        case Tag::LongText:
            return TakeLongText(record);
        case Tag::True:
        case Tag::False:
            return AddNumber(static_cast<Tag>(*tag) == Tag::True ? 1 : 0, Field::Kind::Choice);
        case Tag::Choice:
            return AddTaken(TakeInteger(), Field::Kind::Choice);
        case Tag::Pointer:
            return TakePointer();
        case Tag::Name:
        case Tag::NamePiece:
            return TakeText(1, Field::Kind::Word);
        case Tag::Open:
            AddWord("{");
            return true;
        case Tag::Close:
            AddWord("}");
            return true;
        case Tag::RecordEnd:
            break;
    }
    return false;
}

// Kinds of records are few, so that each name is kept once.
std::string_view BinarySplitter::Joined(const std::string& name) {
    const auto [entry, fresh] = mNames.try_emplace(name);
    if (fresh) entry->second = mResult.names.emplace_back(name);
    return entry->second;
}

bool BinarySplitter::ReadName(Record& record) {
    std::string name;
    for (;;) {
        const auto tag = Take<unsigned char>();
        const bool last = tag && static_cast<Tag>(*tag) == Tag::Name;
        if (!last && !(tag && static_cast<Tag>(*tag) == Tag::NamePiece)) return false;
        const auto piece = TakeCounted(1);
        if (!piece) return false;
        if (last && name.empty()) {
            record.name = *piece;
            return true;
        }
        name += *piece;
        if (last) break;
        name += '-';
    }
    record.name = Joined(name);
    return true;
}

bool BinarySplitter::BreaksOff(const Record& record) {
    const std::string index = std::to_string(mResult.records.size());
    std::string name;
    for (const char c : record.name.substr(0, 40)) name += c >= ' ' && c <= '~' ? c : '?';
    return Tell("the data are damaged or break off within record " + index +
                    (name.empty() ? std::string() : " (" + name + ")") + ", before " + Place() +
                    "; expected the end mark of the record",
                static_cast<long>(mResult.records.size()));
}

bool BinarySplitter::ReadRecord() {
    Record record;
    mFields.clear();
    if (!ReadName(record)) return BreaksOff(record);
    while (mAt < mData.size() && static_cast<Tag>(mData[mAt]) != Tag::RecordEnd)
        if (!TakeToken(record)) return BreaksOff(record);
    if (mAt >= mData.size()) return BreaksOff(record);
    ++mAt;
    // Exactly as many as there are: most records are short.
    record.fields.assign(mFields.begin(), mFields.end());
    mResult.records.push_back(std::move(record));
    return true;
}

/// The pieces End of ACIS data, or the words as they stand in text.
bool BinarySplitter::EndMarkFollows() const {
    using namespace std::string_view_literals;
    const std::string_view rest = mData.substr(mAt);
    for (const std::string_view mark : {"\x0E\x03"
                                        "End\x0E\x02of"sv,
                                        "\x0E\x05"
                                        "Begin\x0E\x02of"sv,
                                        "End-of-ACIS-data"sv, "End-of-ASM-data"sv,
                                        "\x0D\x10"
                                        "End-of-ACIS-data"sv,
                                        "\x0D\x0F"
                                        "End-of-ASM-data"sv,
                                        "Begin-of-ACIS-History"sv, "Begin-of-ASM-History"sv}) {
        if (rest.starts_with(mark)) return true;
    }
    return false;
}

void BinarySplitter::ReadRecords() {
    while (mAt < mData.size()) {
        if (EndMarkFollows()) return;
        if (!ReadRecord()) return;
    }
    const auto found = static_cast<long>(mResult.records.size());
    const long declared = mResult.header.declaredRecords;
    if (found < declared || declared == 0) {
        Tell("the data break off after " + std::to_string(found) + " records; expected " +
                 (declared > 0 ? std::to_string(declared) + " records"
                               : std::string("a record or the end mark")),
             found);
    }
}

}  // namespace

bool IsBinary(std::string_view data) {
    for (const std::string_view magic : Magic15)
        if (data.starts_with(magic)) return true;
    return false;
}

RecordText SplitBinaryRecords(std::string_view data) { return BinarySplitter(data).Run(); }

}  // namespace brenvik::acis
