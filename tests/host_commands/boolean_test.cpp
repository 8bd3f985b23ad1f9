// UNION, SUBTRACT, INTERSECT and SLICE: what stays, what goes, and who hears of it.
#include "command_fixture.h"

namespace brenvik {
namespace {

class Combining : public CommandTest {
  protected:
    Combining() {
        application.SetCommandEndedHandler([this](HostDocument& of, std::string_view name) {
            EXPECT_EQ(&of, &document);
            ended.emplace_back(name);
            handlesThen = PreviousHandles();
        });
    }

    std::vector<std::string> ended;
    std::vector<std::string> handlesThen;
};

TEST_F(Combining, AUnionKeepsTheFirstSolidsHandleLayerAndData) {
    HostSolid& first = BoxAt({0, 0, 0}, {10, 10, 10});
    NewLayer("Cases");
    first.SetLayer("Cases");
    SetText(first, "PartName", "Side");
    SetText(BoxAt({10, 0, 0}, {20, 10, 10}), "PartName", "Other");
    const std::string handle = first.Handle();
    Type("union all  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(Solid(0).Layer(), "Cases");
    EXPECT_EQ(TextOf(Solid(0), "PartName"), "Side");
    EXPECT_EQ(Solid(0).Volume(), 2000);
    EXPECT_EQ(ended, std::vector<std::string>{"UNION"});
    EXPECT_EQ(handlesThen, std::vector{handle});
}

TEST_F(Combining, TheFirstIsTheOneSelectedFirst) {
    HostSolid& first = BoxAt({0, 0, 0}, {10, 10, 10});
    HostSolid& second = BoxAt({5, 0, 0}, {20, 10, 10});
    const std::string handle = second.Handle();
    Type("uni (handent \"" + handle + "\") (handent \"" + first.Handle() + "\")  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Handle(), handle);
}

TEST_F(Combining, AUnionNeedsTwoSolids) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    Model().AddLine({0, 0, 0}, {1, 1, 1});
    Type("union all  ");
    EXPECT_EQ(Entities().size(), 2u);
    EXPECT_TRUE(Told("At least 2 solids"));
    EXPECT_TRUE(ended.empty());
}

TEST_F(Combining, ASubtractionTakesTheSecondSelectionAway) {
    const std::string handle = BoxAt({0, 0, 0}, {10, 10, 10}).Handle();
    const std::string tool = BoxAt({5, 0, 0}, {20, 10, 10}).Handle();
    Type("subtract (handent \"" + handle + "\")  (handent \"" + tool + "\")  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(Solid(0).Volume(), 500);
}

TEST_F(Combining, ASubtractionThatRemovesNothingLeavesTheShapeItself) {
    HostSolid& solid = BoxAt({0, 0, 0}, {0.1, 0.2, 0.3});
    BoxAt({0.1, 0, 0}, {1, 1, 1});
    const double volume = solid.Volume();
    const TopoDS_Shape shape = solid.Shape();
    Type(
        "su "
        "(handent \"" +
        solid.Handle() + "\")  l  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Solid(0).Shape().IsEqual(shape));
    EXPECT_EQ(Solid(0).Volume(), volume);
}

TEST_F(Combining, ASubtractionTellsNobody) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({5, 0, 0}, {20, 10, 10});
    Type("su 1,1,1  l  ");
    EXPECT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(ended.empty());
}

TEST_F(Combining, SeveralSourcesOfASubtractionBecomeOne) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({10, 0, 0}, {20, 10, 10});
    BoxAt({15, 0, 0}, {30, 10, 10});
    Type("su 1,1,1 12,1,1  l  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Volume(), 1500);
}

TEST_F(Combining, TakingAllOfASolidErasesIt) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({-1, -1, -1}, {20, 20, 20});
    Type("su 0,0,0  l  ");
    EXPECT_TRUE(Told("Nothing is left: the object was erased."));
    EXPECT_TRUE(Entities().empty());
}

TEST_F(Combining, ASubtractionWithoutAToolChangesNothing) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({5, 0, 0}, {20, 10, 10});
    Type("su all   all  ");
    ExpectIdle();
    EXPECT_EQ(Entities().size(), 2u);
    Type("su all  all  ");
    ExpectIdle();
    EXPECT_EQ(Entities().size(), 2u);
}

TEST_F(Combining, AnIntersectionKeepsWhatAllHaveInCommon) {
    const std::string handle = BoxAt({0, 0, 0}, {10, 10, 10}).Handle();
    BoxAt({5, 0, 0}, {20, 10, 10});
    BoxAt({0, 5, 0}, {20, 20, 10});
    Type("in all  ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(Solid(0).Volume(), 250);
    EXPECT_EQ(ended, std::vector<std::string>{"INTERSECT"});
}

TEST_F(Combining, AnEmptyIntersectionErasesAllAndTellsNobody) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({15, 0, 0}, {20, 10, 10});
    Type("intersect all  ");
    EXPECT_TRUE(Entities().empty());
    EXPECT_TRUE(ended.empty());
}

TEST_F(Combining, SolidsOnLockedLayersTakeNoPart) {
    NewLayer("Locked").SetLock(true);
    BoxAt({0, 0, 0}, {10, 10, 10});
    EntityLook look = BoxAt({10, 0, 0}, {20, 10, 10}).Look();
    look.layer = document.LayerTable().Find("Locked");
    Solid(1).SetLook(look);
    Type("union all  ");
    EXPECT_EQ(Entities().size(), 2u);
}

struct SliceCase {
    const char* answers;
    Point3 min, max;

    friend void PrintTo(const SliceCase& each, std::ostream* out) {
        *out << testing::PrintToString(each.answers);
    }
};

class SlicedBox : public CommandTest, public ::testing::WithParamInterface<SliceCase> {};

TEST_P(SlicedBox, KeepsTheWantedSide) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    SetText(solid, "Material", "Oak");
    const std::string handle = solid.Handle();
    Type(std::string("slice all  ") + GetParam().answers);
    ExpectIdle();
    ASSERT_EQ(Entities().size(), 1u);
    ExpectExact(Solid(0).GetBoundingBox().min, GetParam().min);
    ExpectExact(Solid(0).GetBoundingBox().max, GetParam().max);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(TextOf(Solid(0), "Material"), "Oak");
}

INSTANTIATE_TEST_SUITE_P(Planes, SlicedBox,
                         ::testing::Values(SliceCase{"yz 4,0,0 0,0,0 ", {0, 0, 0}, {4, 20, 30}},
                                           SliceCase{"yz 4,0,0 9,0,0 ", {4, 0, 0}, {10, 20, 30}},
                                           SliceCase{"xy 0,0,12 0,0,99 ", {0, 0, 12}, {10, 20, 30}},
                                           SliceCase{"zx 0,7 0,0 ", {0, 0, 0}, {10, 7, 30}},
                                           SliceCase{"4,0,0 4,1,0 4,0,1 0,0,0 ", {0, 0, 0}, {4, 20, 30}},
                                           SliceCase{" 4,0,0 4,1,0 4,0,1 9,0,0 ", {4, 0, 0}, {10, 20, 30}},
                                           SliceCase{"3 4,0,0 4,1,0 4,0,1 9,0,0 ", {4, 0, 0}, {10, 20, 30}},
                                           SliceCase{"z 0,0,5 0,0,9 0,0,0 ", {0, 0, 0}, {10, 20, 5}},
                                           SliceCase{"v 0,0,5 0,0,0 ", {0, 0, 0}, {10, 20, 5}},
                                           SliceCase{"yz 4,0,0 4,9,9 9,0,0 ", {4, 0, 0}, {10, 20, 30}}));

TEST_F(Combining, SlicingForBothSidesGivesACopyWithTheData) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    SetText(solid, "PartName", "Side");
    const std::string handle = solid.Handle();
    Type("slice all  yz 4,0,0 b ");
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Solid(0).Handle(), handle);
    EXPECT_EQ(Solid(0).Volume(), 3600);
    EXPECT_EQ(Solid(1).Volume(), 2400);
    EXPECT_EQ(TextOf(Solid(1), "PartName"), "Side");
    EXPECT_EQ(ended, std::vector<std::string>{"SLICE"});
    EXPECT_EQ(handlesThen, (std::vector{handle, Solid(1).Handle()}));
}

TEST_F(Combining, APlaneThatMissesLeavesTheSolidAndTellsNobody) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    const TopoDS_Shape shape = solid.Shape();
    for (const char* plane : {"yz 10,0,0 0,0,0 ", "yz 0,0,0 5,0,0 ", "yz 50,0,0 99,0,0 ", "yz -5,0,0 b "}) {
        Type(std::string("slice all  ") + plane);
        EXPECT_TRUE(solid.Shape().IsEqual(shape)) << plane;
    }
    EXPECT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Told("The plane misses 1 of the solids."));
    EXPECT_TRUE(ended.empty());
}

TEST_F(Combining, ThreePointsOnALineMakeNoPlane) {
    HostSolid& solid = BoxAt({0, 0, 0}, {10, 20, 30});
    Type("slice all  0,0,0 1,1,1 2,2,2 ");
    ExpectIdle();
    EXPECT_EQ(solid.Volume(), 6000);
}

TEST_F(Combining, ASlantedSliceHalvesABox) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    Type("slice all  0,0,0 10,10,0 0,0,10 b ");
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_NEAR(Solid(0).Volume(), 500, 1e-9);
    EXPECT_NEAR(Solid(1).Volume(), 500, 1e-9);
}

TEST_F(Combining, TheHandlerMayTypeCommands) {
    application.SetCommandEndedHandler(
        [&](HostDocument& of, std::string_view) { of.SendCommand("move p  5,0,0  "); });
    BoxAt({0, 0, 0}, {10, 10, 10});
    BoxAt({10, 0, 0}, {20, 10, 10});
    Type("union all  box 100,0,0 101,1,1 ");
    ASSERT_EQ(Entities().size(), 2u);
    ExpectExact(Solid(0).GetBoundingBox().min, {5, 0, 0});
}

TEST_F(Combining, ACancelledCommandTellsNobody) {
    BoxAt({0, 0, 0}, {10, 10, 10});
    Type("slice all  yz \x1b");
    EXPECT_TRUE(ended.empty());
}

}  // namespace
}  // namespace brenvik
