// Placements of a STEP file as its statements have them, and the frames that they are: where a thing lies and
// how it is turned.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

using Vector = std::array<double, 3>;

double Dot(const Vector& a, const Vector& b);
Vector Cross(const Vector& a, const Vector& b);
Vector Scaled(const Vector& a, double factor);
Vector Sum(const Vector& a, const Vector& b);
/// But for the noise of numbers.
bool AreSame(const Vector& a, const Vector& b);

/// The three numbers of a point or direction; null if they aren't three.
std::optional<Vector> NumbersOf(const Statements& statements, const Statement& statement);

/// A placement as the file has it: where it lies, and its axes, which may be left out.
struct Place {
    Vector at{};
    std::optional<Vector> axis, along;
};

/// A placement with its axes at right angles to each other and of length 1.
struct Frame {
    Vector at{};
    std::array<Vector, 3> axes{Vector{1, 0, 0}, Vector{0, 1, 0}, Vector{0, 0, 1}};
    bool isOpen = false;  ///< The X axis follows from a rule instead of the file.
    bool Turns() const { return !AreSame(axes[2], {0, 0, 1}) || !AreSame(axes[0], {1, 0, 0}); }
    bool IsOrigin() const { return !Turns() && AreSame(at, {}); }
    bool operator==(const Frame& other) const {
        return AreSame(at, other.at) && AreSame(axes[2], other.axes[2]) && AreSame(axes[0], other.axes[0]);
    }
};

/// Null for another statement than a placement in space.
std::optional<Place> PlaceOf(const Statements& statements, int number);

/// Without an X axis, or with one along Z, the format has the world's X in its place, for an axis along X the
/// world's Y. Null for axes without a length.
std::optional<Frame> FrameOf(const Place& place);

/// Whether each of two placements stands in the shape that the other one is to stand in, as some programs
/// have it: the first in the second shape, the second in the first.
bool AreSwapped(const Statements& statements, int firstShape, int secondShape, int first, int second);

/// The place that a part gets whose frame `first` comes to lie on `second`.
Frame Combined(const Frame& first, const Frame& second);

}  // namespace brenvik::step
