// Drawings that the host writes only to open them again: the set in the user's system, and what opens is what
// the file holds.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host_fixture.h"
#include "support/ezdxf_audit.h"

namespace brenvik {
namespace {

namespace fs = std::filesystem;

class WorkDrawings : public HostTest {
  protected:
    WorkDrawings() { fs::create_directories(folder); }
    ~WorkDrawings() override { fs::remove_all(folder); }

    std::string Path(const std::string& name) const { return (folder / name).string(); }
    AcadSelectionSet& Everything() {
        AcadSelectionSet& set = *document.SelectionSets().Add("work");
        set.Select(SelectMode::All);
        return set;
    }
    HostDocument& Opened(const std::string& name) {
        return dynamic_cast<HostDocument&>(*application.Documents().Open(Path(name)));
    }
    /// The same file read as text.
    HostDocument& Read(const std::string& name) {
        fs::copy_file(Path(name), Path("copy.dwg"), fs::copy_options::overwrite_existing);
        return Opened("copy.dwg");
    }

    fs::path folder = fs::temp_directory_path() /
                      ("brenvik-work-drawings-" +
                       std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
};

TEST_F(WorkDrawings, HoldThePartAsTheUserSystemSeesIt) {
    auto& solid = dynamic_cast<HostSolid&>(*Model().AddBox({30, 20, 10}, 20, 10, 4));
    SetText(solid, "PartName", "Bank");
    NewLayer("RegionCopy").SetLock(true);
    NewLayer("circleHold");
    solid.SetLayer("circleHold");
    HostEntity& line = HostEntityOf(Model().AddLine({20, 15, 8}, {40, 15, 8}));
    EntityLook look = line.Look();
    look.layer = document.LayerTable().Find("RegionCopy");
    line.SetLook(look);
    document.SetActiveUcs({20, 15, 8}, {1, 0, 0}, {0, 1, 0});
    document.Wblock(Path("wblock2.dwg"), Everything());
    for (HostDocument* opened : {&Opened("wblock2.dwg"), &Read("wblock2.dwg")}) {
        ASSERT_EQ(opened->Model().Count(), 2);
        auto& part = dynamic_cast<HostSolid&>(*opened->Model().Item(0));
        ExpectBox(part.GetBoundingBox(), {0, 0, 0}, {20, 10, 4}, 0);
        EXPECT_EQ(TextOf(part, "PartName"), "Bank");
        EXPECT_EQ(part.Layer(), "circleHold");
        EXPECT_EQ(part.Volume(), solid.Volume());
        ExpectExact(dynamic_cast<HostLine&>(*opened->Model().Item(1)).EndPoint(), {20, 0, 0});
        EXPECT_TRUE(opened->LayerTable().Find("RegionCopy")->Lock());
        ExpectExact(opened->ActiveUCS()[0], {0, 0, 0});
    }
}

TEST_F(WorkDrawings, OpenAsTheFileStandsNow) {
    Model().AddBox({0, 0, 0}, 2, 2, 2);
    document.Wblock(Path("a.dwg"), Everything());
    Model().AddBox({9, 0, 0}, 2, 2, 2);
    AcadSelectionSet& both = *document.SelectionSets().Add("both");
    both.Select(SelectMode::All);
    document.Wblock(Path("b.dwg"), both);
    EXPECT_EQ(Opened("a.dwg").Model().Count(), 1);
    fs::copy_file(Path("b.dwg"), Path("a.dwg"), fs::copy_options::overwrite_existing);
    EXPECT_EQ(Opened("a.dwg").Model().Count(), 2);
    std::ofstream(Path("a.dwg")) << "no drawing";
    EXPECT_THROW(Opened("a.dwg"), Failure);
    fs::remove(Path("b.dwg"));
    EXPECT_THROW(Opened("b.dwg"), Failure);
}

TEST_F(WorkDrawings, OpenedTwiceAreTwoDrawings) {
    Model().AddBox({0, 0, 0}, 2, 2, 2);
    document.Wblock(Path("a.dwg"), Everything());
    HostDocument& first = Opened("a.dwg");
    first.Model().Item(0)->Move({0, 0, 0}, {5, 0, 0});
    EXPECT_EQ(Opened("a.dwg").Model().Item(0)->GetBoundingBox().min.x, -1);
    first.Close(false);
    EXPECT_EQ(Opened("a.dwg").Model().Count(), 1);
    EXPECT_EQ(Model().Item(0)->GetBoundingBox().min.x, -1);
}

TEST_F(WorkDrawings, WrittenTwiceAreTheSameFile) {
    auto& solid = *Model().AddBox({0, 0, 0}, 2, 2, 2);
    AcadSelectionSet& set = Everything();
    document.Wblock(Path("Part_0.dwg"), set);
    document.Wblock(Path("BPart_0.dwg"), set);
    EXPECT_EQ(fs::file_size(Path("Part_0.dwg")), fs::file_size(Path("BPart_0.dwg")));
    EXPECT_EQ(Opened("BPart_0.dwg").Model().Count(), 1);
    EXPECT_EQ(fs::hard_link_count(Path("Part_0.dwg")), 2u);
    SetText(solid, "Quantity", "3");
    document.Wblock(Path("BPart_0.dwg"), set);
    EXPECT_EQ(TextOf(dynamic_cast<HostSolid&>(*Read("BPart_0.dwg").Model().Item(0)), "Quantity"), "3");
    EXPECT_EQ(TextOf(dynamic_cast<HostSolid&>(*Opened("Part_0.dwg").Model().Item(0)), "Quantity"), "");
}

TEST_F(WorkDrawings, AreWrittenAnewWhereTheFirstIsAnotherFileByNow) {
    Model().AddBox({0, 0, 0}, 2, 2, 2);
    AcadSelectionSet& set = Everything();
    document.Wblock(Path("Part_0.dwg"), set);
    std::ofstream(Path("Part_0.dwg")) << "no drawing";
    document.Wblock(Path("BPart_0.dwg"), set);
    EXPECT_EQ(Read("BPart_0.dwg").Model().Count(), 1);
    std::ofstream(Path("there.dwg")) << "an older one";
    document.Wblock(Path("there.dwg"), set);
    EXPECT_EQ(Read("there.dwg").Model().Count(), 1);
}

TEST_F(WorkDrawings, ClosingGoesBackToTheDrawingBefore) {
    Model().AddBox({0, 0, 0}, 2, 2, 2);
    document.Wblock(Path("a.dwg"), Everything());
    for (int i = 0; i < 40; ++i) {
        HostDocument& part = Opened("a.dwg");
        EXPECT_EQ(application.ActiveDocument(), &part);
        part.Close(false);
        EXPECT_EQ(application.ActiveDocument(), &document);
    }
    EXPECT_EQ(application.Documents().Count(), 1);
}

TEST_F(WorkDrawings, GoThroughTheirOwnWriterWhereThereIsOne) {
    int kept = 0, scratch = 0;
    HostApplication host(
        [&](const fs::path& file, std::string_view text) { ++kept, WriteWholeFile(file, text); },
        [&](const fs::path& file, std::string_view text) {
            ++scratch;
            WriteScratchFile(file, text);
        });
    HostDocument& drawing = host.NewDocument();
    drawing.ModelSpace().AddBox({0, 0, 0}, 2, 2, 2);
    AcadSelectionSet& set = *drawing.SelectionSets().Add("work");
    set.Select(SelectMode::All);
    drawing.Wblock(Path("a.dwg"), set);
    EXPECT_EQ(scratch, 1);
    EXPECT_EQ(kept, 0);
    drawing.SaveAs(Path("a.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(kept, 1);
}

TEST_F(WorkDrawings, ViewportsKeepTheirViewThroughTheFile) {
    document.SetActiveSpace(ActiveSpaceKind::PaperSpace);
    auto& viewport = dynamic_cast<HostViewport&>(*document.PaperSpace().AddPViewport({50, 40, 0}, 60, 30));
    ViewportData values = viewport.Values();
    values.viewTarget = {1, 2, 3};
    values.viewDirection = {0.125, 0, 0};
    values.viewHeight = 77;
    values.frontClip = 0.5;
    values.backClip = -4;
    values.twist = 0.25;
    values.statusFlags = 0x816;
    values.frozenLayers = {NewLayer("bv-section1").OwnHandle()};
    viewport.SetValues(values);
    document.SaveAs(Path("views.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(test::AuditWithEzdxf(Path("views.dxf")).value_or(""), "");
    HostDocument& opened = Opened("views.dxf");
    const auto& read = dynamic_cast<HostViewport&>(*opened.PaperSpace().Item(0)).Values();
    ExpectExact(read.viewTarget, values.viewTarget);
    ExpectExact(read.viewDirection, values.viewDirection);
    EXPECT_EQ(read.viewHeight, 77);
    EXPECT_EQ(read.frontClip, 0.5);
    EXPECT_EQ(read.backClip, -4);
    EXPECT_NEAR(read.twist, 0.25, 1e-15);
    EXPECT_EQ(read.statusFlags, 0x816);
    ASSERT_EQ(read.frozenLayers.size(), 1u);
    EXPECT_EQ(read.frozenLayers[0], opened.LayerTable().Find("bv-section1")->Values().handle);
}

TEST_F(WorkDrawings, OperationsKeepThicknessNormalAndPlane) {
    const std::vector<double> corners{0, 0, 100, 0, 100, 50};
    auto& route = *Model().AddLightWeightPolyline(corners);
    route.SetClosed(true);
    route.SetBulge(1, -0.5);
    route.SetThickness(-18.3);
    route.SetElevation(18);
    auto& hole = *Model().AddCircle({10, 20, 18}, 2.5);
    hole.SetThickness(-12);
    auto& bore = *Model().AddCircle({0, 20, 9}, 4);
    bore.SetNormal({-1, 0, 0});
    bore.SetThickness(-30);
    const std::vector<double> sheet{0, 0, 0, 600, 0, 0, 600, 300, 0, 0, 300, 0};
    auto& outline = *Model().Add3DPoly(sheet);
    outline.SetClosed(true);
    outline.SetThickness(18);
    document.SetActiveUcs({0, 300, 0}, {1, 0, 0}, {0, 1, 0});
    document.SaveAs(Path("part.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(test::AuditWithEzdxf(Path("part.dxf")).value_or(""), "");
    HostDocument& opened = Opened("part.dxf");
    auto& readRoute = dynamic_cast<HostLWPolyline&>(*opened.Model().Item(0));
    EXPECT_EQ(readRoute.Values().thickness, -18.3);
    EXPECT_EQ(readRoute.Values().elevation, 18);
    EXPECT_EQ(readRoute.GetBulge(1), -0.5);
    EXPECT_TRUE(readRoute.Closed());
    EXPECT_EQ(dynamic_cast<HostCircle&>(*opened.Model().Item(1)).Thickness(), -12);
    auto& readBore = dynamic_cast<HostCircle&>(*opened.Model().Item(2));
    EXPECT_EQ(readBore.Thickness(), -30);
    ExpectExact(readBore.Normal(), {-1, 0, 0});
    ExpectNear(readBore.Center(), {0, 20, 9});
    auto& readOutline = dynamic_cast<HostPolyline&>(*opened.Model().Item(3));
    EXPECT_EQ(readOutline.Thickness(), 18);
    EXPECT_TRUE(readOutline.Closed());
    EXPECT_EQ(readOutline.Coordinates(), sheet);
    ExpectExact(opened.ActiveUCS()[0], {0, 300, 0});
}

TEST_F(WorkDrawings, NamelessBlocksAndTheirReferencesAreSaved) {
    BlockData record;
    record.name = "*U1";
    record.flags = 1;
    document.AddBlock(record).AddLine({0, 0, 0}, {5, 0, 0});
    document.Model().InsertBlock({}, "*U1");
    document.SaveAs(Path("blocks.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(test::AuditWithEzdxf(Path("blocks.dxf")).value_or(""), "");
    HostDocument& opened = Opened("blocks.dxf");
    EXPECT_EQ(dynamic_cast<HostBlockReference&>(*opened.Model().Item(0)).Explode().size(), 1u);
    document.Model().Item(0)->Delete();
    document.PurgeAll();
    EXPECT_EQ(document.FindBlock("*U1"), nullptr);
}

TEST_F(WorkDrawings, PurgingKeepsTheCurrentLayer) {
    HostLayer& current = NewLayer("PL_18");
    NewLayer("PV-1F");
    document.SetActiveLayer(current);
    document.PurgeAll();
    EXPECT_NE(document.LayerTable().Find("PL_18"), nullptr);
    EXPECT_EQ(document.LayerTable().Find("PV-1F"), nullptr);
}

}  // namespace
}  // namespace brenvik
