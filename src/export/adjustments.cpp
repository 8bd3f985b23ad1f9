// Walking the sections of an adjustment file, and applying them to records.
#include "export/adjustments.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "base/number_text.h"
#include "base/numbers.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/export_troubles.h"
#include "export/record_values.h"
#include "grid/column_relation.h"

namespace brenvik {

namespace {

bool IsHeader(std::string_view line) { return line.starts_with('['); }

/// Where each line that can be a section's name stands first: headers, and the first line.
using HeaderPlaces = std::map<std::string, std::size_t, LessIgnoreCase>;

HeaderPlaces FirstPlaces(std::span<const std::string> lines) {
    HeaderPlaces places;
    for (std::size_t at = 0; at < lines.size(); ++at)
        if (at == 0 || IsHeader(lines[at])) places.try_emplace(lines[at], at);
    return places;
}

/// The first header behind the armed line that is another one.
std::optional<std::size_t> StartBehind(std::size_t armed, std::string_view name,
                                       std::span<const std::string> lines) {
    for (std::size_t at = armed + 1; at < lines.size(); ++at)
        if (IsHeader(lines[at]) && !EqualsIgnoreCase(lines[at], name)) return at;
    return std::nullopt;
}

AdjustmentSection SectionAt(std::size_t start, std::span<const std::string> lines) {
    AdjustmentSection section{lines[start]};
    for (std::size_t at = start + 1; at < lines.size() && !IsHeader(lines[at]); ++at)
        section.push_back(lines[at]);
    return section;
}

double Amount(std::span<const std::string> section, std::string_view key) {
    const std::string text = GetAdjValue(section, key);
    return IsNumeric(text) ? StrictNumber(text) : 0;
}

/// No board is longer or thinner than this, in millimetres or in inches.
constexpr double NoBoard = 100000, NoVeneer = 0.01;

std::string SizeOfPart(const Recordset& records, std::string_view field) {
    return PartOf(records) + ": its " + CaptionForColumn(field);
}

/// Amounts for another drawing, or in other units, are seen by what they leave of a part. A sum that is no
/// number any more is left out.
void LookAtSum(const Recordset& records, std::string_view field, double& amount) {
    double size = 0;
    const bool hasSize = Skip([&] { size = ValueNumber(records.Value(field)); });
    if (amount == 0) {
        if (hasSize && std::isfinite(size) && size >= NoBoard)
            NoteExportTrouble(SizeOfPart(records, field) + " is " + NumberToText(size) +
                              ", expected the size of a board");
        return;
    }
    const double sum = size + amount;
    if (!std::isfinite(sum)) {
        NoteExportTrouble(SizeOfPart(records, field) +
                          " stays as it is: its adjustments add up to no number");
        amount = 0;
    } else if (hasSize && (sum < NoVeneer || sum >= NoBoard)) {
        NoteExportTrouble(SizeOfPart(records, field) + " " + NumberToText(size) + " with the adjustment " +
                          NumberToText(amount) + " is " + NumberToText(sum) +
                          ", expected the size of a board");
    }
}

std::string Comparable(std::string_view text) { return FoldLower(Trim(text)); }

}  // namespace

AdjustmentSection GetCurrentAdj(std::string_view name, std::span<const std::string> lines) {
    if (lines.empty()) return {};
    if (name.empty()) return SectionAt(0, lines);
    for (std::size_t at = 0; at < lines.size(); ++at) {
        if (!EqualsIgnoreCase(lines[at], name)) continue;
        const std::optional<std::size_t> start = StartBehind(at, name, lines);
        return start ? SectionAt(*start, lines) : AdjustmentSection();
    }
    return {};
}

std::string GetAdjValue(std::span<const std::string> section, std::string_view key) {
    for (const std::string& line : section) {
        const HeadAndTail halves = SplitAtFirst(line, '=');
        if (halves.found && EqualsIgnoreCase(halves.head, key)) return halves.tail;
    }
    return {};
}

AdjustmentList WalkAdjustments(std::span<const std::string> lines) {
    AdjustmentList list;
    if (lines.empty()) return list;
    const HeaderPlaces places = FirstPlaces(lines);
    std::set<std::size_t> walked;
    std::optional<std::size_t> start = 0;
    while (start) {
        walked.insert(*start);
        list.sections.push_back(SectionAt(*start, lines));
        // A blank first line is no section: look on behind it.
        const std::string& name = lines[*start];
        start = StartBehind(name.empty() ? 0 : places.find(name)->second, name, lines);
        if (start && walked.contains(*start)) {
            list.repeatedHeader = name;
            break;
        }
    }
    return list;
}

AdjustmentRules::AdjustmentRules(std::span<const AdjustmentSection> sections) {
    for (const AdjustmentSection& section : sections) {
        // A first line that is no header is the name of its section all the same, and never an amount.
        const std::span<const std::string> lines = std::span(section).subspan(1);
        Rule rule;
        for (const std::string& line : lines) {
            const HeadAndTail halves = SplitAtFirst(line, '=');
            const std::string field = ColumnForCaption(halves.head);
            if (!field.empty() && !halves.tail.empty())
                rule.criteria.push_back({PlaceOf(field), Comparable(halves.tail)});
        }
        rule.amounts = {Amount(lines, "L"), Amount(lines, "W"), Amount(lines, "T")};
        mRules.push_back(std::move(rule));
    }
}

std::size_t AdjustmentRules::PlaceOf(const std::string& field) {
    const auto known =
        std::ranges::find_if(mFields, [&](const std::string& each) { return EqualsIgnoreCase(each, field); });
    const auto place = static_cast<std::size_t>(known - mFields.begin());
    if (known == mFields.end()) mFields.push_back(field);
    return place;
}

AdjustmentRules::FieldTexts AdjustmentRules::TextsOf(const Recordset& records) const {
    FieldTexts texts(mFields.size());
    for (int field = 0; field < records.FieldCount(); ++field) {
        const std::string name = records.FieldName(field);
        for (std::size_t place = 0; place < mFields.size(); ++place)
            if (!texts[place] && EqualsIgnoreCase(mFields[place], name))
                texts[place] = Comparable(ValueText(records.Value(field)));
    }
    return texts;
}

SizeAdjustment AdjustmentRules::For(const Recordset& records) const {
    const FieldTexts texts = mFields.empty() ? FieldTexts() : TextsOf(records);
    for (std::size_t place = 0; place < mFields.size(); ++place)
        if (!texts[place])
            NoteExportTrouble("the list has no column " + CaptionForColumn(mFields[place]) +
                              ", so the adjustments apply whatever they ask of it");
    const auto contradicts = [&texts](const Criterion& criterion) {
        const std::optional<std::string>& text = texts[criterion.field];
        return text && *text != criterion.value;
    };
    SizeAdjustment sum;
    for (const Rule& rule : mRules) {
        if (std::ranges::any_of(rule.criteria, contradicts)) continue;
        sum.length += rule.amounts.length;
        sum.width += rule.amounts.width;
        sum.thickness += rule.amounts.thickness;
    }
    LookAtSum(records, "bv_length", sum.length);
    LookAtSum(records, "bv_width", sum.width);
    LookAtSum(records, "bv_thickness", sum.thickness);
    return sum;
}

}  // namespace brenvik
