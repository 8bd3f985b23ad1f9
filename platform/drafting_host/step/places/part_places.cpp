// Placements are read as text: the numbers of a point or direction stand in its last brackets.
#include "drafting_host/step/places/part_places.h"

#include <algorithm>
#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/places/step_units.h"
#include "drafting_host/step/texts/step_text.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// Two placements that a statement brings together.
struct Pair {
    int first = 0, second = 0;  ///< Their numbers.
    const Statement* holder = nullptr;
    const Statement* map = nullptr;  ///< Of a mapped item, which names the first.
};

Pair PairOf(const Statements& statements, const Statement& statement) {
    const auto references = statements.ReferencesOf(statement);
    if (statement.kind == "ITEM_DEFINED_TRANSFORMATION") {
        if (references.size() < 2) return {0, 0, &statement, nullptr};
        return {references[0].number, references[1].number, &statement, nullptr};
    }
    if (statement.kind != "MAPPED_ITEM" || references.size() < 2) return {};
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
        const bool maybePlaces = statement.kind.empty() || statement.kind.ends_with("WITH_TRANSFORMATION");
        if (maybePlaces &&
            TextOf(statements, statement).find("RELATIONSHIP_WITH_TRANSFORMATION") != std::string_view::npos)
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

/// A representation's context stands last.
int ContextOf(const Statements& statements, const Statement* representation) {
    if (representation == nullptr || statements.ReferencesOf(*representation).empty()) return 0;
    return statements.ReferencesOf(*representation).back().number;
}

/// A pair that the modeller would misread, and the place that it is written anew with; where what is meant is
/// open, what was expected.
struct Misread {
    Pair pair;
    std::optional<Frame> place;
    std::string expected;
};

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {}

    std::vector<Misread> All() {
        for (const Statement& statement : mStatements.All()) {
            const Pair pair = PairOf(mStatements, statement);
            if (pair.holder == nullptr) continue;
            const auto first = PlaceOf(mStatements, pair.first), second = PlaceOf(mStatements, pair.second);
            if (first && second)
                Take(pair, *first, *second);
            else
                TakeOther(pair);
        }
        return std::move(mAll);
    }

  private:
    struct Meant {
        Frame frame;
        bool isAsRead = false;
    };

    void Take(const Pair& pair, const Place& first, const Place& second) {
        const auto from = FrameOf(first), to = FrameOf(second);
        if (!from || !to) {
            mAll.push_back({pair, std::nullopt, "axes with a length"});
            return;
        }
        // The rule for an X axis that is left out stands in for one along Z, but hardly anybody meant that.
        const bool isParallel = (from->isOpen && first.along) || (to->isOpen && second.along);
        const std::string doubt = isParallel ? "an X axis that doesn't lie along the Z axis"
                                  : AreInTheirShapes(pair)
                                      ? ""
                                      : "placements that stand in the shapes that they bring together";
        std::optional<Meant> meant;
        if (IsMisread(*from, *to)) {
            meant = PlaceFor(pair, *from, *to);
            if (!meant) {
                mAll.push_back({pair, std::nullopt, "shapes that hold one of them each, in units of length"});
                return;
            }
        }
        if (meant && !meant->isAsRead)
            mAll.push_back({pair, meant->frame, doubt});
        else if (!doubt.empty())
            mAll.push_back({pair, std::nullopt, doubt});
    }

    /// Of a pair that isn't two placements the modeller makes none at all.
    void TakeOther(const Pair& pair) {
        for (const int number : {pair.first, pair.second}) {
            const Statement* const item = mStatements.Find(number);
            if (item != nullptr && item->kind == "AXIS2_PLACEMENT_3D") continue;
            // An operator that places a mapped shape is looked at by itself.
            const bool isOperator = pair.map != nullptr && item != nullptr &&
                                    TextOf(mStatements, *item).find("CARTESIAN_TRANSFORMATION_OPERATOR") !=
                                        std::string_view::npos;
            if (isOperator) TakeOperator(pair);
            if (isOperator || !IsUsed(pair)) return;
            const std::string found = item == nullptr      ? "none"
                                      : item->kind.empty() ? "#" + std::to_string(number)
                                                           : std::string(item->kind);
            // Without a place the modeller takes the usage's name for the product's.
            mAll.push_back({pair, pair.second == 0 ? std::nullopt : std::optional(Frame()),
                            "two placements (AXIS2_PLACEMENT_3D), found " + found});
            return;
        }
        if (IsUsed(pair)) mAll.push_back({pair, std::nullopt, "placements of points and directions"});
    }

    /// An operator counts from the origin of the coordinates. The format leaves open what a map with another
    /// origin means then, and programs disagree.
    void TakeOperator(const Pair& pair) {
        const auto first = PlaceOf(mStatements, pair.first);
        const auto from = first ? FrameOf(*first) : std::nullopt;
        if (from && !from->IsOrigin() && IsUsed(pair))
            mAll.push_back({pair, std::nullopt, "an operator and a map from the origin"});
    }

    /// The format has each of the two among the items of its shape.
    bool AreInTheirShapes(const Pair& pair) {
        if (pair.map != nullptr) return true;
        if (!mUses) mUses = UsesIn(mStatements);
        const auto [first, last] = mUses->equal_range(pair.holder->number);
        return std::all_of(first, last, [&](const auto& use) {
            const auto& [one, other] = use.second;
            return one == nullptr || other == nullptr ||
                   (Holds(*one, pair.first) && Holds(*other, pair.second)) ||
                   (Holds(*one, pair.second) && Holds(*other, pair.first));
        });
    }

    bool Holds(const Statement& representation, int item) {
        auto& items = mItems[representation.number];
        if (items.empty())
            for (const Reference& reference : mStatements.ReferencesOf(representation))
                items.insert(reference.number);
        return items.contains(item);
    }

    bool IsUsed(const Pair& pair) {
        if (!mUses) mUses = UsesIn(mStatements);
        return mUses->contains(pair.holder->number);
    }

    static bool IsMisread(const Frame& from, const Frame& to) {
        const auto isGuessed = [](const Frame& frame) {
            return frame.isOpen && !AreSame(frame.axes[2], {0, 0, 1});
        };
        if (isGuessed(from) || isGuessed(to)) return true;
        if (from.IsOrigin() || to.IsOrigin()) return false;
        return from.Turns() || to.Turns();
    }

    /// Null if the uses contradict each other. Some programs name the assembly's placement first, which
    /// shows in the representations that hold them.
    std::optional<Meant> PlaceFor(const Pair& pair, const Frame& from, const Frame& to) {
        if (!mUses) mUses = UsesIn(mStatements);
        std::optional<Meant> meant;
        const auto [first, last] = mUses->equal_range(pair.holder->number);
        for (auto use = first; use != last; ++use) {
            const auto scale = ScaleBetween(use->second);
            if (!scale) return std::nullopt;
            const bool isSwapped = pair.map == nullptr && IsSwapped(pair, use->second);
            Frame component = isSwapped ? to : from;
            component.at = Scaled(component.at, *scale);
            const Frame place = Combined(component, isSwapped ? from : to);
            if (meant && !(meant->frame == place)) return std::nullopt;
            meant = {place, from == to && *scale == 1};
        }
        return meant ? meant : Meant{Combined(from, to), from == to};
    }

    bool IsSwapped(const Pair& pair, const Between& between) {
        return !(Holds(*between.first, pair.first) && Holds(*between.second, pair.second)) &&
               Holds(*between.first, pair.second) && Holds(*between.second, pair.first);
    }

    /// What a length of the first representation measures in the second one's unit.
    std::optional<double> ScaleBetween(const Between& between) const {
        if (between.first == nullptr || between.second == nullptr) return std::nullopt;
        const int one = ContextOf(mStatements, between.first), other = ContextOf(mStatements, between.second);
        const auto unit = UnitOfContext(mStatements, one), otherUnit = UnitOfContext(mStatements, other);
        if (one == other || unit == otherUnit) return 1;
        if (!unit || !otherUnit) return std::nullopt;
        return *unit / *otherUnit;
    }

    const Statements& mStatements;
    std::optional<Uses> mUses;
    std::unordered_map<int, std::unordered_set<int>> mItems;  ///< Of representations, by their numbers.
    std::vector<Misread> mAll;
};

int Added(NewStatements& additions, const Frame& frame) {
    const auto values = [](const Vector& v) {
        return "('',(" + RealText(v[0]) + "," + RealText(v[1]) + "," + RealText(v[2]) + "))";
    };
    const int at = additions.Add("CARTESIAN_POINT" + values(frame.at));
    const int axis = additions.Add("DIRECTION" + values(frame.axes[2]));
    const int along = additions.Add("DIRECTION" + values(frame.axes[0]));
    return additions.Add("AXIS2_PLACEMENT_3D(''," + Shown(at) + "," + Shown(axis) + "," + Shown(along) + ")");
}

}  // namespace

bool HasMisreadPlaces(const Statements& statements) {
    return std::ranges::any_of(Reader(statements).All(),
                               [](const Misread& misread) { return misread.place.has_value(); });
}

std::string WithPlacesFromTheOrigin(std::string content) {
    const Statements statements(content);
    NewStatements additions(statements);
    std::vector<TextEdit> edits;
    const int origin = Added(additions, Frame());
    for (const Misread& misread : Reader(statements).All()) {
        if (!misread.place) continue;
        const auto references = statements.ReferencesOf(*misread.pair.holder);
        int first = origin;
        if (misread.pair.map != nullptr)
            first = additions.Add("REPRESENTATION_MAP(" + Shown(first) + "," +
                                  Shown(statements.ReferencesOf(*misread.pair.map)[1].number) + ")");
        edits.push_back(ReferenceEdit(content, references[0].place, Shown(first)));
        edits.push_back(ReferenceEdit(content, references[1].place, Shown(Added(additions, *misread.place))));
    }
    edits.push_back(additions.Edit());
    return WithEdits(std::move(content), std::move(edits));
}

void NoteDoubtfulPlaces(const Statements& statements, StepDocument& document) {
    for (const Misread& misread : Reader(statements).All()) {
        if (misread.expected.empty()) continue;
        document.notes.push_back({"#" + std::to_string(misread.pair.holder->number) +
                                      " places a part by what can't be combined: the part's place may be "
                                      "wrong; expected " +
                                      misread.expected,
                                  statements.LineAt(misread.pair.holder->place)});
    }
}

}  // namespace brenvik::step
