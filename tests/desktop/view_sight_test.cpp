// What the picture shows while its parts are still coming, and whose view it is.
#include <QWheelEvent>
#include <cmath>

#include "view_fixture.h"

namespace brenvik::desktop {
namespace {

class DISABLED_Sight : public ViewTest {
  protected:
    std::string Copied(const char* name) {
        const std::filesystem::path copy = std::filesystem::path(folder.path().toStdString()) / name;
        std::filesystem::copy_file(std::filesystem::path(BRENVIK_SOURCE_DIR) / "samples/base-cabinet.dxf",
                                   copy);
        return copy.string();
    }
    /// How long a metre of the drawing is on the screen.
    double Scale() {
        const QPointF across = *View().PlaceOf({1000, 0, 0}) - *View().PlaceOf({0, 0, 0});
        return std::hypot(across.x(), across.y());
    }
    /// Once the user has turned to the view and given the window's corners in it.
    void ExpectThicker(double by) {
        ExpectPoint(BoxOf(Handles().front()).max, {610.125, 320.25, 48.5 + by}, "the board");
        ExpectPoint(BoxOf(Handles().front()).min, {10.125, 20.25, 30.5}, "the board");
    }
};

TEST_F(DISABLED_Sight, WhatIsOpenedIsInSightFromItsFirstPart) {
    ASSERT_TRUE(window->OpenFile(Copied("next.dxf")));
    ASSERT_FALSE(View().Ready());
    const QRectF picture = View().Widget().rect();
    for (const std::string& handle : Handles()) {
        const Box3 box = BoxOf(handle);
        for (const Point3& corner : {box.min, box.max})
            EXPECT_TRUE(picture.contains(*View().PlaceOf(corner))) << handle;
    }
    const double scale = Scale();
    WaitForPicture();
    EXPECT_NEAR(Scale(), scale, scale / 20) << "no jump when the last one is there";
}

TEST_F(DISABLED_Sight, WhoLooksElsewhereMeanwhileKeepsTheView) {
    ASSERT_TRUE(window->OpenFile(Copied("next.dxf")));
    ASSERT_FALSE(View().Ready());
    QWidget& view = View().Widget();
    const QPointF middle = QRectF(view.rect()).center();
    QWheelEvent turn(middle, view.mapToGlobal(middle), {}, {0, 480}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view, &turn);
    WaitForPicture();
    const double nearer = Scale();
    View().Fit();
    EXPECT_GT(nearer, Scale() * 1.2);
}

TEST_F(DISABLED_Sight, AViewThatIsTypedTurnsThePictureAndIsThatOfTheWindow) {
    Choose("&Isometric");
    Type("-view front");
    WaitForPicture();
    ExpectPoint(View().TowardsEye(), {0, -1, 0}, "towards the eye");
    ExpectPoint(View().Up(), {0, 0, 1}, "up");
    EXPECT_LT(View().PlaceOf({310, 20, 48.5})->y(), View().PlaceOf({310, 20, 30.5})->y());
    // The user system lies in the plane that is looked at.
    Type("stretch");
    Type("-40,45");
    Type("660,70");
    Type("");
    Type("0,0");
    Type("0,2");
    EXPECT_EQ(Asked(), "Command:");
    ExpectThicker(2);
    Type("stretch c -40,45 660,70  0,0 0,3 ");
    ExpectThicker(5);
    Type("-view");
    Type("top");
    ExpectPoint(View().TowardsEye(), {0, 0, 1}, "towards the eye");
}

TEST_F(DISABLED_Sight, AViewThatIsTypedTwiceTurnsThePictureBack) {
    Type("-view front");
    Choose("&Isometric");
    Type("-view front");
    ExpectPoint(View().TowardsEye(), {0, -1, 0}, "towards the eye");
}

TEST_F(DISABLED_Sight, AWindowOfObjectsIsThatOfThePicture) {
    Choose("F&ront");
    const std::size_t parts = Handles().size();
    Type("erase");
    Type("w");
    ClickNear({440, 0, 10}, 0, 0);
    ClickNear({500, 0, 70}, 0, 0);
    Type("");
    EXPECT_EQ(Handles().size(), parts - 1) << "the rail, which is seen in it, and not the board";
    Type("u");
    Type("select w 440,0,10 500,0,70  ");
    ASSERT_EQ(Document().PreviousSelection().size(), 1U);
    EXPECT_EQ(Document().PreviousSelection().front()->Handle(), Handles().back());
}

TEST_F(DISABLED_Sight, AWindowBelongsToTheViewInWhichItIsDrawn) {
    Choose("&Top");
    Type("stretch");
    Choose("F&ront");
    ClickNear({-40, 0, 45}, 0, 0);
    ClickNear({660, 0, 70}, 0, 0);
    ASSERT_EQ(Asked(), "Select objects:");
    Choose("&Isometric");
    QTest::keyClick(&View().Widget(), Qt::Key_Return);
    Type("0,0,0");
    Type("*0,0,2");
    EXPECT_EQ(Asked(), "Command:");
    ExpectThicker(2);
    Type("u");
    ExpectThicker(0);
}

TEST_F(DISABLED_Sight, TheHostSeesThePictureRolledToo) {
    const double half = std::sqrt(0.5);
    View().LookAlong({half, 0, half}, {-0.5, half, 0.5});
    Type("select w 0,0 1,1  ");
    const HostView view = workplace->typedCommands.Line().ViewOf(Document());
    ExpectPoint(view.towardsEye, {half, 0, half}, "towards the eye");
    ExpectPoint(view.up, {-0.5, half, 0.5}, "up");
    View().LookFrom(ViewSide::Front);
    Type("select w 0,0 1,1  ");
    ExpectPoint(workplace->typedCommands.Line().ViewOf(Document()).up, {0, 0, 1}, "up");
}

TEST(ViewSight, IsWhatAPersonExpects) { RunOnVirtualDisplay("DISABLED_Sight.*", 7); }

}  // namespace
}  // namespace brenvik::desktop
