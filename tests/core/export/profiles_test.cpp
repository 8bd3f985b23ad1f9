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

TEST(Profiles, KeepWhatNobodyReadsWithItsLine) {
    const auto profiles = ParseProfiles(Lines{"[A]", "colums=PN", "# ours", "", "[B", "columns=QTY",
                                              "columns PN", "[C]", "[A]", "columns=PN", "[D]", "columns="});
    ASSERT_EQ(profiles.size(), 4U);
    std::vector<std::string> texts;
    for (const ExportProfile& profile : profiles)
        for (const ProfileFault& fault : profile.faults)
            texts.push_back(profile.name + " " + std::to_string(fault.line) + ": " + fault.text);
    EXPECT_EQ(
        texts,
        (Lines{"A 2: expected columns= with names of columns, or extension=, found \"colums=PN\"; it is "
               "not read",
               "A 5: expected \"]\" behind the name of a profile, found \"[B\"; the lines below it count "
               "for \"A\"",
               "A 7: expected columns=, found \"columns PN\"",
               "A 7: the profile \"A\" has columns in line 6 already; these here count",
               "A 9: the profile \"A\" stands in line 1 already, and that one is taken",
               "C 8: the profile \"C\" has no columns, expected columns= with their names",
               "D 12: the profile \"D\" has no columns, expected columns= with their names"}));
}

std::vector<std::string> FaultsOf(const ExportProfile& profile) {
    std::vector<std::string> texts;
    for (const ProfileFault& fault : profile.faults)
        texts.push_back(std::to_string(fault.line) + ": " + fault.text);
    return texts;
}

TEST(Profiles, AreAllToldWhatStandsAheadOfTheFirstName) {
    const std::string told =
        ": expected the name of a profile in square brackets ahead of it, found \"columns=PN\"; it is not "
        "read";
    const auto profiles =
        ParseProfiles(Lines{"# ours", "columns=PN", "", "[A]", "columns=PN", "[B]", "columns=QTY"});
    EXPECT_EQ(FaultsOf(profiles.at(0)), Lines{"2" + told});
    EXPECT_EQ(FaultsOf(profiles.at(1)), Lines{"2" + told});
    EXPECT_EQ(FaultsOf(ParseProfiles(Lines{"[No end", "[A]", "columns=PN"})[0]).size(), 1U);
}

TEST(Profiles, HaveABarAtEachEndOfAFixedText) {
    const auto faultsOf = [](const std::string& columns) {
        return FaultsOf(ParseProfiles(Lines{"[A]", "columns=" + columns})[0]);
    };
    const std::string expected =
        "2: expected \"|\" at the head and at the end of a fixed text without commas, found ";
    EXPECT_EQ(faultsOf("PN,|Job 7"), Lines{expected + "\"|Job 7\""});
    EXPECT_EQ(faultsOf("PN,|Job|7|,QTY"), Lines{expected + "\"|Job|7|\""});
    EXPECT_EQ(faultsOf("|,PN"), Lines{expected + "\"|\""});
    EXPECT_EQ(faultsOf("|Job, 7|"), Lines{expected + "\"|Job\""});
    EXPECT_TRUE(faultsOf("PN,|Job 7|,||").empty());
}

TEST(Profiles, OfRubbishAreNone) {
    EXPECT_TRUE(ParseProfiles(Lines{}).empty());
    EXPECT_TRUE(ParseProfiles(Lines{std::string(1000000, '['), std::string("\0\xFF", 2)}).empty());
}

}  // namespace
}  // namespace brenvik
