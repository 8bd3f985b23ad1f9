// Solids of other programs laid flat: whatever has a flat side and edges that meet comes to lie square.
#include "cnc/alignment_fixture.h"
#include "cnc/laying/alignment.h"
#include "support/sample_files.h"

namespace brenvik {
namespace {

using Samples = AlignmentTest;

TEST_F(Samples, LieSquareByTheirLargestFaceWithTheirSizesOnXYAndZ) {
    if (!test::HasSamples()) GTEST_SKIP() << "the sample drawings are not there";
    constexpr auto samples = std::to_array<std::string_view>(
        {"dxf/ACadSharp__sample_AC1015_ascii.dxf", "dxf/ezdxf__acistools_3dsolids.dxf", "sat/cgma__merge.sat",
         "sat/cgma__brick_2.sat", "sat/meshkit__threeholecube.sat", "sat/3Dshapes_2.sat",
         "sat/meshkit__simpletet.sat", "step/AAGNet__examples_partA.step", "step/MFCAD__0-0-0-6-19.step"});
    int laid = 0;
    for (const std::string_view file : samples) {
        HostDocument& sample = host.OpenDrawing(test::SampleFolder() / file, {.letters = "LWT"});
        for (Acad3DSolid* solid : All<Acad3DSolid>(sample)) {
            for (const Pose& pose : poses) {
                SCOPED_TRACE(std::string(file) + " " + solid->Handle());
                Lay(*solid, pose.aboutX, pose.aboutY, pose.aboutZ, {});
                mAutoCAD::SetPartData(solid, "ORIE", "LWT");
                AcadEntity* entity = solid;
                AcadSelectionSet& one = FreshSet(sample, "EXPORTSET");
                one.AddItems(std::span(&entity, 1));
                sample.Wblock("c:\\BV-DXF\\Part_0.dwg", one);
                run = RunOn(dynamic_cast<HostDocument&>(*host.Documents().Open("c:\\BV-DXF\\Part_0.dwg")));
                const PassOutcome came = AlignPart(run);
                EXPECT_EQ(came, PassOutcome::GoOn);
                if (came != PassOutcome::GoOn) continue;
                ++laid;
                const Box3 box = PartBox();
                const double size = box.max.x;
                const double fineness = 1e-7 * std::max(1.0, size);
                ExpectPoint(box.min, {0, 0, 0}, fineness);
                EXPECT_GE(box.max.x, box.max.y - 1e-5);
                EXPECT_GE(box.max.y, box.max.z - 1e-5);
                // Where two sizes are equal it may stand upright.
                const Box3 face = RegionOn(layers::RegionCopy).GetBoundingBox();
                const double across =
                    std::min({face.max.x - face.min.x, face.max.y - face.min.y, face.max.z - face.min.z});
                EXPECT_NEAR(across, 0, fineness);
                run.part.drawing->Close(false);
            }
        }
        sample.Close(false);
    }
    EXPECT_GE(laid, 8 * 14);
}

}  // namespace
}  // namespace brenvik
