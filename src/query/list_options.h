// Sorting, grouping and filtering asked for as texts, as a command line has them: read into columns and
// operators, then done through the very dialogs that a user has.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

/// Columns are named by their captions, as the dialogs have them.
struct SortChoice {
    std::string column;
    bool descending = false;
};

struct FilterChoice {
    std::string column;
    std::string shownOperator;  ///< As the filter dialog shows it.
    std::string value;
    bool gapsLeftOff = false;  ///< Blanks stood around the value, and no double quotes around them.
};

/// How a list is wanted.
struct ListChoices {
    std::vector<SortChoice> sort;
    std::vector<std::string> group;
    std::optional<FilterChoice> filter;
};

/// Reads "Length desc, Material": columns, each with "asc" (the direction of one without) or "desc".
/// "Part Name, Material": columns to group by. "Material = Oak": a column, an operator and a value; the
/// operators are =, >, <, <> and like (or *), which tests the beginning of the text, or what the % in the
/// value say. A value in double quotes keeps the blanks at its ends. Case doesn't matter. Blank texts ask for
/// nothing. Fails with 5 and a description that names the option ("sort", "group", "filter"), what is unknown
/// in it, and what is known; also where a grouped list would be sorted by a column that it doesn't have, and
/// where a column of numbers is filtered for a text.
ListChoices ParseListChoices(std::string_view sort, std::string_view group, std::string_view filter);

/// Fails with 5 and the description "option: complaint".
[[noreturn]] void RefuseOption(std::string_view option, const std::string& complaint);

}  // namespace brenvik
