// Wide bores on real boards: which circle becomes a path, and what is left for the other side.
#include "cnc/round_bores.h"

namespace brenvik {
namespace {

struct BoreCase {
    const char* name;
    Bore bore;
    std::vector<RimOf> through, pockets;
    bool otherSide;

    friend void PrintTo(const BoreCase& each, std::ostream* out) { *out << each.name; }
};

class CircularRouteTable : public RoundBoreTest, public testing::WithParamInterface<BoreCase> {};

TEST_P(CircularRouteTable, GivesTheStatedPaths) {
    const BoreCase& wanted = GetParam();
    RunState run = RunOn(document);
    EXPECT_EQ(SortBore(run, wanted.bore), PassOutcome::GoOn);
    EXPECT_EQ(Sorted(Through()), Sorted(wanted.through));
    EXPECT_EQ(Sorted(Pockets()), Sorted(wanted.pockets));
    EXPECT_EQ(run.part.NeedSecondSide, wanted.otherSide);
    EXPECT_EQ(run.part.ThroughRouteSeen, wanted.otherSide);
    EXPECT_TRUE(run.part.unexplained.empty());
    EXPECT_TRUE(Messages().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Bores, CircularRouteTable,
    testing::Values(BoreCase{"PlainThrough", {60, 60}, {{60, 0}}, {}, false},
                    BoreCase{"BlindFromTheTop", {0, 60}, {}, {{60, 10}}, false},
                    BoreCase{"BlindFromBelow", {60, 0}, {}, {}, true},
                    BoreCase{"StepFromTheTop", {40, 60}, {{40, 0}}, {{60, 10}}, true},
                    BoreCase{"StepFromBelow", {60, 40}, {{40, 0}}, {}, true},
                    BoreCase{"BlindStepFromTheTop", {0, 40, 60}, {}, {{40, 10}, {40, 20}, {60, 20}}, false},
                    BoreCase{"BlindStepFromBelow", {60, 40, 0}, {}, {}, true},
                    BoreCase{"BlindFromBothSidesAlike", {60, 0, 60}, {}, {{60, 20}}, true},
                    BoreCase{"BlindFromBothSidesNarrowBelow", {40, 0, 60}, {}, {{60, 20}}, true},
                    BoreCase{"BlindFromBothSidesWideBelow", {60, 0, 40}, {}, {{40, 20}}, true}),
    [](const auto& each) { return each.param.name; });

TEST_F(RoundBoreTest, AnythingAtLeastAsWideAsTheLimitButNotWiderIsAHole) {
    Set("CircleSize", "35");
    RunState run = RunOn(document);
    SortBore(run, {35, 35});
    EXPECT_TRUE(Through().empty());
    EXPECT_EQ(On(layers::MaxCircleHold), (std::vector<RimOf>{RimOf{35, 20}}));
    EXPECT_EQ(On(layers::CircleHold), (std::vector<RimOf>{RimOf{35, 0}}));
    SortBore(run, {35.001, 35.001});
    EXPECT_EQ(Through(), (std::vector<RimOf>{RimOf{35.001, 0}}));
}

TEST_F(RoundBoreTest, ThroughBoresAndPocketsHaveTheirColours) {
    RunState run = RunOn(document);
    SortBore(run, {60, 60});
    EXPECT_EQ(AllOn<AcadCircle>(document, layers::ThroughRouteCirclePv).at(0)->Color(), 6);
    SortBore(run, {0, 60});
    EXPECT_EQ(AllOn<AcadCircle>(document, layers::RouteCirclePv).at(0)->Color(), 6);
    SortBore(run, {40, 60});
    EXPECT_EQ(AllOn<AcadCircle>(document, layers::RouteCirclePv).at(0)->Color(), 60);
}

TEST_F(RoundBoreTest, ACircleAloneOnTheUndersideSkipsThePart) {
    RunState run = RunOn(document);
    BoardWith({0, 0});
    Circle({50, 50, 0}, 60);
    EXPECT_EQ(Sort(run), PassOutcome::SkipPart);
    EXPECT_EQ(Messages(),
              std::vector<std::string>{"Error with circular route path .... skipping this part."});
}

TEST_F(RoundBoreTest, OnASecondPassOnlyTheSecondSideIsRaised) {
    RunState run = RunOn(document);
    run.part.SecondSidePass = true;
    SortBore(run, {60, 0});
    EXPECT_TRUE(run.part.NeedSecondSide);
    EXPECT_FALSE(run.part.ThroughRouteSeen);
}

TEST_F(RoundBoreTest, ASlotOfAnEarlierBoreLeavesOtherBoresAlone) {
    RunState run = RunOn(document);
    app::Workpiece board = Board(400, 200, 20);
    board.Drill({100, 100, 0}, app::Axis::Z, 10, 60);
    board.Drill({300, 100, 20}, app::Axis::Z, -10, 60);
    for (const double z : {0.0, 10.0}) Circle({100, 100, z}, 60);
    for (const double z : {10.0, 20.0}) Circle({300, 100, z}, 60);
    // Two circles that no wall joins: the second slot is filled alone, and the first one is of the bore
    // before.
    Circle({200, 100, 0}, 50);
    Circle({200, 100, 10}, 70);
    EXPECT_EQ(Sort(run), PassOutcome::GoOn);
    EXPECT_EQ(Pockets(), (std::vector<RimOf>{RimOf{60, 10}}));
    EXPECT_EQ(On(layers::RouteCircleHold), (std::vector<RimOf>{RimOf{60, 20}}));
}

TEST_F(RoundBoreTest, ARoundIslandIsNeitherMilledAwayNorPassedOver) {
    RunState run = RunOn(document);
    app::Workpiece board = Board(200, 200, 20);
    board.Drill({100, 100, 20}, app::Axis::Z, -10, 120);
    Acad3DSolid& island = *document.ModelSpace().AddCylinder({100, 100, 15}, 30, 10);
    board.Solid().Boolean(BooleanKind::Union, island);
    for (const double z : {10.0, 20.0}) {
        Circle({100, 100, z}, 120);
        Circle({100, 100, z}, 60);
    }
    EXPECT_EQ(Sort(run), PassOutcome::GoOn);
    EXPECT_TRUE(Pockets().empty());
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(run.part.unexplained.size(), 1U);
}

TEST_F(RoundBoreTest, AConeIsCutAsWideAsItsNarrowEndAndTold) {
    RunState run = RunOn(document);
    BoardWith({40, 40});
    Circle({100, 100, 0}, 40);
    Circle({100, 100, 20}, 44);
    EXPECT_EQ(Sort(run), PassOutcome::GoOn);
    EXPECT_EQ(Through(), (std::vector<RimOf>{RimOf{40, 0}}));
    EXPECT_EQ(run.part.unexplained, std::vector<std::string>{"round shape of 40 at 100,100,0: no operation"});
}

TEST_F(RoundBoreTest, TheRoundOutsideOfAPartIsNoBore) {
    RunState run = RunOn(document);
    AddLayer(document, "Parts");
    Acad3DSolid& disc = *document.ModelSpace().AddCylinder({100, 100, 10}, 100, 20);
    disc.SetLayer("Parts");
    Circle({100, 100, 0}, 200);
    Circle({100, 100, 20}, 200);
    EXPECT_EQ(Sort(run), PassOutcome::GoOn);
    EXPECT_TRUE(Through().empty());
    EXPECT_FALSE(run.part.NeedSecondSide);
    EXPECT_EQ(run.part.unexplained.size(), 1U);
}

// Every bore of up to four steps in two or three diameters, its circles in any order of the drawing: each
// path lies in air, and with both sides all is cut that a tool can reach.

double NarrowestFrom(const Bore& bore, std::size_t level) {
    return *std::min_element(bore.begin() + static_cast<std::ptrdiff_t>(level), bore.end());
}

class AnyBore : public RoundBoreTest {
  protected:
    /// How wide each step is cut from above. Tells paths that run through material.
    std::vector<double> CutFromAbove(RunState& run, const Bore& bore, std::vector<RimOf> rims) {
        std::shuffle(rims.begin(), rims.end(), mOrder);
        EXPECT_EQ(SortBore(run, bore, rims), PassOutcome::GoOn);
        std::vector<RimOf> paths = Pockets();
        for (const RimOf& through : Through()) paths.push_back(through);
        std::vector<double> cut(bore.size(), 0);
        for (const RimOf& path : paths) {
            const auto floor = static_cast<std::size_t>(path.z / StepHeight);
            EXPECT_LE(path.diameter, NarrowestFrom(bore, floor)) << testing::PrintToString(bore);
            for (std::size_t level = floor; level < bore.size(); ++level)
                cut[level] = std::max(cut[level], path.diameter);
        }
        return cut;
    }

    void Check(const Bore& bore) {
        RunState run = RunOn(document);
        std::vector<double> cut = CutFromAbove(run, bore, RimsOf(bore));
        const Bore turned(bore.rbegin(), bore.rend());
        if (run.part.NeedSecondSide) {
            run.part.SecondSidePass = true;
            const std::vector<double> other = CutFromAbove(run, turned, RimsOf(turned));
            for (std::size_t level = 0; level < cut.size(); ++level)
                cut[level] = std::max(cut[level], other[cut.size() - 1 - level]);
        }
        bool told = !run.part.unexplained.empty();
        for (std::size_t level = 0; level < bore.size(); ++level) {
            const double reachable =
                std::max(NarrowestFrom(bore, level), NarrowestFrom(turned, bore.size() - 1 - level));
            EXPECT_TRUE(cut[level] >= reachable || told) << testing::PrintToString(bore) << " step " << level;
            EXPECT_TRUE(cut[level] >= bore[level] || told)
                << testing::PrintToString(bore) << " step " << level;
        }
    }

    void CheckAll(std::size_t steps, const Bore& diameters, Bore bore = {}) {
        if (bore.size() == steps) {
            if (std::ranges::any_of(bore, [](double diameter) { return diameter > 0; })) Check(bore);
            return;
        }
        for (const double diameter : diameters) {
            if (!bore.empty() && bore.back() == diameter) continue;
            Bore longer = bore;
            longer.push_back(diameter);
            CheckAll(steps, diameters, longer);
        }
    }

  private:
    std::mt19937 mOrder{7};
};

TEST_F(AnyBore, OfTwoStepsIsCutInAirAndWhole) { CheckAll(2, {0, 40, 60, 80}); }
TEST_F(AnyBore, OfThreeStepsIsCutInAirAndWhole) { CheckAll(3, {0, 40, 60, 80}); }
TEST_F(AnyBore, OfFourStepsIsCutInAirAndWhole) { CheckAll(4, {0, 40, 60}); }

}  // namespace
}  // namespace brenvik
