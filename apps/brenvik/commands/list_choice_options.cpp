// The options' words, and their refusals with the dashes that a user has typed.
#include "commands/list_choice_options.h"

#include <algorithm>
#include <string_view>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/quoted.h"
#include "query/frm_filter.h"
#include "query/list_driver.h"

namespace brenvik::app {

namespace {

/// A refused choice names its option without the dashes.
[[noreturn]] void RefuseWords(const Failure& failure) {
    throw CommandError(ExitStatus::WrongWords, "--" + failure.description());
}

}  // namespace

Argument ListChoiceOptions::Sort() {
    return Argument("--sort", &sort,
                    "Columns to sort by, each with asc (the default) or desc: \"Length desc, Material\"")
        .Named("COLUMNS");
}

Argument ListChoiceOptions::Group() {
    return Argument(
               "--group", &group,
               "Columns to group by, equal parts becoming one row and a quantity: \"Part Name, Material, "
               "Length, Width, Thickness\"")
        .Named("COLUMNS");
}

Argument ListChoiceOptions::Filter() {
    return Argument("--filter", &filter,
                    "Only the parts that meet this: a column, one of = < > <> like, and a value, which may "
                    "stand in "
                    "double quotes: \"Material = Oak\"")
        .Named("CRITERION");
}

ListChoices ListChoiceOptions::Parse() const {
    try {
        return ParseListChoices(sort, group, filter);
    } catch (const Failure& failure) {
        RefuseWords(failure);
    }
}

void RemarkOnTextOrder(const ListChoices& choices, Teller& teller) {
    for (const std::string_view column : {"Qty", "Price"}) {
        const bool isSorted =
            std::ranges::find(choices.sort, column, &SortChoice::column) != choices.sort.end();
        const bool isCompared = choices.filter && choices.filter->column == column &&
                                choices.filter->shownOperator.find_first_of("<>") != std::string::npos;
        if (isSorted || isCompared)
            teller.Remark(std::string(column) + " is a text, and is compared as one: 10 comes before 9");
    }
}

void RemarkOnGaps(const ListChoices& choices, Teller& teller) {
    if (!choices.filter || !choices.filter->gapsLeftOff) return;
    teller.Remark("--filter: the blanks around " + InQuotes(choices.filter->value) +
                  " were left off; a value in double quotes keeps them");
}

void RemarkOnNoParts(const ListChoices& choices, std::size_t parts, std::size_t rows, Teller& teller) {
    if (!choices.filter || rows > 0 || parts == 0) return;
    teller.Remark("the filter \"" + choices.filter->column + " " +
                  FoldLower(OperatorWord(choices.filter->shownOperator)) + " " + choices.filter->value +
                  "\" leaves none of " + std::to_string(parts) + (parts == 1 ? " part" : " parts"));
}

void ApplyOnGrid(const ListChoices& choices) {
    try {
        ApplyListChoices(choices);
    } catch (const Failure& failure) {
        RefuseWords(failure);
    }
}

}  // namespace brenvik::app
