// The cells of an exported list: what each column name stands for, and its text for a record.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "export/adjustments.h"
#include "session/ports/database_port.h"

namespace brenvik {

/// The two columns that join thickness and material.
inline constexpr std::string_view ThicknessMaterialImperial = "Thickness-Material (Imperial)";
inline constexpr std::string_view ThicknessMaterialMetric = "Thickness-Material (Metric)";

/// The column of blank cells, in exactly these letters.
inline constexpr std::string_view BlankColumn = "(blank)";

/// Where a list's columns come from. Fixed texts and joined sizes are for the columns of a profile.
enum class ColumnSource { Profile, Standard };

/// A size with its adjustment, as a padded fraction of the closest 32nd or as a number.
std::string SizeText(double value, bool asFraction);
/// Thickness and material in one text, the thickness as an unpadded fraction or rounded to 2 decimals.
std::string ThicknessMaterialText(std::string_view caption, double thickness, std::string_view material);

/// The cells of a list's lines. Column names are looked up once; the session's `ColumnRelation` has to be
/// filled.
class LineMaker {
  public:
    /// With `fractions` the sizes are fractions of the closest 32nd.
    LineMaker(std::span<const std::string> columnNames, ColumnSource source, bool fractions);

    /// The current record's cells with commas between them, nothing quoted. A name that stands for no column
    /// has no cell, so that later ones move left; a column that the record set doesn't have, or whose value
    /// is null or can't be written, has an empty one. A size that can't be written is noted as trouble of the
    /// export.
    std::string Line(const Recordset& records, const SizeAdjustment& adjustment) const;

    /// A cell that moves the columns behind it, since nothing is quoted: a comma, a quote or a line break
    /// stands in it.
    struct ShiftingCell {
        std::string column, text;
    };
    std::vector<ShiftingCell> ShiftingCells(const Recordset& records, const SizeAdjustment& adjustment) const;
    /// A size of 0 or less, or whose fraction is 0: its cell is blank. Null if the user cleared it.
    /// `isAmountAlone`: without a size, the adjustment alone is written.
    struct LostSize {
        std::string_view column;
        std::optional<double> size;
        bool isAmountAlone = false;
        std::string written;  ///< The fraction of a negative size, which hardly reads as one: "0- 75/100".
    };
    /// Those of this line, each once.
    std::vector<LostSize> LostSizes(const Recordset& records, const SizeAdjustment& adjustment) const;
    /// The names that stand for no column.
    const std::vector<std::string>& UnknownNames() const { return mUnknownNames; }

  private:
    enum class Kind { Fixed, ThicknessMaterial, JoinedSizes, Size, Value, Unknown };
    struct Column {
        Kind kind = Kind::Unknown;
        std::string name;   ///< As the list's header has it.
        std::string text;   ///< A fixed text, a caption, or the order of joined sizes as "LWT".
        std::string field;  ///< Of a size or a value, in lower case.
    };
    static Column ColumnOf(std::string_view name, ColumnSource source);
    std::string Cell(const Column& column, const Recordset& records, const SizeAdjustment& adjustment) const;
    std::string JoinedSizes(std::string_view order, const Recordset& records,
                            const SizeAdjustment& adjustment) const;

    std::vector<Column> mColumns;
    std::vector<std::string> mUnknownNames;
    bool mFractions;
};

/// Reports a part whose size is 0 or blank in the export. A part without letters has no sizes, as the list
/// shows and the grid asks before an export, so that is a remark.
void NoteLostSizes(const Recordset& records, const LineMaker& maker, const SizeAdjustment& adjustment);

/// Reports a row whose quantity can't be counted: no scan has checked a quantity that was typed.
void NoteOddQuantity(const Recordset& records);

}  // namespace brenvik
