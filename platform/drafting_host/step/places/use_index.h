// How the products, shapes and usages of a STEP file hang together, by the numbers of their statements.
#pragma once

#include <set>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "drafting_host/step/texts/step_statements.h"

namespace brenvik::step {

/// The place of an assembly usage: a relationship of two shapes.
struct UsagePlace {
    const Statement* relationship = nullptr;
    int component = 0, assembly = 0;  ///< Their shapes.
    int transformation = 0;
};

class UseIndex {
  public:
    explicit UseIndex(const Statements& statements);

    /// The usages in an assembly, and the shapes that define a product, by its definition.
    const std::vector<const Statement*>& UsagesIn(int assembly) const { return Of(mUsages, assembly); }
    const std::vector<int>& ShapesOf(int definition) const { return Of(mShapes, definition); }
    /// The products that a shape defines.
    const std::vector<int>& ProductsOf(int shape) const { return Of(mProducts, shape); }
    /// Relations that say that a shape is another one.
    const std::vector<const Statement*>& TiesOf(int shape) const { return Of(mTies, shape); }
    /// Null for a usage that has none.
    const UsagePlace* PlaceOf(int usage) const;
    /// Whether a layer or style names it.
    bool HasLook(int number) const { return mLooked.contains(number); }

  private:
    template <typename Value>
    using ByNumber = std::unordered_map<int, std::vector<Value>>;
    template <typename Value>
    static const std::vector<Value>& Of(const ByNumber<Value>& all, int number) {
        static const std::vector<Value> none;
        const auto found = all.find(number);
        return found == all.end() ? none : found->second;
    }
    void Take(const Statement& statement);
    void TakePlace(const Statement& placing);

    const Statements& mStatements;
    ByNumber<const Statement*> mUsages, mTies;
    ByNumber<int> mShapes, mProducts;
    std::unordered_map<int, UsagePlace> mPlaces;
    std::unordered_set<int> mLooked;
};

/// What a layer or style stands on: the items of a layer, the last or, behind a style that it overrides, the
/// one ahead of it.
std::vector<Reference> LookTargets(const Statements& statements, const Statement& look);

}  // namespace brenvik::step
