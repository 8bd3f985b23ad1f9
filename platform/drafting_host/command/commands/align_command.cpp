// ALIGN: up to three points of the objects go to three others.
#include <array>
#include <optional>

#include "drafting_host/command/commands/commands.h"
#include "drafting_host/command/session/command_session.h"
#include "drafting_host/document/geometry/host_failure.h"
#include "drafting_host/document/geometry/vectors.h"

namespace brenvik::host_commands {

using namespace vectors;

namespace {

struct PointPair {
    Point3 source, destination;
};

/// A pair, or null where the source is answered with a return.
Asking<std::optional<PointPair>> AskPair(CommandSession& session, std::string which, std::string ending,
                                         IfEmpty empty) {
    const Answered<Point3> source =
        co_await session.AskPoint(which + " source point" + ending + ":", {}, empty);
    if (!source.value) co_return std::nullopt;
    const Answered<Point3> destination = co_await session.AskPoint(which + " destination point:");
    co_return PointPair{*source.value, *destination.value};
}

/// The direction from one point to another; throws Failure where they coincide.
Point3 DirectionOf(const Point3& from, const Point3& to) {
    if (Distance(from, to) == 0) throw host_failure::InvalidArgument("two points to align by coincide");
    return Unit(to - from);
}

/// The frame whose X axis runs along the first two points and whose plane holds the third.
std::array<Point3, 3> FrameOf(const Point3& first, const Point3& second, const Point3& third) {
    const Point3 x = DirectionOf(first, second);
    const Point3 across = Cross(x, DirectionOf(first, third));
    if (Length(across) < 1e-9)
        throw host_failure::InvalidArgument("three points to align by lie on one line");
    const Point3 z = Unit(across);
    return {x, Unit(Cross(z, x)), z};
}

/// The turn that takes one frame to another, as rows. A turn that comes to quarter turns within the
/// fineness of typed points is one: a square part stays square to the last bit.
std::array<std::array<double, 3>, 3> TurnBetween(const std::array<Point3, 3>& from,
                                                 const std::array<Point3, 3>& to) {
    constexpr double fineness = 1e-9;
    std::array<std::array<double, 3>, 3> rows{};
    std::array<std::array<double, 3>, 3> square{};
    bool quarterTurns = true;
    for (std::size_t row = 0; row < 3; ++row) {
        const auto part = [row](const Point3& p) { return row == 0 ? p.x : row == 1 ? p.y : p.z; };
        const Point3 line = from[0] * part(to[0]) + from[1] * part(to[1]) + from[2] * part(to[2]);
        rows[row] = {line.x, line.y, line.z};
        for (std::size_t column = 0; column < 3; ++column) {
            square[row][column] = std::round(rows[row][column]) + 0.0;
            if (std::abs(rows[row][column] - square[row][column]) > fineness) quarterTurns = false;
        }
    }
    return quarterTurns ? square : rows;
}

Similarity ByThree(const PointPair& first, const PointPair& second, const PointPair& third) {
    const auto turn = TurnBetween(FrameOf(first.source, second.source, third.source),
                                  FrameOf(first.destination, second.destination, third.destination));
    Matrix4 matrix{};
    const std::array<double, 3> target{first.destination.x, first.destination.y, first.destination.z};
    for (std::size_t row = 0; row < 3; ++row) {
        const Point3 line{turn[row][0], turn[row][1], turn[row][2]};
        for (std::size_t column = 0; column < 3; ++column) matrix[row][column] = turn[row][column];
        matrix[row][3] = target[row] - Dot(line, first.source);
    }
    matrix[3] = {0, 0, 0, 1};
    return Similarity::FromMatrix(matrix);
}

/// The shortest turn that brings the line through the sources onto that through the destinations.
Similarity ByTwo(const PointPair& first, const PointPair& second, bool scale) {
    const Point3 from = DirectionOf(first.source, second.source);
    const Point3 to = DirectionOf(first.destination, second.destination);
    const Similarity shift = Similarity::Shift(first.destination - first.source);
    const Point3 across = Cross(from, to);
    const double angle = std::atan2(Length(across), Dot(from, to));
    // Opposite directions leave the axis open: the turn stays in the drawing's plane where it can.
    const bool opposite = Length(across) < 1e-12;
    const bool level = std::abs(from.z) < 1e-12;
    const Point3 axis = !opposite ? across : level ? Point3{0, 0, 1} : ObjectAxes(from).x;
    Similarity move = shift.Then(Similarity::Turn(first.destination, first.destination + Unit(axis), angle));
    if (scale) {
        const double factor =
            Distance(first.destination, second.destination) / Distance(first.source, second.source);
        move = move.Then(Similarity::Scale(first.destination, factor));
    }
    return move;
}

}  // namespace

Asking<void> Align(CommandSession& session) {
    const std::vector<HostEntity*> chosen = co_await session.AskSelection(SelectFor::Changing);
    if (chosen.empty()) co_return;
    const auto first = co_await AskPair(session, "First", "", IfEmpty::Refused);
    const auto second = co_await AskPair(session, "Second", "", IfEmpty::Allowed);
    Similarity move;
    if (!second) {
        move = Similarity::Shift(first->destination - first->source);
    } else if (const auto third = co_await AskPair(session, "Third", " or <continue>", IfEmpty::Allowed)) {
        move = ByThree(*first, *second, *third);
    } else {
        const Answered<std::string> scale = co_await session.AskKeyword(
            "Scale objects based on alignment points? [Yes/No] <N>:", "Yes No", IfEmpty::Allowed);
        move = ByTwo(*first, *second, scale.Is("Yes"));
    }
    for (const HostEntity* entity : chosen) entity->RequireChangeable();
    for (HostEntity* entity : chosen) entity->Transform(move);
}

}  // namespace brenvik::host_commands
