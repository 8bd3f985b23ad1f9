// The dialogues for planes and axes.
#include "drafting_host/command/commands/plane_question.h"

#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik {

using namespace vectors;

namespace {

WorldPlane PlaneThrough(const Point3& first, const Point3& second, const Point3& third) {
    const Point3 normal = Cross(second - first, third - first);
    const double sides = Length(second - first) * Length(third - first);
    if (!(Length(normal) > 1e-9 * sides))
        throw host_failure::InvalidArgument("the three points lie on one line and make no plane");
    return {first, Unit(normal)};
}

/// The direction of the user system that is square to one of its planes.
Point3 NormalOfUcsPlane(const CommandSession& session, std::string_view plane) {
    const Point3 axis = plane == "XY" ? Point3{0, 0, 1} : plane == "YZ" ? Point3{1, 0, 0} : Point3{0, 1, 0};
    return session.UcsToWorld().Direction(axis);
}

Asking<WorldPlane> AskNormalPlane(CommandSession& session) {
    const Answered<Point3> point = co_await session.AskPoint("Point on the plane:");
    const Answered<Point3> above = co_await session.AskPoint("Point on the plane's Z axis (normal):");
    if (Distance(*point.value, *above.value) <= PointTolerance)
        throw host_failure::InvalidArgument("the two points of the normal are one");
    co_return WorldPlane{*point.value, Unit(*above.value - *point.value)};
}

}  // namespace

Asking<WorldPlane> AskPlane(CommandSession& session, std::string purpose) {
    const std::string prompt =
        "First point of the " + purpose + " or [Zaxis/View/XY/YZ/ZX/3points] <3points>:";
    Answered<Point3> first =
        co_await session.AskPoint(prompt, "Zaxis View XY YZ ZX 3points", IfEmpty::Allowed);
    if (first.Is("Zaxis")) {
        const WorldPlane plane = co_await AskNormalPlane(session);
        co_return plane;
    }
    if (!first.keyword.empty() && !first.Is("3points")) {
        const Point3 normal =
            first.Is("View") ? session.ViewDirection() : NormalOfUcsPlane(session, first.keyword);
        const std::string where =
            "Point on the " + (first.Is("View") ? "view" : first.keyword) + " plane <0,0,0>:";
        const Answered<Point3> point = co_await session.AskPoint(where, {}, IfEmpty::Allowed);
        co_return WorldPlane{point.Or(session.UcsToWorld().Point({})), normal};
    }
    if (!first.value) first = co_await session.AskPoint("First point on the plane:");
    const Answered<Point3> second = co_await session.AskPoint("Second point on the plane:");
    const Answered<Point3> third = co_await session.AskPoint("Third point on the plane:");
    co_return PlaneThrough(*first.value, *second.value, *third.value);
}

Asking<WorldAxis> AskAxis(CommandSession& session) {
    Answered<Point3> first = co_await session.AskPoint(
        "First point on the axis or [View/Xaxis/Yaxis/Zaxis/2points]:", "View Xaxis Yaxis Zaxis 2points",
        IfEmpty::Allowed);
    if (!first.keyword.empty() && !first.Is("2points")) {
        Point3 direction = session.ViewDirection();
        if (first.Is("Xaxis")) direction = session.UcsToWorld().Direction({1, 0, 0});
        if (first.Is("Yaxis")) direction = session.UcsToWorld().Direction({0, 1, 0});
        if (first.Is("Zaxis")) direction = session.UcsToWorld().Direction({0, 0, 1});
        const Answered<Point3> point =
            co_await session.AskPoint("Point on the axis <0,0,0>:", {}, IfEmpty::Allowed);
        const Point3 through = point.Or(session.UcsToWorld().Point({}));
        co_return WorldAxis{through, through + direction};
    }
    if (!first.value) first = co_await session.AskPoint("First point on the axis:");
    const Answered<Point3> second = co_await session.AskPoint("Second point on the axis:");
    if (Distance(*first.value, *second.value) <= PointTolerance)
        throw host_failure::InvalidArgument("the two points of the axis are one");
    co_return WorldAxis{*first.value, *second.value};
}

}  // namespace brenvik
