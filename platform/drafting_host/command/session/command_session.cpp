// From characters to answers, from answers to commands.
#include "drafting_host/command/session/command_session.h"

#include <algorithm>

#include "base/failure.h"
#include "base/letter_case.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/host_command_line.h"
#include "drafting_host/command/session/variables.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/drawing_history.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_application.h"

namespace brenvik {

using namespace vectors;

namespace {

constexpr char Escape = '\x1b';

/// The bare name: "_" and "." ask for the host's own, untranslated command, which is the only one here.
std::string_view BareName(std::string_view typed) {
    while (!typed.empty() && (typed.front() == '_' || typed.front() == '.' || typed.front() == '\''))
        typed.remove_prefix(1);
    return typed;
}

}  // namespace

CommandSession::CommandSession(HostCommandLine& line, HostDocument& document)
    : mLine(line), mDocument(document) {}

CommandSession::~CommandSession() {
    // The one that was opened last is closed first.
    while (!mRunning.empty()) mRunning.pop_back();
}

void CommandSession::Tell(std::string_view line) const { mLine.Host().Tell(line); }

void CommandSession::Refuse(std::string_view line) const { mLine.Host().TellRefusal(line); }

void CommandSession::TellFailure(const Failure& failure) const {
    const std::string& detail = failure.detail();
    Refuse(failure.description() + (detail.empty() ? "" : " (" + detail + ")"));
}

std::string CommandSession::Prompt() const {
    if (mRunning.empty()) return "Command:";
    const Question* question = mRunning.back()->question;
    return question == nullptr ? std::string() : question->Prompt();
}

PointedAt CommandSession::ByPointing() const {
    const Question* question = mRunning.empty() ? nullptr : mRunning.back()->question;
    return question == nullptr ? PointedAt::Nothing : question->ByPointing();
}

std::optional<Point3> CommandSession::BasePoint() const {
    return Busy() && mPointGiven ? std::optional(mLastPoint) : std::nullopt;
}

void CommandSession::Type(std::string_view text) {
    if (Busy() && mRunning.back()->question == nullptr)
        throw host_failure::NotPossible("typing while a command is at work");
    // The text may be one that a command is about to change, such as a layer's name.
    const std::string kept(text);
    for (const char c : kept) {
        if (mDocument.Closed()) return;
        TypeCharacter(c);
    }
}

void CommandSession::TypeCharacter(char c) {
    const bool pairOfReturn = c == '\n' && mAfterReturn;
    mAfterReturn = c == '\r';
    if (pairOfReturn) return;
    if (c == Escape)
        Cancel();
    else if (c == '\r' || c == '\n' || (c == ' ' && !BlankBelongs()))
        EndAnswer();
    else if (c == ' ' || static_cast<unsigned char>(c) > ' ')
        mTyped += c;
}

bool CommandSession::BlankBelongs() const {
    if (!mRunning.empty() && mRunning.back()->question->BlankBelongsTo(mTyped)) return true;
    if (mTyped.starts_with('"')) return mTyped.size() == 1 || mTyped.back() != '"';
    if (!mTyped.starts_with('(')) return false;
    return std::ranges::count(mTyped, '(') > std::ranges::count(mTyped, ')');
}

void CommandSession::EndAnswer() {
    const std::string answer = std::exchange(mTyped, {});
    if (!mRunning.empty()) {
        Answer(answer);
    } else if (!answer.empty()) {
        Tell("Command: " + answer);
        StartNamed(answer);
    }
}

void CommandSession::StartNamed(const std::string& typed) {
    const std::string_view name = BareName(typed);
    if (const HostCommand* command = mLine.FindHostCommand(name)) {
        Start(*command);
    } else if (const std::function<void()>* run = mLine.FindProductCommand(name)) {
        const OneStep step(&mDocument, FoldUpper(name));
        // A copy: the function may register commands.
        RunProduct(std::function<void()>(*run));
    } else if (const HostVariable* variable = FindHostVariable(name)) {
        StartVariable(*variable);
    } else {
        Refuse("Unknown command \"" + FoldUpper(name) + "\".");
    }
}

void CommandSession::RunProduct(const std::function<void()>& run) {
    try {
        run();
    } catch (const Failure& failure) {
        TellFailure(failure);
    }
}

void CommandSession::Start(const HostCommand& command) { Open(command, command.run(*this)); }

void CommandSession::StartVariable(const HostVariable& variable) {
    static constexpr HostCommand setting{"SETVAR", "", nullptr, true};
    Open(setting, AskVariable(*this, variable));
}

void CommandSession::Open(const HostCommand& command, Asking<void> body) {
    if (mRunning.empty()) mPointGiven = false;
    mRunning.push_back(std::make_unique<Running>());
    Running& running = *mRunning.back();
    running.command = &command;
    running.body.emplace(std::move(body));
    running.body->Start();
    Settle();
}

void CommandSession::Wait(Question& question, std::coroutine_handle<> waiter) {
    mRunning.back()->question = &question;
    mRunning.back()->waiter = waiter;
}

void CommandSession::Answer(const std::string& answer) {
    Running& running = *mRunning.back();
    Tell(running.question->Prompt() + (answer.empty() ? "" : " " + answer));
    if (answer.starts_with('\'') && StartTransparent(answer)) return;
    try {
        if (!running.question->Take(answer)) return;
    } catch (const Failure& failure) {
        TellFailure(failure);
        return;
    }
    running.question = nullptr;
    running.waiter.resume();
    Settle();
}

bool CommandSession::StartTransparent(const std::string& answer) {
    const std::string_view name = BareName(answer);
    const HostCommand* command = mLine.FindHostCommand(name);
    if (command != nullptr && command->transparent)
        Start(*command);
    else if (const HostVariable* variable = FindHostVariable(name))
        StartVariable(*variable);
    else if (command != nullptr)
        Refuse(std::string(command->name) + " can't be used within another command.");
    else
        return false;
    return true;
}

void CommandSession::Settle() {
    if (!mRunning.back()->body->Done()) return;
    const std::unique_ptr<Running> ended = std::move(mRunning.back());
    mRunning.pop_back();
    const OneStep step(mRunning.empty() ? &mDocument : nullptr, std::string(ended->command->name));
    try {
        ended->body->Take();
    } catch (const Failure& failure) {
        TellFailure(failure);
    }
    if (!ended->command->tellsItsEnd) {
        // Nor does a later command tell of it.
        if (mRunning.empty()) mChanged.clear();
        return;
    }
    if (mChanged.empty()) return;
    std::vector<HostEntity*> changed = std::exchange(mChanged, {});
    std::erase_if(changed, [](const HostEntity* entity) { return entity->Erased(); });
    mDocument.SetPreviousSelection(changed);
    const HostApplication::CommandEndedHandler handler = mLine.Host().CommandEnded();
    if (!handler || changed.empty()) return;
    try {
        handler(mDocument, ended->command->name);
    } catch (const Failure& failure) {
        TellFailure(failure);
    }
}

void CommandSession::Cancel() {
    mTyped.clear();
    if (mRunning.empty()) return;
    Tell(mRunning.back()->question->Prompt() + " *Cancelled*");
    // What it did until then stays, and can be taken back.
    const OneStep step(&mDocument, std::string(mRunning.front()->command->name));
    while (!mRunning.empty()) mRunning.pop_back();
    mChanged.clear();
}

UcsFrame CommandSession::CurrentUcs() const {
    const std::array<Point3, 3> ucs = mDocument.ActiveUCS();
    return {ucs[0], ucs[1], ucs[2]};
}

void CommandSession::ChangeUcs(const UcsFrame& frame) {
    constexpr std::size_t remembered = 10;
    const UcsFrame before = CurrentUcs();
    mDocument.SetActiveUcs(frame.origin, frame.xAxis, frame.yAxis);
    mUcsHistory.push_back(before);
    if (mUcsHistory.size() > remembered) mUcsHistory.erase(mUcsHistory.begin());
    FollowUcs();
}

bool CommandSession::PreviousUcs() {
    if (mUcsHistory.empty()) return false;
    const UcsFrame frame = mUcsHistory.back();
    mUcsHistory.pop_back();
    mDocument.SetActiveUcs(frame.origin, frame.xAxis, frame.yAxis);
    FollowUcs();
    return true;
}

void CommandSession::FollowUcs() {
    if (VariableNumber(*this, "UCSFOLLOW") != 1) return;
    const HostViewport* viewport = mDocument.CurrentViewport();
    const bool fixed = viewport != nullptr && (ViewLocked(*viewport) || viewport->LayerObject().Locked());
    if (fixed) return;
    const UcsFrame frame = CurrentUcs();
    SetView(Cross(frame.xAxis, frame.yAxis), frame.yAxis);
}

std::optional<Point3> CommandSession::PointFrom(std::string_view answer) const {
    const std::optional<TypedPoint> typed = ParsePoint(answer);
    if (!typed) return std::nullopt;
    Point3 value = typed->value;
    Point3 point;
    // The user system belongs to the model; a sheet is measured by its own axes.
    const Similarity toWorld = OnSheet() ? Similarity() : UcsToWorld();
    if (typed->relative) {
        point = mLastPoint + (typed->world ? value : toWorld.Vector(value));
    } else {
        if (typed->flat) value.z = VariableNumber(*this, "ELEVATION");
        point = typed->world ? value : toWorld.Point(value);
    }
    const bool within =
        std::max({std::abs(point.x), std::abs(point.y), std::abs(point.z)}) <= GreatestCoordinate;
    return within ? std::optional(point) : std::nullopt;
}

bool CommandSession::OnSheet() const {
    return mDocument.ActiveSpace() == ActiveSpaceKind::PaperSpace && mDocument.CurrentViewport() == nullptr;
}

ViewportData CommandSession::CurrentView() const {
    if (const HostViewport* viewport = mDocument.CurrentViewport()) return viewport->Values();
    return OnSheet() ? ViewportData() : mModelView;
}

void CommandSession::ChangeView(const ViewportData& view) {
    if (HostViewport* viewport = mDocument.CurrentViewport()) {
        if (ViewLocked(*viewport)) throw host_failure::NotPossible("the viewport is view-locked");
        viewport->SetValues(view);
    } else if (!OnSheet()) {
        mModelView = view;
    }
}

Point3 CommandSession::ViewDirection() const { return Unit(CurrentView().viewDirection); }
Point3 CommandSession::ViewUp() const { return UpOf(CurrentView()); }

void CommandSession::SetView(const Point3& direction, const Point3& up) {
    ViewportData view = CurrentView();
    view.viewDirection = Unit(direction);
    view.twist = TwistOf(view.viewDirection, up);
    ChangeView(view);
}

void CommandSession::NoteChanged(HostEntity& entity) {
    if (std::ranges::find(mChanged, &entity) == mChanged.end()) mChanged.push_back(&entity);
}

}  // namespace brenvik
