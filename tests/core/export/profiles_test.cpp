// Profile files: what makes a profile, and what is passed over.
#include "export/profiles.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brenvik {
namespace {

using Lines = std::vector<std::string>;

TEST(Profiles, HaveNameExtensionAndColumns) {
    const auto profiles = ParseProfiles(Lines{"[Cut List]", "extension=csv", "columns=QTY,Part Name", "",
                                              "[Saw]", "COLUMNS=Length", "Extension=txt"});
    ASSERT_EQ(profiles.size(), 2U);
    EXPECT_EQ(profiles[0].name, "Cut List");
    EXPECT_EQ(profiles[0].extension, "csv");
    EXPECT_EQ(profiles[0].columns, "QTY,Part Name");
    EXPECT_EQ(profiles[1].name, "Saw");
    EXPECT_EQ(profiles[1].extension, "txt");
    EXPECT_EQ(profiles[1].columns, "Length");
}

TEST(Profiles, TakeTheLastOfTwoColumnLines) {
    EXPECT_EQ(ParseProfiles(Lines{"[A]", "columns=QTY", "columns=PN"})[0].columns, "PN");
}

TEST(Profiles, PassOverLinesOfOtherForm) {
    const auto profiles = ParseProfiles(Lines{"columns=QTY", "extension=csv", "[No end", "# [comment]",
                                              " [Blank ahead]", "[A]", " columns=PN", "x"});
    ASSERT_EQ(profiles.size(), 1U);
    EXPECT_EQ(profiles[0].name, "A");
    EXPECT_EQ(profiles[0].columns, "");
}

TEST(Profiles, EndTheirNameAtTheFirstBracket) {
    EXPECT_EQ(ParseProfiles(Lines{"[A]B]"})[0].name, "A");
    EXPECT_EQ(ParseProfiles(Lines{"[]"})[0].name, "");
}

TEST(Profiles, TakeTheValueFromItsPlaceWhateverStandsBefore) {
    const auto profiles = ParseProfiles(Lines{"[A]", "columns QTY", "extension"});
    EXPECT_EQ(profiles[0].columns, "QTY");
    EXPECT_EQ(profiles[0].extension, "");
}

TEST(Profiles, AreFoundByTheirExactNameTheFirstOfIt) {
    const auto profiles = ParseProfiles(Lines{"[A]", "columns=1", "[A]", "columns=2"});
    ASSERT_NE(FindProfile(profiles, "A"), nullptr);
    EXPECT_EQ(FindProfile(profiles, "A")->columns, "1");
    EXPECT_EQ(FindProfile(profiles, "a"), nullptr);
}

TEST(Profiles, OfRubbishAreNone) {
    EXPECT_TRUE(ParseProfiles(Lines{}).empty());
    EXPECT_TRUE(ParseProfiles(Lines{std::string(1000000, '['), std::string("\0\xFF", 2)}).empty());
}

}  // namespace
}  // namespace brenvik
