// The table of step forms and of argument kinds.
#include "journal/journal_step.h"

#include <array>
#include <utility>

namespace brenvik {

namespace {

constexpr std::array AllStepForms{
    StepForm{StepKind::SelectAll, "select all"},
    StepForm{StepKind::SelectNone, "select none"},
    StepForm{StepKind::SelectHandles, "select HANDLE..."},
    StepForm{StepKind::Command, "command METHOD"},
    StepForm{StepKind::HostText, "host TEXT"},
    StepForm{StepKind::Escape, "escape"},
    StepForm{StepKind::ShowEntity, "show entity HANDLE"},
    StepForm{StepKind::HideEntity, "hide entity HANDLE"},
    StepForm{StepKind::Open, "open PATH"},
    StepForm{StepKind::Save, "save PATH"},
    StepForm{StepKind::CloseDrawing, "close drawing"},
    StepForm{StepKind::Press, "press CONTROL"},
    StepForm{StepKind::Check, "check CONTROL"},
    StepForm{StepKind::Uncheck, "uncheck CONTROL"},
    StepForm{StepKind::Toggle, "toggle CONTROL"},
    StepForm{StepKind::Type, "type CONTROL TEXT"},
    StepForm{StepKind::Pick, "pick CONTROL ITEM"},
    StepForm{StepKind::Unpick, "unpick CONTROL ITEM"},
    StepForm{StepKind::DoubleClick, "doubleclick CONTROL ITEM"},
    StepForm{StepKind::Goto, "goto GRID ROW COLUMN"},
    StepForm{StepKind::Cell, "cell GRID ROW COLUMN TEXT"},
    StepForm{StepKind::Width, "width GRID COLUMN REAL"},
    StepForm{StepKind::Close, "close"},
    StepForm{StepKind::Answer, "answer ANSWER"},
    StepForm{StepKind::AnswerPoint, "point POINT"},
    StepForm{StepKind::CancelPoint, "point cancel"},
    StepForm{StepKind::AnswerReal, "real REAL"},
    StepForm{StepKind::CancelReal, "real cancel"},
    StepForm{StepKind::CancelKeyword, "keyword cancel"},
    StepForm{StepKind::AnswerKeyword, "keyword TEXT"},
    StepForm{StepKind::CancelFile, "file cancel"},
    StepForm{StepKind::AnswerFile, "file PATH"},
    StepForm{StepKind::CancelWork, "cancel work NAME N"},
    StepForm{StepKind::AcceptFailure, "accept failure"},
    StepForm{StepKind::ExpectMessage, "expect message TEXT"},
    StepForm{StepKind::ExpectTitle, "expect title TEXT"},
    StepForm{StepKind::ExpectNoMessage, "expect no message"},
    StepForm{StepKind::ExpectRefusal, "expect refusal TEXT"},
    StepForm{StepKind::ExpectForm, "expect form FORM"},
    StepForm{StepKind::ExpectNoForm, "expect no form"},
    StepForm{StepKind::ExpectText, "expect text CONTROL TEXT"},
    StepForm{StepKind::ExpectChecked, "expect checked CONTROL"},
    StepForm{StepKind::ExpectUnchecked, "expect unchecked CONTROL"},
    StepForm{StepKind::ExpectEnabled, "expect enabled CONTROL"},
    StepForm{StepKind::ExpectDisabled, "expect disabled CONTROL"},
    StepForm{StepKind::ExpectVisibleEntity, "expect visible entity HANDLE"},
    StepForm{StepKind::ExpectHiddenEntity, "expect hidden entity HANDLE"},
    StepForm{StepKind::ExpectHiddenColumn, "expect hidden column GRID COLUMN"},
    StepForm{StepKind::ExpectVisible, "expect visible CONTROL"},
    StepForm{StepKind::ExpectHidden, "expect hidden CONTROL"},
    StepForm{StepKind::ExpectItems, "expect items CONTROL ITEM...?"},
    StepForm{StepKind::ExpectRows, "expect rows GRID N"},
    StepForm{StepKind::ExpectCell, "expect cell GRID ROW COLUMN TEXT"},
    StepForm{StepKind::ExpectSetting, "expect setting NAME TEXT"},
    StepForm{StepKind::ExpectSession, "expect session NAME TEXT"},
    StepForm{StepKind::ExpectData, "expect data HANDLE KEY TEXT"},
    StepForm{StepKind::ExpectEntities, "expect entities LAYER N"},
    StepForm{StepKind::ExpectFile, "expect file PATH"},
    StepForm{StepKind::ExpectNoFile, "expect no file PATH"},
    StepForm{StepKind::ExpectFileLine, "expect file PATH line N TEXT"},
    StepForm{StepKind::PrintCell, "print cell GRID ROW COLUMN"},
    StepForm{StepKind::PrintGrid, "print grid GRID"},
    StepForm{StepKind::PrintData, "print data HANDLE"},
    StepForm{StepKind::PrintSession, "print session NAME"},
    StepForm{StepKind::PrintControl, "print CONTROL"},
};

constexpr std::array<std::pair<std::string_view, std::string_view>, 17> ArgumentMeanings{{
    {"HANDLE", "a handle (hexadecimal)"},
    {"METHOD", "the name of a command"},
    {"TEXT", "a text"},
    {"PATH", "a path"},
    {"CONTROL", "the name of a control"},
    {"GRID", "the name of a grid"},
    {"ITEM", "an item or its index (#0 is the first)"},
    {"ROW", "a row (a whole number, the header being 0)"},
    {"COLUMN", "a column (a number from 1 or a header)"},
    {"N", "a whole number"},
    {"ANSWER", "yes, no, ok or cancel"},
    {"POINT", "a point (X,Y or X,Y,Z)"},
    {"REAL", "a number"},
    {"FORM", "the name of a form"},
    {"NAME", "a name"},
    {"KEY", "a part data key"},
    {"LAYER", "the name of a layer"},
}};

}  // namespace

std::span<const StepForm> StepForms() { return AllStepForms; }

std::string_view ArgumentMeaning(std::string_view argument) {
    for (const auto& [kind, meaning] : ArgumentMeanings)
        if (kind == argument) return meaning;
    return argument;
}

}  // namespace brenvik
