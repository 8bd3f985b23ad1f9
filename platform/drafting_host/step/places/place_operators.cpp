// The values are those of the operator's own, two axes, its origin and the scale, and the third axis, which
// stands behind them in the short form and in a part of its own in a statement of several kinds.
#include "drafting_host/step/places/place_operators.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "base/numbers.h"
#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/texts/step_text.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr double None = 1e-9;
constexpr std::string_view ShortForm = "CARTESIAN_TRANSFORMATION_OPERATOR_3D";

struct Operator {
    std::string axis1, axis2, origin, scale, axis3;
    bool isSpatial = true;  ///< And not one of the plane.
};

using Axes = std::array<Vector, 3>;

/// The values between the bracket at `open` and the one that ends them, without texts ahead of them.
std::vector<std::string> ValuesAt(std::string_view text, std::size_t open) {
    const std::size_t quote = text.rfind('\'');
    const std::size_t start = quote == text.npos || quote < open ? open + 1 : quote + 1;
    std::string_view values = text.substr(start, text.find(')', start) - start);
    std::vector<std::string> all;
    while (true) {
        const std::size_t comma = values.find(',');
        all.emplace_back(values.substr(0, comma));
        if (comma == values.npos) return all;
        values.remove_prefix(comma + 1);
    }
}

std::optional<Operator> OperatorOf(const Statement& statement, std::string_view text) {
    constexpr std::string_view part = "CARTESIAN_TRANSFORMATION_OPERATOR(", spatial = "OPERATOR_3D(";
    constexpr std::size_t shared = 4;  // two axes, origin and scale
    if (statement.kind == ShortForm) {
        const auto values = ValuesAt(text, text.find('('));
        const std::size_t count = values.size();
        if (count <= shared) return std::nullopt;
        return Operator{values[count - 5], values[count - 4], values[count - 3], values[count - 2],
                        values[count - 1]};
    }
    const std::size_t own = text.find(part);
    if (!statement.kind.empty() || own == text.npos) return std::nullopt;
    const std::size_t third = text.find(spatial);
    const auto valuesOf = [&](std::size_t place, std::string_view name) {
        return ValuesAt(text.substr(0, text.find(')', place) + 1), place + name.size() - 1);
    };
    const auto values = valuesOf(own, part);
    if (values.size() != shared) return std::nullopt;
    const bool isSpatial = third != text.npos;
    return Operator{
        values[0], values[1], values[2], values[3], isSpatial ? valuesOf(third, spatial).front() : "$",
        isSpatial};
}

/// The axis behind "#5", of length 1; null for "$" and for one without a length.
std::optional<Vector> AxisOf(const Statements& statements, const std::string& value) {
    if (!value.starts_with('#')) return std::nullopt;
    const Statement* const direction = statements.Find(static_cast<int>(LenientNumber(value.substr(1))));
    const auto numbers = direction == nullptr ? std::nullopt : NumbersOf(statements, *direction);
    const double length = numbers ? std::sqrt(Dot(*numbers, *numbers)) : 0;
    if (!(length > 0) || !std::isfinite(length)) return std::nullopt;
    return Scaled(*numbers, 1 / length);
}

/// The component of an axis at right angles to another one, as a unit vector; null if they are parallel.
std::optional<Vector> Across(const Vector& axis, const Vector& other) {
    const Vector across = Sum(axis, Scaled(other, -Dot(axis, other)));
    const double length = std::sqrt(Dot(across, across));
    return length > None ? std::optional(Scaled(across, 1 / length)) : std::nullopt;
}

enum class Turn { Plain, Mirrors, Open };

/// The format's rule: the third axis counts, the world's Z without one, and the first as far as it stands
/// across that. Null if that leaves the turn open. The axes are right-handed.
std::optional<Axes> AxesOf(const Statements& statements, const Operator& place) {
    const auto axis1 = AxisOf(statements, place.axis1), axis3 = AxisOf(statements, place.axis3);
    const Vector z = axis3.value_or(Vector{0, 0, 1});
    const bool liesAlongX = std::abs(z[0]) > 1 - None;
    const auto x = Across(axis1.value_or(liesAlongX ? Vector{0, 1, 0} : Vector{1, 0, 0}), z);
    return x ? std::optional(Axes{*x, Cross(z, *x), z}) : std::nullopt;
}

/// The second axis says by its side whether the whole is mirrored; where the first stands without it and the
/// world's Y, which stands in for it, lies on neither side, nobody meant a mirror. The modeller goes by the
/// third and the first, and without a third by what stands across the other two.
Turn TurnOf(const Statements& statements, const Operator& place) {
    const auto axes = AxesOf(statements, place);
    if (!axes) return Turn::Open;
    const auto axis2 = AxisOf(statements, place.axis2);
    const double side = Dot(axis2.value_or(Vector{0, 1, 0}), (*axes)[1]);
    const bool isFirstAlone = place.axis2 == "$" && place.axis1 != "$";
    if (std::abs(side) < None && !isFirstAlone) return Turn::Open;
    return side < -None ? Turn::Mirrors : Turn::Plain;
}

/// Whether the modeller finds the axes that are meant.
bool IsReadAsMeant(const Statements& statements, const Operator& place) {
    const auto axes = AxesOf(statements, place);
    if (!axes) return false;
    const auto axis1 = AxisOf(statements, place.axis1), axis2 = AxisOf(statements, place.axis2),
               axis3 = AxisOf(statements, place.axis3);
    const Vector first = axis1.value_or(Vector{1, 0, 0});
    const auto readX = Across(first, (*axes)[2]);
    const Vector across = Cross(first, axis2.value_or(Vector{0, 1, 0}));
    const bool hasZ = axis3 || (Dot(across, across) > None && !Across(across, (*axes)[2]));
    return readX && AreSame(*readX, (*axes)[0]) && hasZ;
}

/// The operator of a statement, read from its text without the blanks and line breaks that may stand between
/// any two words.
std::optional<Operator> OperatorIn(const Statements& statements, const Statement& statement) {
    if (!statement.kind.empty() && statement.kind != ShortForm) return std::nullopt;
    const std::string_view written = TextOf(statements, statement);
    if (statement.kind.empty() && written.find("CARTESIAN_TRANSFORMATION_OPERATOR") == written.npos)
        return std::nullopt;
    std::string text(written);
    std::erase_if(text, [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; });
    return OperatorOf(statement, text);
}

bool Scales(const Operator& place) {
    return !place.scale.empty() && place.scale != "$" && std::abs(LenientNumber(place.scale) - 1) >= None;
}

}  // namespace

std::optional<std::string> FaultOfOperator(const Statements& statements, const Statement& statement) {
    const auto place = OperatorIn(statements, statement);
    if (!place) return std::nullopt;
    if (Scales(*place))
        return "a place without a scale, since sizes are taken as they stand, found the scale " +
               place->scale;
    switch (TurnOf(statements, *place)) {
        case Turn::Plain:
        case Turn::Mirrors:
            if (place->isSpatial || IsReadAsMeant(statements, *place)) return std::nullopt;
            return "a place in space, found one in a plane";
        case Turn::Open:
            return "a place whose three axes stand across each other, found others";
    }
    return std::nullopt;
}

std::optional<OperatorPlace> PlaceOfOperator(const Statements& statements, int number) {
    const Statement* const statement = statements.Find(number);
    if (statement == nullptr || FaultOfOperator(statements, *statement)) return std::nullopt;
    const auto place = OperatorIn(statements, *statement);
    const auto axes = place ? AxesOf(statements, *place) : std::nullopt;
    const Statement* const origin =
        place && place->origin.starts_with('#')
            ? statements.Find(static_cast<int>(LenientNumber(place->origin.substr(1))))
            : nullptr;
    const auto at = origin == nullptr ? std::nullopt : NumbersOf(statements, *origin);
    if (!axes || !at) return std::nullopt;
    OperatorPlace result{{*at, *axes, false}, TurnOf(statements, *place) == Turn::Mirrors};
    // The second axis runs the other way then. With the first one turned as well, the frame is right-handed.
    if (result.mirrors)
        for (const std::size_t axis : {0, 1}) result.frame.axes[axis] = Scaled(result.frame.axes[axis], -1);
    return result;
}

namespace {

/// Operators that the modeller takes for others: those that leave axes out, and those of several kinds, which
/// it knows in some combinations only.
template <typename Visit>
void ForEachShort(const Statements& statements, Visit visit) {
    for (const Statement& statement : statements.All()) {
        const auto place = OperatorIn(statements, statement);
        if (!place || !place->isSpatial || Scales(*place) || TurnOf(statements, *place) != Turn::Plain)
            continue;
        if (statement.kind.empty() || !IsReadAsMeant(statements, *place)) visit(statement, *place);
    }
}

}  // namespace

bool HasShortOperators(const Statements& statements) {
    bool found = false;
    ForEachShort(statements, [&](const Statement&, const Operator&) { found = true; });
    return found;
}

std::string WithWholeOperators(std::string content) {
    const Statements statements(content);
    NewStatements additions(statements);
    std::vector<TextEdit> edits;
    const auto added = [&](const Vector& axis) {
        return Shown(additions.Add("DIRECTION('',(" + RealText(axis[0]) + "," + RealText(axis[1]) + "," +
                                   RealText(axis[2]) + "))"));
    };
    ForEachShort(statements, [&](const Statement& statement, const Operator& place) {
        const auto axes = AxesOf(statements, place);
        const std::string x = added((*axes)[0]), y = added((*axes)[1]), z = added((*axes)[2]);
        edits.push_back({statement.place, statement.end - statement.place,
                         Shown(statement.number) + "=" + std::string(ShortForm) + "('','',''," + x + "," + y +
                             "," + place.origin + "," + place.scale + "," + z + ");"});
    });
    edits.push_back(additions.Edit());
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
