// Checking the fifteen lines of a record, field by field.
#include "settings/material_faults.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string_view>
#include <utility>

#include "base/ascii.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"

namespace brenvik {

namespace {

constexpr std::size_t Grain = 1, Direction = 2, FirstTool = 3, FieldsOfATool = 4;
/// What stands in a tool's slot, in its order.
enum SlotField : std::size_t { Number, Diameter, SpindleSpeed, FeedSpeed };

/// No router holds a bit this wide, in millimetres or in inches; `ExpectedDiameter` says so.
constexpr double NoBit = 1000;
constexpr std::string_view ExpectedDiameter =
    "the diameter of the bit, a number above 0 and below 1000 (millimetres or inches)";

/// No spindle turns this fast and no machine moves so, in millimetres or inches a minute.
constexpr double NoSpeed = 1000000;

/// Behind these a receiver begins the next field of the name: a tool "2_D5" would be taken for the tool 2 and
/// the diameter 5.
constexpr std::string_view BetweenFields = "_$. ";

struct Complaint {
    std::string expected;
    bool unusable = false;
};

const Complaint None;

Complaint GrainComplaint(std::string_view text) {
    constexpr std::string_view expected = "0 for a board without grain and 1 for one with it";
    if (!IsNumeric(text)) return {std::string(expected), true};
    const double number = StrictNumber(text);
    if (number == 0 || number == 1) return None;
    // Any other number goes into the lists as it stands, and a fraction or a longer one can't.
    const bool isWhole = number == RoundHalfEven(number, 0) &&
                         number >= std::numeric_limits<std::int32_t>::min() &&
                         number <= std::numeric_limits<std::int32_t>::max();
    return {std::string(expected), !isWhole};
}

Complaint DirectionComplaint(std::string_view text) {
    const std::string folded = FoldLower(text);
    return folded == "c" || folded == "cc" ? None : Complaint{"c or cc", true};
}

/// The full-width forms of digits, which an East Asian keyboard writes, as the digits that they are.
std::string WithPlainDigits(std::string_view text) {
    constexpr std::string_view FullWidth = "\xEF\xBC";
    constexpr unsigned char FullWidthZero = 0x90;
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto last = at + 2 < text.size() ? static_cast<unsigned char>(text[at + 2]) : 0U;
        if (text.substr(at, 2) == FullWidth && last >= FullWidthZero && last < FullWidthZero + 10) {
            plain += static_cast<char>('0' + (last - FullWidthZero));
            at += 2;
        } else {
            plain += text[at];
        }
    }
    return plain;
}

/// What a machine takes the number of a tool for, the same text for all spellings of it: T01 is T1.
std::string ToolMeant(std::string_view text) {
    // Beyond this a double leaves out whole numbers.
    constexpr double MostExact = 1e15;
    const std::string plain = WithPlainDigits(Trim(text));
    if (IsDigitsAlone(plain)) return plain.substr(std::min(plain.find_first_not_of('0'), plain.size() - 1));
    if (!IsNumeric(plain)) return FoldLower(plain);
    const double number = StrictNumber(plain);
    const bool isWhole = std::abs(number) < MostExact && number == std::trunc(number);
    return isWhole ? std::to_string(static_cast<std::int64_t>(number)) : FoldLower(plain);
}

Complaint NumberComplaint(std::string_view text, bool isFirst) {
    if (isFirst) {
        // Without a first number the material counts as none, which the run itself reports.
        if (text.empty()) return None;
        // The first one cuts the outline, whatever its number says.
        if (IsBlank(text) || ToolMeant(text) == "0") return {"the number of a tool", IsBlank(text)};
    }
    if (IsBlank(text)) return {"the number of a tool, or 0 for an empty slot", false};
    // "00" is neither the mark of an empty slot nor a tool.
    if (!isFirst && ToolMeant(text) == "0") return {"the number of a tool, or 0 for an empty slot", true};
    // The host refuses the layer, and the part, when it comes to it.
    if (text.find_first_of(NotInLayerNames) != std::string_view::npos)
        return {"a text that a layer's name can hold", false};
    if (text.find_first_of(BetweenFields) != std::string_view::npos)
        return {"a number, or a name without blanks, points and any of _ and $", false};
    // A machine may read the sign, the exponent or the foreign digit as no number at all.
    if (!IsDigitsAlone(text) && IsNumeric(WithPlainDigits(text)))
        return {"the number of a tool in plain digits", false};
    return None;
}

Complaint DiameterComplaint(std::string_view text, bool slotIsNumbered) {
    const std::string expected(ExpectedDiameter);
    if (text.empty()) return {expected, slotIsNumbered};
    const double diameter = IsNumeric(text) ? StrictNumber(text) : 0;
    return diameter > 0 && diameter < NoBit ? None : Complaint{expected, true};
}

Complaint SpeedComplaint(std::string_view text) {
    const double speed = IsNumeric(text) ? StrictNumber(text) : 0;
    if (speed <= 0) return {"a number above 0", false};
    return speed < NoSpeed ? None : Complaint{"a number above 0 and below 1000000", false};
}

Complaint SlotComplaint(const MaterialTexts& texts, std::size_t field) {
    const std::size_t slot = (field - FirstTool) / FieldsOfATool;
    const std::string& number = texts[FirstTool + slot * FieldsOfATool];
    if (slot != 0 && Trim(number) == "0") return None;
    const std::string& text = texts[field];
    // They would stand in the names of layers, where nobody sees them.
    if (!IsBlank(text) && Trim(text) != text)
        return {InQuotes(Trim(text)) + ", without blanks around it", false};
    switch (static_cast<SlotField>((field - FirstTool) % FieldsOfATool)) {
        case Number:
            return NumberComplaint(text, slot == 0);
        case Diameter:
            return DiameterComplaint(text, !IsBlank(number));
        case SpindleSpeed:
        case FeedSpeed:
            return SpeedComplaint(text);
    }
    return None;
}

Complaint ComplaintOf(const MaterialTexts& texts, std::size_t field) {
    if (field == Grain) return GrainComplaint(texts[field]);
    return field == Direction ? DirectionComplaint(texts[field]) : SlotComplaint(texts, field);
}

bool IsSameDiameter(const std::string& one, const std::string& other) {
    if (IsNumeric(one) && IsNumeric(other)) return StrictNumber(one) == StrictNumber(other);
    return Trim(one) == Trim(other);
}

/// A machine has one bit at a place of its changer: a number that two bits share gets one of them for both.
std::vector<MaterialFault> SharedNumbers(const MaterialTexts& texts, std::size_t head) {
    std::vector<MaterialFault> faults;
    const auto numberAt = [](std::size_t slot) { return FirstTool + slot * FieldsOfATool; };
    const auto name = [](std::size_t field) { return DropRight(MaterialFileKeys()[field], 1); };
    for (std::size_t slot = 1; slot < MaterialToolCount; ++slot)
        for (std::size_t other = 0; other < slot; ++other) {
            const std::size_t field = numberAt(slot), same = numberAt(other);
            const std::string tool = ToolMeant(texts[field]);
            if (tool.empty() || tool == "0" || tool != ToolMeant(texts[same])) continue;
            if (IsSameDiameter(texts[field + 1], texts[same + 1])) continue;
            const bool areSpelledAlike = Trim(texts[field]) == Trim(texts[same]);
            const std::string tie = areSpelledAlike
                                        ? " as " + name(same) + " is"
                                        : ", the same tool as " + InQuotes(texts[same]) + " of " + name(same);
            faults.push_back({head + field,
                              name(field) + " of the material " + InQuotes(texts.front()) + " is " +
                                  InQuotes(texts[field]) + tie + ", with the diameter " +
                                  Trim(texts[field + 1]) + " in place of " + Trim(texts[same + 1]) +
                                  ", expected a number of its own",
                              false});
            break;
        }
    return faults;
}

}  // namespace

std::vector<MaterialFault> PointsInSpeeds(const MaterialTexts& texts, std::size_t head) {
    std::vector<MaterialFault> faults;
    for (std::size_t field = FirstTool; field < MaterialFieldCount; ++field) {
        const std::size_t slot = (field - FirstTool) / FieldsOfATool;
        const auto kind = static_cast<SlotField>((field - FirstTool) % FieldsOfATool);
        const bool isEmptySlot = slot != 0 && Trim(texts[FirstTool + slot * FieldsOfATool]) == "0";
        if (isEmptySlot || kind == Number || kind == Diameter || !IsNumeric(texts[field])) continue;
        if (IsDigitsAlone(texts[field])) continue;
        faults.push_back(
            {head + field,
             DropRight(MaterialFileKeys()[field], 1) + " of the material " + InQuotes(texts.front()) +
                 " is " + InQuotes(texts[field]) +
                 ", expected a number in digits alone: this target has it in the names of layers",
             false});
    }
    return faults;
}

std::vector<MaterialFault> FaultsOfRecord(std::span<const std::string> lines, const MaterialTexts& texts,
                                          std::size_t head) {
    std::vector<MaterialFault> faults;
    for (std::size_t field = Grain; field < MaterialFieldCount; ++field) {
        const std::string_view key = MaterialFileKeys()[field];
        const std::string& line = lines[field];
        if (!StartsWithIgnoreCase(line, key)) {
            // The value begins where the key ends, whatever the key says.
            const bool valueIsCut = line.size() < key.size() || line[key.size() - 1] != '=';
            faults.push_back({head + field,
                              "the material " + InQuotes(texts.front()) + ": expected " + InQuotes(key) +
                                  ", found " + InQuotes(line),
                              valueIsCut});
            continue;
        }
        const Complaint complaint = ComplaintOf(texts, field);
        if (complaint.expected.empty()) continue;
        faults.push_back({head + field,
                          DropRight(key, 1) + " of the material " + InQuotes(texts.front()) + " is " +
                              InQuotes(texts[field]) + ", expected " + complaint.expected,
                          complaint.unusable});
    }
    for (MaterialFault& fault : SharedNumbers(texts, head)) faults.push_back(std::move(fault));
    return faults;
}

std::vector<MaterialFault> GuessedLines(const FileLines& file, std::size_t before, std::size_t last) {
    std::vector<MaterialFault> faults;
    for (const std::size_t line : file.guessed)
        if (line > before && line <= last)
            faults.push_back({line, GuessedLineFault(file.lines[line - 1]), false});
    return faults;
}

}  // namespace brenvik
