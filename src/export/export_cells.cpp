// Column names as kinds of cells, and the texts of the cells.
#include "export/export_cells.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/fractions.h"
#include "base/letter_case.h"
#include "base/noise.h"
#include "base/number_text.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/skip.h"
#include "base/text.h"
#include "export/export_troubles.h"
#include "export/record_values.h"
#include "grid/column_relation.h"
#include "parts/part_data_faults.h"
#include "parts/part_table.h"
#include "parts/part_trouble.h"

namespace brenvik {

namespace {

constexpr auto JoinedSizeNames = std::to_array<std::string_view>({
    "L x W x T",
    "L x T x W",
    "W x L x T",
    "W x T x L",
    "T x L x W",
    "T x W x L",
});

std::string ClosestFraction(double value, bool padded) {
    return FractionMe(DecimalToFraction(ClosestThirtySecond(value), padded));
}

struct SizeField {
    std::string_view field;
    char letter;
    double SizeAdjustment::*amount;
};

constexpr auto SizeFields = std::to_array<SizeField>({
    {"bv_length", 'L', &SizeAdjustment::length},
    {"bv_width", 'W', &SizeAdjustment::width},
    {"bv_thickness", 'T', &SizeAdjustment::thickness},
});

const SizeField* FindSize(std::string_view field) {
    const auto found = std::ranges::find(SizeFields, field, &SizeField::field);
    return found == SizeFields.end() ? nullptr : &*found;
}

double AdjustedSize(const SizeField& size, const Recordset& records, const SizeAdjustment& adjustment) {
    return NoiseAsZero(ValueNumber(records.Value(size.field)) + adjustment.*size.amount);
}

}  // namespace

std::string SizeText(double value, bool asFraction) {
    return asFraction ? ClosestFraction(value, true) : NumberToText(value);
}

std::string ThicknessMaterialText(std::string_view caption, double thickness, std::string_view material) {
    const std::string size = caption == ThicknessMaterialImperial ? ClosestFraction(thickness, false)
                                                                  : NumberToText(RoundHalfEven(thickness, 2));
    return size + " " + std::string(material);
}

LineMaker::LineMaker(std::span<const std::string> columnNames, ColumnSource source, bool asFractions)
    : mFractions(asFractions) {
    for (const std::string& name : columnNames) {
        mColumns.push_back(ColumnOf(name, source));
        mColumns.back().name = name;
        if (mColumns.back().kind == Kind::Unknown) mUnknownNames.push_back(name);
    }
}

LineMaker::Column LineMaker::ColumnOf(std::string_view name, ColumnSource source) {
    const bool fromProfile = source == ColumnSource::Profile;
    if (name == BlankColumn) return {Kind::Fixed, {}, {}, {}};
    if (fromProfile && name.starts_with('|')) return {Kind::Fixed, {}, Trim(ReplaceAll(name, "|", "")), {}};
    if (name == ThicknessMaterialImperial || name == ThicknessMaterialMetric)
        return {Kind::ThicknessMaterial, {}, std::string(name), {}};
    if (fromProfile && std::ranges::find(JoinedSizeNames, name) != JoinedSizeNames.end())
        return {Kind::JoinedSizes, {}, ReplaceAll(name, " x ", ""), {}};
    const std::string field = FoldLower(ColumnForCaption(name));
    if (field.empty()) return {};
    return {FindSize(field) != nullptr ? Kind::Size : Kind::Value, {}, {}, field};
}

std::string LineMaker::JoinedSizes(std::string_view order, const Recordset& records,
                                   const SizeAdjustment& adjustment) const {
    std::vector<std::string> sizes;
    for (const char letter : order) {
        const double value =
            AdjustedSize(*std::ranges::find(SizeFields, letter, &SizeField::letter), records, adjustment);
        sizes.push_back(mFractions ? ClosestFraction(value, false) : NumberToText(value));
    }
    return Join(sizes, " x ");
}

std::string LineMaker::Cell(const Column& column, const Recordset& records,
                            const SizeAdjustment& adjustment) const {
    switch (column.kind) {
        case Kind::Fixed:
            return column.text;
        case Kind::ThicknessMaterial:
            return ThicknessMaterialText(column.text, AdjustedSize(SizeFields[2], records, adjustment),
                                         ValueText(records.Value("bv_material")));
        case Kind::JoinedSizes:
            return JoinedSizes(column.text, records, adjustment);
        case Kind::Size:
            return SizeText(AdjustedSize(*FindSize(column.field), records, adjustment), mFractions);
        case Kind::Value:
            return ValueText(records.Value(column.field));
        case Kind::Unknown:
            break;
    }
    return {};
}

std::string LineMaker::Line(const Recordset& records, const SizeAdjustment& adjustment) const {
    std::vector<std::string> cells;
    for (const Column& column : mColumns) {
        if (column.kind == Kind::Unknown) continue;
        std::string cell;
        const auto failure = Attempt([&] { cell = Cell(column, records, adjustment); });
        if (failure && failure->number() == failure_number::Overflow)
            NoteExportTrouble("a size of the list can't be written (" + std::string(failure->what()) +
                              "), so its cell is empty");
        cells.push_back(std::move(cell));
    }
    return Join(cells, ",");
}

std::vector<LineMaker::LostSize> LineMaker::LostSizes(const Recordset& records,
                                                      const SizeAdjustment& adjustment) const {
    std::vector<LostSize> lost;
    const auto look = [&](const SizeField& field, bool asFraction, bool padded) {
        std::optional<double> size;
        const auto failure = Attempt([&] { size = AdjustedSize(field, records, adjustment); });
        if (failure && failure->number() != failure_number::InvalidNull) return;
        const bool isWritten = size && *size > 0 && (!asFraction || ClosestThirtySecond(*size) != 0);
        const bool isAmountAlone = isWritten && *size == adjustment.*field.amount;
        if (isWritten && !isAmountAlone) return;
        const std::string_view column = FindPartColumn(field.field)->caption;
        const std::string written = asFraction && size && *size < 0 ? ClosestFraction(*size, padded) : "";
        if (std::ranges::find(lost, column, &LostSize::column) == lost.end())
            lost.push_back({column, size, isAmountAlone, written});
    };
    for (const Column& column : mColumns) {
        if (column.kind == Kind::Size) look(*FindSize(column.field), mFractions, true);
        if (column.kind == Kind::ThicknessMaterial)
            look(SizeFields[2], column.text == ThicknessMaterialImperial, false);
        if (column.kind == Kind::JoinedSizes)
            for (const SizeField& field : SizeFields) look(field, mFractions, false);
    }
    return lost;
}

std::vector<LineMaker::ShiftingCell> LineMaker::ShiftingCells(const Recordset& records,
                                                              const SizeAdjustment& adjustment) const {
    std::vector<ShiftingCell> cells;
    for (const Column& column : mColumns) {
        std::string cell;
        Skip([&] { cell = Cell(column, records, adjustment); });
        if (cell.find_first_of(",\"\r\n") != std::string::npos)
            cells.push_back({column.name, std::move(cell)});
    }
    return cells;
}

void NoteLostSizes(const Recordset& records, const LineMaker& maker, const SizeAdjustment& adjustment) {
    const std::vector<LineMaker::LostSize> lost = maker.LostSizes(records, adjustment);
    if (lost.empty()) return;
    std::vector<std::string> shown;
    constexpr int shownDecimals = 5;
    for (const auto& [column, size, isAmountAlone, written] : lost)
        shown.push_back(std::string(column) + " " +
                        (size ? NumberToText(RoundHalfEven(*size, shownDecimals)) : "(blank)") +
                        (isAmountAlone ? " (the adjustments of no size)" : "") +
                        (written.empty() ? "" : ", written as " + InQuotes(written)));
    const auto isZero = [](const auto& each) { return each.isAmountAlone || each.size.value_or(0) == 0; };
    const bool areZero = std::ranges::all_of(lost, isZero);
    const bool areNone = std::ranges::all_of(
        lost, [&](const auto& each) { return isZero(each) || each.size.value_or(0) <= 0; });
    const bool hasFalseSize = std::ranges::any_of(lost, &LineMaker::LostSize::isAmountAlone);
    const bool lacksLetters = areZero && IsBlank(TextIfThere(records, "bv_lwt"));
    const std::string expected = lacksLetters ? "letters (ORIE) that name its sizes"
                                 : areNone    ? "a size above 0"
                                              : "at least 1/64, or an export without fractions";
    std::string handle = TextIfThere(records, "bv_id"), name = TextIfThere(records, "bv_partname");
    // The rows of a grouped list have no handle, and maybe no name.
    const bool isNamed = !handle.empty() || !name.empty();
    NotePartTrouble({std::move(handle), std::move(name),
                     std::string(isNamed ? "it has" : "a row of the list has") +
                         " no size in the export: " + Join(shown, ", ") + "; expected " + expected,
                     false, lacksLetters && !hasFalseSize});
}

void NoteOddQuantity(const Recordset& records) {
    if (const auto fault = QuantityFault(TextIfThere(records, "bv_qty")))
        NotePartTrouble({TextIfThere(records, "bv_id"), TextIfThere(records, "bv_partname"), *fault});
}

}  // namespace brenvik
