// Names that people type, on their way into file names, layer names and lists.
#include "base/western_text.h"
#include "cnc/cnc_fixture.h"
#include "cnc/part/part_file_name.h"
#include "cnc/part/run_state.h"
#include "session/library/cnc_commands.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

std::string Repeated(std::string_view text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time) all += text;
    return all;
}

class RunNames : public CncTest {
  protected:
    void RunBoard(std::string_view name, Target target = Target::C2C) {
        Board(600, 400, 18, name);
        ChooseAllSolids();
        RunOnSelection(host, target, GridBeforeRuns());
    }
    std::string List(const char* name = "WORKLIST.TXT") {
        return files.ReadFile(std::string(OutputFolder) + name);
    }
};

TEST_F(RunNames, InAnyLanguageNameTheFileAndStandInTheList) {
    RunBoard("Türseite «левая» 左");
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Türseite «левая» 左_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(List(),
              "c:\\BV-DXF\\Part_0_Türseite «левая» 左_7.dxf,18 OAK,0,1,Türseite «левая» 左,Base,7,,,,\n");
}

TEST_F(RunNames, WithWhatAFileCannotHoldKeepItInTheListAlone) {
    RunBoard("Side L/R: \"top\" 1*2?");
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Side L_R_ _top_ 1_2__7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(List(),
              "c:\\BV-DXF\\Part_0_Side L_R_ _top_ 1_2__7.dxf,18 OAK,0,1,Side L/R: \"top\" 1*2?,Base,7,,,,\n");
}

TEST_F(RunNames, ThatAreVeryLongAreCutInTheFileNameAlone) {
    const std::string name = Repeated("ü", 127);
    RunBoard(name, Target::THERM);
    EXPECT_EQ(Messages().size(), 2U) << Messages().at(1);
    const Texts written = FilesIn(OutputFolder, "*.dxf");
    ASSERT_EQ(written.size(), 1U);
    EXPECT_LE(written[0].size(), 240U);
    EXPECT_TRUE(IsUtf8(written[0]));
    EXPECT_TRUE(written[0].starts_with("Part_0_üüü")) << written[0];
    EXPECT_TRUE(written[0].ends_with("ü_7_Base.dxf")) << written[0];
    EXPECT_NE(List("Sheet1.csv").find("," + written[0] + ","), std::string::npos) << List("Sheet1.csv");
}

TEST_F(RunNames, ThatAreLongShareTheRoom) {
    RunState run = RunOn(document, Target::C2C);
    run.part.texts.PartName = Repeated("n", 255);
    run.part.texts.PN = Repeated("p", 255);
    const std::string name = WrittenFileName(run);
    EXPECT_EQ(name.size(), 239U);
    EXPECT_NE(name.find("_" + Repeated("p", 110)), std::string::npos) << name;
    run.part.SecondSidePass = true;
    EXPECT_EQ(WrittenFileName(run), "B" + name) << "both sides bear one name";
    run.part.texts.PN = "7";
    EXPECT_TRUE(WrittenFileName(run).ends_with("n_7.dxf"));
    run.part.texts.PartName = Repeated("n", 200);
    EXPECT_EQ(WrittenFileName(run), "BPart_0_" + Repeated("n", 200) + "_7.dxf");
}

TEST_F(RunNames, WithLineBreaksKeepToTheirLineOfTheList) {
    RunBoard("Side\r\nleft\tupper");
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0_Side__left_upper_7.dxf", "WORKLIST.TXT"}));
    EXPECT_EQ(List(), "c:\\BV-DXF\\Part_0_Side__left_upper_7.dxf,18 OAK,0,1,Side  left\tupper,Base,7,,,,\n");
}

TEST_F(RunNames, ThatAreBlankLeaveTheirPlaces) {
    RunBoard("");
    EXPECT_EQ(FilesIn(OutputFolder), (Texts{"Part_0__7.dxf", "WORKLIST.TXT"}));
}

TEST_F(RunNames, OfToolsReachTheLayersUnchanged) {
    std::string library = files.ReadFile(MaterialsPath());
    library = ReplaceAll(library, "tool1=1\r\n", "tool1=Fräser ø12\r\n");
    files.WriteFile(MaterialsPath(), library);
    RunBoard("Side");
    const std::string path = "c:\\BV-DXF\\Part_0_Side_7.dxf";
    EXPECT_EQ(OnLayers(Read(path), "OT_").at(0).layer, "OT_Z18p3_TFräser ø12_D12_S18000_F300_R_C0");
    EXPECT_NE(files.ReadFile(path).find("TFr\\U+00E4ser \\U+00F812"), std::string::npos);
}

TEST_F(RunNames, OfToolsThatNoLayerCanHoldSkipThePartAndAreTold) {
    std::string library = files.ReadFile(MaterialsPath());
    library = ReplaceAll(library, "tool1=1\r\n", "tool1=1/2\r\n");
    files.WriteFile(MaterialsPath(), library);
    RunBoard("Side");
    EXPECT_TRUE(FilesIn(OutputFolder).empty());
    ASSERT_EQ(Messages().size(), 4U);
    EXPECT_NE(Messages()[1].find("OT_Z18p3_T1/2"), std::string::npos) << Messages()[1];
    EXPECT_NE(Messages()[2].find("The part \"Side\" ("), std::string::npos) << Messages()[2];
    EXPECT_EQ(Messages()[3], "-- Export Complete! --");
}

}  // namespace
}  // namespace brenvik
