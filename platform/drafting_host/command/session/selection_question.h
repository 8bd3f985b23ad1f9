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

/// Answers: all, previous, last, a point (what lies under it), window, crossing and box with two corners, a
/// group by its name, remove and add, undo, and (handent "2A") for a handle. The objects come in the order in
/// which they were taken, each once; a selection that holds something becomes the previous one.
class SelectionQuestion final : public Question {
  public:
    SelectionQuestion(CommandSession& session, SelectFor purpose, std::string_view prompt);

    std::string Prompt() const override;
    bool Take(const std::string& answer) override;
    PointedAt ByPointing() const override;
    bool BlankBelongsTo(std::string_view typed) const override;
    /// Living objects.
    std::vector<HostEntity*> await_resume() const;

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
    Point3 mCorner;
    std::vector<HostEntity*> mChosen;
    std::vector<std::vector<HostEntity*>> mBefore;
};

}  // namespace brenvik
