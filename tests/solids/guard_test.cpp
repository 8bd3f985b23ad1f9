// What the modeller raises, as failures of ours.
#include "drafting_host/solids/guard.h"

#include <gtest/gtest.h>

#include <Standard_ConstructionError.hxx>

#include "base/failure.h"

namespace brenvik::solids {
namespace {

template <class Raise>
std::string DetailOf(Raise&& raise) {
    try {
        Guarded("cutting the solid", raise);
    } catch (const Failure& failure) {
        return failure.detail();
    }
    return "nothing was raised";
}

TEST(Guard, WantOfMemoryIsToldAsThat) {
    const std::string told = "cutting the solid: there is not enough memory for it";
    EXPECT_EQ(DetailOf([]() -> int { throw std::bad_alloc(); }), told);
    EXPECT_EQ(DetailOf([]() -> int { throw Standard_OutOfMemory("of 3 GB"); }), told);
}

TEST(Guard, WhatTheModellerRaisesHasItsNameAndItsText) {
    EXPECT_EQ(DetailOf([]() -> int { throw Standard_ConstructionError("no plane"); }),
              "cutting the solid: Standard_ConstructionError, no plane");
    EXPECT_EQ(DetailOf([]() -> int { throw std::length_error("too long"); }), "cutting the solid: too long");
}

}  // namespace
}  // namespace brenvik::solids
