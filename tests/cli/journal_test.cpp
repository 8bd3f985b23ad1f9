// Journals as users write them: each file of tests/journals is played on the sample job and has to hold; and
// journals that don't hold say where and why.
#include <algorithm>
#include <map>

#include "checkout_paths.h"
#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

std::vector<std::string> JournalNames() {
    std::vector<std::string> names;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(BRENVIK_SOURCE_DIR) / "tests/journals"))
        if (entry.path().extension() == ".journal") names.push_back(entry.path().stem().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// What is told of journals that end with 1 by intent: they make lists that can't be right.
const std::map<std::string, std::string> ToldByIntent{
    // A left and a right side get one name.
    {"a_cnc_run_from_the_grid", "of these the solids of \"Drawer Side\" (166) differ from it"},
    // A typed size has no place in the drawing.
    {"apply_and_list_again", "its Length 700, typed into the list, was not written to the drawing"},
    // The next list leaves the part out.
    {"a_quote_in_a_name", "a single quote stands in its Part Name \"Jack's side\""},
    {"cells_that_cannot_be_kept", "its quantity is \"zwei\", expected a whole number"},
    {"export_the_list", "expected the name of a column, found \"(Blank)\""},
    // A note gets a quote that the next list can't take.
    {"letters_become_sizes", "a single quote stands in its Notes \"O'Brien's shelf, Türseite\""},
    {"letters_that_a_cell_refuses",
     "\"a\" was typed into its ORIE, which takes none of it and stays \"LWT\""},
    {"letters_follow_the_solids", "its letters LWT are dropped, since its extents were "},
};

class JournalFile : public ProgramTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(JournalFile, Holds) {
    const std::string journal =
        std::string(BRENVIK_SOURCE_DIR) + "/tests/journals/" + GetParam() + ".journal";
    const Outcome outcome = Run({"run", ShippedSample().string(), "--journal", journal});
    const auto told = ToldByIntent.find(GetParam());
    if (told == ToldByIntent.end()) {
        EXPECT_EQ(outcome.status, 0) << outcome.errors << outcome.output;
        return;
    }
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find(told->second), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome.errors.find(".journal: line "), std::string::npos) << outcome.errors;
}

std::string NameOf(const ::testing::TestParamInfo<std::string>& journal) { return journal.param; }

INSTANTIATE_TEST_SUITE_P(All, JournalFile, ::testing::ValuesIn(JournalNames()), NameOf);

TEST(JournalFiles, AreThere) { EXPECT_GE(JournalNames().size(), 5u); }

class Journal : public PlayedJournal {};

TEST_F(Journal, AFailingCheckEndsItWithStatus1AndTellsFileLineExpectedAndFound) {
    const Outcome outcome = Play("command ShowSettings\nexpect text Text1 \"36\"\nprint Text1\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors,
              "brenvik: a.journal: line 2: expect text Text1 \"36\": expected \"36\", found \"35\"\n");
}

TEST_F(Journal, WhatAClosedFormTakesWithItIsRemarkedOn) {
    const std::string list = "select 100\ncommand Show\ncell fpSpread1 1 \"Notes\" \"x\"\n";
    const Outcome lost = Play(list + "close\n");
    EXPECT_EQ(lost.status, 0);
    EXPECT_EQ(
        lost.errors,
        "line 4: frmMain closes without an Apply: what was typed into it, last in line 3, is not kept\n");
    EXPECT_EQ(Play(list + "press tbMain.APPLY_DRAWING\nclose\nsave out.dxf\n").errors, "");
    EXPECT_EQ(
        Play("command ShowSettings\ntype Text1 \"20\"\nclose\n").errors,
        "line 3: frmSettings closes without a button: what was typed into it, last in line 2, is not kept\n");
    EXPECT_EQ(Play("command ShowSettings\ntype Text1 \"20\"\npress cmdApply\n").errors, "");
}

TEST_F(Journal, AChangedDrawingThatIsNotSavedIsRemarkedOn) {
    const std::string sample = ShippedSample().string();
    const std::string told = " was changed and not saved: expected a step save in a.journal, or --save\n";
    const std::string applied =
        "select 100\ncommand Show\ncell fpSpread1 1 \"Notes\" \"x\"\npress tbMain.APPLY_CLOSE\n";
    for (const std::string& journal : {applied, std::string("host \"erase (handent \\\"100\\\")  \"\n")}) {
        const Outcome outcome = Play(journal);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_NE(outcome.errors.find(sample + told), std::string::npos) << journal << outcome.errors;
    }
    const Outcome later = Play("save out.dxf\n" + applied);
    EXPECT_EQ(later.status, 0) << later.errors;
    EXPECT_NE(later.errors.find(
                  sample + " was changed after it was saved as out.dxf, and not saved since: expected a step "
                           "save in a.journal, or --save\n"),
              std::string::npos)
        << later.errors;
    for (const std::string& kept : {applied + "save out.dxf\n", applied + "save out2.dxf\nsave out3.dxf\n",
                                    std::string("select all\ncommand Show\nclose\n")})
        EXPECT_EQ(Play(kept).errors.find("was changed and not saved"), std::string::npos) << kept;
    EXPECT_EQ(Play(applied, {"--save", "saved.dxf"}).errors.find("not saved"), std::string::npos);
}

TEST_F(Journal, AListThatIsCutAsItIsChangesNothing) {
    const std::string list = "select all\ncommand Show\n",
                      cut = "press tbMain.EXPORT\npick cboExportType \"Export to C2C\"\npress cmdGo\n";
    ASSERT_EQ(Play(list + "press tbMain.APPLY_CLOSE\nsave \"applied.dxf\"\n").status, 0);
    Write("a.journal", list + cut);
    const Outcome asItIs = Run({"run", "applied.dxf", "--journal", "a.journal"});
    EXPECT_NE(asItIs.errors.find("-- Export Complete! --"), std::string::npos) << asItIs.errors;
    EXPECT_EQ(asItIs.errors.find("not saved"), std::string::npos) << asItIs.errors;
    Write("a.journal", list + "cell fpSpread1 1 \"Notes\" \"x\"\n" + cut);
    EXPECT_NE(Run({"run", "applied.dxf", "--journal", "a.journal"}).errors.find("not saved"),
              std::string::npos);
}

TEST_F(Journal, AClosedDrawingTakesItsChangesAlongAndThatIsRemarkedOn) {
    const std::string sample = ShippedSample().string();
    const Outcome closed = Play("host \"erase (handent \\\"100\\\")  \"\nclose drawing\nopen \"" + sample +
                                "\"\nexpect data 100 PARTNAME \"Left Side\"\n");
    EXPECT_EQ(closed.status, 0) << closed.errors;
    EXPECT_NE(closed.errors.find(sample + " was changed and closed without being saved, by a.journal\n"),
              std::string::npos)
        << closed.errors;
    EXPECT_EQ(closed.errors.find("was changed and not saved"), std::string::npos) << closed.errors;
    EXPECT_EQ(Play("close drawing\n").errors, "");
    EXPECT_EQ(Play("close drawing\nselect all\n").status, 1);
    EXPECT_EQ(Play("command Show\nclose drawing\n").status, 1) << "a form is open";
}

TEST_F(Journal, WhatIsTypedAndCannotStandIsReportedWithPartAndColumn) {
    const std::string list = "select 100\ncommand Show\n", apply = "press tbMain.APPLY_CLOSE\nsave out.dxf\n";
    for (const char* quantity : {"two", "0", "1.5", "9999999"}) {
        const Outcome outcome = Play(list + "cell fpSpread1 1 Qty \"" + quantity + "\"\n" + apply);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(
            outcome.errors.find("the part \"Left Side\" (100): its quantity is \"" + std::string(quantity) +
                                "\", expected a whole number from 1 to 1000000\n"),
            std::string::npos)
            << outcome.errors;
    }
    const Outcome quote = Play(list + "cell fpSpread1 1 Notes \"O'Brien\"\n" + apply);
    EXPECT_EQ(quote.status, 1);
    EXPECT_NE(
        quote.errors.find("the part \"Left Side\" (100): a single quote stands in its Notes \"O'Brien\", "
                          "which the next list can't take"),
        std::string::npos)
        << quote.errors;
    const Outcome size = Play(list + "cell fpSpread1 1 Length \"0700.50\"\n" + apply);
    EXPECT_EQ(size.status, 1);
    EXPECT_NE(
        size.errors.find("(100): its Length 700.5, typed into the list, was not written to the drawing"),
        std::string::npos)
        << size.errors;
    // The letters have made it anew, and the same number is none of anybody's.
    for (const std::string good : {"cell fpSpread1 1 Length \"700\"\ncell fpSpread1 1 ORIE \"LWT\"\n",
                                   "cell fpSpread1 1 Length \"720.0\"\n", "cell fpSpread1 1 Qty \"12\"\n",
                                   "cell fpSpread1 1 Qty \"\"\n"})
        EXPECT_EQ(Play(list + good + apply).status, 0) << good;
}

TEST_F(Journal, LettersThatCannotBeAreReportedAndWipeNothingThatTheRulesDoNot) {
    const std::string list = "select 100\ncommand Show\n";
    const Outcome none = Play(list +
                              "cell fpSpread1 1 ORIE \"XYZ\"\nexpect cell fpSpread1 1 ORIE \"LWT\"\n"
                              "expect cell fpSpread1 1 Length \"720\"\npress tbMain.APPLY_CLOSE\n"
                              "expect data 100 ORIE \"LWT\"\n");
    EXPECT_EQ(none.status, 1);
    EXPECT_NE(
        none.errors.find("the part \"Left Side\" (100): \"XYZ\" was typed into its ORIE, which takes none of "
                         "it and stays \"LWT\"; expected L, W and T in some order\n"),
        std::string::npos)
        << none.errors;
    // A letter twice empties the cell, as the grid always did.
    for (const char* letters : {"LLW", "LW"}) {
        const Outcome refused = Play(list + "cell fpSpread1 1 ORIE \"" + letters +
                                     "\"\nexpect cell fpSpread1 1 ORIE \"\"\nclose\n");
        EXPECT_EQ(refused.status, 1);
        EXPECT_NE(refused.errors.find(
                      "the part \"Left Side\" (100): the letters \"" + std::string(letters) +
                      "\", typed into its ORIE, were refused, and its letters \"LWT\" are out of the "
                      "list with them; expected L, W and T in some order\n"),
                  std::string::npos)
            << refused.errors;
    }
    const Outcome part = Play(list + "cell fpSpread1 1 ORIE \"w-l t\"\nclose\n");
    EXPECT_EQ(part.status, 0) << part.errors;
    EXPECT_NE(part.errors.find("\"w-l t\" was typed into its ORIE, which takes \"wlt\" of it"),
              std::string::npos)
        << part.errors;
}

TEST_F(Journal, AnUnknownCommandFails) {
    const Outcome outcome = Play("command Shov\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "brenvik: a.journal: line 1: command Shov: expected a command, found \"Shov\"\n");
}

TEST_F(Journal, AnUnknownHandleFails) {
    const Outcome outcome = Play("select FFFFF\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        "brenvik: a.journal: line 1: select FFFFF: expected an entity FFFFF, found none in the drawing\n");
}

TEST_F(Journal, PrintsGoToTheOutputAndMessagesToTheTranscript) {
    const Outcome outcome = Play(
        "command ShowSettings\nprint Text1\nprint lblHeading\npress cmdCancel\ncommand Show\npress "
        "mnuAbout\nclose\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.output, "35\nBrenvik Settings\n");
    EXPECT_EQ(outcome.errors,
              "[About Brenvik] Brenvik 4.9 by Orvane, Inc.\\r\\nVersion " BRENVIK_VERSION "\n");
}

TEST_F(Journal, AFormLeftOpenIsClosedAndTold) {
    const Outcome outcome = Play("command ShowSettings\ntype Text1 77\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "the journal ended while frmSettings was open; closing it\n");
    EXPECT_EQ(Run({"settings", "get", "CircleSize"}).output, "35\n");
}

TEST_F(Journal, SavesTheDrawingUnderAName) {
    const Outcome outcome = Play("save one.dxf\n", {"--save", "two.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    for (const char* name : {"one.dxf", "two.dxf"})
        EXPECT_EQ(Run({"list", name}).output, Run({"list", ShippedSample().string()}).output) << name;
}

TEST_F(Journal, SavesByTheEndingOfTheName) {
    const Outcome outcome = Play("save one.step\nsave one.sat\nsave two.dxf\n");
    // What these have no place for is told as a conversion tells it.
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Read("one.step").rfind("ISO-10303-21", 0), 0u);
    EXPECT_EQ(Read("one.sat").rfind("400 ", 0), 0u);
    const Outcome converted = Run({"convert", ShippedSample().string(), "two.step"});
    EXPECT_EQ(converted.status, 1);
    EXPECT_EQ(Read("one.step").size(), Read("two.step").size());
    std::string losses = converted.errors;
    for (std::size_t at = 0; (at = losses.find("two.step")) != std::string::npos;)
        losses.replace(at, 3, "one");
    EXPECT_NE(outcome.errors.find(losses), std::string::npos) << outcome.errors;
    EXPECT_EQ(Run({"list", "two.dxf"}).output, Run({"list", ShippedSample().string()}).output);
}

TEST_F(Journal, RefusesToSaveUnderANameThatNoWriterGoesWith) {
    for (const std::string name : {"one.txt", "one", "/dev/full"}) {
        const Outcome outcome = Play("save " + name + "\n");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errors,
                  "brenvik: a.journal: line 1: save " + name +
                      ": expected a name that ends in .dxf, .dwg, .step, .stp or .sat, found \"" + name +
                      "\"\n");
    }
    EXPECT_FALSE(Exists("one") || Exists("one.dxf") || Exists("one.txt"));
}

TEST_F(Journal, AnAnswerThatNobodyAskedForIsToldAndNotDone) {
    const Outcome outcome = Play("answer yes\nselect 100\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "line 1: the answer \"yes\" was not asked for\n");
}

TEST_F(Journal, ChecksOfNamesThatNobodyKnowsFail) {
    const std::pair<const char*, const char*> cases[] = {
        {"expect setting CirclSize \"\"", "expected the name of a setting, found \"CirclSize\"\n"},
        {"expect data 100 MATERAIL \"\"", "expected one of the keys QUANTITY, PARTNAME, "},
        {"expect entities CARCAS 0", "expected a layer of the drawing, found \"CARCAS\"\n"}};
    for (const auto& [step, told] : cases) {
        const Outcome outcome = Play(step + std::string("\n"));
        EXPECT_EQ(outcome.status, 1) << step;
        EXPECT_EQ(outcome.errors.rfind("brenvik: a.journal: line 1: " + std::string(step) + ": " + told, 0),
                  0u)
            << outcome.errors;
    }
    EXPECT_EQ(Play("expect data 100 material \"White Melamine\"\nexpect data 16F EB1 \"\"\n"
                   "expect entities carcass 9\n")
                  .status,
              0);
}

TEST_F(Journal, WithoutAStepDoesNothing) {
    const Outcome outcome = Play("# nothing\n");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.output + outcome.errors, "");
}

TEST_F(Journal, ThatIsAFolderIsRefusedAsThat) {
    const Outcome outcome = Run({"run", ShippedSample().string(), "--journal", "."});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.errors, "brenvik: .: expected a journal, found a folder\n");
}

TEST_F(Journal, TellsSettingsThatItsDialogHasStoredAndThatCannotBe) {
    const Outcome length = Play("command ShowSettings\ntype Text1 \"big\"\npress cmdApply\n");
    EXPECT_EQ(length.status, 1);
    EXPECT_NE(length.errors.find("settings.txt:"), std::string::npos) << length.errors;
    EXPECT_NE(length.errors.find(": CircleSize is \"big\", expected a number"), std::string::npos)
        << length.errors;
    EXPECT_NE(Read("home/settings.txt").find("CircleSize=big\n"), std::string::npos)
        << "the dialog stores it";
    EXPECT_EQ(Run({"settings", "set", "CircleSize", "35"}).status, 0);
    const Outcome scale = Play("command ShowSettings\ncheck Option1\npress cmdApply\n");
    EXPECT_EQ(scale.status, 1);
    EXPECT_NE(scale.errors.find("ExportScaleSetting is \"1\", expected 2 or 3"), std::string::npos)
        << scale.errors;
    EXPECT_EQ(Run({"settings", "set", "ExportScaleSetting", "2"}).status, 0);
    EXPECT_EQ(Play("command ShowSettings\ncheck Option3\ntype Text1 \"36\"\npress cmdApply\n").errors, "");
}

TEST_F(Journal, ThatIsAnEmptyFileIsRefusedAsThat) {
    const Outcome outcome = Play("");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.errors, "brenvik: a.journal: expected a journal, found an empty file\n");
}

}  // namespace
}  // namespace brenvik::cli_test
