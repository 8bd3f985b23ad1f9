// Parts that are wider in some height than on the face they rest on.
#include "cnc/outline/outline.h"
#include "cnc/outline_fixture.h"

namespace brenvik {
namespace {

TEST_F(OutlineTest, ABevelThatWidensUpwardsWidensTheOutlineToTheTopEdge) {
    RunState run = Sorted(AlongX({{10, 0}, {390, 0}, {400, 18}, {0, 18}}, 600));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const Drawn outline = Profile();
    EXPECT_EQ(CornersOf(outline), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_EQ(outline.points.size(), 4U);
    EXPECT_EQ(outline.points[0].z, 18);
    EXPECT_GT(Turning(outline), 0);
    EXPECT_EQ(outline.color, 2);
    EXPECT_NEAR(outline.thickness, -18.3, 1e-12);
}

TEST_F(OutlineTest, ALeaningPartIsAsWideAsBothItsFacesTogether) {
    RunState run = Sorted(AlongX({{0, 0}, {390, 0}, {400, 18}, {10, 18}}, 600));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_EQ(Profile().points.size(), 4U);
}

TEST_F(OutlineTest, ATongueInTheMiddleOfTheThicknessWidensTheOutline) {
    RunState run =
        Sorted(AlongX({{0, 0}, {390, 0}, {390, 6}, {400, 6}, {400, 12}, {390, 12}, {390, 18}, {0, 18}}, 600));
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_EQ(Profile().points.size(), 4U);
    EXPECT_FALSE(run.part.NeedSecondSide);
}

TEST_F(OutlineTest, RoundedCornersThatAreWiderAboveStayTrueArcs) {
    Acad3DSolid& part = Body(Rectangle(20, 20, 580, 380), 0, 6);
    Unite(part, Body(RoundedRectangle(0, 0, 600, 400, 50), 6, 18));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(Profile().points.size(), 8U);
    EXPECT_EQ(BulgesOf(Profile()), 4U);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(RoundedRectangle(0, 0, 600, 400, 50)));
}

TEST_F(OutlineTest, AGrooveThatPartsTheFaceInTwoLeavesOneOutline) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(350, -10, 370, 410), -10, 8));
    RunState run = Sorted(part);
    // The smaller of the two faces is no part of the kept one.
    for (AcadLine* line : AllOn<AcadLine>(document, layers::RegionCopy))
        if (line->StartPoint().x > 360 || line->EndPoint().x > 360) line->Delete();
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_EQ(Profile().points.size(), 4U);
}

TEST_F(OutlineTest, ACutOutBesideTheKeptFaceIsFoundInTheSections) {
    Acad3DSolid& part = Body(Rectangle(0, 0, 600, 400), 0, 18);
    Take(part, Body(Rectangle(350, -10, 370, 410), -10, 8));
    Take(part, Body(Rectangle(450, 100, 550, 200), -10, 30));
    RunState run = Sorted(part);
    for (AcadLine* line : AllOn<AcadLine>(document, layers::RegionCopy))
        if (line->StartPoint().x > 360 || line->EndPoint().x > 360) line->Delete();
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    const std::vector<Drawn> routes = On("RT_");
    ASSERT_EQ(routes.size(), 1U);
    EXPECT_EQ(CornersOf(routes[0]), CornersOf(Rectangle(450, 100, 550, 200)));
    EXPECT_LT(Turning(routes[0]), 0);
    EXPECT_EQ(On("OT_").size(), 1U);
}

TEST_F(OutlineTest, CutOutsOfAPartWiderAboveAreNotMadeTwice) {
    Acad3DSolid& part = AlongX({{10, 0}, {390, 0}, {400, 18}, {0, 18}}, 600);
    Take(part, Body(Rectangle(100, 100, 300, 200), -10, 30));
    Take(part, Body(RoundedRectangle(400, 100, 500, 200, 20), -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(On("RT_").size(), 2U);
    EXPECT_EQ(On("OT_").size(), 1U);
    EXPECT_TRUE(run.part.unexplained.empty());
}

TEST_F(OutlineTest, ManyOpeningsOfASlicedPartLeaveTheOutlineWhole) {
    // More curves than the join counts up to.
    Acad3DSolid& part = AlongX({{10, 0}, {390, 0}, {400, 18}, {0, 18}}, 600);
    for (int i = 0; i < 14; ++i) Take(part, Body(Rectangle(20 + 40 * i, 100, 40 + 40 * i, 200), -10, 30));
    RunState run = Sorted(part);
    ASSERT_EQ(MakeOutline(run), PassOutcome::GoOn);
    EXPECT_EQ(CornersOf(Profile()), CornersOf(Rectangle(0, 0, 600, 400)));
    EXPECT_EQ(On("RT_").size(), 14U);
    EXPECT_TRUE(On("regionPV").empty());
}

}  // namespace
}  // namespace brenvik
