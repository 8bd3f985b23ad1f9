// Pieces of the modeller's viewer: the widget's buffer, the standard sides, where its camera looks, and the
// buttons of the mouse.
#pragma once

#include "drafting_host/document/geometry/modeller_handle.h"

#include <QMouseEvent>

#include <AIS_MouseGesture.hxx>
#include <Aspect_DisplayConnection.hxx>
#include <Aspect_VKeyFlags.hxx>
#include <Graphic3d_Camera.hxx>
#include <OpenGl_Context.hxx>
#include <OpenGl_FrameBuffer.hxx>
#include <OpenGl_GraphicDriver.hxx>
#include <V3d_TypeOfOrientation.hxx>
#include <V3d_View.hxx>

#include "drawing_view/drawing_view.h"
#include "snaps/sight.h"

namespace brenvik::desktop {

/// The viewer's pictures are linear; the widget's buffer has to be set to that each time.
class WidgetBuffer : public OpenGl_FrameBuffer {
  public:
    void BindBuffer(const Handle(OpenGl_Context) & context) override {
        OpenGl_FrameBuffer::BindBuffer(context);
        context->SetFrameBufferSRGB(true, false);
    }
    void BindDrawBuffer(const Handle(OpenGl_Context) & context) override {
        OpenGl_FrameBuffer::BindDrawBuffer(context);
        context->SetFrameBufferSRGB(true, false);
    }
};

/// Draws into the toolkit's own buffers.
Handle(OpenGl_GraphicDriver) MakeDriver(Aspect_XDisplay* display);
/// Which button turns, slides and selects.
void BindGestures(AIS_MouseGestureMap& gestures);
void Turn(V3d_View& view, const Point3& towardsEye, const Point3& up);
V3d_TypeOfOrientation OrientationOf(ViewSide side);

/// The picture as a camera without perspective sees it, in pixels of the device.
Sight SightOf(const Graphic3d_Camera& camera, double width, double height);

Aspect_VKeyMouse ButtonsOf(const QMouseEvent& event);
Aspect_VKeyFlags FlagsOf(const QMouseEvent& event);

}  // namespace brenvik::desktop
