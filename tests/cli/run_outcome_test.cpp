// What a journal's run came to: its exit status, and what it tells of the CNC runs in it.
#include "checkout_paths.h"
#include "cnc/run/run_set_up.h"
#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

class RunOutcome : public PlayedJournal {
  protected:
    // Of the sample job 100 is a board of the library, and 170 is the shelf, which has no material yet.
    static std::string Looks(const std::string& message) { return "expect message \"" + message + "\"\n"; }

    const std::string cncOnShelf = "select 170\ncommand BVC2C\n";
    const std::string noLetters = "ORIE data not detected on this part, so it is being set to LWT";
    const std::string unknown =
        "You do not have the material 18 UNKNOWNMATERIAL in the material database, so this part export will "
        "be skipped.";
    const std::string named = "The part \"Adjustable Shelf\" (170) was skipped.\n";
};

TEST_F(RunOutcome, IsDoneWhereACncRunSkipsNothing) {
    const Outcome outcome = Play("select 100\ncommand BVC2C\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "[] " + std::string(RunWarning) + "\n[] -- Export Complete! --\n");
}

TEST_F(RunOutcome, IsIncompleteWhereACncRunSkipsAPartThatNoStepLooksAt) {
    const Outcome outcome = Play(cncOnShelf);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find(named), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(
                  "\na.journal: no \"expect message\" looks at a message box that reports something "
                  "skipped or failed; the first: [] " +
                  unknown + "\n"),
              std::string::npos)
        << outcome.errors;
}

TEST_F(RunOutcome, IsDoneWhereAStepLooksAtTheSkippedPart) {
    const Outcome outcome =
        Play(cncOnShelf + Looks(std::string(RunWarning)) + Looks(noLetters) + Looks(unknown));
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_NE(outcome.errors.find(named), std::string::npos) << outcome.errors;
}

TEST_F(RunOutcome, TellsOfEachRun) {
    const Outcome outcome = Play(cncOnShelf + "select 16F\ncommand BVRCIM\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find(named), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("The part 16F was skipped.\n"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find("looks at 2 message boxes that report"), std::string::npos)
        << outcome.errors;
}

TEST_F(RunOutcome, WritesTheReportIntoTheTranscriptToo) {
    EXPECT_EQ(Play(cncOnShelf, {"--transcript", "t.txt"}).status, 1);
    EXPECT_NE(Read("t.txt").find(named), std::string::npos);
}

TEST_F(RunOutcome, IsIncompleteWhereAnApplyIsRefused) {
    const std::string grouped =
        "select all\ncommand Show\npress tbMain.SORT\ncheck Check1(3)\npress btnOK\npress "
        "tbMain.APPLY_DRAWING\n";
    const std::string box = "You cannot apply changes to the Drawing while GROUPING is active.";
    const Outcome outcome = Play(grouped + "close\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
    EXPECT_NE(outcome.errors.find("the first: [Error] " + box), std::string::npos) << outcome.errors;
    EXPECT_EQ(Play(grouped + Looks(box) + "close\n").status, 0);
}

TEST_F(RunOutcome, IsIncompleteWhereAScanDropsAPart) {
    const Outcome outcome = Play(
        "select 100\ncommand Show\ncell fpSpread1 1 \"Part Name\" \"Jack's side\"\npress tbMain.APPLY_CLOSE\n"
        "command Show\nclose\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
}

TEST_F(RunOutcome, IsIncompleteWhereAnExportFails) {
    const Outcome outcome = Play(
        "select all\nanswer yes\ncommand Show\npress tbMain.EXPORT\npick cboExportType \"Export to CSV\"\n"
        "type txtSaveCSVFile \"no/such/folder/list.csv\"\npress cmdGo\nclose\nclose\n");
    EXPECT_EQ(outcome.status, 1) << outcome.errors;
}

TEST_F(RunOutcome, IsDoneWhereABoxOnlyAnnounces) {
    const Outcome outcome = Play(
        "select 100\ncommand Show\npress mnuAbout\npress tbMain.EXPORT\npick cboExportType \"Export to "
        "CSV\"\n"
        "type txtSaveCSVFile \"list.csv\"\npress cmdGo\nclose\n");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
}

TEST_F(RunOutcome, IsDoneWhereTheJournalAnswersTheQuestion) {
    const std::string journal =
        "select all\ncommand Show\npress tbMain.SORT\ncheck Check1(3)\npress btnOK\npress "
        "tbMain.APPLY_CLOSE\n";
    EXPECT_EQ(Play("answer yes\n" + journal).status, 0);
    EXPECT_EQ(Play(journal).status, 1) << "nobody has said that the edits may go";
}

}  // namespace
}  // namespace brenvik::cli_test
