// How typed text becomes answers: ends of answers, open commands, cancelling, wrong answers, the transcript.
#include "command_fixture.h"

namespace brenvik {
namespace {

using Typing = CommandTest;

TEST_F(Typing, ABlankEndsAnAnswer) {
    Type("box 0,0,0 10,20,30 ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Volume(), 6000);
    ExpectIdle();
}

TEST_F(Typing, AReturnEndsAnAnswer) {
    Type("box\r0,0,0\r10,20,30\r");
    EXPECT_EQ(Solid(0).Volume(), 6000);
}

TEST_F(Typing, ReturnAndLineFeedAreOneEnd) {
    Type("box\r\n\r");
    Type("\n10,20,30\n");
    EXPECT_EQ(Solid(0).Volume(), 6000);
}

TEST_F(Typing, AnOpenCommandTakesItsAnswersFromLaterCalls) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("erase ");
    EXPECT_TRUE(commandLine.Busy(document));
    Type("all ");
    EXPECT_EQ(Entities().size(), 1u);
    Type("\r");
    EXPECT_TRUE(Entities().empty());
    EXPECT_FALSE(commandLine.Busy(document));
}

TEST_F(Typing, TheSecondOfTwoBlanksClosesASelection) {
    BoxAt({0, 0, 0}, {1, 1, 1});
    Type("erase all  ");
    EXPECT_TRUE(Entities().empty());
    ExpectIdle();
}

TEST_F(Typing, NamesAreCaseBlindAndTakeUnderscoresAndPoints) {
    for (const char* name : {"BOX", "Box", "_box", "_.box", "._BOX"})
        Type(std::string(name) + " 0,0,0 1,1,1 ");
    EXPECT_EQ(Entities().size(), 5u);
}

TEST_F(Typing, AnEmptyAnswerAtTheBareLineDoesNothing) {
    Type("box 0,0,0 1,1,1 \r  \r\n");
    EXPECT_EQ(Entities().size(), 1u);
    ExpectIdle();
}

TEST_F(Typing, UnknownCommandsAreToldAndLeaveTheDrawingUntouched) {
    Type("explodify all  ");
    EXPECT_TRUE(Told("Unknown command \"EXPLODIFY\"."));
    EXPECT_TRUE(Entities().empty());
    ExpectIdle();
}

TEST_F(Typing, WrongAnswersAreToldAndAskedAgain) {
    Type("box here 0,0,0 1,1,1 ");
    EXPECT_TRUE(Told("\"here\" is no answer here: a point as x,y or x,y,z (Center) is expected."));
    EXPECT_EQ(Solid(0).Volume(), 1);
}

TEST_F(Typing, EscapeCancelsTheOpenCommand) {
    Type("box 0,0,0 5,5\x1b");
    ExpectIdle();
    EXPECT_TRUE(Entities().empty());
    EXPECT_TRUE(Told("*Cancelled*"));
    Type("\x1b\x1b");
    Type("box 0,0,0 1,1,1 ");
    EXPECT_EQ(Entities().size(), 1u);
}

TEST_F(Typing, EscapeForgetsWhatWasTypedSoFar) {
    Type(
        "era\x1b"
        "box 0,0,0 1,1,1 ");
    EXPECT_EQ(Entities().size(), 1u);
}

TEST_F(Typing, QuotesKeepBlanksTogether) {
    Type("-layer new \"Bank left\" \r");
    EXPECT_NE(document.LayerTable().Find("Bank left"), nullptr);
}

TEST_F(Typing, AReturnEndsEvenAQuotedAnswer) {
    Type("-layer set \"Bank\r\r");
    ExpectIdle();
}

TEST_F(Typing, CommandsMarkedTransparentRunWithinAnother) {
    Type("box 0,0,0 'osnapcoord 1 10,20,30 ");
    EXPECT_EQ(Solid(0).Volume(), 6000);
    EXPECT_EQ(commandLine.ProfileVariables().at("OSNAPCOORD"), "1");
}

TEST_F(Typing, OtherCommandsDoNotRunWithinAnother) {
    Type("box 0,0,0 'erase 10,20,30 ");
    EXPECT_TRUE(Told("ERASE can't be used within another command."));
    EXPECT_EQ(Entities().size(), 1u);
}

TEST_F(Typing, EscapeWithinATransparentCommandCancelsBoth) {
    Type("box 0,0,0 'osnapcoord \x1b");
    ExpectIdle();
}

TEST_F(Typing, TheTranscriptHoldsPromptsWithTheirAnswers) {
    Type("box\r0,0,0\r10,20\r30\r");
    const std::vector<std::string> wanted{
        "Command: box",
        "First corner of the box or [Center] <0,0,0>: 0,0,0",
        "Other corner or [Cube/Length]: 10,20",
        "Height: 30",
    };
    EXPECT_EQ(transcript, wanted);
}

TEST_F(Typing, ThePromptShowsTheOpenQuestion) {
    Type("box ");
    EXPECT_EQ(commandLine.Prompt(document), "First corner of the box or [Center] <0,0,0>:");
}

TEST_F(Typing, EveryDocumentHasALineOfItsOwn) {
    Type("box 0,0,0 ");
    HostDocument& other = application.NewDocument();
    other.SendCommand("box 0,0,0 1,1,1 ");
    EXPECT_EQ(other.CurrentSpace().Entities().size(), 1u);
    Type("2,2,2 ");
    EXPECT_EQ(Solid(0).Volume(), 8);
}

TEST_F(Typing, ClosingADocumentDropsItsOpenCommand) {
    HostDocument& other = application.NewDocument();
    other.SendCommand("box 0,0,0 ");
    other.Close(false);
    EXPECT_THROW(other.SendCommand("1,1,1 "), Failure);
}

TEST_F(Typing, AHostWithoutACommandLineSaysSo) {
    application.SetCommandLine(nullptr);
    EXPECT_EQ(FailureOf([&] { Type("box "); }).number(), host_failure_number::NotPossible);
}

TEST_F(Typing, ProductCommandsRunWhenTyped) {
    int runs = 0;
    commandLine.RegisterCommand("BVMAT", [&] { ++runs; });
    commandLine.RegisterCommand("33", [&] { runs += 10; });
    Type("bvmat\r33 ");
    EXPECT_EQ(runs, 11);
    ExpectIdle();
}

TEST_F(Typing, ProductCommandsSeeThePreviousSelection) {
    HostSolid& solid = BoxAt({0, 0, 0}, {1, 1, 1});
    std::vector<std::string> seen;
    commandLine.RegisterCommand("BRENVIK", [&] { seen = PreviousHandles(); });
    Type("select all  brenvik ");
    EXPECT_EQ(seen, std::vector{solid.Handle()});
}

TEST_F(Typing, ProductCommandsMayTypeThemselves) {
    commandLine.RegisterCommand("MAKE", [&] { Type("box 0,0,0 1,1,1 "); });
    Type("make make ");
    EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(Typing, ProductCommandsMayCloseTheDocument) {
    HostDocument& other = application.NewDocument();
    commandLine.RegisterCommand("SHUT", [&] { other.Close(false); });
    other.SendCommand("shut box 0,0,0 1,1,1 ");
    EXPECT_TRUE(other.Closed());
}

TEST_F(Typing, FailuresOfProductCommandsAreTold) {
    commandLine.RegisterCommand("BAD", [] { throw InvalidCall("the reason"); });
    Type("bad ");
    EXPECT_TRUE(Told("the reason"));
    ExpectIdle();
}

TEST_F(Typing, TheHostsOwnCommandsGoBeforeTheProducts) {
    commandLine.RegisterCommand("BOX", [] { FAIL(); });
    Type("box 0,0,0 1,1,1 ");
    EXPECT_EQ(Entities().size(), 1u);
}

}  // namespace
}  // namespace brenvik
