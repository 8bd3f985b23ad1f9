// A question waiting on the command line. A command co_awaits it: made with its prompt, it takes typed
// answers until one settles it, reports what is wrong with the others, and returns what was meant.
#pragma once

#include <coroutine>
#include <optional>
#include <string>
#include <string_view>

#include "session/ports/host_interface.h"

namespace brenvik {

class CommandSession;

/// What a question takes from somebody who points instead of typing.
enum class PointedAt { Nothing, Point, Objects };

class Question {
  public:
    explicit Question(CommandSession& session) : mSession(&session) {}
    virtual ~Question() = default;
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    /// The text that asks, without a blank at its end.
    virtual std::string Prompt() const = 0;
    /// True if the answer settles the question. A wrong one is reported on the command line.
    virtual bool Take(const std::string& answer) = 0;
    virtual PointedAt ByPointing() const { return PointedAt::Nothing; }
    /// True where a blank behind what is typed so far belongs to the answer and doesn't end it.
    virtual bool BlankBelongsTo(std::string_view) const { return false; }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiter);

  protected:
    CommandSession& Session() const { return *mSession; }

  private:
    CommandSession* mSession;
};

/// Whether a question may be answered with a return alone.
enum class IfEmpty { Refused, Allowed };

/// A value, a keyword, or neither of them.
template <class Value>
struct Answered {
    std::optional<Value> value;
    std::string keyword;

    bool Empty() const { return !value && keyword.empty(); }
    bool Is(std::string_view which) const { return keyword == which; }
    Value Or(const Value& other) const { return value ? *value : other; }
};

/// A question for one value or one of some keywords (written as in MatchKeyword).
template <class Value>
class ValueQuestion : public Question {
  public:
    ValueQuestion(CommandSession& session, std::string_view prompt, std::string_view keywords, IfEmpty empty)
        : Question(session), mPrompt(prompt), mKeywords(keywords), mEmpty(empty) {}
    std::string Prompt() const override { return mPrompt; }
    bool Take(const std::string& answer) override;
    Answered<Value> await_resume() const { return mAnswered; }

  protected:
    virtual std::optional<Value> Parse(const std::string& answer) = 0;
    /// What the value should have been, as in "a point (x,y or x,y,z)".
    virtual std::string Wanted() const = 0;

  private:
    std::string mPrompt;
    std::string mKeywords;
    IfEmpty mEmpty;
    Answered<Value> mAnswered;
};

/// World coordinates. The answer becomes the last point.
class PointQuestion final : public ValueQuestion<Point3> {
  public:
    using ValueQuestion::ValueQuestion;
    PointedAt ByPointing() const override { return PointedAt::Point; }

  private:
    std::optional<Point3> Parse(const std::string& answer) override;
    std::string Wanted() const override;
};

/// A number, a point measured from a base, or two points where there is no base.
class DistanceQuestion final : public ValueQuestion<double> {
  public:
    DistanceQuestion(CommandSession& session, std::string_view prompt, std::string_view keywords,
                     IfEmpty empty, std::optional<Point3> base)
        : ValueQuestion(session, prompt, keywords, empty), mBase(base) {}
    std::string Prompt() const override;
    bool Take(const std::string& answer) override;
    PointedAt ByPointing() const override { return PointedAt::Point; }

  private:
    std::optional<double> Parse(const std::string& answer) override;
    std::string Wanted() const override;

    std::optional<Point3> mBase;
    bool mBasePicked = false;
};

/// Radians from degrees, or from a point seen from a base in the plane of the user system.
class AngleQuestion final : public ValueQuestion<double> {
  public:
    AngleQuestion(CommandSession& session, std::string_view prompt, std::string_view keywords, IfEmpty empty,
                  std::optional<Point3> base)
        : ValueQuestion(session, prompt, keywords, empty), mBase(base) {}
    PointedAt ByPointing() const override { return mBase ? PointedAt::Point : PointedAt::Nothing; }

  private:
    std::optional<double> Parse(const std::string& answer) override;
    std::string Wanted() const override;

    std::optional<Point3> mBase;
};

/// Any number.
class NumberQuestion final : public ValueQuestion<double> {
  public:
    using ValueQuestion::ValueQuestion;

  private:
    std::optional<double> Parse(const std::string& answer) override;
    std::string Wanted() const override;
};

/// Keywords alone.
class KeywordQuestion final : public ValueQuestion<std::string> {
  public:
    using ValueQuestion::ValueQuestion;

  private:
    std::optional<std::string> Parse(const std::string&) override { return std::nullopt; }
    std::string Wanted() const override { return "an option"; }
};

/// A name or other text. In double quotes it may hold blanks.
class TextQuestion final : public ValueQuestion<std::string> {
  public:
    using ValueQuestion::ValueQuestion;

  private:
    std::optional<std::string> Parse(const std::string& answer) override;
    std::string Wanted() const override { return "a text"; }
};

}  // namespace brenvik
