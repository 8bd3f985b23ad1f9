// The options' words, and their refusals with the dashes that a user has typed.
#include "list_choice_options.h"

#include "base/failure.h"

namespace brenvik::app {

namespace {

/// A refused choice names its option without the dashes.
[[noreturn]] void RefuseWords(const Failure& failure) {
    throw CommandError(ExitStatus::WrongWords, "--" + failure.description());
}

}  // namespace

void ListChoiceOptions::AddTo(CLI::App& command) {
    command
        .add_option("--sort", sort,
                    "Columns to sort by, each with asc (the default) or desc: \"Length desc, Material\"")
        ->type_name("COLUMNS");
    command
        .add_option(
            "--group", group,
            "Columns to group by, equal parts becoming one row and a quantity: \"Part Name, Material, "
            "Length, Width, Thickness\"")
        ->type_name("COLUMNS");
    command
        .add_option(
            "--filter", filter,
            "Only the parts that meet this: a column, one of = < > <> like, and a value: \"Material = "
            "Oak\"")
        ->type_name("CRITERION");
}

ListChoices ListChoiceOptions::Parse() const {
    try {
        return ParseListChoices(sort, group, filter);
    } catch (const Failure& failure) {
        RefuseWords(failure);
    }
}

void ApplyOnGrid(const ListChoices& choices) {
    try {
        ApplyListChoices(choices);
    } catch (const Failure& failure) {
        RefuseWords(failure);
    }
}

}  // namespace brenvik::app
