// The part-per-file export: a drawing for each solid, named and turned by its data, on its material's layer.
#include "tools/part_export.h"
#include "cnc/alignment_fixture.h"
#include "session/library/brenvik_class.h"
#include "support/ezdxf_audit.h"
#include "tools/part_export_files.h"

namespace brenvik {
namespace {

using Texts = std::vector<std::string>;

class PartExportTest : public AlignmentTest {
  protected:
    void Export() {
        ChooseAllSolids();
        ExportChosen();
    }
    void ExportChosen() {
        host.Activate(document);
        EXPECT_TRUE(cBrenvik().Call("BVExportDWG", host));
    }
    Texts Written() { return FilesIn(PartExportFolder); }
    HostDocument& Open(std::string_view name) {
        HostDocument& drawing = host.OpenNamed(std::string(PartExportFolder) + std::string(name));
        TheSession().AcadDoc = &drawing;
        return drawing;
    }
    /// The messages between the warning and the last one.
    Texts Told() {
        Texts texts = Messages();
        EXPECT_GE(texts.size(), 2U);
        EXPECT_EQ(texts.front(), PartExportWarning);
        EXPECT_EQ(texts.back(), PartExportComplete);
        return {texts.begin() + 1, texts.end() - 1};
    }
};

TEST_F(PartExportTest, WritesADrawingForEachSolidNamedByIndexNameAndNumber) {
    Board(600, 300, 18, "Side left");
    Board(400, 300, 18, "Side left");
    Export();
    EXPECT_EQ(Told(), Texts{});
    EXPECT_EQ(Written(), (Texts{"Part0_SIDE LEFT_7_.dwg", "Part1_SIDE LEFT_7_.dwg"}));
    EXPECT_EQ(host.OpenDocuments().size(), 1U);
    EXPECT_EQ(TheSession().AcadDoc, &document);
}

TEST_F(PartExportTest, HoldsTheSolidAloneOnTheLayerOfItsMaterial) {
    app::Workpiece board = Board(600, 300, 18);
    board.Drill({100, 100, 18}, app::Axis::Z, -10, 8);
    Export();
    HostDocument& drawing = Open("Part0_PANEL_7_.dwg");
    ASSERT_EQ(drawing.ModelSpace().Count(), 1);
    EXPECT_EQ(LastSolid(drawing).Layer(), "Material_ 18 OAK");
    EXPECT_EQ(drawing.Layers().Item("Material_ 18 OAK")->Color(), 1);
    EXPECT_FALSE(drawing.Layers().Item("Material_ 18 OAK")->Lock());
    for (const std::string_view gone : {"Locked", "Region", "BrenvikExplode", "Parts"})
        EXPECT_FALSE(LayerExists(drawing, gone)) << gone;
    EXPECT_NEAR(LastSolid(drawing).Volume(), 600.0 * 300 * 18 - std::numbers::pi * 16 * 10, 1e-6);
    EXPECT_EQ(mAutoCAD::GetPartData(LastSolid(drawing).Handle(), "SubAssembly"), "Base");
}

TEST_F(PartExportTest, TurnsByTheLettersWithTheOriginInTheCornerFromEveryPose) {
    struct OrderCase {
        const char* letters;
        Point3 corner;
    };
    const OrderCase cases[] = {{"LWT", {600, 300, 18}}, {"LTW", {600, 18, 300}}, {"WLT", {300, 600, 18}},
                               {"TLW", {300, 18, 600}}, {"WTL", {18, 600, 300}}, {"TWL", {18, 300, 600}}};
    for (const Pose& pose : poses) {
        for (const OrderCase& c : cases) {
            app::Workpiece board = Board(600, 300, 18);
            mAutoCAD::SetPartData(&board.Solid(), "ORIE", c.letters);
            Lay(board.Solid(), pose.aboutX, pose.aboutY, pose.aboutZ, pose.to);
            Export();
            HostDocument& drawing = Open("Part0_PANEL_7_.dwg");
            const Box3 box = LastSolid(drawing).GetBoundingBox();
            ExpectPoint(box.min, {0, 0, 0});
            ExpectPoint(box.max, c.corner);
            ExpectPoint(drawing.ActiveUCS()[0], {0, 0, 0});
            drawing.Close(false);
            TheSession().AcadDoc = &document;
            board.Solid().Delete();
        }
    }
}

TEST_F(PartExportTest, EmptiesItsFolderFirstAndLeavesNoWorkFiles) {
    files.MakeFolder(PartExportFolder);
    for (const char* name : {"Part0.dwg", "old.dwg", "old.dxf", "notes.txt"})
        files.WriteFile(std::string(PartExportFolder) + name, "old");
    Board(600, 300, 18);
    Export();
    EXPECT_EQ(Written(), Texts{"Part0_PANEL_7_.dwg"});
}

TEST_F(PartExportTest, ASelectionWithoutSolidsWritesNothingAndCompletes) {
    Choose({document.ModelSpace().AddLine({0, 0, 0}, {1, 0, 0})});
    ExportChosen();
    EXPECT_EQ(Told(), Texts{});
    EXPECT_EQ(Written(), Texts{});
}

TEST_F(PartExportTest, APartWithoutLettersIsLaidAsLwtWithAMessage) {
    app::Workpiece board = Board(600, 300, 18);
    mAutoCAD::SetPartData(&board.Solid(), "ORIE", "");
    Export();
    EXPECT_EQ(Told(), Texts{"ORIE data not detected on this part, so it is being set to LWT"});
    ExpectPoint(LastSolid(Open("Part0_PANEL_7_.dwg")).GetBoundingBox().max, {600, 300, 18});
}

TEST_F(PartExportTest, ASolidWithoutAFlatSideGivesAFileTurnedByItsLetters) {
    Acad3DSolid& cushion = NothingFlat();
    mAutoCAD::SetPartData(&cushion, "ORIE", "LWT");
    Lay(cushion, 0, 0, 0, {1000, 2000, 3000});
    const Box3 box = cushion.GetBoundingBox();
    Export();
    EXPECT_EQ(Told(),
              Texts{"This part does not have a flat side to work with. It will be saved to the export "
                    "folder, but some processing will not be done."});
    HostDocument& drawing = Open("Part0_CUSHION_7_.dwg");
    ASSERT_EQ(drawing.ModelSpace().Count(), 1);
    ExpectPoint(LastSolid(drawing).GetBoundingBox().min, {0, 0, 0});
    ExpectPoint(LastSolid(drawing).GetBoundingBox().max,
                {box.max.x - box.min.x, box.max.y - box.min.y, box.max.z - box.min.z}, 1e-4);
    EXPECT_TRUE(LastSolid(drawing).Layer().starts_with("Material_ "));
}

TEST_F(PartExportTest, ALongSolidWithoutAFlatSideIsTurnedByItsLettersToo) {
    Acad3DSolid& cushion = NothingFlat(50);
    const Box3 box = cushion.GetBoundingBox();
    ASSERT_LT(box.max.x - box.min.x, box.max.z - box.min.z - 1);
    Export();
    EXPECT_EQ(Told().size(), 1U);
    const Box3 turned = LastSolid(Open("Part0_CUSHION_7_.dwg")).GetBoundingBox();
    EXPECT_GT(turned.max.x, turned.max.z + 1);
    EXPECT_GE(turned.max.y, turned.max.z - 1e-5);
}

TEST_F(PartExportTest, APartWithoutAStraightEdgeIsSkippedAndTheOthersGoOn) {
    Disc();
    Board(600, 300, 18);
    Export();
    EXPECT_EQ(Told(), Texts{"This part does not have a line to work with, so this part will be skipped."});
    EXPECT_EQ(Written(), Texts{"Part1_PANEL_7_.dwg"});
    EXPECT_EQ(host.OpenDocuments().size(), 1U);
}

TEST_F(PartExportTest, APartWhoseEdgesNeverMeetEndsTheCommand) {
    Lens();
    Board(600, 300, 18);
    Export();
    const Texts told = Messages();
    ASSERT_EQ(told.size(), 2U);
    EXPECT_EQ(told.back(), "Cannot process this solid, exiting now");
    EXPECT_EQ(FilesIn(PartExportFolder, "*_.dwg"), Texts{});
}

TEST_F(PartExportTest, ScalesBetweenInchesAndMillimetres) {
    struct ScaleCase {
        const char* setting;
        double factor;
        const char* layer;
    };
    const ScaleCase cases[] = {{"1", 1, "Material_ 2.53125 OAK"},
                               {"2", 1, "Material_ 2.53125 OAK"},
                               {"3", 25.4, "Material_ 64.25 OAK"},
                               {"4", 0.0393700787401575, "Material_ .09375 OAK"}};
    for (const ScaleCase& c : cases) {
        Set("ExportScaleSetting", c.setting);
        app::Workpiece board = Board(60, 30, 2.53);
        Export();
        HostDocument& drawing = Open("Part0_PANEL_7_.dwg");
        ExpectPoint(LastSolid(drawing).GetBoundingBox().max, {60 * c.factor, 30 * c.factor, 2.53 * c.factor},
                    1e-6);
        EXPECT_EQ(LastSolid(drawing).Layer(), c.layer);
        drawing.Close(false);
        TheSession().AcadDoc = &document;
        board.Solid().Delete();
    }
}

TEST_F(PartExportTest, SavesTheDrawingOnlyWhereTheSettingsSaySo) {
    Board(600, 300, 18);
    document.SaveAs("c:\\job.dwg", SaveAsKind::Native);
    Set("CNCSave", "1");
    Board(500, 300, 18);
    Export();
    EXPECT_EQ(Read("c:\\job.dwg").size(), 1U);
    Set("CNCSave", "0");
    Export();
    EXPECT_EQ(Read("c:\\job.dwg").size(), 2U);
}

TEST_F(PartExportTest, ADrawingThatCannotBeSavedIsToldAndTheExportGoesOn) {
    Set("CNCSave", "0");
    Board(600, 300, 18);
    Export();
    EXPECT_EQ(Told().size(), 1U);
    EXPECT_EQ(Written(), Texts{"Part0_PANEL_7_.dwg"});
}

TEST_F(PartExportTest, IsOpenedByOtherReaders) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed";
    app::Workpiece board = Board(600, 300, 18, "T\xC3\xBCr 3/4");
    board.Drill({100, 100, 18}, app::Axis::Z, -10, 8);
    mAutoCAD::SetPartData(&board.Solid(), "Material", "3/4 Fu\xC3\x9F");
    Lay(board.Solid(), 11, 23, 47, {1, 2, 3});
    Export();
    ASSERT_EQ(Written(), Texts{"Part0_T\xC3\x9CR 3_4_7_.dwg"});
    EXPECT_EQ(test::AuditWithEzdxf(files.Resolve(std::string(PartExportFolder) + Written().front())),
              std::nullopt);
    EXPECT_EQ(LastSolid(Open(Written().front())).Layer(), "Material_ 18 3_4 FU\xC3\x9F");
}

TEST(PartExportNames, AreMadeOfThicknessAndMaterialWithTheBlankOfTheNumber) {
    EXPECT_EQ(MaterialLayerName(0.75, "Oak"), "Material_ .75 OAK");
    EXPECT_EQ(MaterialLayerName(18.01, "oak"), "Material_ 18 OAK");
    EXPECT_EQ(MaterialLayerName(18.02, "oak"), "Material_ 18.03125 OAK");
    EXPECT_EQ(MaterialLayerName(0, ""), "Material_ 0 UnknownMaterial");
    EXPECT_EQ(MaterialLayerName(0.5, "a/b*c"), "Material_ .5 A_B_C");
}

TEST(PartExportNames, FilesHaveALowLineBehindTheNumber) {
    EXPECT_EQ(PartExportPath(3), "C:\\BV-DWG\\Part3.dwg");
    EXPECT_EQ(FinishedPartPath(3, "Side", "12a"), "C:\\BV-DWG\\Part3_SIDE_12A_.dwg");
    EXPECT_EQ(FinishedPartPath(0, "", ""), "C:\\BV-DWG\\Part0___.dwg");
    EXPECT_EQ(FinishedPartPath(0, "a\\b:c", "1/2"), "C:\\BV-DWG\\Part0_A_B_C_1_2_.dwg");
}

TEST(PartExportNames, ThatAreVeryLongAreCut) {
    const std::string name(255, 'n'), number(200, '7');
    const std::string path = FinishedPartPath(12, name, number);
    EXPECT_EQ(path.size(), PartExportFolder.size() + 240);
    EXPECT_EQ(path, "C:\\BV-DWG\\Part12_" + std::string(113, 'N') + "_" + std::string(114, '7') + "_.dwg");
}

TEST_F(PartExportTest, ASecondNameIsSavedBesideTheFirst) {
    Board(600, 300, 18);
    document.SaveAs("c:\\jobs\\..\\My job.dwg", SaveAsKind::Native);
    EXPECT_TRUE(cBrenvik().Call("BVDWG2", host));
    EXPECT_EQ(Messages(), Texts{});
    EXPECT_EQ(Written(), (Texts{"My job.dwg", "My job2.dwg"}));
    EXPECT_EQ(host.ActiveDocument()->FullName(), "C:\\BV-DWG\\My job.dwg");
    EXPECT_EQ(host.OpenDocuments().size(), 1U);
    EXPECT_EQ(host.ActiveDocument()->ModelSpace().Count(), 1);
}

TEST_F(PartExportTest, ADrawingWithoutANameHasNoSecond) {
    Board(600, 300, 18);
    EXPECT_TRUE(cBrenvik().Call("BVDWG2", host));
    ASSERT_EQ(Messages().size(), 1U);
    EXPECT_EQ(Messages()[0].rfind("52", 0), 0U) << Messages()[0];
    EXPECT_EQ(Written(), Texts{});
}

TEST_F(PartExportTest, ASecondNameCanBeTypedAtTheHost) {
    Board(600, 300, 18);
    document.SaveAs("c:\\job.dwg", SaveAsKind::Native);
    commandLine.RegisterCommand("BVDWG2", [this] { cBrenvik().Call("BVDWG2", host); });
    document.SendCommand("BVDWG2 regen ");
    EXPECT_EQ(Written(), (Texts{"job.dwg", "job2.dwg"}));
}

}  // namespace
}  // namespace brenvik
