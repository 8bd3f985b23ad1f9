// What the picture shows while its parts are still coming, and whose view it is.
#include <QWheelEvent>

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

TEST(ViewSight, IsWhatAPersonExpects) { RunOnVirtualDisplay("DISABLED_Sight.*", 2); }

}  // namespace
}  // namespace brenvik::desktop
