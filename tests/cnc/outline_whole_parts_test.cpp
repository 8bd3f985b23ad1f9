// Whole runs of parts whose outlines, cut-outs and pockets are out of the common: the operations of the files
// are put back onto the part.
#include <numbers>
#include <set>
#include <utility>

#include "cnc/checker.h"

namespace brenvik {
namespace {

struct Corner {
    double x = 0, y = 0, bulge = 0;
};

const double Quarter = std::tan(std::numbers::pi / 8);
constexpr double Half = 1;

std::vector<Corner> Rectangle(double left, double front, double right, double back) {
    return {{left, front}, {right, front}, {right, back}, {left, back}};
}

std::vector<Corner> Rounded(double left, double front, double right, double back, double r) {
    return {{left + r, front}, {right - r, front, Quarter}, {right, front + r}, {right, back - r, Quarter},
            {right - r, back}, {left + r, back, Quarter},   {left, back - r},   {left, front + r, Quarter}};
}

class WholeOutlineTest : public CheckedRunTest {
  protected:
    Acad3DSolid& Body(const std::vector<Corner>& shape, double bottom, double top) {
        AcadBlock& space = document.ModelSpace();
        std::vector<double> flat;
        for (const Corner& corner : shape) flat.insert(flat.end(), {corner.x, corner.y});
        AcadLWPolyline* polyline = space.AddLightWeightPolyline(flat);
        polyline->SetClosed(true);
        for (std::size_t i = 0; i < shape.size(); ++i)
            polyline->SetBulge(static_cast<int>(i), shape[i].bulge);
        polyline->SetElevation(bottom);
        return Swept(polyline, {}, top - bottom);
    }
    /// The same all along X: an outline in Y and Z.
    Acad3DSolid& AlongX(const std::vector<std::pair<double, double>>& outline, double length) {
        std::vector<AcadEntity*> curves;
        for (std::size_t i = 0; i < outline.size(); ++i) {
            const auto& [y, z] = outline[i];
            const auto& [nextY, nextZ] = outline[(i + 1) % outline.size()];
            curves.push_back(document.ModelSpace().AddLine({0, y, z}, {0, nextY, nextZ}));
        }
        return Swept(nullptr, curves, length);
    }
    void Take(Acad3DSolid& part, const std::vector<Corner>& shape, double bottom, double top) {
        part.Boolean(BooleanKind::Subtraction, Body(shape, bottom, top));
    }
    /// Lays the part askew, runs C2C, and expects files without fault.
    void ExpectSound(Acad3DSolid& part, const CheckOptions& options = {}, Target target = Target::C2C) {
        GivePartData(part, "Panel");
        Lay(part, 31, -17, 123, {1234.5, -678.25, 91});
        RunAll(target);
        EXPECT_EQ(Faults(part, 0, options), std::vector<std::string>{});
        EXPECT_EQ(Messages().size(), mTold ? 3U : 2U) << Join(Messages(), "\n");
    }
    /// What no cutter from above makes stays standing, and is told in a box of its own.
    void ExpectSoundButFor(Acad3DSolid& part, std::string_view untaken) {
        mTold = true;
        ExpectSound(part, {.uncovered = 1e9, .twice = {}});
        ASSERT_GT(Messages().size(), 1U);
        EXPECT_NE(Messages()[1].find(untaken), std::string::npos) << Messages()[1];
    }
    bool mTold = false;
    std::vector<Drawn> First(std::string_view prefix) {
        const std::optional<std::vector<Drawn>> drawn = FirstSide();
        return drawn ? OnLayers(*drawn, prefix) : std::vector<Drawn>();
    }
    static std::size_t Arcs(const Drawn& path) {
        return static_cast<std::size_t>(
            std::ranges::count_if(path.bulges, [](double bulge) { return bulge != 0; }));
    }
    static std::pair<double, double> Extents(const Drawn& path) {
        double left = 1e9, right = -1e9, front = 1e9, back = -1e9;
        for (const Point3& point : path.points) {
            left = std::min(left, point.x);
            right = std::max(right, point.x);
            front = std::min(front, point.y);
            back = std::max(back, point.y);
        }
        return {right - left, back - front};
    }

  private:
    Acad3DSolid& Swept(AcadEntity* single, std::vector<AcadEntity*> curves, double height) {
        AcadBlock& space = document.ModelSpace();
        if (single != nullptr) curves = {single};
        AcadRegion* region = space.AddRegion(curves).front();
        const Point3 normal = region->Normal();
        Acad3DSolid* solid =
            space.AddExtrudedSolid(*region, normal.x + normal.y + normal.z < 0 ? -height : height, 0);
        region->Delete();
        for (AcadEntity* curve : curves) curve->Delete();
        return *solid;
    }
};

TEST_F(WholeOutlineTest, ANotchedPartWithAWindow) {
    Acad3DSolid& part =
        Body({{0, 0}, {600, 0}, {600, 400}, {350, 400}, {350, 330}, {250, 330}, {250, 400}, {0, 400}}, 0, 18);
    Take(part, Rectangle(100, 100, 300, 200), -1, 19);
    ExpectSound(part);
    EXPECT_EQ(First("OT_").at(0).points.size(), 8U);
    EXPECT_EQ(First("RT_").size(), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, RoundedOutlineAndRoundedWindow) {
    Acad3DSolid& part = Body(Rounded(0, 0, 600, 400, 60), 0, 18);
    Take(part, Rounded(100, 100, 300, 250, 20), -1, 19);
    ExpectSound(part);
    EXPECT_EQ(First("OT_").at(0).points.size(), 8U);
    EXPECT_EQ(Arcs(First("OT_").at(0)), 4U);
    ASSERT_EQ(First("RT_").size(), 1U);
    EXPECT_EQ(First("RT_")[0].points.size(), 8U);
    EXPECT_EQ(Arcs(First("RT_")[0]), 4U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, AnObroundPart) {
    ExpectSound(Body({{100, 0}, {500, 0, Half}, {500, 200}, {100, 200, Half}}, 0, 18));
    EXPECT_EQ(First("OT_").at(0).points.size(), 4U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, AHalfDisc) {
    ExpectSound(Body({{0, 0}, {400, 0, Half}}, 0, 18));
    EXPECT_EQ(First("OT_").at(0).points.size(), 2U);
}

TEST_F(WholeOutlineTest, AHalfRoundWindow) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, {{200, 150}, {300, 150, Half}}, -1, 19);
    ExpectSound(part);
    EXPECT_EQ(First("RT_").size(), 1U);
}

TEST_F(WholeOutlineTest, AnObroundPocketRaisesNoSecondSide) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, {{100, 100}, {300, 100, Half}, {300, 160}, {100, 160, Half}}, 10, 19);
    ExpectSound(part);
    EXPECT_EQ(First("PKC_").size() + First("RT_").size(), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, APocketOfArcsAloneRaisesNoSecondSide) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, {{100, 100, 0.4}, {300, 100, 0.4}, {200, 250, 0.4}}, 10, 19);
    ExpectSound(part);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, ARoundPocketWiderThanDrillsRaisesNoSecondSide) {
    app::Workpiece board = Board(600, 400, 18);
    board.Drill({200, 200, 18}, app::Axis::Z, -8, 80);
    ExpectSound(board.Solid());
    EXPECT_EQ(First("PKS_").size(), 1U);
    EXPECT_FALSE(SecondSide());
}

TEST_F(WholeOutlineTest, ARoundedWindowInsideAPocketConvertsIt) {
    Set("PocketConversion", "1");
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rounded(100, 100, 400, 300, 20), 12, 19);
    Take(part, Rounded(150, 150, 350, 250, 20), -1, 19);
    // The route that the pocket has become leaves most of the ledge between the two standing.
    ExpectSoundButFor(part, "does not reach it");
    EXPECT_TRUE(First("PKC_").empty());
}

TEST_F(WholeOutlineTest, ATongueInTheMiddleOfAnEdge) {
    Set("ClearCores", "1");
    Acad3DSolid& part =
        AlongX({{0, 0}, {390, 0}, {390, 6}, {400, 6}, {400, 12}, {390, 12}, {390, 18}, {0, 18}}, 600);
    ExpectSound(part, {.uncovered = 1e9, .twice = {}});
    const auto [long_, wide] = Extents(First("OT_").at(0));
    EXPECT_NEAR(std::min(long_, wide), 400, 1e-6);
    EXPECT_EQ(First("OT_").at(0).points.size(), 4U);
}

TEST_F(WholeOutlineTest, ALeaningPart) {
    ExpectSoundButFor(AlongX({{0, 0}, {390, 0}, {400, 18}, {10, 18}}, 600), "sloped face of 600 by 20.591");
    const auto [long_, wide] = Extents(First("OT_").at(0));
    EXPECT_NEAR(std::min(long_, wide), 400, 1e-6);
}

TEST_F(WholeOutlineTest, ARidgeBetweenTwoBevels) {
    // The ridge lies between two steps.
    Acad3DSolid& part = AlongX({{0, 0}, {390, 0}, {400, 8.6}, {390, 18}, {0, 18}}, 600);
    ExpectSoundButFor(part, "sloped face of 600 by ");
    const auto [long_, wide] = Extents(First("OT_").at(0));
    EXPECT_NEAR(std::min(long_, wide), 400, 1e-6);
}

TEST_F(WholeOutlineTest, AWindowWithALedgeBelow) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rectangle(80, 80, 320, 220), -1, 8);
    Take(part, Rectangle(100, 100, 300, 200), -1, 19);
    // The larger face goes down: the ledge comes up, a pocket around the window.
    ExpectSound(part, {.uncovered = 0, .twice = {"PKC_"}});
}

TEST_F(WholeOutlineTest, AWindowWithALedgeOnBothSides) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rectangle(80, 80, 320, 220), -1, 6);
    Take(part, Rectangle(70, 70, 330, 230), 12, 19);
    Take(part, Rectangle(100, 100, 300, 200), -1, 19);
    ExpectSound(part, {.uncovered = 0, .twice = {"RT_", "PKC_"}});
}

TEST_F(WholeOutlineTest, GroovesOnBothFacesAndAWindowBeside) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rectangle(350, -1, 370, 401), -1, 5);
    Take(part, Rectangle(200, -1, 220, 401), 13, 19);
    Take(part, Rectangle(450, 100, 550, 200), -1, 19);
    Take(part, Rectangle(50, 100, 150, 200), -1, 19);
    ExpectSound(part, {.uncovered = 0, .twice = {"RT_"}});
    EXPECT_EQ(First("OT_").at(0).points.size(), 4U);
}

TEST_F(WholeOutlineTest, EveryTargetNamesOutlineAndWindow) {
    for (const Target target : AllTargets) {
        for (Acad3DSolid* old : All<Acad3DSolid>(document)) old->Delete();
        Acad3DSolid& part = Body({{0, 0}, {600, 0}, {600, 300}, {400, 300}, {400, 400}, {0, 400}}, 0, 18);
        Take(part, Rounded(100, 100, 300, 250, 20), -1, 19);
        GivePartData(part, "Panel");
        RunAll(target);
        const std::optional<std::vector<Drawn>> drawn = FirstSide();
        ASSERT_TRUE(drawn) << static_cast<int>(target);
        std::size_t outlines = 0, windows = 0;
        for (const Drawn& path : *drawn) {
            if (path.kind != "AcDbPolyline") continue;
            outlines += path.color == 2 && path.points.size() == 6 ? 1 : 0;
            windows += path.color == 1 && path.points.size() == 8 ? 1 : 0;
        }
        EXPECT_EQ(outlines, 1U) << static_cast<int>(target);
        EXPECT_EQ(windows, 1U) << static_cast<int>(target);
    }
}

TEST_F(WholeOutlineTest, AWindowThatNarrows) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Acad3DSolid& tool = AlongX({{100, -1}, {200, -1}, {180, 19}, {120, 19}}, 200);
    tool.Move({0, 0, 0}, {100, 0, 0});
    part.Boolean(BooleanKind::Subtraction, tool);
    // With the rounds of the bit in the window's corners, behind which the slopes have no wood either.
    ExpectSoundButFor(part,
                      "wood stays that the part has not, 200 by 20.999, right through, from 100,204 to");
    EXPECT_EQ(First("RT_").size(), 1U);
}

TEST_F(WholeOutlineTest, RoundedPocketsOnBothFaces) {
    Set("ClearCores", "1");
    Acad3DSolid& part = Body(Rounded(0, 0, 600, 400, 30), 0, 18);
    Take(part, Rounded(100, 100, 250, 250, 20), -1, 6);
    Take(part, Rounded(350, 100, 500, 300, 15), 12, 19);
    ExpectSound(part);
    EXPECT_EQ(Arcs(First("OT_").at(0)), 4U);
    EXPECT_TRUE(SecondSide());
}

TEST_F(WholeOutlineTest, APocketBelowWithAHoleThroughItsFloor) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rectangle(350, 100, 500, 300), 12, 19);
    Take(part, Rectangle(100, 100, 250, 250), -1, 6);
    Take(part, {{150, 150, Half}, {158, 150, Half}}, -1, 19);
    ExpectSound(part, {.uncovered = 0, .twice = {"VD_"}});
}

TEST_F(WholeOutlineTest, AGrooveAcrossTheRoundedCorner) {
    Acad3DSolid& part = Body(Rounded(0, 0, 600, 400, 100), 0, 18);
    Take(part, Rectangle(40, -1, 60, 401), 12, 19);
    ExpectSound(part);
    EXPECT_EQ(Arcs(First("OT_").at(0)), 4U);
    EXPECT_EQ(First("OT_").at(0).points.size(), 8U);
}

TEST_F(WholeOutlineTest, RoundWindowsInHalves) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, {{150, 150, Half}, {158, 150, Half}}, -1, 19);
    Take(part, {{300, 150, Half}, {380, 150, Half}}, -1, 19);
    ExpectSound(part);
    EXPECT_EQ(First("VD_").size(), 1U);
    EXPECT_EQ(First("RT_").size(), 1U);
}

TEST_F(WholeOutlineTest, ABullnosedEdge) {
    AcadBlock& space = document.ModelSpace();
    const std::array<AcadEntity*, 4> curves{
        space.AddLine({0, 0, 0}, {391, 0, 0}),
        space.AddArc({391, 9, 0}, 9, -std::numbers::pi / 2, std::numbers::pi / 2),
        space.AddLine({391, 18, 0}, {0, 18, 0}), space.AddLine({0, 18, 0}, {0, 0, 0})};
    AcadRegion* region = space.AddRegion(curves).front();
    Acad3DSolid* part = space.AddExtrudedSolid(*region, 600, 0);
    region->Delete();
    for (AcadEntity* curve : curves) curve->Delete();
    ExpectSoundButFor(*part, "round face of radius 9 by 600");
    const auto [long_, wide] = Extents(First("OT_").at(0));
    EXPECT_NEAR(std::min(long_, wide), 400, 1e-6);
    EXPECT_EQ(First("OT_").at(0).points.size(), 4U);
}

TEST_F(WholeOutlineTest, ARoundedWindowInInches) {
    UseImperial();
    Acad3DSolid& part = Body(Rounded(0, 0, 24, 12, 2), 0, 0.75);
    Take(part, Rounded(4, 4, 12, 8, 0.5), -1, 2);
    ExpectSound(part);
    EXPECT_EQ(Arcs(First("OT_").at(0)), 4U);
    EXPECT_EQ(First("RT_").size(), 1U);
}

TEST_F(WholeOutlineTest, EdgeBoresUnderARoundedOutline) {
    app::Workpiece board = Board(600, 400, 18);
    board.Drill({0, 100, 9}, app::Axis::X, 30, 8);
    board.Drill({300, 400, 9}, app::Axis::Y, -30, 8);
    Take(board.Solid(), Rectangle(500, -1, 601, 60), -1, 19);
    ExpectSound(board.Solid());
    EXPECT_EQ(First("OT_").at(0).points.size(), 6U);
}

TEST_F(WholeOutlineTest, AFrameWithARebateAllRound) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Rectangle(60, 60, 540, 340), -1, 19);
    Take(part, Rectangle(50, 50, 550, 350), 10, 19);
    ExpectSound(part, {.uncovered = 0, .twice = {"PKC_", "RT_"}});
}

TEST_F(WholeOutlineTest, ManyWindows) {
    Acad3DSolid& part = Body({{0, 0}, {1200, 0}, {1200, 500}, {600, 500}, {600, 600}, {0, 600}}, 0, 18);
    for (int i = 0; i < 20; ++i)
        Take(part,
             Rectangle(20 + 110 * (i % 10), 20 + 75 * (i / 10), 60 + 110 * (i % 10), 60 + 75 * (i / 10)), -1,
             19);
    ExpectSound(part);
    EXPECT_EQ(First("RT_").size(), 20U);
}

}  // namespace
}  // namespace brenvik
