// The flow of a journal: which step comes next, who gets it, and how it ends.
#include "journal/journal_player.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"
#include "base/letter_case.h"
#include "base/numbers.h"
#include "journal/journal_checks.h"
#include "journal/journal_controls.h"
#include "journal/journal_failure.h"
#include "journal/journal_hands.h"
#include "journal/journal_lookup.h"
#include "session/ports/host_interface.h"

namespace brenvik {

namespace {

JournalHands plainHands;

std::vector<std::string> HandlesOfModelSpace(AcadApplication& host) {
    std::vector<std::string> handles;
    host.ActiveDocument()->ModelSpace().ForEach(
        [&handles](const AcadEntity& entity) { handles.push_back(entity.Handle()); });
    return handles;
}

bool IsList(const Form& form) { return EqualsIgnoreCase(form.Name(), "frmMain"); }

/// Whether a control takes what was typed into its form: any button of a dialog may, of the list an Apply.
bool TakesTyping(const Form& form, std::string_view control) {
    if (!IsList(form)) return true;
    return StartsWithIgnoreCase(control, "tbMain.APPLY") || StartsWithIgnoreCase(control, "mnuApply");
}

/// Whether a press fills cells of the list, which an Apply has to take like typed ones.
bool FillsTheList(const Form& form, std::string_view control) {
    if (!IsList(form)) return false;
    return EqualsIgnoreCase(control, "btnAutoPN") || EqualsIgnoreCase(control, "tbMain.QCOPY") ||
           EqualsIgnoreCase(control, "mnuQcopy");
}

}  // namespace

JournalPlayer::JournalPlayer(std::vector<JournalStep> journalSteps, JournalDialogs& journalDialogs,
                             JournalWorld journalWorld)
    : mSteps(std::move(journalSteps)), mDialogs(journalDialogs), mWorld(std::move(journalWorld)) {
    mDialogs.playForm = [this](Form& form) { PlayForm(form); };
}

JournalPlayer::~JournalPlayer() { mDialogs.playForm = nullptr; }

void JournalPlayer::Play() {
    while (mNext < mSteps.size()) PlayNext();
    TellUntakenAnswers();
}

void JournalPlayer::PlayForm(Form& form) {
    // A failing journal leaves through here with forms open; the list must not keep them.
    struct OpenForm {
        std::vector<Form*>& forms;
        OpenForm(std::vector<Form*>& list, Form& opened) : forms(list) { forms.push_back(&opened); }
        ~OpenForm() { forms.pop_back(); }
    } const open(mOpenForms, form);

    mTyped.erase(&form);
    form.Load();
    while (form.Loaded()) {
        if (mNext < mSteps.size()) {
            PlayNext();
            continue;
        }
        TellLooseEnd("the journal ended while " + form.Name() + " was open; closing it");
        if (!form.RequestClose()) form.Unload();
    }
}

void JournalPlayer::PlayNext() {
    const JournalStep& step = mSteps[mNext++];
    try {
        Do(step);
    } catch (const Failure& failure) {
        const std::string found = std::to_string(failure.number()) + " " + failure.what();
        if (!mDialogs.Take(AnswerKind::Failure)) FailStep(step, "the step to go through", found);
        *mWorld.transcript << "line " << step.line << ": " << step.source << ": " << found << '\n';
    }
}

void JournalPlayer::Do(const JournalStep& step) {
    switch (step.kind) {
        case StepKind::SelectAll:
        case StepKind::SelectNone:
        case StepKind::SelectHandles:
        case StepKind::Command:
        case StepKind::HostText:
        case StepKind::Escape:
        case StepKind::ShowEntity:
        case StepKind::HideEntity:
        case StepKind::Open:
        case StepKind::Save:
            return DoOnHost(step);
        case StepKind::Press:
        case StepKind::Check:
        case StepKind::Uncheck:
        case StepKind::Toggle:
        case StepKind::Type:
        case StepKind::Pick:
        case StepKind::Unpick:
        case StepKind::DoubleClick:
        case StepKind::Goto:
        case StepKind::Cell:
        case StepKind::Width:
        case StepKind::Close:
            return DoOnForm(step);
        case StepKind::Answer:
            return DoQueue(step, AnswerKind::MessageBox);
        case StepKind::CancelPoint:
        case StepKind::AnswerPoint:
            return DoQueue(step, AnswerKind::Point);
        case StepKind::CancelReal:
        case StepKind::AnswerReal:
            return DoQueue(step, AnswerKind::Real);
        case StepKind::CancelKeyword:
        case StepKind::AnswerKeyword:
            return DoQueue(step, AnswerKind::Keyword);
        case StepKind::CancelFile:
        case StepKind::AnswerFile:
            return DoQueue(step, AnswerKind::File);
        case StepKind::CancelWork:
            return DoQueue(step, AnswerKind::Work);
        case StepKind::AcceptFailure:
            return DoQueue(step, AnswerKind::Failure);
        case StepKind::ExpectMessage:
        case StepKind::ExpectTitle:
        case StepKind::ExpectNoMessage:
            return DoMessageCheck(step);
        case StepKind::ExpectRefusal:
            return DoRefusalCheck(step);
        case StepKind::ExpectForm:
        case StepKind::ExpectNoForm:
            return DoFormCheck(step);
        case StepKind::ExpectText:
        case StepKind::ExpectChecked:
        case StepKind::ExpectUnchecked:
        case StepKind::ExpectEnabled:
        case StepKind::ExpectDisabled:
        case StepKind::ExpectVisible:
        case StepKind::ExpectHidden:
        case StepKind::ExpectItems:
        case StepKind::ExpectRows:
        case StepKind::ExpectCell:
        case StepKind::ExpectHiddenColumn:
            return CheckForm(step, TopForm(step));
        case StepKind::ExpectSetting:
        case StepKind::ExpectSession:
        case StepKind::ExpectData:
        case StepKind::ExpectEntities:
        case StepKind::ExpectVisibleEntity:
        case StepKind::ExpectHiddenEntity:
        case StepKind::ExpectFile:
        case StepKind::ExpectNoFile:
        case StepKind::ExpectFileLine:
            return CheckWorld(step, mWorld);
        case StepKind::PrintControl:
        case StepKind::PrintCell:
        case StepKind::PrintGrid:
            return PrintFromForm(step, TopForm(step), *mWorld.output);
        case StepKind::PrintData:
        case StepKind::PrintSession:
            return PrintFromWorld(step, mWorld);
    }
}

void JournalPlayer::DoOnHost(const JournalStep& step) {
    if (!mOpenForms.empty()) FailStep(step, "no open form", "the form " + mOpenForms.back()->Name());
    AcadDocument& document = *mWorld.host->ActiveDocument();
    if (step.kind == StepKind::SelectAll) {
        mWorld.select(HandlesOfModelSpace(*mWorld.host));
    } else if (step.kind == StepKind::SelectNone) {
        mWorld.select({});
    } else if (step.kind == StepKind::SelectHandles) {
        for (const std::string& handle : step.arguments)
            if (!document.HandleToObject(handle))
                FailStep(step, "an entity " + handle, "none in the drawing");
        mWorld.select(step.arguments);
    } else if (step.kind == StepKind::HostText) {
        document.SendCommand(step.arguments[0]);
    } else if (step.kind == StepKind::Escape) {
        document.SendCommand("\x1b");
    } else if (step.kind == StepKind::ShowEntity || step.kind == StepKind::HideEntity) {
        SetVisible(step);
    } else if (step.kind == StepKind::Open) {
        mWorld.open(step.arguments[0]);
    } else if (step.kind == StepKind::Save) {
        if (const std::string expected = mWorld.save(step.arguments[0]); !expected.empty())
            FailStep(step, expected, Quoted(step.arguments[0]));
    } else if (!mWorld.callCommand(step.arguments[0])) {
        FailStep(step, "a command", Quoted(step.arguments[0]));
    }
}

void JournalPlayer::SetVisible(const JournalStep& step) {
    const std::string& handle = step.arguments[0];
    if (!mWorld.host->ActiveDocument()->HandleToObject(handle))
        FailStep(step, "an entity " + handle, "none in the drawing");
    mWorld.setVisible(handle, step.kind == StepKind::ShowEntity);
}

void JournalPlayer::DoOnForm(const JournalStep& step) {
    Form& form = TopForm(step);
    if (step.kind == StepKind::Close) TellTypingLost(step, form);
    // A button may unload its form, and another form may get its place.
    if (step.kind == StepKind::Press && TakesTyping(form, step.arguments[0])) mTyped.erase(&form);
    const bool fills = step.kind == StepKind::Press && FillsTheList(form, step.arguments[0]);
    ActOnForm(step, form, mWorld.hands == nullptr ? plainHands : *mWorld.hands);
    if (step.kind == StepKind::Type || step.kind == StepKind::Cell || fills) mTyped[&form] = step.line;
}

/// A user at the desk sees what goes with the window; a journal hears of it.
void JournalPlayer::TellTypingLost(const JournalStep& step, const Form& form) {
    const auto last = mTyped.find(&form);
    if (last == mTyped.end()) return;
    *mWorld.transcript << "line " << step.line << ": " << form.Name()
                       << (IsList(form) ? " closes without an Apply: what was typed into it, last in line "
                                        : " closes without a button: what was typed into it, last in line ")
                       << last->second << ", is not kept\n";
    mTyped.erase(last);
}

void JournalPlayer::DoQueue(const JournalStep& step, AnswerKind kind) {
    std::optional<std::string> text;
    if (!step.arguments.empty()) text = step.arguments[0];
    const int number = step.arguments.size() < 2 ? 0 : static_cast<int>(LenientNumber(step.arguments[1]));
    mDialogs.Queue({kind, std::move(text), step.line, number});
}

void JournalPlayer::DoMessageCheck(const JournalStep& step) {
    auto& messages = mDialogs.Messages();
    if (step.kind == StepKind::ExpectNoMessage) {
        if (!messages.empty()) FailStep(step, "no message", Quoted(messages.front().text));
        return;
    }
    if (messages.empty()) FailStep(step, Quoted(step.arguments[0]), "no message");
    const bool title = step.kind == StepKind::ExpectTitle;
    const std::string& found = title ? messages.front().title : messages.front().text;
    if (found != step.arguments[0]) FailStep(step, Quoted(step.arguments[0]), Quoted(found));
    // The title is looked at first and leaves the box in its place for the look at its text.
    if (!title) messages.pop_front();
}

void JournalPlayer::DoRefusalCheck(const JournalStep& step) const {
    const std::optional<std::string> found = mWorld.takeRefusal();
    if (!found) FailStep(step, Quoted(step.arguments[0]), "no refusal");
    if (*found != step.arguments[0]) FailStep(step, Quoted(step.arguments[0]), Quoted(*found));
}

void JournalPlayer::DoFormCheck(const JournalStep& step) const {
    const std::string found = mOpenForms.empty() ? "no form" : "the form " + mOpenForms.back()->Name();
    if (step.kind == StepKind::ExpectNoForm) {
        if (!mOpenForms.empty()) FailStep(step, "no form", found);
        return;
    }
    if (mOpenForms.empty() || !EqualsIgnoreCase(mOpenForms.back()->Name(), step.arguments[0]))
        FailStep(step, "the form " + step.arguments[0], found);
}

Form& JournalPlayer::TopForm(const JournalStep& step) const {
    if (mOpenForms.empty()) FailStep(step, "an open form", "none");
    return *mOpenForms.back();
}

void JournalPlayer::TellUntakenAnswers() {
    for (const QueuedAnswer& answer : mDialogs.Untaken()) {
        const std::string line = "line " + std::to_string(answer.line) + ": the ";
        if (answer.kind == AnswerKind::Failure)
            TellLooseEnd(line + "failure to accept did not come");
        else if (answer.kind == AnswerKind::Work)
            TellLooseEnd(line + "work " + Quoted(*answer.text) + " had no step " +
                         std::to_string(answer.step) + " to be cancelled at");
        else
            TellLooseEnd(line + "answer " + Quoted(answer.text.value_or("cancel")) + " was not asked for");
    }
}

void JournalPlayer::TellLooseEnd(const std::string& text) {
    ++mLooseEnds;
    *mWorld.transcript << text << '\n';
}

}  // namespace brenvik
