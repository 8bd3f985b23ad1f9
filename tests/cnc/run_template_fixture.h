// A run whose work on parts is the test's own: it notes what it sees, and does what the test says.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cnc/cnc_fixture.h"
#include "cnc/run/run_set_up.h"
#include "cnc/run/run_template.h"
#include "session/library/cnc_commands.h"

namespace brenvik {

using Texts = std::vector<std::string>;

class RunTemplateTest : public CncTest {
  protected:
    static constexpr const char* listPath = "CNCExportList2.txt";

    PassWork Steps() {
        PassWork steps;
        steps.pass = {[this](RunState& run) {
                          ++passes;
                          seen.push_back(run.part.drawing->FullName() + (run.FirstPass() ? "" : " again"));
                          return firstStep ? firstStep(run) : PassOutcome::GoOn;
                      },
                      [this](RunState& run) {
                          ++secondSteps;
                          return secondStep ? secondStep(run) : PassOutcome::GoOn;
                      }};
        steps.writePartFile = [this](RunState& run) {
            const std::string folder(run.FirstPass() ? OutputFolder : SecondSideFolder);
            const std::string name = std::string(run.FirstPass() ? "" : "B") + "Part_" +
                                     std::to_string(run.part.index) + "_done.dxf";
            if (onWrite) onWrite(run);
            files.WriteFile(folder + name, "done");
        };
        steps.addListLine = [this](RunState& run) { listed.push_back(run.part.index); };
        steps.clearWorkLists = [this](Target target) { cleared.push_back(target); };
        steps.finishWorkLists = [this](Target target) { finished.push_back(target); };
        return steps;
    }
    void RunA(Target target = Target::C2C) { RunParts(host, target, RunForm::A, Steps(), GridBeforeRuns()); }
    void RunB(Target target = Target::C2C) { RunParts(host, target, RunForm::B, Steps(), GridBeforeRuns()); }
    void WriteList(const std::string& text) { files.WriteFile(TheSession().InstallFolder + listPath, text); }
    /// Boards side by side with these names.
    std::vector<Acad3DSolid*> Boards(const Texts& names) {
        std::vector<Acad3DSolid*> solids;
        double place = 0;
        for (const std::string& name : names) {
            Acad3DSolid& solid = Board(600, 400, 18, name).Solid();
            solid.Move({0, 0, 0}, {place, 0, 0});
            place += 1000;
            solids.push_back(&solid);
        }
        ChooseAllSolids();
        return solids;
    }
    std::string Quantity(const AcadObject& solid) {
        return mAutoCAD::GetPartData(solid.Handle(), "Quantity");
    }
    /// The messages between the warning and the end, if the run has told its end.
    Texts MessagesBetween() {
        Texts texts = Messages();
        EXPECT_GE(texts.size(), 2U);
        if (texts.size() < 2) return texts;
        EXPECT_EQ(texts.front(), RunWarning);
        EXPECT_EQ(texts.back(), "-- Export Complete! --");
        return {texts.begin() + 1, texts.end() - 1};
    }

    std::function<PassOutcome(RunState&)> firstStep, secondStep;
    std::function<void(RunState&)> onWrite;
    int passes = 0, secondSteps = 0;
    Texts seen;
    std::vector<int> listed;
    std::vector<Target> cleared, finished;
};

}  // namespace brenvik
