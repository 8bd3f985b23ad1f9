// Bodies whose shapes go when there are too many, and are made again from what they were read from.
#include "host_fixture.h"

#include <TopExp_Explorer.hxx>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "drafting_host/document/files/compressed_text.h"
#include "drafting_host/document/files/drawing_files.h"
#include "support/temporary_folder.h"

namespace brenvik {
namespace {

class ShapesKept : public HostTest {
  protected:
    static constexpr int Panels = 6;

    void SetUp() override {
        for (int panel = 0; panel < Panels; ++panel) {
            const double length = 100 + panel;
            auto* solid = Model().AddBox({500.0 * panel, 0, 9}, length, 50, 18);
            solid->Boolean(BooleanKind::Subtraction, *Model().AddCylinder({500.0 * panel, 0, 9}, 4, 40));
        }
        SaveDrawing(document, file);
    }
    std::vector<HostSolid*> OpenWithLimit(HostApplication& host, std::size_t bytes) {
        host.Shapes().SetLimit(bytes);
        return SolidsIn(host.OpenDrawing(file));
    }
    static std::vector<HostSolid*> SolidsIn(HostDocument& drawing) {
        std::vector<HostSolid*> solids;
        for (HostEntity* entity : drawing.Model().Entities())
            solids.push_back(dynamic_cast<HostSolid*>(entity));
        return solids;
    }
    static void ExpectSameBox(const HostSolid& is, const HostSolid& wanted) {
        const Box3 box = is.GetBoundingBox(), other = wanted.GetBoundingBox();
        ExpectExact(box.min, other.min);
        ExpectExact(box.max, other.max);
    }
    static std::string Saved(HostDocument& drawing, const std::filesystem::path& as) {
        SaveDrawing(drawing, as);
        return ReadFile(as);
    }
    static std::string ReadFile(const std::filesystem::path& path) {
        std::ifstream in(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    TemporaryFolder folder;
    std::filesystem::path file = folder.Path() / "panels.dxf";
    HostApplication plain{WriteWholeFile}, frugal{WriteWholeFile};
};

TEST_F(ShapesKept, ComeBackAsTheyWere) {
    const std::vector<HostSolid*> all = OpenWithLimit(plain, 1U << 30U), few = OpenWithLimit(frugal, 1);
    ASSERT_EQ(few.size(), Panels);
    for (int round = 0; round < 2; ++round)
        for (std::size_t i = 0; i < few.size(); ++i) {
            EXPECT_EQ(few[i]->Volume(), all[i]->Volume());
            ExpectSameBox(*few[i], *all[i]);
            EXPECT_EQ(few[i]->Measures().d1, all[i]->Measures().d1);
            EXPECT_EQ(few[i]->Lumps(), 1U);
        }
    EXPECT_EQ(Saved(few[0]->Document(), folder.Path() / "few.dxf"),
              Saved(all[0]->Document(), folder.Path() / "all.dxf"));
}

TEST_F(ShapesKept, GoWhenOthersAreAskedFor) {
    const std::vector<HostSolid*> few = OpenWithLimit(frugal, 1);
    EXPECT_EQ(frugal.Shapes().Count(), 1U) << "the one that was read last";
    for (const HostSolid* solid : few) solid->Shape();
    EXPECT_EQ(frugal.Shapes().Count(), 1U);
    const std::vector<HostSolid*> all = OpenWithLimit(plain, 1U << 30U);
    EXPECT_EQ(plain.Shapes().Count(), Panels);
}

TEST_F(ShapesKept, StayWhileSomebodyHoldsThem) {
    const std::vector<HostSolid*> few = OpenWithLimit(frugal, 1);
    const TopoDS_Shape held = few[1]->Shape();
    for (int round = 0; round < 2; ++round)
        for (const HostSolid* solid : few) solid->Shape();
    EXPECT_TRUE(few[1]->Shape().IsEqual(held));
    EXPECT_EQ(frugal.Shapes().Count(), 2U);
}

TEST_F(ShapesKept, AreNotMadeForTheMeasuresOfLists) {
    const std::vector<HostSolid*> few = OpenWithLimit(frugal, 1);
    const TopoDS_Shape last = few.back()->Shape();
    for (const HostSolid* solid : few) {
        solid->GetBoundingBox();
        solid->Measures();
        solid->Lumps();
    }
    EXPECT_EQ(frugal.Shapes().Count(), 1U);
}

TEST_F(ShapesKept, StayWhileAFaceOfThemIsHeld) {
    const std::vector<HostSolid*> few = OpenWithLimit(frugal, 1);
    TopoDS_Shape face;
    for (TopExp_Explorer each(few[0]->Shape(), TopAbs_FACE); each.More(); each.Next()) face = each.Current();
    for (const HostSolid* solid : few) solid->Shape();
    bool found = false;
    for (TopExp_Explorer each(few[0]->Shape(), TopAbs_FACE); each.More(); each.Next())
        found = found || each.Current().IsSame(face);
    EXPECT_TRUE(found);
}

TEST_F(ShapesKept, FollowMovesAndChanges) {
    const std::vector<HostSolid*> all = OpenWithLimit(plain, 1U << 30U), few = OpenWithLimit(frugal, 1);
    for (const std::vector<HostSolid*>& solids : {all, few}) {
        solids[0]->ScaleEntity({}, 25.4);
        solids[1]->Rotate({}, 0.3);
        solids[1]->Move({}, {7, 0, 0});
        solids[2]->Boolean(BooleanKind::Subtraction, *solids[3]);
        solids[4]->Boolean(BooleanKind::Union,
                           *solids[4]->Document().ModelSpace().AddBox({2000, 30, 9}, 20, 50, 18));
        dynamic_cast<HostEntity*>(solids[5]->Copy())->Transform(Similarity::Shift({0, 900, 0}));
    }
    EXPECT_EQ(Saved(few[0]->Document(), folder.Path() / "few.dxf"),
              Saved(all[0]->Document(), folder.Path() / "all.dxf"));
    EXPECT_EQ(few[0]->Volume(), all[0]->Volume());
    ExpectSameBox(*few[1], *all[1]);
}

TEST_F(ShapesKept, LeaveWithTheirDrawing) {
    HostDocument& first = OpenWithLimit(frugal, 1).front()->Document();
    const std::vector<HostSolid*> second = SolidsIn(frugal.OpenDrawing(file));
    frugal.CloseDocument(first);
    for (const HostSolid* solid : second) EXPECT_FALSE(solid->Shape().IsNull());
}

TEST(CompressedText, ComesBackByteForByte) {
    const std::string zeros(3, '\0');
    for (const std::string& text : {std::string(), std::string("a"), std::string("abcd"),
                                    std::string(200, 'x'), "abcabcabcabcabcd" + zeros,
                                    "coedge $-1 $12 $13 $14 #\ncoedge $-1 $12 $13 $15 #\nbody \xC3\xA9" +
                                        std::string(40000, 'q') + zeros})
        EXPECT_EQ(Uncompressed(Compressed(text)), text);
    std::string records;
    for (int i = 0; i < 500; ++i) records += "coedge $-1 $" + std::to_string(i) + " forward $-1 #\n";
    EXPECT_EQ(Uncompressed(Compressed(records)), records);
    EXPECT_LT(Compressed(records).bytes.size(), records.size() / 2);
}

}  // namespace
}  // namespace brenvik
