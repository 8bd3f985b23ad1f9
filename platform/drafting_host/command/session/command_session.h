// The command line of one document: cuts typed text into answers, keeps the commands that wait for more, and
// gives those commands their questions, their output and what they look up.
#pragma once

#include <coroutine>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/failure.h"
#include "drafting_host/command/session/asking.h"
#include "drafting_host/command/session/command_table.h"
#include "drafting_host/command/session/question.h"
#include "drafting_host/command/session/selection_question.h"
#include "drafting_host/document/host_document.h"

namespace brenvik {

class HostCommandLine;
struct HostVariable;

/// A user coordinate system, in world coordinates.
struct UcsFrame {
    Point3 origin, xAxis{1, 0, 0}, yAxis{0, 1, 0};
};

class CommandSession {
  public:
    CommandSession(HostCommandLine& line, HostDocument& document);
    ~CommandSession();
    CommandSession(const CommandSession&) = delete;
    CommandSession& operator=(const CommandSession&) = delete;

    /// Takes text as it comes. May be called again from a command of Brenvik.
    void Type(std::string_view text);
    std::string Prompt() const;
    bool Busy() const { return !mRunning.empty(); }
    /// What the open question takes from somebody who points.
    PointedAt ByPointing() const;
    /// The point given last since the outermost open command began, or null.
    std::optional<Point3> BasePoint() const;
    const std::string& NotEntered() const { return mTyped; }

    // For commands: the drawing and its ways of speaking.

    HostDocument& Document() const { return mDocument; }
    HostCommandLine& Line() const { return mLine; }
    void Tell(std::string_view line) const;  ///< Writes a line to the host's transcript.
    /// Reports a refusal of something typed, or of something that it asked for: an unknown word, an answer
    /// that doesn't fit, an object out of reach.
    void Refuse(std::string_view line) const;

    PointQuestion AskPoint(std::string_view prompt, std::string_view keywords = {},
                           IfEmpty empty = IfEmpty::Refused) {
        return {*this, prompt, keywords, empty};
    }
    DistanceQuestion AskDistance(std::string_view prompt, std::string_view keywords = {},
                                 IfEmpty empty = IfEmpty::Refused, std::optional<Point3> base = {}) {
        return {*this, prompt, keywords, empty, base};
    }
    AngleQuestion AskAngle(std::string_view prompt, std::string_view keywords = {},
                           IfEmpty empty = IfEmpty::Refused, std::optional<Point3> base = {}) {
        return {*this, prompt, keywords, empty, base};
    }
    NumberQuestion AskNumber(std::string_view prompt, std::string_view keywords = {},
                             IfEmpty empty = IfEmpty::Refused) {
        return {*this, prompt, keywords, empty};
    }
    KeywordQuestion AskKeyword(std::string_view prompt, std::string_view keywords,
                               IfEmpty empty = IfEmpty::Refused) {
        return {*this, prompt, keywords, empty};
    }
    TextQuestion AskText(std::string_view prompt, IfEmpty empty = IfEmpty::Refused) {
        return {*this, prompt, {}, empty};
    }
    SelectionQuestion AskSelection(SelectFor purpose, std::string_view prompt = "Select objects:",
                                   SelectFirst first = SelectFirst::Objects) {
        return {*this, purpose, prompt, first};
    }

    Similarity UcsToWorld() const { return mDocument.UcsToWorld(); }
    /// Changes the user system and remembers the one before. With UCSFOLLOW at 1 the view turns to its plan.
    void ChangeUcs(const UcsFrame& frame);
    /// Goes back to the user system before; false where there is none.
    bool PreviousUcs();
    UcsFrame CurrentUcs() const;
    /// World coordinates of a typed point, or null.
    std::optional<Point3> PointFrom(std::string_view answer) const;
    void SetLastPoint(const Point3& point) {
        mLastPoint = point;
        mPointGiven = true;
    }
    /// What relative points start from, for commands whose own points are none of the drawing's.
    struct PointBefore {
        Point3 point;
        bool given = false;
    };
    PointBefore LastPoint() const { return {mLastPoint, mPointGiven}; }
    void PutBack(const PointBefore& before) {
        mLastPoint = before.point;
        mPointGiven = before.given;
    }
    /// The present view: the viewport that was entered, or the view of model space. A sheet is always seen
    /// from above.
    ViewportData CurrentView() const;
    /// On the sheet itself nothing changes. Fails for a viewport on a locked layer, and for one whose view
    /// MVIEW has locked.
    void ChangeView(const ViewportData& view);
    /// From the drawing towards the eye, a unit vector; and the view's upward direction.
    Point3 ViewDirection() const;
    Point3 ViewUp() const;
    void SetView(const Point3& direction, const Point3& up);
    /// The sheet itself is worked on: paper space, and no viewport entered.
    bool OnSheet() const;
    /// Solids that the running command has changed: the previous selection at its end.
    void NoteChanged(HostEntity& entity);

    // For questions.

    void Wait(Question& question, std::coroutine_handle<> waiter);  ///< Prompts; resumed by the answer.

  private:
    struct Running {
        const HostCommand* command = nullptr;
        std::optional<Asking<void>> body;
        Question* question = nullptr;
        std::coroutine_handle<> waiter;
    };

    void TypeCharacter(char c);
    bool BlankBelongs() const;
    void EndAnswer();
    void Answer(const std::string& answer);
    /// A command typed with "'" within another one; false where nothing is called so: names may begin with
    /// the mark.
    bool StartTransparent(const std::string& answer);
    void StartNamed(const std::string& typed);
    void RunProduct(const std::function<void()>& run);
    void Start(const HostCommand& command);
    void StartVariable(const HostVariable& variable);
    void Open(const HostCommand& command, Asking<void> body);
    void Settle();
    void Cancel();
    void TellFailure(const Failure& failure) const;
    void FollowUcs();

    HostCommandLine& mLine;
    HostDocument& mDocument;
    std::vector<std::unique_ptr<Running>> mRunning;
    std::vector<HostEntity*> mChanged;
    std::vector<UcsFrame> mUcsHistory;
    Point3 mLastPoint;
    ViewportData mModelView;
    std::string mTyped;
    bool mAfterReturn = false;
    /// Since the outermost open command began.
    bool mPointGiven = false;
};

}  // namespace brenvik
