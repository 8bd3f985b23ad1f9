// Tongues that stand out from the edges of a part get room for the cutter at their tips.
#include "cnc/cnc_fixture.h"
#include "cnc/outline/tongue_leads.h"
#include "cnc/outline/tongues.h"
#include "cnc/part/run_state.h"

namespace brenvik {
namespace {

/// 600 by 400 with tongues of 10 by 100 in the middle of the edges asked for, counter-clockwise.
std::vector<PathVertex> Outline(bool left, bool right, bool front, bool back) {
    const double x0 = left ? 10 : 0, x1 = right ? 590 : 600, y0 = front ? 10 : 0, y1 = back ? 390 : 400;
    std::vector<PathVertex> outline{{x0, y0}};
    const auto add = [&outline](std::initializer_list<PathVertex> more) {
        outline.insert(outline.end(), more);
    };
    if (front) add({{250, y0}, {250, 0}, {350, 0}, {350, y0}});
    add({{x1, y0}});
    if (right) add({{x1, 150}, {600, 150}, {600, 250}, {x1, 250}});
    add({{x1, y1}});
    if (back) add({{350, y1}, {350, 400}, {250, 400}, {250, y1}});
    add({{x0, y1}});
    if (left) add({{x0, 250}, {0, 250}, {0, 150}, {x0, 150}});
    return outline;
}

constexpr Box3 Part{{0, 0, 0}, {600, 400, 18}};

void ExpectVertices(const std::vector<PathVertex>& is, const std::vector<PathVertex>& wanted) {
    ASSERT_EQ(is.size(), wanted.size());
    for (std::size_t i = 0; i < is.size(); ++i) {
        EXPECT_NEAR(is[i].x, wanted[i].x, 1e-9) << i;
        EXPECT_NEAR(is[i].y, wanted[i].y, 1e-9) << i;
        EXPECT_EQ(is[i].bulge, wanted[i].bulge) << i;
    }
}

TEST(TongueTips, StandOnTheEdgesOfThePartInTheirOrder) {
    const std::vector<TongueTip> tips = TongueTips(Outline(true, true, true, true), Part);
    ASSERT_EQ(tips.size(), 4U);
    EXPECT_EQ(tips[0].side, PartSide::Left);
    EXPECT_EQ(tips[1].side, PartSide::Right);
    EXPECT_EQ(tips[2].side, PartSide::Front);
    EXPECT_EQ(tips[3].side, PartSide::Back);
    EXPECT_EQ(tips[0].start, (Point3{0, 250, 0}));
    EXPECT_EQ(tips[0].end, (Point3{0, 150, 0}));
    EXPECT_EQ(tips[0].length, 100);
}

TEST(TongueTips, AreOneToFour) {
    struct Case {
        bool left, right, front, back;
        std::size_t tips;
    };
    for (const Case& with : {Case{false, false, false, false, 0}, Case{true, false, false, false, 1},
                             Case{false, true, false, false, 1}, Case{false, false, true, false, 1},
                             Case{false, false, false, true, 1}, Case{true, true, false, false, 2},
                             Case{false, true, true, false, 2}, Case{true, true, true, false, 3},
                             Case{true, true, true, true, 4}})
        EXPECT_EQ(TongueTips(Outline(with.left, with.right, with.front, with.back), Part).size(), with.tips);
}

TEST(TongueTips, AreFoundWhicheverWayTheOutlineRuns) {
    std::vector<PathVertex> outline = Outline(true, false, false, true);
    std::ranges::reverse(outline);
    EXPECT_EQ(TongueTips(outline, Part).size(), 2U);
}

TEST(TongueTips, ANotchMakesNone) {
    // What is left of the edge on both sides of a notch ends in corners of the part.
    EXPECT_TRUE(
        TongueTips(
            std::vector<PathVertex>{
                {0, 0}, {600, 0}, {600, 400}, {350, 400}, {350, 380}, {250, 380}, {250, 400}, {0, 400}},
            Part)
            .empty());
}

TEST(TongueTips, BetweenTwoNotchesStandsOne) {
    EXPECT_EQ(TongueTips(std::vector<PathVertex>{{0, 0},
                                                 {600, 0},
                                                 {600, 400},
                                                 {450, 400},
                                                 {450, 380},
                                                 {350, 380},
                                                 {350, 400},
                                                 {250, 400},
                                                 {250, 380},
                                                 {150, 380},
                                                 {150, 400},
                                                 {0, 400}},
                         Part)
                  .size(),
              1U);
}

TEST(TongueTips, AreTheTenonsOfARailAndNotItsEdges) {
    // 520 between two tenons of 40 by 60, with shoulders of 10.
    const std::vector<PathVertex> rail{{40, 0},   {560, 0}, {560, 10}, {600, 10}, {600, 70}, {560, 70},
                                       {560, 80}, {40, 80}, {40, 70},  {0, 70},   {0, 10},   {40, 10}};
    const std::vector<TongueTip> tips = TongueTips(rail, {{0, 0, 0}, {600, 80, 18}});
    ASSERT_EQ(tips.size(), 2U);
    EXPECT_EQ(tips[0].side, PartSide::Left);
    EXPECT_EQ(tips[1].side, PartSide::Right);
    EXPECT_EQ(tips[1].length, 60);
}

TEST(TongueTips, RoundFlanksMakeNone) {
    std::vector<PathVertex> outline = Outline(false, true, false, false);
    outline[2].bulge = 0.2;  // From the shoulder at 590,150 to the tip.
    EXPECT_TRUE(TongueTips(outline, Part).empty());
}

TEST(TongueTips, ALongBevelIsNoFlank) {
    EXPECT_TRUE(
        TongueTips(
            std::vector<PathVertex>{
                {0, 0}, {590, 0}, {590, 100}, {600, 150}, {600, 250}, {590, 300}, {590, 400}, {0, 400}},
            Part)
            .empty());
}

TEST(TongueLeads, AreAQuarterLongerThanTheBitIsWide) { EXPECT_EQ(LeadOf(12), 15); }

TEST(TongueLeads, EachCornerOfATipGetsALoopOutsideThePart) {
    const std::vector<PathVertex> outline = Outline(false, true, false, false);
    ExpectVertices(WithLeads(outline, TongueTips(outline, Part), 15), {{0, 0},
                                                                       {590, 0},
                                                                       {590, 150},
                                                                       {615, 150},
                                                                       {615, 135},
                                                                       {600, 135},
                                                                       {600, 265},
                                                                       {615, 265},
                                                                       {615, 250},
                                                                       {590, 250},
                                                                       {590, 400},
                                                                       {0, 400}});
}

TEST(TongueLeads, LieOutsideOfTheBoxOnEverySide) {
    const std::vector<PathVertex> outline = Outline(true, true, true, true);
    const std::vector<PathVertex> led = WithLeads(outline, TongueTips(outline, Part), 15);
    EXPECT_EQ(led.size(), outline.size() + 16);
    for (const PathVertex& vertex : led) {
        const bool ofOutline = std::ranges::any_of(
            outline, [&](const PathVertex& old) { return old.x == vertex.x && old.y == vertex.y; });
        const bool inside = vertex.x > 0 && vertex.x < 600 && vertex.y > 0 && vertex.y < 400;
        EXPECT_TRUE(ofOutline || !inside) << vertex.x << "," << vertex.y;
    }
}

TEST(TongueLeads, FollowADovetail) {
    const std::vector<PathVertex> outline{{0, 0},     {590, 0},   {590, 155}, {600, 150},
                                          {600, 250}, {590, 245}, {590, 400}, {0, 400}};
    const std::vector<TongueTip> tips = TongueTips(outline, Part);
    ASSERT_EQ(tips.size(), 1U);
    const double along = 15 / std::sqrt(125.0);
    const std::vector<PathVertex> led = WithLeads(outline, tips, 15);
    ASSERT_EQ(led.size(), 12U);
    EXPECT_NEAR(led[3].x, 600 + 10 * along, 1e-9);
    EXPECT_NEAR(led[3].y, 150 - 5 * along, 1e-9);
    EXPECT_NEAR(led[5].x, 600, 1e-9);
    EXPECT_NEAR(led[5].y, 135, 1e-9);
}

class Tongues : public CncTest {
  protected:
    AcadLWPolyline& Draw(std::string_view layer) {
        AddLayer(document, layer);
        AcadLWPolyline& polyline =
            *document.ModelSpace().AddLightWeightPolyline(std::vector<double>{0, 0, 1, 1});
        SetVertices(polyline, Outline(true, false, false, false));
        polyline.SetClosed(true);
        polyline.SetLayer(layer);
        return polyline;
    }
    RunState Run() {
        Board(600, 400, 18);
        RunState run = RunOn(document);
        run.part.MaterialKeyText = "18 OAK";
        LookupMaterial(run.part.MaterialKeyText, run.part.Material);
        return run;
    }
};

TEST_F(Tongues, AreLedOnTheOutlineAlone) {
    AcadLWPolyline& outline = Draw("OT_Z18_T1_D12_S18000_F300_R_C0");
    AcadLWPolyline& route = Draw("RT_Z18_T1_D12_S18000_F300_R_C0_1");
    RunState run = Run();
    ProcessTongues(run);
    EXPECT_EQ(VerticesOf(outline).size(), 12U);
    EXPECT_EQ(VerticesOf(route).size(), 8U);
    EXPECT_TRUE(Messages().empty());
}

TEST_F(Tongues, WithoutAnOutlineNothingIsDone) {
    AcadLWPolyline& outline = Draw("ROTOR18");
    RunState run = Run();
    run.part.Material = {};
    ProcessTongues(run);
    EXPECT_EQ(VerticesOf(outline).size(), 8U);
    EXPECT_TRUE(Messages().empty());
}

}  // namespace
}  // namespace brenvik
