// Text to tokens. Which numbers are places, directions or whole numbers hangs on the record.
#include "binary_acis.h"

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <vector>

#include "drafting_host/acis/sat_records.h"

namespace brenvik::test {
namespace {

using acis::Field;
using acis::Record;

class Writer {
  public:
    void Byte(int value) { mBytes += static_cast<char>(value); }
    template <typename Number>
    void Raw(Number number) {
        char bytes[sizeof number];
        std::memcpy(bytes, &number, sizeof number);
        mBytes.append(bytes, sizeof number);
    }
    void Integer(long value) {
        Byte(0x04);
        Raw(static_cast<std::int32_t>(value));
    }
    void Double(double value) {
        Byte(0x06);
        Raw(value);
    }
    void Pointer(long index) {
        Byte(0x0C);
        Raw(static_cast<std::int32_t>(index));
    }
    void Choice(long value) {
        Byte(0x15);
        Raw(static_cast<std::int32_t>(value));
    }
    void Flag(bool value) { Byte(value ? 0x0A : 0x0B); }
    void Counted(int tag, std::string_view text) {
        Byte(tag);
        Byte(static_cast<int>(text.size()));
        mBytes += text;
    }
    void Name(std::string_view name) {
        for (std::size_t end; (end = name.find('-')) != std::string_view::npos; name.remove_prefix(end + 1))
            Counted(0x0E, name.substr(0, end));
        Counted(0x0D, name);
    }
    void Text(std::string_view text) { mBytes += text; }
    std::string Take() { return std::move(mBytes); }

  private:
    std::string mBytes;
};

/// P a place, V a vector, d a number, i a whole one, + any further fields.
const std::map<std::string_view, std::string_view> geometry{{"point", "P"},
                                                            {"plane-surface", "PVV"},
                                                            {"cone-surface", "PVVd"},
                                                            {"sphere-surface", "PdVV"},
                                                            {"torus-surface", "PVddV"},
                                                            {"straight-curve", "PV"},
                                                            {"ellipse-curve", "PVVd"},
                                                            {"transform", "VVVVd"}};

/// Words of the text that are flags in binary data.
const std::map<std::string_view, bool> flags{
    {"forward", false},    {"reversed", true}, {"single", false},    {"double", true},
    {"out", false},        {"in", true},       {"forward_v", false}, {"reverse_v", true},
    {"I", false},          {"F", true},        {"no_rotate", false}, {"rotate", true},
    {"no_reflect", false}, {"reflect", true},  {"no_shear", false},  {"shear", true}};

const std::map<std::string_view, long> choices{{"open", 0}, {"closed", 1}, {"periodic", 2}, {"none", 0},
                                               {"both", 0}, {"full", 0},   {"u", 1},        {"v", 2}};

void PutPlain(Writer& out, const Field& field) {
    switch (field.kind) {
        case Field::Kind::Pointer:
            out.Pointer(field.index);
            return;
        case Field::Kind::Number:
            if (field.text.find_first_of(".e") == std::string_view::npos)
                out.Integer(static_cast<long>(field.number));
            else
                out.Double(field.number);
            return;
        case Field::Kind::Choice:
            out.Choice(static_cast<long>(field.number));
            return;
        case Field::Kind::Text:
            out.Counted(0x07, field.text);
            return;
        case Field::Kind::Word:
            break;
    }
    if (const auto flag = flags.find(field.text); flag != flags.end())
        out.Flag(flag->second);
    else if (const auto choice = choices.find(field.text); choice != choices.end())
        out.Choice(choice->second);
    else if (field.text == "{" || field.text == "}")
        out.Byte(field.text == "{" ? 0x0F : 0x10);
    else
        out.Counted(0x0D, field.text);
}

/// The numbers that a letter of the pattern stands for.
void PutPattern(Writer& out, std::string_view pattern, const std::vector<Field>& fields, std::size_t& at) {
    for (const char letter : pattern) {
        if (letter == 'P' || letter == 'V') out.Byte(letter == 'P' ? 0x13 : 0x14);
        for (int i = letter == 'd' ? 1 : 3; i > 0; --i, ++at) {
            if (letter == 'd')
                out.Double(fields.at(at).number);
            else
                out.Raw(fields.at(at).number);
        }
    }
}

void PutEdge(Writer& out, const std::vector<Field>& fields) {
    out.Pointer(fields.at(1).index);
    out.Double(0);
    out.Pointer(fields.at(2).index);
    out.Double(1);
    for (std::size_t at = 3; at < fields.size(); ++at) PutPlain(out, fields[at]);
    out.Counted(0x07, "unknown");
}

void PutRecord(Writer& out, const Record& record) {
    out.Name(record.name);
    const std::vector<Field>& fields = record.fields;
    out.Pointer(fields.at(0).index);
    out.Integer(-1);
    out.Pointer(-1);
    std::size_t at = 1;
    if (record.name == "edge") {
        PutEdge(out, fields);
        at = fields.size();
    }
    if (const auto pattern = geometry.find(record.name); pattern != geometry.end())
        PutPattern(out, pattern->second, fields, at);
    for (; at < fields.size(); ++at) {
        // Whole numbers that later versions put before the last field.
        if ((record.name == "coedge" || record.name == "vertex") && at + 1 == fields.size()) out.Integer(0);
        const bool isMeasure = record.name == "cone-surface" && fields[at].kind == Field::Kind::Number;
        if (isMeasure)
            out.Double(fields[at].number);
        else
            PutPlain(out, fields[at]);
    }
    out.Byte(0x11);
}

}  // namespace

std::string BinaryAcis(std::string_view text) {
    const acis::RecordText split = acis::SplitRecords(text);
    if (!split.readable || !split.problems.empty()) throw std::invalid_argument("no whole ACIS text");
    Writer out;
    out.Text("ACIS BinaryFile");
    constexpr std::int32_t version = 21800, hasHistory = 0;
    out.Raw(version);
    out.Raw(std::int32_t{0});
    out.Raw(static_cast<std::int32_t>(split.header.declaredBodies));
    out.Raw(hasHistory);
    for (const char* head : {"Brenvik", "ASM 218.0.0 NT", "Sun Nov 22 00:00:00 2026"})
        out.Counted(0x07, head);
    for (const double number : {1.0, 1e-6, 1e-10}) out.Double(number);
    for (const Record& record : split.records) PutRecord(out, record);
    for (const char* piece : {"End", "of", "ACIS"}) out.Counted(0x0E, piece);
    out.Counted(0x0D, "data");
    return out.Take();
}

}  // namespace brenvik::test
