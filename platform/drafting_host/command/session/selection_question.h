// "Select objects:" as a question that takes answers until an empty one closes it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "drafting_host/command/session/question.h"

namespace brenvik {

class HostEntity;

/// Changing: objects on locked layers stay out. Looking: only "all" passes them over.
enum class SelectFor { Changing, Looking };

/// What an answer means at first: objects, or the corner of a window that takes what it meets. There a word
/// or an empty answer goes on to the former.
enum class SelectFirst { Objects, Crossing };

/// Two corners of a window, world coordinates, in the view of that moment.
struct SelectionWindow {
    Point3 corner, opposite;
    Point3 towardsEye, up;
};

/// Answers: all, previous, last, a point (what lies under it), window, crossing and box with two corners, a
/// group by its name, remove and add, undo, and (handent "2A") for a handle. The objects come in the order in
/// which they were taken, each once; a selection that holds something becomes the previous one.
class SelectionQuestion final : public Question {
  public:
    SelectionQuestion(CommandSession& session, SelectFor purpose, std::string_view prompt,
                      SelectFirst first = SelectFirst::Objects);

    std::string Prompt() const override;
    bool Take(const std::string& answer) override;
    PointedAt ByPointing() const override;
    bool BlankBelongsTo(std::string_view typed) const override;
    /// Living objects.
    std::vector<HostEntity*> await_resume() const;
    /// The windows that have taken what they met, each given to add objects.
    const std::vector<SelectionWindow>& CrossingWindows() const { return mCrossing; }

  private:
    enum class Wants { Objects, FirstCorner, OtherCorner, GroupName };
    /// What a window takes: what lies within it, what it meets as well, or either by where its second corner
    /// lies.
    enum class Takes { Within, Meeting, BySide };

    bool Finish();
    bool TakeCorner(const std::string& answer);
    bool TakeGroup(const std::string& name);
    bool Crosses(const Point3& opposite) const;
    void TakeWord(const std::string& word);
    void TakeAt(const Point3& point);
    void Put(std::vector<HostEntity*> found, bool everything = false);
    bool TakesPart(const HostEntity& entity) const;

    SelectFor mPurpose;
    std::string mPrompt;
    Wants mWants = Wants::Objects;
    Takes mTakes = Takes::Within;
    bool mRemoving = false;
    /// The first corner is only proposed: anything else answers "Select objects:".
    bool mMayChooseOtherwise = false;
    Point3 mCorner;
    std::vector<SelectionWindow> mCrossing;
    std::vector<HostEntity*> mChosen;
    std::vector<std::vector<HostEntity*>> mBefore;
};

}  // namespace brenvik
