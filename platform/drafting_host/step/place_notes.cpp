// Placements are read as text: the numbers of a point or direction stand in its last brackets.
#include "drafting_host/step/place_notes.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace brenvik::step {
namespace {

using Numbers = std::vector<double>;

constexpr double Same = 1e-9;

Numbers NumbersOf(const Statements& statements, const Statement& statement) {
    std::string_view text = statements.Content().substr(statement.place, statement.end - statement.place);
    const std::size_t open = text.rfind('(');
    text.remove_prefix(open == std::string_view::npos ? text.size() : open + 1);
    Numbers numbers;
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
    return numbers;
}

bool AreSame(const Numbers& a, const Numbers& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t at = 0; at < a.size(); ++at)
        if (std::abs(a[at] - b[at]) > Same) return false;
    return true;
}

/// A placement: where it lies, and its axes, upright and along X where the file leaves them out.
struct Place {
    Numbers at{0, 0, 0}, axis{0, 0, 1}, along{1, 0, 0};
    bool Turns() const { return !AreSame(axis, {0, 0, 1}) || !AreSame(along, {1, 0, 0}); }
    bool IsOrigin() const { return !Turns() && AreSame(at, {0, 0, 0}); }
    bool operator==(const Place& other) const {
        return AreSame(at, other.at) && AreSame(axis, other.axis) && AreSame(along, other.along);
    }
};

std::optional<Place> PlaceOf(const Statements& statements, int number) {
    const Statement* const placement = statements.Find(number);
    if (placement == nullptr || placement->kind != "AXIS2_PLACEMENT_3D") return std::nullopt;
    const auto references = statements.ReferencesOf(*placement);
    const std::string_view text =
        statements.Content().substr(placement->place, placement->end - placement->place);
    std::vector<Numbers> parts;
    for (const Reference& reference : references) {
        const Statement* const part = statements.Find(reference.number);
        if (part == nullptr) return std::nullopt;
        parts.push_back(NumbersOf(statements, *part));
    }
    if (parts.empty()) return std::nullopt;
    Place place;
    place.at = parts[0];
    const bool lacksAxis = parts.size() == 2 && text.find('$') < references[1].place - placement->place;
    if (parts.size() > 1) (lacksAxis ? place.along : place.axis) = parts[1];
    if (parts.size() > 2) place.along = parts[2];
    return place;
}

/// The numbers of the two placements that a statement brings together; zeros where it is none of that kind.
std::pair<int, int> PlacementsOf(const Statements& statements, const Statement& statement) {
    const auto references = statements.ReferencesOf(statement);
    if (references.size() < 2) return {};
    if (statement.kind == "ITEM_DEFINED_TRANSFORMATION") return {references[0].number, references[1].number};
    if (statement.kind != "MAPPED_ITEM") return {};
    const Statement* const map = statements.Find(references[0].number);
    if (map == nullptr || statements.ReferencesOf(*map).empty()) return {};
    return {statements.ReferencesOf(*map)[0].number, references[1].number};
}

}  // namespace

void NoteDoubtfulPlaces(const Statements& statements, StepDocument& document) {
    for (const Statement& statement : statements.All()) {
        const auto [first, second] = PlacementsOf(statements, statement);
        if (first == 0) continue;
        const std::optional<Place> from = PlaceOf(statements, first), to = PlaceOf(statements, second);
        if (!from || !to || from->IsOrigin() || to->IsOrigin() || *from == *to) continue;
        if (!from->Turns() && !to->Turns()) continue;
        document.notes.push_back(
            {"#" + std::to_string(statement.number) +
                 " places a part by two placements away from the origin, of which one "
                 "turns: the part's place may be wrong; expected the first at the origin",
             statements.LineAt(statement.place)});
    }
}

}  // namespace brenvik::step
