// Files that people edit by hand, with a slip in them: whatever a command can't read as it was meant is told
// with its place, and the command doesn't end with 0.
#include <algorithm>

#include "boards.h"
#include "program.h"

namespace brenvik::cli_test {
namespace {

class HandWritten : public ProgramTest {
  protected:
    HandWritten() { EXPECT_EQ(Run({"init"}).status, 0); }

    /// Replaces a text of a file once.
    void Change(const std::string& file, const std::string& before, const std::string& after) const {
        std::string content = Read(file);
        const std::size_t at = content.find(before);
        ASSERT_NE(at, std::string::npos) << before;
        Write(file, content.replace(at, before.size(), after));
    }
    /// One board of the shipped library.
    void WriteBoard(double length = 600) const {
        WriteBoardsTo(folder / "board.dxf", {.names = {"Side"}, .length = length});
    }
    Outcome Cut() const { return Run({"cnc", "board.dxf", "--target", "C2C", "--out", "out"}); }
    bool WasCut() const { return Exists("out/Part_0_Side_7.dxf"); }
    Outcome ExportBoard(const std::vector<std::string>& options) const {
        std::vector<std::string> words{"export", "board.dxf", "out.csv"};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
};

void ExpectTold(const Outcome& outcome, const std::string& text) {
    EXPECT_EQ(outcome.status, 1) << text;
    EXPECT_NE(outcome.errors.find(text), std::string::npos) << text << "\n" << outcome.errors;
}

TEST_F(HandWritten, SettingsThatAreMissingAreNamedByARunThatReadsThem) {
    WriteBoard();
    const std::pair<const char*, const char*> cases[] = {
        {"CircleSize=35\n", "a number, 0 or more"},
        {"BiesseWorksSpoil=0.3\n", "a number from -100 to 100"},
        {"CNCMultiplier=1\n", "a whole number from 1 to 1000000"}};
    const std::string whole = Read("home/settings.txt");
    for (const auto& [line, expected] : cases) {
        const std::string name = std::string(line).substr(0, std::string(line).find('='));
        Write("home/settings.txt", whole);
        Change("home/settings.txt", line, "");
        ExpectTold(Cut(), "settings.txt: " + name + " is missing, expected " + expected + "; to set it: ");
        ExpectTold(Run({"settings", "list"}), name + " is missing");
        Change("home/settings.txt", "WCSMeasure=0\n", "WCSMeasure=0\n" + name + "=\n");
        ExpectTold(Cut(), "settings.txt:3: " + name + " is \"\", expected " + expected);
    }
    Write("home/settings.txt", whole);
    EXPECT_EQ(Cut().status, 0);
}

TEST_F(HandWritten, ASpoilAmountThatLeavesNothingOfACutCostsThePart) {
    WriteBoard();
    Change("home/settings.txt", "BiesseWorksSpoil=0.3\n", "BiesseWorksSpoil=-200\n");
    ExpectTold(Cut(), "BiesseWorksSpoil is -200, expected more than -");
}

TEST_F(HandWritten, SettingsThatAreNotReadAreToldWithTheirLines) {
    WriteBoard();
    const std::string whole = Read("home/settings.txt");
    const std::string file = Path("home") + "/settings.txt:";
    Write("home/settings.txt", whole);
    Change("home/settings.txt", "CircleSize=35\n", "CirclSize=35\nCircleSize=35\nCircleSize=12\nSpoil 3\n");
    const Outcome outcome = Cut();
    ExpectTold(outcome, "expected the name of a setting, found \"CirclSize\"; it is not read\n");
    ExpectTold(outcome, "and what stands there counts: \"35\"; found \"12\"\n");
    ExpectTold(outcome, "expected NAME=VALUE, found \"Spoil 3\"; it is not read\n");
    EXPECT_EQ(std::count(outcome.errors.begin(), outcome.errors.end(), '\n') > 3, true);
    EXPECT_NE(outcome.errors.find(file), std::string::npos) << outcome.errors;
    // Each is told once, by whatever command reads settings.
    EXPECT_EQ(outcome.errors.find("CirclSize"), outcome.errors.rfind("CirclSize"));
    ExpectTold(Run({"list", "board.dxf"}), "CirclSize");
    Write("home/settings.txt", whole +
                                   "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Orvane, Inc.\\Brenvik4]\nDeleteOT=1\n" +
                                   whole.substr(0, whole.find('\n') + 1) + "DeleteOT=1\n");
    const Outcome heads = Cut();
    ExpectTold(heads, "\\Brenvik4]; the lines below it are not read\n");
    ExpectTold(heads, "already; the lines below it here are not read\n");
}

TEST_F(HandWritten, MaterialsWithAValueThatNobodyCanCutByCostTheirParts) {
    WriteBoard();
    const std::string whole = Read("home/materials.txt");
    const std::pair<const char*, const char*> cases[] = {
        {"tool1dia=12\r", "tool1dia=abc\r"},  {"tool1dia=12\r", "tool1dia=-12\r"},
        {"tool1dia=12\r", "tool1dia=12,7\r"}, {"tool1dia=12\r", "tool1dia=\r"},
        {"tool3dia=5\r", "tool3dia=5 mm\r"},  {"direction=cc\r", "direction=zz\r"},
        {"grain=0\r", "grain=none\r"}};
    for (const auto& [good, bad] : cases) {
        Write("home/materials.txt", whole);
        Change("home/materials.txt", good, bad);
        const std::string key = std::string(bad).substr(0, std::string(bad).find('='));
        const std::string value =
            std::string(bad).substr(key.size() + 1, std::string(bad).size() - key.size() - 2);
        const std::string told =
            key + " of the material \"18 white melamine\" is \"" + value + "\", expected ";
        const Outcome outcome = Cut();
        ExpectTold(outcome, told);
        EXPECT_NE(outcome.errors.find("materials.txt:"), std::string::npos);
        EXPECT_FALSE(WasCut()) << bad;
        ExpectTold(Run({"materials", "list"}), told);
        ExpectTold(Run({"materials", "find", "18 white melamine"}), told);
        EXPECT_EQ(Run({"materials", "add", "17 white melamine", "--like", "18 white melamine"}).status, 3);
    }
    Write("home/materials.txt", whole);
    EXPECT_EQ(Cut().status, 0);
    EXPECT_TRUE(WasCut());
}

TEST_F(HandWritten, MaterialsThatAreDoubtfulAreToldAndCut) {
    WriteBoard();
    const std::string whole = Read("home/materials.txt");
    Change("home/materials.txt", "tool1ss=18000\r", "tool1ss=fast\r");
    ExpectTold(Cut(), "tool1ss of the material \"18 white melamine\" is \"fast\", expected a number above 0");
    EXPECT_TRUE(WasCut());
    Write("home/materials.txt", whole + whole.substr(0, whole.find("material=", 1)));
    ExpectTold(Cut(), "the material \"18 white melamine\" stands in line 1 already; the last one counts");
    EXPECT_TRUE(WasCut());
}

TEST_F(HandWritten, AdjustmentsThatCannotBeReadAreToldWithTheirLinesAndNotGuessed) {
    WriteBoard();
    Write("adjust.txt", "[a]\nPart Nmae=Door\nl=1/8\n[b]\nw=1,5\nt=abc\n");
    const Outcome outcome = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    ExpectTold(outcome, "adjust.txt:2: ");
    ExpectTold(outcome, "found \"Part Nmae\"; parts aren't asked for it\n");
    ExpectTold(outcome, "adjust.txt:3: l: expected a decimal number such as 0.125 or -1.5, found \"1/8\"");
    ExpectTold(outcome, "adjust.txt:5: w: ");
    ExpectTold(outcome, "adjust.txt:6: t: ");
    EXPECT_NE(Read("out.csv").find(",600,400,18,"), std::string::npos) << Read("out.csv");
}

TEST_F(HandWritten, AdjustmentsWithoutAnAmountAreToldWithTheirLines) {
    WriteBoard();
    Write("adjust.txt", "[a]\nMaterial=White Melamine\n[b]\nl=\nw=\nt=\n[c]\nl=1\n[d]\nt=abc\n");
    const Outcome outcome = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    const std::string rest = " has no amount, expected l=, w= or t= with a number; it changes nothing\n";
    ExpectTold(outcome, "adjust.txt:1: the adjustment [a]" + rest);
    ExpectTold(outcome, "adjust.txt:3: the adjustment [b]" + rest);
    EXPECT_EQ(outcome.errors.find("[c]"), std::string::npos);
    EXPECT_EQ(outcome.errors.find("[d]"), std::string::npos) << "its amount is told by itself";
}

TEST_F(HandWritten, LinesThatAreNoUtf8AreReadAsWesternAndTold) {
    WriteBoardsTo(folder / "board.dxf", {.names = {"T\xC3\xBCr"}});
    const std::string door = "T\xFCr",
                      western = ": expected text in UTF-8; it was taken for the Western Windows ";
    Write("adjust.txt", "# F\xFCr die S\xE4ge\n[T\xFCren]\nPart Name=" + door + "\nl=5\n");
    Outcome outcome = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    ExpectTold(outcome, "adjust.txt:2" + western);
    ExpectTold(outcome,
               "adjust.txt:3" + western + "code page, as \"Part Name=T\xC3\xBCr\"; save the file as UTF-8\n");
    EXPECT_EQ(outcome.errors.find("adjust.txt:1"), std::string::npos) << "a remark";
    EXPECT_NE(Read("out.csv").find(",605,400,18,"), std::string::npos) << Read("out.csv");
    Write("home/BrenvikProfiles.txt",
          "[Plain]\ncolumns=Part Name\n[S\xE4ge]\ncolumns=Part Name,|f\xFCr S\xE4ge|\n");
    outcome = ExportBoard({"--profile", "S\xC3\xA4ge"});
    ExpectTold(outcome, "BrenvikProfiles.txt:3" + western);
    ExpectTold(outcome, "BrenvikProfiles.txt:4" + western);
    EXPECT_NE(Read("out.csv").find("T\xC3\xBCr,f\xC3\xBCr S\xC3\xA4ge"), std::string::npos)
        << Read("out.csv");
    EXPECT_EQ(ExportBoard({"--profile", "Plain"}).status, 0);
}

TEST_F(HandWritten, OneToolNumberForTwoDiametersIsTold) {
    WriteBoard();
    Change("home/materials.txt", "tool2=2\r", "tool2=1\r");
    const std::string told =
        "tool2 of the material \"18 white melamine\" is \"1\" as tool1 is, with the diameter 8 in place of "
        "12, "
        "expected a number of its own";
    ExpectTold(Run({"materials", "list"}), told);
    ExpectTold(Cut(), told);
    EXPECT_TRUE(WasCut());
}

TEST_F(HandWritten, ATwiceNumberedToolIsToldHoweverItsNumberIsSpelled) {
    WriteBoard();
    Change("home/materials.txt", "tool2=2\r", "tool2=01\r");
    const std::string whole = Read("home/materials.txt");
    const std::string told =
        "tool2 of the material \"18 white melamine\" is \"01\", the same tool as \"1\" of tool1, with the "
        "diameter 8 in place of 12, expected a number of its own";
    ExpectTold(Run({"materials", "list"}), told);
    ExpectTold(Cut(), told);
    EXPECT_TRUE(WasCut());
    Change("home/materials.txt", "tool2dia=8\r", "tool2dia=12.0\r");
    EXPECT_EQ(Run({"materials", "list"}).status, 0);
    EXPECT_EQ(Cut().status, 0);
}

TEST_F(HandWritten, ASpeedOrFeedOfNothingIsTold) {
    WriteBoard();
    Change("home/materials.txt", "tool1fs=9000\r", "tool1fs=0\r");
    ExpectTold(Cut(), "tool1fs of the material \"18 white melamine\" is \"0\", expected a number above 0");
}

TEST_F(HandWritten, AdjustmentsThatLeaveNoBoardAreToldByPart) {
    WriteBoard();
    Write("adjust.txt", "[a]\nl=-700\nw=1e300\n");
    const Outcome outcome = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    ExpectTold(outcome,
               "\"Side\": its Length 600 with the adjustment -700 is -100, expected the size of a board\n");
    ExpectTold(outcome, "\"Side\": its Width 400 with the adjustment 1E+300 is 1E+300");
}

TEST_F(HandWritten, AdjustmentsThatAskForAColumnThatTheGroupedListLacksAreTold) {
    WriteBoard();
    Write("adjust.txt", "[a]\nNotes=none\nl=1\n");
    ExpectTold(ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt", "--group",
                            "Part Name, Length, Width, Thickness"}),
               "the list has no column Notes, so the adjustments apply whatever they ask of it\n");
}

TEST_F(HandWritten, CharactersThatNobodySeesAreToldWithTheirLines) {
    WriteBoard();
    const std::string zero(1, '\0');
    Write("adjust.txt", "# a" + zero + "\n[a]\nMaterial=White" + zero + " Melamine\nl=1\n");
    const Outcome adjusted = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    ExpectTold(
        adjusted,
        "adjust.txt:3: expected text without control characters, found the character of number 0 behind "
        "\"Material=White\"; nothing that is compared with it is equal\n");
    EXPECT_EQ(adjusted.errors.find("adjust.txt:1"), std::string::npos) << adjusted.errors;
    Write("home/BrenvikProfiles.txt", "[Good]\ncolumns=QTY\n[Saw]\ncolumns=QTY,|a" + zero + "b|,Notes\n");
    ExpectTold(
        ExportBoard({"--profile", "Saw"}),
        "BrenvikProfiles.txt:4: expected text without control characters, found the character of number "
        "0 behind \"columns=QTY,|a\"");
    EXPECT_EQ(ExportBoard({"--profile", "Good"}).status, 0);
}

TEST_F(HandWritten, AnAdjustmentFileForOneExportIsNeverStored) {
    WriteBoard();
    Write("adjust.txt", "[a]\nl=1\n");
    EXPECT_EQ(ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"}).status, 0);
    EXPECT_NE(Read("out.csv").find(",601,400,18,"), std::string::npos) << Read("out.csv");
    EXPECT_EQ(Read("home/settings.txt").find("CVS_ADJ_PATH"), std::string::npos);
}

TEST_F(HandWritten, ProfilesWithSlipsAreToldWithTheirLines) {
    WriteBoard();
    Write("home/BrenvikProfiles.txt",
          "[Unknown]\ncolumns=PN,Lenght,Width\n[Semicolons]\ncolumns=PN;QTY\n[None]\ncolums=PN,QTY\n"
          "[Right]\ncolumns=PN,(blank),|Job 7|,L x W x T\n");
    ExpectTold(ExportBoard({"--profile", "Unknown"}),
               "BrenvikProfiles.txt:2: expected the name of a column, found \"Lenght\"; it has no cell");
    ExpectTold(ExportBoard({"--profile", "Semicolons"}),
               "BrenvikProfiles.txt:4: expected the name of a column, ");
    const Outcome none = ExportBoard({"--profile", "None"});
    ExpectTold(none, "BrenvikProfiles.txt:6: expected columns= with names of columns, or extension=, found ");
    ExpectTold(none, "BrenvikProfiles.txt:5: the profile \"None\" has no columns");
    EXPECT_EQ(ExportBoard({"--profile", "Right"}).status, 0);
}

TEST_F(HandWritten, ProfilesTellWhatStandsAheadOfThemAndTextsWithoutTheirBars) {
    WriteBoard();
    Write("home/BrenvikProfiles.txt", "columns=PN\n[Ahead]\ncolumns=QTY\n");
    ExpectTold(ExportBoard({"--profile", "Ahead"}),
               "BrenvikProfiles.txt:1: expected the name of a profile in square brackets ahead of it, found "
               "\"columns=PN\"; it is not read\n");
    Write("home/BrenvikProfiles.txt", "[Bars]\ncolumns=PN,|Job 7,QTY\n");
    ExpectTold(
        ExportBoard({"--profile", "Bars"}),
        "BrenvikProfiles.txt:2: expected \"|\" at the head and at the end of a fixed text without commas, "
        "found \"|Job 7\"\n");
}

TEST_F(HandWritten, FilesInUtf16AreNamedAsSuch) {
    WriteBoard();
    const std::string utf16("\xFF\xFE[\0A\0]\0\n\0", 10);
    Write("home/BrenvikProfiles.txt", utf16);
    const Outcome profile = ExportBoard({"--profile", "A"});
    EXPECT_EQ(profile.status, 3);
    EXPECT_NE(profile.errors.find("BrenvikProfiles.txt: Invalid file format: expected text in UTF-8, found "
                                  "UTF-16\n"),
              std::string::npos)
        << profile.errors;
    Write("adjust.txt", utf16);
    const Outcome adjusted = ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"});
    EXPECT_EQ(adjusted.status, 3);
    EXPECT_NE(adjusted.errors.find("expected text in UTF-8, found UTF-16"), std::string::npos)
        << adjusted.errors;
    Write("home/materials.txt", utf16);
    EXPECT_NE(Cut().errors.find("found UTF-16"), std::string::npos);
}

TEST_F(HandWritten, AdjustmentsThatLeaveLessThanAVeneerAreTold) {
    WriteBoard();
    Write("adjust.txt", "[a]\nt=-17.9991\n");
    ExpectTold(ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt"}),
               "\"Side\": its Thickness 18 with the adjustment -17.9991 is 0.0009");
}

TEST_F(HandWritten, SizesThatAFractionMakesNothingOfAreToldByPart) {
    WriteBoard();
    Write("adjust.txt", "[a]\nt=-17.985\n");
    ExpectTold(
        ExportBoard({"--profile", "Cut List", "--adjustments", "adjust.txt", "--fractions"}),
        "the part \"Side\" (100): it has no size in the export: Thickness 0.015; expected at least 1/64, "
        "or an export without fractions\n");
    EXPECT_EQ(ExportBoard({"--profile", "Cut List", "--fractions"}).status, 0);
}

TEST_F(HandWritten, PartsWithoutLettersHaveNoSizesInAnExportWhichIsTold) {
    const Outcome outcome =
        Run({"export", ShippedSample().string(), "out.csv", "--select", "100,170", "--quiet"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(
        outcome.errors.find("the part \"Adjustable Shelf\" (170): it has no size in the export: Width 0, "
                            "Length 0, Thickness 0; expected letters (ORIE) that name its sizes\n"),
        std::string::npos)
        << outcome.errors;
    EXPECT_EQ(outcome.errors.find("(100)"), std::string::npos) << outcome.errors;
}

TEST_F(HandWritten, MaterialsTakeTheValuesOfTheTableAlone) {
    WriteBoard();
    const std::string whole = Read("home/materials.txt");
    const std::pair<const char*, const char*> cases[] = {{"grain=0\r", "grain=2\r"},
                                                         {"grain=0\r", "grain=-1\r"},
                                                         {"tool1=1\r", "tool1=2_D5\r"},
                                                         {"tool1=1\r", "tool1=1.0\r"},
                                                         {"tool1ss=18000\r", "tool1ss=18000.5\r"}};
    for (const auto& [good, bad] : cases) {
        Write("home/materials.txt", whole);
        Change("home/materials.txt", good, bad);
        const std::string key = std::string(bad).substr(0, std::string(bad).find('='));
        ExpectTold(Cut(),
                   key + " of the material \"18 white melamine\" is \"" +
                       std::string(bad).substr(key.size() + 1, std::string(bad).size() - key.size() - 2) +
                       "\", expected ");
        EXPECT_TRUE(WasCut()) << bad;
    }
    // The last of the cases: these have no speeds in the names of their layers.
    EXPECT_EQ(Run({"cnc", "board.dxf", "--target", "THERM", "--out", "therm"}).status, 0);
    EXPECT_EQ(Run({"materials", "list"}).status, 0);
}

TEST_F(HandWritten, SettingsThatNoRunCanMeanAreTold) {
    WriteBoard();
    const std::string whole = Read("home/settings.txt");
    Change("home/settings.txt", "CNCMultiplier=1\n", "CNCMultiplier=0\n");
    ExpectTold(Cut(), "CNCMultiplier is \"0\", expected a whole number from 1 to 1000000");
    for (const std::string name : {"BiesseWorksSpoil=0.3", "DrillSpoilAmount=1"}) {
        Write("home/settings.txt", whole);
        const std::string key = name.substr(0, name.find('='));
        Change("home/settings.txt", name + "\n", key + "=9999999999\n");
        ExpectTold(Cut(), key + " is \"9999999999\", expected a number from -100 to 100");
    }
}

TEST_F(HandWritten, AProfileIsTheOneOfItsExactName) {
    WriteBoard();
    Write("home/BrenvikProfiles.txt", "[cut]\ncolumns=QTY\n[Cut]\ncolumns=Part Name\n");
    EXPECT_EQ(ExportBoard({"--profile", "Cut"}).status, 0);
    EXPECT_EQ(Read("out.csv").rfind("Part Name", 0), 0U);
    EXPECT_EQ(ExportBoard({"--profile", "CUT"}).status, 2);
}

TEST_F(HandWritten, AProfileOfARunWithAColumnThatIsNoneIsRefused) {
    WriteBoard();
    Write("home/CNCProfile.txt", "[P]\ncolumns=ID,QTY,Material,Lenght\n");
    Write(
        "cut.journal",
        "select all\ncommand Show\npress tbMain.EXPORT\npick cboExportType \"Export to C2C\"\n"
        "check chkChooseCSV\npick cboProfileName \"P\"\npress cmdGo\nexpect form frmExport\npress cmdCancel\n"
        "close\n");
    const Outcome outcome = Run({"run", "board.dxf", "--journal", "cut.journal"});
    ExpectTold(outcome, "these are none of the list's: Lenght. This export is now aborting.");
    ExpectTold(outcome, "CNCProfile.txt:2: expected the name of a column, found \"Lenght\"");
    EXPECT_FALSE(Exists("home/drive_c/BV-DXF/Part_0_Side_7.dxf"));
}

TEST_F(HandWritten, HalfA32ndGoesAwayFromZeroWhicheverWayItsFifthDecimalWent) {
    for (const auto& [length, shown] :
         {std::pair(52 + 1 / 64.0, "052 1/32"), std::pair(52 + 3 / 64.0, "052 1/16")}) {
        WriteBoard(length);
        EXPECT_EQ(ExportBoard({"--fractions", "--profile", "Cut List"}).status, 0);
        EXPECT_NE(Read("out.csv").find(shown), std::string::npos) << Read("out.csv");
    }
}

TEST_F(HandWritten, AnOrderOfTextsIsRemarkedOnWhereNumbersAreMeant) {
    WriteBoard();
    const std::string remark = "Price is a text, and is compared as one: 10 comes before 9\n";
    EXPECT_EQ(Run({"list", "board.dxf", "--sort", "Price"}).errors, remark);
    EXPECT_EQ(Run({"list", "board.dxf", "--filter", "Price > 9"}).errors.find(remark), 0U);
    EXPECT_EQ(Run({"list", "board.dxf", "--sort", "Price", "--quiet"}).errors, "");
    EXPECT_EQ(Run({"list", "board.dxf", "--sort", "Length"}).errors, "");
}

}  // namespace
}  // namespace brenvik::cli_test
