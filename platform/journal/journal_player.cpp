// The flow of a journal: which step comes next, who gets it, and how it ends.
#include "journal/journal_player.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
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

/// Who does the steps of each kind, in the order of `StepKind`.
struct JournalPlayer::Works {
    using enum StepKind;
    using Player = JournalPlayer;
    struct Row {
        StepKind kind;
        void (Player::*work)(const JournalStep&);
    };
    static constexpr Row Rows[] = {
        {SelectAll, &Player::DoOnHost},
        {SelectNone, &Player::DoOnHost},
        {SelectHandles, &Player::DoOnHost},
        {Command, &Player::DoOnHost},
        {HostText, &Player::DoOnHost},
        {Escape, &Player::DoOnHost},
        {ShowEntity, &Player::DoOnHost},
        {HideEntity, &Player::DoOnHost},
        {Open, &Player::DoOnHost},
        {CloseDrawing, &Player::DoOnHost},
        {Save, &Player::DoOnHost},
        {Press, &Player::DoOnForm},
        {Check, &Player::DoOnForm},
        {Uncheck, &Player::DoOnForm},
        {Toggle, &Player::DoOnForm},
        {Type, &Player::DoOnForm},
        {Pick, &Player::DoOnForm},
        {Unpick, &Player::DoOnForm},
        {DoubleClick, &Player::DoOnForm},
        {Goto, &Player::DoOnForm},
        {Cell, &Player::DoOnForm},
        {Width, &Player::DoOnForm},
        {Close, &Player::DoOnForm},
        {Answer, &Player::Queue<AnswerKind::MessageBox>},
        {CancelPoint, &Player::Queue<AnswerKind::Point>},
        {AnswerPoint, &Player::Queue<AnswerKind::Point>},
        {CancelReal, &Player::Queue<AnswerKind::Real>},
        {AnswerReal, &Player::Queue<AnswerKind::Real>},
        {CancelKeyword, &Player::Queue<AnswerKind::Keyword>},
        {AnswerKeyword, &Player::Queue<AnswerKind::Keyword>},
        {CancelFile, &Player::Queue<AnswerKind::File>},
        {AnswerFile, &Player::Queue<AnswerKind::File>},
        {CancelWork, &Player::Queue<AnswerKind::Work>},
        {AcceptFailure, &Player::Queue<AnswerKind::Failure>},
        {ExpectMessage, &Player::DoMessageCheck},
        {ExpectTitle, &Player::DoMessageCheck},
        {ExpectNoMessage, &Player::DoMessageCheck},
        {ExpectRefusal, &Player::DoRefusalCheck},
        {ExpectForm, &Player::DoFormCheck},
        {ExpectNoForm, &Player::DoFormCheck},
        {ExpectText, &Player::CheckTopForm},
        {ExpectChecked, &Player::CheckTopForm},
        {ExpectUnchecked, &Player::CheckTopForm},
        {ExpectEnabled, &Player::CheckTopForm},
        {ExpectDisabled, &Player::CheckTopForm},
        {ExpectVisible, &Player::CheckTopForm},
        {ExpectHidden, &Player::CheckTopForm},
        {ExpectItems, &Player::CheckTopForm},
        {ExpectRows, &Player::CheckTopForm},
        {ExpectCell, &Player::CheckTopForm},
        {ExpectHiddenColumn, &Player::CheckTopForm},
        {ExpectSetting, &Player::CheckOutsideForms},
        {ExpectSession, &Player::CheckOutsideForms},
        {ExpectData, &Player::CheckOutsideForms},
        {ExpectEntities, &Player::CheckOutsideForms},
        {ExpectVisibleEntity, &Player::CheckOutsideForms},
        {ExpectHiddenEntity, &Player::CheckOutsideForms},
        {ExpectFile, &Player::CheckOutsideForms},
        {ExpectNoFile, &Player::CheckOutsideForms},
        {ExpectFileLine, &Player::CheckOutsideForms},
        {PrintCell, &Player::PrintFromTopForm},
        {PrintGrid, &Player::PrintFromTopForm},
        {PrintData, &Player::PrintFromOutsideForms},
        {PrintSession, &Player::PrintFromOutsideForms},
        {PrintControl, &Player::PrintFromTopForm},
    };
    static constexpr std::size_t PlaceOf(StepKind kind) { return static_cast<std::size_t>(kind); }
    /// Whether each kind has its row.
    static constexpr bool Whole() {
        if (std::size(Rows) != PlaceOf(PrintControl) + 1) return false;
        return std::ranges::all_of(Rows, [](const Row& row) { return &row == &Rows[PlaceOf(row.kind)]; });
    }
};

void JournalPlayer::Do(const JournalStep& step) {
    static_assert(Works::Whole());
    (this->*Works::Rows[Works::PlaceOf(step.kind)].work)(step);
}

void JournalPlayer::DoOnHost(const JournalStep& step) {
    if (!mOpenForms.empty()) FailStep(step, "no open form", "the form " + mOpenForms.back()->Name());
    // All that the host knows without a drawing is to open one.
    if (step.kind == StepKind::Open) return mWorld.open(step.arguments[0]);
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
    } else if (step.kind == StepKind::CloseDrawing) {
        mWorld.closeDrawing();
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

template <AnswerKind Kind>
void JournalPlayer::Queue(const JournalStep& step) {
    std::optional<std::string> text;
    if (!step.arguments.empty()) text = step.arguments[0];
    const int number = step.arguments.size() < 2 ? 0 : static_cast<int>(LenientNumber(step.arguments[1]));
    mDialogs.Queue({Kind, std::move(text), step.line, number});
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

void JournalPlayer::DoRefusalCheck(const JournalStep& step) {
    const std::optional<std::string> found = mWorld.takeRefusal();
    if (!found) FailStep(step, Quoted(step.arguments[0]), "no refusal");
    if (*found != step.arguments[0]) FailStep(step, Quoted(step.arguments[0]), Quoted(*found));
}

void JournalPlayer::DoFormCheck(const JournalStep& step) {
    const std::string found = mOpenForms.empty() ? "no form" : "the form " + mOpenForms.back()->Name();
    if (step.kind == StepKind::ExpectNoForm) {
        if (!mOpenForms.empty()) FailStep(step, "no form", found);
        return;
    }
    if (mOpenForms.empty() || !EqualsIgnoreCase(mOpenForms.back()->Name(), step.arguments[0]))
        FailStep(step, "the form " + step.arguments[0], found);
}

void JournalPlayer::CheckTopForm(const JournalStep& step) { CheckForm(step, TopForm(step)); }

void JournalPlayer::PrintFromTopForm(const JournalStep& step) {
    PrintFromForm(step, TopForm(step), *mWorld.output);
}

void JournalPlayer::CheckOutsideForms(const JournalStep& step) { CheckWorld(step, mWorld); }

void JournalPlayer::PrintFromOutsideForms(const JournalStep& step) { PrintFromWorld(step, mWorld); }

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
