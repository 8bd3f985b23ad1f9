// Journals that type on the host's command line: what is told of it, and where it is written down.
#include "played_journal.h"

namespace brenvik::cli_test {
namespace {

class HostLine : public PlayedJournal {
  protected:
    /// How a refusal is told at the end.
    static std::string refused(const std::string& line, const std::string& text) {
        return "a.journal: line " + line + ": the host's command line refused: " + text + "\n";
    }
    static constexpr const char* erased =
        "Command: erase\n"
        "Select objects: (handent \"152\")\n"
        "1 found, 1 in all.\n"
        "Select objects:\n";
};

TEST_F(HostLine, IsToldOnStandardError) {
    const Outcome outcome = Play("host \"erase (handent \\\"152\\\")  \"\nhost \"glue \"\nsave kept.dxf\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, std::string(erased) + "Command: glue\nUnknown command \"GLUE\".\n" +
                                  refused("2", "Unknown command \"GLUE\"."));
}

TEST_F(HostLine, EveryRefusalIsToldOnceWithItsLineAlsoInAQuietRun) {
    const Outcome outcome = Play(
        "host \"glue glue \"\n"
        "host \"-layer s Nowhere  \"\n"
        "host \"move (handent \\\"FFFF\\\") (handent \\\"152\\\")  here 0,0,0 0,0,0 \"\n"
        "host \"setvar ucsfollow maybe  \"\n"
        "command BVFreezeSections\n",
        {"--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(
        outcome.errors,
        refused("1", "Unknown command \"GLUE\".") + refused("2", "The drawing has no layer \"Nowhere\".") +
            refused("3", "No object has the handle that (handent \"FFFF\") names.") +
            refused("3", "\"here\" is no answer here: a point as x,y or x,y,z (Displacement) is expected.") +
            refused("4", "\"maybe\" is no value of UCSFOLLOW: a whole number from 0 to 1 is expected.") +
            refused("5", "No layer matches \"bv-section*\"."));
}

TEST_F(HostLine, ARefusalThatAStepLooksAtIsNoFault) {
    const Outcome outcome =
        Play("host \"glue \"\nexpect refusal \"Unknown command \\\"GLUE\\\".\"\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(Play("host \"regen \"\nexpect refusal \"No.\"\n", {"--quiet"}).errors,
              "brenvik: a.journal: line 2: expect refusal \"No.\": expected \"No.\", found no refusal\n");
}

TEST_F(HostLine, AnObjectNamedOnALockedLayerIsRefused) {
    const Outcome outcome = Play("host \"-layer lo *  erase (handent \\\"152\\\")  \"\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, refused("1", "1 found, 0 in all; 1 on a locked layer."));
    EXPECT_EQ(Play("host \"-layer lo *  erase all  \"\n", {"--quiet"}).status, 0);
}

TEST_F(HostLine, IsLeftOutWhenQuiet) {
    const Outcome outcome = Play("host \"erase (handent \\\"152\\\")  \"\nsave kept.dxf\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(HostLine, GoesToTheTranscriptWithTheMessageBoxes) {
    const Outcome outcome =
        Play("host \"erase (handent \\\"152\\\")  brenvik \"\npress mnuAbout\nclose\nsave kept.dxf\n",
             {"--transcript", "told.txt"});
    EXPECT_EQ(outcome.status, 0);
    const std::string box = "[About Brenvik] Brenvik 4.9 by Orvane, Inc.\\r\\nVersion " BRENVIK_VERSION "\n";
    EXPECT_EQ(outcome.errors, box);
    EXPECT_EQ(Read("told.txt"), erased + ("Command: brenvik\n" + box));
}

TEST_F(HostLine, ATranscriptIsKeptOfAJournalThatFails) {
    const Outcome outcome = Play("host \"regen \"\nexpect form frmMain\n", {"--transcript", "told.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(Read("told.txt").rfind("Command: regen\n", 0), 0u) << Read("told.txt");
}

TEST_F(HostLine, ATranscriptThatCannotBeWrittenEndsTheRunBeforeItsFirstStep) {
    const Outcome outcome = Play("save \"saved.dxf\"\n", {"--transcript", "none/told.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "brenvik: none/told.txt: the transcript can't be written\n");
    EXPECT_FALSE(Exists("saved.dxf"));
}

TEST_F(HostLine, ACommandOfTheSystemCancelsWhatIsStillAsked) {
    const Outcome outcome = Play(
        "host \"move (handent \\\"152\\\")  \"\nselect 152\npoint 0,0,0\npoint 0,0,0\ncommand BVMove\n"
        "host \"regen \"\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.errors.find("[Displacement]: *Cancelled*"), std::string::npos) << outcome.errors;
    EXPECT_NE(outcome.errors.find(refused("5", "The open command was cancelled for BVMove.")),
              std::string::npos)
        << outcome.errors;
    EXPECT_NE(outcome.errors.find("Command: regen\n"), std::string::npos) << outcome.errors;
}

TEST_F(HostLine, ACommandLeftWaitingIsTold) {
    const Outcome outcome = Play("host \"erase (handent \\\"152\\\") \"\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "a.journal: the journal ended while the host's command line asked: Select objects:\n");
}

TEST_F(HostLine, AWordThatNobodyEnteredIsTold) {
    const Outcome outcome = Play("host \"BVHIDE\"\nsave \"kept.dxf\"\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "a.journal: \"BVHIDE\" was typed on the host's command line and never entered: expected a "
              "blank or \\n behind it\n");
}

TEST_F(HostLine, IsNotForTypingWhileAFormIsOpen) {
    const Outcome outcome = Play("command Show\nhost \"erase all  \"\n", {"--quiet"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "brenvik: a.journal: line 2: host \"erase all  \": expected no open form, found the form "
              "frmMain\n");
}

TEST_F(HostLine, ErasedSolidsLeaveTheListAndTheSavedDrawing) {
    const Outcome outcome = Play(
        "host \"erase (handent \\\"152\\\")  \"\n"
        "select all\n"
        "command Show\n"
        "  expect rows fpSpread1 15\n"
        "  expect cell fpSpread1 7 \"Part Name\" \"Door\"\n"
        "  press tbMain.APPLY_CLOSE\n"
        "expect no message\n",
        {"--quiet", "--save", "rest.dxf"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    const std::string list = Run({"list", "rest.dxf", "--format", "csv"}).output;
    EXPECT_EQ(list.find(",Back,"), std::string::npos) << list;
    EXPECT_NE(list.find(",Door,"), std::string::npos) << list;
}

TEST_F(HostLine, OpensTheFormsOfTheSystemForTheStepsBehindIt) {
    const Outcome outcome = Play(
        "select 156\n"
        "host \"BRENVIK \"\n"
        "  expect form frmMain\n"
        "  expect rows fpSpread1 1\n"
        "  close\n"
        "host \"bset \"\n"
        "  expect form frmSettings\n"
        "  close\n"
        "expect no form\n",
        {"--quiet"});
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(outcome.errors, "");
}

}  // namespace
}  // namespace brenvik::cli_test
