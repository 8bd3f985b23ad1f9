// A specified usage names the usage of an assembly and, within that assembly, the one of its component.
#include "drafting_host/step/places/specified_usages.h"

#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::string_view Specified = "SPECIFIED_HIGHER_USAGE_OCCURRENCE";

/// Files round their numbers, and what they round adds up along the usages.
constexpr double Rounding = 1e-5;

Vector Turned(const Vector& vector, const Frame& outer) {
    Vector result{};
    for (std::size_t axis = 0; axis < outer.axes.size(); ++axis)
        result = Sum(result, Scaled(outer.axes[axis], vector[axis]));
    return result;
}

/// The place in the world around `outer` of what lies at `inner` in it.
Frame Within(const Frame& outer, const Frame& inner) {
    Frame place;
    for (std::size_t axis = 0; axis < place.axes.size(); ++axis)
        place.axes[axis] = Turned(inner.axes[axis], outer);
    place.at = Sum(outer.at, Turned(inner.at, outer));
    return place;
}

double SizeOf(const Vector& vector) { return std::sqrt(Dot(vector, vector)); }

bool AreNear(const Vector& one, const Vector& other, double most) {
    return SizeOf(Sum(one, Scaled(other, -1))) <= most;
}

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {
        for (const Statement& statement : statements.All()) {
            const auto ends = statements.ReferencesOf(statement);
            if (statement.kind != "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" || ends.size() < 2) continue;
            const Statement* const shape = statements.Find(ends[1].number);
            if (shape == nullptr || statements.ReferencesOf(*shape).empty()) continue;
            mPlacings.emplace(statements.ReferencesOf(*shape)[0].number, ends[0].number);
        }
    }

    /// Whether it has a place that may be another one than its usages'.
    bool IsElsewhere(const Statement& specified) const {
        if (!HasPlace(specified.number)) return false;
        std::vector<int> usages;
        const Statement* one = &specified;
        while (one != nullptr && one->kind == Specified && usages.size() < MostLevels) {
            const auto ends = mStatements.ReferencesOf(*one);
            if (ends.size() != 4) return true;
            usages.push_back(ends[3].number);
            one = mStatements.Find(ends[2].number);
        }
        if (one == nullptr || one->kind == Specified) return true;
        const auto own = PlaceAt(specified.number);
        auto place = PlaceAt(one->number);
        double size = place ? SizeOf(place->at) : 0;
        for (std::size_t at = usages.size(); at > 0 && place; --at) {
            const auto inner = PlaceAt(usages[at - 1]);
            if (!inner) return true;
            size += SizeOf(inner->at);
            place = Within(*place, *inner);
        }
        if (!own || !place || !AreNear(own->at, place->at, Rounding * (1 + size))) return true;
        return !AreNear(own->axes[2], place->axes[2], Rounding) ||
               !AreNear(own->axes[0], place->axes[0], Rounding);
    }

  private:
    static constexpr std::size_t MostLevels = 1000;

    const Statement* RelationOf(int usage) const {
        const auto placing = mPlacings.find(usage);
        return placing == mPlacings.end() ? nullptr : mStatements.Find(placing->second);
    }

    bool HasPlace(int usage) const {
        const Statement* const relation = RelationOf(usage);
        return relation != nullptr &&
               TextOf(mStatements, *relation).find("WITH_TRANSFORMATION") != std::string_view::npos;
    }

    /// The component's shape stands first in the relation, the assembly's second; a placement belongs to the
    /// shape that holds it.
    std::optional<Frame> PlaceAt(int usage) const {
        const Statement* const relation = RelationOf(usage);
        if (relation == nullptr) return std::nullopt;
        std::vector<int> shapes, placements;
        for (const Reference& reference : mStatements.ReferencesOf(*relation)) {
            const Statement* const end = mStatements.Find(reference.number);
            if (end == nullptr) return std::nullopt;
            if (end->kind != "ITEM_DEFINED_TRANSFORMATION")
                shapes.push_back(reference.number);
            else
                for (const Reference& placement : mStatements.ReferencesOf(*end))
                    placements.push_back(placement.number);
        }
        if (shapes.size() != 2 || placements.size() != 2) return std::nullopt;
        if (AreSwapped(mStatements, shapes[0], shapes[1], placements[0], placements[1]))
            std::swap(placements[0], placements[1]);
        const auto first = PlaceOf(mStatements, placements[0]), second = PlaceOf(mStatements, placements[1]);
        const auto from = first ? FrameOf(*first) : std::nullopt,
                   to = second ? FrameOf(*second) : std::nullopt;
        if (!from || !to) return std::nullopt;
        return Combined(*from, *to);
    }

    const Statements& mStatements;
    std::unordered_map<int, int> mPlacings;  ///< The relation of shapes of a usage, the first of several.
};

}  // namespace

void NoteSpecifiedPlaces(const Statements& statements, StepDocument& document) {
    std::optional<Reader> reader;  // most files have none
    for (const Statement& statement : statements.All()) {
        if (statement.kind != Specified) continue;
        if (!reader) reader.emplace(statements);
        if (!reader->IsElsewhere(statement)) continue;
        document.notes.push_back({"the assembly usage " + Shown(statement.number) +
                                      " has a place of its own (" + std::string(Specified) +
                                      "), which isn't read: its part may lie in another place",
                                  statements.LineAt(statement.place)});
    }
}

}  // namespace brenvik::step
