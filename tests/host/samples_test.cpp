// Drawings by other programs, opened through the host: which are read and with which volumes, and which
// are refused by name.
#include <map>
#include <numbers>
#include <numeric>
#include <set>

#include "drafting_host/document/files/drawing_files.h"
#include "host_fixture.h"
#include "support/ezdxf_audit.h"
#include "support/sample_files.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

constexpr double pi = std::numbers::pi;

struct Sample {
    const char* file;
    std::vector<double> volumes;  // of the solids of model space, in order
};

class Samples : public HostTest {
  protected:
    void SetUp() override {
        if (!test::HasSamples()) GTEST_SKIP() << "the sample drawings are not there";
    }
    HostDocument& Open(const std::string& file) {
        return application.OpenDrawing(test::SampleFolder() / file);
    }
    std::map<std::string, int> KindsIn(HostDocument& drawing) {
        std::map<std::string, int> kinds;
        for (const std::string& name : NamesIn(drawing.ModelSpace())) ++kinds[name];
        return kinds;
    }
    std::vector<double> VolumesOf(HostDocument& drawing) {
        std::vector<double> volumes;
        drawing.ModelSpace().ForEach([&](AcadEntity& entity) {
            if (auto* solid = dynamic_cast<Acad3DSolid*>(&entity)) volumes.push_back(solid->Volume());
        });
        return volumes;
    }
    void ExpectVolumes(const std::vector<double>& is, const std::vector<double>& wanted, double relative) {
        ASSERT_EQ(is.size(), wanted.size());
        for (std::size_t i = 0; i < is.size(); ++i) EXPECT_NEAR(is[i], wanted[i], relative * wanted[i]);
    }
};

TEST_F(Samples, AcisTextFiles) {
    const std::vector<Sample> samples{
        {"sat/cgma__merge.sat", {1000, 1000}},
        {"sat/cgma__brick_2.sat", {8}},
        {"sat/meshkit__cube.sat", {1000}},
        {"sat/meshkit__brick.sat", {1}},
        {"sat/meshkit__cylcube.sat", {1000, 250 * pi}},
        {"sat/meshkit__threeholecube.sat", {0.91706593}},
        {"sat/meshkit__simpletet.sat", {0.4330127}},
        {"sat/meshkit__sphere.sat", {4000 * pi / 3}},
        {"sat/3Dshapes_1.sat", {6.25 * pi * 2.55743}},
        {"sat/3Dshapes_2.sat", {25 * 4.642655}},
        {"sat/3Dshapes_3.sat", {22.5 * pi}},
    };
    for (const Sample& sample : samples) {
        SCOPED_TRACE(sample.file);
        HostDocument& drawing = Open(sample.file);
        ExpectVolumes(VolumesOf(drawing), sample.volumes, 1e-6);
        EXPECT_TRUE(drawing.Notes().empty());
        EXPECT_EQ(TextOf(*drawing.ModelSpace().Item(0), "ORIE"), "LWT");
        drawing.Close(false);
    }
}

TEST_F(Samples, OneDrawingInThreeReleasesHoldsTheSameBodies) {
    HostDocument& r2000 = Open("dxf/ACadSharp__sample_AC1015_ascii.dxf");
    const std::vector<double> volumes = VolumesOf(r2000);
    ASSERT_EQ(volumes.size(), 2U);
    EXPECT_NEAR(volumes[0], 125, 1e-9);
    for (const char* other :
         {"dxf/ACadSharp__sample_AC1018_ascii.dxf", "dxf/ACadSharp__sample_AC1024_ascii.dxf"}) {
        SCOPED_TRACE(other);
        HostDocument& drawing = Open(other);
        ExpectVolumes(VolumesOf(drawing), volumes, 1e-9);
        EXPECT_EQ(KindsIn(drawing), KindsIn(r2000));
    }
    const std::map<std::string, int> kinds = KindsIn(r2000);
    EXPECT_EQ(kinds.at("AcDbRegion"), 1);
    EXPECT_EQ(kinds.at("AcDbPolyline"), 21);
    EXPECT_EQ(kinds.at("AcDbPolyFaceMesh"), 1);
}

TEST_F(Samples, DrawingsKeepWhatTheyHoldAndGetNoLetters) {
    const std::vector<Sample> samples{
        {"dxf/ezdxf__torus_r2000.dxf", {63165.468167}},
        {"dxf/ezdxf__torus_r2007.dxf", {63165.468167}},
    };
    for (const Sample& sample : samples) {
        SCOPED_TRACE(sample.file);
        HostDocument& drawing = Open(sample.file);
        ExpectVolumes(VolumesOf(drawing), sample.volumes, 1e-9);
        EXPECT_EQ(TextOf(*drawing.ModelSpace().Item(0), "ORIE"), "");
    }
    HostDocument& shapes = Open("dxf/ezdxf__acistools_3dsolids.dxf");
    int solids = 0;
    for (const auto& block : shapes.AllBlocks())
        block->ForEach([&](AcadEntity& entity) { solids += entity.ObjectName() == "AcDb3dSolid" ? 1 : 0; });
    EXPECT_EQ(solids, 5);
    EXPECT_TRUE(shapes.Notes().empty());
}

TEST_F(Samples, BinaryBodiesAreTheSolidsOfTheTextTwins) {
    const std::vector<double> expected = VolumesOf(Open("dxf/ACadSharp__sample_AC1015_ascii.dxf"));
    ASSERT_EQ(expected.size(), 2U);
    for (const char* twin : {"AC1015_binary", "AC1027_ascii", "AC1032_ascii"}) {
        SCOPED_TRACE(twin);
        HostDocument& drawing = Open(std::string("dxf/ACadSharp__sample_") + twin + ".dxf");
        const std::vector<double> volumes = VolumesOf(drawing);
        ASSERT_EQ(volumes.size(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i)
            EXPECT_NEAR(volumes[i], expected[i], 1e-9 * expected[i]);
        EXPECT_EQ(KindsIn(drawing).at("AcDbRegion"), 1);
        EXPECT_EQ(KindsIn(drawing).at("AcDbPolyline"), 21);
    }
}

TEST_F(Samples, BinaryBodiesOfOtherProgramsArriveWithTheirVolumes) {
    EXPECT_NEAR(VolumesOf(Open("dxf/ezdxf__xref_sphere.dxf")).at(0), 500 * pi / 3, 1e-6);
    const std::vector<double> shapes = VolumesOf(Open("dxf/sample-files__3Dshapes.dxf"));
    ASSERT_EQ(shapes.size(), 3U);
    EXPECT_NEAR(shapes[0], 6.25 * pi * 2.557429510356272306, 1e-6);
    EXPECT_NEAR(shapes[1], 25 * 4.642655294131080801, 1e-6);
    EXPECT_NEAR(shapes[2], 22.5 * pi, 1e-6);
    const std::vector<double> boxes = VolumesOf(Open("dxf/sample-files__3Dboxes.dxf"));
    ASSERT_EQ(boxes.size(), 2U);
    EXPECT_NEAR(boxes[0], 25 * 2 * 1.7677669529663689, 1e-6);
}

TEST_F(Samples, BinaryDrawingsHoldTheSolidsOfTheirTwins) {
    const std::vector<double> expected = VolumesOf(Open("dxf/ACadSharp__sample_AC1015_ascii.dxf"));
    EXPECT_EQ(expected.size(), 2U);
    for (const char* release : {"1014", "1015", "1018", "1021", "1024", "1027", "1032"}) {
        const std::vector<double> volumes =
            VolumesOf(Open(std::string("dwg/ACadSharp__sample_AC") + release + ".dwg"));
        ASSERT_EQ(volumes.size(), expected.size()) << release;
        for (std::size_t i = 0; i < volumes.size(); ++i)
            EXPECT_NEAR(volumes[i], expected[i], 1e-9) << release;
    }
}

TEST_F(Samples, StepAssembliesBecomePartData) {
    HostDocument& bookcase = Open("step/Woodworking__Bookcase_001.step");
    const std::vector<double> volumes = VolumesOf(bookcase);
    ASSERT_EQ(volumes.size(), 8U);
    EXPECT_NEAR(std::accumulate(volumes.begin(), volumes.end(), 0.0), 22368000, 1e-3);
    const AcadObject& side = *bookcase.ModelSpace().Item(0);
    EXPECT_EQ(TextOf(side, "PARTNAME"), "Side left");
    EXPECT_EQ(TextOf(side, "SUBASSEMBLY"), "Bookcase_001");
    EXPECT_EQ(TextOf(side, "OLDVALUE1"), "18");
    EXPECT_EQ(TextOf(side, "OLDVALUE2"), "300");
    EXPECT_EQ(TextOf(side, "OLDVALUE3"), "764");
    HostDocument& russian = Open("step/cgma__cub_model.step");
    EXPECT_EQ(russian.ModelSpace().Count(), 2);
    for (const ReadNote& note : russian.Notes()) EXPECT_FALSE(note.dataLost) << note.text;
}

/// One is refused when read; of three, a body that is saved is refused when read again: a torus that crosses
/// itself, an edge beside its face, and free-form faces.
const std::set<std::string> NotSavedWhole{"stepcode__io1-cm-214.stp", "Lever-Locks__key.step",
                                          "mediapad__box.step", "occt-import-js__footback.stp"};

TEST_F(Samples, EveryStepFileIsReadAndSavedAsADrawingThatComesBack) {
    TemporaryFolder folder;
    for (const auto& entry : std::filesystem::directory_iterator(test::SampleFolder() / "step")) {
        if (NotSavedWhole.contains(entry.path().filename().string())) continue;
        SCOPED_TRACE(entry.path().filename().string());
        HostDocument& job = application.OpenDrawing(entry.path());
        const std::vector<double> volumes = VolumesOf(job);
        EXPECT_FALSE(volumes.empty());
        const std::filesystem::path path = folder.Path() / "job.dxf";
        const std::vector<std::string> problems = SaveDrawing(job, path);
        HostDocument& again = application.OpenDrawing(path);
        EXPECT_TRUE(again.Notes().empty());
        EXPECT_EQ(problems, std::vector<std::string>{});
        // Where splines meet, a part is only as exact as the program that made it laid its edges.
        const bool free = entry.path().filename() == "cgma__cub_model.step";
        ExpectVolumes(VolumesOf(again), volumes, free ? 1e-7 : 1e-9);
        again.Close(false);
        job.Close(false);
    }
}

TEST_F(Samples, WhatWasReadAndSavedAgainPassesAnIndependentAudit) {
    if (!test::HasEzdxf()) GTEST_SKIP() << "ezdxf is not installed";
    TemporaryFolder folder;
    const std::filesystem::path path = folder.Path() / "again.dxf";
    for (const char* file : {"dxf/ACadSharp__sample_AC1015_ascii.dxf", "dxf/ezdxf__acistools_3dsolids.dxf",
                             "step/Woodworking__Bookcase_001.step", "sat/meshkit__threeholecube.sat"}) {
        SCOPED_TRACE(file);
        EXPECT_TRUE(SaveDrawing(Open(file), path).empty());
        EXPECT_EQ(test::AuditWithEzdxf(path), std::nullopt);
    }
}

}  // namespace
}  // namespace brenvik
