// Size adjustments: fixed amounts that exports add to the sizes of the parts that meet the criteria of a
// named adjustment. A plain text file holds them, a section each; a section runs from its header "[name]" to
// the next line that begins with "[".
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/letter_case.h"
#include "session/ports/database_port.h"

namespace brenvik {

/// The lines of one section, the header first.
using AdjustmentSection = std::vector<std::string>;

/// The section behind the header `name` (the case ignored): the first later one with another header, so that
/// a header repeated at once is passed over. A blank name means the section that begins with the first line,
/// whatever that holds. Empty if there is none. A given name: an export walks by `WalkAdjustments`.
AdjustmentSection GetCurrentAdj(std::string_view name, std::span<const std::string> lines);

/// The text behind "=" of the first line whose part before it equals `key`, the case ignored; blank if none.
std::string GetAdjValue(std::span<const std::string> section, std::string_view key);

/// The sections of a file in the order in which an export walks them, each found by the header of the one
/// before.
struct AdjustmentList {
    std::vector<AdjustmentSection> sections;
    /// The header at which the walk would begin to go round in circles: one that stands twice with another
    /// section between. Such a file can't be applied.
    std::optional<std::string> repeatedHeader;
};
AdjustmentList WalkAdjustments(std::span<const std::string> lines);

/// Amounts in drawing units.
struct SizeAdjustment {
    double length = 0, width = 0, thickness = 0;
};

/// What a list of sections says about records: criteria with their columns looked up once, and amounts.
/// The session's `ColumnRelation` has to be filled.
class AdjustmentRules {
  public:
    AdjustmentRules() = default;
    explicit AdjustmentRules(std::span<const AdjustmentSection> sections);

    /// The sum of the amounts of all sections that the current record meets. A criterion is met by a field of
    /// the same text, blanks around it and case ignored; a column that the record set doesn't have is not
    /// looked at, which is noted as trouble of the export. So is a sum that leaves no size of a board.
    SizeAdjustment For(const Recordset& records) const;

  private:
    struct Criterion {
        std::size_t field;  ///< Its place in `fields`.
        std::string value;  ///< In lower case, without blanks around it.
    };
    struct Rule {
        std::vector<Criterion> criteria;
        SizeAdjustment amounts;
    };
    /// A record's value for each of `fields`, in the form of a criterion's; empty for a field without one.
    using FieldTexts = std::vector<std::optional<std::string>>;
    std::size_t PlaceOf(const std::string& field);
    FieldTexts TextsOf(const Recordset& records) const;

    std::vector<std::string> mFields;  ///< The fields that criteria name, each once.
    std::vector<Rule> mRules;
};

}  // namespace brenvik
