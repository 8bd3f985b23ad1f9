// The loop over the parts: what a pass begins with, second sides, skips, and what is left in the folders.
#include <algorithm>
#include <optional>

#include "cnc/output/output_care.h"
#include "cnc/run_template_fixture.h"
#include "core/fakes/fake_progress.h"
#include "session/progress.h"

namespace brenvik {
namespace {

class RunLoop : public RunTemplateTest {
  protected:
    void ExpectNoDrawingLeft() {
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            EXPECT_TRUE(FilesIn(folder, "*.dwg").empty()) << folder;
        EXPECT_EQ(host.Documents().Count(), 1);
        EXPECT_EQ(host.Active(), &document);
    }
    /// Writes the work drawings that the alignment makes.
    void WriteWorkDrawings(const RunState& run) {
        for (const std::string_view path : {WorkDrawing, WorkDrawing2}) files.WriteFile(path, "work");
        if (run.FirstPass()) return;
        for (const std::string_view path : {SecondSideWorkDrawing, SecondSideWorkDrawing2})
            files.WriteFile(path, "work");
    }
};

TEST_F(RunLoop, OpensEachPartOnceAndLeavesItsFileAlone) {
    Boards({"Side", "Shelf"});
    RunA();
    EXPECT_EQ(seen, (Texts{"c:\\BV-DXF\\Part_0.dwg", "c:\\BV-DXF\\Part_1.dwg"}));
    EXPECT_EQ(listed, (std::vector<int>{0, 1}));
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_done.dxf", "Part_1_done.dxf"}));
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    EXPECT_TRUE(MessagesBetween().empty());
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, BeginsEachPassClean) {
    Boards({"Side", "Shelf"});
    firstStep = [](RunState& run) {
        EXPECT_TRUE(LayerExists(*run.part.drawing, "BrenvikExplode"));
        EXPECT_EQ(run.part.drawing->SelectionSets().Item("exploded")->Count(), 0);
        EXPECT_EQ(run.part.drawing->ModelSpace().Count(), 1);
        EXPECT_EQ(run.part.bits.SavedToolDiameters, (std::array<double, 3>{}));
        EXPECT_EQ(run.part.DimL + run.part.DimW + run.part.DimT, "000");
        EXPECT_EQ(run.part.LastAddedLayer, "");
        run.part.bits.SavedToolDiameters = {1, 2, 3};
        run.part.DimL = "600";
        run.part.LastAddedLayer = "VD_";
        run.part.NeedSecondSide = true;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(passes, 4);
}

TEST_F(RunLoop, TheSessionIsAtThePartsDrawingDuringAPassAndAtTheRunsBetween) {
    Boards({"Side", "Shelf"});
    int between = 0;
    ObserveRuns([&](const RunProgress&) {
        ++between;
        EXPECT_EQ(TheSession().AcadDoc, &document);
    });
    firstStep = [](RunState& run) {
        EXPECT_EQ(TheSession().AcadDoc, run.part.drawing);
        run.part.NeedSecondSide = true;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(between, 4);
}

TEST_F(RunLoop, ScalesByTheSettingAboutTheOrigin) {
    struct Case {
        const char* setting;
        double length;
    };
    for (const Case& c : {Case{"1", 600}, Case{"2", 600}, Case{"3", 600 * 25.4},
                          Case{"4", 600 * 0.0393700787401575}, Case{"", 600}}) {
        document.ModelSpace().ForEach([](AcadEntity& entity) { entity.Delete(); });
        Boards({"Side"});
        Set("ExportScaleSetting", c.setting);
        double length = 0;
        firstStep = [&](RunState& run) {
            const Box3 box = LastSolid(*run.part.drawing).GetBoundingBox();
            length = box.max.x - box.min.x;
            return PassOutcome::GoOn;
        };
        RunA();
        EXPECT_NEAR(length, c.length, 1e-9) << c.setting;
    }
}

TEST_F(RunLoop, MakesASecondPassOfAPartThatNeedsIt) {
    Boards({"Side", "Shelf"});
    firstStep = [&](RunState& run) {
        if (run.FirstPass()) {
            EXPECT_FALSE(run.part.NeedSecondSide);
            EXPECT_FALSE(run.part.ThroughRouteSeen);
        }
        if (run.part.index == 0) run.part.NeedSecondSide = run.part.ThroughRouteSeen = true;
        WriteWorkDrawings(run);
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(seen, (Texts{"c:\\BV-DXF\\Part_0.dwg", "c:\\BV-DXF\\2-sided\\BPart_0.dwg again",
                           "c:\\BV-DXF\\Part_1.dwg"}));
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_done.dxf", "Part_1_done.dxf"}));
    EXPECT_EQ(FilesIn(SecondSideFolder), Texts{"BPart_0_done.dxf"});
    EXPECT_EQ(listed, (std::vector<int>{0, 0, 1}));
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, BeginsTheSecondPassWithoutWorkDrawings) {
    Boards({"Side"});
    firstStep = [&](RunState& run) {
        if (!run.FirstPass()) {
            EXPECT_FALSE(files.FileExists(WorkDrawing));
            EXPECT_FALSE(files.FileExists(WorkDrawing2));
        }
        run.part.NeedSecondSide = true;
        WriteWorkDrawings(run);
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(passes, 2);
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, MakesNoSecondPassWhereTheSettingsSaySo) {
    Boards({"Side", "Shelf"});
    Set("DontDoTwoSided", "1");
    firstStep = [](RunState& run) {
        EXPECT_TRUE(run.FirstPass());
        EXPECT_FALSE(run.part.NeedSecondSide);
        run.part.NeedSecondSide = true;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(passes, 2);
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    EXPECT_TRUE(MessagesBetween().empty());
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, GoesOnBehindAPartThatIsSkipped) {
    Boards({"Side", "Shelf", "Back"});
    firstStep = [&](RunState& run) {
        EXPECT_FALSE(run.part.NeedSecondSide) << "the flags of the part before are gone with it";
        EXPECT_FALSE(run.part.ThroughRouteSeen);
        WriteWorkDrawings(run);
        if (run.part.index != 1) return PassOutcome::GoOn;
        run.part.NeedSecondSide = run.part.ThroughRouteSeen = true;
        return PassOutcome::SkipPart;
    };
    RunA();
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_done.dxf", "Part_2_done.dxf"}));
    EXPECT_EQ(listed, (std::vector<int>{0, 2}));
    EXPECT_EQ(secondSteps, 2);
    EXPECT_TRUE(LastRunReport().complete);
    EXPECT_TRUE(LastRunReport().passedOver.empty());
    ASSERT_EQ(LastRunReport().skipped.size(), 1U);
    EXPECT_EQ(LastRunReport().skipped[0].find("The part \"Shelf\" ("), 0U);
    EXPECT_TRUE(LastRunReport().skipped[0].ends_with(") was skipped."));
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, ASecondPassThatIsSkippedLeavesTheFirstFile) {
    Boards({"Side", "Shelf"});
    firstStep = [](RunState& run) {
        run.part.NeedSecondSide = run.part.index == 0;
        return run.FirstPass() ? PassOutcome::GoOn : PassOutcome::SkipPart;
    };
    RunA();
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_done.dxf", "Part_1_done.dxf"}));
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, PassesOverAPartFileThatVanishedAndKeepsTheFlag) {
    Boards({"Side", "Shelf", "Back"});
    std::optional<bool> needed;
    firstStep = [&](RunState& run) {
        if (run.part.index == 0) {
            files.RemoveFile("c:\\BV-DXF\\Part_1.dwg");
            files.RemoveFile("c:\\BV-DXF\\Part_0.dwg");
            run.part.NeedSecondSide = true;
            return PassOutcome::SkipPart;
        }
        needed = run.part.NeedSecondSide;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(needed, true) << "the cleaning clears it with the first file, which was gone";
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(LastRunReport().skipped.size(), 1U) << "the first";
    ASSERT_EQ(LastRunReport().passedOver.size(), 1U);
    EXPECT_EQ(LastRunReport().passedOver[0].find("The part \"Shelf\" ("), 0U)
        << LastRunReport().passedOver[0];
}

TEST_F(RunLoop, EndsAtAPartThatEndsTheRunAndLeavesItsDrawingOpen) {
    Boards({"Side", "Shelf"});
    firstStep = [](RunState&) { return PassOutcome::EndRun; };
    RunA();
    EXPECT_EQ(passes, 1);
    EXPECT_TRUE(MessagesBetween().empty());
    EXPECT_EQ(host.Documents().Count(), 2);
    EXPECT_TRUE(files.FileExists("c:\\BV-DXF\\Part_0.dwg"));
    EXPECT_FALSE(LastRunReport().complete);
    ASSERT_EQ(LastRunReport().passedOver.size(), 1U);
    EXPECT_TRUE(LastRunReport().passedOver[0].ends_with("; 1 more part has not been worked on."));
    const auto last = std::find(transcript.rbegin(), transcript.rend(), "Command: plinetype");
    EXPECT_NE(last, transcript.rend());
}

// A part that ends the run would end it each time. After a failure the caller may want to begin anew.
TEST_F(RunLoop, IsOverAtAPartThatEndsItAndNotAtAFailure) {
    Boards({"Side", "Shelf"});
    int over = 0;
    const OutputCare care{.over = [&over] { ++over; }};
    CareForOutput(&care);
    RunA();
    EXPECT_EQ(over, 1);
    firstStep = [](RunState&) { return PassOutcome::EndRun; };
    RunA();
    EXPECT_EQ(over, 2);
    firstStep = [](RunState&) -> PassOutcome { throw DiskFull("c:\\BV-DXF\\Part_0.dxf"); };
    RunA();
    EXPECT_EQ(over, 2);
    CareForOutput(nullptr);
}

TEST_F(RunLoop, AFailureOfFilesEndsTheRunCleanlyAndKeepsWhatWasWritten) {
    Boards({"Side", "Shelf", "Back"});
    secondStep = [&](RunState& run) -> PassOutcome {
        WriteWorkDrawings(run);
        if (run.part.index == 1) throw DiskFull("c:\\BV-DXF\\Part_1.dxf");
        return PassOutcome::GoOn;
    };
    Set("MyWindowState", "1");
    Set("Skipandcontinue", "1");
    RunA();
    const Texts messages = Messages();
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_EQ(messages[1], "61\r\nBrenvik\r\nDisk full: c:\\BV-DXF\\Part_1.dxf");
    EXPECT_EQ(messages[2].find("The run ended at the part \"Shelf\" ("), 0U) << messages[2];
    EXPECT_TRUE(messages[2].ends_with("; 1 more part has not been worked on.")) << messages[2];
    EXPECT_EQ(FilesIn(OutputFolder), Texts{"Part_0_done.dxf"});
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    EXPECT_FALSE(LastRunReport().complete);
    EXPECT_EQ(host.WindowState(), WindowStateKind::Maximized);
    EXPECT_EQ(GetSettingText(setting::Skipandcontinue), "0");
    EXPECT_EQ(TheSession().AcadDoc, &document);
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, SkipsAPartThatTheModellerRefusesAndTellsIt) {
    Boards({"Side", "Shelf", "Back"});
    firstStep = [](RunState& run) {
        run.part.NeedSecondSide = run.part.index == 2;
        return PassOutcome::GoOn;
    };
    secondStep = [&](RunState& run) -> PassOutcome {
        WriteWorkDrawings(run);
        if (run.part.index == 1 || !run.FirstPass())
            throw Failure(4711, "Modeller", "The cut came to nothing", "face 12");
        return PassOutcome::GoOn;
    };
    RunA();
    const Texts told = MessagesBetween();
    ASSERT_EQ(told.size(), 4U);
    EXPECT_EQ(told[0], "4711\r\nModeller\r\nThe cut came to nothing: face 12");
    EXPECT_EQ(told[1], told[0]);
    EXPECT_EQ(told[2].find("The part \"Shelf\" ("), 0U) << told[2];
    EXPECT_TRUE(told[2].ends_with(") was skipped: it could not be worked on.")) << told[2];
    EXPECT_TRUE(told[3].ends_with(") was skipped on its second side: it could not be worked on.")) << told[3];
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_done.dxf", "Part_2_done.dxf"}));
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    EXPECT_TRUE(LastRunReport().complete);
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, TellsEachPartOfWhichSomethingIsUnexplained) {
    Boards({"Side", "Shelf", "Back"});
    firstStep = [](RunState& run) {
        run.part.NeedSecondSide = run.part.index == 0;
        if (run.part.index < 2) run.part.unexplained.emplace_back("a slanted hole at 10,20");
        if (run.part.index == 1) run.part.unexplained.emplace_back("a dome");
        return run.part.index == 1 ? PassOutcome::SkipPart : PassOutcome::GoOn;
    };
    RunA();
    const Texts told = MessagesBetween();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told, LastRunReport().unexplained);
    EXPECT_EQ(told[0].find("The part \"Side\" ("), 0U) << told[0];
    EXPECT_TRUE(told[0].ends_with(") has features without an operation: a slanted hole at 10,20")) << told[0];
    EXPECT_TRUE(told[1].ends_with("a slanted hole at 10,20; a dome")) << told[1];
    EXPECT_EQ(dialogs.messages[1].title, "Brenvik");
}

TEST_F(RunLoop, TellsItsProgressAtEachPass) {
    Boards({"Side", ""});
    Texts told;
    ObserveRuns([&](const RunProgress& progress) {
        told.push_back(std::to_string(progress.part) + "/" + std::to_string(progress.parts) +
                       (progress.secondSide ? " second" : ""));
    });
    firstStep = [](RunState& run) {
        run.part.NeedSecondSide = run.part.index == 0;
        return PassOutcome::GoOn;
    };
    RunA();
    EXPECT_EQ(told, (Texts{"1/2", "1/2 second", "2/2"}));
}

TEST_F(RunLoop, ACancelledRunTakesItsFilesAwayAndLeavesThoseOfOthers) {
    Boards({"Side", "Shelf", "Back"});
    fakes::FakeProgress progress;
    progress.cancelAt = {"CNC run", 3};
    ShowProgressBy(&progress);
    onWrite = [this](RunState& run) {
        if (run.part.index != 1) return;
        files.WriteFile("c:\\BV-DXF\\Part_0_Side_.dxf", "as a run names it");
        files.WriteFile("c:\\BV-DXF\\2-sided\\BPart_0_Side_.dxf", "its other side");
        files.WriteFile("c:\\BV-DXF\\operator's notes.txt", "not the run's");
    };
    RunA();
    EXPECT_EQ(passes, 2);
    EXPECT_TRUE(finished.empty()) << "no work list";
    EXPECT_EQ(FilesIn(OutputFolder), Texts{"operator's notes.txt"});
    EXPECT_TRUE(FilesIn(SecondSideFolder).empty());
    EXPECT_FALSE(LastRunReport().complete);
    ASSERT_EQ(LastRunReport().passedOver.size(), 1U);
    EXPECT_EQ(LastRunReport().passedOver[0].find("The run was cancelled ahead of the part \"Back\" ("), 0U)
        << LastRunReport().passedOver[0];
    for (const std::string& text : Messages()) EXPECT_NE(text, RunComplete);
    EXPECT_EQ(TheSession().AcadDoc, &document);
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, AFolderThatRefusesAPartFileIsLeftWithoutAny) {
    Boards({"Side", "Shelf", "Back"});
    for (const std::string_view folder : {OutputFolder, SecondSideFolder}) files.MakeFolder(folder);
    files.MakeFolder("c:\\BV-DXF\\2-sided\\BPart_1.dwg");
    RunA();
    EXPECT_EQ(passes, 0);
    const Texts messages = Messages();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_NE(messages[1].find("BPart_1.dwg"), std::string::npos) << messages[1];
    EXPECT_FALSE(LastRunReport().complete);
    ExpectNoDrawingLeft();
}

TEST_F(RunLoop, LeavesTheDrawingActiveThatItBeganWith) {
    HostDocument& other = host.NewDocument();
    host.Activate(document);
    const auto solids = Boards({"Side", "Shelf"});
    RunA();
    EXPECT_EQ(host.Documents().Count(), 2);
    EXPECT_EQ(host.Active(), &document);
    EXPECT_EQ(TheSession().AcadDoc, &document);
    EXPECT_EQ(mAutoCAD::GetPartData(solids[1]->Handle(), "PartName"), "Shelf");
    EXPECT_EQ(other.ModelSpace().Count(), 0);
}

TEST_F(RunLoop, ASecondRunStartsFromFreshFolders) {
    Boards({"Side", "Shelf"});
    RunA();
    document.ModelSpace().Item(0)->Delete();
    ChooseAllSolids();
    RunA();
    EXPECT_EQ(FilesIn(OutputFolder), Texts{"Part_0_done.dxf"});
}

TEST_F(RunLoop, ACutDrawingFileEndsTheRunWithItsName) {
    Boards({"Side", "Shelf"});
    firstStep = [&](RunState&) {
        files.WriteFile("c:\\BV-DXF\\Part_1.dwg", "no drawing");
        return PassOutcome::GoOn;
    };
    RunA();
    const Texts messages = Messages();
    ASSERT_EQ(messages.size(), 3U);
    EXPECT_NE(messages[1].find("Part_1.dwg"), std::string::npos) << messages[1];
    ExpectNoDrawingLeft();
}

}  // namespace
}  // namespace brenvik
