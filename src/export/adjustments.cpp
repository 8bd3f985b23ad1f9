// Walking the sections of an adjustment file, and applying them to records.
#include "export/adjustments.h"

#include <algorithm>
#include <set>

#include "base/numbers.h"
#include "base/text.h"
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
        // A blank first line names nothing: the walk goes on behind it.
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
                rule.criteria.push_back({FoldLower(field), Comparable(halves.tail)});
        }
        rule.amounts = {Amount(lines, "L"), Amount(lines, "W"), Amount(lines, "T")};
        rules.push_back(std::move(rule));
    }
}

SizeAdjustment AdjustmentRules::For(const Recordset& records) const {
    if (rules.empty()) return {};
    std::vector<Criterion> record;
    for (int field = 0; field < records.FieldCount(); ++field)
        record.push_back({FoldLower(records.FieldName(field)), Comparable(ValueText(records.Value(field)))});
    const auto contradicts = [&record](const Criterion& criterion) {
        const auto found = std::ranges::find(record, criterion.field, &Criterion::field);
        return found != record.end() && found->value != criterion.value;
    };
    SizeAdjustment sum;
    for (const Rule& rule : rules) {
        if (std::ranges::any_of(rule.criteria, contradicts)) continue;
        sum.length += rule.amounts.length;
        sum.width += rule.amounts.width;
        sum.thickness += rule.amounts.thickness;
    }
    return sum;
}

}  // namespace brenvik
