// How the questions read their answers.
#include "drafting_host/command/session/question.h"

#include "base/text.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

void Question::await_suspend(std::coroutine_handle<> waiter) { Session().Wait(*this, waiter); }

template <class Value>
bool ValueQuestion<Value>::Take(const std::string& answer) {
    if (answer.empty() && mEmpty == IfEmpty::Allowed) return true;
    mAnswered.keyword = MatchKeyword(mKeywords, answer);
    if (!mAnswered.keyword.empty()) return true;
    if (!answer.empty()) mAnswered.value = Parse(answer);
    if (mAnswered.value) return true;
    std::string told =
        answer.empty() ? "An answer is needed here: " : "\"" + answer + "\" is no answer here: ";
    told += Wanted();
    if (!mKeywords.empty()) told += " (" + Join(Split(mKeywords, ' '), "/") + ")";
    Session().Refuse(told + " is expected.");
    return false;
}

template class ValueQuestion<Point3>;
template class ValueQuestion<double>;
template class ValueQuestion<std::string>;

std::optional<Point3> PointQuestion::Parse(const std::string& answer) {
    const std::optional<Point3> point = Session().PointFrom(answer);
    if (point) Session().SetLastPoint(*point);
    return point;
}

std::string PointQuestion::Wanted() const { return "a point as x,y or x,y,z"; }

std::string DistanceQuestion::Prompt() const {
    return mBasePicked ? "Second point of the distance:" : ValueQuestion::Prompt();
}

bool DistanceQuestion::Take(const std::string& answer) {
    if (!mBase && !ParseLength(answer)) {
        if (const std::optional<Point3> first = Session().PointFrom(answer)) {
            Session().SetLastPoint(*first);
            mBase = first;
            mBasePicked = true;
            return false;
        }
    }
    return ValueQuestion::Take(answer);
}

std::optional<double> DistanceQuestion::Parse(const std::string& answer) {
    if (const std::optional<double> length = ParseLength(answer)) return length;
    const std::optional<Point3> point = mBase ? Session().PointFrom(answer) : std::nullopt;
    if (!point) return std::nullopt;
    const double distance = Distance(*mBase, *point);
    return distance <= GreatestCoordinate ? std::optional(distance) : std::nullopt;
}

std::string DistanceQuestion::Wanted() const { return "a distance or a point"; }

std::optional<double> AngleQuestion::Parse(const std::string& answer) {
    if (const std::optional<double> angle = ParseAngle(answer)) return angle;
    const std::optional<Point3> point = mBase ? Session().PointFrom(answer) : std::nullopt;
    if (!point) return std::nullopt;
    const Point3 along = Session().UcsToWorld().Inverse().Vector(*point - *mBase);
    if (along.x == 0 && along.y == 0) return std::nullopt;
    return std::atan2(along.y, along.x);
}

std::string AngleQuestion::Wanted() const { return "an angle in degrees"; }

std::optional<double> NumberQuestion::Parse(const std::string& answer) { return ParseLength(answer); }
std::string NumberQuestion::Wanted() const { return "a number"; }

std::optional<std::string> TextQuestion::Parse(const std::string& answer) { return Unquoted(answer); }

}  // namespace brenvik
