// A relationship that something names (a usage's place, a look) stays: what it means is said there.
#include "drafting_host/step/places/related_shapes.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "drafting_host/step/places/place_operators.h"
#include "drafting_host/step/places/placement_frames.h"
#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/step_statements.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

constexpr std::string_view Mark = "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION";

class Rewriter {
  public:
    explicit Rewriter(const Statements& statements) : mStatements(statements), mAdditions(statements) {
        for (const Statement& statement : statements.All()) {
            const auto references = statements.ReferencesOf(statement);
            for (const Reference& reference : references) mNamed.insert(reference.number);
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION" && references.size() > 1)
                mOwn.insert(references[1].number);
        }
    }

    std::vector<TextEdit> Edits() {
        for (const Statement& statement : mStatements.All()) {
            const bool isRelation = statement.kind.empty() && !mNamed.contains(statement.number) &&
                                    TextOf(mStatements, statement).find(Mark) != std::string_view::npos;
            if (!isRelation || mStatements.ReferencesOf(statement).size() != 3) continue;
            for (const std::size_t end : {0, 1})
                mRelations[mStatements.ReferencesOf(statement)[end].number].push_back(&statement);
        }
        for (const int own : mOwn) HasBodies(own);
        if (mEdits.empty()) return {};
        TextEdit additions = mAdditions.Edit();
        std::erase(additions.text, '\n');
        mEdits.push_back(std::move(additions));
        return std::move(mEdits);
    }

  private:
    bool Holds(int shape, int item) const {
        const Statement* const holder = mStatements.Find(shape);
        return holder != nullptr && holder->kind.ends_with("SHAPE_REPRESENTATION") &&
               std::ranges::find(mStatements.ReferencesOf(*holder), item, &Reference::number) !=
                   mStatements.ReferencesOf(*holder).end();
    }

    bool HoldsBodies(int shape) const {
        const Statement* const holder = mStatements.Find(shape);
        if (holder == nullptr) return false;
        return std::ranges::any_of(mStatements.ReferencesOf(*holder), [&](const Reference& reference) {
            const Statement* const item = mStatements.Find(reference.number);
            return item != nullptr && IsSolid(item->kind);
        });
    }

    /// Whether a shape has solids, or others that have them; these are mapped into it.
    bool HasBodies(int shape) {
        const auto [known, fresh] = mHaveBodies.emplace(shape, false);
        if (!fresh) return known->second;
        bool has = HoldsBodies(shape);
        const auto relations = mRelations.find(shape);
        if (relations != mRelations.end())
            for (const Statement* relation : relations->second) has = Take(*relation, shape) || has;
        mHaveBodies[shape] = has;
        return has;
    }

    /// The two shapes of a relationship and its transformation. What stands in a product's own shape is the
    /// other one, elsewhere the first stands in the second.
    bool Take(const Statement& relationship, int holder) {
        const auto references = mStatements.ReferencesOf(relationship);
        const std::size_t own = references[0].number == holder ? 0 : 1;
        const int shape = references[1 - own].number;
        if (mOwn.contains(shape) || (own == 0 && !mOwn.contains(holder))) return false;
        const auto places = PlacesOf(references[2].number, holder, shape, own == 0);
        if (!places || !HasBodies(shape)) return false;
        Map(relationship, holder, shape, places->first, places->second);
        return true;
    }

    struct Places {
        int first = 0, second = 0;  ///< In the shape, and where that lies in its holder.
    };

    /// Two placements that stand in the shapes, or an operator, which brings the first shape into the second.
    std::optional<Places> PlacesOf(int transformation, int holder, int shape, bool isTurnedRound) {
        if (!isTurnedRound && PlaceOfOperator(mStatements, transformation))
            return Places{Origin(), transformation};
        const Statement* const pair = mStatements.Find(transformation);
        if (pair == nullptr || pair->kind != "ITEM_DEFINED_TRANSFORMATION") return std::nullopt;
        const auto placements = mStatements.ReferencesOf(*pair);
        if (placements.size() != 2) return std::nullopt;
        const std::size_t own = isTurnedRound ? 0 : 1;
        int target = placements[own].number, origin = placements[1 - own].number;
        // Where the placements stand says which is whose, whatever their order.
        if (AreSwapped(mStatements, holder, shape, target, origin)) std::swap(target, origin);
        if (!Holds(holder, target) || !Holds(shape, origin)) return std::nullopt;
        return Places{origin, target};
    }

    int Origin() {
        if (mOrigin == 0) {
            const std::string point = Shown(mAdditions.Add("CARTESIAN_POINT('',(0.,0.,0.))"));
            mOrigin = mAdditions.Add("AXIS2_PLACEMENT_3D(''," + point + ",$,$)");
        }
        return mOrigin;
    }

    void Map(const Statement& relationship, int holder, int shape, int origin, int target) {
        const std::string map =
            Shown(mAdditions.Add("REPRESENTATION_MAP(" + Shown(origin) + "," + Shown(shape) + ")"));
        const std::string item = Shown(mAdditions.Add("MAPPED_ITEM(''," + map + "," + Shown(target) + ")"));
        const Statement* const own = mStatements.Find(holder);
        mEdits.push_back({mStatements.ReferencesOf(*own)[0].place, 0, item + ","});
        const auto breaks = std::ranges::count(TextOf(mStatements, relationship), '\n');
        mEdits.push_back({relationship.place, relationship.end - relationship.place,
                          std::string(static_cast<std::size_t>(breaks), '\n')});
    }

    const Statements& mStatements;
    NewStatements mAdditions;
    std::unordered_set<int> mNamed;
    std::set<int> mOwn;                                                 ///< Shapes that define products.
    std::unordered_map<int, std::vector<const Statement*>> mRelations;  ///< By each of their two shapes.
    std::unordered_map<int, bool> mHaveBodies;
    int mOrigin = 0;
    std::vector<TextEdit> mEdits;
};

}  // namespace

std::string WithRelatedShapes(std::string content) {
    if (content.find(Mark) == content.npos) return content;
    const Statements statements(content);
    std::vector<TextEdit> edits = Rewriter(statements).Edits();
    return WithEdits(std::move(content), std::move(edits));
}

}  // namespace brenvik::step
