// Reading list options, with errors that say what would have been right.
#include "query/list_options.h"

#include <algorithm>
#include <string>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "base/quoted.h"
#include "base/text.h"
#include "base/trimmed.h"
#include "parts/part_table.h"
#include "query/frm_filter.h"

namespace brenvik {

namespace {

/// What an operator may be made of, so that an unknown one is reported as such.
constexpr std::string_view OperatorSigns = "=<>!*~";
constexpr std::string_view LikeWord = " like";
constexpr std::string_view KnownOperators = "the operators are =, >, <, <> and like";

enum class Offer { ToSort, ToGroup, ToFilter };

bool IsOffered(const PartColumn& column, Offer offer) {
    const std::string_view name = column.column;
    if (name == "bv_id" || name.starts_with("bv_oldValue")) return false;
    const bool isRawExtent = name == "bv_x" || name == "bv_y" || name == "bv_z";
    switch (offer) {
        case Offer::ToSort:
            return true;
        case Offer::ToGroup:
            return !isRawExtent && name != "bv_qty";
        case Offer::ToFilter:
            return !isRawExtent;
    }
    return false;
}

std::vector<std::string> OfferedColumns(Offer offer) {
    std::vector<std::string> captions;
    for (const PartColumn& column : PartColumns())
        if (IsOffered(column, offer)) captions.emplace_back(column.caption);
    return captions;
}

std::string KnownColumns(Offer offer) { return "the columns are " + Join(OfferedColumns(offer), ", "); }

std::string RequireColumn(std::string_view option, std::string_view name, Offer offer) {
    for (const std::string& caption : OfferedColumns(offer))
        if (EqualsIgnoreCase(caption, name)) return caption;
    RefuseOption(option, "there is no column " + InQuotes(name) + "; " + KnownColumns(offer));
}

/// The pieces of a list, trimmed; none for a blank text.
std::vector<std::string> PiecesOf(std::string_view option, std::string_view list, Offer offer) {
    std::vector<std::string> pieces;
    if (IsBlank(list)) return pieces;
    for (const std::string& piece : Split(list, ',')) {
        if (IsBlank(piece))
            RefuseOption(option, "a column is missing in " + InQuotes(list) + "; " + KnownColumns(offer));
        pieces.push_back(Trim(piece));
    }
    return pieces;
}

SortChoice ParseSortPiece(const std::string& piece) {
    const auto lastBlank = piece.rfind(' ');
    const std::string lastWord = lastBlank == std::string::npos ? std::string() : piece.substr(lastBlank + 1);
    const bool descending = EqualsIgnoreCase(lastWord, "desc");
    const bool hasDirection = descending || EqualsIgnoreCase(lastWord, "asc");
    const std::string name = hasDirection ? Trim(piece.substr(0, lastBlank)) : piece;
    return {RequireColumn("sort", name, Offer::ToSort), descending};
}

std::vector<SortChoice> ParseSort(std::string_view list) {
    std::vector<SortChoice> choices;
    for (const std::string& piece : PiecesOf("sort", list, Offer::ToSort)) {
        const SortChoice choice = ParseSortPiece(piece);
        if (std::ranges::find(choices, choice.column, &SortChoice::column) != choices.end())
            RefuseOption("sort", InQuotes(choice.column) + " is named twice");
        choices.push_back(choice);
    }
    return choices;
}

std::vector<std::string> ParseGroup(std::string_view list) {
    std::vector<std::string> columns;
    for (const std::string& piece : PiecesOf("group", list, Offer::ToGroup)) {
        const std::string column = RequireColumn("group", piece, Offer::ToGroup);
        if (std::ranges::find(columns, column) != columns.end())
            RefuseOption("group", InQuotes(column) + " is named twice");
        columns.push_back(column);
    }
    return columns;
}

/// An operator in the text of a filter, by place and length.
struct OperatorPlace {
    std::size_t at, length;
};

/// The first operator: a run of signs, or the word "like" behind a blank.
OperatorPlace FindOperator(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (OperatorSigns.find(text[at]) != std::string_view::npos)
            return {at, std::min(text.find_first_not_of(OperatorSigns, at), text.size()) - at};
        const std::string_view rest = text.substr(at);
        if (StartsWithIgnoreCase(rest, LikeWord) &&
            (rest.size() == LikeWord.size() || rest[LikeWord.size()] == ' '))
            return {at, LikeWord.size()};
    }
    return {std::string_view::npos, 0};
}

std::string ShownOperator(std::string_view word) {
    for (const std::string_view shown : FilterOperators)
        if (SplitAtFirst(shown, ' ').head == word || EqualsIgnoreCase(OperatorWord(shown), word))
            return std::string(shown);
    RefuseOption("filter", "there is no operator " + InQuotes(word) + "; " + std::string(KnownOperators));
}

[[noreturn]] void RefuseWithoutOperator(std::string_view text) {
    for (const std::string& caption : OfferedColumns(Offer::ToFilter))
        if (StartsWithIgnoreCase(text, caption + " "))
            ShownOperator(SplitAtFirst(Trim(text.substr(caption.size())), ' ').head);
    RefuseOption("filter", InQuotes(text) +
                               " has no operator; it takes a column, an operator and a value, and " +
                               std::string(KnownOperators));
}

/// A value that was copied from elsewhere may bring tabs and line breaks along.
std::string WithoutGapsAround(std::string_view text) { return std::string(Trimmed(text)); }

/// The value behind an operator, which a blank may part from it. Double quotes keep the blanks within them.
void TakeValue(std::string_view text, FilterChoice& choice) {
    if (text.starts_with(' ')) text.remove_prefix(1);
    choice.value = WithoutGapsAround(text);
    std::string& value = choice.value;
    if (value.size() >= 2 && value.starts_with('"') && value.ends_with('"'))
        value = value.substr(1, value.size() - 2);
    else
        choice.gapsLeftOff = !value.empty() && value != text;
}

FilterChoice ParseFilter(std::string_view filter) {
    const std::string text(
        filter.substr(std::min(filter.find_first_not_of(BlanksAndLineEnds), filter.size())));
    const OperatorPlace place = FindOperator(text);
    if (place.length == 0) RefuseWithoutOperator(WithoutGapsAround(text));
    const std::string column = RequireColumn("filter", Trim(text.substr(0, place.at)), Offer::ToFilter);
    const std::string word = Trim(text.substr(place.at, place.length));
    FilterChoice choice{column, ShownOperator(word), {}};
    TakeValue(std::string_view(text).substr(place.at + place.length), choice);
    if (!FilteredByNumber(column)) return choice;
    choice.gapsLeftOff = false;  // A number has no blanks of its own.
    if (OperatorWord(choice.shownOperator) == "Like")
        RefuseOption("filter", InQuotes(column) +
                                   " is filtered by a number, which like doesn't "
                                   "compare; the operators for it are =, >, < and <>");
    if (!IsNumeric(choice.value))
        RefuseOption("filter",
                     InQuotes(column) + " holds numbers, and " + InQuotes(choice.value) + " is none");
    return choice;
}

}  // namespace

void RefuseOption(std::string_view option, const std::string& complaint) {
    throw Failure(failure_number::InvalidCall, std::string(OwnSource),
                  std::string(option) + ": " + complaint);
}

ListChoices ParseListChoices(std::string_view sort, std::string_view group, std::string_view filter) {
    ListChoices choices{ParseSort(sort), ParseGroup(group), std::nullopt};
    if (!IsBlank(filter)) choices.filter = ParseFilter(filter);
    if (choices.group.empty()) return choices;
    for (const SortChoice& choice : choices.sort)
        if (std::ranges::find(choices.group, choice.column) == choices.group.end())
            RefuseOption("sort", InQuotes(choice.column) + " is not in the grouped list; the columns are " +
                                     Join(choices.group, ", "));
    return choices;
}

}  // namespace brenvik
