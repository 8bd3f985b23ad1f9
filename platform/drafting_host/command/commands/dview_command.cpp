// DVIEW: where a view looks, from where, and between which planes it is cut.
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/command/session/view_frame.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

Asking<void> AskPoints(CommandSession& session) {
    ViewportData view = session.CurrentView();
    const Answered<Point3> target = co_await session.AskPoint(
        "Specify target point <" + PointText(session.UcsToWorld().Inverse().Point(view.viewTarget)) + ">:",
        {}, IfEmpty::Allowed);
    view.viewTarget = target.Or(view.viewTarget);
    const Point3 eye = view.viewTarget + view.viewDirection;
    const Answered<Point3> camera = co_await session.AskPoint(
        "Specify camera point <" + PointText(session.UcsToWorld().Inverse().Point(eye)) + ">:", {},
        IfEmpty::Allowed);
    const Point3 direction = camera.Or(eye) - view.viewTarget;
    if (Length(direction) < PointTolerance) {
        session.Refuse("Camera and target can't be one point.");
        co_return;
    }
    // The length gives the distance of the camera, which clipping at the eye needs.
    view.viewDirection = direction;
    // What was in the middle is measured across the old line of sight; the target is what is looked at now.
    view.viewCenter = {0, 0};
    session.ChangeView(view);
}

Asking<void> AskFrontClip(CommandSession& session) {
    ViewportData view = session.CurrentView();
    const double eye = Length(view.viewDirection);
    const Answered<double> distance = co_await session.AskNumber(
        "Specify distance from target or [set to Eye(camera)/ON/OFF] <" + LengthText(eye) + ">:",
        "Eye ON OFF", IfEmpty::Allowed);
    view.statusFlags |= view_status::FrontClipping;
    if (distance.Is("OFF")) {
        view.statusFlags &= ~(view_status::FrontClipping | view_status::FrontClipAwayFromEye);
    } else if (distance.value) {
        view.frontClip = *distance.value;
        view.statusFlags |= view_status::FrontClipAwayFromEye;
    } else if (!distance.Is("ON")) {
        view.frontClip = eye;
        view.statusFlags &= ~view_status::FrontClipAwayFromEye;
    }
    session.ChangeView(view);
}

Asking<void> AskBackClip(CommandSession& session) {
    ViewportData view = session.CurrentView();
    const Answered<double> distance = co_await session.AskNumber(
        "Specify distance from target or [ON/OFF] <" + LengthText(view.backClip) + ">:", "ON OFF",
        IfEmpty::Allowed);
    view.backClip = distance.Or(view.backClip);
    view.statusFlags |= view_status::BackClipping;
    if (distance.Is("OFF")) view.statusFlags &= ~view_status::BackClipping;
    session.ChangeView(view);
}

Asking<void> AskClip(CommandSession& session) {
    const Answered<std::string> option = co_await session.AskKeyword(
        "Enter clipping option [Back/Front/Off] <Off>:", "Back Front Off", IfEmpty::Allowed);
    if (option.Is("Front")) {
        co_await AskFrontClip(session);
    } else if (option.Is("Back")) {
        co_await AskBackClip(session);
    } else {
        ViewportData view = session.CurrentView();
        view.statusFlags &=
            ~(view_status::FrontClipping | view_status::BackClipping | view_status::FrontClipAwayFromEye);
        session.ChangeView(view);
    }
}

Asking<void> AskTwist(CommandSession& session) {
    ViewportData view = session.CurrentView();
    const Answered<double> twist =
        co_await session.AskAngle("Specify view twist angle <0>:", {}, IfEmpty::Allowed);
    view.twist = NormalAngle(twist.Or(0));
    session.ChangeView(view);
}

}  // namespace

Asking<void> Dview(CommandSession& session) {
    if (session.OnSheet()) {
        session.Refuse("DVIEW works in model space and its viewports, not on the sheet.");
        co_return;
    }
    // Points of a view are none of the drawing's: "@" goes on from the last one of those.
    const CommandSession::PointBefore last = session.LastPoint();
    // The objects would be drawn while the view is turned by hand; any answer will do here.
    co_await session.AskSelection(SelectFor::Looking, "Select objects or <use DVIEWBLOCK>:");
    const ViewportData before = session.CurrentView();
    for (;;) {
        const Answered<std::string> option = co_await session.AskKeyword(
            "Enter option [POints/TWist/CLip/Undo]:", "POints TWist CLip Undo eXit", IfEmpty::Allowed);
        if (option.Empty() || option.Is("eXit")) break;
        if (option.Is("POints"))
            co_await AskPoints(session);
        else if (option.Is("CLip"))
            co_await AskClip(session);
        else if (option.Is("TWist"))
            co_await AskTwist(session);
        else
            session.ChangeView(before);
    }
    session.PutBack(last);
}

}  // namespace brenvik::host_commands
