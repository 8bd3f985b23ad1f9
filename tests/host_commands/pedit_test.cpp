// PEDIT: chains of lines and arcs become polylines.
#include "command_fixture.h"
#include "drafting_host/command/commands/polyline_chain.h"

namespace brenvik {
namespace {

constexpr double quarter = std::numbers::pi / 2;

class Joining : public CommandTest {
  protected:
    static constexpr const char* join = "pedit\rall\ry\rj\rall \r\r";

    void Line(const Point3& from, const Point3& to, const Point3& normal = {0, 0, 1}) {
        LineData line;
        line.start = from;
        line.end = to;
        line.normal = normal;
        document.CurrentSpace().Add(line);
    }

    void Arc(const Point3& center, double radius, double start, double end,
             const Point3& normal = {0, 0, 1}) {
        ArcData arc;
        arc.center = center;
        arc.radius = radius;
        arc.startAngle = start;
        arc.endAngle = end;
        arc.normal = normal;
        document.CurrentSpace().Add(arc);
    }

    void Square(double x, double y, double z, double side) {
        Line({x, y, z}, {x + side, y, z});
        Line({x + side, y + side, z}, {x, y + side, z});
        Line({x + side, y + side, z}, {x + side, y, z});
        Line({x, y, z}, {x, y + side, z});
    }

    HostLWPolyline& Polyline(std::size_t at) { return dynamic_cast<HostLWPolyline&>(*Entities().at(at)); }
};

TEST_F(Joining, ASquareOfLinesBecomesOneClosedPolyline) {
    Square(1, 2, 5, 10);
    Type(join);
    ExpectIdle();
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{1, 2, 11, 2, 11, 12, 1, 12}));
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Elevation(), 5);
    ExpectExact(Polyline(0).Normal(), {0, 0, 1});
    EXPECT_EQ(Polyline(0).Area(), 100);
    EXPECT_TRUE(Told("3 segments added to polyline."));
}

TEST_F(Joining, AsksInTheHostsOrder) {
    Square(0, 0, 0, 10);
    const std::vector<std::pair<std::string, std::string>> steps{
        {"pedit\r", "Select polyline or [Multiple]:"},
        {"all\r", "Do you want to turn it into one? <Y>"},
        {"y\r", "Enter an option [Close/Join/eXit]:"},
        {"j\r", "Select objects:"},
        {"all ", "Select objects:"},
        {"\r", "Enter an option [Open/Join/eXit]:"},
        {"\r", "Command:"}};
    for (const auto& [typed, prompt] : steps) {
        Type(typed);
        EXPECT_EQ(commandLine.Prompt(document), prompt);
    }
    EXPECT_TRUE(Told("Object selected is not a polyline"));
}

TEST_F(Joining, TakesOneChainAtATime) {
    Square(0, 0, 0, 10);
    Square(100, 0, 0, 10);
    Type(join);
    EXPECT_EQ(Entities().size(), 5u);
    EXPECT_EQ(Polyline(4).Coordinates()[0], 0);
    Type(join);
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Polyline(0).Coordinates()[0], 0);
    EXPECT_EQ(Polyline(1).Coordinates()[0], 100);
}

TEST_F(Joining, AnOpenPolylineDoesNotKeepTheNextChainFromBeingTaken) {
    Model().AddLightWeightPolyline(std::vector<double>{50, 50, 60, 60});
    Square(0, 0, 0, 10);
    Type(join);
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_FALSE(Polyline(0).Closed());
    EXPECT_TRUE(Polyline(1).Closed());
    Type(join);
    EXPECT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{50, 50, 60, 60}));
    ExpectIdle();
}

TEST_F(Joining, ClosedPolylinesAloneStayAsTheyAre) {
    Square(0, 0, 0, 10);
    Type(join);
    const std::string handle = Polyline(0).Handle();
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Polyline(0).Handle(), handle);
    EXPECT_TRUE(Polyline(0).Closed());
    ExpectIdle();
}

TEST_F(Joining, NothingToJoinEndsWithoutAComplaintOfTheNextCommand) {
    Model().AddCircle({0, 0, 0}, 5);
    Type(join);
    EXPECT_EQ(Entities().size(), 1u);
    ExpectIdle();
    EXPECT_TRUE(Told("selects no line, arc or polyline"));
}

TEST_F(Joining, ArcsBecomeBulgesWhateverSideTheirNormalLooksTo) {
    // A slot from (0,0) to (20,0) of width 10, one end drawn from above, one from below.
    Line({0, -5, 3}, {20, -5, 3});
    Line({20, 5, 3}, {0, 5, 3}, {0, 1, 0});
    Arc({20, 0, 3}, 5, 3 * quarter, quarter);
    // Seen from below X runs the other way.
    Arc({0, 0, 3}, 5, 3 * quarter, quarter, {0, 0, -1});
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{0, -5, 20, -5, 20, 5, 0, 5}));
    EXPECT_EQ(Polyline(0).GetBulge(0), 0);
    EXPECT_EQ(Polyline(0).GetBulge(1), 1);
    EXPECT_EQ(Polyline(0).GetBulge(2), 0);
    EXPECT_EQ(Polyline(0).GetBulge(3), 1);
    EXPECT_NEAR(Polyline(0).Area(), 200 + std::numbers::pi * 25, 1e-12);
    EXPECT_EQ(Polyline(0).Elevation(), 3);
}

TEST_F(Joining, ARoundedPocketHasQuarterBulges) {
    Line({10, 0, 0}, {90, 0, 0});
    Arc({90, 10, 0}, 10, 3 * quarter, 0);
    Line({100, 40, 0}, {100, 10, 0});
    Arc({90, 40, 0}, 10, 0, quarter);
    Line({90, 50, 0}, {10, 50, 0});
    Arc({10, 40, 0}, 10, quarter, 2 * quarter);
    Line({0, 40, 0}, {0, 10, 0});
    Arc({10, 10, 0}, 10, 2 * quarter, 3 * quarter);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates(),
              (std::vector<double>{10, 0, 90, 0, 100, 10, 100, 40, 90, 50, 10, 50, 0, 40, 0, 10}));
    for (int vertex : {1, 3, 5, 7}) EXPECT_NEAR(Polyline(0).GetBulge(vertex), std::tan(quarter / 4), 1e-15);
    EXPECT_NEAR(Polyline(0).Area(), 5000 - 400 + std::numbers::pi * 100, 1e-9);
}

TEST_F(Joining, TwinEdgesOfNeighbouringFacesAreAbsorbed) {
    Square(0, 0, 0, 10);
    Square(0, 0, 0, 10);
    Line({10, 10, 0}, {0, 10, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Polyline(0).Area(), 100);
    EXPECT_EQ(Polyline(0).Coordinates().size(), 8u);
}

TEST_F(Joining, TwinArcsAreAbsorbedButNotTheOtherHalfOfARing) {
    Arc({0, 0, 0}, 5, 0, 2 * quarter);
    Arc({0, 0, 0}, 5, 0, 2 * quarter, {0, 0, -1});
    Arc({0, 0, 0}, 5, 0, 2 * quarter);
    Type(join);
    // Seen from below, the half from 0 to 180 degrees is the same upper half with X mirrored.
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_FALSE(Polyline(0).Closed());
    Arc({0, 0, 0}, 5, 2 * quarter, 0);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_NEAR(Polyline(0).Area(), std::numbers::pi * 25, 1e-12);
    EXPECT_EQ(Polyline(0).Coordinates().size(), 4u);
}

TEST_F(Joining, EndsWithinTheFuzzMeetAndOthersDoNot) {
    Line({0, 0, 0}, {10, 0, 0});
    Line({10 + JoinFuzz / 2, 0, 0}, {10, 10, 0});
    Line({10, 10 + 3 * JoinFuzz, 0}, {0, 10, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Polyline(1).Coordinates(), (std::vector<double>{0, 0, 10, 0, 10, 10}));
}

TEST_F(Joining, AChainThatStaysOpenByTheRoundingOfInchesCloses) {
    // The arc stands off the ends of the lines by what six digits of inches leave open.
    const double off = 3 * JoinFuzz;
    Line({0, -5, 0}, {20, -5, 0});
    Line({20, 5, 0}, {0, 5, 0});
    Line({0, 5, 0}, {0, -5, 0});
    Arc({20 + off, 0, 0}, 5, 3 * quarter, quarter);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{0, -5, 20, -5, 20, 5, 0, 5}));
    EXPECT_NEAR(Polyline(0).GetBulge(1), 1, 1e-4);
}

TEST_F(Joining, OnlyWhatLiesInThePlaneIsJoined) {
    Square(0, 0, 0, 10);
    Line({0, 0, 0}, {0, 0, 20});
    Line({10, 0, 20}, {10, 0, 0});
    Line({0, 0, 20}, {10, 0, 20});
    Arc({15, 0, 0}, 5, 2 * quarter, 4 * quarter, {0, 1, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 5u);
    EXPECT_EQ(Polyline(4).Area(), 100);
}

TEST_F(Joining, AChainInAnUprightPlaneIsJoinedThere) {
    Line({0, 0, 0}, {0, 0, 20}, {0, 1, 0});
    Line({0, 0, 20}, {10, 0, 20}, {0, 1, 0});
    Line({10, 0, 20}, {10, 0, 0}, {0, 1, 0});
    Line({10, 0, 0}, {0, 0, 0}, {0, 0, 1});
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Area(), 200);
    ExpectExact(Polyline(0).GetBoundingBox().max, {10, 0, 20});
}

TEST_F(Joining, TheResultHasLayerAndColourOfTheFirst) {
    NewLayer("Border");
    Line({0, 0, 0}, {10, 0, 0});
    Line({10, 0, 0}, {10, 10, 0});
    Entities()[0]->SetLayer("Border");
    Entities()[0]->SetColor(4);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Polyline(0).Layer(), "Border");
    EXPECT_EQ(Polyline(0).Color(), 4);
    EXPECT_FALSE(Polyline(0).Closed());
}

TEST_F(Joining, LockedLayersAreOutOfReach) {
    Square(0, 0, 0, 10);
    NewLayer("Keep");
    Entities()[1]->SetLayer("Keep");
    document.LayerTable().Find("Keep")->SetLock(true);
    Type(join);
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Entities()[0]->ObjectName(), "AcDbLine");
    EXPECT_FALSE(Polyline(1).Closed());
    EXPECT_EQ(Polyline(1).Coordinates().size(), 8u);
}

TEST_F(Joining, WhereSeveralGoOnTheFirstDrawnIsTakenAndTold) {
    Line({0, 0, 0}, {10, 0, 0});
    Line({10, 0, 0}, {10, 10, 0});
    Line({10, 0, 0}, {20, 0, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 2u);
    EXPECT_EQ(Polyline(1).Coordinates(), (std::vector<double>{0, 0, 10, 0, 10, 10}));
    EXPECT_TRUE(Told("More than one object goes on from 10,0,0"));
}

TEST_F(Joining, AChainGrowsAtBothEnds) {
    Line({10, 0, 0}, {20, 0, 0});
    Line({0, 0, 0}, {10, 0, 0});
    Arc({20, 5, 0}, 5, 3 * quarter, quarter);
    Line({0, 0, 0}, {0, -10, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{0, -10, 0, 0, 10, 0, 20, 0, 20, 10}));
    EXPECT_EQ(Polyline(0).GetBulge(3), 1);
}

TEST_F(Joining, APieceWithoutLengthDoesNotTearAChain) {
    Square(0, 0, 0, 10);
    Line({10, 0, 0}, {10, 0, 0});
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates().size(), 8u);
}

TEST_F(Joining, EveryRepetitionTurnsSomethingIntoAPolyline) {
    Line({0, 0, 0}, {0, 0, 0});
    Line({5, 5, 0}, {5, 5, 9});
    Arc({50, 0, 0}, 5, 0, 0);
    Line({0, 100, 0}, {3, 104, 12}, {1, 0, 0});
    for (int round = 0; round < 4; ++round) Type(join);
    ASSERT_EQ(Entities().size(), 4u);
    for (const HostEntity* entity : Entities()) EXPECT_EQ(entity->ObjectName(), "AcDbPolyline");
    EXPECT_TRUE(Polyline(2).Closed());
    EXPECT_NEAR(Polyline(2).Area(), std::numbers::pi * 25, 1e-12);
}

TEST_F(Joining, AnOpenPolylineIsAPartOfAChain) {
    Line({0, 0, 0}, {10, 0, 0});
    Model().AddLightWeightPolyline(std::vector<double>{0, 0, 0, 10, 10, 10});
    Line({10, 0, 0}, {10, 10, 0});
    Polyline(1).SetBulge(0, 1);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates(), (std::vector<double>{0, 0, 10, 0, 10, 10, 0, 10}));
    EXPECT_EQ(Polyline(0).GetBulge(3), -1);
}

TEST_F(Joining, ClosingOpeningAndManyAtOnce) {
    Line({0, 0, 0}, {10, 0, 0});
    Line({10, 0, 0}, {10, 10, 0});
    Type("pe 5,0 y j all  c o x ");
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_FALSE(Polyline(0).Closed());
    Type("pedit all c  ");
    EXPECT_TRUE(Polyline(0).Closed());
    Square(100, 0, 0, 10);
    Square(200, 0, 0, 10);
    Type("pedit m all  y j 0  ");
    ASSERT_EQ(Entities().size(), 3u);
    EXPECT_TRUE(Polyline(1).Closed());
    EXPECT_TRUE(Polyline(2).Closed());
    ExpectIdle();
}

std::string Typed(const Point3& p) {
    char text[128];
    std::snprintf(text, sizeof text, "%.12f,%.12f,%.12f ", p.x, p.y, p.z);
    return text;
}

TEST_F(Joining, TheFloorOfARoundedPocketComesAsOnePolylineFromAPartAtAnOddAngle) {
    const double x0 = 20, x1 = 80, y0 = 30, y1 = 70, r = 5;
    auto& shape = dynamic_cast<HostLWPolyline&>(*Model().AddLightWeightPolyline(std::vector<double>{
        x0 + r, y0, x1 - r, y0, x1, y0 + r, x1, y1 - r, x1 - r, y1, x0 + r, y1, x0, y1 - r, x0, y0 + r}));
    shape.SetClosed(true);
    for (int corner : {1, 3, 5, 7}) shape.SetBulge(corner, std::tan(quarter / 4));
    shape.SetElevation(12);
    AcadEntity* curves[] = {&shape};
    AcadRegion& region = *Model().AddRegion(curves).front();
    auto& pocket = dynamic_cast<HostSolid&>(*Model().AddExtrudedSolid(region, 100, 0));
    HostSolid& panel = BoxAt({0, 0, 0}, {200, 100, 18});
    panel.Boolean(BooleanKind::Subtraction, pocket);
    shape.Delete();
    HostEntityOf(&region).EraseAnyway();
    ASSERT_EQ(Entities().size(), 1u);
    Type("rotate3d all  5,6,7 14,3,9 71.7 ");
    const Similarity there = Similarity::Turn({5, 6, 7}, {14, 3, 9}, 71.7 * std::numbers::pi / 180);
    Type("align all  " + Typed(there.Point({0, 0, 0})) + "0,0,0 " + Typed(there.Point({200, 0, 0})) +
         "1000,0,0 " + Typed(there.Point({0, 100, 0})) + "0,10000000,0 ");
    Type("explode all  explode all  ");
    for (HostEntity* entity : Entities()) {
        const Box3 box = entity->GetBoundingBox();
        if (std::abs(box.min.z - 12) > 1e-9 || std::abs(box.max.z - 12) > 1e-9) entity->Delete();
    }
    // The floor's edges, and those of the four walls and four corners.
    ASSERT_EQ(Entities().size(), 16u);
    Type(join);
    ASSERT_EQ(Entities().size(), 1u);
    EXPECT_TRUE(Polyline(0).Closed());
    EXPECT_EQ(Polyline(0).Coordinates().size(), 16u);
    ExpectExact(Polyline(0).Normal(), {0, 0, 1});
    EXPECT_NEAR(Polyline(0).Elevation(), 12, 1e-9);
    EXPECT_NEAR(Polyline(0).Area(), 60 * 40 - 100 + std::numbers::pi * 25, 1e-7);
    ExpectBox(Polyline(0).GetBoundingBox(), {20, 30, 12}, {80, 70, 12}, 1e-9);
}

TEST_F(Joining, NoLeavesTheObjectAsItIs) {
    Line({0, 0, 0}, {10, 0, 0});
    Type("pedit all n ");
    ExpectIdle();
    EXPECT_EQ(Entities()[0]->ObjectName(), "AcDbLine");
}

}  // namespace
}  // namespace brenvik
