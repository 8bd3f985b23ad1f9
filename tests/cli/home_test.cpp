// The install folder: made at first use or by init, kept afterwards, and what happens where it can't be.
#include <algorithm>
#include <tuple>

#include "program.h"

namespace brenvik::cli_test {
namespace {

class Home : public ProgramTest {
  protected:
    using Words = std::vector<std::string>;
};

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

TEST_F(Home, OneThatInitCannotWriteIsNamedItself) {
    ASSERT_EQ(Run({"init"}).status, 0);
    // A folder in the help's place can't be written over, by whatever user.
    std::filesystem::remove(Path("home/Brenvik495.chm"));
    std::filesystem::create_directory(Path("home/Brenvik495.chm"));
    const Outcome outcome = Run({"init"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find(Path("home") + " (its Brenvik495.chm is to be written"), std::string::npos)
        << outcome.errors;
}

TEST_F(Home, OneThatIsMadeOnTheWayIsToldOnce) {
    const Words get{"--home", Path("mistyped"), "settings", "get", "CircleSize"};
    const Outcome made = RunBare("", get);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.errors, "brenvik: made a new home, in metric units: " + Path("mistyped") + "\n");
    EXPECT_EQ(RunBare("", get).errors, "");
    EXPECT_EQ(RunBare("", {"--home", Path("asked"), "init", "--units", "imperial"}).errors, "");
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
    const Outcome outcome = Run({"init", "--units", "metric"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "already there: " + Path("home") + "\n");
    EXPECT_EQ(Read("home/materials.txt"), "mine");
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, "40\n");
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "2\n");
    EXPECT_TRUE(Exists("home/_db/bv-back04.mdb"));
}

TEST_F(Home, InitInOtherUnitsThanTheHomesIsRefusedWithWhatToDo) {
    for (const auto& [own, other] :
         {std::pair<std::string, std::string>{"metric", "imperial"}, {"imperial", "metric"}}) {
        std::filesystem::remove_all(Path("home"));
        Run({"init", "--units", own});
        std::filesystem::remove(Path("home/materials.txt"));
        const std::string settings = Read("home/settings.txt");
        const Outcome outcome = Run({"init", "--units", other});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_NE(outcome.errors.find(Path("home") + " is a home in " + own + " units"), std::string::npos)
            << outcome.errors;
        EXPECT_NE(outcome.errors.find("brenvik --home DIR init --units " + other), std::string::npos);
        EXPECT_EQ(Read("home/settings.txt"), settings);
        EXPECT_FALSE(Exists("home/materials.txt")) << "nothing of the other units is added";
        EXPECT_EQ(Run({"init"}).status, 0);
        EXPECT_EQ(Read("home/materials.txt").starts_with("material=18 "), own == "metric")
            << "what went missing comes back in the home's units";
    }
}

TEST_F(Home, AChangedSettingIsRemarkedOnUnlessQuiet) {
    Run({"init"});
    EXPECT_NE(Run({"settings", "set", "HomeUnits", "metric"}).errors.find("converts nothing"),
              std::string::npos);
    const Outcome quiet = Run({"settings", "set", "HomeUnits", "metric", "--quiet"});
    EXPECT_EQ(quiet.status, 0);
    EXPECT_EQ(quiet.errors, "");
    EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", "many", "--quiet"}).status, 2);
}

TEST_F(Home, TheUnitsOfItsRunsAreThoseOfWhatInitBringsBack) {
    Run({"init"});
    for (const auto& [scale, units, other] :
         {std::tuple<std::string, std::string, std::string>{"1", "imperial", "metric"},
          {"2", "metric", "imperial"},
          {"3", "metric", "imperial"},
          {"4", "imperial", "metric"}}) {
        Run({"settings", "set", "HomeUnits", units});
        EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", scale}).status, 0);
        std::filesystem::remove(Path("home/materials.txt"));
        EXPECT_EQ(Run({"init", "--units", other}).status, 2) << scale;
        EXPECT_EQ(Run({"init", "--units", units}).status, 0) << scale;
        EXPECT_EQ(Read("home/materials.txt").starts_with("material=18 "), units == "metric") << scale;
    }
}

TEST_F(Home, WithoutUnitsInItsSettingsGetsNoneByInit) {
    Run({"init", "--units", "imperial"});
    const auto loseTheUnits = [&] {
        std::string settings = Read("home/settings.txt");
        for (const char* name : {"ExportScaleSetting", "HomeUnits"}) {
            const std::size_t line = settings.find(name);
            ASSERT_NE(line, std::string::npos);
            settings.erase(settings.rfind('\n', line) + 1,
                           settings.find('\n', line) - settings.rfind('\n', line));
        }
        Write("home/settings.txt", settings);
    };
    loseTheUnits();
    const std::string settings = Read("home/settings.txt");
    for (const std::string units : {"metric", "imperial"}) {
        const Outcome refused = Run({"init", "--units", units});
        EXPECT_EQ(refused.status, 2);
        EXPECT_NE(refused.errors.find("settings set ExportScaleSetting"), std::string::npos)
            << refused.errors;
        EXPECT_EQ(Read("home/settings.txt"), settings);
    }
    EXPECT_EQ(Run({"init"}).status, 0) << "an untouched material library tells them";
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "1\n");
    loseTheUnits();
    std::filesystem::remove(Path("home/materials.txt"));
    std::filesystem::remove(Path("home/CNCProfile.txt"));
    const Outcome unknown = Run({"init"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_NE(unknown.errors.find("the units of this home are unknown"), std::string::npos);
    EXPECT_EQ(Read("home/settings.txt"), settings);
    EXPECT_FALSE(Exists("home/materials.txt"));
    EXPECT_TRUE(Exists("home/CNCProfile.txt"));
}

TEST_F(Home, AScaleInOtherUnitsThanTheHomesIsRefused) {
    for (const auto& [own, other, right, wrong] :
         {std::tuple<std::string, std::string, std::string, std::string>{"metric", "imperial", "23", "14"},
          {"imperial", "metric", "14", "23"}}) {
        std::filesystem::remove_all(Path("home"));
        Run({"init", "--units", own});
        for (const char scale : right)
            EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", {scale}}).status, 0) << scale;
        const std::string settings = Read("home/settings.txt");
        for (const char scale : wrong) {
            const Outcome outcome = Run({"settings", "set", "exportscalesetting", {scale}});
            EXPECT_EQ(outcome.status, 2) << scale;
            EXPECT_NE(outcome.errors.find("this home is " + own + ", and its CircleSize, BiesseWorksSpoil, "),
                      std::string::npos)
                << outcome.errors;
            EXPECT_NE(outcome.errors.find("init --units " + other), std::string::npos) << outcome.errors;
            EXPECT_EQ(Read("home/settings.txt"), settings);
        }
        // Who has converted everything says so first.
        EXPECT_EQ(Run({"settings", "set", "HomeUnits", other}).status, 0);
        EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", wrong.substr(0, 1)}).status, 0);
        EXPECT_EQ(Run({"settings", "set", "HomeUnits", "furlongs"}).status, 2);
    }
}

TEST_F(Home, AScaleInOtherUnitsThanTheHomesIsToldByWhatReadsIt) {
    Run({"init"});
    std::string settings = Read("home/settings.txt");
    settings.replace(settings.find("ExportScaleSetting=2"), 20, "ExportScaleSetting=4");
    Write("home/settings.txt", settings);
    const std::string drawing = ShippedSample().string();
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"cnc", drawing, "--target", "C2C", "--out", "out"},
          {"list", drawing},
          {"settings", "list"},
          {"materials", "add", "20 oak", "--like", "18 white melamine"}}) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1) << words.front();
        EXPECT_NE(
            outcome.errors.find("ExportScaleSetting is \"4\", expected 2 or 3: runs would work in inches, "
                                "but this home is metric"),
            std::string::npos)
            << words.front() << "\n"
            << outcome.errors;
    }
}

TEST_F(Home, AnInstallationThatWasBrokenOffDoesNotMixItsUnitsWithTheNext) {
    Run({"init"});
    std::filesystem::remove(Path("home/settings.txt"));
    EXPECT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "1\n");
    EXPECT_TRUE(Read("home/materials.txt").starts_with("material=.75 "));
    Write("home/materials.txt", "mine");
    std::filesystem::remove(Path("home/settings.txt"));
    EXPECT_EQ(Run({"init"}).status, 1) << "nobody can tell the units of this library";
    EXPECT_EQ(Read("home/materials.txt"), "mine");
}

TEST_F(Home, ThatHasLostItsSettingsIsToldAndKeepsTheUnitsOfItsLibrary) {
    ASSERT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    const std::string library = Read("home/materials.txt");
    for (const std::vector<std::string>& words : {std::vector<std::string>{"list", ShippedSample().string()},
                                                  {"settings", "set", "CircleSize", "1"},
                                                  {"materials", "list"},
                                                  {"init"}}) {
        std::filesystem::remove(Path("home/settings.txt"));
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 1) << words.front();
        EXPECT_NE(
            outcome.errors.find("settings.txt: expected the settings of this home, found none; made anew in "
                                "imperial units, those of its material library\n"),
            std::string::npos)
            << outcome.errors;
        EXPECT_EQ(Read("home/materials.txt"), library);
        EXPECT_EQ(Run({"settings", "get", "ExportScaleSetting"}).output, "1\n");
    }
    std::filesystem::remove(Path("home/settings.txt"));
    EXPECT_EQ(Run({"convert", ShippedSample().string(), "a.dxf"}).status, 1) << "which makes no home";
    EXPECT_EQ(Run({"init", "--units", "imperial"}).status, 0) << "whoever says the units knows";
}

TEST_F(Home, ThatWasCopiedTakesItsOwnAdjustmentFile) {
    const std::string drawing = ShippedSample().string();
    const std::vector<std::string> words{"export",   drawing,    "a.csv", "--profile",
                                         "Cut List", "--select", "100"};
    ASSERT_EQ(Run(words).status, 0);
    std::filesystem::copy(Path("home"), Path("copy"), std::filesystem::copy_options::recursive);
    Write("home/No Adjustments.txt", "[x]\nl=7\n");
    Write("copy/No Adjustments.txt", "[x]\nl=10\n");
    EXPECT_EQ(RunBare("BRENVIK_HOME=" + Path("copy"), words).status, 0);
    EXPECT_NE(Read("a.csv").find(",730,"), std::string::npos) << Read("a.csv");
    std::filesystem::remove_all(Path("home"));
    EXPECT_EQ(RunBare("BRENVIK_HOME=" + Path("copy"), words).status, 0);
}

TEST_F(Home, MayHaveAnyCharactersInItsPath) {
    WriteSample("job.dxf");
    const Words words{"list", "job.dxf", "--format", "csv"};
    const std::string expected = Run(words).output;
    for (const std::string name : {"a;b", "Mode=Read;x", "two words", " lead", "trail ", "it's", "say \"so\"",
                                   "'", "a\"b;c", "Tür", "%41", "a#b", "file:x?mode=ro", "[x]", "{x}"}) {
        std::vector<std::string> all{"--home", name};
        all.insert(all.end(), words.begin(), words.end());
        const Outcome outcome = RunBare("", all);
        EXPECT_EQ(outcome.status, 0) << name << ": " << outcome.errors;
        EXPECT_EQ(outcome.output, expected) << name;
        EXPECT_TRUE(Exists(name + "/_db/bv04.mdb")) << name;
    }
}

TEST_F(Home, ThatCannotBeWrittenIsToldWithTheFile) {
    WriteSample("job.dxf");
    Run({"init"});
    std::filesystem::remove(Path("home/_db/bv04.mdb"));
    std::filesystem::create_directories(Path("home/_db/bv04.mdb/inside"));
    const Outcome outcome = Run({"list", "job.dxf"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("75\\r\\nBrenvik\\r\\nPath/File access error: " + Path("home/_db/bv04.mdb")),
        std::string::npos)
        << outcome.errors;
}

TEST_F(Home, OfAnotherUserIsToldWithTheFile) {
    WriteSample("job.dxf");
    Run({"init"});
    using std::filesystem::perms;
    std::filesystem::permissions(folder, perms::owner_all | perms::group_exec | perms::others_exec);
    for (const Words& words : {Words{"list", "job.dxf"}, {"settings", "set", "CircleSize", "40"}, {"init"}}) {
        const Outcome outcome = RunNamed("nobody", words, "setpriv --reuid=65534 --clear-groups");
        if (outcome.errors.find("setpriv") != std::string::npos)
            GTEST_SKIP() << "no other user can be had here";
        EXPECT_EQ(outcome.status, 1) << words[0];
        const std::string named = words[0] == "init" ? Path("home") + " (" : Path("home/");
        EXPECT_NE(outcome.errors.find("Permission denied: " + named), std::string::npos)
            << words[0] << ": " << outcome.errors;
    }
}

TEST_F(Home, OnAFullDiskIsToldWithTheFile) {
    WriteSample("job.dxf");
    Run({"init"});
    // Files of more than 4 kB are refused as on a full disk.
    const std::string fullDisk = "ulimit -f 8; trap '' XFSZ;";
    const Outcome list = RunNamed("list", {"list", "job.dxf"}, fullDisk);
    EXPECT_EQ(list.status, 1);
    EXPECT_NE(list.errors.find("Disk full: " + Path("home/_db/bv04.mdb")), std::string::npos) << list.errors;
    const Outcome copy = RunNamed("convert", {"convert", "job.dxf", Path("copy.dxf")}, fullDisk);
    EXPECT_EQ(copy.status, 1);
    EXPECT_NE(copy.errors.find(Path("copy.dxf")), std::string::npos) << copy.errors;
    EXPECT_FALSE(Exists("copy.dxf"));
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

TEST_F(Settings, OfTextTakeItAsItStands) {
    EXPECT_EQ(Run({"settings", "set", "ACCESS_TABLE_NAME", " ein Maß "}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "ACCESS_TABLE_NAME"}).output, " ein Maß \n");
    EXPECT_EQ(Run({"settings", "set", "ACCESS_TABLE_NAME", ""}).status, 0);
    EXPECT_EQ(Run({"settings", "get", "ACCESS_TABLE_NAME"}).output, "\n");
}

TEST_F(Settings, RefuseAValueThatTheyCannotHaveAndTellWhatTheyCan) {
    const std::vector<std::string> cases[] = {{"WCSMeasure", "yes", "0 or 1"},
                                              {"ExportScaleSetting", "5", "a whole number from 1 to 4"},
                                              {"CircleSize", "35 mm", "a number, 0 or more"},
                                              {"BiesseWorksSpoil", "a bit", "a number from -100 to 100"},
                                              {"CNCMultiplier", "1.5", "a whole number from 1 to 1000000"},
                                              {"CNCMultiplier", "", "a whole number from 1 to 1000000"},
                                              {"QUANTITY_WIDTH", "wide", "a number, 0 or more"},
                                              {"CSV_SAVE\\CSV_REDUCE", "2", "0 or 1"}};
    Run({"init"});
    const std::string before = Read("home/settings.txt");
    for (const auto& words : cases) {
        const std::string name = words[0].substr(words[0].rfind('\\') + 1);
        const Outcome outcome = Run({"settings", "set", words[0], words[1]});
        EXPECT_EQ(outcome.status, 2) << words[0];
        EXPECT_EQ(outcome.errors,
                  "brenvik: " + name + ": expected " + words[2] + ", found \"" + words[1] + "\"\n");
    }
    EXPECT_EQ(Read("home/settings.txt"), before);
}

TEST_F(Settings, ThatAreDamagedAreToldOnceWithNameAndValueWhenTheyAreRead) {
    Run({"init"});
    std::string settings = Read("home/settings.txt");
    for (const auto& [good, bad] :
         {std::pair("CircleSize=35", "CircleSize=large"), std::pair("WCSMeasure=0", "WCSMeasure=maybe")}) {
        ASSERT_NE(settings.find(good), std::string::npos);
        settings.replace(settings.find(good), std::string(good).size(), bad);
    }
    Write("home/settings.txt", settings);
    const auto at = [&](const std::string& value) {
        const auto end = settings.begin() + static_cast<std::ptrdiff_t>(settings.find(value));
        return Path("home") + "/settings.txt:" + std::to_string(1 + std::count(settings.begin(), end, '\n')) +
               ": ";
    };
    const std::string circle =
        at("CircleSize=") +
        "CircleSize is \"large\", expected a number, 0 or more; to change it: brenvik --home " +
        Path("home") + " settings set CircleSize VALUE\n";
    const std::string measure = at("WCSMeasure=") +
                                "WCSMeasure is \"maybe\", expected 0 or 1; to change it: brenvik --home " +
                                Path("home") + " settings set WCSMeasure VALUE\n";
    // A list measures, and never asks for a circle.
    Outcome outcome = Run({"list", ShippedSample().string(), "--select", "100,120"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, measure);
    EXPECT_NE(outcome.output.find("Left Side"), std::string::npos);
    // A run asks for each part.
    outcome = Run({"cnc", ShippedSample().string(), "--target", "C2C", "--select", "100,120"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors.find(circle), outcome.errors.rfind(circle)) << outcome.errors;
    EXPECT_NE(outcome.errors.find(circle), std::string::npos) << outcome.errors;
    outcome = Run({"settings", "list"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find(circle), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(measure), std::string::npos) << outcome.errors;
    outcome = Run({"settings", "get", "CircleSize"});
    EXPECT_EQ(outcome.output, "large\n");
    EXPECT_EQ(outcome.status, 1);
    // Nothing is in the way of mending them.
    outcome = Run({"settings", "set", "CircleSize", "35"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(Settings, OfTheDialogAreKeptAsTheyWereTypedAndTheListGoesOn) {
    Write(
        "a.journal",
        "command ShowSettings\ntype Text1 \"35 mm\"\npress cmdApply\nexpect setting CircleSize \"35 mm\"\n");
    EXPECT_EQ(Run({"run", ShippedSample().string(), "--journal", "a.journal"}).status, 1);
    const Outcome outcome = Run({"list", ShippedSample().string(), "--select", "100"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
}

TEST_F(Settings, AValueNotYetStoredReadsBlank) {
    EXPECT_EQ(Run({"settings", "get", "QUANTITY_WIDTH"}).output, "\n");
}

TEST_F(Home, WithAControlCharacterInItsNameIsRefused) {
    for (const std::string name : {"a\nb", "a\x1b[31m"}) {
        const Outcome outcome = RunBare("", {"--home", name, "init"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find("without line breaks and other control characters, found a?"),
                  std::string::npos)
            << outcome.errors;
        EXPECT_FALSE(Exists(name));
    }
}

TEST_F(Home, WithABackslashInItsPlaceIsRefused) {
    std::filesystem::create_directory(Path("jobs\\a"));
    for (const std::string name : {"a\\b", "b\\", "jobs\\a/home"}) {
        const Outcome outcome = RunBare("", {"--home", name, "init"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_NE(outcome.errors.find(
                      "expected a folder's name without a backslash, which parts folders in the home's "
                      "paths, found "),
                  std::string::npos)
            << outcome.errors;
        EXPECT_NE(outcome.errors.find(name), std::string::npos);
        EXPECT_FALSE(Exists(name));
    }
    EXPECT_FALSE(Exists("a"));
    EXPECT_FALSE(Exists("b"));
}

}  // namespace
}  // namespace brenvik::cli_test
