// Drawings on disk: saving, opening, writing parts out, and what is refused.
#include <sys/resource.h>
#include <algorithm>
#include <fstream>

#include <csignal>

#include "drafting_host/document/files/drawing_files.h"
#include "drafting_host/dxf/writing/dxf_writer.h"
#include "host_fixture.h"
#include "support/ezdxf_audit.h"
#include "support/sample_files.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

constexpr double pi = std::numbers::pi;

class Files : public HostTest {
  protected:
    std::filesystem::path Path(const std::string& name) { return folder.Path() / name; }
    std::string Text(const std::string& name) { return Path(name).string(); }
    void Write(const std::string& name, const std::string& content) {
        std::ofstream(Path(name), std::ios::binary) << content;
    }
    std::string Bytes(const std::string& name) { return test::FileBytes(Path(name)); }

    /// A drawing with something of everything that has to survive.
    void Fill() {
        HostLayer& layer = NewLayer("T\xC3\xBCren");
        layer.SetColor(30);
        solid = Model().AddBox({300, 200, 9}, 600, 400, 18);
        solid->Boolean(BooleanKind::Subtraction, *Model().AddCylinder({100, 100, 9}, 2.5, 30));
        solid->SetLayer("T\xC3\xBCren");
        SetText(*solid, "PARTNAME", "T\xC3\xBCrseite \"links\"");
        SetText(*solid, "QUANTITY", "2");
        SetText(*solid, "NOTES", "");
        Model().AddLine({0.1, 0.2, 0.3}, {1e-3, 1e5, -7})->SetVisible(false);
        Model().AddArc({1, 2, 3}, 4, 0.3, 2.1)->Rotate3D({0, 0, 0}, {1, 0, 0}, pi / 2);
        Model().AddCircle({5, 5, 0}, 2.5)->SetThickness(-18);
        AcadLWPolyline* outline = Model().AddLightWeightPolyline(std::vector<double>{0, 0, 10, 0, 10, 10});
        outline->SetBulge(1, 0.41421356237);
        outline->SetClosed(true);
        solid->SectionSolid({0, 0, 9}, {1, 0, 9}, {0, 1, 9});
        BlockData record;
        record.name = "Hinge";
        document.AddBlock(record).AddCircle({0, 0, 0}, 17.5);
        document.Model().InsertBlock({50, 60, 0}, "Hinge", 2, 0.5);
        document.Groups().Add("BASE")->AppendItems(std::vector<AcadEntity*>{solid});
        document.PaperSpace().AddPViewport({100, 100, 0}, 200, 150);
        document.SetActiveUcs({1, 2, 3}, {0, 1, 0}, {0, 0, 1});
        layer.SetLock(true);
    }

    Acad3DSolid* solid = nullptr;
    TemporaryFolder folder;
};

void ExpectSameEntity(AcadEntity& one, AcadEntity& other) {
    EXPECT_EQ(one.Handle(), other.Handle());
    EXPECT_EQ(one.ObjectName(), other.ObjectName());
    EXPECT_EQ(one.Layer(), other.Layer());
    EXPECT_EQ(one.Color(), other.Color());
    EXPECT_EQ(one.Visible(), other.Visible());
    EXPECT_EQ(HostEntityOf(one).ExtendedData(), HostEntityOf(other).ExtendedData());
    const Box3 box = one.GetBoundingBox(), again = other.GetBoundingBox();
    ExpectBox(again, box.min, box.max, 1e-9);
}

TEST_F(Files, ADrawingComesBackWithHandlesLayersPartDataAndGeometry) {
    Fill();
    document.SaveAs(Text("job.dxf"), SaveAsKind::Dxf2000);
    HostDocument& again = application.OpenDrawing(Path("job.dxf"));
    EXPECT_TRUE(again.Notes().empty());
    ASSERT_EQ(again.ModelSpace().Count(), document.ModelSpace().Count());
    for (int i = 0; i < again.ModelSpace().Count(); ++i) {
        SCOPED_TRACE(document.ModelSpace().Item(i)->ObjectName());
        ExpectSameEntity(*document.ModelSpace().Item(i), *again.ModelSpace().Item(i));
    }
    auto* read = dynamic_cast<Acad3DSolid*>(again.HandleToObject(solid->Handle()));
    ASSERT_NE(read, nullptr);
    EXPECT_NEAR(read->Volume(), solid->Volume(), 1e-9 * solid->Volume());
    EXPECT_EQ(TextOf(*read, "PARTNAME"), "T\xC3\xBCrseite \"links\"");
    EXPECT_TRUE(again.Layers().Item("T\xC3\x9CREN")->Lock());
    EXPECT_EQ(again.Layers().Item("T\xC3\xBCren")->Color(), 30);
    EXPECT_EQ(again.Groups().Item("BASE")->Item(0)->Handle(), solid->Handle());
    EXPECT_EQ(again.ActiveUCS(), document.ActiveUCS());
    EXPECT_EQ(again.PaperSpace().Count(), document.PaperSpace().Count());
    EXPECT_EQ(again.Blocks().Item("Hinge")->Count(), 1);
}

TEST_F(Files, WritingAgainGivesTheSameBytes) {
    // Bodies are rebuilt on reading, and their loops may begin at another edge; all the rest stays.
    Fill();
    document.Layers().Item("T\xC3\xBCren")->SetLock(false);
    Model().ForEach([](AcadEntity& entity) {
        if (entity.ObjectName() == "AcDb3dSolid" || entity.ObjectName() == "AcDbRegion") entity.Delete();
    });
    document.SaveAs(Text("one.dxf"), SaveAsKind::Dxf2000);
    HostDocument& again = application.OpenDrawing(Path("one.dxf"));
    again.SaveAs(Text("two.dxf"), SaveAsKind::Dxf2000);
    const std::string one = Bytes("one.dxf"), two = Bytes("two.dxf");
    const auto differs = std::ranges::mismatch(one, two);
    const auto place = static_cast<std::size_t>(differs.in1 - one.begin());
    const std::size_t shown = place < 60 ? 0 : place - 60;
    EXPECT_TRUE(one == two) << one.substr(shown, 120) << "\nfor\n" << two.substr(shown, 120);
}

TEST_F(Files, AnIndependentReaderFindsNothingWrong) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed";
    document.SaveAs(Text("empty.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(test::AuditWithEzdxf(Path("empty.dxf")), std::nullopt);
    Fill();
    document.SaveAs(Text("job.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(test::AuditWithEzdxf(Path("job.dxf")), std::nullopt);
    AcadSelectionSet* set = document.SelectionSets().Add("EXPORTSET");
    set->Select(SelectMode::All);
    document.Wblock(Text("part.dwg"), *set);
    std::filesystem::copy_file(Path("part.dwg"), Path("part.dxf"));
    EXPECT_EQ(test::AuditWithEzdxf(Path("part.dxf")), std::nullopt);
}

TEST_F(Files, NamesFollowTheFileAndNewHandlesStayNew) {
    Fill();
    document.SaveAs(Text("job"), SaveAsKind::Native);
    EXPECT_EQ(document.Name(), "job.dwg");
    EXPECT_EQ(document.FullName(), Text("job.dwg"));
    HostDocument& again = application.OpenDrawing(Path("job.dwg"));
    EXPECT_EQ(again.Name(), "job.dwg");
    const std::string handle = again.ModelSpace().AddLine({0, 0, 0}, {1, 0, 0})->Handle();
    EXPECT_EQ(document.HandleToObject(handle), nullptr);
    again.Save();
    HostDocument& third = application.OpenDrawing(Path("job.dwg"));
    EXPECT_NE(third.HandleToObject(handle), nullptr);
    EXPECT_NE(third.HandleToObject(solid->Handle()), nullptr);
}

TEST_F(Files, NoneIsSavedOverAnotherThatIsOpen) {
    Fill();
    document.SaveAs(Text("job"), SaveAsKind::Native);
    HostDocument& other = application.NewDocument();
    const Failure failure = FailureOf([&] { other.SaveAs(Text("./job"), SaveAsKind::Native); });
    EXPECT_EQ(failure.number(), host_failure_number::NotPossible);
    EXPECT_EQ(failure.detail(), Text("./job.dwg") + " stands open as another drawing; close that first");
    EXPECT_EQ(application.OpenDrawing(Path("job.dwg")).ModelSpace().Count(), document.ModelSpace().Count());
    document.Save();
    document.SaveAs(Text("renamed"), SaveAsKind::Native);
    application.CloseDocument(*application.OpenDocuments().back());
    other.SaveAs(Text("job"), SaveAsKind::Native);
    EXPECT_EQ(other.Name(), "job.dwg");
}

TEST_F(Files, PathsOfTheSystemAreResolved) {
    application.SetPathResolver([&](std::string_view name) {
        return folder.Path() / std::string(name.substr(name.find_last_of('\\') + 1));
    });
    document.SaveAs("c:\\BV-DXF\\Part_0.dwg", SaveAsKind::Native);
    EXPECT_TRUE(std::filesystem::exists(Path("Part_0.dwg")));
    AcadDocument* opened = application.Documents().Open("c:\\BV-DXF\\Part_0.dwg");
    EXPECT_EQ(opened->FullName(), "c:\\BV-DXF\\Part_0.dwg");
    EXPECT_EQ(opened->Name(), "Part_0.dwg");
    EXPECT_EQ(application.ActiveDocument(), opened);
}

TEST_F(Files, WblockWritesTheSetInTheUserCoordinateSystem) {
    Fill();
    AcadSelectionSet* set = document.SelectionSets().Add("EXPORTSET");
    set->AddItems(std::vector<AcadEntity*>{solid});
    document.SetActiveUcs({600, 0, 0}, {0, 1, 0}, {0, 0, 1});
    document.Wblock(Text("Part_0.dwg"), *set);
    HostDocument& part = application.OpenDrawing(Path("Part_0.dwg"));
    ASSERT_EQ(part.ModelSpace().Count(), 1);
    // X of the part is Y of the job, Y is Z, Z is X: the origin lies at the far end.
    ExpectBox(part.ModelSpace().Item(0)->GetBoundingBox(), {0, 0, -600}, {400, 18, 0}, 0);
    EXPECT_EQ(TextOf(*part.ModelSpace().Item(0), "PARTNAME"), "T\xC3\xBCrseite \"links\"");
    EXPECT_EQ(part.Layers().Count(), 2);
    EXPECT_TRUE(part.Layers().Item("T\xC3\xBCren")->Lock());
    ExpectExact(part.ActiveUCS()[0], {0, 0, 0});
    ExpectExact(part.ActiveUCS()[1], {1, 0, 0});
    ExpectBox(solid->GetBoundingBox(), {0, 0, 0}, {600, 400, 18}, 0);
    EXPECT_EQ(document.FullName(), "");
}

TEST_F(Files, WblockOfNothingFails) {
    AcadSelectionSet* set = document.SelectionSets().Add("EXPORTSET");
    EXPECT_THROW(document.Wblock(Text("Part_0.dwg"), *set), Failure);
    EXPECT_FALSE(std::filesystem::exists(Path("Part_0.dwg")));
}

TEST_F(Files, WblockTakesTheBlocksOfItsReferencesAlong) {
    Fill();
    AcadSelectionSet* set = document.SelectionSets().Add("EXPORTSET");
    set->AddItems(std::vector<AcadEntity*>{&document.Model().InsertBlock({0, 0, 0}, "Hinge")});
    document.SetActiveUcs({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    document.Wblock(Text("hinge.dwg"), *set);
    HostDocument& part = application.OpenDrawing(Path("hinge.dwg"));
    EXPECT_EQ(part.Blocks().Item("Hinge")->Count(), 1);
    ExpectBox(part.ModelSpace().Item(0)->GetBoundingBox(), {-17.5, -17.5, 0}, {17.5, 17.5, 0}, 1e-12);
}

TEST_F(Files, StepKeepsNamesAssembliesAndVolumes) {
    Fill();
    document.Layers().Item("T\xC3\xBCren")->SetLock(false);
    SetText(*solid, "SUBASSEMBLY", "Oberschrank");
    const std::vector<std::string> problems = SaveDrawing(document, Path("job.step"));
    EXPECT_EQ(problems.size(), 7U);
    HostDocument& again = application.OpenDrawing(Path("job.step"));
    ASSERT_EQ(again.ModelSpace().Count(), 1);
    auto& read = dynamic_cast<Acad3DSolid&>(*again.ModelSpace().Item(0));
    EXPECT_NEAR(read.Volume(), solid->Volume(), 1e-9 * solid->Volume());
    EXPECT_EQ(TextOf(read, "PARTNAME"), "T\xC3\xBCrseite \"links\"");
    EXPECT_EQ(TextOf(read, "SUBASSEMBLY"), "Oberschrank");
    EXPECT_EQ(read.Layer(), "T\xC3\xBCren");
}

TEST_F(Files, PartsOfOtherSystemsGetLettersAndTheirExtents) {
    Model().AddBox({0, 0, 0}, 600.123456, 400, 18);
    SaveDrawing(document, Path("board.sat"));
    const AcadObject& read = *application.OpenDrawing(Path("board.sat")).ModelSpace().Item(0);
    EXPECT_EQ(TextOf(read, "PARTNAME"), "board");
    EXPECT_EQ(TextOf(read, "ORIE"), "LWT");
    EXPECT_EQ(TextOf(read, "OLDVALUE1"), "600.12346");
    EXPECT_EQ(TextOf(read, "OLDVALUE2"), "400");
    EXPECT_EQ(TextOf(read, "OLDVALUE3"), "18");
    EXPECT_EQ(TextOf(read, "SUBASSEMBLY"), "");
    const AcadObject& bare =
        *application.OpenDrawing(Path("board.sat"), {.letters = ""}).ModelSpace().Item(0);
    EXPECT_EQ(TextOf(bare, "PARTNAME"), "board");
    EXPECT_EQ(TextOf(bare, "ORIE"), "");
    EXPECT_EQ(TextOf(bare, "OLDVALUE1"), "");
    const AcadObject& wide =
        *application.OpenDrawing(Path("board.sat"), {.letters = "WLT"}).ModelSpace().Item(0);
    EXPECT_EQ(TextOf(wide, "ORIE"), "WLT");
}

TEST_F(Files, TheSourceOfAnImportIsNeverOverwritten) {
    Model().AddBox({0, 0, 0}, 600, 400, 18);
    SaveDrawing(document, Path("board.step"));
    const std::string source = Bytes("board.step");
    HostDocument& read = application.OpenDrawing(Path("board.step"));
    SetText(*read.ModelSpace().Item(0), "ORIE", "WLT");
    EXPECT_EQ(FailureOf([&] { read.Save(); }).number(), host_failure_number::NotPossible);
    EXPECT_EQ(Bytes("board.step"), source);
    read.SaveAs(Text("board"), SaveAsKind::Native);
    EXPECT_NO_THROW(read.Save());
    EXPECT_EQ(TextOf(*application.OpenDrawing(Path("board.dwg")).ModelSpace().Item(0), "ORIE"), "WLT");
}

TEST_F(Files, AcisTextHoldsAllSolidsOfModelSpace) {
    Model().AddBox({0, 0, 0}, 1, 2, 3);
    Model().AddCylinder({10, 0, 0}, 1, 5);
    const std::vector<std::string> problems = SaveDrawing(document, Path("two.sat"));
    EXPECT_TRUE(problems.empty());
    HostDocument& again = application.OpenDrawing(Path("two.sat"));
    ASSERT_EQ(again.ModelSpace().Count(), 2);
    EXPECT_NEAR(dynamic_cast<Acad3DSolid&>(*again.ModelSpace().Item(0)).Volume(), 6, 1e-12);
    EXPECT_NEAR(dynamic_cast<Acad3DSolid&>(*again.ModelSpace().Item(1)).Volume(), 5 * pi, 1e-12);
    EXPECT_EQ(TextOf(*again.ModelSpace().Item(1), "PARTNAME"), "two 2");
}

TEST_F(Files, TheContentDecidesNotTheName) {
    Model().AddBox({0, 0, 0}, 1, 2, 3);
    SaveDrawing(document, Path("a.sat"));
    SaveDrawing(document, Path("a.step"));
    SaveDrawing(document, Path("a.dxf"));
    std::filesystem::rename(Path("a.sat"), Path("b.dxf"));
    std::filesystem::rename(Path("a.step"), Path("b.sat"));
    std::filesystem::rename(Path("a.dxf"), Path("b.step"));
    for (const char* name : {"b.dxf", "b.sat", "b.step"})
        EXPECT_EQ(application.OpenDrawing(Path(name)).ModelSpace().Count(), 1) << name;
}

TEST_F(Files, WhatIsNoDrawingIsRefusedByName) {
    Write("empty.dxf", "");
    Write("text.dxf", "Dear Sir,\nplease find enclosed\n");
    Write("binary.dxf", std::string("AutoCAD Binary DXF\r\n\x1a\0", 22));
    Write("real.dwg", "AC1015\0\0\0\0");
    Write("body.sab", "ACIS BinaryFile");
    Write("wide.dxf", std::string("\xFF\xFE"
                                  "0\0\r\0\n\0",
                                  8));
    Write("cut.step", "ISO-10303-21;\nHEADER;\n");
    Write("bad.sat", "400 0 1 0\n");
    const std::vector<std::pair<std::string, std::string>> cases{
        {"empty.dxf", "an empty file"},  {"text.dxf", "Dear Sir"},
        {"binary.dxf", "a section"},     {"real.dwg", "the head of a binary drawing"},
        {"body.sab", "break off"},       {"cut.step", "END-ISO-10303-21"},
        {"bad.sat", "expected an ACIS"}, {"missing.dxf", "missing.dxf"},
        {"wide.dxf", "UTF-16 text"},
    };
    for (const auto& [name, told] : cases) {
        const Failure failure = FailureOf([&] { application.OpenDrawing(Path(name)); });
        EXPECT_NE(failure.detail().find(name), std::string::npos) << failure.detail();
        EXPECT_NE(failure.detail().find(told), std::string::npos) << failure.detail();
    }
    EXPECT_THROW(application.OpenDrawing(folder.Path()), Failure);
    EXPECT_EQ(application.Documents().Count(), 1);
}

TEST_F(Files, ADamagedBodyIsToldAndTheOthersArrive) {
    Model().AddBox({0, 0, 0}, 1, 2, 3);
    Model().AddBox({10, 0, 0}, 1, 2, 3);
    std::vector<std::string> problems;
    DrawingData data = document.ToData(problems);
    auto& body = std::get<AcisData>(data.blocks.front().entities.front().geometry);
    body.text.replace(body.text.find("plane-surface"), 5, "plaid");
    WriteWholeFile(Path("damaged.dxf"), WriteDxf(data));
    HostDocument& again = application.OpenDrawing(Path("damaged.dxf"));
    EXPECT_EQ(again.ModelSpace().Count(), 1);
    ASSERT_FALSE(again.Notes().empty());
    EXPECT_TRUE(again.Notes().front().dataLost);
    EXPECT_GT(again.Notes().front().line, 0U);
    EXPECT_NE(again.Notes().front().text.find("record"), std::string::npos) << again.Notes().front().text;
    EXPECT_NE(again.Notes().front().text.find("left out"), std::string::npos) << again.Notes().front().text;
}

TEST_F(Files, ASolidThatIsASheetIsNoPartAndIsTold) {
    Model().AddBox({0, 0, 0}, 1, 2, 3)->SectionSolid({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    std::vector<std::string> problems;
    DrawingData data = document.ToData(problems);
    std::vector<EntityData>& entities = data.blocks.front().entities;
    ASSERT_EQ(entities.size(), 2U);
    std::get<AcisData>(entities.back().geometry).kind = AcisData::Kind::Solid;
    WriteWholeFile(Path("sheet.dxf"), WriteDxf(data));
    HostDocument& again = application.OpenDrawing(Path("sheet.dxf"));
    ASSERT_EQ(again.ModelSpace().Count(), 2);
    EXPECT_EQ(again.ModelSpace().Item(0)->ObjectName(), "AcDb3dSolid");
    EXPECT_EQ(again.ModelSpace().Item(1)->ObjectName(), "AcDbBody");
    ASSERT_EQ(again.Notes().size(), 1U);
    EXPECT_NE(again.Notes().front().text.find("a sheet of 1 face that encloses nothing"), std::string::npos)
        << again.Notes().front().text;
}

TEST_F(Files, EveryFileGoesThroughTheWriterThatTheHostWasGiven) {
    std::vector<std::string> written;
    HostApplication host([&](const std::filesystem::path& file, std::string_view content) {
        EXPECT_FALSE(content.empty());
        written.push_back(file.filename().string());
    });
    HostDocument& job = host.NewDocument();
    AcadEntity* const board = job.ModelSpace().AddBox({0, 0, 0}, 1, 2, 3);
    for (const char* name : {"a.dxf", "a.dwg", "a.step", "a.stp", "a.sat"}) SaveDrawing(job, Path(name));
    AcadSelectionSet& set = *job.SelectionSets().Add("EXPORTSET");
    set.AddItems(std::vector<AcadEntity*>{board});
    job.Wblock(Text("part"), set);
    job.SaveAs(Text("job"), SaveAsKind::Native);
    job.Save();
    EXPECT_EQ(written, (std::vector<std::string>{"a.dxf", "a.dwg", "a.step", "a.stp", "a.sat", "part.dwg",
                                                 "job.dwg", "job.dwg"}));
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

TEST_F(Files, AHostWithoutAWriterRefusesToSaveAndNamesTheFile) {
    HostApplication host;
    HostDocument& job = host.NewDocument();
    job.ModelSpace().AddBox({0, 0, 0}, 1, 2, 3);
    const Failure failure = FailureOf([&] { SaveDrawing(job, Path("a.dxf")); });
    EXPECT_NE(std::string(failure.what()).find("a.dxf"), std::string::npos) << failure.what();
}

TEST_F(Files, SavingBehindALinkKeepsTheLink) {
    Write("real.dxf", "old");
    std::filesystem::create_symlink(Path("real.dxf"), Path("link.dxf"));
    Model().AddBox({0, 0, 0}, 1, 2, 3);
    SaveDrawing(document, Path("link.dxf"));
    EXPECT_TRUE(std::filesystem::is_symlink(Path("link.dxf")));
    EXPECT_EQ(application.OpenDrawing(Path("real.dxf")).ModelSpace().Count(), 1);
}

TEST_F(Files, OtherExtensionsAndFoldersThatAreNotThereAreRefused) {
    EXPECT_THROW(SaveDrawing(document, Path("a.png")), Failure);
    EXPECT_THROW(SaveDrawing(document, Path("a")), Failure);
    EXPECT_THROW(SaveDrawing(document, Path("nowhere/a.dxf")), Failure);
    EXPECT_THROW(SaveDrawing(document, Path("a.sat")), Failure);
    EXPECT_THROW(SaveDrawing(document, Path("a.step")), Failure);
    Model().AddBox({0, 0, 0}, 1, 2, 3);
    EXPECT_THROW(SaveDrawing(document, Path("nowhere/a.step")), Failure);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    EXPECT_THROW(document.SaveAs("", SaveAsKind::Native), Failure);
    EXPECT_THROW(document.SaveAs("c:\\", SaveAsKind::Native), Failure);
}

TEST_F(Files, AFailingDiskLeavesTheOldFile) {
    document.SaveAs(Text("job.dxf"), SaveAsKind::Dxf2000);
    const std::string old = Bytes("job.dxf");
    for (int i = 0; i < 200; ++i) Model().AddLine({0, 0, 0}, {1.0 * i, 1, 0});
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{4096, limit.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_THROW(document.Save(), Failure);
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, before);
    EXPECT_EQ(Bytes("job.dxf"), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST_F(Files, TenThousandEntitiesAreSavedAndOpenedInShortTime) {
    for (int i = 0; i < 10000; ++i) SetText(*Model().AddLine({0, 0, 0}, {1.0 * i, 1, 0}), "PARTNAME", "Door");
    document.SaveAs(Text("big.dxf"), SaveAsKind::Dxf2000);
    EXPECT_EQ(application.OpenDrawing(Path("big.dxf")).ModelSpace().Count(), 10000);
}

}  // namespace
}  // namespace brenvik
