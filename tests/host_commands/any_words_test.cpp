// Words in any order, most of them wrong: nothing is thrown, nothing hangs, and the line stays usable.
#include <array>
#include <random>

#include "command_fixture.h"

namespace brenvik {
namespace {

constexpr auto words = std::to_array<const char*>({
    "box",        "cylinder",
    "wedge",      "union",
    "subtract",   "intersect",
    "slice",      "solidedit",
    "erase",      "move",
    "copy",       "rotate",
    "scale",      "select",
    "rotate3d",   "mirror3d",
    "ucs",        "-layer",
    "-view",      "-group",
    "snap",       "-group",
    "zoom",       "regen",
    "setvar",     "all",
    "all",        "all",
    "p",          "l",
    "",           "",
    "",           "",
    "0,0,0",      "10,20,30",
    "5,5",        "@1,2,3",
    "*7,7,7",     "-3,4,50",
    "@",          "90",
    "45",         "12.5",
    "-2",         "0",
    "x",          "y",
    "z",          "f",
    "b",          "m",
    "o",          "e",
    "c",          "r",
    "s",          "n",
    "w",          "yz",
    "xy",         "3",
    "v",          "u",
    "d",          "t",
    "lo",         "off",
    "0",          "Cases",
    "a|b",        "*",
    "?",          "red",
    "'osmode",    "'zoom",
    "osnapcoord", "clayer",
    "elevation",  "tilemode",
    "1",          "(handent \"100\")",
    "(handent",   "\"a",
    "nonsense",   "\x1b",
    "1e11,0",     "1e9,1e9,1e9",
    "33",         "explode",
    "pedit",      "align",
    "mview",      "mspace",
    "pspace",     "vplayer",
    "dview",      "solprof",
    "tilemode",   "cvport",
    "ucsfollow",  "ucsortho",
    "hide",       "ortho",
    "undo",       "u",
    "mview",      "mspace",
    "tilemode",   "fit",
    "hideplot",   "on",
    "l",          "j",
    "y",          "po",
    "cl",         "tw",
    "fa",         "g",
    "cu",         "sel",
    "current",    "bv-*",
    "Left base",  "2",
    "3",          "box",
    "view",       "front",
    "swiso",      "\"a b\"",
});

class AnyWords : public CommandTest, public ::testing::WithParamInterface<unsigned> {};

TEST_P(AnyWords, LeaveTheLineUsable) {
    std::mt19937 random(GetParam());
    for (int i = 0; i < 1500; ++i) {
        Type(words.at(random() % words.size()));
        Type(random() % 5 == 0 ? "\r" : " ");
    }
    Type("\x1b");
    ExpectIdle();
    for (HostEntity* entity : Entities()) {
        const auto* solid = dynamic_cast<const HostSolid*>(entity);
        EXPECT_FALSE(solid != nullptr && solid->Shape().IsNull());
    }
    Type("tilemode 1 ucsfollow 0 ucs w elevation 0 -layer n Free s Free u Free \r");
    const std::size_t before = Entities().size();
    Type("box 0,0,0 1,2,3 ");
    ASSERT_EQ(Entities().size(), before + 1);
    ExpectExact(Entities().back()->GetBoundingBox().max, {1, 2, 3});
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyWords, ::testing::Range(1u, 25u));

}  // namespace
}  // namespace brenvik
