// Pairs of statement numbers: a product definition and its shape, or two shapes.
#include "drafting_host/step/products/double_relations.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

using Numbers = std::pair<int, int>;

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements) {}

    std::vector<DoubleRelation> All() {
        for (const Statement& statement : mStatements.All()) {
            if (mStatements.ReferencesOf(statement).size() < 2) continue;
            if (statement.kind == "SHAPE_REPRESENTATION_RELATIONSHIP") TakeEqual(statement);
            if (statement.kind == "SHAPE_DEFINITION_REPRESENTATION") TakeShape(statement);
        }
        for (const auto& [shapes, tie] : mTies) TakeTied(shapes);
        TakeSameSolids();
        if (!mFound.empty()) LeaveNamed();
        std::ranges::sort(mFound, {}, [](const DoubleRelation& one) { return one.statement->place; });
        return std::move(mFound);
    }

  private:
    void TakeEqual(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        Take(mTies, std::minmax(references[0].number, references[1].number), statement);
    }

    void TakeShape(const Statement& statement) {
        const auto references = mStatements.ReferencesOf(statement);
        const Statement* const shape = mStatements.Find(references[0].number);
        if (shape == nullptr || shape->kind != "PRODUCT_DEFINITION_SHAPE" ||
            mStatements.ReferencesOf(*shape).empty())
            return;
        const int definition = mStatements.ReferencesOf(*shape)[0].number;
        if (Take(mShapes, {definition, references[1].number}, statement))
            mProducts[references[1].number].push_back(definition);
    }

    bool Take(std::map<Numbers, const Statement*>& known, Numbers key, const Statement& statement) {
        const auto [first, fresh] = known.emplace(key, &statement);
        if (!fresh) mFound.push_back({&statement, first->second->number});
        return fresh;
    }

    /// Of two shapes that are the same one, a product needs one: that which assemblies place.
    void TakeTied(Numbers shapes) {
        const auto products = mProducts.find(shapes.first);
        if (products == mProducts.end() || shapes.first == shapes.second) return;
        for (const int definition : products->second) {
            const auto one = mShapes.find({definition, shapes.first});
            const auto other = mShapes.find({definition, shapes.second});
            if (other == mShapes.end()) continue;
            const bool isOnePlaced = IsPlaced(shapes.first), isOtherPlaced = IsPlaced(shapes.second);
            if (isOnePlaced && isOtherPlaced) continue;
            const bool keepsOne =
                isOnePlaced || (!isOtherPlaced && one->second->place < other->second->place);
            const Statement* const kept = (keepsOne ? one : other)->second;
            mFound.push_back({(keepsOne ? other : one)->second, kept->number});
        }
    }

    /// Of several shapes of a product, those whose solids it has by the others already, which would be listed
    /// once for each.
    void TakeSameSolids() {
        std::set<const Statement*> found;
        for (const DoubleRelation& relation : mFound) found.insert(relation.statement);
        std::map<int, std::vector<std::pair<int, const Statement*>>> shapesOf;  // by definition
        for (const auto& [ends, statement] : mShapes)
            if (!found.contains(statement)) shapesOf[ends.first].emplace_back(ends.second, statement);
        for (auto& [definition, shapes] : shapesOf) {
            if (shapes.size() < 2) continue;
            std::ranges::sort(shapes, {}, [&](const auto& one) {
                return std::pair(!IsPlaced(one.first), one.second->place);
            });
            std::set<int> known;
            for (const auto& [shape, statement] : shapes) {
                const std::set<int> solids = SolidsOf(shape);
                const bool isKnown = !solids.empty() && std::ranges::includes(known, solids);
                if (isKnown && !IsPlaced(shape)) mFound.push_back({statement, shapes.front().second->number});
                known.insert(solids.begin(), solids.end());
            }
        }
    }

    /// Of a shape and all that are the same.
    std::set<int> SolidsOf(int shape) {
        if (mEqual.empty())
            for (const auto& [shapes, tie] : mTies) {
                mEqual[shapes.first].push_back(shapes.second);
                mEqual[shapes.second].push_back(shapes.first);
            }
        std::set<int> solids, seen{shape};
        std::vector<int> open{shape};
        while (!open.empty()) {
            const int one = open.back();
            open.pop_back();
            if (const Statement* const statement = mStatements.Find(one))
                for (const Reference& item : mStatements.ReferencesOf(*statement)) {
                    const Statement* const body = mStatements.Find(item.number);
                    if (body != nullptr && IsSolid(body->kind)) solids.insert(item.number);
                }
            const auto equal = mEqual.find(one);
            if (equal == mEqual.end()) continue;
            for (const int next : equal->second)
                if (seen.insert(next).second) open.push_back(next);
        }
        return solids;
    }

    bool IsPlaced(int shape) {
        if (!mHasPlaced) {
            mHasPlaced = true;
            for (const Statement& statement : mStatements.All())
                if (statement.kind.empty() &&
                    TextOf(mStatements, statement).find("WITH_TRANSFORMATION") != std::string_view::npos)
                    for (const Reference& reference : mStatements.ReferencesOf(statement))
                        mPlaced.insert(reference.number);
        }
        return mPlaced.contains(shape);
    }

    /// What another statement names has to stay.
    void LeaveNamed() {
        std::unordered_set<int> named;
        for (const Statement& statement : mStatements.All())
            for (const Reference& reference : mStatements.ReferencesOf(statement))
                named.insert(reference.number);
        std::erase_if(mFound,
                      [&](const DoubleRelation& one) { return named.contains(one.statement->number); });
    }

    const Statements& mStatements;
    std::map<Numbers, const Statement*> mTies, mShapes;
    std::map<int, std::vector<int>> mEqual;
    std::map<int, std::vector<int>> mProducts;  ///< By their shapes.
    std::unordered_set<int> mPlaced;
    bool mHasPlaced = false;
    std::vector<DoubleRelation> mFound;
};

}  // namespace

std::vector<DoubleRelation> DoubleRelations(const Statements& statements) { return Reader(statements).All(); }

namespace {

/// The shapes that a shape has among its items, each at a place.
std::set<int> MappedIn(const Statements& statements, int shape) {
    std::set<int> mapped;
    const Statement* const holder = statements.Find(shape);
    if (holder == nullptr) return mapped;
    for (const Reference& reference : statements.ReferencesOf(*holder)) {
        const Statement* const item = statements.Find(reference.number);
        if (item == nullptr || item->kind != "MAPPED_ITEM" || statements.ReferencesOf(*item).empty())
            continue;
        const Statement* const map = statements.Find(statements.ReferencesOf(*item)[0].number);
        if (map != nullptr && statements.ReferencesOf(*map).size() > 1)
            mapped.insert(statements.ReferencesOf(*map)[1].number);
    }
    return mapped;
}

bool HoldsSolid(const Statements& statements, int shape) {
    const Statement* const holder = statements.Find(shape);
    return holder != nullptr &&
           std::ranges::any_of(statements.ReferencesOf(*holder), [&](const Reference& reference) {
               const Statement* const item = statements.Find(reference.number);
               return item != nullptr && IsSolid(item->kind);
           });
}

/// Shapes that are the same and of which one has the other at a place as well: which of both is meant is
/// open.
void NoteTiedAndPlaced(const Statements& statements, StepDocument& document) {
    for (const Statement& tie : statements.All()) {
        const auto ends = statements.ReferencesOf(tie);
        if (tie.kind != "SHAPE_REPRESENTATION_RELATIONSHIP" || ends.size() < 2) continue;
        for (const auto& [holder, shape] :
             {Numbers(ends[0].number, ends[1].number), Numbers(ends[1].number, ends[0].number)})
            if (MappedIn(statements, holder).contains(shape) && HoldsSolid(statements, shape))
                document.notes.push_back({"the relation " + Shown(tie.number) + " equates the shapes " +
                                              Shown(ends[0].number) + " and " + Shown(ends[1].number) +
                                              ", though " + Shown(holder) + " has " + Shown(shape) +
                                              " at a place too: a solid may be listed twice",
                                          statements.LineAt(tie.place)});
    }
}

}  // namespace

void NoteDoubleRelations(const Statements& statements, StepDocument& document) {
    for (const DoubleRelation& relation : DoubleRelations(statements))
        document.notes.push_back({"the relation " + Shown(relation.statement->number) + " says again what " +
                                      Shown(relation.first) + " says: it is passed over",
                                  statements.LineAt(relation.statement->place), false});
    NoteTiedAndPlaced(statements, document);
}

}  // namespace brenvik::step
