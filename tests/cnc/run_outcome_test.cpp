// What a run came to, part by part: its files, and what was told of it.
#include "cnc/output/run_outcome.h"

#include <algorithm>

#include "cnc/run_template_fixture.h"

namespace brenvik {
namespace {

class Outcome : public RunTemplateTest {
  protected:
    Outcome() {
        onWrite = [this](RunState& run) {
            const std::string name = "Part_" + std::to_string(run.part.index) + "_x_.dxf";
            files.WriteFile(run.FirstPass() ? std::string(OutputFolder) + name
                                            : std::string(SecondSideFolder) + "B" + name,
                            "a side");
        };
    }

    RunOutcomes outcomes;
};

TEST_F(Outcome, HasEachPartWithItsFilesAndWhatWasToldOfIt) {
    Boards({"Side", "Side panel", "Back"});
    firstStep = [](RunState& run) {
        run.part.NeedSecondSide = run.part.index == 0;
        if (run.part.index == 1) run.part.unexplained.emplace_back("a dome");
        return run.part.index == 2 ? PassOutcome::SkipPart : PassOutcome::GoOn;
    };
    RunA();
    const RunOutcome& last = outcomes.Last();
    ASSERT_EQ(last.parts.size(), 3U);
    EXPECT_EQ(last.parts[0].label.find("\"Side\" ("), 0U) << last.parts[0].label;
    EXPECT_EQ(last.parts[0].firstSide, "c:\\BV-DXF\\Part_0_x_.dxf");
    EXPECT_EQ(last.parts[0].secondSide, "c:\\BV-DXF\\2-sided\\BPart_0_x_.dxf");
    EXPECT_TRUE(last.parts[0].messages.empty()) << "those of \"Side panel\" are not its own";
    ASSERT_EQ(last.parts[1].messages.size(), 1U);
    EXPECT_TRUE(last.parts[1].messages[0].ends_with("a dome"));
    EXPECT_EQ(last.parts[1].secondSide, "");
    EXPECT_EQ(last.parts[2].firstSide, "") << "skipped";
    EXPECT_EQ(last.parts[2].messages.size(), 1U);
    EXPECT_TRUE(last.messages.empty());
    EXPECT_TRUE(last.complete);
    EXPECT_EQ(last.FileCount(), 3U);
    EXPECT_EQ(last.PartsToldOf(), 2U);
}

TEST_F(Outcome, TellsWhatIsOfNoPartApart) {
    Boards({"Side", "Back"});
    firstStep = [](RunState&) { return PassOutcome::EndRun; };
    RunA();
    ASSERT_EQ(outcomes.Last().messages.size(), 1U);
    EXPECT_EQ(outcomes.Last().messages[0].find("The run ended at the part "), 0U);
    EXPECT_FALSE(outcomes.Last().complete);
}

TEST_F(Outcome, IsThatOfTheLastRunAndNewOnce) {
    EXPECT_FALSE(outcomes.TakeNews());
    Boards({"Side", "Back"});
    RunA();
    EXPECT_TRUE(outcomes.TakeNews());
    EXPECT_FALSE(outcomes.TakeNews());
    document.ModelSpace().Item(0)->Delete();
    ChooseAllSolids();
    RunA();
    EXPECT_TRUE(outcomes.TakeNews());
    EXPECT_EQ(outcomes.Last().parts.size(), 1U);
}

}  // namespace
}  // namespace brenvik
