// The steps that a journal can hold, said once as data: the parser matches lines against these forms, its
// errors quote them, and the player does one thing for each kind.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

enum class StepKind {
    SelectAll,
    SelectNone,
    SelectHandles,
    Command,
    HostText,
    Escape,
    ShowEntity,
    HideEntity,
    Open,
    CloseDrawing,
    Save,
    Press,
    Check,
    Uncheck,
    Toggle,
    Type,
    Pick,
    Unpick,
    DoubleClick,
    Goto,
    Cell,
    Width,
    Close,
    Answer,
    CancelPoint,
    AnswerPoint,
    CancelReal,
    AnswerReal,
    CancelKeyword,
    AnswerKeyword,
    CancelFile,
    AnswerFile,
    CancelWork,
    AcceptFailure,
    ExpectMessage,
    ExpectTitle,
    ExpectNoMessage,
    ExpectRefusal,
    ExpectForm,
    ExpectNoForm,
    ExpectText,
    ExpectChecked,
    ExpectUnchecked,
    ExpectEnabled,
    ExpectDisabled,
    ExpectVisible,
    ExpectHidden,
    ExpectItems,
    ExpectRows,
    ExpectCell,
    ExpectHiddenColumn,
    ExpectSetting,
    ExpectSession,
    ExpectData,
    ExpectEntities,
    ExpectVisibleEntity,
    ExpectHiddenEntity,
    ExpectFile,
    ExpectNoFile,
    ExpectFileLine,
    PrintCell,
    PrintGrid,
    PrintData,
    PrintSession,
    PrintControl,
};

/// One form of a step. In `pattern` a word in lower case stands for itself, one in capitals for an argument
/// of that kind; "..." behind the last one allows more of it, and "...?" none at all.
struct StepForm {
    StepKind kind;
    std::string_view pattern;
};

/// All forms; where two fit the same words, the first one counts.
std::span<const StepForm> StepForms();

/// What an argument kind is, for messages: "CONTROL" gives "the name of a control".
std::string_view ArgumentMeaning(std::string_view argument);

/// One step of a journal: its arguments without the fixed words, and where it stands.
struct JournalStep {
    StepKind kind = StepKind::Close;
    std::vector<std::string> arguments;
    std::size_t line = 0;  ///< From 1.
    std::string source;    ///< The step as written, without blanks at its ends.
};

}  // namespace brenvik
