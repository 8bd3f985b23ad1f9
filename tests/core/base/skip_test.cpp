// Resuming at the next statement: failures end one statement, defects end everything.
#include "base/skip.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace brenvik {
namespace {

TEST(Skip, RunsTheStatementAndTellsThatItSucceeded) {
    int runs = 0;
    EXPECT_TRUE(Skip([&] { ++runs; }));
    EXPECT_EQ(runs, 1);
}

TEST(Skip, SwallowsAFailureAndTheSequenceGoesOn) {
    std::vector<int> reached;
    const bool first = Skip([&] {
        reached.push_back(1);
        throw PathNotFound("_db");
        reached.push_back(2);
    });
    const bool second = Skip([&] { reached.push_back(3); });
    EXPECT_FALSE(first);
    EXPECT_TRUE(second);
    EXPECT_EQ(reached, (std::vector<int>{1, 3}));
}

TEST(Skip, LetsDefectsPass) {
    EXPECT_THROW(Skip([] { throw std::logic_error("defect"); }), std::logic_error);
    EXPECT_THROW(Skip([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(Skip([] { throw 7; }), int);
}

TEST(Skip, IgnoresTheValueOfTheStatement) {
    EXPECT_TRUE(Skip([] { return false; }));
}

TEST(Skip, KeepsWhatWasAssignedBeforeTheStatement) {
    double value = 18;
    const auto conversion = []() -> double { throw TypeMismatch(); };
    Skip([&] { value = conversion(); });
    EXPECT_EQ(value, 18);
}

TEST(Attempt, GivesTheFailure) {
    const auto failure = Attempt([] { throw Failure(3705, "Connection", "Operation is not allowed"); });
    ASSERT_TRUE(failure.has_value());
    EXPECT_EQ(failure->number(), 3705);
    EXPECT_EQ(failure->source(), "Connection");
    EXPECT_EQ(failure->description(), "Operation is not allowed");
}

TEST(Attempt, GivesNothingOnSuccessAndLetsDefectsPass) {
    EXPECT_FALSE(Attempt([] {}).has_value());
    EXPECT_THROW((void)Attempt([] { throw std::logic_error("defect"); }), std::logic_error);
}

TEST(ShowAndResume, ShowsTheFailureBeforeItReturns) {
    std::vector<std::string> steps;
    const auto show = [&](const Failure& failure) { steps.push_back("box: " + failure.description()); };
    EXPECT_FALSE(ShowAndResume(show, [] { throw Overflow(); }));
    steps.push_back("next statement");
    EXPECT_EQ(steps, (std::vector<std::string>{"box: Overflow", "next statement"}));
}

TEST(ShowAndResume, ShowsNothingOnSuccess) {
    bool shown = false;
    EXPECT_TRUE(ShowAndResume([&](const Failure&) { shown = true; }, [] {}));
    EXPECT_FALSE(shown);
}

TEST(ShowAndResume, DoesNotSwallowWhatTheBoxThrows) {
    EXPECT_THROW(ShowAndResume([](const Failure&) { throw ObjectNotSet(); }, [] { throw Overflow(); }),
                 Failure);
    EXPECT_THROW(ShowAndResume([](const Failure&) {}, [] { throw std::logic_error("defect"); }),
                 std::logic_error);
}

}  // namespace
}  // namespace brenvik
