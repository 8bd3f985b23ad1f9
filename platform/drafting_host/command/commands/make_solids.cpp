// BOX, CYLINDER and WEDGE: measured along the user system, the sizes as typed.
#include "drafting_host/document/geometry/modeller_handle.h"

#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <algorithm>
#include <gp_Ax2.hxx>
#include <gp_Vec.hxx>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/modeller_points.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/solids/guard.h"
#include "drafting_host/solids/mass.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

/// Two opposite corners in the user system. The first is the one that was typed first.
struct Corners {
    Point3 from, to;
};

void RequireThick(const Corners& corners) {
    const Point3 size = corners.to - corners.from;
    if (std::min({std::abs(size.x), std::abs(size.y), std::abs(size.z)}) > PointTolerance) return;
    throw host_failure::InvalidArgument("a solid needs a length, a width and a height other than 0");
}

/// Adds a solid made in the user system's coordinates to the current space.
void AddInUcs(CommandSession& session, TopoDS_Shape shape) {
    ShapeData data{AcisData::Kind::Solid, std::move(shape)};
    Transform(data, session.UcsToWorld());
    session.Document().CurrentSpace().Add(std::move(data));
}

Point3 InUcs(const CommandSession& session, const Point3& world) {
    return session.UcsToWorld().Inverse().Point(world);
}

TopoDS_Shape BoxShape(const Corners& c) {
    RequireThick(c);
    return solids::Guarded("making a box", [&]() -> TopoDS_Shape {
        const Point3 low{std::min(c.from.x, c.to.x), std::min(c.from.y, c.to.y), std::min(c.from.z, c.to.z)};
        const Point3 high{std::max(c.from.x, c.to.x), std::max(c.from.y, c.to.y), std::max(c.from.z, c.to.z)};
        return BRepPrimAPI_MakeBox(ToModeller(low), ToModeller(high)).Solid();
    });
}

/// The full height stands over the first corner and tapers off along X.
TopoDS_Shape WedgeShape(const Corners& c) {
    RequireThick(c);
    return solids::Guarded("making a wedge", [&]() -> TopoDS_Shape {
        BRepBuilderAPI_MakePolygon profile;
        profile.Add(ToModeller(c.from));
        profile.Add(ToModeller({c.to.x, c.from.y, c.from.z}));
        profile.Add(ToModeller({c.from.x, c.from.y, c.to.z}));
        profile.Close();
        const BRepBuilderAPI_MakeFace face(profile.Wire(), Standard_True);
        BRepPrimAPI_MakePrism prism(face.Face(), gp_Vec(0, c.to.y - c.from.y, 0), Standard_True);
        const TopoDS_Shape solid = prism.Shape();
        return solids::Volume(solid) < 0 ? solid.Reversed() : solid;
    });
}

/// The corners when X and Y are known: the third size is still to come, from a centre it reaches half up and
/// half down.
Corners Raised(const Point3& first, const Point3& second, double height, bool centered) {
    if (!centered) return {first, {second.x, second.y, first.z + height}};
    const Point3 half{std::abs(second.x - first.x), std::abs(second.y - first.y), height / 2};
    return {first - half, first + half};
}

/// The sizes given one by one, from a corner or about a centre.
Corners Sized(const Point3& start, const Point3& size, bool centered) {
    if (!centered) return {start, start + size};
    return {start - size * 0.5, start + size * 0.5};
}

Asking<Corners> AskSizes(CommandSession& session, Point3 start, bool centered, bool cube) {
    const Answered<double> length = co_await session.AskDistance("Length:");
    if (cube) co_return Sized(start, {*length.value, *length.value, *length.value}, centered);
    const Answered<double> width = co_await session.AskDistance("Width:");
    const Answered<double> height = co_await session.AskDistance("Height:");
    co_return Sized(start, {*length.value, *width.value, *height.value}, centered);
}

/// The questions that a box and a wedge share; `what` names the solid.
Asking<Corners> AskCorners(CommandSession& session, std::string what) {
    const std::string firstPrompt = "First corner of the " + what + " or [Center] <0,0,0>:";
    Answered<Point3> first = co_await session.AskPoint(firstPrompt, "Center", IfEmpty::Allowed);
    const bool centered = first.Is("Center");
    if (centered) {
        const std::string centerPrompt = "Center of the " + what + " <0,0,0>:";
        first = co_await session.AskPoint(centerPrompt, {}, IfEmpty::Allowed);
    }
    const Point3 world = first.Or(session.UcsToWorld().Point({}));
    session.SetLastPoint(world);
    const Answered<Point3> second =
        co_await session.AskPoint("Other corner or [Cube/Length]:", "Cube Length");
    const Point3 start = InUcs(session, world);
    if (!second.value) {
        const Corners sized = co_await AskSizes(session, start, centered, second.Is("Cube"));
        co_return sized;
    }
    const Point3 other = InUcs(session, *second.value);
    // A second corner at another level has given the height already.
    const double rise = other.z - start.z;
    if (std::abs(rise) > PointTolerance) {
        if (centered) co_return Raised(start, other, 2 * std::abs(rise), true);
        co_return Corners{start, other};
    }
    const Answered<double> height = co_await session.AskDistance("Height:", {}, IfEmpty::Refused, world);
    co_return Raised(start, other, *height.value, centered);
}

TopoDS_Shape CylinderShape(const Point3& base, const Point3& top, double radius) {
    const Point3 axis = top - base;
    const double height = Length(axis);
    if (!(radius > PointTolerance) || !(height > PointTolerance))
        throw host_failure::InvalidArgument("a cylinder needs a radius above 0 and a height other than 0");
    return solids::Guarded("making a cylinder", [&]() -> TopoDS_Shape {
        const Point3 direction = Unit(axis);
        const Axes axes = ObjectAxes(direction);
        const gp_Ax2 place(ToModeller(base), gp_Dir(direction.x, direction.y, direction.z),
                           gp_Dir(axes.x.x, axes.x.y, axes.x.z));
        return BRepPrimAPI_MakeCylinder(place, radius, height).Solid();
    });
}

}  // namespace

Asking<void> Box(CommandSession& session) {
    const Corners corners = co_await AskCorners(session, "box");
    AddInUcs(session, BoxShape(corners));
}

Asking<void> Wedge(CommandSession& session) {
    const Corners corners = co_await AskCorners(session, "wedge");
    AddInUcs(session, WedgeShape(corners));
}

Asking<void> Cylinder(CommandSession& session) {
    const Answered<Point3> center =
        co_await session.AskPoint("Center of the cylinder's base <0,0,0>:", {}, IfEmpty::Allowed);
    const Point3 world = center.Or(session.UcsToWorld().Point({}));
    session.SetLastPoint(world);
    Answered<double> radius = co_await session.AskDistance("Radius of the base or [Diameter]:", "Diameter",
                                                           IfEmpty::Refused, world);
    if (radius.Is("Diameter")) {
        radius = co_await session.AskDistance("Diameter of the base:", {}, IfEmpty::Refused, world);
        radius.value = *radius.value / 2;
    }
    const Point3 base = InUcs(session, world);
    const Answered<double> height = co_await session.AskDistance(
        "Height of the cylinder or [Center of the other end]:", "Center", IfEmpty::Refused, world);
    if (height.value) {
        const Point3 top = base + Point3{0, 0, *height.value};
        AddInUcs(session, CylinderShape(base, top, *radius.value));
        co_return;
    }
    const Answered<Point3> end = co_await session.AskPoint("Center of the other end:");
    AddInUcs(session, CylinderShape(base, InUcs(session, *end.value), *radius.value));
}

}  // namespace brenvik::host_commands
