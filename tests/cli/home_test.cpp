// The install folder: made at first use or by init, kept afterwards, and what happens where it can't be.
#include "program.h"

namespace brenvik::cli_test {
namespace {

class Home : public ProgramTest {};

TEST_F(Home, InitMakesWhatAnInstallerWould) {
    const Outcome outcome = Run({"init"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "made " + Path("home") + "\n");
    EXPECT_EQ(outcome.errors, "");
    for (const char* name : {"settings.txt", "materials.txt", "No Adjustments.txt", "BrenvikProfiles.txt",
                             "CNCProfile.txt", "Brenvik495.chm", "_db/bv04.mdb", "_db/bv-back04.mdb"})
        EXPECT_TRUE(Exists(std::string("home/") + name)) << name;
    EXPECT_EQ(Read("home/materials.txt")
                  .rfind("material=18 white melamine\r\ngrain=0\r\ndirection=cc\r\ntool1=1\r\n", 0),
              0u);
    EXPECT_EQ(Read("home/No Adjustments.txt"), "");
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "2\n");
}

TEST_F(Home, EveryMaterialHasFifteenLines) {
    Run({"init"});
    const std::string text = Read("home/materials.txt");
    std::size_t lines = 0, heads = 0;
    for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1, ++lines)
        if (text.compare(at, 9, "material=") == 0) ++heads;
    EXPECT_GT(heads, 5u);
    EXPECT_EQ(lines, heads * 15);
}

TEST_F(Home, InitTakesTheUnitsOfTheShop) {
    EXPECT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "1\n");
    EXPECT_EQ(Read("home/materials.txt").rfind("material=.75 white melamine\r\n", 0), 0u);
}

TEST_F(Home, ASecondInitKeepsWhatTheShopChanged) {
    Run({"init"});
    Run({"settings", "set", "CircleSize", "40"});
    Write("home/materials.txt", "mine");
    std::filesystem::remove(Path("home/_db/bv-back04.mdb"));
    const Outcome outcome = Run({"init", "--units", "imperial"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "already there: " + Path("home") + "\n");
    EXPECT_EQ(Read("home/materials.txt"), "mine");
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, "40\n");
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "2\n");
    EXPECT_TRUE(Exists("home/_db/bv-back04.mdb"));
}

TEST_F(Home, TheFirstUseMakesIt) {
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, "35\n");
    EXPECT_TRUE(Exists("home/_db/bv-back04.mdb"));
}

TEST_F(Home, TheEnvironmentNamesItWhereNoOptionDoes) {
    const Outcome outcome = RunBare("BRENVIK_HOME=other", {"init"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "made " + Path("other") + "\n");
    EXPECT_TRUE(Exists("other/settings.txt"));
}

TEST_F(Home, TheDataFolderIsTheDefault) {
    const Outcome outcome = RunBare("BRENVIK_HOME= XDG_DATA_HOME='" + Path("data") + "'", {"init"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_TRUE(Exists("data/brenvik/settings.txt"));
}

TEST_F(Home, APlaceUnderAFileIsTold) {
    Write("home", "a file");
    const Outcome outcome = Run({"init"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("home"), std::string::npos) << outcome.errors;
    EXPECT_EQ(Read("home"), "a file");
}

TEST_F(Home, DamagedSettingsAreToldWithTheirPlaceAndLeftAsTheyAre) {
    Run({"init"});
    const std::string damaged = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik04\nCircleSize=35\n";
    Write("home/settings.txt", damaged);
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"settings", "list"}, {"init"}, {"list", ShippedSample().string()}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 3) << words[0];
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find("settings.txt"), std::string::npos) << outcome.errors;
        EXPECT_NE(outcome.errors.find("1"), std::string::npos) << outcome.errors;
    }
    EXPECT_EQ(Read("home/settings.txt"), damaged);
}

class Settings : public ProgramTest {};

TEST_F(Settings, AreSetAndTold) {
    EXPECT_EQ(Run({"settings", "set", "CircleSize", "12.7"}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "circlesize"}).output, "12.7\n");
    EXPECT_NE(Run({"settings", "list"}).output.find("\nCircleSize=12.7\n"), std::string::npos);
}

TEST_F(Settings, OfASubkeyStandUnderIt) {
    EXPECT_EQ(Run({"settings", "set", "CSV_SAVE\\CVS_EXPORT_PATH", "c:\\list.csv"}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "CVS_EXPORT_PATH"}).output, "c:\\list.csv\n");
    EXPECT_NE(Run({"settings", "list"}).output.find("CSV_SAVE\\CVS_EXPORT_PATH=c:\\list.csv\n"),
              std::string::npos);
}

TEST_F(Settings, TakeAnyTextAsTheyStand) {
    EXPECT_EQ(Run({"settings", "set", "CircleSize", " ein Maß "}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, " ein Maß \n");
    EXPECT_EQ(Run({"settings", "set", "CircleSize", ""}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, "\n");
}

TEST_F(Settings, AValueNotYetStoredReadsBlank) {
    EXPECT_EQ(Run({"settings", "get", "QUANTITY_WIDTH"}).output, "\n");
}

}  // namespace
}  // namespace brenvik::cli_test
