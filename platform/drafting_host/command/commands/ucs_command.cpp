// UCS: the user coordinate system, moved, turned, named and taken back.
#include <algorithm>

#include "base/letter_case.h"
#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/answers.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"
#include "drafting_host/document/host_layers.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

void MoveOrigin(CommandSession& session, const Point3& origin) {
    UcsFrame frame = session.CurrentUcs();
    frame.origin = origin;
    session.ChangeUcs(frame);
}

Asking<void> AskOrigin(CommandSession& session) {
    const Answered<Point3> origin = co_await session.AskPoint("New origin <0,0,0>:", {}, IfEmpty::Allowed);
    if (origin.value) MoveOrigin(session, *origin.value);
}

Asking<void> AskThreePoints(CommandSession& session) {
    const Answered<Point3> origin = co_await session.AskPoint("New origin <0,0,0>:", {}, IfEmpty::Allowed);
    UcsFrame frame = session.CurrentUcs();
    frame.origin = origin.Or(frame.origin);
    const Answered<Point3> onX =
        co_await session.AskPoint("Point on the positive X axis <as it is>:", {}, IfEmpty::Allowed);
    const Answered<Point3> onY = co_await session.AskPoint(
        "Point on the positive Y side of the XY plane <as it is>:", {}, IfEmpty::Allowed);
    const Point3 x = onX.value ? *onX.value - frame.origin : frame.xAxis;
    const Point3 y = onY.value ? *onY.value - frame.origin : frame.yAxis;
    const Point3 z = Cross(x, y);
    if (!(Length(z) > 1e-9 * Length(x) * Length(y)))
        throw host_failure::InvalidArgument("the three points lie on one line");
    frame.xAxis = Unit(x);
    frame.yAxis = Unit(Cross(Unit(z), frame.xAxis));
    session.ChangeUcs(frame);
}

Asking<void> AskTurn(CommandSession& session, std::string axis) {
    const std::string prompt = "Rotation angle about the " + axis + " axis <90>:";
    const Answered<double> angle = co_await session.AskAngle(prompt, {}, IfEmpty::Allowed);
    UcsFrame frame = session.CurrentUcs();
    const Point3 direction = session.UcsToWorld().Direction(axis == "X"   ? Point3{1, 0, 0}
                                                            : axis == "Y" ? Point3{0, 1, 0}
                                                                          : Point3{0, 0, 1});
    const Similarity turn = Similarity::Turn({}, direction, angle.Or(QuarterTurn));
    frame.xAxis = turn.Direction(frame.xAxis);
    frame.yAxis = turn.Direction(frame.yAxis);
    session.ChangeUcs(frame);
}

Asking<void> AskZAxis(CommandSession& session) {
    const Answered<Point3> origin = co_await session.AskPoint("New origin <0,0,0>:", {}, IfEmpty::Allowed);
    UcsFrame frame = session.CurrentUcs();
    frame.origin = origin.Or(frame.origin);
    const Answered<Point3> above = co_await session.AskPoint("Point on the positive Z axis:");
    if (Distance(*above.value, frame.origin) <= PointTolerance)
        throw host_failure::InvalidArgument("the two points of the axis are one");
    const Axes axes = ObjectAxes(*above.value - frame.origin);
    session.ChangeUcs({frame.origin, axes.x, axes.y});
}

void LayInView(CommandSession& session) {
    const Point3 z = session.ViewDirection();
    const Point3 x = Unit(Cross(session.ViewUp(), z));
    session.ChangeUcs({session.CurrentUcs().origin, x, Unit(Cross(z, x))});
}

/// The choices for a new system, by one keyword.
Asking<void> RunNew(CommandSession& session, std::string choice) {
    if (choice == "Origin") co_await AskOrigin(session);
    if (choice == "ZAxis") co_await AskZAxis(session);
    if (choice == "3point") co_await AskThreePoints(session);
    if (choice == "View") LayInView(session);
    if (choice == "Face") co_await UcsOnFace(session);
    if (choice == "X" || choice == "Y" || choice == "Z") co_await AskTurn(session, choice);
}

Asking<void> AskNew(CommandSession& session) {
    const Answered<Point3> answer = co_await session.AskPoint(
        "Origin of the new UCS or [ZAxis/3point/Face/View/X/Y/Z] <0,0,0>:", "ZAxis 3point Face View X Y Z",
        IfEmpty::Allowed);
    if (answer.value) MoveOrigin(session, *answer.value);
    if (!answer.keyword.empty()) co_await RunNew(session, answer.keyword);
}

Asking<void> AskOrthographic(CommandSession& session) {
    const Answered<std::string> side = co_await session.AskKeyword(
        "Side [Top/Bottom/Front/BAck/Left/Right] <Top>:", "Top Bottom Front BAck Left Right",
        IfEmpty::Allowed);
    if (side.Is("Bottom"))
        session.ChangeUcs({{}, {-1, 0, 0}, {0, 1, 0}});
    else if (side.Is("Front"))
        session.ChangeUcs({{}, {1, 0, 0}, {0, 0, 1}});
    else if (side.Is("BAck"))
        session.ChangeUcs({{}, {-1, 0, 0}, {0, 0, 1}});
    else if (side.Is("Left"))
        session.ChangeUcs({{}, {0, -1, 0}, {0, 0, 1}});
    else if (side.Is("Right"))
        session.ChangeUcs({{}, {0, 1, 0}, {0, 0, 1}});
    else
        session.ChangeUcs({});
}

std::vector<UcsData>::iterator FindNamed(CommandSession& session, std::string_view name) {
    return std::ranges::find_if(session.Document().NamedUcs(),
                                [&](const UcsData& ucs) { return EqualsIgnoreCase(ucs.name, name); });
}

void ListNamed(CommandSession& session) {
    if (session.Document().NamedUcs().empty()) session.Tell("No UCS is named.");
    for (const UcsData& ucs : session.Document().NamedUcs()) {
        session.Tell("\"" + ucs.name + "\"  origin " + PointText(ucs.origin) + "  X axis " +
                     PointText(ucs.xAxis) + "  Y axis " + PointText(ucs.yAxis));
    }
}

Asking<void> AskSave(CommandSession& session) {
    const Answered<std::string> name = co_await session.AskText("Name of the present UCS or [?]:");
    if (*name.value == "?") {
        ListNamed(session);
        co_return;
    }
    RequireTableName(*name.value, "UCS");
    const UcsFrame frame = session.CurrentUcs();
    UcsData saved;
    saved.name = *name.value;
    auto known = FindNamed(session, *name.value);
    if (known != session.Document().NamedUcs().end()) saved = *known;
    saved.origin = frame.origin;
    saved.xAxis = frame.xAxis;
    saved.yAxis = frame.yAxis;
    if (known != session.Document().NamedUcs().end())
        *known = std::move(saved);
    else
        session.Document().NamedUcs().push_back(std::move(saved));
}

/// Restores or deletes a named system.
Asking<void> AskNamed(CommandSession& session, bool restoring) {
    const Answered<std::string> name = co_await session.AskText(
        restoring ? "Name of the UCS to restore or [?]:" : "Name of the UCS to delete:");
    if (*name.value == "?") {
        ListNamed(session);
        co_return;
    }
    const auto known = FindNamed(session, *name.value);
    if (known == session.Document().NamedUcs().end())
        session.Refuse("No UCS is named \"" + *name.value + "\".");
    else if (restoring)
        session.ChangeUcs({known->origin, known->xAxis, known->yAxis});
    else
        session.Document().NamedUcs().erase(known);
}

}  // namespace

Asking<void> Ucs(CommandSession& session) {
    const Answered<std::string> option = co_await session.AskKeyword(
        "Option [New/Move/orthoGraphic/Prev/Restore/Save/Del/?/World] <World>:",
        "World New Move orthoGraphic Previous Restore Save Delete ? Origin ZAxis 3point Face View X Y Z",
        IfEmpty::Allowed);
    if (option.Empty() || option.Is("World")) {
        session.ChangeUcs({});
    } else if (option.Is("New")) {
        co_await AskNew(session);
    } else if (option.Is("Move")) {
        co_await AskOrigin(session);
    } else if (option.Is("orthoGraphic")) {
        co_await AskOrthographic(session);
    } else if (option.Is("Previous")) {
        if (!session.PreviousUcs()) session.Refuse("There is no earlier UCS.");
    } else if (option.Is("Restore") || option.Is("Delete")) {
        co_await AskNamed(session, option.Is("Restore"));
    } else if (option.Is("Save")) {
        co_await AskSave(session);
    } else if (option.Is("?")) {
        ListNamed(session);
    } else {
        co_await RunNew(session, option.keyword);
    }
}

}  // namespace brenvik::host_commands
