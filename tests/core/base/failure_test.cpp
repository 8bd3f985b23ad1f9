// The failure value: what a message box shows of it, and the table of the usual ones.
#include "base/failure.h"

#include <gtest/gtest.h>

#include <exception>

namespace brenvik {
namespace {

TEST(Failure, CarriesNumberSourceAndDescription) {
    const Failure failure(-2147217900, "Part table", "near \"Side\": syntax error");
    EXPECT_EQ(failure.number(), -2147217900);
    EXPECT_EQ(failure.source(), "Part table");
    EXPECT_EQ(failure.description(), "near \"Side\": syntax error");
    EXPECT_EQ(failure.detail(), "");
    EXPECT_STREQ(failure.what(), "near \"Side\": syntax error");
}

TEST(Failure, WhatJoinsDescriptionAndDetail) {
    const Failure failure = FileNotFound("jobs/kitchen.dxf");
    EXPECT_EQ(failure.description(), "File not found");
    EXPECT_EQ(failure.detail(), "jobs/kitchen.dxf");
    EXPECT_STREQ(failure.what(), "File not found: jobs/kitchen.dxf");
}

TEST(Failure, IsCaughtAsAStandardException) {
    try {
        throw TypeMismatch();
    } catch (const std::exception& caught) {
        EXPECT_STREQ(caught.what(), "Type mismatch");
        return;
    }
    FAIL() << "nothing was caught";
}

TEST(Failure, TheUsualOnesHaveTheirNumbersAndDescriptions) {
    const struct {
        Failure failure;
        long number;
        const char* description;
    } cases[] = {
        {InvalidCall(), 5, "Invalid procedure call or argument"},
        {Overflow(), 6, "Overflow"},
        {SubscriptOutOfRange(), 9, "Subscript out of range"},
        {DivisionByZero(), 11, "Division by zero"},
        {TypeMismatch(), 13, "Type mismatch"},
        {BadFileName(), 52, "Bad file name or number"},
        {FileNotFound(), 53, "File not found"},
        {DiskFull(), 61, "Disk full"},
        {InputPastEnd(), 62, "Input past end of file"},
        {PermissionDenied(), 70, "Permission denied"},
        {PathAccess(), 75, "Path/File access error"},
        {PathNotFound(), 76, "Path not found"},
        {ObjectNotSet(), 91, "Object variable not set"},
        {InvalidNull(), 94, "Invalid use of Null"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.failure.number(), c.number) << c.description;
        EXPECT_EQ(c.failure.description(), c.description);
        EXPECT_EQ(c.failure.source(), "Brenvik") << c.description;
    }
}

}  // namespace
}  // namespace brenvik
