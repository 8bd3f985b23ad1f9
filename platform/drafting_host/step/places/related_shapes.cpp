// A relationship that something names (a usage's place, a look) stays: what it means is said there.
#include "drafting_host/step/places/related_shapes.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

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
        for (const Statement& statement : mStatements.All())
            if (statement.kind.empty() && !mNamed.contains(statement.number) &&
                TextOf(mStatements, statement).find(Mark) != std::string_view::npos)
                Take(statement);
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

    /// The two shapes of a relationship and its transformation, whose two placements stand in them.
    void Take(const Statement& relationship) {
        const auto references = mStatements.ReferencesOf(relationship);
        if (references.size() != 3) return;
        const Statement* const pair = mStatements.Find(references[2].number);
        if (pair == nullptr || pair->kind != "ITEM_DEFINED_TRANSFORMATION") return;
        const auto placements = mStatements.ReferencesOf(*pair);
        if (placements.size() != 2) return;
        const std::size_t own = mOwn.contains(references[0].number) ? 0 : 1;
        const int holder = references[own].number, shape = references[1 - own].number;
        int target = placements[own].number, origin = placements[1 - own].number;
        // Where the placements stand says which is whose, whatever their order.
        if (AreSwapped(mStatements, holder, shape, target, origin)) std::swap(target, origin);
        if (!mOwn.contains(holder) || mOwn.contains(shape) || !HoldsBodies(shape)) return;
        if (Holds(holder, target) && Holds(shape, origin)) Map(relationship, holder, shape, origin, target);
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
    std::unordered_set<int> mOwn;  ///< Shapes that define products.
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
