// Units stand in complex statements, "( CONVERSION_BASED_UNIT('FOOT',#7) LENGTH_UNIT() NAMED_UNIT(#8) )", and
// their factors in measures, "LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(12.),#9)".
#include "drafting_host/step/places/step_units.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/length_unit.h"
#include "base/letter_case.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/trimmed.h"
#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::string_view ConversionMark = "CONVERSION_BASED_UNIT";
constexpr std::string_view MeasureMark = "LENGTH_MEASURE(";

bool Holds(std::string_view text, std::string_view mark) { return text.find(mark) != text.npos; }

/// What 'METRE' with this prefix measures in millimetres; null for another unit or an unknown prefix.
std::optional<double> SizeOfMetres(std::string_view text) {
    constexpr auto prefixes = std::to_array<std::pair<std::string_view, double>>({{"$", 1},
                                                                                  {".EXA.", 1e18},
                                                                                  {".PETA.", 1e15},
                                                                                  {".TERA.", 1e12},
                                                                                  {".GIGA.", 1e9},
                                                                                  {".MEGA.", 1e6},
                                                                                  {".KILO.", 1e3},
                                                                                  {".HECTO.", 1e2},
                                                                                  {".DECA.", 10},
                                                                                  {".DECI.", 0.1},
                                                                                  {".CENTI.", 0.01},
                                                                                  {".MILLI.", 1e-3},
                                                                                  {".MICRO.", 1e-6},
                                                                                  {".NANO.", 1e-9},
                                                                                  {".PICO.", 1e-12},
                                                                                  {".FEMTO.", 1e-15},
                                                                                  {".ATTO.", 1e-18}});
    constexpr double millimetres = 1000;
    const std::size_t mark = text.find("SI_UNIT");
    if (mark == text.npos) return std::nullopt;
    const std::size_t open = text.find('(', mark), close = text.find(')', mark);
    if (open == text.npos || close == text.npos || close < open) return std::nullopt;
    const std::string_view values = text.substr(open + 1, close - open - 1);
    const std::size_t comma = values.find(',');
    if (comma == values.npos || Trimmed(values.substr(comma + 1)) != ".METRE.") return std::nullopt;
    const std::string_view prefix = Trimmed(values.substr(0, comma));
    const auto* const found =
        std::ranges::find(prefixes, prefix, &std::pair<std::string_view, double>::first);
    return found == prefixes.end() ? std::nullopt : std::optional(found->second * millimetres);
}

/// A unit of length, followed down to metres.
struct UnitOfLength {
    double millimetres = 0;
    const Statement* measure = nullptr;  ///< Of a conversion.
    const Statement* metres = nullptr;   ///< What it comes down to.
    double metresSize = 0;               ///< Of that, in millimetres.
    int conversions = 0;
};

const Statement* MeasureOf(const Statements& statements, const Statement& unit) {
    for (const Reference& reference : statements.ReferencesOf(unit)) {
        const Statement* const one = statements.Find(reference.number);
        if (one != nullptr && Holds(TextOf(statements, *one), MeasureMark)) return one;
    }
    return nullptr;
}

std::optional<UnitOfLength> Resolve(const Statements& statements, const Statement& unit, int depth = 0) {
    constexpr int deepest = 8;
    const std::string_view text = TextOf(statements, unit);
    if (!Holds(text, "LENGTH_UNIT") || depth > deepest) return std::nullopt;
    if (!Holds(text, ConversionMark)) {
        const auto size = SizeOfMetres(text);
        if (!size) return std::nullopt;
        return UnitOfLength{*size, nullptr, &unit, *size, 0};
    }
    const Statement* const measure = MeasureOf(statements, unit);
    if (measure == nullptr || statements.ReferencesOf(*measure).empty()) return std::nullopt;
    const std::string_view value = TextOf(statements, *measure);
    const double factor = LenientNumber(Trimmed(value.substr(value.find(MeasureMark) + MeasureMark.size())));
    const Statement* const base = statements.Find(statements.ReferencesOf(*measure).back().number);
    if (base == nullptr || !(factor > 0) || !std::isfinite(factor)) return std::nullopt;
    auto resolved = Resolve(statements, *base, depth + 1);
    if (!resolved) return std::nullopt;
    resolved->millimetres *= factor;
    resolved->measure = measure;
    ++resolved->conversions;
    return resolved;
}

template <typename Visit>
void ForEachNestedUnit(const Statements& statements, Visit visit) {
    for (const Statement& statement : statements.All()) {
        if (!statement.kind.empty() || !Holds(TextOf(statements, statement), ConversionMark)) continue;
        const auto unit = Resolve(statements, statement);
        if (unit && unit->conversions > 1) visit(*unit);
    }
}

/// What the names of units that programs write say; without a name that is known nothing.
std::optional<double> SizeOfName(const std::string& name) {
    constexpr auto names = std::to_array<std::pair<std::string_view, double>>(
        {{"INCH", 25.4},     {"INCHES", 25.4},       {"IN", 25.4},      {"FOOT", 304.8},   {"FEET", 304.8},
         {"FT", 304.8},      {"YARD", 914.4},        {"YARDS", 914.4},  {"MILE", 1609344}, {"MIL", 0.0254},
         {"THOU", 0.0254},   {"MICROINCH", 25.4e-6}, {"MILLIMETRE", 1}, {"MILLIMETER", 1}, {"MM", 1},
         {"CENTIMETRE", 10}, {"CENTIMETER", 10},     {"CM", 10},        {"METRE", 1000},   {"METER", 1000},
         {"MICRON", 1e-3}});
    const std::string folded = FoldUpper(Trim(name));
    const auto* const found = std::ranges::find(names, folded, &std::pair<std::string_view, double>::first);
    return found == names.end() ? std::nullopt : std::optional(found->second);
}

std::string Shown(double millimetres) { return NumberToText(millimetres) + " mm"; }

void NoteName(const Statements& statements, const Statement& statement, double size, CodePage codePage,
              StepDocument& document) {
    if (!Holds(TextOf(statements, statement), ConversionMark)) return;
    const std::string name = FirstTextOf(statements, statement, codePage);
    const auto named = SizeOfName(name);
    if (!named || AreAlikeUnits(*named, size)) return;
    document.notes.push_back({"the unit of length #" + std::to_string(statement.number) + " is called \"" +
                                  name + "\" and has a factor of " + Shown(size) +
                                  ": the factor is taken, expected one of " + Shown(*named),
                              statements.LineAt(statement.place)});
}

/// Millimetres. Parts are drawn in nothing smaller than a picometre and nothing larger than a few miles, and
/// a factor beyond that overflows where the modeller works with it.
constexpr double SmallestUnit = 1e-9, LargestUnit = 1e7;

/// Whether a unit is measured by another length, as far as its statements show.
bool IsMeasuredByLength(const Statements& statements, const Statement& unit) {
    for (const Reference& reference : statements.ReferencesOf(unit)) {
        const Statement* const measure = statements.Find(reference.number);
        if (measure == nullptr || !Holds(TextOf(statements, *measure), "MEASURE_WITH_UNIT")) continue;
        const auto bases = statements.ReferencesOf(*measure);
        const Statement* const base = bases.empty() ? nullptr : statements.Find(bases.back().number);
        return base != nullptr && Holds(TextOf(statements, *base), "LENGTH_UNIT");
    }
    return true;
}

/// The sizes in millimetres of the units of length that a context names.
std::vector<double> SizesIn(const Statements& statements, int context) {
    std::vector<double> sizes;
    const Statement* const statement = statements.Find(context);
    if (statement == nullptr) return sizes;
    for (const Reference& reference : statements.ReferencesOf(*statement)) {
        const Statement* const one = statements.Find(reference.number);
        const auto unit = one == nullptr ? std::nullopt : Resolve(statements, *one);
        if (unit) sizes.push_back(unit->millimetres);
    }
    return sizes;
}

/// Whether a part of a statement of several kinds has no value.
bool IsEmptyPart(std::string_view text, std::string_view part) {
    const std::size_t mark = text.find(part);
    const std::size_t open =
        mark == text.npos ? mark : text.find_first_not_of(BlanksAndLineEnds, mark + part.size());
    if (open == text.npos || text[open] != '(') return false;
    const std::size_t value = text.find_first_not_of(BlanksAndLineEnds, open + 1);
    return value != text.npos && text[value] == ')';
}

}  // namespace

std::optional<double> UnitOfContext(const Statements& statements, int context) {
    const std::vector<double> sizes = SizesIn(statements, context);
    // Of two the modeller takes the last.
    return sizes.empty() ? std::nullopt : std::optional(sizes.back());
}

std::optional<UnitFault> FaultOfUnit(const Statements& statements, const Statement& statement) {
    const std::string_view text = TextOf(statements, statement);
    if (!statement.kind.empty() || !Holds(text, "LENGTH_UNIT")) return std::nullopt;
    const bool isConversion = Holds(text, ConversionMark);
    const std::size_t mark = text.find(isConversion ? ConversionMark : "SI_UNIT");
    if (mark == text.npos) return std::nullopt;
    const std::size_t place = statement.place + mark;
    const std::string found = ", found \"" + LineForMessage(statements.Content(), place) + "\"";
    // Without its one value, if only a star, the modeller passes the unit over and takes metres.
    if (IsEmptyPart(text, "NAMED_UNIT"))
        return UnitFault{place, "NAMED_UNIT(*) beside a unit of length" + found};
    const auto unit = Resolve(statements, statement);
    if (unit) {
        if (unit->millimetres >= SmallestUnit && unit->millimetres <= LargestUnit) return std::nullopt;
        return UnitFault{place, "a unit of length from " + Shown(SmallestUnit) + " to " + Shown(LargestUnit) +
                                    ", found one of " + Shown(unit->millimetres)};
    }
    if (!isConversion) return UnitFault{place, "a unit of length such as SI_UNIT(.MILLI.,.METRE.)" + found};
    if (MeasureOf(statements, statement) == nullptr && IsMeasuredByLength(statements, statement))
        return std::nullopt;
    return UnitFault{place, "a unit of length that is a number above 0 of another one" + found};
}

bool HasNestedUnits(const Statements& statements) {
    bool found = false;
    ForEachNestedUnit(statements, [&](const UnitOfLength&) { found = true; });
    return found;
}

std::string WithDirectUnits(std::string content) {
    std::vector<TextEdit> edits;
    const Statements statements(content);
    ForEachNestedUnit(statements, [&](const UnitOfLength& unit) {
        const std::size_t place = content.find(MeasureMark, unit.measure->place) + MeasureMark.size();
        const Reference base = statements.ReferencesOf(*unit.measure).back();
        edits.push_back(
            {place, content.find(')', place) - place, RealText(unit.millimetres / unit.metresSize)});
        edits.push_back(ReferenceEdit(content, base.place, "#" + std::to_string(unit.metres->number)));
    });
    // Two units may share a measure.
    return WithEdits(std::move(content), std::move(edits));
}

void NoteUnits(const Statements& statements, CodePage codePage, StepDocument& document) {
    std::vector<int> told;
    for (const Statement& context : statements.All()) {
        const bool isContext = context.kind.empty() || context.kind.ends_with("_CONTEXT");
        if (!isContext || !Holds(TextOf(statements, context), "GLOBAL_UNIT_ASSIGNED_CONTEXT")) continue;
        std::vector<double> sizes;
        for (const Reference& reference : statements.ReferencesOf(context)) {
            const Statement* const statement = statements.Find(reference.number);
            const auto unit = statement == nullptr ? std::nullopt : Resolve(statements, *statement);
            if (!unit) continue;
            sizes.push_back(unit->millimetres);
            if (std::ranges::find(told, reference.number) != told.end()) continue;
            told.push_back(reference.number);
            NoteName(statements, *statement, unit->millimetres, codePage, document);
        }
        const auto isOther = [&](double size) { return !AreAlikeUnits(size, sizes.back()); };
        const auto other = std::ranges::find_if(sizes, isOther);
        if (other == sizes.end()) continue;
        document.notes.push_back({"the context #" + std::to_string(context.number) +
                                      " has two units of length, " + Shown(*other) + " and " +
                                      Shown(sizes.back()) + ": the last is taken, expected one",
                                  statements.LineAt(context.place)});
    }
}

}  // namespace brenvik::step
