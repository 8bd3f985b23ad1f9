// How answers to "Select objects:" find objects.
#include "drafting_host/command/session/selection_question.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <utility>

#include "base/handle_text.h"
#include "base/letter_case.h"
#include "base/text.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/group_names.h"
#include "drafting_host/command/session/picking.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

constexpr std::string_view Words = "ALL Previous Last Window Crossing BOX Group Remove Add Undo";

/// The handle in (handent "2A"), the form in which scripts name an object; quotes may be missing.
std::optional<HandleValue> HandleFromCall(const std::string& answer) {
    constexpr std::string_view call = "(handent";
    if (!StartsWithIgnoreCase(answer, call) || !answer.ends_with(')')) return std::nullopt;
    return HandleFromText(Unquoted(Trim(answer.substr(call.size(), answer.size() - call.size() - 1))));
}

bool OnThawedLayer(const HostEntity& entity) { return !entity.LayerObject().Values().frozen; }

}  // namespace

SelectionQuestion::SelectionQuestion(CommandSession& session, SelectFor purpose, std::string_view prompt,
                                     SelectFirst first)
    : Question(session), mPurpose(purpose), mPrompt(prompt) {
    if (first == SelectFirst::Objects) return;
    mWants = Wants::FirstCorner;
    mTakes = Takes::Meeting;
    mMayChooseOtherwise = true;
}

std::string SelectionQuestion::Prompt() const {
    switch (mWants) {
        case Wants::Objects:
            return mRemoving ? "Remove objects:" : mPrompt;
        case Wants::FirstCorner:
            return "First corner:";
        case Wants::OtherCorner:
            return "Opposite corner:";
        case Wants::GroupName:
            return "Enter group name:";
    }
    return mPrompt;
}

PointedAt SelectionQuestion::ByPointing() const {
    switch (mWants) {
        case Wants::Objects:
            return PointedAt::Objects;
        case Wants::FirstCorner:
        case Wants::OtherCorner:
            return PointedAt::Point;
        case Wants::GroupName:
            return PointedAt::Nothing;
    }
    return PointedAt::Nothing;
}

bool SelectionQuestion::Take(const std::string& answer) {
    if (mWants == Wants::GroupName) return TakeGroup(answer);
    if (std::exchange(mMayChooseOtherwise, false) && !Session().PointFrom(answer)) mWants = Wants::Objects;
    if (mWants != Wants::Objects) return TakeCorner(answer);
    if (answer.empty()) return Finish();
    if (answer.starts_with('(')) {
        const std::optional<HandleValue> handle = HandleFromCall(answer);
        HostEntity* entity = handle ? Session().Document().FindEntity(*handle) : nullptr;
        if (entity == nullptr)
            Session().Refuse("No object has the handle that " + answer + " names.");
        else
            Put({entity});
        return false;
    }
    if (const std::string word = MatchKeyword(Words, answer); !word.empty()) {
        TakeWord(word);
    } else if (const std::optional<Point3> point = Session().PointFrom(answer)) {
        Session().SetLastPoint(*point);
        TakeAt(*point);
    } else {
        Session().Refuse("\"" + answer +
                         "\" selects nothing: a point or "
                         "Window/Crossing/BOX/Group/ALL/Previous/Last/Add/Remove/Undo is expected.");
    }
    return false;
}

bool SelectionQuestion::Finish() {
    std::erase_if(mChosen, [](const HostEntity* entity) { return entity->Erased(); });
    if (!mChosen.empty()) Session().Document().SetPreviousSelection(mChosen);
    return true;
}

bool SelectionQuestion::TakeCorner(const std::string& answer) {
    const std::optional<Point3> point = Session().PointFrom(answer);
    if (!point) {
        Session().Refuse("\"" + answer + "\" is no corner: a point as x,y or x,y,z is expected.");
        return false;
    }
    Session().SetLastPoint(*point);
    if (mWants == Wants::FirstCorner) {
        mCorner = *point;
        mWants = Wants::OtherCorner;
    } else {
        mWants = Wants::Objects;
        const bool crosses = Crosses(*point);
        if (crosses && !mRemoving)
            mCrossing.push_back({mCorner, *point, Session().ViewDirection(), Session().ViewUp()});
        Put(EntitiesInWindow(Session(), mCorner, *point, crosses));
    }
    return false;
}

bool SelectionQuestion::Crosses(const Point3& opposite) const {
    switch (mTakes) {
        case Takes::Within:
            return false;
        case Takes::Meeting:
            return true;
        case Takes::BySide:
            break;
    }
    const Point3 toTheRight = Cross(Session().ViewUp(), Session().ViewDirection());
    return Dot(opposite - mCorner, toTheRight) < 0;
}

bool SelectionQuestion::BlankBelongsTo(std::string_view typed) const {
    return mWants == Wants::GroupName && GroupNameGoesOn(Session().Document(), typed);
}

bool SelectionQuestion::TakeGroup(const std::string& name) {
    mWants = Wants::Objects;
    if (name.empty()) return false;
    const HostGroup* group = Session().Document().GroupTable().Find(Unquoted(name));
    if (group == nullptr) {
        Session().Refuse("The drawing has no group \"" + Unquoted(name) + "\".");
    } else {
        const auto members = group->Members();
        Put({members.begin(), members.end()});
    }
    return false;
}

void SelectionQuestion::TakeWord(const std::string& word) {
    HostDocument& document = Session().Document();
    if (word == "ALL") {
        const auto entities = document.CurrentSpace().Entities();
        Put({entities.begin(), entities.end()}, true);
    } else if (word == "Previous") {
        const auto entities = document.PreviousSelection();
        if (entities.empty()) Session().Refuse("There is no previous selection.");
        Put({entities.begin(), entities.end()});
    } else if (word == "Last") {
        const auto entities = document.CurrentSpace().Entities();
        const auto last = std::find_if(entities.rbegin(), entities.rend(), [](const HostEntity* entity) {
            return entity->Look().visible && OnThawedLayer(*entity);
        });
        if (last != entities.rend()) Put({*last});
    } else if (word == "Window" || word == "Crossing" || word == "BOX") {
        mTakes = word == "Window" ? Takes::Within : word == "Crossing" ? Takes::Meeting : Takes::BySide;
        mWants = Wants::FirstCorner;
    } else if (word == "Group") {
        mWants = Wants::GroupName;
    } else if (word == "Remove" || word == "Add") {
        mRemoving = word == "Remove";
    } else if (!mBefore.empty()) {
        mChosen = std::move(mBefore.back());
        mBefore.pop_back();
    }
}

void SelectionQuestion::TakeAt(const Point3& point) {
    HostEntity* entity = EntityAt(Session(), point);
    if (entity == nullptr)
        Session().Refuse("No object lies there.");
    else
        Put({entity});
}

bool SelectionQuestion::TakesPart(const HostEntity& entity) const {
    return &entity.Owner() == &Session().Document().CurrentSpace();
}

void SelectionQuestion::Put(std::vector<HostEntity*> found, bool everything) {
    std::erase_if(found, [&](const HostEntity* entity) {
        if (!TakesPart(*entity)) return true;
        return everything && (!entity->Look().visible || !OnThawedLayer(*entity));
    });
    const std::size_t seen = found.size();
    if (everything || mPurpose == SelectFor::Changing)
        std::erase_if(found, [](const HostEntity* entity) { return entity->LayerObject().Locked(); });
    const std::size_t locked = seen - found.size();
    mBefore.push_back(mChosen);
    if (mRemoving) {
        const std::unordered_set<HostEntity*> leaving(found.begin(), found.end());
        std::erase_if(mChosen, [&](HostEntity* entity) { return leaving.contains(entity); });
    } else {
        std::unordered_set<HostEntity*> held(mChosen.begin(), mChosen.end());
        std::ranges::copy_if(found, std::back_inserter(mChosen),
                             [&](HostEntity* entity) { return held.insert(entity).second; });
    }
    std::string told = std::to_string(seen) + " found, " + std::to_string(mChosen.size()) + " in all";
    if (locked > 0) told += "; " + std::to_string(locked) + " on a locked layer";
    // Out of reach of "all" is meant so; what was named by itself was wanted.
    if (locked > 0 && !everything)
        Session().Refuse(told + ".");
    else
        Session().Tell(told + ".");
}

std::vector<HostEntity*> SelectionQuestion::await_resume() const { return mChosen; }

}  // namespace brenvik
