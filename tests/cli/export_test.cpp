// Exports of the sample job, compared with whole files, and options that are refused.
#include <sstream>

#include "checkout_paths.h"
#include "program.h"
#include "support/ezdxf_audit.h"
#include "support/golden.h"

namespace brenvik::cli_test {
namespace {

class Export : public ProgramTest {
  protected:
    Outcome ExportTo(const std::string& name, const std::vector<std::string>& options) const {
        std::vector<std::string> words{"export", ShippedSample().string(), name};
        words.insert(words.end(), options.begin(), options.end());
        return Run(words);
    }
    /// Two parts of the sample have no letters, and so no sizes, which is told.
    static std::string WithoutLostSizes(const std::string& errors) {
        std::istringstream lines(errors);
        std::string line, others;
        while (std::getline(lines, line))
            if (line.find(" has no size in the export: ") == std::string::npos) others += line + "\n";
        return others;
    }
    void ExpectGolden(const std::string& golden, const std::vector<std::string>& options) const {
        const Outcome outcome = ExportTo("out.csv", options);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(WithoutLostSizes(outcome.errors), "[Done.] Export Complete!!\n");
        test::ExpectGolden("cli/golden/" + golden, Read("out.csv"));
        // Every line has as many cells as the head, as another reader of such files counts them.
        const test::CommandResult counted = test::RunCommand(
            "/usr/bin/python3 -c 'import csv, sys; print(len({len(r) for r in "
            "csv.reader(open(sys.argv[1]))}))' "
            "'" +
            Path("out.csv") + "'");
        if (counted.status == 0) {
            EXPECT_EQ(counted.output, "1\n");
        }
    }
    /// A profile of the shop's own, and adjustments: the carcass gains in length, white boards in width too.
    void WriteShopFiles() const {
        ASSERT_EQ(Run({"init"}).status, 0);
        Write("home/BrenvikProfiles.txt",
              "[Saw]\r\nextension=csv\r\ncolumns=PN,|Job 7|,(blank),L x W x T,Length,Width,Thickness,"
              "Thickness-Material (Imperial)\r\n");
        Write("adjust.txt",
              "[carcass]\r\nSub Assembly=carcass\r\nl=0.5\r\n[white]\r\nMaterial=White Melamine\r\nl=1\r\nw=-"
              "0.25\r\n");
    }
};

TEST_F(Export, HasTheStandardColumns) { ExpectGolden("export-standard.csv", {}); }

TEST_F(Export, SaysWhereADriveIs) {
    const Outcome outcome = ExportTo("K:12.csv", {});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_NE(outcome.errors.find("K:12.csv is on a drive, and was written to " +
                                  Path("home/drive_k/12.csv") + "\n"),
              std::string::npos)
        << outcome.errors;
    EXPECT_TRUE(Exists("home/drive_k/12.csv"));
}

TEST_F(Export, NeverTakesTheNameOfADrawing) {
    for (const std::string name : {"b.dxf", "B.DWG", "b.step", "b.stp", "b.sat", "b.SAB"}) {
        Write(name, "somebody's drawing");
        const Outcome outcome = ExportTo(name, {});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.errors,
                  "brenvik: " + name +
                      ": expected a name for a CSV file, found the ending of a drawing; brenvik "
                      "convert writes drawings\n");
        EXPECT_EQ(Read(name), "somebody's drawing");
    }
}

TEST_F(Export, HoldsTheCellsOfTheListAsAnotherReaderSeesThem) {
    ASSERT_EQ(ExportTo("out.csv", {}).status, 0);
    const Outcome list = Run({"list", ShippedSample().string(), "--format", "json"});
    ASSERT_EQ(list.status, 0);
    Write("list.json", list.output);
    const test::CommandResult compared =
        test::RunCommand("/usr/bin/python3 " BRENVIK_SOURCE_DIR "/tests/tools/compare_export.py '" +
                         Path("out.csv") + "' '" + Path("list.json") + "'");
    EXPECT_EQ(compared.status, 0) << compared.output;
    EXPECT_EQ(compared.output, "304\n") << "16 parts, 19 columns";
}

TEST_F(Export, FollowsSortAndFilter) {
    ExpectGolden("export-sorted.csv", {"--filter", "Sub Assembly = Drawer", "--sort", "Length desc, Width"});
}

TEST_F(Export, OfAGroupedListHasItsColumnsAlone) {
    ExpectGolden("export-grouped.csv", {"--group", "Material, Thickness"});
}

TEST_F(Export, TakesAProfileWithFixedTextBlanksAndSizes) {
    WriteShopFiles();
    ExpectGolden("export-profile.csv", {"--profile", "saw"});
}

TEST_F(Export, AddsTheAdjustmentsAndWritesFractions) {
    WriteShopFiles();
    ExpectGolden("export-adjusted.csv", {"--profile", "Saw", "--adjustments", "adjust.txt", "--fractions"});
}

TEST_F(Export, DoesNotDependOnTheUnitsOfTheHome) {
    ASSERT_EQ(Run({"init", "--units", "imperial"}).status, 0);
    ExpectGolden("export-standard.csv", {});
}

TEST_F(Export, WritesOverAFileAndSaysSo) {
    Write("out.csv", "old");
    const Outcome outcome = ExportTo("out.csv", {"--filter", "Length > 700"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors,
              "[Overwrite File] This file already exists. Do you want to overwrite it? -> yes (default)\n"
              "[Done.] Export Complete!!\n");
    EXPECT_EQ(Read("out.csv").rfind("PN,QTY,", 0), 0u);
}

TEST_F(Export, RefusesUnknownProfilesAndAdjustmentsWithoutOne) {
    const Outcome profile = ExportTo("out.csv", {"--profile", "nope"});
    EXPECT_EQ(profile.status, 2);
    EXPECT_EQ(profile.errors.rfind("brenvik: --profile: there is no profile \"nope\"", 0), 0u)
        << profile.errors;
    const Outcome adjustments = ExportTo("out.csv", {"--adjustments", "adjust.txt"});
    EXPECT_EQ(adjustments.status, 2);
    EXPECT_EQ(adjustments.errors.rfind("brenvik: --adjustments: ", 0), 0u) << adjustments.errors;
    EXPECT_FALSE(Exists("out.csv"));
}

TEST_F(Export, TellsAdjustmentsThatCannotBeRead) {
    const Outcome outcome = ExportTo("out.csv", {"--profile", "Cut List", "--adjustments", "none.txt"});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_NE(outcome.errors.find("none.txt: File not found"), std::string::npos) << outcome.errors;
    EXPECT_FALSE(Exists("out.csv"));
}

TEST_F(Export, TellsARememberedAdjustmentFileThatIsGone) {
    WriteShopFiles();
    ASSERT_EQ(Run({"settings", "set", "CSV_SAVE\\CVS_ADJ_PATH", "C:\\gone.txt"}).status, 0);
    const Outcome outcome = ExportTo("out.csv", {"--profile", "Saw"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("the BrenvikAdjustments file C:\\gone.txt can't be read (Path not found), so no "
                            "sizes are adjusted\n"),
        std::string::npos)
        << outcome.errors;
    EXPECT_TRUE(Exists("out.csv"));
    EXPECT_EQ(ExportTo("standard.csv", {}).status, 0) << "the standard columns are never adjusted";
}

TEST_F(Export, TellsAnAdjustmentFileWithoutASection) {
    WriteShopFiles();
    Write("nameless.txt", "Sub Assembly=carcass\nl=5\n");
    const Outcome outcome = ExportTo("out.csv", {"--profile", "Saw", "--adjustments", "nameless.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("nameless.txt holds no adjustment"), std::string::npos) << outcome.errors;
    ASSERT_EQ(ExportTo("plain.csv", {"--profile", "Saw"}).status, 0);
    EXPECT_EQ(Read("out.csv"), Read("plain.csv"));
}

TEST_F(Export, NamesTheAdjustmentFileOfTheSettingsThatChangesSizes) {
    WriteShopFiles();
    ASSERT_EQ(Run({"settings", "set", "CVS_ADJ_PATH", Path("adjust.txt")}).status, 0);
    const std::string told =
        " rows have sizes that the adjustment file of the settings has changed: " + Path("adjust.txt") + "\n";
    const Outcome stored = ExportTo("stored.csv", {"--profile", "Saw"});
    EXPECT_EQ(stored.status, 0);
    EXPECT_NE(stored.errors.find(told), std::string::npos) << stored.errors;
    const Outcome named = ExportTo("named.csv", {"--profile", "Saw", "--adjustments", "adjust.txt"});
    EXPECT_EQ(named.errors.find("adjustment file"), std::string::npos) << named.errors;
    EXPECT_EQ(Read("stored.csv"), Read("named.csv"));
    EXPECT_EQ(ExportTo("standard.csv", {}).errors.find("adjustment file"), std::string::npos);
}

TEST_F(Export, SaysThatANamedAdjustmentFileHasChangedNoSize) {
    WriteShopFiles();
    Write("elm.txt", "[elm]\nMaterial=Elm\nl=1\n");
    const Outcome none = ExportTo("out.csv", {"--profile", "Saw", "--adjustments", "elm.txt"});
    EXPECT_EQ(none.status, 0);
    EXPECT_EQ(WithoutLostSizes(none.errors),
              Path("elm.txt") +
                  ": no size of the 16 rows has been changed; expected a row that meets one of the "
                  "adjustments\n[Done.] Export Complete!!\n");
    EXPECT_EQ(ExportTo("two.csv", {"--profile", "Saw", "--adjustments", "adjust.txt"})
                  .errors.find("has been changed"),
              std::string::npos);
}

TEST_F(Export, SaysHowABlankColumnIsWritten) {
    WriteShopFiles();
    Write("home/BrenvikProfiles.txt", "[Saw]\ncolumns=PN,(Blank),Length\n");
    const Outcome outcome = ExportTo("out.csv", {"--profile", "Saw"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(
        outcome.errors.find("BrenvikProfiles.txt:2: expected the name of a column, found \"(Blank)\", which "
                            "stands for a blank cell in small letters alone, (blank); it has no cell"),
        std::string::npos)
        << outcome.errors;
}

TEST_F(Export, TellsAFileThatCannotBeWritten) {
    const Outcome outcome = ExportTo("none/out.csv", {});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("none/out.csv: the list was not exported\n"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(outcome.errors.find("the part"), std::string::npos) << outcome.errors;
}

TEST_F(Export, RefusesABlankName) {
    const Outcome outcome = Run({"export", ShippedSample().string(), ""});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_NE(outcome.errors.find("OUT: expected a value, found an empty text"), std::string::npos)
        << outcome.errors;
    EXPECT_EQ(Run({"list", ""}).status, 2);
    EXPECT_EQ(Run({"settings", "set", "MDBPath", ""}).status, 0) << "a blank value can be meant";
}

TEST_F(Export, TellsHowANegativeSizeIsWrittenAsAFraction) {
    WriteShopFiles();
    Write("adjust.txt", "[all]\r\nMaterial=White HDF\r\nt=-8.75\r\n");
    const std::string errors =
        ExportTo("out.csv", {"--profile", "Saw", "--adjustments", "adjust.txt", "--fractions"}).errors;
    EXPECT_NE(errors.find("Thickness -0.75, written as \"-75/100\"; expected a size above 0"),
              std::string::npos)
        << errors;
    Write("home/BrenvikProfiles.txt", "[Saw]\r\ncolumns=PN,Thickness\r\n");
    const std::string padded =
        ExportTo("out.csv", {"--profile", "Saw", "--adjustments", "adjust.txt", "--fractions"}).errors;
    EXPECT_NE(padded.find("Thickness -0.75, written as \"0- 75/100\"; expected"), std::string::npos)
        << padded;
    EXPECT_NE(Read("out.csv").find("B600-07,0- 75/100"), std::string::npos);
}

TEST_F(Export, OfAJournalSaysThatItIsCompleteBehindWhatItLacks) {
    const std::string press =
        "select 170\ncommand Show\nanswer yes\npress tbMain.EXPORT\ntype txtSaveCSVFile \"out.csv\"\npress "
        "cmdGo\n";
    const std::string lack = " has no size in the export: ", box = "[Done.] Export Complete!!\n";
    Write("whole.journal", press + "close\n");
    Write("failing.journal", press + "expect rows fpSpread1 5\n");
    for (const std::string journal : {"whole.journal", "failing.journal"}) {
        const std::string errors = Run({"run", ShippedSample().string(), "--journal", journal}).errors;
        std::filesystem::remove(Path("out.csv"));
        ASSERT_NE(errors.find(lack), std::string::npos) << errors;
        EXPECT_LT(errors.find(lack), errors.find(box)) << errors;
        EXPECT_EQ(errors.find(lack), errors.rfind(lack)) << errors;
    }
    // What no box stands behind is told where the journal fails, too.
    Write("typed.journal",
          "select 170\ncommand Show\ncell fpSpread1 1 ORIE \"XYL\"\nexpect rows fpSpread1 5\n");
    const std::string errors = Run({"run", ShippedSample().string(), "--journal", "typed.journal"}).errors;
    EXPECT_NE(errors.find("\"XYL\" was typed into its ORIE"), std::string::npos) << errors;
}

TEST_F(Export, SaysThatItIsCompleteBehindWhatItLacks) {
    const std::string errors = ExportTo("out.csv", {}).errors, end = "[Done.] Export Complete!!\n";
    EXPECT_NE(errors.find(" has no size in the export: "), std::string::npos) << errors;
    EXPECT_TRUE(errors.ends_with(end)) << errors;
}

// The list goes on showing a row that was typed out of its filter, while the export asks the part table
// again.
TEST_F(Export, CountsTheRowsThatAreTypedOutOfTheFilter) {
    const std::string edit =
        "select all\ncommand Show\npress tbMain.FILTER\npick cboCol(0) \"Part Name\"\npick cboCrit(0) #0\n"
        "type cboCritData(0) \"Bottom\"\npress btnOK\nexpect rows fpSpread1 1\n";
    const std::string go = "press tbMain.EXPORT\ntype txtSaveCSVFile \"rows.csv\"\npress cmdGo\n";
    Write("edited.journal", edit + "cell fpSpread1 1 \"Part Name\" \"Bottom 2\"\n" + go + "close\n");
    Write("filtered.journal", edit + go + "close\n");
    const auto play = [&](const std::string& journal) {
        return Run({"run", ShippedSample().string(), "--journal", journal});
    };
    const std::string left =
        "1 row of the list no longer meets its filter and is not in the export; filter again to see";
    const Outcome edited = play("edited.journal");
    EXPECT_NE(edited.errors.find(left), std::string::npos) << edited.errors;
    EXPECT_EQ(edited.status, 1);
    EXPECT_EQ(play("filtered.journal").errors.find(left), std::string::npos);
}

}  // namespace
}  // namespace brenvik::cli_test
