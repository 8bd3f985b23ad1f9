// The lists of the CAM packages, byte for byte.
#include <gtest/gtest.h>

#include "base/letter_case.h"
#include "cnc/output/work_lists.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "core/fakes/fake_platform.h"

namespace brenvik {
namespace {

class WorkListTest : public ::testing::Test {
  protected:
    WorkListTest() {
        system.settings.Set("CNCMultiplier", "1");
        system.settings.Set("BWPriority", "100000");
        system.settings.Set("ConvertMaterialName", "0");
    }

    RunState PartOf(Target target) {
        RunState run;
        run.target = target;
        run.part.ExportScaleSetting = 1;
        run.part.index = 4;
        run.part.texts = {"Side", "7", "Base", "lwt", "note", "1", "u1", "u2", "9.5", "a", "b", "c", "d"};
        run.part.Quantity = 3;
        run.part.DimL = "30.5";
        run.part.DimW = "22";
        run.part.DimT = ".75";
        run.part.ExtentX = 30.5;
        run.part.ExtentY = 22;
        run.part.ExtentZ = run.part.PartThickness = 0.75;
        run.part.MaterialName = "RED OAK";
        run.part.MaterialKeyText = ".75 RED OAK";
        run.part.Material.grain = 1;
        run.part.writtenFile =
            std::string(run.FirstPass() ? OutputFolder : SecondSideFolder) + WrittenFileName(run);
        return run;
    }
    static RunState Second(RunState run) {
        run.part.SecondSidePass = true;
        run.part.writtenFile = std::string(SecondSideFolder) + WrittenFileName(run);
        return run;
    }
    /// Of a list when the run has ended.
    std::string Content(const std::string& name, bool secondSide = false) {
        for (const Target target : {Target::C2C, Target::BW, Target::THERM, Target::RCIM, Target::ABC})
            FinishWorkLists(target);
        return system.files.ReadFile(std::string(secondSide ? SecondSideFolder : OutputFolder) + name);
    }

    fakes::LoadedSystem system;
};

TEST_F(WorkListTest, SevenTargetsShareOneForm) {
    for (const Target target :
         {Target::C2C, Target::ATP, Target::ASP, Target::CNI, Target::ROV, Target::WOP4, Target::WOP5}) {
        system.files.contents.clear();
        RunState run = PartOf(target);
        AddListLine(run);
        EXPECT_EQ(Content("WORKLIST.TXT"),
                  "c:\\BV-DXF\\Part_4_Side_7.dxf,.75 RED OAK,1,3,Side,Base,7,a,b,c,d\n");
    }
}

TEST_F(WorkListTest, EveryTargetsListIsKnownByItsNameFinishedOrNot) {
    for (const Target target : AllTargets) {
        const std::string list(WorkListName(target));
        for (const std::string& name : {list, list + ".unfinished", FoldUpper(list)})
            EXPECT_TRUE(IsWorkList(name)) << name;
        EXPECT_FALSE(IsWorkList(list + ".bak"));
    }
    EXPECT_FALSE(IsWorkList("Part_0_Side_7.dxf"));
}

TEST_F(WorkListTest, AListHasItsNameWhenTheRunHasEnded) {
    RunState run = PartOf(Target::C2C);
    AddListLine(run);
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT"));
    EXPECT_TRUE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT.unfinished"));
    FinishWorkLists(Target::C2C);
    EXPECT_TRUE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT"));
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT.unfinished"));
}

TEST_F(WorkListTest, LinesAreAppended) {
    RunState run = PartOf(Target::C2C);
    AddListLine(run);
    run.part.index = 5;
    run.part.writtenFile = std::string(OutputFolder) + WrittenFileName(run);
    AddListLine(run);
    EXPECT_EQ(Content("WORKLIST.TXT"),
              "c:\\BV-DXF\\Part_4_Side_7.dxf,.75 RED OAK,1,3,Side,Base,7,a,b,c,d\n"
              "c:\\BV-DXF\\Part_5_Side_7.dxf,.75 RED OAK,1,3,Side,Base,7,a,b,c,d\n");
}

TEST_F(WorkListTest, ASecondPassWritesToTheSecondFolderOnly) {
    RunState run = Second(PartOf(Target::C2C));
    AddListLine(run);
    EXPECT_EQ(Content("WORKLIST.TXT", true),
              "c:\\BV-DXF\\2-sided\\BPart_4_Side_7.dxf,.75 RED OAK,1,3,Side,Base,7,a,b,c,d\n");
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT"));
}

TEST_F(WorkListTest, BWHasAHeaderOnceAndTabs) {
    RunState run = PartOf(Target::BW);
    AddListLine(run);
    AddListLine(run);
    const std::string header =
        "PIECE SECTION\n\nDiscr\tPiece path\tLength\tWidth\tQ. min\tPrior\tRot\tOffset\n\n";
    const std::string line = "Piece\tc:\\BV-DXF\\Part_4_Side_7.dxf\t30.5\t22\t3\t100\t90\t0\n";
    EXPECT_EQ(Content("WorkList.txt"), header + line + line);
    RunState second = Second(run);
    AddListLine(second);
    EXPECT_EQ(Content("WorkList.txt", true),
              header + "Piece\tc:\\BV-DXF\\2-sided\\BPart_4_Side_7.dxf\t30.5\t22\t3\t100\t90\t0\n");
}

TEST_F(WorkListTest, BWPartsFromTheBoundOnHaveLowPriority) {
    RunState run = PartOf(Target::BW);
    run.part.Material.grain = 0;
    system.settings.Set("BWPriority", "671");
    AddListLine(run);
    EXPECT_TRUE(Content("WorkList.txt").ends_with("\t3\t50\t180\t0\n"));
    system.settings.Set("BWPriority", "671.01");
    AddListLine(run);
    EXPECT_TRUE(Content("WorkList.txt").ends_with("\t3\t100\t180\t0\n"));
}

TEST_F(WorkListTest, THERMNamesTheSubAssemblyToo) {
    RunState run = PartOf(Target::THERM);
    AddListLine(run);
    EXPECT_EQ(Content("Sheet1.csv"), "3,Part_4_Side_7_Base.dxf,.75 RED OAK,48,96, .75,no\n");
    RunState second = Second(run);
    second.part.Material.grain = 0;
    AddListLine(second);
    EXPECT_EQ(Content("Sheet1.csv", true), "3,BPart_4_Side_7_Base.dxf,.75 RED OAK,48,96, .75,yes\n");
}

TEST_F(WorkListTest, EnrouteKeepsTheBlankBeforeNumbers) {
    RunState run = PartOf(Target::Enroute);
    AddListLine(run);
    EXPECT_EQ(Content("CNCList.txt"), "Part_4_Side_7.dxf,Side, 22, 30.5, .75,.75 RED OAK,Base,3,1,0,F\n");
    RunState second = Second(run);
    AddListLine(second);
    EXPECT_EQ(Content("CNCList.txt", true),
              "BPart_4_Side_7.dxf,Side, 22, 30.5, .75,.75 RED OAK,Base,3,1,0,B\n");
}

TEST_F(WorkListTest, RCIMTrimsAndClosesWithAComma) {
    RunState run = PartOf(Target::RCIM);
    AddListLine(run);
    EXPECT_EQ(Content("CNCList.txt"), "Part_4_Side_7.dxf,Side,22,30.5,.75,.75 RED OAK,1,3,1,F,0,\n");
    RunState second = Second(run);
    AddListLine(second);
    EXPECT_EQ(Content("CNCList.txt", true), "BPart_4_Side_7.dxf,Side,22,30.5,.75,.75 RED OAK,1,3,1,B,0,\n");
}

TEST_F(WorkListTest, ABCHasAllDataInUpperCase) {
    RunState run = PartOf(Target::ABC);
    AddListLine(run);
    EXPECT_EQ(Content("CNCList.csv"),
              "3,SIDE,BASE,RED OAK, 30.5, 22, .75,LWT,U1,U2,7,9.5,A,B,C,D,1,F,3/4 RED OAK,.75 RED OAK,"
              "C:\\BV-DXF\\Part_4_Side_7.dxf\n");
    RunState second = Second(run);
    AddListLine(second);
    EXPECT_TRUE(Content("CNCList.csv", true)
                    .ends_with(",1,B,3/4 RED OAK,.75 RED OAK,C:\\BV-DXF\\2-sided\\BPart_4_Side_7.dxf\n"));
}

TEST_F(WorkListTest, QuantitiesAreMultipliedByTheSetting) {
    RunState run = PartOf(Target::RCIM);
    system.settings.Set("CNCMultiplier", "4");
    AddListLine(run);
    system.settings.Set("CNCMultiplier", "0");
    AddListLine(run);
    EXPECT_EQ(Content("CNCList.txt"),
              "Part_4_Side_7.dxf,Side,22,30.5,.75,.75 RED OAK,1,12,1,F,0,\n"
              "Part_4_Side_7.dxf,Side,22,30.5,.75,.75 RED OAK,1,0,1,F,0,\n");
}

TEST_F(WorkListTest, MetricThicknessesCanBeNamedInInches) {
    RunState run = PartOf(Target::C2C);
    run.part.ExportScaleSetting = 2;
    run.part.ExtentZ = run.part.PartThickness = 19.05;
    run.part.MaterialKeyText = "19.05 RED OAK";
    system.settings.Set("ConvertMaterialName", "1");
    AddListLine(run);
    EXPECT_EQ(Content("WORKLIST.TXT"), "c:\\BV-DXF\\Part_4_Side_7.dxf,3/4 RED OAK,1,3,Side,Base,7,a,b,c,d\n");
}

TEST_F(WorkListTest, ABCTakesTheNameInInchesToo) {
    RunState run = PartOf(Target::ABC);
    system.settings.Set("ConvertMaterialName", "1");
    AddListLine(run);
    EXPECT_EQ(Content("CNCList.csv"),
              "3,SIDE,BASE,3/4 RED OAK, 30.5, 22, .75,LWT,U1,U2,7,9.5,A,B,C,D,1,F,3/4 RED OAK,.75 RED OAK,"
              "C:\\BV-DXF\\Part_4_Side_7.dxf\n");
}

TEST_F(WorkListTest, CommasInTextsStayAndAreKeptToBeTold) {
    RunState run = PartOf(Target::C2C);
    run.part.texts.PartName = run.part.texts.EB1 = "Side, left";
    run.part.texts.PN = "7,8";
    run.part.writtenFile = std::string(OutputFolder) + WrittenFileName(run);
    AddListLine(run);
    EXPECT_EQ(Content("WORKLIST.TXT"),
              "c:\\BV-DXF\\Part_4_Side  left_7 8.dxf,.75 RED OAK,1,3,Side, left,Base,7,8,Side, left,b,c,d\n");
    EXPECT_EQ(run.part.shiftingTexts, (std::vector<std::string>{"Side, left", "7,8"}));
}

TEST_F(WorkListTest, CommasMoveNothingBetweenTabs) {
    RunState run = PartOf(Target::BW);
    run.part.texts.PartName = "Side, left";
    AddListLine(run);
    EXPECT_TRUE(run.part.shiftingTexts.empty());
}

TEST_F(WorkListTest, WhatAFileNameCannotHoldBecomesALowLine) {
    RunState run = PartOf(Target::C2C);
    run.part.texts.PartName = "Side L/R: \"top\"";
    run.part.texts.PN = "7*";
    EXPECT_EQ(WrittenFileName(run), "Part_4_Side L_R_ _top__7_.dxf");
}

TEST_F(WorkListTest, ARunClearsTheListsOfItsTarget) {
    for (const char* name : {"WORKLIST.TXT", "CNCList.txt", "CNCList.csv", "Sheet1.csv", "other.txt"})
        for (const std::string_view folder : {OutputFolder, SecondSideFolder})
            system.files.contents[std::string(folder) + name] = "old";
    ClearWorkLists(Target::THERM);
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\WORKLIST.TXT"));
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\Sheet1.csv"));
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\2-sided\\CNCList.txt"));
    EXPECT_TRUE(system.files.FileExists("c:\\BV-DXF\\CNCList.csv"));
    ClearWorkLists(Target::ABC);
    EXPECT_FALSE(system.files.FileExists("c:\\BV-DXF\\2-sided\\CNCList.csv"));
    EXPECT_TRUE(system.files.FileExists("c:\\BV-DXF\\other.txt"));
}

}  // namespace
}  // namespace brenvik
