// The numbers of a point or direction stand in its last brackets.
#include "drafting_host/step/places/placement_frames.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>
#include <system_error>
#include <vector>

namespace brenvik::step {
namespace {

constexpr double Same = 1e-9;

}  // namespace

std::optional<Vector> NumbersOf(const Statements& statements, const Statement& statement) {
    std::string_view text = TextOf(statements, statement);
    const std::size_t open = text.rfind('(');
    text.remove_prefix(open == std::string_view::npos ? text.size() : open + 1);
    std::vector<double> numbers;
    while (!text.empty()) {
        const std::size_t first = text.find_first_of("+-.0123456789");
        if (first == std::string_view::npos) break;
        text.remove_prefix(first);
        double number = 0;
        const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
        const auto length = static_cast<std::size_t>(read.ptr - text.data());
        if (read.ec == std::errc()) numbers.push_back(number);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    if (numbers.size() != 3) return std::nullopt;
    return Vector{numbers[0], numbers[1], numbers[2]};
}

double Dot(const Vector& a, const Vector& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector Cross(const Vector& a, const Vector& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Scaled(const Vector& a, double factor) { return {a[0] * factor, a[1] * factor, a[2] * factor}; }

Vector Sum(const Vector& a, const Vector& b) { return {a[0] + b[0], a[1] + b[1], a[2] + b[2]}; }

bool AreSame(const Vector& a, const Vector& b) {
    for (std::size_t at = 0; at < a.size(); ++at)
        if (std::abs(a[at] - b[at]) > Same) return false;
    return true;
}

std::optional<Place> PlaceOf(const Statements& statements, int number) {
    const Statement* const placement = statements.Find(number);
    if (placement == nullptr || placement->kind != "AXIS2_PLACEMENT_3D") return std::nullopt;
    const auto references = statements.ReferencesOf(*placement);
    const std::string_view text = TextOf(statements, *placement);
    std::vector<Vector> parts;
    for (const Reference& reference : references) {
        const Statement* const part = statements.Find(reference.number);
        const auto numbers = part == nullptr ? std::nullopt : NumbersOf(statements, *part);
        if (!numbers) return std::nullopt;
        parts.push_back(*numbers);
    }
    if (parts.empty()) return std::nullopt;
    Place place;
    place.at = parts[0];
    // A name can be left out as well, ahead of the point.
    const bool lacksAxis = parts.size() == 2 && text.find('$', references[0].place - placement->place) <
                                                    references[1].place - placement->place;
    if (parts.size() > 1) (lacksAxis ? place.along : place.axis) = parts[1];
    if (parts.size() > 2) place.along = parts[2];
    return place;
}

std::optional<Frame> FrameOf(const Place& place) {
    Frame frame;
    frame.at = place.at;
    Vector z = place.axis.value_or(Vector{0, 0, 1});
    const double length = std::sqrt(Dot(z, z));
    if (!(length > 0) || !std::isfinite(length)) return std::nullopt;
    z = Scaled(z, 1 / length);
    if (place.along && !(Dot(*place.along, *place.along) > 0)) return std::nullopt;
    const auto across = [&](const Vector& along) {
        const double size = std::sqrt(Dot(along, along));
        const Vector unit = Scaled(along, size > 0 ? 1 / size : 0);
        return Sum(unit, Scaled(z, -Dot(unit, z)));
    };
    Vector x = place.along ? across(*place.along) : Vector{};
    frame.isOpen = !(Dot(x, x) > Same * Same);
    if (frame.isOpen) x = across(std::abs(z[0]) < 1 - Same ? Vector{1, 0, 0} : Vector{0, 1, 0});
    x = Scaled(x, 1 / std::sqrt(Dot(x, x)));
    frame.axes = {x, Cross(z, x), z};
    return frame;
}

bool AreSwapped(const Statements& statements, int firstShape, int secondShape, int first, int second) {
    const auto holds = [&](int shape, int item) {
        const Statement* const holder = statements.Find(shape);
        if (holder == nullptr) return false;
        const auto items = statements.ReferencesOf(*holder);
        return std::ranges::find(items, item, &Reference::number) != items.end();
    };
    if (holds(firstShape, first) && holds(secondShape, second)) return false;
    return holds(firstShape, second) && holds(secondShape, first);
}

Frame Combined(const Frame& first, const Frame& second) {
    const auto turned = [&](const Vector& v) {
        Vector result{};
        for (std::size_t axis = 0; axis < 3; ++axis)
            result = Sum(result, Scaled(second.axes[axis], Dot(first.axes[axis], v)));
        return result;
    };
    Frame place;
    place.axes = {turned({1, 0, 0}), turned({0, 1, 0}), turned({0, 0, 1})};
    place.at = Sum(second.at, Scaled(turned(first.at), -1));
    return place;
}

}  // namespace brenvik::step
