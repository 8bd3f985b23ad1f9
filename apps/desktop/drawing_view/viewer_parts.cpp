// Between the viewer's ways to say it and ours.
#include "drawing_view/viewer_parts.h"

namespace brenvik::desktop {

Handle(OpenGl_GraphicDriver) MakeDriver(Aspect_XDisplay* display) {
    const Handle(OpenGl_GraphicDriver) driver =
        new OpenGl_GraphicDriver(new Aspect_DisplayConnection(display), false);
    driver->ChangeOptions().buffersNoSwap = true;
    driver->ChangeOptions().buffersOpaqueAlpha = true;
    driver->ChangeOptions().useSystemBuffer = false;
    return driver;
}

void BindGestures(AIS_MouseGestureMap& gestures) {
    gestures.Clear();
    gestures.Bind(Aspect_VKeyMouse_LeftButton, AIS_MouseGesture_RotateOrbit);
    gestures.Bind(static_cast<unsigned>(Aspect_VKeyMouse_LeftButton) | Aspect_VKeyFlags_CTRL,
                  AIS_MouseGesture_SelectRectangle);
    gestures.Bind(Aspect_VKeyMouse_MiddleButton, AIS_MouseGesture_Pan);
    gestures.Bind(Aspect_VKeyMouse_RightButton, AIS_MouseGesture_Pan);
}

void Turn(V3d_View& view, const Point3& towardsEye, const Point3& up) {
    view.SetProj(towardsEye.x, towardsEye.y, towardsEye.z);
    view.SetUp(up.x, up.y, up.z);
}

V3d_TypeOfOrientation OrientationOf(ViewSide side) {
    switch (side) {
        case ViewSide::Isometric:
            return V3d_XnegYnegZpos;
        case ViewSide::Top:
            return V3d_Zpos;
        case ViewSide::Bottom:
            return V3d_Zneg;
        case ViewSide::Front:
            return V3d_Yneg;
        case ViewSide::Back:
            return V3d_Ypos;
        case ViewSide::Left:
            return V3d_Xneg;
        case ViewSide::Right:
            return V3d_Xpos;
    }
    return V3d_XnegYnegZpos;
}

Sight SightOf(const Graphic3d_Camera& camera, double width, double height) {
    const gp_Dir along = camera.Direction(), up = camera.OrthogonalizedUp();
    const gp_Pnt middle = camera.Center();
    Sight sight;
    sight.middle = {middle.X(), middle.Y(), middle.Z()};
    sight.axes.z = {-along.X(), -along.Y(), -along.Z()};
    sight.axes.y = {up.X(), up.Y(), up.Z()};
    sight.axes.x = vectors::Cross(sight.axes.y, sight.axes.z);
    sight.width = width;
    sight.height = height;
    sight.unit = camera.ViewDimensions().Y() / height;
    return sight;
}

Aspect_VKeyMouse ButtonsOf(const QMouseEvent& event) {
    Aspect_VKeyMouse buttons = Aspect_VKeyMouse_NONE;
    if (event.buttons().testFlag(Qt::LeftButton)) buttons |= Aspect_VKeyMouse_LeftButton;
    if (event.buttons().testFlag(Qt::MiddleButton)) buttons |= Aspect_VKeyMouse_MiddleButton;
    if (event.buttons().testFlag(Qt::RightButton)) buttons |= Aspect_VKeyMouse_RightButton;
    return buttons;
}

Aspect_VKeyFlags FlagsOf(const QMouseEvent& event) {
    Aspect_VKeyFlags flags = Aspect_VKeyFlags_NONE;
    if (event.modifiers().testFlag(Qt::ShiftModifier)) flags |= Aspect_VKeyFlags_SHIFT;
    if (event.modifiers().testFlag(Qt::ControlModifier)) flags |= Aspect_VKeyFlags_CTRL;
    return flags;
}

}  // namespace brenvik::desktop
