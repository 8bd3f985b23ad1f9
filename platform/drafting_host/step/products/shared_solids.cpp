// A product leads to its shapes by what defines them, and from there by relations that place nothing.
#include "drafting_host/step/products/shared_solids.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "drafting_host/step/products/step_notes.h"
#include "drafting_host/step/products/usage_tree.h"
#include "drafting_host/step/texts/statement_roles.h"
#include "drafting_host/step/texts/text_edits.h"

namespace brenvik::step {
namespace {

/// A product's second hand on a solid that is another one's already.
struct Share {
    const Statement* solid = nullptr;
    int first = 0, definition = 0;        ///< The products.
    const Statement* shape = nullptr;     ///< That holds the solid.
    const Statement* defining = nullptr;  ///< What gives the product its shape.
    bool isShapeShared = false;           ///< With another product.
    /// The product's shape where that is another one, and the relation from there to the one with the solid.
    const Statement* own = nullptr;
    const Statement* tie = nullptr;
    bool isOwnShared = false;  ///< With another product.
};

class Reader {
  public:
    explicit Reader(const Statements& statements) : mStatements(statements), mTree(statements) {}

    std::vector<Share> All() {
        std::unordered_set<int> seen;
        for (const Statement& statement : mStatements.All()) {
            if (statement.kind != "SHAPE_DEFINITION_REPRESENTATION") continue;
            const int definition = FirstOf(mStatements, FirstOf(mStatements, statement.number));
            const Statement* const product = mStatements.Find(definition);
            if (product == nullptr || !product->kind.starts_with("PRODUCT_DEFINITION")) continue;
            if (product->kind == "PRODUCT_DEFINITION_SHAPE") continue;
            const int own = mStatements.ReferencesOf(statement).size() < 2
                                ? 0
                                : mStatements.ReferencesOf(statement)[1].number;
            mDefining.emplace(std::pair(definition, own), &statement);
            if (!seen.insert(definition).second) continue;
            for (const int shape : mTree.ShapesOf(definition)) Take(shape, definition);
        }
        if (!mShares.empty()) TakeTies();
        for (Share& share : mShares) Complete(share);
        return std::move(mShares);
    }

  private:
    void Take(int number, int definition) {
        const Statement* const shape = mStatements.Find(number);
        if (shape == nullptr) return;
        const auto [holder, isFresh] = mHolders.emplace(number, definition);
        for (const Reference& item : mStatements.ReferencesOf(*shape)) {
            const Statement* const solid = mStatements.Find(item.number);
            if (solid == nullptr || !IsSolid(solid->kind)) continue;
            const auto [owner, fresh] = mOwners.emplace(item.number, definition);
            if (fresh || owner->second == definition) continue;
            mShares.push_back(
                {solid, owner->second, definition, shape, nullptr, !isFresh && holder->second != definition});
        }
    }

    void TakeTies() {
        for (const Statement& statement : mStatements.All()) {
            const auto references = mStatements.ReferencesOf(statement);
            if (statement.kind != "SHAPE_REPRESENTATION_RELATIONSHIP" || references.size() < 2) continue;
            mTies.emplace(std::pair(references[0].number, references[1].number), &statement);
            mTies.emplace(std::pair(references[1].number, references[0].number), &statement);
        }
    }

    void Complete(Share& share) const {
        const auto defining = mDefining.find({share.definition, share.shape->number});
        if (defining != mDefining.end()) {
            share.defining = defining->second;
            return;
        }
        for (auto own = mDefining.lower_bound({share.definition, 0});
             own != mDefining.end() && own->first.first == share.definition; ++own) {
            const auto tie = mTies.find({own->first.second, share.shape->number});
            if (tie == mTies.end()) continue;
            share.defining = own->second;
            share.own = mStatements.Find(own->first.second);
            share.tie = tie->second;
            const auto holder = mHolders.find(own->first.second);
            share.isOwnShared = holder != mHolders.end() && holder->second != share.definition;
            return;
        }
    }

    const Statements& mStatements;
    const UsageTree mTree;
    std::unordered_map<int, int> mOwners, mHolders;             ///< Of solids and shapes, the first product.
    std::map<std::pair<int, int>, const Statement*> mDefining;  ///< By product and shape.
    std::map<std::pair<int, int>, const Statement*> mTies;      ///< By both shapes, either way round.
    std::vector<Share> mShares;
};

/// What stands behind the "=" of a statement, without its ";".
std::string ValuesOf(const Statements& statements, const Statement& statement) {
    std::string_view text = TextOf(statements, statement);
    text.remove_prefix(text.find('=') + 1);
    text.remove_suffix(1);
    return std::string(text);
}

/// Makes the copies and puts them where the products look for them.
class Copier {
  public:
    explicit Copier(const Statements& statements) : mStatements(statements), mAdditions(statements) {}

    std::vector<TextEdit> Edits(const std::vector<Share>& shares) {
        for (const Share& share : shares) {
            if (share.isShapeShared)
                mShared[{share.definition, share.shape}].push_back(&share);
            else
                PutInto(*share.shape, share);
        }
        for (const auto& [key, ones] : mShared)
            if (ones.front()->defining != nullptr && ones.front()->own == nullptr) GiveOwn(key, ones);
        for (const auto& [key, ones] : mShared)
            if (ones.front()->own != nullptr) TieOwn(key, ones);
        mEdits.push_back(mAdditions.Edit());
        return std::move(mEdits);
    }

  private:
    using Shares = std::vector<const Share*>;
    using Key = std::pair<int, const Statement*>;  ///< A product's definition and a shape.

    int CopyOf(const Share& share) { return mAdditions.Add(ValuesOf(mStatements, *share.solid)); }

    void PutInto(const Statement& shape, const Share& share) {
        for (const Reference& item : mStatements.ReferencesOf(shape))
            if (item.number == share.solid->number)
                mEdits.push_back(ReferenceEdit(mStatements.Content(), item.place, Shown(CopyOf(share))));
    }

    /// A copy of a shape with copies of the solids in it.
    std::string CopyShape(const Statement& shape, const Shares& shares) {
        std::string copy = ValuesOf(mStatements, shape);
        const std::size_t start = shape.end - 1 - copy.size();
        std::vector<TextEdit> edits;
        for (const Reference& item : mStatements.ReferencesOf(shape))
            for (const Share* share : shares)
                if (item.number == share->solid->number) {
                    TextEdit edit = ReferenceEdit(mStatements.Content(), item.place, Shown(CopyOf(*share)));
                    edit.place -= start;
                    edits.push_back(std::move(edit));
                }
        return Shown(mAdditions.Add(WithEdits(std::move(copy), std::move(edits))));
    }

    /// A copy of the very shape that the product names; what places the product places the copy then.
    const std::string& GiveOwn(const Key& key, const Shares& shares) {
        const auto& [definition, shape] = key;
        std::string& own = mOwn[key];
        if (!own.empty()) return own;
        own = CopyShape(*shape, shares);
        const std::string_view content = mStatements.Content();
        const Statement& defining = *shares.front()->defining;
        mEdits.push_back(ReferenceEdit(content, mStatements.ReferencesOf(defining)[1].place, own));
        for (const Statement* relationship : PlacingsOf(definition))
            for (const Reference& reference : mStatements.ReferencesOf(*relationship))
                if (reference.number == shape->number)
                    mEdits.push_back(ReferenceEdit(content, reference.place, own));
        return own;
    }

    /// A copy of the shape behind the one that the product names. That one is copied too where it is another
    /// product's as well.
    void TieOwn(const Key& key, const Shares& shares) {
        const Share& first = *shares.front();
        const std::string copy = CopyShape(*key.second, shares);
        if (first.isOwnShared) {
            const std::string& own = GiveOwn({key.first, first.own}, shares);
            mAdditions.Add("SHAPE_REPRESENTATION_RELATIONSHIP('',''," + own + "," + copy + ")");
            return;
        }
        for (const Reference& reference : mStatements.ReferencesOf(*first.tie))
            if (reference.number == key.second->number)
                mEdits.push_back(ReferenceEdit(mStatements.Content(), reference.place, copy));
    }

    /// The relationships of shapes that place a product in assemblies.
    const std::vector<const Statement*>& PlacingsOf(int definition) {
        if (mPlacings.empty()) {
            mPlacings[0];
            for (const Statement& placing : mStatements.All()) {
                const auto ends = mStatements.ReferencesOf(placing);
                if (placing.kind != "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION" || ends.size() < 2) continue;
                const Statement* const relationship = mStatements.Find(ends[0].number);
                const Statement* const shape = mStatements.Find(ends[1].number);
                const Statement* const usage =
                    shape == nullptr || mStatements.ReferencesOf(*shape).empty()
                        ? nullptr
                        : mStatements.Find(mStatements.ReferencesOf(*shape)[0].number);
                if (relationship == nullptr || usage == nullptr) continue;
                const auto products = mStatements.ReferencesOf(*usage);
                if (products.size() > 1) mPlacings[products[1].number].push_back(relationship);
            }
        }
        return mPlacings[definition];
    }

    const Statements& mStatements;
    NewStatements mAdditions;
    std::vector<TextEdit> mEdits;
    std::map<Key, Shares> mShared;
    std::map<Key, std::string> mOwn;  ///< Copies of shapes that products name.
    std::unordered_map<int, std::vector<const Statement*>> mPlacings;  ///< By the component's definition.
};

/// Solids of one shell that stand in different shapes; those in one shape are reported with it.
void NoteSharedShells(const Statements& statements, StepDocument& document) {
    std::unordered_map<int, std::vector<int>> solidsOf;  // by shell
    for (const Statement& solid : statements.All())
        if (IsSolid(solid.kind) && !statements.ReferencesOf(solid).empty())
            solidsOf[statements.ReferencesOf(solid)[0].number].push_back(solid.number);
    std::erase_if(solidsOf, [](const auto& entry) { return entry.second.size() < 2; });
    if (solidsOf.empty()) return;
    std::unordered_map<int, int> shapeOf;
    for (const Statement& shape : statements.All())
        if (shape.kind.ends_with("SHAPE_REPRESENTATION"))
            for (const Reference& item : statements.ReferencesOf(shape))
                shapeOf.emplace(item.number, shape.number);
    for (const Statement& solid : statements.All()) {
        if (!IsSolid(solid.kind) || statements.ReferencesOf(solid).empty()) continue;
        const auto shared = solidsOf.find(statements.ReferencesOf(solid)[0].number);
        if (shared == solidsOf.end() || shared->second.front() == solid.number) continue;
        const int first = shared->second.front();
        if (!shapeOf.contains(solid.number) || shapeOf[first] == shapeOf[solid.number]) continue;
        document.notes.push_back({"the solids " + Shown(first) + " and " + Shown(solid.number) +
                                      " have one shell, in two shapes: they are listed as two parts",
                                  statements.LineAt(solid.place)});
    }
}

}  // namespace

bool HasSharedSolids(const Statements& statements) { return !Reader(statements).All().empty(); }

std::string WithOwnSolids(std::string content) {
    const Statements statements(content);
    std::vector<TextEdit> edits = Copier(statements).Edits(Reader(statements).All());
    return WithEdits(std::move(content), std::move(edits));
}

void NoteSharedSolids(const Statements& statements, CodePage codePage, StepDocument& document) {
    const auto named = [&](int definition) {
        return "\"" + ProductName(statements, definition, codePage) + "\" (" + Shown(definition) + ")";
    };
    std::set<std::pair<int, int>> told;
    for (const Share& share : Reader(statements).All()) {
        if (!told.insert({share.shape->number, share.definition}).second) continue;
        const bool isListed = !share.isShapeShared || share.defining != nullptr;
        document.notes.push_back(
            {"the solid " + Shown(share.solid->number) + " is that of the products " + named(share.first) +
                 " and " + named(share.definition) +
                 (isListed ? ": each has a part of it, with colours and layers at the first one alone"
                           : ": parts may be missing or bear another one's name"),
             statements.LineAt(share.solid->place)});
    }
    NoteSharedShells(statements, document);
}

}  // namespace brenvik::step
