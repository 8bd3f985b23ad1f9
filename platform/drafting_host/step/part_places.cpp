// Placements are read as text: the numbers of a point or direction stand in its last brackets.
#include "drafting_host/step/part_places.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "drafting_host/step/step_text.h"
#include "drafting_host/step/step_units.h"

namespace brenvik::step {
namespace {

using Vector = std::array<double, 3>;

constexpr double Same = 1e-9;

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
    const bool lacksAxis = parts.size() == 2 && text.find('$') < references[1].place - placement->place;
    if (parts.size() > 1) (lacksAxis ? place.along : place.axis) = parts[1];
    if (parts.size() > 2) place.along = parts[2];
    return place;
}

/// Without an X axis, or with one along Z, the format has the world's X in its place, for an axis along X the
/// world's Y. Nothing for an axis without a length.
std::optional<Frame> FrameOf(const Place& place) {
    Frame frame;
    frame.at = place.at;
    Vector z = place.axis.value_or(Vector{0, 0, 1});
    const double length = std::sqrt(Dot(z, z));
    if (!(length > 0) || !std::isfinite(length)) return std::nullopt;
    z = Scaled(z, 1 / length);
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

/// The place that a part gets whose frame `first` comes to lie on `second`.
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

/// Two placements that a statement brings together.
struct Pair {
    int first = 0, second = 0;  ///< Their numbers.
    const Statement* holder = nullptr;
    const Statement* map = nullptr;  ///< Of a mapped item, which names the first.
};

Pair PairOf(const Statements& statements, const Statement& statement) {
    const auto references = statements.ReferencesOf(statement);
    if (references.size() < 2) return {};
    if (statement.kind == "ITEM_DEFINED_TRANSFORMATION")
        return {references[0].number, references[1].number, &statement, nullptr};
    if (statement.kind != "MAPPED_ITEM") return {};
    const Statement* const map = statements.Find(references[0].number);
    if (map == nullptr || statements.ReferencesOf(*map).size() < 2) return {};
    return {statements.ReferencesOf(*map)[0].number, references[1].number, &statement, map};
}

/// The representations that placements stand in: those of a relationship, or a mapped one and its holder.
struct Between {
    const Statement* first = nullptr;
    const Statement* second = nullptr;
};

/// By the statement that places, everything that it places.
using Uses = std::multimap<int, Between>;

void AddRelationship(const Statements& statements, const Statement& relationship, Uses& uses) {
    std::vector<const Statement*> shapes;
    int transformation = 0;
    for (const Reference& reference : statements.ReferencesOf(relationship)) {
        const Statement* const one = statements.Find(reference.number);
        if (one == nullptr) continue;
        if (one->kind == "ITEM_DEFINED_TRANSFORMATION")
            transformation = one->number;
        else
            shapes.push_back(one);
    }
    if (transformation != 0 && shapes.size() > 1) uses.insert({transformation, {shapes[0], shapes[1]}});
}

Uses UsesIn(const Statements& statements) {
    Uses uses;
    for (const Statement& statement : statements.All()) {
        const auto references = statements.ReferencesOf(statement);
        if (TextOf(statements, statement).find("RELATIONSHIP_WITH_TRANSFORMATION") != std::string_view::npos)
            AddRelationship(statements, statement, uses);
        if (!statement.kind.ends_with("REPRESENTATION")) continue;
        for (const Reference& reference : references) {
            const Statement* const item = statements.Find(reference.number);
            if (item == nullptr || item->kind != "MAPPED_ITEM") continue;
            const Pair pair = PairOf(statements, *item);
            if (pair.map != nullptr)
                uses.insert({item->number,
                             {statements.Find(statements.ReferencesOf(*pair.map)[1].number), &statement}});
        }
    }
    return uses;
}

bool Holds(const Statements& statements, const Statement& representation, int item) {
    const auto references = statements.ReferencesOf(representation);
    return std::ranges::find(references, item, &Reference::number) != references.end();
}

/// A representation's context stands last.
int ContextOf(const Statements& statements, const Statement* representation) {
    if (representation == nullptr || statements.ReferencesOf(*representation).empty()) return 0;
    return statements.ReferencesOf(*representation).back().number;
}

/// A pair that the modeller would misread, and the place that is meant; without one where that is open.
struct Misread {
    Pair pair;
    std::optional<Frame> place;
};

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {}

    std::vector<Misread> All() {
        std::vector<Misread> all;
        for (const Statement& statement : mStatements.All()) {
            const Pair pair = PairOf(mStatements, statement);
            if (pair.holder == nullptr) continue;
            const auto first = PlaceOf(mStatements, pair.first), second = PlaceOf(mStatements, pair.second);
            if (!first || !second) continue;
            const auto from = FrameOf(*first), to = FrameOf(*second);
            if (!from || !to) {
                all.push_back({pair, std::nullopt});
                continue;
            }
            if (IsMisread(*from, *to)) all.push_back({pair, PlaceFor(pair, *from, *to)});
        }
        return all;
    }

  private:
    static bool IsMisread(const Frame& from, const Frame& to) {
        if (from == to) return false;
        const auto isGuessed = [](const Frame& frame) {
            return frame.isOpen && !AreSame(frame.axes[2], {0, 0, 1});
        };
        if (isGuessed(from) || isGuessed(to)) return true;
        if (from.IsOrigin() || to.IsOrigin()) return false;
        return from.Turns() || to.Turns();
    }

    /// Nothing where several units are at work. Some programs name the assembly's placement first, which
    /// shows in the representations that hold them.
    std::optional<Frame> PlaceFor(const Pair& pair, const Frame& from, const Frame& to) {
        if (!mUses) mUses = UsesIn(mStatements);
        std::optional<bool> isSwapped;
        const auto [first, last] = mUses->equal_range(pair.holder->number);
        for (auto use = first; use != last; ++use) {
            const Between& between = use->second;
            if (between.first == nullptr || between.second == nullptr) return std::nullopt;
            const int one = ContextOf(mStatements, between.first),
                      other = ContextOf(mStatements, between.second);
            if (one != other && !HaveSameUnit(mStatements, one, other)) return std::nullopt;
            const bool swapped = pair.map == nullptr &&
                                 !(Holds(mStatements, *between.first, pair.first) &&
                                   Holds(mStatements, *between.second, pair.second)) &&
                                 Holds(mStatements, *between.first, pair.second) &&
                                 Holds(mStatements, *between.second, pair.first);
            if (isSwapped && *isSwapped != swapped) return std::nullopt;
            isSwapped = swapped;
        }
        return isSwapped.value_or(false) ? Combined(to, from) : Combined(from, to);
    }

    const Statements& mStatements;
    std::optional<Uses> mUses;
};

/// Writes new statements, numbered on from the highest of the file.
class Additions {
  public:
    explicit Additions(const Statements& statements) {
        for (const Statement& statement : statements.All()) mLast = std::max(mLast, statement.number);
    }

    /// The number of the new statement, 0 where there is none left.
    int Add(const std::string& values) {
        if (mLast >= HighestStatement) return 0;
        mText += "#" + std::to_string(++mLast) + "=" + values + ";\n";
        return mLast;
    }

    int Add(const Frame& frame) {
        const auto values = [](const Vector& v) {
            return "('',(" + RealText(v[0]) + "," + RealText(v[1]) + "," + RealText(v[2]) + "))";
        };
        const int at = Add("CARTESIAN_POINT" + values(frame.at));
        const int axis = Add("DIRECTION" + values(frame.axes[2]));
        const int along = Add("DIRECTION" + values(frame.axes[0]));
        return Add("AXIS2_PLACEMENT_3D(''," + Shown(at) + "," + Shown(axis) + "," + Shown(along) + ")");
    }

    int Origin() {
        if (mOrigin == 0) mOrigin = Add(Frame());
        return mOrigin;
    }

    static std::string Shown(int number) { return "#" + std::to_string(number); }
    const std::string& Text() const { return mText; }

  private:
    int mLast = 0, mOrigin = 0;
    std::string mText;
};

struct Edit {
    std::size_t place = 0;  ///< Of the "#" of a reference.
    int number = 0;
};

}  // namespace

bool HasMisreadPlaces(const Statements& statements) {
    return std::ranges::any_of(Reader(statements).All(),
                               [](const Misread& misread) { return misread.place.has_value(); });
}

std::string WithPlacesFromTheOrigin(std::string content) {
    const Statements statements(content);
    Additions additions(statements);
    std::vector<Edit> edits;
    std::size_t end = 0;
    for (const Misread& misread : Reader(statements).All()) {
        if (!misread.place) continue;
        const auto references = statements.ReferencesOf(*misread.pair.holder);
        int first = additions.Origin();
        if (misread.pair.map != nullptr)
            first =
                additions.Add("REPRESENTATION_MAP(" + Additions::Shown(first) + "," +
                              Additions::Shown(statements.ReferencesOf(*misread.pair.map)[1].number) + ")");
        edits.push_back({references[0].place, first});
        edits.push_back({references[1].place, additions.Add(*misread.place)});
        end = std::max(end, misread.pair.holder->end);
    }
    content.insert(end, "\n" + additions.Text());
    std::ranges::sort(edits, std::greater<>(), &Edit::place);
    for (const Edit& edit : edits) {
        const std::size_t behind = content.find_first_not_of("0123456789", edit.place + 1);
        content.replace(edit.place, behind - edit.place, Additions::Shown(edit.number));
    }
    return content;
}

void NoteDoubtfulPlaces(const Statements& statements, StepDocument& document) {
    for (const Misread& misread : Reader(statements).All()) {
        if (misread.place) continue;
        document.notes.push_back({"#" + std::to_string(misread.pair.holder->number) +
                                      " places a part by two placements away from the origin that can't be "
                                      "combined: the part's place "
                                      "may be wrong; expected axes with a length, and one unit of length",
                                  statements.LineAt(misread.pair.holder->place)});
    }
}

}  // namespace brenvik::step
